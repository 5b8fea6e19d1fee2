// Exact arithmetic on decimal fractions, slow and obvious: every double is one, and so is every number text. The tests
// of number text measure the library with it.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string>

namespace orvix::test {

// digits * 10^-decimals, not below zero.
class ExactDecimal {
public:
    ExactDecimal(std::string digits, int decimals) : digits_(std::move(digits)), decimals_(decimals) {
        digits_.erase(0, std::min(digits_.find_first_not_of('0'), digits_.size()));
    }

    // mantissa * 2^exponent. Each halving is a fifth of the next decimal's unit, times five.
    static ExactDecimal binary(std::uint64_t mantissa, int exponent) {
        ExactDecimal result(std::to_string(mantissa), std::max(-exponent, 0));
        for (int left = std::abs(exponent); left > 0;) {
            std::int64_t factor = 1;
            for (; left > 0 && factor < 100000000; --left) factor *= exponent > 0 ? 2 : 5;
            result.multiply(factor);
        }
        return result;
    }

    bool is_zero() const { return digits_.empty(); }

    // The power of ten of the first digit.
    int exponent() const { return static_cast<int>(digits_.size()) - 1 - decimals_; }

    // The number in units of 10^-decimals, rounded to nearest, ties to even; without zeros in front, so "" for zero.
    // Decimals below zero make tens, hundreds and so on the units.
    std::string rounded(int decimals) const {
        if (is_zero()) return "";
        if (decimals >= decimals_) return digits_ + std::string(static_cast<std::size_t>(decimals - decimals_), '0');
        const auto dropped = static_cast<std::size_t>(decimals_ - decimals);
        const std::string all =
            digits_.size() > dropped ? digits_ : std::string(dropped - digits_.size(), '0') + digits_;
        std::string kept = all.substr(0, all.size() - dropped);
        const std::string rest = all.substr(all.size() - dropped);
        const std::string half = '5' + std::string(dropped - 1, '0');
        const bool is_odd = !kept.empty() && (kept.back() - '0') % 2 == 1;
        return rest > half || (rest == half && is_odd) ? successor(kept) : kept;
    }

    friend bool operator==(const ExactDecimal& a, const ExactDecimal& b) { return !(a < b) && !(b < a); }

    friend bool operator<(const ExactDecimal& a, const ExactDecimal& b) {
        const int decimals = std::max(a.decimals_, b.decimals_);
        const std::string left = a.rounded(decimals);
        const std::string right = b.rounded(decimals);
        return left.size() != right.size() ? left.size() < right.size() : left < right;
    }

private:
    void multiply(std::int64_t factor) {
        std::int64_t carry = 0;
        for (std::size_t i = digits_.size(); i-- > 0;) {
            carry += (digits_[i] - '0') * factor;
            digits_[i] = static_cast<char>('0' + carry % 10);
            carry /= 10;
        }
        if (carry != 0) digits_ = std::to_string(carry) + digits_;
    }

    static std::string successor(std::string digits) {
        for (std::size_t i = digits.size(); i-- > 0;) {
            if (digits[i] != '9') {
                ++digits[i];
                return digits;
            }
            digits[i] = '0';
        }
        return '1' + digits;
    }

    std::string digits_;  // without zeros in front
    int decimals_;
};

// A double's magnitude as mantissa * 2^exponent.
struct BinaryNumber {
    explicit BinaryNumber(std::uint64_t bits) {
        const auto field = static_cast<int>(bits >> 52 & 0x7ff);
        mantissa = (bits & 0xfffffffffffff) + (field != 0 ? std::uint64_t{1} << 52 : 0);
        exponent = std::max(field, 1) - 1075;
    }

    std::uint64_t mantissa;
    int exponent;
};

// A finite number's magnitude.
inline ExactDecimal exact(double value) {
    const BinaryNumber number(std::bit_cast<std::uint64_t>(value));
    return ExactDecimal::binary(number.mantissa, number.exponent);
}

// True if the double, not below zero, is the nearest to the number, or the even one of two. Infinity follows the
// largest double as if it were the next.
inline bool is_nearest(const ExactDecimal& number, double value) {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    const bool takes_ties = bits % 2 == 0;
    const auto halfway_above = [](std::uint64_t below) {
        const BinaryNumber from(below);
        return ExactDecimal::binary(2 * from.mantissa + 1, from.exponent - 1);
    };
    if (bits < std::bit_cast<std::uint64_t>(std::numeric_limits<double>::infinity())) {
        const ExactDecimal above = halfway_above(bits);
        if (above < number || (above == number && !takes_ties)) return false;
    }
    if (bits == 0) return true;
    const ExactDecimal below = halfway_above(bits - 1);
    return below < number || (below == number && takes_ties);
}

}  // namespace orvix::test
