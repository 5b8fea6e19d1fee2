#include "containers/hash/pairs.h"
#include "containers/prefetch.h"

#include <algorithm>
#include <array>
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

    bool equals(std::string_view other) const {
        if (other.size() != key_.size()) return false;
        if (key_.size() < sizeof tail_) return other == key_;
        const std::size_t front = key_.size() - sizeof tail_;
        std::uint64_t tail;
        std::memcpy(&tail, other.data() + front, sizeof tail);
        return tail == tail_ && std::memcmp(other.data(), key_.data(), front) == 0;
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

constexpr std::uint32_t batch = 8;  // entries that are looked at together
constexpr std::size_t batch_words = 2 * std::size_t{batch};

// Tells which of the entries from `index` on have keys of a length, one bit each. The length of a key is the word
// before its own less its own: the end of the entry in front less the key's offset. Only the first entry of a page is
// another matter. Words behind the last entry are looked at too. Without branches, and in loops that a compiler turns
// into a few instructions on many words at once.
std::uint32_t keys_of_length(const Page& page, std::uint32_t index, std::uint16_t length) {
    constexpr std::array<std::uint16_t, batch_words> bits{1, 0, 2, 0, 4, 0, 8, 0, 16, 0, 32, 0, 64, 0, 128, 0};
    std::array<std::uint16_t, batch_words> ends;
    std::array<std::uint16_t, batch_words> begins;
    page.copy_words(index - 1, ends);
    page.copy_words(index, begins);
    if (index == 1) ends[0] = static_cast<std::uint16_t>(page.size());
    std::uint16_t found = 0;
    for (std::size_t i = 0; i < bits.size(); ++i) {
        const auto bytes = static_cast<std::uint16_t>(ends[i] - begins[i]);
        found = static_cast<std::uint16_t>(found | (bytes == length ? bits[i] : 0));
    }
    return found;
}

// Keys of the right length are found without a branch for each entry, which nobody could foretell.
Position find_on_page(const Page& page, const Needle& key) {
    const std::uint32_t n = page.entry_words();
    if (page.is_big()) return {Result::marked, 1};
    const bool has_link = page.has_link();
    const std::uint32_t pairs = n / 2 - (has_link ? 1 : 0);
    if (key.size() < page.size()) {
        const auto length = static_cast<std::uint32_t>(key.size());
        // The words of a batch lie in the page: the last one begins with pairs that were looked at before, if need be.
        const std::uint32_t last_batch = (page.words() - 1) / 2 - batch;
        for (std::uint32_t next = 0; next < pairs; next += batch) {
            const std::uint32_t first = std::min(next, last_batch);
            const std::uint32_t index = 1 + 2 * first;
            std::uint32_t found = keys_of_length(page, index, static_cast<std::uint16_t>(length));
            if (pairs - first < batch) found &= (1U << (pairs - first)) - 1;
            for (; found != 0; found &= found - 1) {
                const std::uint32_t at = index + 2 * static_cast<std::uint32_t>(std::countr_zero(found));
                const std::uint32_t begin = page.word(at);
                if (key.equals(page.bytes(begin, begin + length))) return {Result::found, at};
            }
        }
    }
    return has_link ? Position{Result::marked, n - 1} : Position{Result::absent, 0};
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
    *value = page.text(pair.value_begin, pair.key_begin);
}

// What an operation does once it stands on the page of the key, or on the last page of the chain.
int act(htab* table, Action action, const DBT& key, const DBT* stored, DBT* found, _bufhead* buffer,
        Position position) {
    if (position.result == Result::failed) return -1;
    if (position.result == Result::absent) {
        if (action == Action::get || action == Action::remove) return 1;
        return __addel(table, buffer, &key, stored) == 0 ? 0 : -1;
    }
    const auto index = static_cast<std::int32_t>(position.index);
    switch (action) {
        case Action::put_new:
            return 1;
        case Action::get:
            if (position.result == Result::marked) return __big_return(table, buffer, index, found, false);
            take_value(Page(table, buffer), position.index, found);
            return 0;
        case Action::put:
            return __delpair(table, buffer, index) == 0 && __addel(table, buffer, &key, stored) == 0 ? 0 : -1;
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

int access(htab* table, Action action, const DBT& key, const DBT* stored, DBT* found) {
    const bool stores = action == Action::put || action == Action::put_new;
    if (!is_storable(key) || (stores && !is_storable(*stored))) {
        errno = EINVAL;
        return -1;
    }
    unpin_left(table);
    if (stores) prefetch_text(*stored);
    const std::uint32_t bucket = bucket_of(table, hash_of(table, bytes_of(key)));
    _bufhead* const first = fetch_bucket(table, bucket);
    if (first == nullptr) return -1;
    pin(first);
    if (stores) Page(table, first).prefetch_low();
    _bufhead* buffer = first;
    const Position position = find_in_chain(table, &buffer, bytes_of(key));
    const int result = act(table, action, key, stored, found, buffer, position);
    if (leaves_pinned(action, position, result)) {
        table->left_pinned = first;
    } else {
        unpin(first);
    }
    return result;
}

}  // namespace orvix::gsl::hash
