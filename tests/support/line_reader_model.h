// A plain model of the line readers, on bytes in memory.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>

namespace orvix::test {

// Gives the lines of a file as the readers are to give them; nothing is the end of the file for the reader.
class LineReaderModel {
public:
    explicit LineReaderModel(std::string bytes) : bytes_(std::move(bytes)) {}

    // `limit` is at least 2.
    std::optional<std::string> limited_line(std::size_t limit) {
        const auto chunk = take(limit - 1);
        if (!chunk) return std::nullopt;
        const std::string text = before_zero(*chunk);
        if (text.size() == limit - 1 && text.back() != '\n') skip_line();
        if (text.starts_with('\x1a')) return std::nullopt;
        return before_end(text);
    }

    std::optional<std::string> whole_line() {
        std::string line;
        while (true) {
            const auto chunk = take(1023);
            if (!chunk) return line.empty() ? std::nullopt : std::optional(line);
            const std::string text = before_zero(*chunk);
            if (line.empty() && text.starts_with('\x1a')) return std::nullopt;
            line += before_end(text);
            if (text.size() < 1023 || before_end(text) != text) return line;
        }
    }

private:
    // At most `most` bytes, no further than a line feed.
    std::optional<std::string> take(std::size_t most) {
        if (position_ == bytes_.size()) return std::nullopt;
        std::string chunk;
        while (chunk.size() < most && position_ < bytes_.size() && !chunk.ends_with('\n')) chunk += bytes_[position_++];
        return chunk;
    }

    void skip_line() {
        while (const auto chunk = take(1023)) {
            const std::string text = before_zero(*chunk);
            if (text.empty() || text.back() == '\n') return;
        }
    }

    static std::string before_zero(const std::string& chunk) { return chunk.c_str(); }
    static std::string before_end(const std::string& text) { return text.substr(0, text.find_first_of("\n\r\x1a")); }

    std::string bytes_;
    std::size_t position_ = 0;
};

}  // namespace orvix::test
