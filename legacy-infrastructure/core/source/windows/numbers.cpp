#include <orvix/core/numbers.h>

#include <cerrno>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>
#include <system_error>

namespace orvix::core {

namespace {

bool is_white_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

bool is_digit(char c) { return c >= '0' && c <= '9'; }

bool is_hexadecimal(char c) { return is_digit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

// "0x" begins a hexadecimal number only if a digit follows, also one behind the point.
bool begins_hexadecimal(const char* text) {
    if (text[0] != '0' || (text[1] != 'x' && text[1] != 'X')) return false;
    return is_hexadecimal(text[2]) || (text[2] == '.' && is_hexadecimal(text[3]));
}

// Tells a number that is too large from one that is too small, by the power of its first digit that is not zero.
bool is_too_large(std::string_view number, bool hexadecimal) {
    std::int64_t power = 0;
    bool behind_point = false;
    bool significant = false;
    std::size_t i = 0;
    for (; i < number.size() && (number[i] == '.' || (hexadecimal ? is_hexadecimal(number[i]) : is_digit(number[i])));
         ++i) {
        if (number[i] == '.') {
            behind_point = true;
            continue;
        }
        significant = significant || number[i] != '0';
        if (significant && !behind_point) ++power;
        if (!significant && behind_point) --power;
    }
    if (hexadecimal) power *= 4;
    if (i == number.size()) return power > 0;
    ++i;  // the letter
    const bool negative = number[i] == '-';
    if (number[i] == '-' || number[i] == '+') ++i;
    constexpr std::int64_t more_than_any_text_makes_up_for = INT64_MAX / 100;
    std::int64_t exponent = 0;
    for (; i < number.size() && exponent < more_than_any_text_makes_up_for; ++i) {
        exponent = exponent * 10 + (number[i] - '0');
    }
    return power + (negative ? -exponent : exponent) > 0;
}

}  // namespace

// The C library has no strtod for a locale other than the process's that reads hexadecimal numbers too.
double strtod_c(const char* text, const char** end) {
    const char* start = text;
    while (is_white_space(*start)) ++start;
    const bool negative = *start == '-';
    if (*start == '-' || *start == '+') ++start;
    const bool hexadecimal = begins_hexadecimal(start);
    if (hexadecimal) start += 2;
    *end = text;
    if (*start == '-') return 0;  // one sign is enough

    const auto format = hexadecimal ? std::chars_format::hex : std::chars_format::general;
    double value = 0;
    const auto [stop, error] = std::from_chars(start, start + std::strlen(start), value, format);
    if (error == std::errc::invalid_argument) return 0;
    *end = stop;
    if (error == std::errc::result_out_of_range) {
        errno = ERANGE;
        value = is_too_large({start, stop}, hexadecimal) ? std::numeric_limits<double>::infinity() : 0;
    }
    return negative ? -value : value;
}

}  // namespace orvix::core
