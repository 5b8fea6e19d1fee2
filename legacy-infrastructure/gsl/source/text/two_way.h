// Substring search in linear time and constant memory, whatever the texts: the two-way method of Crochemore and Perrin.
//
// A needle is cut in two at a critical position, such that a mismatch in the right part, compared first and from left
// to right, rules out every start up to it, and a mismatch in the left part every start within the needle's period.
// Where the needle is periodic throughout, the part known to match after such a shift is not compared again.
//
// Both texts are reached through functions of an index, so that one search serves folded and reversed texts as well.
#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>

namespace orvix::gsl::text {

struct MaximalSuffix {
    std::size_t start;
    std::size_t period;
};

// The greatest suffix of a text of `length` bytes in the order `less`, and the period of that suffix.
template <class Byte, class Less>
MaximalSuffix maximal_suffix(const Byte& byte, std::size_t length, Less less) {
    MaximalSuffix best{0, 1};
    std::size_t candidate = 1;
    std::size_t equal = 0;  // bytes that the candidate has in common with the best
    while (candidate + equal < length) {
        const auto a = byte(candidate + equal);
        const auto b = byte(best.start + equal);
        if (a == b) {
            if (++equal == best.period) {
                candidate += equal;
                equal = 0;
            }
        } else if (less(a, b)) {
            candidate += equal + 1;
            equal = 0;
            best.period = candidate - best.start;
        } else {
            best = {candidate++, 1};
            equal = 0;
        }
    }
    return best;
}

// Finds the first place where the needle stands in the hay.
//
// @param holds   holds(n): whether the hay has at least n bytes; asked with n that never shrink
// @param hay     hay(i): byte i of the hay
// @param length  of the needle, at least 1
// @param needle  needle(i): byte i of the needle
template <class Holds, class Hay, class Needle>
std::optional<std::size_t> find_two_way(Holds holds, Hay hay, std::size_t length, Needle needle) {
    const MaximalSuffix up = maximal_suffix(needle, length, [](auto a, auto b) { return a < b; });
    const MaximalSuffix down = maximal_suffix(needle, length, [](auto a, auto b) { return a > b; });
    const auto [cut, suffix_period] = up.start > down.start ? up : down;

    bool periodic = suffix_period + cut <= length;
    for (std::size_t i = 0; periodic && i < cut; ++i) periodic = needle(i) == needle(i + suffix_period);
    const std::size_t period = periodic ? suffix_period : std::max(cut, length - cut) + 1;

    std::size_t at = 0;
    std::size_t known = 0;  // bytes of the needle that are known to match at `at`
    while (holds(at + length)) {
        std::size_t right = std::max(cut, known);
        while (right < length && needle(right) == hay(at + right)) ++right;
        if (right < length) {
            at += right - cut + 1;
            known = 0;
            continue;
        }
        std::size_t left = cut;
        while (left > known && needle(left - 1) == hay(at + left - 1)) --left;
        if (left <= known) return at;
        at += period;
        known = periodic ? length - period : 0;
    }
    return std::nullopt;
}

}  // namespace orvix::gsl::text
