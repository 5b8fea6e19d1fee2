// Walks all of a store: every bucket, every chain, every bitmap.
#pragma once

#include "page_source.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace gslstore {

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
    std::uint64_t misplaced_pairs = 0;      // that are in another bucket than their key says, where nobody finds them
    std::uint64_t used_overflow_pages = 0;  // by chains
    std::uint64_t longest_chain = 0;        // pages behind a bucket
    std::uint64_t data_bytes = 0;           // of all keys and values

    bool has(Weight weight) const;
    std::uint64_t count(Weight weight) const;
    std::string text() const;
};

// One line without its end.
std::string text_of(const Finding& finding);

using Hash = std::uint32_t (*)(std::string_view key);

// @param hash  that of the store, null if it is not known: whether pairs stand in their buckets is then not looked at
Report verify(PageSource* source, Hash hash);

class FileSource;

// The same for a file: what is wrong with its header and its size comes first. Pages are looked at as far as the header
// tells where they lie. The hash is taken for the default one if the header says so.
Report verify_file(FileSource* source);

}  // namespace gslstore
