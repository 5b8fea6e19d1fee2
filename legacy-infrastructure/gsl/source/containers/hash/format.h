// What a store file looks like: the header, and where pages lie.
//
//     page 0 .. header_pages - 1   the header, 260 bytes; the rest is unused
//     then, for each split point s = 0, 1, 2 ...
//         the buckets whose numbers have s bits    bucket 0 for s = 0, then 1; 2, 3; 4 .. 7; and so on
//         the overflow pages of split point s      spare_counts[s] - spare_counts[s - 1] of them, at most 2047
//
// A table that doubles thus finds its new buckets in one piece behind the overflow pages it had by then. Overflow pages
// are allocated at `spare_point`, the last split point in use, so that nothing is ever moved.
#pragma once

#include <orvix/gsl/hash_table.h>

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace orvix::gsl::hash {

constexpr std::int32_t header_magic = 0x061561;
constexpr std::int32_t header_version = 2;
constexpr std::int32_t oldest_version = 1;
constexpr std::size_t header_bytes = 260;
constexpr std::uint32_t header_room = 512;  // kept free for the header, whatever it needs

constexpr std::int32_t little_endian_pages = 1234;
constexpr std::int32_t big_endian_pages = 4321;

constexpr std::uint32_t least_page_shift = 6;
constexpr std::uint32_t most_page_shift = 16;
constexpr std::uint32_t most_segment_shift = 16;  // nobody makes other segments than those of 256 buckets
constexpr std::uint32_t most_split_points = 32;
constexpr std::uint32_t most_bitmaps = 32;
constexpr std::uint32_t address_bits = 11;                               // of an overflow address, for the page number
constexpr std::uint32_t most_pages_of_split = (1U << address_bits) - 1;  // numbers 1 to 2047
constexpr std::uint64_t file_limit = std::uint64_t{1} << 32;             // offsets have 32 bits

// A text whose hash, with its zero byte, tells a file that was made with another hash function.
constexpr char check_text[] = "%$sniglet^&";

constexpr std::uint32_t undecided_fill_factor = 65536;
constexpr std::uint32_t least_fill_factor = 4;

// Bits that a number takes; 0 for 0.
inline std::uint32_t width_of(std::uint32_t number) { return static_cast<std::uint32_t>(std::bit_width(number)); }

inline std::uint32_t header_pages_for(std::uint32_t page_shift) { return ((header_room - 1) >> page_shift) + 1; }

std::uint32_t default_hash(const void* bytes, std::size_t length);

// Bytes of the header, most significant first, whatever the host and the pages have.
std::array<unsigned char, header_bytes> encode(const HashHeader& header);
HashHeader decode(const std::array<unsigned char, header_bytes>& bytes);

// True if the fields can be those of a store whose file has so many bytes. Neither magic number, version nor hash are
// looked at.
bool is_sound(const HashHeader& header, std::uint64_t file_bytes);

// Overflow pages in use or free, those of bitmaps included.
inline std::uint32_t overflow_pages(const HashHeader& header) { return header.spare_counts[header.spare_point]; }

// Overflow pages allocated before a split point.
inline std::uint32_t pages_before(const HashHeader& header, std::uint32_t split) {
    return split != 0 ? header.spare_counts[split - 1] : 0;
}

inline std::uint32_t split_of(std::uint32_t address) { return address >> address_bits; }
inline std::uint32_t number_in_split(std::uint32_t address) { return address & most_pages_of_split; }
inline std::uint32_t overflow_address(std::uint32_t split, std::uint32_t number) {
    return (split << address_bits) + number;
}

// True if an overflow page of this address was ever allocated.
inline bool is_allocated(const HashHeader& header, std::uint32_t address) {
    const std::uint32_t split = split_of(address);
    const std::uint32_t number = number_in_split(address);
    return split < most_split_points && split <= header.spare_point && number != 0 &&
           number <= header.spare_counts[split] - pages_before(header, split);
}

// The number of the bit that tells whether an overflow page is in use, counted through all bitmaps.
inline std::uint32_t overflow_bit(const HashHeader& header, std::uint32_t address) {
    return pages_before(header, split_of(address)) + number_in_split(address) - 1;
}

inline std::uint32_t bits_shift(const HashHeader& header) { return header.page_shift + 3; }  // of a bitmap's bits

// True if a chain may go on at this address. The first page that each bitmap tells of is its own.
inline bool is_chain_page(const HashHeader& header, std::uint32_t address) {
    return is_allocated(header, address) && (overflow_bit(header, address) & (header.page_size * 8 - 1)) != 0;
}

// Page numbers are wider than what fits in a file, so that too large ones are seen.
inline std::uint64_t page_of_bucket(const HashHeader& header, std::uint32_t bucket) {
    return std::uint64_t{bucket} + header.header_pages + pages_before(header, width_of(bucket));
}
inline std::uint64_t page_of_address(const HashHeader& header, std::uint32_t address) {
    const std::uint32_t last_bucket = (std::uint32_t{1} << split_of(address)) - 1;
    return page_of_bucket(header, last_bucket) + number_in_split(address);
}

inline bool lies_in_file(const HashHeader& header, std::uint64_t page) {
    return page < (file_limit >> header.page_shift);
}

}  // namespace orvix::gsl::hash
