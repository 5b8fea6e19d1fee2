// The registries of records of the memory-backed parsers.
#pragma once

#include "text/growing_block.h"

#include <orvix/gsl/line_parser.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace orvix::gsl::text {

// One record. Its line and clumps are the caller's, and noted for whoever looks at the registry in a debugger.
struct parser_registry_entry {
    const char* line;
    parserec_clump* clumps;
    std::uint32_t slot;  // 0 in a free entry
    bool in_use;         // a parse has finished with this entry

    bool is_free() const { return !in_use && slot == 0; }
};

// How the plain form searches and grows: from the first entry, and by one.
class PlainPolicy {
public:
    static constexpr bool looks_for_no_slot = true;  // on release, a record without slot is looked for like any other

    static std::size_t likely_index(std::uint32_t /*slot*/) { return 0; }
    static std::size_t first_to_reuse(std::size_t /*count*/) { return 0; }
    static std::size_t grown(std::size_t capacity) { return capacity + 1; }
    void taken(std::size_t /*index*/) {}
    void removed(std::size_t /*count*/) {}
};

// How the efficient form does: where the record's entry was made, from the entry taken last, and by doubling.
class EfficientPolicy {
public:
    static constexpr bool looks_for_no_slot = false;

    static std::size_t likely_index(std::uint32_t slot) { return slot - 1; }
    std::size_t first_to_reuse(std::size_t count) const { return free_hint_ < count ? free_hint_ : 0; }
    static std::size_t grown(std::size_t capacity) { return capacity == 0 ? 100 : 2 * capacity + 2; }
    void taken(std::size_t index) { free_hint_ = index; }
    void removed(std::size_t count) { free_hint_ = std::min(free_hint_, count > 0 ? count - 1 : 0); }

private:
    std::size_t free_hint_ = 0;
};

// A dense array of entries. A removed entry's place is taken by the last one, so entries are known by their slot alone.
// Slots may come twice: they are given by the count of entries, which sinks. The entry that is found first serves.
template <class Policy>
class ParserRegistry {
public:
    static constexpr std::size_t nowhere = static_cast<std::size_t>(-1);

    bool is_empty() const { return count_ == 0; }
    std::size_t count() const { return count_; }
    parser_registry_entry& operator[](std::size_t index) { return entries_[index]; }

    // Where the record of that slot stands.
    std::size_t find(std::uint32_t slot) const {
        const std::size_t likely = Policy::likely_index(slot);
        if (likely < count_ && entries_[likely].slot == slot) return likely;
        return first_from(0, [slot](const parser_registry_entry& entry) { return entry.slot == slot; });
    }

    // An entry that a parse without memory left free.
    std::size_t reuse() {
        const std::size_t start = policy_.first_to_reuse(count_);
        const std::size_t index = first_from(start, [](const parser_registry_entry& entry) { return entry.is_free(); });
        if (index != nowhere) policy_.taken(index);
        return index;
    }

    // A new entry at the end, free; nowhere without memory.
    std::size_t append() {
        if (count_ == entries_.capacity() && !entries_.grow(Policy::grown(count_))) return nowhere;
        entries_[count_] = {};
        policy_.taken(count_);
        return count_++;
    }

    void remove(std::size_t index) {
        --count_;
        entries_[index] = entries_[count_];
        policy_.removed(count_);
        if (count_ == 0) entries_.release();
    }

    void clear() {
        entries_.release();
        count_ = 0;
    }

private:
    template <class Test>
    std::size_t first_from(std::size_t start, Test test) const {
        for (std::size_t i = start; i < count_; ++i) {
            if (test(entries_[i])) return i;
        }
        return nowhere;
    }

    GrowingBlock<parser_registry_entry> entries_;
    std::size_t count_ = 0;
    Policy policy_;
};

}  // namespace orvix::gsl::text
