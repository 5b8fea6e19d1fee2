#include "chain_reader.h"

#include <algorithm>
#include <utility>

namespace gslstore {

namespace {

std::string number(std::uint64_t value) { return std::to_string(value); }

constexpr std::uint32_t word_bytes = 2;

}  // namespace

ChainReader::ChainReader(PageSource* source, Values values, OnPair on_pair, OnFault on_fault)
    : source_(source),
      header_(source->header()),
      values_(values),
      on_pair_(std::move(on_pair)),
      on_fault_(std::move(on_fault)),
      owners_(header_.overflow_pages(), nobody) {}

void ChainReader::walk(std::uint32_t bucket) {
    bucket_ = bucket;
    page_number_ = header_.page_of_bucket(bucket);
    chain_pages_ = 0;
    bool has_page = load(source_->bucket(bucket));
    while (has_page && has_readable_words()) {
        if (page_.is_big() && chain_pages_ == 0) fault(2 * word_bytes, "a big pair begins on the page of a bucket");
        const std::optional<Link> next = page_.is_big() ? take_big_pair() : take_regular_pairs();
        has_page = next && go_to(*next);
    }
    longest_chain_ = std::max(longest_chain_, chain_pages_);
}

bool ChainReader::load(std::optional<Bytes> bytes) {
    if (!bytes) {
        fault(0, "the file does not have this page, or not all of it");
        return false;
    }
    page_ = PageReader(std::move(*bytes), source_->byte_order());
    return true;
}

// Takes the page that a link leads to.
bool ChainReader::go_to(Link link) {
    if (!check_address(link)) return false;
    owners_[header_.overflow_number(link.address)] = bucket_;
    ++used_overflow_pages_;
    ++chain_pages_;
    page_number_ = header_.page_of_address(link.address);
    return load(source_->overflow(link.address));
}

bool ChainReader::check_address(Link link) {
    const auto fails = [&](std::string text) {
        fault(link.offset, "the chain goes on at " + std::move(text));
        return false;
    };
    if (!header_.is_allocated(link.address)) {
        return fails("overflow address " + number(link.address) + ", which was never allocated");
    }
    const std::string page = "page " + number(header_.page_of_address(link.address));
    const std::uint32_t overflow_number = header_.overflow_number(link.address);
    if (overflow_number % header_.bitmap_bits() == 0) return fails(page + ", which is for an overflow bitmap");
    const std::uint32_t owner = owners_[overflow_number];
    if (owner == bucket_) return fails(page + " and closes on itself there");
    if (owner != nobody) return fails(page + ", which belongs to the chain of bucket " + number(owner));
    return true;
}

// Checks the words behind the entries too, which readers can do without.
bool ChainReader::has_readable_words() {
    const std::uint32_t n = page_.entry_words();
    if (n == 0) return true;  // whatever follows is made anew
    if (!page_.has_room_for_words()) {
        fault(0, "the page cannot have " + number(n) + " words of entries");
        return false;
    }
    if (!has_low_in_bounds()) {
        fault(word_bytes * (n + 2), "the data begins at " + number(page_.low()) + ", not between " +
                                        number(page_.words_end()) + " and " + number(page_.size()));
        return true;
    }
    const std::uint32_t room = page_.low() - page_.words_end();
    // One more where a big pair was removed and its page lies one byte short.
    if (page_.free_bytes() != room && page_.free_bytes() != room + 1) {
        fault(word_bytes * (n + 1), number(page_.free_bytes()) + " bytes are told to be free, not " + number(room));
    }
    return true;
}

bool ChainReader::has_low_in_bounds() const { return page_.low() >= page_.words_end() && page_.low() <= page_.size(); }

// The data must begin with what lies lowest.
void ChainReader::check_low(std::uint32_t lowest) {
    if (!has_low_in_bounds() || page_.low() == lowest) return;
    fault(word_bytes * (page_.entry_words() + 2),
          "the data begins at " + number(page_.low()) + ", but what lies lowest at " + number(lowest));
}

// Gives the link behind the pairs.
std::optional<ChainReader::Link> ChainReader::take_regular_pairs() {
    const std::uint32_t n = page_.entry_words();
    const std::optional<Link> link = link_of_regular_page();
    const std::uint32_t pairs_end = n + 1 - (link ? 2 : 0);
    std::uint32_t end = page_.size();
    for (std::uint32_t i = 1; i < pairs_end; i += 2) {
        if (!check_regular_pair(i, end)) return link;
        const std::uint32_t key = PageReader::offset(page_.word(i));
        const std::uint32_t value = page_.word(i + 1);
        on_pair_(
            {bucket_, page_number_, word_bytes * i, page_.text(key, end), page_.text(value, key), key - value, false});
        end = value;
    }
    const bool has_no_pair = end == page_.size();
    const bool is_one_short = has_no_pair && page_.low() == end - 1;  // a big pair was removed
    if (n != 0 && !is_one_short) check_low(end);
    return link;
}

bool ChainReader::check_regular_pair(std::uint32_t index, std::uint32_t end) {
    const std::uint32_t first = page_.words_end();
    const std::uint32_t key = PageReader::offset(page_.word(index));
    const std::uint32_t value = page_.word(index + 1);
    if (value < 4) {
        fault(word_bytes * (index + 1), "the mark " + number(value) + " stands where only a pair can");
        return false;
    }
    if (key > end || key < first) {
        fault(word_bytes * index,
              "the key begins at " + number(key) + ", not between " + number(first) + " and " + number(end));
        return false;
    }
    if (value > key || value < first) {
        fault(word_bytes * (index + 1),
              "the value begins at " + number(value) + ", not between " + number(first) + " and " + number(key));
        return false;
    }
    return true;
}

std::optional<ChainReader::Link> ChainReader::link_of_regular_page() const {
    const std::uint32_t n = page_.entry_words();
    if (n == 0 || !page_.is_mark(n, Mark::overflow)) return std::nullopt;
    return Link{page_.word(n - 1), word_bytes * (n - 1)};
}

// Takes the big pair that begins on the page, and goes to its last page. Gives the link there.
std::optional<ChainReader::Link> ChainReader::take_big_pair() {
    const std::uint64_t first_page = page_number_;
    std::string key;
    std::string value;
    std::uint64_t value_bytes = 0;
    if (!is_part_in_order() || !take_big_key(&key) || !take_big_value(&value, &value_bytes)) return std::nullopt;
    on_pair_({bucket_, first_page, word_bytes, key, value, value_bytes, true});
    return link_of_big_page();
}

bool ChainReader::take_big_key(std::string* key) {
    for (;;) {
        *key += page_.text(PageReader::offset(page_.word(1)), page_.size());
        if (!page_.is_mark(2, Mark::key_part)) return true;
        if (!go_on_with_big_pair()) return false;
    }
}

bool ChainReader::take_big_value(std::string* value, std::uint64_t* bytes) {
    if (page_.is_mark(2, Mark::key_end_data)) {
        if (!take_value_behind_key(value, bytes)) return false;
        if (page_.free_bytes() != 0) return true;
    }
    do {
        if (!go_on_with_big_pair()) return false;
        if (page_.is_mark(2, Mark::key_part)) {
            fault(2 * word_bytes, "a part of a key stands within a value");
            return false;
        }
        take_part(value, bytes, PageReader::offset(page_.word(1)), page_.size());
    } while (page_.is_mark(2, Mark::key_end));
    return true;
}

bool ChainReader::take_value_behind_key(std::string* value, std::uint64_t* bytes) {
    if (page_.entry_words() != 4) {
        fault(0, "a value begins behind the key without a word for its offset");
        return false;
    }
    const std::uint32_t key_begin = PageReader::offset(page_.word(1));
    const std::uint32_t begin = page_.word(4);
    if (begin > key_begin || begin < page_.words_end()) {
        fault(4 * word_bytes, "the value begins at " + number(begin) + ", not between " + number(page_.words_end()) +
                                  " and " + number(key_begin));
        return false;
    }
    check_low(begin);
    take_part(value, bytes, begin, key_begin);
    return true;
}

void ChainReader::take_part(std::string* value, std::uint64_t* bytes, std::uint32_t begin, std::uint32_t end) {
    *bytes += end - begin;
    if (values_ == Values::read) *value += page_.text(begin, end);
}

// A page of a big pair has a part, and a link unless the chain ends there.
bool ChainReader::is_part_in_order() {
    const std::uint32_t n = page_.entry_words();
    if (!page_.is_big()) {
        fault(0, "the page belongs to a big pair and has no part of it");
        return false;
    }
    if (n != 4 && !(n == 2 && page_.is_mark(2, Mark::key_end_data))) {
        fault(0, "the page of a big pair has " + number(n) + " words of entries");
        return false;
    }
    const std::uint32_t begin = PageReader::offset(page_.word(1));
    if (begin > page_.size() || begin < page_.words_end()) {
        fault(word_bytes, "the part of a big pair begins at " + number(begin) + ", not between " +
                              number(page_.words_end()) + " and " + number(page_.size()));
        return false;
    }
    const bool has_value_behind = n == 4 && page_.is_mark(2, Mark::key_end_data) && !page_.is_mark(4, Mark::overflow);
    if (!has_value_behind) check_low(begin);
    return true;
}

// A part in order that does not end the pair has a link.
bool ChainReader::go_on_with_big_pair() {
    return go_to(*link_of_big_page()) && has_readable_words() && is_part_in_order();
}

std::optional<ChainReader::Link> ChainReader::link_of_big_page() const {
    if (page_.entry_words() != 4) return std::nullopt;
    return Link{page_.word(3), 3 * word_bytes};
}

}  // namespace gslstore
