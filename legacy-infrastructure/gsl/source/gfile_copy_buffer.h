// The memory of one copy.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace orvix::gsl {

// Room for a whole file if memory allows, and otherwise for its half, its quarter and so on, down to just above 1000
// bytes: below that a copy would rather fail than crawl.
class CopyBuffer {
public:
    using Allocate = void* (*)(std::size_t);

    // `allocate` gives memory that free() takes, or null.
    explicit CopyBuffer(std::uint64_t file_bytes, Allocate allocate = std::malloc)
        : bytes_(static_cast<std::size_t>(std::min<std::uint64_t>(file_bytes, largest))), memory_(take(allocate)) {
        while (memory_ == nullptr && (bytes_ /= 2) > smallest) memory_.reset(take(allocate));
    }

    // Null if there is no memory.
    char* data() const { return memory_.get(); }

    std::size_t bytes() const { return bytes_; }

private:
    static constexpr std::uint64_t largest = INT32_MAX;
    static constexpr std::size_t smallest = 1000;

    struct Free {
        void operator()(char* memory) const { std::free(memory); }
    };

    // One byte more, so that an empty file asks for something as well.
    char* take(Allocate allocate) const { return static_cast<char*>(allocate(bytes_ + 1)); }

    std::size_t bytes_;
    std::unique_ptr<char, Free> memory_;
};

}  // namespace orvix::gsl
