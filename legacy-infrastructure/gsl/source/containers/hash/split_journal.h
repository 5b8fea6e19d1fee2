// What a split has done so far, so that it can be undone.
#pragma once

#include "containers/hash/split.h"

#include <memory>
#include <vector>

namespace orvix::gsl::hash {

// Throws std::bad_alloc without memory, before anything was noted.
class SplitJournal {
public:
    // Keeps a copy of a page that is about to be changed or freed.
    void save(const htab* table, const _bufhead* buffer);

    // Makes room for the address of a page that is about to be added.
    void expect_page() { added_.reserve(added_.size() + 1); }
    void note_added(std::uint32_t address) { added_.push_back(address); }

    // Brings both buckets back to what they were.
    void undo(const Split& split) const;

private:
    struct Saved {
        std::uint32_t address;  // 0 for the bucket's own page, which is in its buffer throughout
        std::unique_ptr<char[]> page;
    };
    std::vector<Saved> saved_;
    std::vector<std::uint32_t> added_;
};

}  // namespace orvix::gsl::hash
