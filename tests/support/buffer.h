// Buffers of exactly the size that a function asks for, so that the address sanitizer sees one byte too many.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace orvix::test {

// Holds a text and its zero byte at the start; what lies behind is filled with "#".
class Buffer {
public:
    explicit Buffer(std::string_view text, std::size_t bytes = 0);

    operator char*() { return block_.get(); }
    char* get() { return block_.get(); }

    std::string text() const;
    std::string bytes() const;

private:
    std::size_t bytes_;
    std::unique_ptr<char[]> block_;
};

// A buffer of that many bytes that holds no text yet.
Buffer room_for(std::size_t bytes);

}  // namespace orvix::test
