// A slow, obvious model of number text: digits by exact arithmetic, texts put together from digits, the place of the
// point and the sign.
#pragma once

#include "exact_decimal.h"

#include <cmath>
#include <cstdlib>
#include <optional>
#include <string>

namespace orvix::test::model {

using Text = std::optional<std::string>;  // nothing where the number has no text

// Digits, and how many of them stand before the point.
struct RealDigits {
    std::string digits;
    int point;
};

inline RealDigits fixed_digits(double magnitude, int decimals) {
    const std::string digits = exact(magnitude).rounded(decimals);
    return {digits, static_cast<int>(digits.size()) - decimals};
}

inline RealDigits leading_digits(double magnitude, int count) {
    const ExactDecimal number = exact(magnitude);
    const auto wanted = static_cast<std::size_t>(count);
    if (number.is_zero()) return {std::string(wanted, '0'), 1};
    const std::string digits = number.rounded(count - 1 - number.exponent());
    return {digits.substr(0, wanted), number.exponent() + 1 + static_cast<int>(digits.size() - wanted)};
}

inline std::string zeros(int count) { return std::string(static_cast<std::size_t>(std::max(count, 0)), '0'); }

inline std::string sign_of(double value) { return std::signbit(value) ? "-" : ""; }

inline std::string fixed_form(double value, int decimals) {
    const RealDigits real = fixed_digits(std::abs(value), decimals);
    const auto whole = static_cast<std::size_t>(std::max(real.point, 0));
    const std::string front = whole == 0 ? "0" : real.digits.substr(0, whole);
    return sign_of(value) + front + '.' + zeros(std::min(-real.point, decimals)) + real.digits.substr(whole);
}

inline std::string zero_form(int width, int decimals) {
    return std::string(static_cast<std::size_t>(std::max(width - decimals - 3, 0)), ' ') + "0." + zeros(decimals);
}

inline Text exponent_form(double value, int width) {
    if (width < 9) return std::nullopt;
    const RealDigits real = leading_digits(std::abs(value), width - 7);
    const int exponent = value == 0 ? 0 : real.point - 1;
    const std::string power = std::to_string(std::abs(exponent));
    return sign_of(value) + real.digits.substr(0, 1) + '.' + real.digits.substr(1) + (exponent < 0 ? "e-" : "e+") +
           zeros(3 - static_cast<int>(power.size())) + power;
}

inline double power_of_ten(int exponent) {
    if (exponent < -324) return 0;
    return exponent > 308 ? HUGE_VAL : static_cast<double>(std::pow(10.0L, exponent));
}

inline Text fitted(double value, int width, int decimals) {
    if (!std::isfinite(value)) return std::nullopt;
    if (width > 0 && value == 0 && decimals == 0) return "0";
    if (decimals < 0) return exponent_form(value, width);
    const double magnitude = std::abs(value);
    const double low = power_of_ten(-decimals);
    if (magnitude > power_of_ten(width - decimals - 2) - low) return exponent_form(value, width);
    if (magnitude < low) return magnitude > 1e-23 ? exponent_form(value, width) : zero_form(width, decimals);
    return fixed_form(value, decimals);
}

inline Text strict(double value, int width, int decimals) {
    if (!std::isfinite(value)) return std::nullopt;
    if (width > 0 && value == 0 && decimals == 0) return "0";
    if (decimals < 0) return exponent_form(value, width);
    if (std::abs(value) < power_of_ten(-decimals)) return zero_form(width, decimals);
    const std::string text = fixed_form(value, decimals);
    const auto before_point = static_cast<int>(text.find('.') - sign_of(value).size());
    return before_point > width - decimals - 2 ? std::nullopt : Text(text);
}

}  // namespace orvix::test::model
