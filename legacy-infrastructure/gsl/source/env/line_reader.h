// Lines of text files, in the pieces in which a growing line buffer takes them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

namespace orvix::core {
class File;
}

namespace orvix::gsl::env {

// Reads a file in large chunks and hands out its lines. What counts as one line is told by a line buffer that is
// filled as `std::fgets` fills it, and whose text ends at the first NUL byte:
//
// - a buffer of `first_bytes` takes a line, newline included, or its first `first_bytes - 1` bytes;
// - while it is full, without a newline at its end and without a NUL in it, it grows by `growth_bytes` and takes that
//   much more of the line. It stays grown for the lines that follow. With `growth_bytes` 0 it never grows, and the rest
//   of a long line is a line of its own;
// - the text of a line ends before its first NUL. What the buffer holds behind the NUL is lost; what did not fit in the
//   buffer any more is the next line.
//
// Memory is bounded by the longest line.
class LineReader {
public:
    // Reads from where the file stands. It stays the caller's.
    LineReader(core::File& file, std::size_t first_bytes, std::size_t growth_bytes);

    // The next line, with its newline if it has one. Good until the next call. False at the end, after a failed read,
    // and without memory.
    bool next(std::string_view* line);

    // True if the end was not reached: a read failed, or memory ran out.
    bool failed() const { return failed_; }

    // Bytes taken from the file so far.
    std::uint64_t bytes_read() const { return bytes_read_; }

    LineReader(const LineReader&) = delete;
    LineReader& operator=(const LineReader&) = delete;

private:
    static constexpr std::size_t small_file_bytes = 4096;

    struct Free {
        void operator()(char* block) const;
    };

    std::string_view take(std::size_t bytes);
    bool read_more();
    bool make_room();
    void move_to_front(char* chunk);
    void find_nul(std::size_t from);

    core::File& file_;
    std::size_t line_bytes_;  // size of the line buffer, its zero byte included
    std::size_t growth_bytes_;

    std::array<char, small_file_bytes> first_chunk_;
    std::unique_ptr<char, Free> larger_chunk_;
    char* chunk_ = first_chunk_.data();
    std::size_t chunk_bytes_ = small_file_bytes;
    std::size_t begin_ = 0;  // first byte not handed out
    std::size_t end_ = 0;    // behind the last byte read
    std::size_t nul_ = 0;    // the first NUL in [begin_, end_), or end_
    std::uint64_t bytes_read_ = 0;
    bool ended_ = false;
    bool failed_ = false;
};

}  // namespace orvix::gsl::env
