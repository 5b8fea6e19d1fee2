// Checked output of text.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

namespace orvix::gsl::env {

// Collects text and writes it to a stream in large pieces. After a failed write nothing more is written.
class TextWriter {
public:
    // `stream` has no buffer, and stays the caller's to close.
    explicit TextWriter(std::FILE* stream) : stream_(stream) { text_.reserve(piece_bytes); }

    void write(std::string_view text) {
        if (text.size() > piece_bytes - text_.size()) flush();
        if (text.size() > piece_bytes) {
            put(text);
        } else {
            text_ += text;
        }
    }

    // Writes what is left. True if all text reached the stream.
    bool flush() {
        put(text_);
        text_.clear();
        return written_;
    }

private:
    static constexpr std::size_t piece_bytes = std::size_t{16} << 10;

    void put(std::string_view text) {
        if (written_ && !text.empty()) written_ = std::fwrite(text.data(), 1, text.size(), stream_) == text.size();
    }

    std::FILE* stream_;
    std::string text_;
    bool written_ = true;
};

}  // namespace orvix::gsl::env
