#include "text/number_forms.h"

#include "text/digits.h"
#include "text/number_reading.h"
#include "text/real_digits.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>

namespace orvix::gsl::text {

namespace {

enum class Form { zero, fixed, exponent };

constexpr std::ptrdiff_t any_number = std::numeric_limits<std::ptrdiff_t>::max();

constexpr double noise = 1e-23;  // values up to it are zero

// What fits is shown in fixed form, and what does not, or would be shown as zeros alone, in exponent form.
struct FittedRule {
    static Form form(double magnitude, std::ptrdiff_t width, std::ptrdiff_t decimals) {
        const double unit = power_of_ten(-decimals);
        const double largest = power_of_ten(width - decimals - 2) - unit;  // with a sign and a point beside it
        if (magnitude > largest) return Form::exponent;
        if (magnitude >= unit) return Form::fixed;
        return magnitude > noise ? Form::exponent : Form::zero;
    }
    static std::ptrdiff_t most_whole_digits(std::ptrdiff_t, std::ptrdiff_t) { return any_number; }
};

// What would be shown as zeros alone is zero, and what does not fit has no text.
struct StrictRule {
    static Form form(double magnitude, std::ptrdiff_t, std::ptrdiff_t decimals) {
        return magnitude < power_of_ten(-decimals) ? Form::zero : Form::fixed;
    }
    static std::ptrdiff_t most_whole_digits(std::ptrdiff_t width, std::ptrdiff_t decimals) {
        return width - decimals - 2;
    }
};

// The forms give the place behind their text, null if there is none.

char* write_zero(std::ptrdiff_t width, std::ptrdiff_t decimals, char* to) {
    const std::ptrdiff_t blanks = width - decimals - 3;
    if (blanks > 0) {
        std::memset(to, ' ', static_cast<std::size_t>(blanks));
        to += blanks;
    }
    *to++ = '0';
    *to++ = '.';
    std::memset(to, '0', static_cast<std::size_t>(decimals));
    return to + decimals;
}

char* write_exponent_form(double value, std::ptrdiff_t width, char* to) {
    constexpr std::ptrdiff_t beside_digits = sizeof "-.e+000" - 1;
    constexpr int exponent_digits = 3;
    if (width < beside_digits + 2) return nullptr;
    if (std::signbit(value)) *to++ = '-';
    int exponent = 0;
    to = write_leading_digits(std::abs(value), width - beside_digits, &exponent, to);
    *to++ = 'e';
    *to++ = exponent < 0 ? '-' : '+';
    return write_digits(static_cast<std::uint64_t>(std::abs(exponent)), exponent_digits, to);
}

char* write_signed_fixed(double value, std::ptrdiff_t decimals, std::ptrdiff_t most_whole_digits, char* to) {
    if (std::signbit(value)) *to++ = '-';
    return write_fixed(std::abs(value), decimals, most_whole_digits, to);
}

template <class Rule>
char* write_real(double value, std::ptrdiff_t width, std::ptrdiff_t decimals, char* to) {
    if (!std::isfinite(value)) return nullptr;
    if (value == 0 && decimals == 0 && width > 0) {
        *to = '0';
        return to + 1;
    }
    switch (decimals < 0 ? Form::exponent : Rule::form(std::abs(value), width, decimals)) {
        case Form::zero:
            return write_zero(width, decimals, to);
        case Form::fixed:
            return write_signed_fixed(value, decimals, Rule::most_whole_digits(width, decimals), to);
        case Form::exponent:
            return write_exponent_form(value, width, to);
    }
    return nullptr;
}

}  // namespace

char* write_fitted(double value, std::ptrdiff_t width, std::ptrdiff_t decimals, char* to) {
    return write_real<FittedRule>(value, width, decimals, to);
}

char* write_strict(double value, std::ptrdiff_t width, std::ptrdiff_t decimals, char* to) {
    return write_real<StrictRule>(value, width, decimals, to);
}

std::ptrdiff_t decimals_to_fill(double value, std::ptrdiff_t width) {
    const double magnitude = std::abs(value);
    const double exponent = std::isfinite(value) && magnitude > noise ? std::log10(magnitude) : 0;
    return width - static_cast<std::ptrdiff_t>(std::max(exponent, 0.0)) - 3;
}

}  // namespace orvix::gsl::text
