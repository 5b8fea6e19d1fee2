// Times of files.
#pragma once

#include <filesystem>

namespace orvix::test {

// What is left of a time in the host's status record: all of it, or whole seconds.
std::filesystem::file_time_type kept_time(std::filesystem::file_time_type time);

}  // namespace orvix::test
