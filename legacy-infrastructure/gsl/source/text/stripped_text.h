// What the conversions for display share: texts without surplus zeros, and the two kinds of buffers they go to.
#pragma once

#include "text/number_forms.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace orvix::gsl::text {

constexpr int most_asked_for = 30;  // decimals and digits: no more are given

// ---------------------------------------------------------------------------------------------------------------------
// Buffers

constexpr std::size_t most_kept = 31;

// A buffer of the library: what it holds, the caller reads until it is written again.
using KeptText = std::array<char, most_kept + 1>;

// Ends the process for a text that is too long: a number cut short would be another number. The text may come from the
// buffer itself.
char* keep(std::string_view text, KeptText& buffer);

// Copies a text to the caller's buffer and gives that; without one, gives `otherwise`. A text longer than such a buffer
// must hold is a failure.
char* give(std::string_view text, char* out, char* otherwise);

// The result of a failure: null. The caller's buffer goes with it.
char* discard(char* out);

// ---------------------------------------------------------------------------------------------------------------------
// Zeros

// What stands in front of the exponent.
std::string_view mantissa_of(std::string_view number);

// The first decimal stays, and so does the first byte.
std::string_view without_last_zeros(std::string_view mantissa);

// Room for the widest field and all the zeros that can be asked for.
struct StrippedText {
    char bytes[room_for_field(most_asked_for + 2, most_asked_for) + most_asked_for + 1];
    std::size_t size;

    std::string_view view() const { return {bytes, size}; }
};

// The value with at most `max_digits` digits, without zeros at its end beyond `min_decimals`. Empty if no form fits.
// Ends the process if the result is longer than a KeptText.
StrippedText stripped(double value, int min_decimals, std::ptrdiff_t max_digits);

// ---------------------------------------------------------------------------------------------------------------------
// Powers of ten

// 10^mantissa_log * 10^exponent. What is next to nothing counts as 10 * 10^-99.
struct TenSplit {
    double mantissa_log;
    double exponent;
};

TenSplit split_by_ten(double magnitude);

}  // namespace orvix::gsl::text
