// A bucket or overflow page, seen as words, entries and bytes.
//
// 16-bit words stand at the front, data at the back. n = word 0, always even, is the number of words in entries:
//
//   +---+----+----+----+----+------+-----+------------+---------+-------+---------+-------+
//   | n | k0 | v0 | k1 | v1 | free | low |   unused   | value 1 | key 1 | value 0 | key 0 |
//   +---+----+----+----+----+------+-----+------------+---------+-------+---------+-------+
//     0   1    2    3    4    n+1    n+2              ^ byte low                          ^ page_size
//
// An entry is two words. That of a regular pair holds the offsets of key and value; the key ends where the value of the
// entry before it begins. A second word below MARK_PAIR_MIN is no offset:
//
//   link          | address | MARK_OVERFLOW |                            the last entry; the chain goes on there
//   part of key   | k | MARK_KEY_PART | address | MARK_OVERFLOW |        a big pair, which has the page to itself
//   end of key    | k | MARK_KEY_END | address | MARK_OVERFLOW |         its value begins on the next page
//   key and value | k | MARK_KEY_END_DATA | address | v |                free is 0: more of the value on the next page
//                                                                        free is not 0: the value ends here
//   part of value | v | MARK_KEY_END | address | MARK_OVERFLOW |
//   its last part | v | MARK_KEY_END_DATA |                              and the link, if the chain goes on
//
// Invariant: free == low - 2 * (n + 3). One page breaks it by one: emptied by the removal of a big pair, it has
// low == page_size - 1 with free as if low were page_size. Its first pair then ends one byte before the end of the page
// while readers have it end at page_size: they see a key with one byte more.
//
// On a page of 65536 bytes the offset 65536 does not fit in a word and reads 0. No regular pair is put there.
#pragma once

#include "containers/hash/format.h"
#include "containers/prefetch.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <string_view>

namespace orvix::gsl::hash {

constexpr std::uint32_t word_bytes = 2;
constexpr std::uint32_t entry_bytes = 4;
constexpr std::uint32_t link_room = 4;  // of the entry for a link, in reserve on each page that has none

// Bytes of the words of a page with so many words in entries.
constexpr std::uint32_t words_end(std::uint32_t entry_words) { return word_bytes * (entry_words + 3); }

// Two lines of defence stand between a page's bytes and the memory around it. The words of a page are right: `is_sound`
// looked at them once, when the page came from the file, and these functions keep them so. And no access leaves the
// page, whatever its words are: an index of a word is folded into the page, whose size is a power of two, and texts are
// cut to what lies in it. The first line makes results right, the second one only keeps a mistake from spreading.
class Page {
public:
    Page(char* bytes, std::uint32_t page_size)
        : bytes_(bytes), size_(page_size), index_mask_(page_size / word_bytes - 1) {}
    Page(const HashHeader* header, const _bufhead* buffer) : Page(buffer->page, header->page_size) {}

    std::uint32_t size() const { return size_; }

    std::uint32_t words() const { return size_ / word_bytes; }
    std::uint16_t word(std::uint32_t i) const {
        std::uint16_t value;
        std::memcpy(&value, place_of_word(i), sizeof value);
        return value;
    }
    void set_word(std::uint32_t i, std::uint32_t value) {
        const auto low_half = static_cast<std::uint16_t>(value);
        std::memcpy(place_of_word(i), &low_half, sizeof low_half);
    }
    // Copies words from `first` on. A page holds more of them than `count`.
    template <std::size_t count>
    void copy_words(std::uint32_t first, std::array<std::uint16_t, count>& copied) const {
        static_assert(word_bytes * count < std::size_t{1} << least_page_shift);
        constexpr auto length = static_cast<std::uint32_t>(count);
        assert(first + length <= words());
        const std::uint32_t from = std::min(first, words() - length);
        std::memcpy(copied.data(), bytes_ + std::size_t{word_bytes} * from, word_bytes * count);
    }
    std::string_view bytes(std::uint32_t begin, std::uint32_t end) const {
        assert(begin <= end && end <= size_);
        const std::uint32_t last = std::min(end, size_);
        const std::uint32_t first = std::min(begin, last);
        return {bytes_ + first, last - first};
    }
    // The same for callers of the store, who get pointers that they are not to write through.
    DBT text(std::uint32_t begin, std::uint32_t end) const {
        const std::string_view text = bytes(begin, end);
        return {bytes_ + (text.data() - bytes_), text.size()};
    }

    std::uint32_t entry_words() const { return word(0); }
    bool is_empty() const { return entry_words() == 0; }
    std::uint32_t free_bytes() const { return word(entry_words() + 1); }
    std::uint32_t low() const { return offset(word(entry_words() + 2)); }

    // For whoever is going to put a pair there, and has something else to do before.
    void prefetch_low() const { prefetch(bytes_ + (low() & (size_ - 1))); }

    // The offset that a word stands for.
    static std::uint32_t offset(std::uint16_t word) { return word != 0 ? word : std::uint32_t{1} << 16; }

