// The lines of a text file, read in large blocks.
#pragma once

#include <array>
#include <cstddef>
#include <cstdio>
#include <span>

namespace orvix::gsl {

// Gives the lines that gfile_getline_limited gives with 1024 bytes, their tabs turned into blanks. It reads ahead, so
// nobody else may read from the stream.
class TextLines {
public:
    explicit TextLines(std::FILE* stream) : stream_(stream) {}

    // The next line, without an end; the bytes may be written to and stay until the next call. False at the end of the
    // file, at a read error and at a line that begins with byte 26.
    bool next(std::span<char>* line);

private:
    std::span<char> take();
    void fill();
    void skip_rest_of_line();

    std::FILE* stream_;
    std::array<char, 16384> block_;
    std::size_t begin_ = 0;  // of the bytes that were read and not yet taken
    std::size_t end_ = 0;
    bool at_end_ = false;        // nothing more to read
    bool is_plain_ = true;       // the block has no tab and no line end but line feeds, as most have
    bool line_goes_on_ = false;  // the last line was cut, and its rest is still to be thrown away
};

}  // namespace orvix::gsl
