// The decimal digits of real numbers, exact and correctly rounded: to nearest, ties to even. Magnitudes are finite and
// not below zero.
#pragma once

#include <cstddef>

namespace orvix::gsl::text {

// Writes a number in fixed notation: its whole part, a point, which is always there, and `decimals` digits; no zero
// byte. Gives the place behind them; null, with nothing written, if the whole part has more than `most_whole_digits`.
char* write_fixed(double magnitude, std::ptrdiff_t decimals, std::ptrdiff_t most_whole_digits, char* to);

// Writes the first `count` digits of a number, at least two, with a point behind the first; no zero byte. `exponent`
// receives the power of ten of the first digit, 0 for zero. Gives the place behind them.
char* write_leading_digits(double magnitude, std::ptrdiff_t count, int* exponent, char* to);

}  // namespace orvix::gsl::text
