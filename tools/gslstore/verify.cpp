#include "verify.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>

namespace gslstore {

namespace {

// The page at which the walk stands.
struct Place {
    std::uint64_t page;
    std::uint32_t bucket;
};

class Verifier {
public:
    Verifier(PageSource* source, Hash hash) : source_(source), header_(source->header()), hash_(hash) {}

    Report run() {
        used_.resize(header_.overflow_pages());
        for (std::uint32_t bucket = 0; bucket <= header_.top_bucket; ++bucket) walk(bucket);
        check_bitmaps();
        check_count();
        return std::move(report_);
    }

private:
    void note(Weight weight, std::uint64_t page, std::uint32_t offset, std::string text) {
        report_.findings.push_back({weight, page, offset, std::move(text)});
    }
    void fault(std::uint32_t offset, std::string text) { note(Weight::fault, place_.page, offset, std::move(text)); }

    void walk(std::uint32_t bucket) {
        keys_.clear();
        place_ = {header_.page_of_bucket(bucket), bucket};
        std::optional<PageReader> page = reader(source_->bucket(bucket));
        std::uint64_t length = 0;
        while (page) {
            if (!is_in_order(*page)) return;
            std::uint32_t next = 0;
            if (page->is_big()) {
                if (length == 0) return fault(4, "a big pair begins on the page of a bucket");
                if (!take_big_pair(&page, &next, &length)) return;
            } else {
                next = take_regular_pairs(*page);
            }
            if (next == 0) break;
            page = go_to(next, &length);
        }
        report_.longest_chain = std::max(report_.longest_chain, length);
    }

    std::optional<PageReader> reader(std::optional<Bytes> bytes) {
        if (bytes) return PageReader(std::move(*bytes), source_->byte_order());
        fault(0, "the page cannot be read");
        return std::nullopt;
    }

    // The overflow page at an address, unless it cannot belong to this chain.
    std::optional<PageReader> go_to(std::uint32_t address, std::uint64_t* length) {
        if (!header_.is_allocated(address)) {
            fault(0, "the chain goes on at an address that was never allocated");
            return std::nullopt;
        }
        const std::uint32_t number = header_.overflow_number(address);
        if (number % header_.bitmap_bits() == 0) {
            fault(0, "the chain goes on at an overflow bitmap");
            return std::nullopt;
        }
        if (used_[number]) {
            fault(0, "the chain goes on at a page that is in use elsewhere");
            return std::nullopt;
        }
        used_[number] = true;
        ++report_.used_overflow_pages;
        ++*length;
        place_.page = header_.page_of_address(address);
        return reader(source_->overflow(address));
    }

    // What the words of any page must be.
    bool is_in_order(const PageReader& page) {
        if (page.entry_words() == 0) return true;  // whatever follows is made anew
        if (!page.has_room_for_words()) {
            fault(0, "the number of words is odd or does not fit on the page");
            return false;
        }
        if (page.low() > page.size() || page.low() < page.words_end()) {
            fault(2 * (page.entry_words() + 2), "the data begins outside the page");
            return false;
        }
        const std::uint32_t room = page.low() - page.words_end();
        // One more where a big pair was removed and its page lies one byte short.
        if (page.free_bytes() != room && page.free_bytes() != room + 1) {
            fault(2 * (page.entry_words() + 1), "the free bytes are not those between words and data");
            return false;
        }
        return true;
    }

    // Gives the address of the chain's next page, 0 for none.
    std::uint32_t take_regular_pairs(const PageReader& page) {
        const std::uint32_t n = page.entry_words();
        std::uint32_t end = page.size();
        std::uint32_t next = 0;
        for (std::uint32_t i = 1; i < n; i += 2) {
            if (page.is_mark(i + 1, Mark::overflow)) {
                if (i + 1 == n) {
                    next = page.word(i);
                    break;
                }
                fault(2 * (i + 1), "a link stands before other entries");
                return 0;
            }
            const std::uint32_t key = PageReader::offset(page.word(i));
            const std::uint32_t value = page.word(i + 1);
            if (key > end || value > key || value < page.words_end()) {
                fault(2 * i, "the offsets of a pair lie outside their bounds");
                return 0;
            }
            take_pair(page.text(key, end), key - value, 2 * i);
            end = value;
        }
        const bool has_no_pair = end == page.size();
        if (n != 0 && page.low() != end && !(has_no_pair && page.low() == end - 1)) {
            fault(2 * (n + 2), "the data does not begin with the last pair");
        }
        return next;
    }

    void take_pair(std::string_view key, std::uint64_t value_bytes, std::uint32_t offset) {
        ++report_.pairs;
        report_.data_bytes += key.size() + value_bytes;
        if (hash_ != nullptr && header_.bucket_of(hash_(key)) != place_.bucket) {
            note(Weight::remark, place_.page, offset,
                 "the pair belongs in bucket " + std::to_string(header_.bucket_of(hash_(key))) + ", not in " +
                     std::to_string(place_.bucket) + ", and is not found");
        } else if (!keys_.emplace(key).second) {
            fault(offset, "the key stands in the store twice");
        }
    }

