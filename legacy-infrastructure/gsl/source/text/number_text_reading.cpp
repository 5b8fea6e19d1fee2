#include "text/bytes.h"
#include "text/number_reading.h"

#include <orvix/core/numbers.h>
#include <orvix/gsl/number_text.h>

#include <bit>
#include <cerrno>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>
#include <system_error>

using namespace orvix::gsl::text;

namespace {

// "inf" or "nan" stands at the front of a text of two bytes at least, in any letter case. Decided without branches,
// because most clumps of a line are words, and many begin with these letters.
bool begins_with_name(const char* text) {
    const auto folded = [](char c) { return static_cast<unsigned char>(c) | 0x20U; };  // right for letters alone
    const unsigned first = folded(text[0]);
    const unsigned second = folded(text[1]);
    const unsigned third = folded(text[2]);
    return ((first == 'i') & (second == 'n') & (third == 'f')) | ((first == 'n') & (second == 'a') & (third == 'n'));
}

// These two are kept apart, so that words are done with in a few instructions.
[[gnu::noinline]] bool store_beginning(const char* s, double* out) {
    *out = convert_front(s).value;
    return false;
}

[[gnu::noinline]] bool read_decimal(const char* s, double* out) {
    if (read_number(s, out)) return true;
    return store_beginning(s, out);
}

}  // namespace

// ---------------------------------------------------------------------------------------------------------------------
// The whole text is one number

bool gparse_astodbl(const char* s, double* out) {
    if (s == nullptr) return false;
    if (may_begin_decimal(*s)) return read_decimal(s, out);
    const bool is_short = s[0] == '\0' || s[1] == '\0';
    if (!is_short && (is_white_space(*s) || begins_with_name(s))) return store_beginning(s, out);
    *out = 0;
    return false;
}

bool gparse_astoflt(const char* s, float* out) {
    constexpr double most = 1.701411e+38;  // half of what a float holds
    *out = 0;
    double value = 0;
    if (s == nullptr || !read_number(s, &value)) return false;
    if (value > most || value < -most) {
        *out = std::bit_cast<float>(value > 0 ? 0x7efffff8U : 0xfefffff8U);
        return false;
    }
    *out = static_cast<float>(value);
    return true;
}

bool gparse_astoint(const char* s, int* out) {
    *out = 0;
    double value = 0;
    if (s == nullptr || !read_number(s, &value) || !is_whole_number(value)) return false;
    *out = static_cast<int>(value);
    return true;
}

bool gparse_astolng(const char* s, std::int32_t* out) { return gparse_astoint(s, out); }

// ---------------------------------------------------------------------------------------------------------------------
// As the C library reads

bool astr_str_to_double(const char* s, double* out) {
    errno = 0;
    const DecimalFront front = read_decimal_front(s, nullptr);
    if (front.reading == Reading::done && *front.end == '\0') {
        *out = front.value;
        return true;
    }
    const char* end = nullptr;
    const double value = orvix::core::strtod_c(s, &end);
    if (errno != 0 || *end != '\0') return false;
    *out = value;
    return true;
}

bool astr_str_to_long(const char* s, std::int32_t* out) {
    errno = 0;
    const char* first = s;
    while (is_white_space(*first)) ++first;
    const char* const end = first + std::strlen(first);
    if (*first == '+' && is_digit(first[1])) ++first;  // which from_chars does not take
    std::int32_t value = 0;
    const auto [rest, error] = std::from_chars(first, end, value);
    if (error == std::errc::result_out_of_range) errno = ERANGE;
    const bool is_empty = *s == '\0';
    if (!is_empty && (error != std::errc() || rest != end)) return false;
    *out = value;
    return true;
}

const char* gparse_parse_numeric_and_postnumeric_part(const char* s, std::size_t first, std::size_t last, int* out) {
    const char* const start = s + bounded_length(s, first);
    const char* end = start;
    for (std::size_t i = first; i < last && is_digit(*end); ++i) ++end;
    *out = 0;
    const auto error = std::from_chars(start, end, *out).ec;
    if (error == std::errc::result_out_of_range) *out = std::numeric_limits<int>::max();
    return end;
}
