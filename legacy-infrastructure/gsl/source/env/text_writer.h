// Checked output of text.
#pragma once

#include <orvix/core/file.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace orvix::gsl::env {

// Collects text and writes it over what a file holds, in large pieces. After a failed write nothing more is written.
class TextWriter {
public:
    // Writes from where the file stands, its start. It stays the caller's.
    explicit TextWriter(core::File& file) : file_(file) { text_.reserve(piece_bytes); }

    void write(std::string_view text) {
        if (text.size() > piece_bytes - text_.size()) put_collected();
        if (text.size() > piece_bytes) {
            put(text);
        } else {
            text_ += text;
        }
    }

    // Writes what is left, and cuts off what the file held beyond it; also when a write failed, so that no text of
    // before stands behind that of now. True if all text reached the file.
    bool finish() {
        put_collected();
        const bool cut = file_.shorten(bytes_);
        return written_ && cut;
    }

private:
    static constexpr std::size_t piece_bytes = std::size_t{16} << 10;

    void put_collected() {
        put(text_);
        text_.clear();
    }

    void put(std::string_view text) {
        if (!written_ || text.empty()) return;
        const std::size_t done = file_.write(text.data(), text.size());
        bytes_ += done;
        written_ = done == text.size();
    }

    core::File& file_;
    std::string text_;
    std::uint64_t bytes_ = 0;
    bool written_ = true;
};

}  // namespace orvix::gsl::env
