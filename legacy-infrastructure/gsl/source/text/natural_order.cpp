#include "text/bytes.h"

#include <orvix/gsl/string_utilities.h>

#include <algorithm>
#include <string_view>

using namespace orvix::gsl::text;

namespace {

int sign_of(bool greater, bool less) { return static_cast<int>(greater) - static_cast<int>(less); }

int by_length(std::string_view a, std::string_view b) { return sign_of(a.size() > b.size(), a.size() < b.size()); }

// Digits outweigh every other byte.
int weight(char c) { return static_cast<unsigned char>(to_lower(c)) + (is_digit(c) ? 500 : 0); }

std::string_view digits_at(std::string_view text, std::size_t at) {
    const auto* end = std::find_if_not(text.begin() + static_cast<std::ptrdiff_t>(at), text.end(), is_digit);
    return text.substr(at, static_cast<std::size_t>(end - text.begin()) - at);
}

std::string_view without_leading_zeros(std::string_view digits) {
    return digits.substr(std::min(digits.find_first_not_of('0'), digits.size()));
}

// By value; numbers of any length.
int compare_numbers(std::string_view a, std::string_view b) {
    a = without_leading_zeros(a);
    b = without_leading_zeros(b);
    if (a.size() != b.size()) return by_length(a, b);
    return sign_of(a > b, a < b);
}

std::size_t common_tail(std::string_view a, std::string_view b) {
    const std::size_t most = std::min(a.size(), b.size());
    const auto ends = std::mismatch(a.rbegin(), a.rbegin() + static_cast<std::ptrdiff_t>(most), b.rbegin());
    return static_cast<std::size_t>(ends.first - a.rbegin());
}

int compare(std::string_view a, std::string_view b) {
    const std::size_t shorter = std::min(a.size(), b.size());
    std::size_t number_end = 0;  // end of the number in which `i` lies, if that was looked at already
    std::size_t tail = std::string_view::npos;

    for (std::size_t i = 0; i < shorter; ++i) {
        if (i >= number_end && is_digit(a[i]) && is_digit(b[i])) {
            const std::string_view first = digits_at(a, i);
            const std::string_view second = digits_at(b, i);
            // The texts behind the numbers are equal if they are as long as each other and lie in the common tail,
            // which is measured once: comparing them at every number would make names of many numbers quadratic.
            const std::size_t rest = a.size() - i - first.size();
            if (rest == b.size() - i - second.size()) {
                if (tail == std::string_view::npos) tail = common_tail(a, b);
                if (rest <= tail) {
                    const int order = compare_numbers(first, second);
                    return order != 0 ? order : by_length(a, b);
                }
            }
            number_end = i + first.size();
        }
        if (a[i] == b[i]) continue;
        const int first = weight(a[i]);
        const int second = weight(b[i]);
        if (first != second) return sign_of(first > second, first < second);
    }
    return by_length(a, b);
}

}  // namespace

int gparse_alpha_numeric_strcasecmp(const char* a, const char* b) { return compare(a, b); }
