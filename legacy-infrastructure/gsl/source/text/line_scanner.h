// The engine of all line parsers: finds the clumps of a line in one loop over its bytes. What bytes mean is a table;
// what becomes of a clump is the matter of a sink.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace orvix::gsl::text {

enum class ByteClass : unsigned char { text, separator, single, end };

// What each byte of a line means. The end wins over a single byte, and that over a separator.
class ByteClasses {
public:
    // `comment` ends the line as its zero byte does; NUL for none.
    ByteClasses(const char* delims, const char* singles, char comment) {
        for (; *delims != '\0'; ++delims) mark(*delims, ByteClass::separator);
        for (; *singles != '\0'; ++singles) mark(*singles, ByteClass::single);
        mark(comment, ByteClass::end);
        mark('\0', ByteClass::end);
    }

    ByteClass operator[](char c) const { return table_[static_cast<unsigned char>(c)]; }

    // No byte that a decimal number can hold means anything but text.
    bool numbers_are_text() const { return numbers_are_text_; }

private:
    void mark(char c, ByteClass meaning) {
        table_[static_cast<unsigned char>(c)] = meaning;
        numbers_are_text_ &= !(c >= '0' && c <= '9') && c != '+' && c != '-' && c != '.' && c != 'e' && c != 'E';
    }

    std::array<ByteClass, 256> table_{};
    bool numbers_are_text_ = true;
};

// Positions of the first and the last byte.
struct Clump {
    std::int32_t start;
    std::int32_t end;
};

// Positions are kept in 32 bits, so a line has no more bytes than this for its parsers.
constexpr std::ptrdiff_t longest_line = std::numeric_limits<std::int32_t>::max();

// Gives the clumps of a line to a sink, which answers:
//     full()              no more clumps, please: asked before each, except for a single byte directly behind a run
//     read_ahead(at)      a run of text begins here: how far the sink has read it already, if at all
//     add(clump, closed)  a run of text was found; closed if it does not end the line
//     add_single(clump)   a single byte was found
template <class Sink>
void scan_line(const char* line, const ByteClasses& classes, Sink& sink, std::ptrdiff_t most = longest_line) {
    for (const char* at = line;;) {
        while (classes[*at] == ByteClass::separator) ++at;
        if (classes[*at] == ByteClass::end || at - line >= most || sink.full()) return;
        if (classes[*at] == ByteClass::text) {
            const std::ptrdiff_t start = at - line;
            at = sink.read_ahead(at);
            while (classes[*at] == ByteClass::text) ++at;
            const std::ptrdiff_t end = std::min(at - line, most);
            sink.add({static_cast<std::int32_t>(start), static_cast<std::int32_t>(end - 1)},
                     classes[*at] != ByteClass::end);
            if (end == most) return;
        }
        if (classes[*at] == ByteClass::single) {
            const auto position = static_cast<std::int32_t>(at - line);
            sink.add_single({position, position});
            ++at;
        }
    }
}

}  // namespace orvix::gsl::text
