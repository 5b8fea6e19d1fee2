#include "containers/hash/format.h"

#include <cassert>
#include <cstring>
#include <type_traits>

namespace orvix::gsl::hash {

namespace {

// Hands the header's fields to `visit` in the order in which they stand in the file.
template <class Header, class Visit>
void visit_fields(Header& header, Visit visit) {
    visit(header.magic);
    visit(header.version);
    visit(header.byte_order);
    visit(header.page_size);
    visit(header.page_shift);
    visit(header.dir_size);
    visit(header.seg_size);
    visit(header.seg_shift);
    visit(header.spare_point);
    visit(header.free_hint);
    visit(header.top_bucket);
    visit(header.mask_high);
    visit(header.mask_low);
    visit(header.fill_factor);
    visit(header.key_count);
    visit(header.header_pages);
    visit(header.check_hash);
    for (auto& count : header.spare_counts) visit(count);
    for (auto& address : header.bitmap_addrs) visit(address);
}

bool has_sound_sizes(const HashHeader& header) {
    return (header.byte_order == little_endian_pages || header.byte_order == big_endian_pages) &&
           header.page_shift >= least_page_shift && header.page_shift <= most_page_shift &&
           header.page_size == std::uint32_t{1} << header.page_shift &&
           header.header_pages == header_pages_for(header.page_shift) && header.seg_shift <= most_segment_shift &&
           header.seg_size == std::uint32_t{1} << header.seg_shift && header.fill_factor != 0;
}

// The buckets in use are the lower half of the table and some of the upper one.
bool has_sound_buckets(const HashHeader& header) {
    constexpr std::uint32_t most_buckets = std::uint32_t{1} << 31;
    return header.mask_low != 0 && std::has_single_bit(header.mask_low + 1) &&
           header.mask_high == 2 * header.mask_low + 1 && header.mask_high < most_buckets &&
           header.top_bucket >= header.mask_low && header.top_bucket <= header.mask_high &&
           header.top_bucket >> header.seg_shift < header.dir_size;
}

bool has_sound_overflow_pages(const HashHeader& header) {
    if (header.spare_point >= most_split_points) return false;
    if (header.spare_point < width_of(header.top_bucket)) return false;
    std::uint32_t before = 0;
    for (std::uint32_t split = 0; split <= header.spare_point; ++split) {
        const std::uint32_t count = header.spare_counts[split];
        if (count < before || count - before > most_pages_of_split) return false;
        before = count;
    }
    const std::uint32_t bitmaps = (before + header.page_size * 8 - 1) >> bits_shift(header);
    if (bitmaps == 0 || bitmaps > most_bitmaps || header.free_hint > before) return false;
    for (std::uint32_t i = 0; i < bitmaps; ++i) {
        if (!is_allocated(header, header.bitmap_addrs[i])) return false;
    }
    return true;
}

// The hash of a text is that of its first byte times 33, plus the second byte, all of it times 33 and so on. Eight
// bytes are taken at once.
constexpr std::uint32_t factor = 33;
constexpr std::size_t block_bytes = 8;

constexpr std::uint32_t power(std::size_t exponent) {
    std::uint32_t result = 1;
    for (; exponent != 0; --exponent) result *= factor;
    return result;
}
constexpr std::array<std::uint32_t, block_bytes> powers{power(0), power(1), power(2), power(3),
                                                        power(4), power(5), power(6), power(7)};

// Eight bytes as a number, the first one lowest.
std::uint64_t load_block(const unsigned char* bytes) {
    std::uint64_t block = 0;
    if constexpr (std::endian::native == std::endian::little) {
        std::memcpy(&block, bytes, sizeof block);
    } else {
        for (std::size_t i = block_bytes; i-- != 0;) block = block << 8 | bytes[i];
    }
    return block;
}

// Neighbours are joined to numbers of twice their width, which have room for the sums: bytes to 16 bits, these to 32.
std::uint32_t hash_of_block(std::uint64_t bytes) {
    constexpr std::uint64_t low_bytes = 0x00ff00ff00ff00ff;
    constexpr std::uint64_t low_halves = 0x0000ffff0000ffff;
    const std::uint64_t pairs = (bytes & low_bytes) * power(1) + (bytes >> 8 & low_bytes);
    const std::uint64_t fours = (pairs & low_halves) * power(2) + (pairs >> 16 & low_halves);
    return static_cast<std::uint32_t>(fours) * power(4) + static_cast<std::uint32_t>(fours >> 32);
}

}  // namespace

std::uint32_t default_hash(const void* bytes, std::size_t length) {
    const auto* at = static_cast<const unsigned char*>(bytes);
    std::uint32_t hash = 0;
    if (length < block_bytes) {
        for (const auto* const end = at + length; at != end; ++at) hash = hash * factor + *at;
        return hash;
    }
    for (; length >= block_bytes; length -= block_bytes, at += block_bytes) {
        hash = hash * power(block_bytes) + hash_of_block(load_block(at));
    }
    // The rest is taken out of the last eight bytes, whose first ones are made zeros.
    const std::uint64_t last = load_block(at + length - block_bytes);
    const std::uint64_t rest = length == 0 ? 0 : last >> (8 * (block_bytes - length)) << (8 * (block_bytes - length));
    return hash * powers[length] + hash_of_block(rest);
}

std::array<unsigned char, header_bytes> encode(const HashHeader& header) {
    std::array<unsigned char, header_bytes> bytes;
    std::size_t at = 0;
    visit_fields(header, [&](auto field) {
        const auto value = static_cast<std::uint32_t>(field);
        for (std::size_t byte = sizeof field; byte-- != 0;) {
            bytes[at++] = static_cast<unsigned char>(value >> (8 * byte));
        }
    });
    assert(at == header_bytes);
    return bytes;
}

HashHeader decode(const std::array<unsigned char, header_bytes>& bytes) {
    HashHeader header;
    std::size_t at = 0;
    visit_fields(header, [&](auto& field) {
        std::uint32_t value = 0;
        for (std::size_t byte = 0; byte < sizeof field; ++byte) value = value << 8 | bytes[at++];
        field = static_cast<std::remove_reference_t<decltype(field)>>(value);
    });
    assert(at == header_bytes);
    return header;
}

bool is_sound(const HashHeader& header, std::uint64_t file_bytes) {
    if (!has_sound_sizes(header) || !has_sound_buckets(header) || !has_sound_overflow_pages(header)) return false;
    // A file reaches beyond its last bucket: the header is written after all pages of buckets, and a new one has the
    // page of its overflow bitmap there.
    const std::uint64_t last_page = page_of_bucket(header, header.top_bucket);
    return lies_in_file(header, last_page) && last_page << header.page_shift < file_bytes;
}

}  // namespace orvix::gsl::hash
