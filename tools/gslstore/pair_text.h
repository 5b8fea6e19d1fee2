// Pairs as lines of text: KEY, a tab, VALUE.
//
//     \\  a backslash      \t  a tab      \n  a line feed      \r  a carriage return      \xHH  any byte, in
//     hexadecimal
//
// Written as they are: printable ASCII, and well-formed UTF-8 but for control characters and the byte order mark. All
// else is written with an escape, so that the lines are UTF-8 text that any editor shows. Read are any bytes: those
// that are no tab, line feed or backslash stand for themselves.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace gslstore {

void append_escaped(std::string* to, std::string_view bytes);

// The line of a pair, with its line feed.
std::string line_of_pair(std::string_view key, std::string_view value);

// Where a text is wrong, and how.
struct TextFault {
    std::size_t column;  // of the byte, from 1
    std::string text;
};

// The bytes that a text stands for, added to `*bytes`.
std::optional<TextFault> read_escaped(std::string_view text, std::string* bytes);

// The pair of a line, which is given without its line end.
std::optional<TextFault> read_pair(std::string_view line, std::string* key, std::string* value);

}  // namespace gslstore
