#include "env/folded_name.h"

#include "text/bytes.h"

#include <algorithm>
#include <cstring>

namespace orvix::gsl::env {

namespace {

// Turns `a` to `z` to upper case in eight bytes at once, lane by lane. Adding what is missing to 128 sets the top bit
// of a lane whose low seven bits reach a bound.
constexpr std::uint64_t upper_case(std::uint64_t word) {
    constexpr std::uint64_t ones = 0x0101'0101'0101'0101;
    constexpr std::uint64_t top_bits = ones << 7;
    const std::uint64_t low = word & ~top_bits;
    const std::uint64_t from_a = low + (128 - 'a') * ones;
    const std::uint64_t beyond_z = low + (128 - 'z' - 1) * ones;
    const std::uint64_t letters = from_a & ~beyond_z & ~word & top_bits;
    return word - (letters >> 2);  // 0x80 >> 2 is the distance of the cases
}

}  // namespace

FoldedName::FoldedName(const char* name) { fold(name, name != nullptr ? text::bounded_length(name, longest_name) : 0); }

FoldedName::FoldedName(std::string_view name) { fold(name.data(), std::min(name.size(), longest_name)); }

void FoldedName::fold(const char* name, std::size_t length) {
    std::uint64_t hash = length;
    const auto mix = [&hash](std::uint64_t word) {
        hash = (hash ^ word) * 0x9e3779b97f4a7c15u;  // 2^64 over the golden ratio: spreads every bit upwards
        hash ^= hash >> 32;
    };
    std::size_t at = 0;
    for (std::uint64_t word; at + sizeof word <= length; at += sizeof word) {
        std::memcpy(&word, name + at, sizeof word);
        word = upper_case(word);
        std::memcpy(key_.data() + at, &word, sizeof word);
        mix(word);
    }
    std::uint64_t rest = 0;
    for (; at < length; ++at) {
        const char c = text::to_upper(name[at]);
        key_[at] = c;
        rest = rest << 8 | static_cast<unsigned char>(c);
    }
    mix(rest);
    key_[length] = '\0';
    length_ = length;
    tag_ = static_cast<std::uint16_t>(std::max<std::uint64_t>(hash & 0xffff, 1));
}

}  // namespace orvix::gsl::env
