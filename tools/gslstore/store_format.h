// Reads the file format of hash stores, as docs/store-format.md tells it, without the library's help: what the library
// writes is read here by other code than its own.
#pragma once

#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace gslstore {

using Bytes = std::vector<unsigned char>;

constexpr std::size_t header_bytes = 260;
constexpr unsigned most_split_points = 32;
constexpr unsigned most_bitmaps = 32;
constexpr std::uint32_t store_magic = 0x061561;
constexpr std::uint32_t least_page_bytes = 64;
constexpr std::uint32_t most_page_bytes = 65536;
constexpr std::uint32_t reserved_header_bytes = 512;  // in whole pages, whatever the header takes of them
constexpr std::uint32_t most_segment_size = 65536;    // buckets that are allocated at a time
constexpr std::uint32_t pages_of_split = 2047;        // overflow pages of a split point at most, numbered from 1
constexpr std::uint64_t file_limit = std::uint64_t{1} << 32;  // no page lies beyond

// What the file says; most members can be asked only once `faults_of` (header_check.h) found it sound.
struct Header {
    std::uint32_t magic, version, byte_order, page_size, page_shift, dir_size, seg_size, seg_shift, spare_point;
    std::uint32_t free_hint, top_bucket, mask_high, mask_low, fill_factor;
    std::int32_t key_count;
    std::uint32_t header_pages, check_hash;
    std::array<std::uint32_t, most_split_points> spare_counts;
    std::array<std::uint16_t, most_bitmaps> bitmap_addrs;

    std::uint32_t overflow_pages() const { return spare_counts[spare_point]; }
    std::uint32_t bitmap_bits() const { return page_size * 8; }
    std::uint32_t wanted_bitmaps() const {
        assert(bitmap_bits() != 0);
        return (overflow_pages() + bitmap_bits() - 1) / bitmap_bits();
    }
    std::uint32_t bitmap_count() const { return wanted_bitmaps() < most_bitmaps ? wanted_bitmaps() : most_bitmaps; }

    // True if an overflow page of this address was ever allocated.
    bool is_allocated(std::uint32_t address) const;
    // Its number among all overflow pages, from 0, which is the number of its bit.
    std::uint32_t overflow_number(std::uint32_t address) const;
    std::uint32_t address_of(std::uint32_t overflow_number) const;

    std::uint64_t page_of_bucket(std::uint32_t bucket) const;
    std::uint64_t page_of_address(std::uint32_t address) const;

    // The bucket of a key by its hash.
    std::uint32_t bucket_of(std::uint32_t hash) const;
};

Header decode_header(std::span<const unsigned char, header_bytes> bytes);

// The split point whose overflow pages follow the buckets that have as many bits as this one.
std::uint32_t split_of_bucket(std::uint32_t bucket);

// The hash of stores whose maker chose none.
std::uint32_t default_hash(std::string_view key);

// True if the store was made with the default hash.
bool has_default_hash(const Header& header);

enum class ByteOrder : std::uint8_t { little, big };

enum class Mark : std::uint16_t { overflow, key_part, key_end, key_end_data };

// A page of a chain.
class PageReader {
public:
    PageReader() = default;
    PageReader(Bytes bytes, ByteOrder order) : bytes_(std::move(bytes)), order_(order) {}

    std::uint32_t size() const { return static_cast<std::uint32_t>(bytes_.size()); }
    std::uint16_t word(std::uint32_t i) const;
    std::uint32_t entry_words() const { return word(0); }
    // Both only if `has_room_for_words`.
    std::uint32_t free_bytes() const { return word(entry_words() + 1); }
    std::uint32_t low() const { return offset(word(entry_words() + 2)); }

    bool has_room_for_words() const { return entry_words() % 2 == 0 && words_end() <= size(); }
    std::uint32_t words_end() const { return 2 * (entry_words() + 3); }
    bool is_big() const { return entry_words() >= 2 && word(2) >= 1 && word(2) <= 3; }
    bool is_mark(std::uint32_t index, Mark mark) const { return word(index) == static_cast<std::uint16_t>(mark); }

    // The offset that a word stands for: 65536 does not fit.
    static std::uint32_t offset(std::uint16_t word) { return word != 0 ? word : 65536; }
    std::string_view text(std::uint32_t begin, std::uint32_t end) const;

private:
    Bytes bytes_;
    ByteOrder order_ = ByteOrder::little;
};

// A bit of a bitmap, whose words have 32 bits, and the byte that it stands in.
std::uint32_t byte_of_bit(ByteOrder order, std::uint32_t number);
bool bit(const Bytes& bitmap, ByteOrder order, std::uint32_t number);

}  // namespace gslstore
