// The grammar of one line of a `.cfg` file, shared by loading and saving.
#pragma once

#include <cstddef>
#include <string_view>

namespace orvix::gsl::env {

// Line buffers of `.cfg` files start with so many bytes and grow by so many.
constexpr std::size_t line_buffer_step = 2048;

// The blank and the bytes 9 to 13, whatever the locale.
constexpr bool is_white_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

constexpr std::string_view without_trailing_white_space(std::string_view text) {
    while (!text.empty() && is_white_space(text.back())) text.remove_suffix(1);
    return text;
}

constexpr std::string_view without_leading_white_space(std::string_view text) {
    while (!text.empty() && is_white_space(text.front())) text.remove_prefix(1);
    return text;
}

// A line taken apart at its first `=`: the key without trailing white space (an indented key keeps its blanks) and the
// value without leading white space. What stands at the end of the value, a newline too, stays.
struct KeyAndValue {
    std::string_view key;
    std::string_view value;
};

// False if there is no `=`.
constexpr bool split_at_equals(std::string_view line, KeyAndValue* parts) {
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) return false;
    parts->key = without_trailing_white_space(line.substr(0, equals));
    parts->value = without_leading_white_space(line.substr(equals + 1));
    return true;
}

}  // namespace orvix::gsl::env
