#include "messages/text_lines.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace orvix::gsl {

namespace {

constexpr std::size_t longest_line = 1023;  // what a buffer of 1024 bytes takes of a line, its line feed included

constexpr char tab = '\t';
constexpr char line_ends[] = {'\r', '\x1a', '\0'};  // beside the line feed

char* find(std::span<char> bytes, char byte) {
    return static_cast<char*>(std::memchr(bytes.data(), byte, bytes.size()));
}

bool is_plain(std::span<char> bytes) {
    return find(bytes, tab) == nullptr &&
           std::ranges::none_of(line_ends, [bytes](char end) { return find(bytes, end) != nullptr; });
}

// Cuts a line at the first of its ends and turns its tabs into blanks.
std::span<char> clean(std::span<char> line) {
    for (const char end : line_ends) {
        if (const char* found = find(line, end)) line = line.first(static_cast<std::size_t>(found - line.data()));
    }
    std::ranges::replace(line, tab, ' ');
    return line;
}

}  // namespace

bool TextLines::next(std::span<char>* line) {
    if (line_goes_on_) skip_rest_of_line();
    const std::span<char> chunk = take();
    if (chunk.empty() || chunk[0] == '\x1a') return false;
    line_goes_on_ =
        chunk.size() == longest_line && chunk.back() != '\n' && std::memchr(chunk.data(), 0, longest_line) == nullptr;
    const std::span<char> text = chunk.first(chunk.size() - (chunk.back() == '\n' ? 1 : 0));
    *line = is_plain_ ? text : clean(text);
    return true;
}

// What fgets would read into a buffer of 1024 bytes: up to a line feed, and no more than fits. Empty at the end of the
// file, or where the line that an error broke off would begin.
std::span<char> TextLines::take() {
    while (true) {
        char* const first = block_.data() + begin_;
        const std::size_t most = std::min(end_ - begin_, longest_line);
        const void* feed = std::memchr(first, '\n', most);
        if (feed == nullptr && most < longest_line && !at_end_) {
            fill();
            continue;
        }
        if (feed == nullptr && most < longest_line && std::ferror(stream_) != 0) return {};
        const std::size_t size =
            feed != nullptr ? static_cast<std::size_t>(static_cast<const char*>(feed) - first) + 1 : most;
        begin_ += size;
        return {first, size};
    }
}

void TextLines::fill() {
    std::memmove(block_.data(), block_.data() + begin_, end_ - begin_);
    end_ -= begin_;
    begin_ = 0;
    const std::size_t wanted = block_.size() - end_;
    const std::size_t read = std::fread(block_.data() + end_, 1, wanted, stream_);
    end_ += read;
    at_end_ = read < wanted;
    is_plain_ = is_plain({block_.data(), end_});
}

void TextLines::skip_rest_of_line() {
    for (std::span<char> chunk = take(); !chunk.empty(); chunk = take()) {
        const void* zero = std::memchr(chunk.data(), 0, chunk.size());
        if (zero == chunk.data() || (zero == nullptr && chunk.back() == '\n')) return;
    }
}

}  // namespace orvix::gsl
