// Numbers out of text, under the rules of the "C" locale.
#pragma once

#include "text/bytes.h"
#include "text/wide_arithmetic.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

namespace orvix::gsl::text {

// What `strtod` makes of the front of a text: the value, correctly rounded, and how many bytes it took; 0 bytes and the
// value 0 if no number is there.
struct Conversion {
    double value;
    std::size_t size;
};

Conversion convert_front(std::string_view text);

// mantissa * 10^power, correctly rounded, for powers from -27 to 27.
double scaled_by_ten(std::uint64_t mantissa, int power);

// What `strtod` skips in front of a number.
constexpr bool is_white_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

constexpr bool is_sign(char c) { return c == '+' || c == '-'; }

constexpr bool is_exponent_mark(char c) { return c == 'e' || c == 'E'; }

// All that a double holds exactly.
inline constexpr double exact_powers_of_ten[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                                 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

double remote_power_of_ten(std::ptrdiff_t exponent);

// The number nearest to 10^exponent; 0 and infinity beyond what there is.
inline double power_of_ten(std::ptrdiff_t exponent) {
    constexpr std::ptrdiff_t most_exact = std::size(exact_powers_of_ten) - 1;
    if (exponent < -most_exact || exponent > most_exact) return remote_power_of_ten(exponent);
    return exponent < 0 ? 1 / exact_powers_of_ten[-exponent] : exact_powers_of_ten[exponent];
}

enum class Reading { done, no_number, undecided };

// What stands at the front of a text: bytes of a decimal number as far as they go, and what they are.
struct DecimalFront {
    Reading reading;
    const char* end;
    double value;  // if reading is done
};

constexpr bool may_begin_decimal(char c) { return c >= '+' && c <= '9'; }  // with "," and "/", which cost nothing

// Reads decimal numbers of up to 19 digits, leading zeros included, times or divided by a moderate power of ten.
// Others, and what an "x" may make hexadecimal, are left undecided. The text is not empty, and ends at `end`, or at its
// zero byte if that is null.
inline DecimalFront read_decimal_front(const char* text, const char* end) {
    if (!may_begin_decimal(*text)) return {Reading::no_number, text, 0};  // most words end here
    constexpr std::ptrdiff_t most_digits = 19;                            // that 64 bits hold
    constexpr std::uint64_t most_exact = std::uint64_t{1} << 53;
    constexpr std::ptrdiff_t most_exact_power = std::size(exact_powers_of_ten) - 1;
    constexpr std::ptrdiff_t most_power = powers_of_five.size() - 1;

    const char* at = text;
    const auto stands = [&](auto is) { return at != end && is(*at); };
    const auto digit = [](char c) { return static_cast<unsigned>(static_cast<unsigned char>(c)) - '0'; };
    std::uint64_t mantissa = 0;
    const auto take_digits = [&] {
        const char* const start = at;
        for (; at != end && digit(*at) <= 9; ++at) mantissa = mantissa * 10 + digit(*at);
        return at - start;
    };

    const bool negative = stands([](char c) { return c == '-'; });
    if (stands(is_sign)) ++at;
    std::ptrdiff_t digits = take_digits();
    std::ptrdiff_t power = 0;
    if (stands([](char c) { return c == '.'; })) {
        ++at;
        power = -take_digits();
        digits -= power;
    }
    if (stands([](char c) { return c == 'x' || c == 'X'; })) return {Reading::undecided, at, 0};
    if (digits == 0) return {Reading::no_number, at, 0};
    if (stands(is_exponent_mark)) {
        ++at;
        const bool below_one = stands([](char c) { return c == '-'; });
        if (stands(is_sign)) ++at;
        if (!stands(is_digit)) return {Reading::no_number, at, 0};
        std::ptrdiff_t exponent = 0;
        for (; stands(is_digit); ++at) exponent = std::min<std::ptrdiff_t>(exponent * 10 + (*at - '0'), 10000);
        power += below_one ? -exponent : exponent;
    }
    if (digits > most_digits || power < -most_power || power > most_power) return {Reading::undecided, at, 0};
    double magnitude = 0;
    if (mantissa > most_exact || power < -most_exact_power || power > most_exact_power) {
        magnitude = scaled_by_ten(mantissa, static_cast<int>(power));
    } else {  // one operation on two exact numbers rounds correctly
        const auto whole = static_cast<double>(mantissa);
        magnitude = power < 0 ? whole / exact_powers_of_ten[-power] : whole * exact_powers_of_ten[power];
    }
    return {Reading::done, at, negative ? -magnitude : magnitude};
}

// Reads a text that is one number as a whole, begins with "+", "-", "." or a digit, and ends in "." or a digit. These
// ends rule out the names that `strtod` knows and exponents that are not complete. False for any other text.
//
// `front` is what stands at its front. Where that is no number, or goes not as far as the text, none is there: only an
// "x" is known to the C library beyond the bytes of a decimal number.
inline bool read_number(std::string_view text, const DecimalFront& front, double* value) {
    if (front.reading != Reading::undecided) {
        *value = front.value;
        return front.reading == Reading::done && front.end == text.data() + text.size();
    }
    const char last = text.back();
    if (!is_digit(last) && last != '.') return false;
    const Conversion conversion = convert_front(text);
    *value = conversion.value;
    return conversion.size == text.size();
}

inline bool read_number(std::string_view text, double* value) {
    if (text.empty()) return false;
    return read_number(text, read_decimal_front(text.data(), text.data() + text.size()), value);
}

// The same for a text that ends with its zero byte.
inline bool read_number(const char* text, double* value) {
    const DecimalFront front = read_decimal_front(text, nullptr);
    if (front.reading == Reading::undecided) return read_number(std::string_view(text), front, value);
    *value = front.value;
    return front.reading == Reading::done && *front.end == '\0';
}

// True for a value without fraction, from -2147483647 to 2147483647; the one number below is out of range on purpose.
inline bool is_whole_number(double value) {
    return std::abs(value) <= 2147483647.0 && static_cast<double>(static_cast<std::int32_t>(value)) == value;
}

}  // namespace orvix::gsl::text
