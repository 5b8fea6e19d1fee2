#include "containers/hash/scan.h"

#include <cerrno>

namespace orvix::gsl::hash {

namespace {

void move_to_next_bucket(htab* table) {
    ++table->scan_bucket;
    table->scan_index = 1;
    table->scan_page = nullptr;
}

void stand_on(htab* table, _bufhead* page, std::uint32_t address) {
    table->scan_page = page;
    table->scan_address = address;
    table->scan_index = 1;
}

std::uint32_t scan_bucket(const htab* table) { return static_cast<std::uint32_t>(table->scan_bucket); }

// Other operations may have taken the buffer of the scan's page for another one.
bool holds_scan_page(const htab* table) {
    const _bufhead* const page = table->scan_page;
    const bool is_bucket = (page->flags & BUFFER_BUCKET) != 0;
    return table->scan_address == 0 ? is_bucket && page->addr == scan_bucket(table)
                                    : !is_bucket && page->addr == table->scan_address;
}

// Goes to the scan's page anew, along its chain. A page that is no longer there ends the bucket.
bool find_scan_page_again(htab* table) {
    CycleGuard guard{};
    _bufhead* page = fetch_bucket(table, scan_bucket(table));
    while (page != nullptr && table->scan_address != 0 && page->addr != table->scan_address) {
        if (Page(table, page).next_address() == 0) {
            move_to_next_bucket(table);
            return true;
        }
        page = next_of_chain(table, page, &guard);
    }
    table->scan_page = page;
    return page != nullptr;
}

// Goes to the first page of the next bucket that has any pairs. Without one the scan has come to its end.
bool find_bucket(htab* table) {
    for (; scan_bucket(table) <= table->top_bucket; ++table->scan_bucket) {
        _bufhead* const page = fetch_bucket(table, scan_bucket(table));
        if (page == nullptr) return false;
        if (Page(table, page).is_empty()) continue;
        stand_on(table, page, 0);
        table->scan_guard = {};
        return true;
    }
    table->scan_bucket = -1;
    return true;
}

// Goes to the page at an address, or past it if it is empty.
bool follow(htab* table, _bufhead* page, std::uint32_t address) {
    if (!visit(&table->scan_guard, address)) {
        errno = EINVAL;
        return false;
    }
    _bufhead* const next = fetch_overflow(table, address, page);
    if (next == nullptr) return false;
    stand_on(table, next, address);
    if (Page(table, next).is_empty()) move_to_next_bucket(table);
    return true;
}

// Goes to the next entry that is a pair; `scan_page` stays null at the end of the table.
bool find_pair(htab* table) {
    for (;;) {
        if (table->scan_page != nullptr && !holds_scan_page(table) && !find_scan_page_again(table)) return false;
        if (table->scan_page == nullptr) {
            if (!find_bucket(table)) return false;
            if (table->scan_page == nullptr) return true;
        }
        const Page page(table, table->scan_page);
        const auto index = static_cast<std::uint32_t>(table->scan_index);
        if (index > page.entry_words()) {
            move_to_next_bucket(table);
        } else if (page.word(index + 1) != MARK_OVERFLOW || page.is_big()) {
            return true;
        } else if (!follow(table, table->scan_page, page.word(index))) {
            return false;
        }
    }
}

void take_regular_pair(htab* table, DBT* key, DBT* value) {
    const Page page(table, table->scan_page);
    const auto index = static_cast<std::uint32_t>(table->scan_index);
    const PairOnPage pair(page, index);
    *key = page.text(pair.key_begin, pair.key_end);
    *value = page.text(pair.value_begin, pair.key_begin);
    table->scan_index += 2;
    if (index + 2 > page.entry_words()) move_to_next_bucket(table);
}

}  // namespace

int scan(htab* table, bool from_start, DBT* key, DBT* value) {
    if (from_start || table->scan_bucket < 0) {
        table->scan_bucket = -1;
        move_to_next_bucket(table);
    }
    bool found = find_pair(table);
    if (found && table->scan_page == nullptr) return 1;
    if (found) {
        if (!Page(table, table->scan_page).is_big()) {
            take_regular_pair(table, key, value);
            return 0;
        }
        found = __big_keydata(table, table->scan_page, key, value, true) == 0;
    }
    if (found) return 0;
    move_to_next_bucket(table);
    return -1;
}

bool move_scan_behind(htab* table, const BigPairEnd& end) {
    if (end.next == 0) {
        move_to_next_bucket(table);
        return true;
    }
    if (follow(table, end.last, end.next)) return true;
    table->scan_page = nullptr;
    return false;
}

}  // namespace orvix::gsl::hash
