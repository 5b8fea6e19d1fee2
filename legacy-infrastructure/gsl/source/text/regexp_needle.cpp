#include "text/regexp_needle.h"

#include "text/regexp_blocks.h"
#include "text/regexp_rarity.h"

#include <algorithm>

namespace orvix::gsl::text::regexp {

namespace {

// Two bytes at their distances from a position.
class PairTest {
public:
    PairTest(std::string_view text, std::size_t first, std::size_t second)
        : first_(first),
          second_(second),
          first_byte_(text[first]),
          second_byte_(text[second]),
          first_block_(filled_with(static_cast<unsigned char>(first_byte_))),
          second_block_(filled_with(static_cast<unsigned char>(second_byte_))) {}

    std::size_t reach() const { return std::max(first_, second_) + 1; }

    Hits operator()(const char* at) const {
        return (load(at + first_) == first_block_) & (load(at + second_) == second_block_);
    }
    bool is_hit(const char* at) const { return at[first_] == first_byte_ && at[second_] == second_byte_; }

private:
    std::size_t first_;
    std::size_t second_;
    char first_byte_;
    char second_byte_;
    Block first_block_;
    Block second_block_;
};

}  // namespace

Needle::Needle(std::string_view text) : text_(text) {
    constexpr std::size_t far_enough = 16;
    const std::size_t count = std::min(text.size(), far_enough);
    for (std::size_t i = 1; i < count; ++i) {
        if (frequency_of(text[i]) < frequency_of(text[rarest_])) rarest_ = i;
    }
    second_ = rarest_ == 0 && count > 1 ? 1 : 0;
    for (std::size_t i = second_ + 1; i < count; ++i) {
        if (i != rarest_ && frequency_of(text[i]) < frequency_of(text[second_])) second_ = i;
    }
    constexpr unsigned rare = 2;
    is_rare_ = frequency_of(text[rarest_]) <= rare;
}

// The C library finds a single byte fastest of all. If it turns out to be common here, two bytes at a time are better.
const char* Needle::find_rarest(const char* at) const {
    constexpr std::ptrdiff_t worthwhile = 256;  // bytes from one place to the next
    const char* from = at;
    for (const char* patience = at - 8 * worthwhile; patience <= at; patience += worthwhile) {
        const char* const hit = std::strchr(from, text_[rarest_]);
        if (hit == nullptr) return nullptr;
        from = hit + 1;
        if (hit - at < static_cast<std::ptrdiff_t>(rarest_)) continue;
        at = hit - rarest_;
        if (stands_at(at, text_)) return at;
        ++at;
    }
    return find_pair(at);
}

const char* Needle::find_pair(const char* at) const {
    const PairTest test(text_, rarest_, second_);
    while ((at = find_in_blocks(at, test.reach(), test)) != nullptr && !stands_at(at, text_)) ++at;
    return at;
}

}  // namespace orvix::gsl::text::regexp