    // The byte behind the key, or the part of a big pair, of an entry.
    std::uint32_t end_of_entry(std::uint32_t index) const { return index == 1 ? size_ : word(index - 1); }

    bool has_link() const { return !is_empty() && word(entry_words()) == MARK_OVERFLOW; }
    bool is_big() const { return !is_empty() && word(2) != MARK_OVERFLOW && word(2) < MARK_PAIR_MIN; }
    // Address of the chain's next page, on big pages too; 0 if there is none.
    std::uint16_t next_address() const {
        return has_link() || (is_big() && entry_words() > 2) ? word(entry_words() - 1) : std::uint16_t{0};
    }

    // The part of a big pair that stands first on its page.
    std::string_view big_part() const { return bytes(offset(word(1)), size_); }
    // Where the end of a key and a value share a page: what there is of the value.
    bool has_big_value_part() const {
        return word(2) == MARK_KEY_END_DATA && entry_words() == 4 && offset(word(4)) <= offset(word(1));
    }
    std::string_view big_value_part() const { return bytes(offset(word(4)), offset(word(1))); }
    // True on the last page of a big pair, given one of its pages.
    bool ends_big() const {
        return word(2) == MARK_KEY_END_DATA && (entry_words() == 2 || has_link() || free_bytes() != 0);
    }

    // True if a pair can be put here, with room left for a link. The free word may be one too many.
    bool fits(std::size_t pair_bytes) const {
        return takes_regular_pairs() && !has_link() && !is_big() && pair_bytes + entry_bytes + link_room <= room();
    }
    // True if a pair can be squeezed in front of the link. Pages of big pairs belong to them alone.
    bool can_squeeze(std::size_t pair_bytes) const {
        return takes_regular_pairs() && has_link() && !is_big() && pair_bytes + entry_bytes < free_bytes();
    }
    // The offset of a pair that ends with the page must fit in a word.
    bool takes_regular_pairs() const { return size_ < (std::uint32_t{1} << 16); }
    // False only where a foreign program left no room in reserve.
    bool takes_link() const { return !has_link() && room() >= link_room; }

    void make_fresh();
    // Corrects a page that the removal of a big pair emptied, so that its first pair is found.
    void settle_low();
    void put(std::string_view key, std::string_view value);
    void squeeze(std::string_view key, std::string_view value);
    void add_link(std::uint32_t address);
    void drop_link();
    // Removes the regular pair at an index.
    void remove(std::uint32_t index);
    // Moves the bytes of the pair at `from`, which end at `end`, up to `top`, with its entry at `to`.
    void move_entry(std::uint32_t from, std::uint32_t end, std::uint32_t to, std::uint32_t top);
    // Leaves so many words in entries, with the lowest byte of their data at `low`.
    void cut(std::uint32_t entry_words, std::uint32_t low);
    // Puts a part of a big pair on a page that has none.
    void put_big_part(std::string_view part, HashMark mark);
    // Puts the first part of the value on the page with the end of the key, in place of the link's mark.
    void put_big_value_part(std::string_view part);
    // Makes the first page of a big pair, which is gone, a link to what was behind the pair; 0 for nothing.
    void leave_behind_big(std::uint32_t address, bool fresh);

private:
    // Bytes between the words and the data; not more than the free word says.
    std::uint32_t room() const {
        const std::uint32_t between = low() - words_end(entry_words());
        return free_bytes() < between ? free_bytes() : between;
    }
    void set_free_and_low(std::uint32_t free, std::uint32_t low) {
        set_word(entry_words() + 1, free);
        set_word(entry_words() + 2, low);
    }
    char* place_of_word(std::uint32_t i) const {
        assert(i < words());
        return bytes_ + std::size_t{word_bytes} * (i & index_mask_);
    }
    bool holds(std::uint32_t begin, std::size_t bytes) const { return begin <= size_ && bytes <= size_ - begin; }
    void copy_in(std::uint32_t begin, std::string_view text) {
        assert(begin >= words_end(entry_words()) && holds(begin, text.size()));
        if (!text.empty() && holds(begin, text.size())) std::memcpy(bytes_ + begin, text.data(), text.size());
    }
    void move_bytes(std::uint32_t from, std::uint32_t to, std::uint32_t count) {
        assert(holds(from, count) && holds(to, count));
        if (holds(from, count) && holds(to, count)) std::memmove(bytes_ + to, bytes_ + from, count);
    }

    char* bytes_;
    std::uint32_t size_;
    std::uint32_t index_mask_;
};

// A regular pair of a page.
struct PairOnPage {
    std::uint32_t key_begin;
    std::uint32_t key_end;
    std::uint32_t value_begin;

    PairOnPage(const Page& page, std::uint32_t index)
        : key_begin(Page::offset(page.word(index))),
          key_end(page.end_of_entry(index)),
          value_begin(page.word(index + 1)) {}
};

// True if all offsets of the page lie in it and in order, and the chain can go on at its addresses, whatever its bytes
// are. A big pair never begins on the page of a bucket.
bool is_sound(const HashHeader& header, Page page, bool is_bucket);

}  // namespace orvix::gsl::hash
