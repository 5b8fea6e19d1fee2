#include "support/file_times.h"

namespace orvix::test {

std::filesystem::file_time_type kept_time(std::filesystem::file_time_type time) { return time; }

}  // namespace orvix::test
