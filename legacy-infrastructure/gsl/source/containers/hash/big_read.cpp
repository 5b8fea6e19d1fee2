#include "containers/hash/big_pair.h"
#include "containers/hash/scan.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <limits>

namespace orvix::gsl::hash {

namespace {

constexpr std::size_t most_bytes = std::numeric_limits<std::int32_t>::max();

// A text that is put together in a block of the table's, which grows and serves again for the next text.
class Assembly {
public:
    Assembly(char** block, std::uint32_t* capacity) : block_(block), capacity_(capacity) {}

    bool append(std::string_view part) {
        if (part.size() > most_bytes - size_) {
            errno = EINVAL;
            return false;
        }
        if (size_ + part.size() > *capacity_ && !grow(size_ + part.size())) return false;
        if (!part.empty()) std::memcpy(*block_ + size_, part.data(), part.size());
        size_ += part.size();
        return true;
    }
    DBT text() const { return {*block_, size_}; }

private:
    bool grow(std::size_t needed) {
        const std::size_t wanted = std::min(most_bytes, std::max(needed, 2 * std::size_t{*capacity_}));
        void* const larger = std::realloc(*block_, wanted);
        if (larger == nullptr) return false;
        *block_ = static_cast<char*>(larger);
        *capacity_ = static_cast<std::uint32_t>(wanted);
        return true;
    }

    char** block_;
    std::uint32_t* capacity_;
    std::size_t size_ = 0;
};

bool fail_damaged() {
    errno = EINVAL;
    return false;
}

// Some writers store an empty value behind a key that fills its last page as no part at all: the chain just goes on.
bool has_empty_value_behind(const Page& page, const Page& next) {
    return page.word(2) == MARK_KEY_END && page.free_bytes() == 0 && !next.is_big();
}

bool is_key_end(const Page& page) { return page.word(2) == MARK_KEY_END || page.word(2) == MARK_KEY_END_DATA; }

}  // namespace

_bufhead* next_of_chain(htab* table, _bufhead* page, CycleGuard* guard) {
    const std::uint32_t address = Page(table, page).next_address();
    if (address == 0 || !visit(guard, address)) {
        errno = EINVAL;
        return nullptr;
    }
    return fetch_overflow(table, address, page);
}

bool find_end(htab* table, _bufhead* buffer, BigPairEnd* end) {
    CycleGuard guard{};
    bool in_key = true;
    for (;;) {
        const Page page(table, buffer);
        if (!page.is_big()) return fail_damaged();
        *end = {buffer, page.next_address()};
        if (page.ends_big()) return true;
        const bool may_end = in_key && page.word(2) == MARK_KEY_END && page.free_bytes() == 0;
        in_key = in_key && !is_key_end(page);
        buffer = next_of_chain(table, buffer, &guard);
        if (buffer == nullptr) return false;
        if (may_end && !Page(table, buffer).is_big()) return true;
    }
}

namespace {

// Puts the rest of a value together, whose next part begins behind `buffer`.
bool read_value_pages(htab* table, _bufhead* buffer, Assembly* assembly, BigPairEnd* end) {
    CycleGuard guard{};
    for (;;) {
        buffer = next_of_chain(table, buffer, &guard);
        if (buffer == nullptr) return false;
        const Page page(table, buffer);
        if (!page.is_big() || page.word(2) == MARK_KEY_PART) return fail_damaged();
        if (!assembly->append(page.big_part())) return false;
        *end = {buffer, page.next_address()};
        if (page.word(2) == MARK_KEY_END_DATA) return page.ends_big() || fail_damaged();
    }
}

}  // namespace

bool read_value(htab* table, _bufhead* buffer, DBT* value, BigPairEnd* end) {
    CycleGuard guard{};
    while (Page(table, buffer).is_big() && !is_key_end(Page(table, buffer))) {
        buffer = next_of_chain(table, buffer, &guard);
        if (buffer == nullptr) return false;
    }
    const Page page(table, buffer);
    if (!page.is_big()) return fail_damaged();
    *end = {buffer, page.next_address()};
    Assembly assembly(&table->big_value, &table->big_value_bytes);
    if (page.word(2) == MARK_KEY_END_DATA) {
        if (!page.has_big_value_part()) return fail_damaged();
        const std::string_view part = page.big_value_part();
        if (page.free_bytes() != 0) {
            *value = page.text(Page::offset(page.word(4)), Page::offset(page.word(1)));
            return true;
        }
        if (!assembly.append(part)) return false;
    } else if (page.free_bytes() == 0) {
        CycleGuard next_guard{};
        _bufhead* const next = next_of_chain(table, buffer, &next_guard);
        if (next == nullptr) return false;
        if (has_empty_value_behind(page, Page(table, next))) {
            *value = page.text(page.size(), page.size());
            return true;
        }
    }
    if (!read_value_pages(table, buffer, &assembly, end)) return false;
    *value = assembly.text();
    return true;
}

bool read_pair(htab* table, _bufhead* buffer, DBT* key, DBT* value, BigPairEnd* end) {
    CycleGuard guard{};
    Assembly assembly(&table->big_key, &table->big_key_bytes);
    for (;;) {
        const Page page(table, buffer);
        if (!page.is_big()) return fail_damaged();
        if (!assembly.append(page.big_part())) return false;
        if (is_key_end(page)) break;
        buffer = next_of_chain(table, buffer, &guard);
        if (buffer == nullptr) return false;
    }
    *key = assembly.text();
    return read_value(table, buffer, value, end);
}

BigMatch compare_key(htab* table, _bufhead* buffer, std::string_view key) {
    CycleGuard guard{};
    for (;;) {
        const Page page(table, buffer);
        if (!page.is_big()) {
            errno = EINVAL;
            return BigMatch::failed;
        }
        const std::string_view part = page.big_part();
        if (is_key_end(page)) return part == key ? BigMatch::same : BigMatch::different;
        if (part != key.substr(0, part.size())) return BigMatch::different;
        key.remove_prefix(part.size());
        buffer = next_of_chain(table, buffer, &guard);
        if (buffer == nullptr) return BigMatch::failed;
    }
}

}  // namespace orvix::gsl::hash

using namespace orvix::gsl::hash;

std::int32_t __find_bigpair(htab* table, _bufhead* buffer, std::int32_t index, const char* key, std::int32_t size) {
    if (size < 0) return -2;
    switch (compare_key(table, buffer, {key, static_cast<std::size_t>(size)})) {
        case BigMatch::same:
            return index;
        case BigMatch::different:
            return -2;
        default:
            return -3;
    }
}

std::uint16_t __find_last_page(htab* table, _bufhead** buffer) {
    BigPairEnd end;
    if (!find_end(table, *buffer, &end)) return 0;
    *buffer = end.last;
    return static_cast<std::uint16_t>(end.next);
}

int __big_return(htab* table, _bufhead* buffer, std::int32_t, DBT* value, bool set_current) {
    BigPairEnd end;
    if (!read_value(table, buffer, value, &end)) return -1;
    return set_current && !move_scan_behind(table, end) ? -1 : 0;
}

int __big_keydata(htab* table, _bufhead* buffer, DBT* key, DBT* value, bool set_current) {
    BigPairEnd end;
    if (!read_pair(table, buffer, key, value, &end)) return -1;
    return set_current && !move_scan_behind(table, end) ? -1 : 0;
}
