// The one spelling of names: backslashes, no doubled separators, no "\.\" pieces, ASCII lower case.
#pragma once

#include <cstddef>
#include <string>

namespace orvix::gsl::paths {

constexpr bool is_separator(char c) { return c == '/' || c == '\\'; }

constexpr char to_lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

inline void lower(std::string* text) {
    for (char& c : *text) c = to_lower(c);
}

// Whether separators at the end of a name go. The forms on `std::string` keep one.
enum class Trailing { cut, kept };

// Brings the first `size` bytes at `text` to that spelling, in place. Returns the length of the result, which is never
// longer; no zero byte is written.
std::size_t fix_up(char* text, std::size_t size, Trailing trailing);
void fix_up(std::string* text, Trailing trailing);

}  // namespace orvix::gsl::paths
