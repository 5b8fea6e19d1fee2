#include "store_format.h"

namespace gslstore {

namespace {

constexpr std::uint32_t magic = 0x061561;
constexpr std::uint32_t numbers_of_split = 2047;  // overflow pages of a split point, from 1
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

bool is_power_of_two(std::uint32_t value, std::uint32_t logarithm) {
    return logarithm < 32 && value == std::uint32_t{1} << logarithm;
}

unsigned width_of(std::uint32_t value) {
    unsigned width = 0;
    for (; value != 0; value >>= 1) ++width;
    return width;
}

const char* fault_of_buckets(const Header& h) {
    if (h.mask_low == 0 || (h.mask_low & (h.mask_low + 1)) != 0 || h.mask_high != 2 * h.mask_low + 1 ||
        h.mask_high > 0x7fffffff) {
        return "the masks do not belong together";
    }
    if (h.top_bucket < h.mask_low || h.top_bucket > h.mask_high) return "the masks do not cover the last bucket";
    if (h.top_bucket / h.seg_size >= h.dir_size) return "the directory is too small for the buckets";
    return nullptr;
}

const char* fault_of_overflow(const Header& h) {
    if (h.spare_point >= most_split_points) return "there is no such split point";
    if (h.spare_point < width_of(h.top_bucket)) return "the split point lies before the last bucket";
    std::uint32_t before = 0;
    for (unsigned split = 0; split <= h.spare_point; ++split) {
        const std::uint32_t count = h.spare_counts[split];
        if (count < before) return "the numbers of overflow pages fall";
        if (count - before > numbers_of_split) return "a split point has more overflow pages than it can";
        before = count;
    }
    if (before == 0) return "there is no page for an overflow bitmap";
    if (h.bitmap_count() > most_bitmaps) return "there are more overflow pages than bitmaps can describe";
    if (h.free_hint > before) return "the hint to free overflow pages lies behind all of them";
    for (unsigned slot = 0; slot < h.bitmap_count(); ++slot) {
        if (!h.is_allocated(h.bitmap_addrs[slot])) return "an overflow bitmap has no page";
    }
    return nullptr;
}

}  // namespace

bool Header::is_allocated(std::uint32_t address) const {
    const std::uint32_t split = address >> number_bits;
    const std::uint32_t number = address & numbers_of_split;
    if (split > spare_point || number == 0) return false;
    return number <= spare_counts[split] - (split != 0 ? spare_counts[split - 1] : 0);
}

std::uint32_t Header::overflow_number(std::uint32_t address) const {
    const std::uint32_t split = address >> number_bits;
    return (split != 0 ? spare_counts[split - 1] : 0) + (address & numbers_of_split) - 1;
}

std::uint32_t Header::address_of(std::uint32_t overflow_number) const {
    std::uint32_t split = 0;
    while (overflow_number >= spare_counts[split]) ++split;
    return (split << number_bits) + overflow_number + 1 - (split != 0 ? spare_counts[split - 1] : 0);
}

std::uint64_t Header::page_of_bucket(std::uint32_t bucket) const {
    const unsigned split = width_of(bucket);
    return std::uint64_t{bucket} + header_pages + (split != 0 ? spare_counts[split - 1] : 0);
}

std::uint64_t Header::page_of_address(std::uint32_t address) const {
    const std::uint32_t last_bucket = (std::uint32_t{1} << (address >> number_bits)) - 1;
    return page_of_bucket(last_bucket) + (address & numbers_of_split);
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

const char* fault_of(const Header& h) {
    if (h.magic != magic) return "the file is no hash store";
    if (h.version != 1 && h.version != 2) return "the version is neither 1 nor 2";
    if (h.byte_order != 1234 && h.byte_order != 4321) return "the byte order is neither 1234 nor 4321";
    if (!is_power_of_two(h.page_size, h.page_shift) || h.page_size < 64 || h.page_size > 65536) {
        return "the page size is no power of two from 64 to 65536";
    }
    if (h.header_pages != (511U >> h.page_shift) + 1) return "the header takes another number of pages";
    if (!is_power_of_two(h.seg_size, h.seg_shift)) return "the segment size is no power of two";
    if (h.fill_factor == 0) return "the fill factor is 0";
    if (const char* const fault = fault_of_buckets(h)) return fault;
    return fault_of_overflow(h);
}

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
    const unsigned first = bytes_[2 * i];
    const unsigned second = bytes_[2 * i + 1];
    return static_cast<std::uint16_t>(order_ == ByteOrder::little ? second << 8 | first : first << 8 | second);
}

std::string_view PageReader::text(std::uint32_t begin, std::uint32_t end) const {
    return {reinterpret_cast<const char*>(bytes_.data()) + begin, end - begin};
}

bool bit(const Bytes& bitmap, ByteOrder order, std::uint32_t number) {
    const std::uint32_t byte_in_word = number / 8 % 4;
    const std::uint32_t word_begin = number / 32 * 4;
    const std::uint32_t byte = word_begin + (order == ByteOrder::little ? byte_in_word : 3 - byte_in_word);
    return (bitmap[byte] >> number % 8 & 1) != 0;
}

}  // namespace gslstore
