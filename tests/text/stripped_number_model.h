// The stripped conversions step by step, on strings.
#pragma once

#include "number_text_model.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <string>

namespace orvix::test::model {

struct Stripped {
    enum Kind { text, argument, failure, end_of_process };
    Kind kind;
    std::string bytes = {};
};

// In any locale.
inline double read_back(const std::string& number) {
    double value = 0;
    std::from_chars(number.data(), number.data() + number.size(), value);
    return value;
}

inline int log_of(double magnitude) { return static_cast<int>(std::log10(magnitude)); }

inline std::string drop_zeros(const std::string& number) {
    std::string kept = number.substr(0, number.find('e'));
    while (kept.size() > 1 && kept.back() == '0' && kept[kept.size() - 2] != '.') kept.pop_back();
    return kept;
}

inline Stripped double_stripped(double value, int min_decimals, int max_digits) {
    const int width = std::min(max_digits, 30) + 2;
    const double magnitude = std::abs(value);
    const bool has_log = std::isfinite(value) && magnitude > 1e-23 && std::log10(magnitude) >= 0;
    const Text number = fitted(value, width, width - (has_log ? log_of(magnitude) : 0) - 3);
    if (!number || number->empty()) return {Stripped::failure};

    const std::size_t mark = std::min(number->find('e'), number->size());
    std::string result = drop_zeros(*number);
    for (int wanted = std::min(min_decimals, 30); wanted > 0;) {
        const std::size_t point = result.find('.');
        if (point == std::string::npos) {
            result += '.';
        } else if (static_cast<int>(result.size() - point - 1) < wanted) {
            result += '0';
        } else {
            break;
        }
    }
    result += number->substr(mark);
    if (result.size() > 31) return {Stripped::end_of_process};
    return {Stripped::text, result};
}

// Whether the argument is a number is left to the caller, who has its value.
inline Stripped string_stripped(const std::string& number, double value, int min_decimals, int max_digits) {
    int decimals = std::min(min_decimals, 30);
    const int digits = std::min(max_digits, 30);
    if (number.find_first_of("eE") != std::string::npos) return {Stripped::argument};
    const std::size_t dot = number.find('.');
    if (dot == std::string::npos) {
        const std::string filled = number + '.' + zeros(decimals);
        if (filled.size() > 31) return {Stripped::end_of_process};
        return {Stripped::text, filled};
    }
    const bool is_wide = digits <= decimals;
    int width = static_cast<int>(dot) + decimals + (is_wide ? 5 : 1);
    int shift = 0;
    Stripped result = double_stripped(value, decimals, width);
    const bool first_succeeded = result.kind == Stripped::text;
    if (result.kind == Stripped::failure) {
        if (decimals < 9) {
            shift = 9 - decimals;
            width += shift;
            decimals = 9;
        }
        result = double_stripped(value, decimals, width);
        if (result.kind == Stripped::failure) return {Stripped::argument};
    }
    if (result.kind == Stripped::end_of_process) return result;

    const double rounded = read_back(result.bytes);
    const Text a = fitted(rounded, width, decimals);
    const Text b = fitted(rounded, width, width - 3);
    if (is_wide && first_succeeded) {
        if (a && b) result.bytes = *a + 'e' + drop_zeros(*b);
        return result;
    }
    double log = -99;
    if (std::abs(rounded) > 1e-99) log = std::floor(std::log10(std::abs(rounded)) + 1e-12);
    if (log < 0 && -log > decimals - shift) {
        if (!a || !b) return result;
        const std::string full = drop_zeros(*b);
        result.bytes = a->substr(0, a->find('e')) + 'e' + full.substr(0, full.find('.'));
    }
    if (!is_wide) result.bytes = result.bytes.substr(0, static_cast<std::size_t>(std::max(width, 0)));
    return result;
}

}  // namespace orvix::test::model
