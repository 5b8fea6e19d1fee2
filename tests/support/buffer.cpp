#include "support/buffer.h"

#include <algorithm>

namespace orvix::test {

namespace {

constexpr char filling = '#';

}  // namespace

Buffer::Buffer(std::string_view text, std::size_t bytes)
    : bytes_(std::max(bytes, text.size() + 1)), block_(std::make_unique<char[]>(bytes_)) {
    std::fill_n(block_.get(), bytes_, filling);
    *std::copy(text.begin(), text.end(), block_.get()) = '\0';
}

std::string Buffer::text() const { return block_.get(); }

std::string Buffer::bytes() const { return {block_.get(), bytes_}; }

Buffer room_for(std::size_t bytes) {
    Buffer buffer("", bytes);
    buffer.get()[0] = filling;
    return buffer;
}

}  // namespace orvix::test
