#include <orvix/gsl/sort.h>

#include "system/pending_ranges.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace {

using orvix::gsl::PendingRanges;
using orvix::gsl::Range;
using Comparison = int (*)(const void*, const void*);

// Both places are read before either is written, so that they may be the same.
template <std::size_t Bytes>
void swap_fixed(char* a, char* b) {
    struct Block {
        char bytes[Bytes];
    };
    Block from_a;
    Block from_b;
    std::memcpy(&from_a, a, Bytes);
    std::memcpy(&from_b, b, Bytes);
    std::memcpy(a, &from_b, Bytes);
    std::memcpy(b, &from_a, Bytes);
}

// Swaps two runs of bytes, which are the same or do not overlap.
void swap_bytes(char* a, char* b, std::size_t count) {
    constexpr std::size_t word = sizeof(std::uint64_t);
    for (; count >= word; a += word, b += word, count -= word) swap_fixed<word>(a, b);
    for (; count > 0; ++a, ++b, --count) swap_fixed<1>(a, b);
}

// Elements of a size that many arrays have: steps and swaps are single instructions.
template <std::size_t Bytes>
struct FixedElements {
    static constexpr std::size_t size = Bytes;
    static void swap(char* a, char* b) { swap_fixed<Bytes>(a, b); }
};

struct AnyElements {
    std::size_t size;
    void swap(char* a, char* b) const { swap_bytes(a, b, size); }
};

// Exchanges of two elements that are still to be made.
class ExchangeList {
public:
    // Without a branch.
    void add_if(bool condition, char* a, char* b) {
        pairs_[count_] = {a, b};
        count_ += static_cast<std::size_t>(condition);
    }

    bool is_full() const { return count_ == pairs_.size(); }

    template <class Elements>
    void carry_out(const Elements& elements) {
        for (std::size_t i = 0; i < count_; ++i) elements.swap(pairs_[i].a, pairs_[i].b);
        count_ = 0;
    }

private:
    struct Pair {
        char* a;
        char* b;
    };
    std::array<Pair, 32> pairs_;
    std::size_t count_ = 0;
};

// What is left to sort of a range: the elements below the pivot and those above it.
struct Parts {
    Range lower;
    Range upper;
};

// Three-way quicksort. Callers rely on the order in which elements are compared, and the order of equal elements hangs
// on every swap: no step may be left out, added or moved.
template <class Elements>
class Sorter {
public:
    Sorter(Elements elements, Comparison compare) : elements_(elements), compare_(compare) {}

    void sort(Range range) const {
        PendingRanges pending;
        while (true) {
            const auto [lower, upper] = split(range);
            if (lower.count > 1 && upper.count > 1) {
                range = pending.first_of(lower, upper);
            } else if (lower.count > 1 || upper.count > 1) {
                range = lower.count > 1 ? lower : upper;
            } else if (!pending.empty()) {
                range = pending.pop();
            } else {
                return;
            }
        }
    }

private:
    std::size_t bytes(std::size_t count) const { return count * elements_.size; }
    std::size_t count_between(const char* from, const char* to) const {
        return static_cast<std::size_t>(to - from) / elements_.size;
    }

    void insertion_sort(Range range) const {
        const char* const end = range.base + bytes(range.count);
        for (char* next = range.base + bytes(1); next < end; next += bytes(1)) {
            for (char* place = next; place > range.base && compare_(place - bytes(1), place) > 0; place -= bytes(1)) {
                elements_.swap(place, place - bytes(1));
            }
        }
    }

    char* median(char* a, char* b, char* c) const {
        const bool rising = compare_(a, b) < 0;
        const int order = compare_(b, c);
        if (rising ? order < 0 : order > 0) return b;
        return (compare_(a, c) < 0) == rising ? c : a;
    }

    // The median of nine elements for long ranges, of three for shorter ones, and the middle of seven.
    char* pivot(Range range) const {
        char* middle = range.base + bytes(range.count / 2);
        if (range.count == 7) return middle;
        char* first = range.base;
        char* last = range.base + bytes(range.count - 1);
        if (range.count > 40) {
            const std::size_t step = bytes(range.count / 8);
            first = median(first, first + step, first + 2 * step);
            middle = median(middle - step, middle, middle + step);
            last = median(last - 2 * step, last - step, last);
        }
        return median(first, middle, last);
    }

    // Where a range is divided while it is partitioned:
    //
    //     | pivot and equal | less | not seen yet | greater | equal |
    //     ^ base            ^ pa   ^ pb         ^ pc      ^ pd      ^ end
    //
    // pc and pd point at the last element left of their mark.
    struct Marks {
        char* pa;
        char* pb;
        char* pc;
        char* pd;
        bool swapped;  // whether an element was moved at all
    };

