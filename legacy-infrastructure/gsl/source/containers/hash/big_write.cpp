#include "containers/hash/big_pair.h"
#include "containers/hash/overflow.h"

#include <algorithm>
#include <cerrno>

namespace orvix::gsl::hash {

namespace {

// Keeps a buffer in the pool, and with it all pages that are fetched meanwhile.
class Pinned {
public:
    explicit Pinned(_bufhead* buffer) : buffer_(buffer), was_pinned_((buffer->flags & BUFFER_PINNED) != 0) {
        pin(buffer);
    }
    ~Pinned() {
        if (!was_pinned_) unpin(buffer_);
    }
    Pinned(const Pinned&) = delete;
    Pinned& operator=(const Pinned&) = delete;

private:
    _bufhead* buffer_;
    bool was_pinned_;
};

// Frees the pages from the one behind `first` on, as far as they are linked.
void free_chain_behind(htab* table, _bufhead* first) {
    std::uint32_t address = Page(table, first).next_address();
    _bufhead* buffer = address != 0 ? fetch_overflow(table, address, first) : nullptr;
    while (buffer != nullptr) {
        address = Page(table, buffer).next_address();
        _bufhead* const next = address != 0 ? fetch_overflow(table, address, buffer) : nullptr;
        __free_ovflpage(table, buffer);
        buffer = next;
    }
}

// Bytes of a part that leave room for a link behind it.
std::size_t space_on(const Page& page) { return page.free_bytes() - entry_bytes - link_room; }

// The value's first part goes behind the end of the key, which has its link already. The free word tells readers
// whether the value ends there: it must not become 0 if it does, nor stay above 0 if it does not. A value of just that
// length therefore goes to the next page whole.
std::size_t put_first_value_part(Page page, std::string_view value) {
    const std::size_t free = page.free_bytes();
    if (free == 0 || value.size() == free) {
        page.set_word(2, MARK_KEY_END);
        return 0;
    }
    const std::size_t bytes = std::min(free, value.size());
    page.put_big_value_part(value.substr(0, bytes));
    return bytes;
}

// Stores the parts of the key, and of the value what finds room behind them. The page that follows is left in
// `*buffer`.
bool put_key(htab* table, _bufhead** buffer, std::string_view key, std::string_view* value) {
    do {
        Page page(table, *buffer);
        const std::size_t space = space_on(page);
        std::size_t bytes = std::min(space, key.size());
        // An empty value needs a free byte behind the key to be seen.
        if (bytes == space && key.size() == space && value->empty()) --bytes;
        page.put_big_part(key.substr(0, bytes), MARK_KEY_PART);
        key.remove_prefix(bytes);
        *buffer = __add_ovflpage(table, *buffer);
        if (*buffer == nullptr) return false;
        if (key.empty()) value->remove_prefix(put_first_value_part(page, *value));
    } while (!key.empty());
    return true;
}

bool put_value(htab* table, _bufhead* buffer, std::string_view value, bool is_whole) {
    while (!value.empty()) {
        Page page(table, buffer);
        const std::size_t space = space_on(page);
        std::size_t bytes = std::min(space, value.size());
        // Writers have always spread a value over two pages that would fill its first one.
        if (is_whole && value.size() == space) --bytes;
        is_whole = false;
        page.put_big_part(value.substr(0, bytes), bytes == value.size() ? MARK_KEY_END_DATA : MARK_KEY_END);
        mark_modified(buffer);
        value.remove_prefix(bytes);
        if (value.empty()) return true;
        buffer = __add_ovflpage(table, buffer);
        if (buffer == nullptr) return false;
    }
    return true;
}

}  // namespace

}  // namespace orvix::gsl::hash

using namespace orvix::gsl::hash;

int __big_insert(htab* table, _bufhead* buffer, const DBT* key, const DBT* value) {
    Page page(table, buffer);
    if (!page.is_empty()) {
        errno = EINVAL;
        return -1;
    }
    const Pinned pinned(buffer);
    page.make_fresh();
    mark_modified(buffer);
    std::string_view rest = bytes_of(*value);
    _bufhead* last = buffer;
    if (put_key(table, &last, bytes_of(*key), &rest) && put_value(table, last, rest, rest.size() == value->size)) {
        return 0;
    }
    const int saved = errno;
    free_chain_behind(table, buffer);
    page.make_fresh();
    buffer->ovfl = nullptr;
    errno = saved;
    return -1;
}

int __big_delete(htab* table, _bufhead* buffer) {
    const Pinned pinned(buffer);
    BigPairEnd end;
    if (!find_end(table, buffer, &end)) return -1;
    _bufhead* const behind = end.next != 0 ? end.last->ovfl : nullptr;
    // The last page must not lead the walk beyond the pair.
    if (end.last != buffer && end.next != 0) Page(table, end.last).cut(2, Page(table, end.last).low());
    if (end.last != buffer) free_chain_behind(table, buffer);
    Page(table, buffer).leave_behind_big(end.next, table->keep_every_pair);
    buffer->ovfl = behind;
    mark_modified(buffer);
    --table->key_count;
    return 0;
}