    // Words 3 and 4 of a page of a big pair, and where its part begins.
    bool is_big_in_order(const PageReader& page) {
        const std::uint32_t n = page.entry_words();
        const std::uint32_t begin = PageReader::offset(page.word(1));
        const bool lies_in_page = begin <= page.size() && begin >= page.low();
        const bool has_link = n == 4 || (n == 2 && page.is_mark(2, Mark::key_end_data));
        if (page.is_big() && lies_in_page && has_link) return true;
        fault(2, "the page of a big pair is out of order");
        return false;
    }

    bool go_on(std::optional<PageReader>* page, std::uint64_t* length) {
        if ((*page)->entry_words() != 4) {
            fault(0, "a big pair has no further page");
            return false;
        }
        *page = go_to((*page)->word(3), length);
        return *page && is_in_order(**page) && is_big_in_order(**page);
    }

    // Takes the big pair that begins on `page`, and leaves there its last page.
    bool take_big_pair(std::optional<PageReader>* page, std::uint32_t* next, std::uint64_t* length) {
        if (!is_big_in_order(**page)) return false;
        std::string key;
        for (;;) {
            const PageReader& at = **page;
            key += at.text(PageReader::offset(at.word(1)), at.size());
            if (!at.is_mark(2, Mark::key_part)) break;
            if (!go_on(page, length)) return false;
        }
        std::uint64_t value_bytes = 0;
        if (!take_big_value(page, length, &value_bytes)) return false;
        ++report_.big_pairs;
        take_pair(key, value_bytes, 2);
        *next = (*page)->entry_words() == 4 ? (*page)->word(3) : 0;
        return true;
    }

    bool take_big_value(std::optional<PageReader>* page, std::uint64_t* length, std::uint64_t* bytes) {
        if ((*page)->is_mark(2, Mark::key_end_data)) {
            const std::uint32_t key = PageReader::offset((*page)->word(1));
            const std::uint32_t value = (*page)->entry_words() == 4 ? PageReader::offset((*page)->word(4)) : key + 1;
            if (value > key || value < (*page)->low()) {
                fault(8, "the value behind a key lies outside its bounds");
                return false;
            }
            *bytes = key - value;
            if ((*page)->free_bytes() != 0) return true;
        }
        do {
            if (!go_on(page, length)) return false;
            if ((*page)->is_mark(2, Mark::key_part)) {
                fault(4, "a part of a key stands within a value");
                return false;
            }
            *bytes += (*page)->size() - PageReader::offset((*page)->word(1));
        } while ((*page)->is_mark(2, Mark::key_end));
        return true;
    }

    void check_bitmaps() {
        for (std::uint32_t slot = 0; slot < header_.bitmap_count(); ++slot) {
            place_ = {header_.page_of_address(header_.bitmap_addrs[slot]), 0};
            if (header_.overflow_number(header_.bitmap_addrs[slot]) != slot * header_.bitmap_bits()) {
                fault(0, "an overflow bitmap does not have the first page that it describes");
            }
            if (const std::optional<Bytes> bitmap = source_->bitmap(slot)) {
                check_bitmap(*bitmap, slot);
            } else {
                fault(0, "an overflow bitmap cannot be read");
            }
        }
    }

    void check_bitmap(const Bytes& bitmap, std::uint32_t slot) {
        const std::uint32_t first = slot * header_.bitmap_bits();
        for (std::uint32_t i = 0; i < header_.bitmap_bits(); ++i) {
            const std::uint32_t number = first + i;
            const bool is_marked = bit(bitmap, source_->byte_order(), i);
            if (number >= header_.overflow_pages()) {
                if (!is_marked) return fault(i / 8, "a page that was never allocated is marked as free");
                continue;
            }
            const bool is_used = i == 0 || used_[number];
            if (is_used && !is_marked) {
                fault(i / 8, "overflow page " + std::to_string(number) + " is in use and marked as free");
            } else if (!is_used && is_marked) {
                fault(i / 8, "overflow page " + std::to_string(number) + " is marked as used and in no chain");
            } else if (!is_marked && number / 32 < header_.free_hint / 32) {
                fault(i / 8,
                      "overflow page " + std::to_string(number) + " is free and the header's hint lies behind it");
            }
        }
    }

    void check_count() {
        const auto pairs = static_cast<std::int64_t>(report_.pairs);
        if (header_.key_count == pairs) return;
        constexpr std::uint32_t offset_of_count = 56;
        const bool is_too_few = header_.key_count < pairs;
        note(is_too_few ? Weight::remark : Weight::fault, 0, offset_of_count,
             "the header counts " + std::to_string(header_.key_count) + " of " + std::to_string(pairs) + " pairs");
    }

    PageSource* source_;
    const Header header_;
    Hash hash_;
    Report report_;
    Place place_{};
    std::vector<bool> used_;                // overflow pages that were met
    std::unordered_set<std::string> keys_;  // of the bucket
};

}  // namespace

bool Report::has(Weight weight) const {
    return std::any_of(findings.begin(), findings.end(), [=](const Finding& f) { return f.weight == weight; });
}

std::string Report::text() const {
    std::string text;
    for (const Finding& finding : findings) {
        text += finding.weight == Weight::fault ? "fault" : "remark";
        text += ": page " + std::to_string(finding.page) + ", offset " + std::to_string(finding.offset) + ": " +
                finding.text + "\n";
    }
    return text;
}

Report verify(PageSource* source, Hash hash) { return Verifier(source, hash).run(); }

}  // namespace gslstore
