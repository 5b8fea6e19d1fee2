// Looks at sixteen positions of a subject at once, with vectors as gcc and clang have them on every processor.
#pragma once

#include "text/bytes.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace orvix::gsl::text::regexp {

constexpr std::size_t block_bytes = 16;
using Block = unsigned char __attribute__((vector_size(block_bytes)));
using Hits = decltype(Block() == Block());  // all bits of a byte are set, or none

inline Block load(const void* at) {
    Block block;
    std::memcpy(&block, at, block_bytes);
    return block;
}

inline Block filled_with(unsigned char byte) {
    Block block;
    std::memset(&block, byte, block_bytes);
    return block;
}

using Halves = std::uint64_t __attribute__((vector_size(block_bytes)));

inline bool is_zero(Block block) {
    const auto halves = reinterpret_cast<Halves>(block);
    return (halves[0] | halves[1]) == 0;
}

inline bool has_hit(Hits hits) { return !is_zero(reinterpret_cast<Block>(hits)); }

// Position of the first hit in a block that has one.
inline std::size_t first_hit(Hits hits) {
    const auto halves = reinterpret_cast<Halves>(hits);
    const std::uint64_t half = halves[0] != 0 ? halves[0] : halves[1];
    const int zeros = std::endian::native == std::endian::little ? std::countr_zero(half) : std::countl_zero(half);
    return (halves[0] != 0 ? 0 : block_bytes / 2) + static_cast<std::size_t>(zeros) / 8;
}

// Finds the first position that passes a test. The test looks at `reach` bytes from a position on: test(at) at sixteen
// positions, and test.is_hit(at) at one.
//
// The end of the subject is looked for no further than the search has come, so that a caller who looks for one match
// after the other pays for each stretch once.
template <class Test>
const char* find_in_blocks(const char* at, std::size_t reach, const Test& test) {
    constexpr std::size_t stride = 4 * block_bytes;
    constexpr std::size_t first_window = 128;
    constexpr std::size_t largest_window = 8192;
    const char* const start = at;
    const char* end = at;  // of the bytes that are known to belong to the subject
    const auto holds = [&](std::size_t positions) {
        return static_cast<std::size_t>(end - at) >= positions + reach - 1;
    };
    bool is_at_end = false;
    for (std::size_t window = first_window; !is_at_end; window = std::min(2 * window, largest_window)) {
        const std::size_t length = bounded_length(end, window);
        end += length;
        is_at_end = length < window;
        for (; holds(stride); at += stride) {
            const Hits hits[] = {test(at), test(at + block_bytes), test(at + 2 * block_bytes),
                                 test(at + 3 * block_bytes)};
            if (!has_hit(hits[0] | hits[1] | hits[2] | hits[3])) continue;
            std::size_t i = 0;
            while (!has_hit(hits[i])) ++i;
            return at + i * block_bytes + first_hit(hits[i]);
        }
    }
    for (; holds(block_bytes); at += block_bytes) {
        const Hits hits = test(at);
        if (has_hit(hits)) return at + first_hit(hits);
    }
    if (!holds(1)) return nullptr;
    if (static_cast<std::size_t>(end - start) >= block_bytes + reach - 1) {
        // The last block again or in part: what was looked at before had no hit.
        at = end - (block_bytes + reach - 1);
        const Hits hits = test(at);
        return has_hit(hits) ? at + first_hit(hits) : nullptr;
    }
    for (; holds(1); ++at) {
        if (test.is_hit(at)) return at;
    }
    return nullptr;
}

}  // namespace orvix::gsl::text::regexp
