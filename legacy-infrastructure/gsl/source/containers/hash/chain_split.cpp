#include "containers/hash/split_journal.h"

#include <bitset>
#include <cerrno>
#include <new>

namespace orvix::gsl::hash {

namespace {

// Takes the pages of the old chain one by one and puts each pair at the end of the chain of its bucket. A page is freed
// when the one behind it has been fetched, so that later pages of either chain may use it.
class ChainSplit {
public:
    explicit ChainSplit(const Split& split)
        : split_(split), table_(split.table), old_tail_(split.old_first), new_tail_(split.new_first) {}

    bool run() {
        bool done = false;
        try {
            done = split_first() && split_rest();
        } catch (const std::bad_alloc&) {
            errno = ENOMEM;
        }
        if (done) return true;
        const int saved = errno;
        journal_.undo(split_);
        errno = saved;
        return false;
    }

private:
    bool split_first() {
        Page page(table_, split_.old_first);
        journal_.save(table_, split_.old_first);
        const std::uint32_t address = page.next_address();
        if (!split_first_page(split_, [this](auto key, auto value) { return put(&new_tail_, key, value); })) {
            return false;
        }
        if (address == 0) return true;
        source_ = fetch(address, split_.old_first);
        split_.old_first->ovfl = nullptr;
        return source_ != nullptr;
    }

    bool split_rest() {
        while (source_ != nullptr) {
            if (Page(table_, source_).is_big()) {
                if (!hand_over_big()) return false;
                continue;
            }
            if (!deal_out()) return false;
            const std::uint32_t address = Page(table_, source_).next_address();
            _bufhead* const next = address != 0 ? fetch(address, source_) : nullptr;
            if (address != 0 && next == nullptr) return false;
            journal_.save(table_, source_);
            __free_ovflpage(table_, source_);
            source_ = next;
        }
        return true;
    }

    _bufhead* fetch(std::uint32_t address, _bufhead* previous) {
        return note_source(address) ? fetch_overflow(table_, address, previous) : nullptr;
    }

    // A chain that closes on itself changes while it is dealt out, so that each of its pages is remembered.
    bool note_source(std::uint32_t address) {
        if (sources_[address]) {
            errno = EINVAL;
            return false;
        }
        sources_[address] = true;
        return true;
    }

    // The big pair at the cursor goes to a chain as it is.
    bool hand_over_big() {
        BigPairEnd end;
        if (!find_end(table_, source_, &end) || (end.next != 0 && !note_source(end.next))) return false;
        journal_.save(table_, end.last);
        journal_.expect_page();
        SPLIT_RETURN result;
        if (__big_split(table_, old_tail_, new_tail_, source_, source_->addr, split_.old_bucket, &result) != 0) {
            return false;
        }
        _bufhead* const tail = result.old_buffer != old_tail_ ? result.old_buffer : result.new_buffer;
        if (tail != end.last) journal_.note_added(tail->addr);
        old_tail_ = result.old_buffer;
        new_tail_ = result.new_buffer;
        source_ = result.next_buffer;
        return true;
    }

    bool deal_out() {
        const Page page(table_, source_);
        for (std::uint32_t i = 1; i < page.entry_words() && page.word(i + 1) >= MARK_PAIR_MIN; i += 2) {
            const PairOnPage pair(page, i);
            const std::string_view key = page.bytes(pair.key_begin, pair.key_end);
            const std::string_view value = page.bytes(pair.value_begin, pair.key_begin);
            if (!put(split_.stays(key) ? &old_tail_ : &new_tail_, key, value)) return false;
        }
        return true;
    }

    bool put(_bufhead** tail, std::string_view key, std::string_view value) {
        const std::size_t bytes = key.size() + value.size();
        if (!Page(table_, *tail).fits(bytes)) {
            if (!add_page(tail)) return false;
            if (!Page(table_, *tail).fits(bytes)) return put_as_big(tail, key, value);
        }
        Page(table_, *tail).put(key, value);
        mark_modified(*tail);
        return true;
    }

    bool add_page(_bufhead** tail) {
        journal_.expect_page();
        _bufhead* const added = __add_ovflpage(table_, *tail);
        if (added == nullptr) return false;
        journal_.note_added(added->addr);
        *tail = added;
        return true;
    }

    // Where a foreign program filled a page to its last byte.
    bool put_as_big(_bufhead** tail, std::string_view key, std::string_view value) {
        const DBT key_text{const_cast<char*>(key.data()), key.size()};  // which are only read
        const DBT value_text{const_cast<char*>(value.data()), value.size()};
        if (__big_insert(table_, *tail, &key_text, &value_text) != 0) return false;
        for (std::uint32_t address = 0; (address = Page(table_, *tail).next_address()) != 0;) {
            *tail = fetch_overflow(table_, address, *tail);
            if (*tail == nullptr) return false;
            journal_.note_added(address);
        }
        return true;
    }

    const Split& split_;
    htab* table_;
    _bufhead* old_tail_;
    _bufhead* new_tail_;
    _bufhead* source_ = nullptr;
    std::bitset<std::size_t{1} << 16> sources_;
    SplitJournal journal_;
};

}  // namespace

bool split_chain(const Split& split) { return ChainSplit(split).run(); }

}  // namespace orvix::gsl::hash

using namespace orvix::gsl::hash;

int __big_split(htab* table, _bufhead* old_buffer, _bufhead* new_buffer, _bufhead* big, std::uint32_t address,
                std::uint32_t old_bucket, SPLIT_RETURN* result) {
    DBT key;
    DBT value;
    BigPairEnd end;
    if (!read_pair(table, big, &key, &value, &end)) return -1;
    const bool changes = bucket_of(table, hash_of(table, bytes_of(key))) != old_bucket;
    *result = {old_buffer, new_buffer, nullptr, static_cast<std::uint16_t>(end.next)};
    if (end.next != 0) {
        result->next_buffer = fetch_overflow(table, end.next, end.last);
        if (result->next_buffer == nullptr) return -1;
    }
    _bufhead*& target = changes ? result->new_buffer : result->old_buffer;
    if (!Page(table, target).takes_link()) {
        errno = EINVAL;
        return -1;
    }
    mark_modified(target);
    target->ovfl = big;
    Page(table, target).add_link(address);

    // Later pairs of the chain go behind the pair: on a new page in place of the old one, if there is one.
    Page last(table, end.last);
    mark_modified(end.last);
    target = end.last;
    if (last.entry_words() == 2) return 0;
    const std::uint16_t value_begin = last.word(4);
    last.drop_link();
    target = __add_ovflpage(table, end.last);
    if (target == nullptr) return -1;
    last.set_word(4, value_begin);
    return 0;
}
