#include "containers/hash/pairs.h"
#include "containers/prefetch.h"

#include <cerrno>
#include <cstdlib>
#include <limits>

namespace orvix::gsl::hash {

namespace {

// Keys of one store are often alike in front, so they are compared from their end.
class Needle {
public:
    explicit Needle(std::string_view key) : key_(key) {
        if (key.size() >= sizeof tail_) std::memcpy(&tail_, key.data() + key.size() - sizeof tail_, sizeof tail_);
    }

    std::size_t size() const { return key_.size(); }

    bool equals(const char* other) const {
        if (key_.size() < sizeof tail_) return key_.empty() || std::memcmp(other, key_.data(), key_.size()) == 0;
        const std::size_t front = key_.size() - sizeof tail_;
        std::uint64_t tail;
        std::memcpy(&tail, other + front, sizeof tail);
        return tail == tail_ && std::memcmp(other, key_.data(), front) == 0;
    }

private:
    std::string_view key_;
    std::uint64_t tail_ = 0;
};

enum class Result : std::uint8_t { found, absent, marked, failed };

struct Position {
    Result result;
    std::uint32_t index;  // of the pair, or of the entry that is marked
};

Position find_on_page(const Page& page, const Needle& key) {
    constexpr std::uint32_t low_half = 0xffff;
    const std::uint32_t n = page.entry_words();
    std::uint32_t end = page.size();
    for (std::uint32_t i = 1; i < n; i += 2) {
        const std::uint32_t key_begin = page.word(i);
        const std::uint32_t value_begin = page.word(i + 1);
        if (value_begin < MARK_PAIR_MIN) return {Result::marked, i};
        if (((end - key_begin) & low_half) == key.size() && key.equals(page.data(key_begin))) return {Result::found, i};
        end = value_begin;
    }
    return {Result::absent, 0};
}

// Goes along a chain to the page with a key, or to its last page.
Position find_in_chain(htab* table, _bufhead** buffer, std::string_view key) {
    const Needle needle(key);
    CycleGuard guard{};
    for (;;) {
        const Page page(table, *buffer);
        const Position position = find_on_page(page, needle);
        if (position.result != Result::marked) return position;
        if (page.is_big()) {
            switch (compare_key(table, *buffer, key)) {
                case BigMatch::same:
                    return position;
                case BigMatch::failed:
                    return {Result::failed, 0};
                case BigMatch::different:
                    break;
            }
            BigPairEnd end;
            if (!find_end(table, *buffer, &end)) return {Result::failed, 0};
            *buffer = end.last;
            if (end.next == 0) return {Result::absent, 0};
        }
        _bufhead* const next = next_of_chain(table, *buffer, &guard);
        if (next == nullptr) return {Result::failed, 0};
        *buffer = next;
    }
}

void take_value(const Page& page, std::uint32_t index, DBT* value) {
    const PairOnPage pair(page, index);
    *value = {page.data(pair.value_begin), pair.key_begin - pair.value_begin};
}

// What an operation does once it stands on the page of the key, or on the last page of the chain.
int act(htab* table, Action action, const DBT& key, DBT* value, _bufhead* buffer, Position position) {
    if (position.result == Result::failed) return -1;
    if (position.result == Result::absent) {
        if (action == Action::get || action == Action::remove) return 1;
        return __addel(table, buffer, &key, value) == 0 ? 0 : -1;
    }
    const auto index = static_cast<std::int32_t>(position.index);
    switch (action) {
        case Action::put_new:
            return 1;
        case Action::get:
            if (position.result == Result::marked) return __big_return(table, buffer, index, value, false);
            take_value(Page(table, buffer), position.index, value);
            return 0;
        case Action::put:
            return __delpair(table, buffer, index) == 0 && __addel(table, buffer, &key, value) == 0 ? 0 : -1;
        case Action::remove:
            return __delpair(table, buffer, index);
    }
    std::abort();
}

// An operation that failed on a key that it had found leaves the bucket pinned, so that callers can look at it. The
// next operation on the table lets go of it, lest the pool grow for ever.
bool leaves_pinned(Action action, Position position, int result) {
    const bool found = position.result == Result::found || position.result == Result::marked;
    return result == -1 && found && (action == Action::get || action == Action::remove);
}

void unpin_left(htab* table) {
    if (table->left_pinned == nullptr) return;
    unpin(table->left_pinned);
    table->left_pinned = nullptr;
}

bool is_storable(const DBT& text) {
    return text.size <= std::size_t{std::numeric_limits<std::int32_t>::max()} &&
           (text.data != nullptr || text.size == 0);
}

// The bytes of a new value are likely to lie far from those of its key.
void prefetch_text(const DBT& text) {
    constexpr std::size_t line_bytes = 64;
    constexpr std::size_t most_bytes = 4 * line_bytes;
    const auto* const bytes = static_cast<const char*>(text.data);
    for (std::size_t at = 0; at < text.size && at < most_bytes; at += line_bytes) prefetch(bytes + at);
}

}  // namespace

int access(htab* table, Action action, const DBT& key, DBT* value) {
    const bool stores = action == Action::put || action == Action::put_new;
    if (!is_storable(key) || (stores && !is_storable(*value))) {
        errno = EINVAL;
        return -1;
    }
    unpin_left(table);
    if (stores) prefetch_text(*value);
    const std::uint32_t bucket = bucket_of(table, hash_of(table, bytes_of(key)));
    _bufhead* const first = fetch_bucket(table, bucket);
    if (first == nullptr) return -1;
    pin(first);
    _bufhead* buffer = first;
    const Position position = find_in_chain(table, &buffer, bytes_of(key));
    const int result = act(table, action, key, value, buffer, position);
    if (leaves_pinned(action, position, result)) {
        table->left_pinned = first;
    } else {
        unpin(first);
    }
    return result;
}

}  // namespace orvix::gsl::hash
