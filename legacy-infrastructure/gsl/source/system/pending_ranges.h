// The parts of an array that wait until the part before them is sorted.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <new>

namespace orvix::gsl {

// A run of neighbouring elements.
struct Range {
    char* base;
    std::size_t count;
};

// A stack. It stands in for the call stack of a sort that calls itself on the lower of two parts before it goes on with
// the upper, whose depth only the data bounds: a hostile order leaves an upper part waiting for every few elements.
//
// Slots are used in order up to a mark; the 64 behind it are in reserve for the day when memory is refused. Then the
// smaller part goes first and the larger waits, so that each slot in use halves the part at work: one for each bit of a
// count is enough.
class PendingRanges {
public:
    bool empty() const { return used_ == 0; }

    Range pop() { return ranges()[--used_]; }

    // Gives the part to sort first, and keeps the other: the lower is first as long as there is memory for it.
    Range first_of(const Range& lower, const Range& upper) {
        const bool lower_first = used_ + reserve < capacity_ || grow() || lower.count <= upper.count;
        ranges()[used_++] = lower_first ? upper : lower;
        return lower_first ? lower : upper;
    }

private:
    static constexpr std::size_t reserve = 64;
    static constexpr std::size_t local_capacity = 128 + reserve;

    Range* ranges() { return heap_ != nullptr ? heap_.get() : local_.data(); }

    bool grow() {
        std::unique_ptr<Range[]> larger(new (std::nothrow) Range[2 * capacity_]);
        if (larger == nullptr) return false;
        std::copy_n(ranges(), used_, larger.get());
        heap_ = std::move(larger);
        capacity_ *= 2;
        return true;
    }

    std::array<Range, local_capacity> local_;
    std::unique_ptr<Range[]> heap_;
    std::size_t used_ = 0;
    std::size_t capacity_ = local_capacity;
};

}  // namespace orvix::gsl
