// Where the pages of a store come from: a file, or a table in memory.
#pragma once

#include "store_format.h"

#include <cstdint>
#include <optional>

namespace gslstore {

class PageSource {
public:
    PageSource() = default;
    virtual ~PageSource() = default;
    PageSource(const PageSource&) = delete;
    PageSource& operator=(const PageSource&) = delete;

    virtual const Header& header() const = 0;
    virtual ByteOrder byte_order() const = 0;
    // Buckets that have a page, or would have one if it had ever been written.
    virtual std::uint64_t bucket_count() const { return std::uint64_t{header().top_bucket} + 1; }
    // The page's bytes; none if it cannot be read. A page that was never written is all zeros.
    virtual std::optional<Bytes> bucket(std::uint32_t number) = 0;
    // Asked for only right after the page before it in its chain.
    virtual std::optional<Bytes> overflow(std::uint32_t address) = 0;
    virtual std::optional<Bytes> bitmap(std::uint32_t slot) = 0;
};

}  // namespace gslstore
