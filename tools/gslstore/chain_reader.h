// Reads the pairs of a store, bucket by bucket and page by page along the chains, and tells what is out of order there.
// Any bytes will do: a walk ends, takes no page twice, and looks at nothing outside a page.
#pragma once

#include "page_source.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace gslstore {

struct Pair {
    std::uint32_t bucket;    // whose chain it is in
    std::uint64_t page;      // number of the page with its entry
    std::uint32_t offset;    // of the entry in the page
    std::string_view key;    // good until the visitor returns
    std::string_view value;  // likewise; empty for a big pair if values were not asked for
    std::uint64_t value_bytes;
    bool is_big;
};

enum class Values : bool {
    measured,  // big ones are not put together
    read,
};

class ChainReader {
public:
    using OnPair = std::function<void(const Pair&)>;
    // Number of the page, offset in it, and what is wrong there.
    using OnFault = std::function<void(std::uint64_t page, std::uint32_t offset, std::string text)>;

    ChainReader(PageSource* source, Values values, OnPair on_pair, OnFault on_fault);

    // Walks the chain of a bucket. Pages of chains that were walked before are not entered again.
    void walk(std::uint32_t bucket);

    // True if a chain that was walked has the overflow page of this number.
    bool is_used(std::uint32_t overflow_number) const { return owners_[overflow_number] != nobody; }
    std::uint64_t used_overflow_pages() const { return used_overflow_pages_; }
    std::uint64_t longest_chain() const { return longest_chain_; }

private:
    // Where a chain goes on: the address, and where it stands.
    struct Link {
        std::uint32_t address;
        std::uint32_t offset;
    };
    static constexpr std::uint32_t nobody = 0xffffffff;

    void fault(std::uint32_t offset, std::string text) { on_fault_(page_number_, offset, std::move(text)); }

    bool load(std::optional<Bytes> bytes);
    bool go_to(Link link);
    bool check_address(Link link);
    bool has_readable_words();
    bool has_low_in_bounds() const;
    void check_low(std::uint32_t lowest);
    std::optional<Link> take_regular_pairs();
    bool check_regular_pair(std::uint32_t index, std::uint32_t end);
    std::optional<Link> link_of_regular_page() const;
    std::optional<Link> take_big_pair();
    bool take_big_key(std::string* key);
    bool take_big_value(std::string* value, std::uint64_t* bytes);
    bool take_value_behind_key(std::string* value, std::uint64_t* bytes);
    void take_part(std::string* value, std::uint64_t* bytes, std::uint32_t begin, std::uint32_t end);
    bool is_part_in_order();
    bool go_on_with_big_pair();
    std::optional<Link> link_of_big_page() const;

    PageSource* source_;
    const Header header_;
    Values values_;
    OnPair on_pair_;
    OnFault on_fault_;
    std::vector<std::uint32_t> owners_;  // of overflow pages: the bucket whose chain has them
    std::uint64_t used_overflow_pages_ = 0;
    std::uint64_t longest_chain_ = 0;

    // Where the walk stands.
    std::uint32_t bucket_ = 0;
    std::uint64_t page_number_ = 0;
    std::uint64_t chain_pages_ = 0;  // behind the bucket's own
    PageReader page_;
};

}  // namespace gslstore
