#include "containers/hash/pairs.h"

#include <cerrno>

namespace orvix::gsl::hash {

namespace {

bool expects_growth(const htab* table) {
    const std::int64_t for_each = table->key_count / (std::int64_t{table->top_bucket} + 1);
    return for_each > std::int64_t{table->fill_factor};
}

// Where a pair goes.
enum class Place : std::uint8_t {
    squeeze,  // on the page, in front of its link
    here,     // on the page, or on one to be added behind it
    failed
};

// Goes on along the chain to the page for a pair of so many bytes.
Place find_place(htab* table, _bufhead** buffer, std::size_t pair_bytes) {
    CycleGuard guard{};
    for (;;) {
        const Page page(table, *buffer);
        if (page.next_address() == 0) return Place::here;
        if (page.can_squeeze(pair_bytes)) return Place::squeeze;
        *buffer = next_of_chain(table, *buffer, &guard);
        if (*buffer == nullptr) return Place::failed;
    }
}

// By the page rules a squeezed pair neither marks its page nor counts.
void squeeze(htab* table, _bufhead* buffer, std::string_view key, std::string_view value) {
    Page page(table, buffer);
    if (table->keep_every_pair) {
        page.settle_low();
        mark_modified(buffer);
        ++table->key_count;
    }
    page.squeeze(key, value);
}

bool put_behind(htab* table, _bufhead* buffer, const DBT& key, const DBT& value) {
    _bufhead* const added = __add_ovflpage(table, buffer);
    if (added == nullptr) return false;
    Page page(table, added);
    if (page.fits(key.size + value.size)) {
        page.put(bytes_of(key), bytes_of(value));
        return true;
    }
    if (__big_insert(table, added, &key, &value) == 0) return true;
    const int saved = errno;
    Page(table, buffer).drop_link();
    buffer->ovfl = nullptr;
    __free_ovflpage(table, added);
    errno = saved;
    return false;
}

}  // namespace

int grow_if_full(htab* table) { return expects_growth(table) ? __expand_table(table) : 0; }

}  // namespace orvix::gsl::hash

using namespace orvix::gsl::hash;

std::uint32_t __call_hash(htab* table, const char* key, std::size_t length) {
    return bucket_of(table, hash_of(table, {key, length}));
}

int __addel(htab* table, _bufhead* buffer, const DBT* key, const DBT* value) {
    const std::size_t pair_bytes = key->size + value->size;
    const Place place = find_place(table, &buffer, pair_bytes);
    if (place == Place::failed) return -1;
    if (place == Place::squeeze) {
        squeeze(table, buffer, bytes_of(*key), bytes_of(*value));
        return 0;
    }
    Page page(table, buffer);
    if (table->keep_every_pair) page.settle_low();
    if (page.fits(pair_bytes)) {
        page.put(bytes_of(*key), bytes_of(*value));
        mark_modified(buffer);
        ++table->key_count;
        return grow_if_full(table);
    }
    if (!put_behind(table, buffer, *key, *value)) return -1;
    mark_modified(buffer);
    ++table->key_count;
    return __expand_table(table);
}

int __delpair(htab* table, _bufhead* buffer, std::int32_t index) {
    Page page(table, buffer);
    const auto at = static_cast<std::uint32_t>(index);
    const bool is_entry = at % 2 != 0 && at < page.entry_words();
    if (!is_entry || page.word(at + 1) < MARK_PAIR_MIN) {
        if (page.is_big()) return __big_delete(table, buffer);
        errno = EINVAL;
        return -1;
    }
    page.remove(at);
    --table->key_count;
    mark_modified(buffer);
    return 0;
}
