// Streams that break off.
#pragma once

#include <cstdio>
#include <string>

namespace orvix::test {

// Behind its bytes comes a read error and not the end of the file. Where the host has no such streams only programs
// that hold the code under test themselves see the error, and only one stream at a time breaks off.
class BrokenStream {
public:
    explicit BrokenStream(std::string bytes);
    ~BrokenStream();
    BrokenStream(const BrokenStream&) = delete;
    BrokenStream& operator=(const BrokenStream&) = delete;

    std::FILE* get() const { return stream_; }

private:
    std::string rest_;
    std::FILE* stream_ = nullptr;
    [[maybe_unused]] void* replacement_ = nullptr;  // where it takes one
};

}  // namespace orvix::test
