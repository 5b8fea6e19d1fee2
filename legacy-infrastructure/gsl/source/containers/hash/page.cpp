#include "containers/hash/page.h"

namespace orvix::gsl::hash {

void Page::make_fresh() {
    set_word(0, 0);
    set_free_and_low(size_ - words_end(0), size_);
}

void Page::settle_low() {
    const bool has_no_pair = is_empty() || (entry_words() == 2 && has_link());
    if (has_no_pair) cut(entry_words(), size_);
}

void Page::put(std::string_view key, std::string_view value) {
    const std::uint32_t n = entry_words();
    const auto key_begin = static_cast<std::uint32_t>(low() - key.size());
    const auto value_begin = static_cast<std::uint32_t>(key_begin - value.size());
    set_word(0, n + 2);
    copy_in(key_begin, key);
    copy_in(value_begin, value);
    set_word(n + 1, key_begin);
    set_word(n + 2, value_begin);
    set_free_and_low(value_begin - words_end(n + 2), value_begin);
}

void Page::squeeze(std::string_view key, std::string_view value) {
    const std::uint32_t n = entry_words();
    const std::uint32_t free = free_bytes();
    const std::uint16_t address = word(n - 1);
    const auto key_begin = static_cast<std::uint32_t>(low() - key.size());
    const auto value_begin = static_cast<std::uint32_t>(key_begin - value.size());
    set_word(0, n + 2);
    copy_in(key_begin, key);
    copy_in(value_begin, value);
    set_word(n - 1, key_begin);
    set_word(n, value_begin);
    set_word(n + 1, address);
    set_word(n + 2, MARK_OVERFLOW);
    set_free_and_low(static_cast<std::uint32_t>(free - key.size() - value.size() - entry_bytes), value_begin);
}

void Page::add_link(std::uint32_t address) {
    const std::uint32_t n = entry_words();
    const std::uint32_t free = free_bytes();
    const std::uint32_t lowest = low();
    assert(takes_link());
    set_word(0, n + 2);
    set_word(n + 1, address);
    set_word(n + 2, MARK_OVERFLOW);
    set_free_and_low(free - link_room, lowest);
}

void Page::drop_link() {
    const std::uint32_t free = free_bytes();
    const std::uint32_t lowest = low();
    set_word(0, entry_words() - 2);
    set_free_and_low(free + link_room, lowest);
}

void Page::remove(std::uint32_t index) {
    const std::uint32_t n = entry_words();
    const std::uint32_t lowest = low();
    const std::uint32_t free = free_bytes();
    const PairOnPage pair(*this, index);
    const std::uint32_t length = pair.key_end - pair.value_begin;
    if (pair.value_begin != lowest) move_bytes(lowest, lowest + length, pair.value_begin - lowest);
    Page page = *this;  // which no write to the page's bytes can change, as a compiler sees
    for (std::uint32_t i = index; i + 2 < n; i += 2) {
        const bool is_link = page.word(i + 3) == MARK_OVERFLOW;
        const std::uint32_t shift = is_link ? 0 : length;  // an address and a mark stay as they are
        page.set_word(i, page.word(i + 2) + shift);
        page.set_word(i + 1, page.word(i + 3) + shift);
    }
    set_word(0, n - 2);
    set_free_and_low(free + length + entry_bytes, lowest + length);
}

void Page::move_entry(std::uint32_t from, std::uint32_t end, std::uint32_t to, std::uint32_t top) {
    const std::uint32_t shift = top - end;
    const std::uint32_t begin = word(from + 1);
    if (shift != 0) move_bytes(begin, top - (end - begin), end - begin);
    if (shift == 0 && from == to) return;
    set_word(to, word(from) + shift);
    set_word(to + 1, begin + shift);
}

void Page::cut(std::uint32_t entry_words, std::uint32_t low) {
    set_word(0, entry_words);
    set_free_and_low(low - words_end(entry_words), low);
}

void Page::put_big_part(std::string_view part, HashMark mark) {
    const auto begin = static_cast<std::uint32_t>(low() - part.size());
    set_word(0, 2);
    copy_in(begin, part);
    set_word(1, begin);
    set_word(2, mark);
    set_free_and_low(begin - words_end(2), begin);
}

void Page::put_big_value_part(std::string_view part) {
    const auto begin = static_cast<std::uint32_t>(low() - part.size());
    const auto free = static_cast<std::uint32_t>(free_bytes() - part.size());
    copy_in(begin, part);
    set_word(2, MARK_KEY_END_DATA);
    set_word(4, begin);
    set_free_and_low(free, begin);
}

void Page::leave_behind_big(std::uint32_t address, bool fresh) {
    set_word(0, 0);
    if (address != 0) {
        set_word(0, 2);
        set_word(1, address);
        set_word(2, MARK_OVERFLOW);
    }
    set_free_and_low(size_ - words_end(entry_words()), fresh ? size_ : size_ - 1);
}

namespace {

bool is_sound_big(const HashHeader& header, const Page& page) {
    const std::uint32_t n = page.entry_words();
    const std::uint32_t begin = Page::offset(page.word(1));
    if (begin > page.size() || begin < words_end(n) || begin < page.low()) return false;
    if (n == 2) return page.word(2) == MARK_KEY_END_DATA;
    if (n != 4 || !is_chain_page(header, page.word(3))) return false;
    const std::uint32_t value = page.word(4);
    if (value == MARK_OVERFLOW) return true;
    return page.word(2) == MARK_KEY_END_DATA && value >= page.low() && value <= begin;
}

bool is_sound_regular(const HashHeader& header, const Page& page) {
    const std::uint32_t n = page.entry_words();
    std::uint32_t end = page.size();
    for (std::uint32_t i = 1; i < n; i += 2) {
        const std::uint32_t value = page.word(i + 1);
        if (value == MARK_OVERFLOW) return i + 1 == n && is_chain_page(header, page.word(i)) && page.low() <= end;
        const std::uint32_t key = Page::offset(page.word(i));
        if (value < words_end(n) || value > key || key > end) return false;
        end = value;
    }
    return page.low() <= end;
}

}  // namespace

bool is_sound(const HashHeader& header, Page page, bool is_bucket) {
    const std::uint32_t n = page.entry_words();
    if (n % 2 != 0 || words_end(n) > page.size()) return false;
    const std::uint32_t low = page.low();
    if (low > page.size() || low < words_end(n) || page.free_bytes() > low - words_end(n) + 1) return false;
    if (page.is_big()) return !is_bucket && is_sound_big(header, page);
    return is_sound_regular(header, page);
}

}  // namespace orvix::gsl::hash
