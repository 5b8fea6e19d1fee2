#include "text/stripped_text.h"

#include "text/bytes.h"

#include <orvix/gsl/status.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace orvix::gsl::text {

namespace {

constexpr std::size_t most_given = 32;

[[noreturn]] void end_for_long_text() {
    std::fputs("FATAL ERROR: number text longer than 31 bytes\n", stderr);
    std::exit(EXIT_FAILURE);
}

// How many zeros stand behind the decimals of a mantissa that is to have at least `min_decimals`.
std::size_t missing_zeros(std::string_view mantissa, int min_decimals) {
    const std::size_t point = mantissa.find('.');
    const std::size_t decimals = point == std::string_view::npos ? 0 : mantissa.size() - point - 1;
    return static_cast<std::size_t>(std::max(min_decimals - static_cast<int>(decimals), 0));
}

}  // namespace

char* keep(std::string_view text, KeptText& buffer) {
    if (text.size() > most_kept) end_for_long_text();
    move_text(buffer.data(), text.data(), text.size());
    return buffer.data();
}

char* give(std::string_view text, char* out, char* otherwise) {
    if (out == nullptr) return otherwise;
    if (text.size() > most_given) return discard(out);
    move_text(out, text.data(), text.size());
    return out;
}

char* discard(char* out) {
    if (out != nullptr) {
        move_text(out, " ", 1);
        gmem_ee_free(out);
    }
    return nullptr;
}

std::string_view mantissa_of(std::string_view number) { return number.substr(0, number.find('e')); }

std::string_view without_last_zeros(std::string_view mantissa) {
    while (mantissa.size() > 1 && mantissa.back() == '0' && mantissa[mantissa.size() - 2] != '.') {
        mantissa.remove_suffix(1);
    }
    return mantissa;
}

StrippedText stripped(double value, int min_decimals, std::ptrdiff_t max_digits) {
    StrippedText text;
    text.size = 0;
    const std::ptrdiff_t width = std::min<std::ptrdiff_t>(max_digits, most_asked_for) + 2;
    const char* const number_end = write_fitted(value, width, decimals_to_fill(value, width), text.bytes);
    if (number_end == nullptr) return text;

    const std::string_view number(text.bytes, static_cast<std::size_t>(number_end - text.bytes));
    const std::string_view exponent = number.substr(mantissa_of(number).size());
    const std::string_view mantissa = without_last_zeros(mantissa_of(number));
    const std::size_t zeros = missing_zeros(mantissa, std::min(min_decimals, most_asked_for));
    const bool wants_point = zeros > 0 && mantissa.find('.') == std::string_view::npos;  // behind a lone "0"
    char* const end = text.bytes + mantissa.size() + (wants_point ? 1 : 0);
    std::memmove(end + zeros, exponent.data(), exponent.size());
    std::memset(end, '0', zeros);
    if (wants_point) end[-1] = '.';
    text.size = static_cast<std::size_t>(end - text.bytes) + zeros + exponent.size();
    if (text.size > most_kept) end_for_long_text();
    return text;
}

TenSplit split_by_ten(double magnitude) {
    if (magnitude <= 1e-99) return {1, -99};
    const double log = std::log10(magnitude);
    const double mantissa_log = std::fmod(log, 1.0);
    const double exponent = std::floor(log - mantissa_log + 0.1);
    return mantissa_log < 0 ? TenSplit{mantissa_log + 1, exponent - 1} : TenSplit{mantissa_log, exponent};
}

}  // namespace orvix::gsl::text
