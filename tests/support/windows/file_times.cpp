#include "support/file_times.h"

#include <chrono>

namespace orvix::test {

std::filesystem::file_time_type kept_time(std::filesystem::file_time_type time) {
    return std::chrono::floor<std::chrono::seconds>(time);
}

}  // namespace orvix::test