    // Partitions a range whose pivot stands in front, until nothing is left to see: then pb is the element after pc.
    Marks partition(char* base, char* end) const {
        char* pa = base + bytes(1);
        char* pb = pa;
        char* pc = end - bytes(1);
        char* pd = pc;
        bool swapped = false;
        std::size_t exchanges = 0;
        while (true) {
            for (int order; pb <= pc && (order = compare_(pb, base)) <= 0; pb += bytes(1)) {
                if (order != 0) continue;
                swapped = true;
                elements_.swap(pa, pb);
                pa += bytes(1);
            }
            for (int order; pb <= pc && (order = compare_(pc, base)) >= 0; pc -= bytes(1)) {
                if (order != 0) continue;
                swapped = true;
                elements_.swap(pc, pd);
                pd -= bytes(1);
            }
            if (pb > pc) return {pa, pb, pc, pd, swapped};
            swapped = true;
            elements_.swap(pb, pc);
            pb += bytes(1);
            pc -= bytes(1);
            if (++exchanges == exchanges_of_disorder && is_cheap_to_compare(base, end)) {
                return partition_without_branches(base, {pa, pb, pc, pd, swapped});
            }
        }
    }

    // Elements larger than a pointer have their keys within them more often than not, and a range of this size lies in
    // the nearest caches: a comparison is over before the processor has recovered from a wrong guess at its answer.
    bool is_cheap_to_compare(const char* base, const char* end) const {
        constexpr std::ptrdiff_t near_bytes = 65536;
        return elements_.size > sizeof(void*) && end - base <= near_bytes;
    }

    // Goes on with a partition of elements in disorder, where every other guess at an answer is wrong. No branch hangs
    // on whether an element is less or greater: answers become masks, which move the marks.
    //
    // The element at pb is looked at until one is greater; with that one in hand the elements at pc are, until one is
    // less, and then the two change places. So pc moves on after each look at it, whatever the answer, and pb after
    // each answer of "less". Exchanges wait, as no element of theirs is looked at again before the end.
    Marks partition_without_branches(const char* base, Marks marks) const {
        auto [pa, pb, pc, pd, swapped] = marks;
        ExchangeList exchanges;
        std::size_t in_hand = 0;  // a mask: all bits set if the element at pb is known to be greater
        char* next = pb;
        while (pb <= pc) {
            const int order = compare_(next, base);
            if (order == 0) {
                exchanges.carry_out(elements_);
                if (in_hand != 0) {
                    elements_.swap(pc, pd);
                    pd -= bytes(1);
                    next = pc -= bytes(1);
                } else {
                    elements_.swap(pa, pb);
                    pa += bytes(1);
                    next = pb += bytes(1);
                }
                continue;
            }
            const auto less = -static_cast<std::size_t>(order < 0);
            exchanges.add_if((less & in_hand) != 0, pb, pc);
            pc -= bytes(1) & in_hand;
            char* const after_pb = pb + bytes(1);
            next = order < 0 ? after_pb : pc;
            pb += bytes(1) & less;
            in_hand = ~less;
            if (exchanges.is_full()) exchanges.carry_out(elements_);
        }
        exchanges.carry_out(elements_);
        return {pa, pb, pc, pd, swapped};
    }

    // Moves the equal elements from both ends to the middle, by as few swaps as will do.
    Parts gather(char* base, char* end, const Marks& marks) const {
        const std::size_t less = count_between(marks.pa, marks.pb);
        const std::size_t greater = count_between(marks.pc, marks.pd);
        const std::size_t front = bytes(std::min(count_between(base, marks.pa), less));
        const std::size_t back = bytes(std::min(greater, count_between(marks.pd, end) - 1));
        swap_bytes(base, marks.pb - front, front);
        swap_bytes(marks.pb, end - back, back);
        return {{base, less}, {end - bytes(greater), greater}};
    }

    // Sorts a short range, or one that seems to be in order as nothing had to be moved; splits any other.
    Parts split(Range range) const {
        if (range.count >= 7) {
            char* const end = range.base + bytes(range.count);
            elements_.swap(range.base, pivot(range));
            const Marks marks = partition(range.base, end);
            if (marks.swapped) return gather(range.base, end, marks);
        }
        insertion_sort(range);
        return {{nullptr, 0}, {nullptr, 0}};
    }

    // As many in one range are no accident: what was sorted and has been changed in a few places has fewer.
    static constexpr std::size_t exchanges_of_disorder = 2;

    [[no_unique_address]] Elements elements_;
    Comparison compare_;
};

template <class Elements>
void sort(Elements elements, Range range, Comparison compare) {
    Sorter<Elements>(elements, compare).sort(range);
}

}  // namespace

void gsl_qsort(char* base, std::size_t count, std::size_t size, int (*compare)()) {
    if (base == nullptr || count < 2 || size == 0 || compare == nullptr) return;
    // The declared type names no arguments; what callers hand in is a function of two. By way of void (*)(), the one
    // function type that compilers let stand for all others.
    const auto order = reinterpret_cast<Comparison>(reinterpret_cast<void (*)()>(compare));
    const Range all{base, count};
    switch (size) {
        case 4:
            return sort(FixedElements<4>(), all, order);
        case 8:
            return sort(FixedElements<8>(), all, order);
        case 16:
            return sort(FixedElements<16>(), all, order);
        default:
            return sort(AnyElements{size}, all, order);
    }
}
