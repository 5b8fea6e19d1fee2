#include "support/broken_stream.h"

#include <utility>

#include <stdio.h>

namespace orvix::test {

BrokenStream::BrokenStream(std::string bytes) : rest_(std::move(bytes)) {
    const auto read = [](void* cookie, char* buffer, std::size_t size) -> ssize_t {
        auto& rest = *static_cast<std::string*>(cookie);
        if (rest.empty()) return -1;
        const std::size_t taken = rest.copy(buffer, size);
        rest.erase(0, taken);
        return static_cast<ssize_t>(taken);
    };
    stream_ = fopencookie(&rest_, "r", {read, nullptr, nullptr, nullptr});
}

BrokenStream::~BrokenStream() { std::fclose(stream_); }

}  // namespace orvix::test
