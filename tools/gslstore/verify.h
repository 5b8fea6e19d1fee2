// Walks all of a store: every bucket, every chain, every bitmap.
#pragma once

#include "store_format.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace gslstore {

// Where the pages of a store come from: a file, or a table in memory.
class PageSource {
public:
    PageSource() = default;
    virtual ~PageSource() = default;
    PageSource(const PageSource&) = delete;
    PageSource& operator=(const PageSource&) = delete;

    virtual const Header& header() const = 0;
    virtual ByteOrder byte_order() const = 0;
    // The page's bytes; none if it cannot be read. A page that was never written is all zeros.
    virtual std::optional<Bytes> bucket(std::uint32_t number) = 0;
    // Asked for only right after the page before it in its chain.
    virtual std::optional<Bytes> overflow(std::uint32_t address) = 0;
    virtual std::optional<Bytes> bitmap(std::uint32_t slot) = 0;
};

enum class Weight : std::uint8_t {
    fault,  // the store is damaged
    remark  // the page rules lost a pair; the store is sound
};

struct Finding {
    Weight weight;
    std::uint64_t page;    // number of the page in the file
    std::uint32_t offset;  // of the byte in the page
    std::string text;
};

struct Report {
    std::vector<Finding> findings;
    std::uint64_t pairs = 0;
    std::uint64_t big_pairs = 0;
    std::uint64_t used_overflow_pages = 0;  // by chains
    std::uint64_t longest_chain = 0;        // pages behind a bucket
    std::uint64_t data_bytes = 0;           // of all keys and values

    bool has(Weight weight) const;
    std::string text() const;
};

using Hash = std::uint32_t (*)(std::string_view key);

// @param hash  that of the store, null if it is not known: whether pairs stand in their buckets is then not looked at
Report verify(PageSource* source, Hash hash);

}  // namespace gslstore
