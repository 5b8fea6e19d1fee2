#include "support/limits.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include <sys/resource.h>
#include <unistd.h>

namespace orvix::test {

namespace {

// Hard limits stay, so that a limit can be lifted.
std::size_t exchange_limit(__rlimit_resource_t resource, std::size_t value) {
    rlimit limit{};
    if (getrlimit(resource, &limit) != 0) throw std::runtime_error("no limit to be had");
    const std::size_t before = limit.rlim_cur;
    limit.rlim_cur = value;
    if (setrlimit(resource, &limit) != 0) throw std::runtime_error("no limit to be set");
    return before;
}

std::size_t address_space() {
    std::size_t pages = 0;
    std::FILE* stream = std::fopen("/proc/self/statm", "r");
    if (stream == nullptr || std::fscanf(stream, "%zu", &pages) != 1) throw std::runtime_error("no size to be read");
    std::fclose(stream);
    return pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

}  // namespace

#if defined(__SANITIZE_ADDRESS__)
const bool memory_can_be_limited = false;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
const bool memory_can_be_limited = false;
#else
const bool memory_can_be_limited = true;
#endif
#else
const bool memory_can_be_limited = true;
#endif

MemoryLimit::MemoryLimit(std::size_t more_bytes) : before_(exchange_limit(RLIMIT_AS, address_space() + more_bytes)) {}

MemoryLimit::~MemoryLimit() { exchange_limit(RLIMIT_AS, before_); }

void MemoryLimit::use_up(std::size_t smallest) {
    static void* volatile last;  // or the compiler would see that nobody wants the blocks
    for (std::size_t bytes = std::max(std::size_t{1} << 30, smallest); bytes >= smallest;
         bytes = bytes > smallest ? std::max(bytes > 2048 ? bytes / 2 : bytes - 8, smallest) : 0) {
        do {
            last = std::malloc(bytes);
        } while (last != nullptr);
    }
}

FileSizeLimit::FileSizeLimit(std::size_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    before_ = exchange_limit(RLIMIT_FSIZE, bytes);
}

FileSizeLimit::~FileSizeLimit() { exchange_limit(RLIMIT_FSIZE, before_); }

const int FileSizeLimit::error = EFBIG;

const bool open_files_are_limited = true;

OpenFileLimit::OpenFileLimit(std::size_t files) : before_(exchange_limit(RLIMIT_NOFILE, files)) {}

OpenFileLimit::~OpenFileLimit() { exchange_limit(RLIMIT_NOFILE, before_); }

}  // namespace orvix::test
