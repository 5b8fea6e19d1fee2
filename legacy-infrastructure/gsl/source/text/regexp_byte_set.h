// Sets of bytes as 256 bits.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace orvix::gsl::text::regexp {

// A subject holds no zero byte, but ends in one: in sets of what may come next, that byte stands for the end.
class ByteSet {
public:
    static constexpr ByteSet all() {
        ByteSet set;
        for (std::uint64_t& word : set.words_) word = ~std::uint64_t{0};
        return set;
    }
    static constexpr ByteSet of(char c) {
        ByteSet set;
        set.add(c);
        return set;
    }
    // All bytes that a subject can hold.
    static constexpr ByteSet any() { return all().without('\0'); }

    constexpr bool has(char c) const { return (words_[byte(c) / 64] >> (byte(c) % 64) & 1) != 0; }
    constexpr void add(char c) { words_[byte(c) / 64] |= std::uint64_t{1} << (byte(c) % 64); }

    constexpr ByteSet without(char c) const {
        ByteSet set = *this;
        set.words_[byte(c) / 64] &= ~(std::uint64_t{1} << (byte(c) % 64));
        return set;
    }

    constexpr ByteSet operator~() const {
        ByteSet set;
        for (std::size_t i = 0; i < words_.size(); ++i) set.words_[i] = ~words_[i];
        return set;
    }
    constexpr ByteSet operator|(const ByteSet& other) const {
        ByteSet set;
        for (std::size_t i = 0; i < words_.size(); ++i) set.words_[i] = words_[i] | other.words_[i];
        return set;
    }

    constexpr bool meets(const ByteSet& other) const {
        std::uint64_t common = 0;
        for (std::size_t i = 0; i < words_.size(); ++i) common |= words_[i] & other.words_[i];
        return common != 0;
    }

    // Calls visit(c) for each member, from the lowest byte to the highest.
    template <class Visit>
    constexpr void for_each(Visit visit) const {
        for (std::size_t i = 0; i < words_.size(); ++i) {
            for (std::uint64_t rest = words_[i]; rest != 0; rest &= rest - 1) {
                visit(static_cast<char>(i * 64 + static_cast<std::size_t>(std::countr_zero(rest))));
            }
        }
    }

    constexpr bool operator==(const ByteSet&) const = default;

private:
    static constexpr std::size_t byte(char c) { return static_cast<unsigned char>(c); }

    std::array<std::uint64_t, 4> words_{};
};

}  // namespace orvix::gsl::text::regexp
