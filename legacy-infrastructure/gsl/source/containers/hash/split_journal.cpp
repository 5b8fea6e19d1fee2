#include "containers/hash/split_journal.h"

#include "containers/hash/overflow.h"

namespace orvix::gsl::hash {

namespace {

_bufhead* find_in_pool(htab* table, std::uint32_t address) {
    _bufhead* buffer = table->bufhead.next;
    for (; buffer != &table->bufhead; buffer = buffer->next) {
        if (buffer->addr == address && (buffer->flags & BUFFER_BUCKET) == 0) return buffer;
    }
    return nullptr;
}

// Lets the buffers of a chain know each other again.
void relink(htab* table, _bufhead* buffer) {
    CycleGuard guard{};
    while (buffer != nullptr) {
        const std::uint32_t address = Page(table, buffer).next_address();
        const bool goes_on = address != 0 && visit(&guard, address);
        buffer->ovfl = goes_on ? find_in_pool(table, address) : nullptr;
        buffer = buffer->ovfl;
    }
}

}  // namespace

void SplitJournal::save(const htab* table, const _bufhead* buffer) {
    auto page = std::make_unique<char[]>(table->page_size);
    std::memcpy(page.get(), buffer->page, table->page_size);
    const bool is_bucket = (buffer->flags & BUFFER_BUCKET) != 0;
    saved_.push_back({is_bucket ? 0 : buffer->addr, std::move(page)});
}

void SplitJournal::undo(const Split& split) const {
    htab* const table = split.table;
    for (const std::uint32_t address : added_) {
        release_address(table, address);
        if (_bufhead* const buffer = find_in_pool(table, address)) __reclaim_buf(table, buffer);
    }
    for (const Saved& saved : saved_) {
        _bufhead* buffer = split.old_first;
        if (saved.address != 0) {
            claim_address(table, saved.address);
            buffer = find_in_pool(table, saved.address);
            if (buffer == nullptr) buffer = acquire(table, saved.address, split.old_first);
            if (buffer == nullptr) continue;
        }
        std::memcpy(buffer->page, saved.page.get(), table->page_size);
        mark_modified(buffer);
    }
    Page(table, split.new_first).make_fresh();
    split.new_first->ovfl = nullptr;
    relink(table, split.old_first);
}

}  // namespace orvix::gsl::hash
