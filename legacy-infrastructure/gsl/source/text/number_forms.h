// Real numbers as text for a field of a given width, in one of three forms:
//
//     fixed      12.500        no wider than it must be
//     zero           0.000     filled up with blanks in front, to one byte less than the field
//     exponent   1.25e+001     as many digits as the field takes, three for the exponent
//
// Two rules choose between them. The fitted one takes the exponent form where the fixed one is too wide or shows only
// zeros; the strict one takes the fixed form or none.
#pragma once

#include <cstddef>

namespace orvix::gsl::text {

// Give the place behind the text, which has no zero byte yet; null, with nothing that counts written, if no form fits.
// Infinite numbers and those that are none have no form. With the zero byte, a text takes at most room_for_field()
// bytes.
char* write_fitted(double value, std::ptrdiff_t width, std::ptrdiff_t decimals, char* to);
char* write_strict(double value, std::ptrdiff_t width, std::ptrdiff_t decimals, char* to);

// The decimals that make a field's text as long as the field, the sign's place included: fewer by each place that the
// whole part takes beyond the first. Negative if the whole part does not fit.
std::ptrdiff_t decimals_to_fill(double value, std::ptrdiff_t width);

// The bytes that a field's text and its zero byte may take.
constexpr std::ptrdiff_t room_for_field(std::ptrdiff_t width, std::ptrdiff_t decimals) {
    constexpr std::ptrdiff_t beside_decimals = sizeof "-0." - 1;
    const std::ptrdiff_t shortest = beside_decimals + (decimals > 0 ? decimals : 0);
    return (width > shortest ? width : shortest) + 2;  // the limit of the fixed form may be rounded to one digit more
}

}  // namespace orvix::gsl::text
