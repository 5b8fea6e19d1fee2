#include "store_format.h"

#include <bit>

namespace gslstore {

namespace {

constexpr unsigned number_bits = 11;

// Takes numbers of several widths from bytes, most significant byte first.
class FieldReader {
public:
    explicit FieldReader(std::span<const unsigned char> bytes) : bytes_(bytes) {}

    std::uint32_t take(std::size_t width) {
        std::uint32_t value = 0;
        for (const unsigned char byte : bytes_.first(width)) value = value << 8 | byte;
        bytes_ = bytes_.subspan(width);
        return value;
    }

private:
    std::span<const unsigned char> bytes_;
};

}  // namespace

bool Header::is_allocated(std::uint32_t address) const {
    const std::uint32_t split = address >> number_bits;
    const std::uint32_t number = address & pages_of_split;
    if (split > spare_point || number == 0) return false;
    return number <= spare_counts[split] - (split != 0 ? spare_counts[split - 1] : 0);
}

std::uint32_t Header::overflow_number(std::uint32_t address) const {
    const std::uint32_t split = address >> number_bits;
    return (split != 0 ? spare_counts[split - 1] : 0) + (address & pages_of_split) - 1;
}

std::uint32_t Header::address_of(std::uint32_t overflow_number) const {
    std::uint32_t split = 0;
    while (overflow_number >= spare_counts[split]) ++split;
    return (split << number_bits) + overflow_number + 1 - (split != 0 ? spare_counts[split - 1] : 0);
}

std::uint64_t Header::page_of_bucket(std::uint32_t bucket) const {
    const std::uint32_t split = split_of_bucket(bucket);
    return std::uint64_t{bucket} + header_pages + (split != 0 ? spare_counts[split - 1] : 0);
}

std::uint64_t Header::page_of_address(std::uint32_t address) const {
    const std::uint32_t last_bucket = (std::uint32_t{1} << (address >> number_bits)) - 1;
    return page_of_bucket(last_bucket) + (address & pages_of_split);
}

std::uint32_t Header::bucket_of(std::uint32_t hash) const {
    return (hash & mask_high) > top_bucket ? hash & mask_low : hash & mask_high;
}

Header decode_header(std::span<const unsigned char, header_bytes> bytes) {
    FieldReader reader(bytes);
    Header h{};
    for (std::uint32_t* field :
         {&h.magic, &h.version, &h.byte_order, &h.page_size, &h.page_shift, &h.dir_size, &h.seg_size, &h.seg_shift,
          &h.spare_point, &h.free_hint, &h.top_bucket, &h.mask_high, &h.mask_low, &h.fill_factor}) {
        *field = reader.take(4);
    }
    h.key_count = static_cast<std::int32_t>(reader.take(4));
    h.header_pages = reader.take(4);
    h.check_hash = reader.take(4);
    for (std::uint32_t& count : h.spare_counts) count = reader.take(4);
    for (std::uint16_t& address : h.bitmap_addrs) address = static_cast<std::uint16_t>(reader.take(2));
    return h;
}

std::uint32_t split_of_bucket(std::uint32_t bucket) { return static_cast<std::uint32_t>(std::bit_width(bucket)); }

std::uint32_t default_hash(std::string_view key) {
    std::uint32_t hash = 0;
    for (const char c : key) hash = hash * 33 + static_cast<unsigned char>(c);
    return hash;
}

bool has_default_hash(const Header& header) {
    constexpr std::string_view check_text("%$sniglet^&\0", 12);
    return header.check_hash == default_hash(check_text);
}

std::uint16_t PageReader::word(std::uint32_t i) const {
    const std::size_t begin = std::size_t{2} * i;
    const unsigned first = bytes_[begin];
    const unsigned second = bytes_[begin + 1];
    return static_cast<std::uint16_t>(order_ == ByteOrder::little ? second << 8 | first : first << 8 | second);
}

std::string_view PageReader::text(std::uint32_t begin, std::uint32_t end) const {
    return {reinterpret_cast<const char*>(bytes_.data()) + begin, end - begin};
}

std::uint32_t byte_of_bit(ByteOrder order, std::uint32_t number) {
    const std::uint32_t byte_in_word = number / 8 % 4;
    return number / 32 * 4 + (order == ByteOrder::little ? byte_in_word : 3 - byte_in_word);
}

bool bit(const Bytes& bitmap, ByteOrder order, std::uint32_t number) {
    return (bitmap[byte_of_bit(order, number)] >> number % 8 & 1) != 0;
}

}  // namespace gslstore
