// The header and where pages lie.
#include "containers/hash/format.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>

namespace {

using namespace orvix::gsl::hash;

// A new table of two buckets with pages of 1024 bytes.
HashHeader sound_header() {
    HashHeader header{};
    header.magic = 398689;
    header.version = 2;
    header.byte_order = 1234;
    header.page_size = 1024;
    header.page_shift = 10;
    header.dir_size = 256;
    header.seg_size = 256;
    header.seg_shift = 8;
    header.spare_point = 1;
    header.free_hint = 2;
    header.top_bucket = 1;
    header.mask_high = 3;
    header.mask_low = 1;
    header.fill_factor = 65536;
    header.header_pages = 1;
    header.spare_counts[1] = header.spare_counts[2] = 2;
    header.bitmap_addrs[0] = 2049;
    return header;
}

constexpr std::uint64_t file_bytes = 4096;

TEST(LogarithmOfATableSize, IsTheSmallestExponentThatCoversTheValue) {
    EXPECT_EQ(__log2_uint(0), 0U);
    EXPECT_EQ(__log2_uint(1), 0U);
    EXPECT_EQ(__log2_uint(2), 1U);
    EXPECT_EQ(__log2_uint(3), 2U);
    EXPECT_EQ(__log2_uint(4), 2U);
    EXPECT_EQ(__log2_uint(5), 3U);
    EXPECT_EQ(__log2_uint(0x80000000), 31U);
    EXPECT_EQ(__log2_uint(0x80000001), 32U);
}

TEST(DefaultHash, MultipliesBy33AndAddsEachByte) {
    EXPECT_EQ(default_hash("", 0), 0U);
    EXPECT_EQ(default_hash("a", 1), 97U);
    EXPECT_EQ(default_hash("ab", 2), 97U * 33 + 98);
    EXPECT_EQ(default_hash("abcde", 5), (((97U * 33 + 98) * 33 + 99) * 33 + 100) * 33 + 101);
    EXPECT_EQ(default_hash("\xff", 1), 255U);
    EXPECT_EQ(default_hash("abcdefghij", 10), 2179095703U);
}

TEST(DefaultHash, IsTheSameForAllLengthsAsByteByByte) {
    std::string text;
    for (std::uint32_t i = 0; i < 100; ++i) text.push_back(static_cast<char>(i * 151 + 7));
    for (std::size_t begin = 0; begin < 8; ++begin) {
        std::uint32_t expected = 0;
        for (std::size_t length = 0; begin + length < text.size(); ++length) {
            ASSERT_EQ(default_hash(text.data() + begin, length), expected) << begin << ", " << length;
            expected = expected * 33 + static_cast<unsigned char>(text[begin + length]);
        }
    }
}

TEST(CheckText, IsTwelveBytesWithItsZero) { EXPECT_EQ(sizeof check_text, 12U); }

TEST(Header, StandsMostSignificantByteFirst) {
    HashHeader header = sound_header();
    header.key_count = -2;
    header.spare_counts[31] = 0x01020304;
    header.bitmap_addrs[31] = 0x0506;
    const auto bytes = encode(header);
    const auto at = [&](std::size_t offset, std::size_t count) {
        return std::string(bytes.begin() + static_cast<std::ptrdiff_t>(offset),
                           bytes.begin() + static_cast<std::ptrdiff_t>(offset + count));
    };
    EXPECT_EQ(at(0, 4), std::string("\x00\x06\x15\x61", 4));
    EXPECT_EQ(at(8, 4), std::string("\x00\x00\x04\xd2", 4));
    EXPECT_EQ(at(12, 4), std::string("\x00\x00\x04\x00", 4));
    EXPECT_EQ(at(44, 4), std::string("\x00\x00\x00\x03", 4));
    EXPECT_EQ(at(56, 4), "\xff\xff\xff\xfe");
    EXPECT_EQ(at(72, 4), std::string("\x00\x00\x00\x02", 4));
    EXPECT_EQ(at(192, 4), "\x01\x02\x03\x04");
    EXPECT_EQ(at(196, 2), "\x08\x01");
    EXPECT_EQ(at(258, 2), "\x05\x06");
}

TEST(Header, IsReadAsItWasWritten) {
    HashHeader header = sound_header();
    header.key_count = -2;
    header.spare_counts[31] = 0x01020304;
    const HashHeader read = decode(encode(header));
    EXPECT_EQ(std::memcmp(&read, &header, sizeof header), 0);
}

TEST(HeaderPages, ReserveAtLeast512Bytes) {
    EXPECT_EQ(header_pages_for(6), 8U);
    EXPECT_EQ(header_pages_for(8), 2U);
    EXPECT_EQ(header_pages_for(9), 1U);
    EXPECT_EQ(header_pages_for(10), 1U);
    EXPECT_EQ(header_pages_for(16), 1U);
}

TEST(PlaceOfABucket, LiesBehindTheOverflowPagesOfEarlierSplitPoints) {
    HashHeader header = sound_header();
    header.spare_counts[0] = 0;
    header.spare_counts[1] = 2;
    header.spare_counts[2] = 5;
    EXPECT_EQ(page_of_bucket(header, 0), 1U);
    EXPECT_EQ(page_of_bucket(header, 1), 2U);
    EXPECT_EQ(page_of_bucket(header, 2), 2U + 1 + 2);
    EXPECT_EQ(page_of_bucket(header, 3), 3U + 1 + 2);
    EXPECT_EQ(page_of_bucket(header, 4), 4U + 1 + 5);
}

TEST(PlaceOfAnOverflowPage, LiesBehindTheLastBucketOfItsSplitPoint) {
    HashHeader header = sound_header();
    header.spare_counts[1] = 2;
    EXPECT_EQ(page_of_address(header, (1 << 11) + 1), 3U);
    EXPECT_EQ(page_of_address(header, (1 << 11) + 2), 4U);
    EXPECT_EQ(page_of_address(header, (2 << 11) + 1), 7U);
}

TEST(OverflowBit, CountsThroughAllSplitPoints) {
    HashHeader header = sound_header();
    header.spare_point = 2;
    header.spare_counts[1] = 2;
    header.spare_counts[2] = 5;
    EXPECT_EQ(overflow_bit(header, (1 << 11) + 1), 0U);
    EXPECT_EQ(overflow_bit(header, (1 << 11) + 2), 1U);
    EXPECT_EQ(overflow_bit(header, (2 << 11) + 1), 2U);
    EXPECT_TRUE(is_allocated(header, (2 << 11) + 3));
    EXPECT_FALSE(is_allocated(header, (2 << 11) + 4));
    EXPECT_FALSE(is_allocated(header, 2 << 11));
    EXPECT_FALSE(is_allocated(header, (3 << 11) + 1));
}

TEST(FoundHeader, IsTakenIfItsFieldsBelongTogether) { EXPECT_TRUE(is_sound(sound_header(), file_bytes)); }

TEST(FoundHeader, IsTakenIfItsPairsWereNotAllCounted) {
    HashHeader header = sound_header();
    header.key_count = -5;
    EXPECT_TRUE(is_sound(header, file_bytes));
}

struct Damage {
    const char* what;
    std::function<void(HashHeader&)> inflict;
};
void PrintTo(const Damage& damage, std::ostream* out) { *out << damage.what; }

std::string name_of(const testing::TestParamInfo<Damage>& tested) { return tested.param.what; }

class DamagedHeader : public testing::TestWithParam<Damage> {};

TEST_P(DamagedHeader, IsRefused) {
    HashHeader header = sound_header();
    GetParam().inflict(header);
    EXPECT_FALSE(is_sound(header, file_bytes));
}

INSTANTIATE_TEST_SUITE_P(
    Fields, DamagedHeader,
    testing::Values(
        Damage{"ByteOrder", [](HashHeader& h) { h.byte_order = 1243; }},
        Damage{"PageSizeThatIsNoPower", [](HashHeader& h) { h.page_size = 1023; }},
        Damage{"PageShiftOfAnotherSize", [](HashHeader& h) { h.page_shift = 11; }},
        Damage{"PageOf32Bytes", [](HashHeader& h) { h.page_size = 32, h.page_shift = 5, h.header_pages = 16; }},
        Damage{"PageOf131072Bytes", [](HashHeader& h) { h.page_size = 131072, h.page_shift = 17; }},
        Damage{"PageShiftBeyondAllWords", [](HashHeader& h) { h.page_shift = 42; }},
        Damage{"HeaderPages", [](HashHeader& h) { h.header_pages = 2; }},
        Damage{"SegmentSize", [](HashHeader& h) { h.seg_size = 255; }},
        Damage{"SegmentShift", [](HashHeader& h) { h.seg_shift = 40; }},
        Damage{"SegmentsBeyondAllUse", [](HashHeader& h) { h.seg_shift = 17, h.seg_size = 1U << 17; }},
        Damage{"NoFillFactor", [](HashHeader& h) { h.fill_factor = 0; }},
        Damage{"NoDirectory", [](HashHeader& h) { h.dir_size = 0; }},
        Damage{"NoLowMask", [](HashHeader& h) { h.mask_low = 0; }},
        Damage{"LowMaskWithAHole", [](HashHeader& h) { h.mask_low = 5, h.mask_high = 11, h.top_bucket = 5; }},
        Damage{"HighMaskOfAnotherTable", [](HashHeader& h) { h.mask_high = 7; }},
        Damage{"TopBucketAboveTheMasks", [](HashHeader& h) { h.top_bucket = 4; }},
        Damage{"TopBucketBelowTheLowMask", [](HashHeader& h) { h.top_bucket = 0; }},
        Damage{"SplitPointBehindTheLast", [](HashHeader& h) { h.spare_point = 32; }},
        Damage{"SplitPointBeforeTheBuckets", [](HashHeader& h) { h.spare_point = 0; }},
        Damage{"FallingPageCounts", [](HashHeader& h) { h.spare_counts[0] = 3; }},
        Damage{"MorePagesThanASplitPointHas", [](HashHeader& h) { h.spare_counts[1] = 2048; }},
        Damage{"NoOverflowPages", [](HashHeader& h) { h.spare_counts[1] = 0; }},
        Damage{"HintBehindAllPages", [](HashHeader& h) { h.free_hint = 3; }},
        Damage{"NoBitmap", [](HashHeader& h) { h.bitmap_addrs[0] = 0; }},
        Damage{"BitmapThatWasNeverAllocated", [](HashHeader& h) { h.bitmap_addrs[0] = 2051; }},
        Damage{"MoreBucketsThanTheFileHas",
               [](HashHeader& h) { h.mask_low = 1023, h.mask_high = 2047, h.top_bucket = 1023, h.spare_point = 10; }}),
    name_of);

TEST(FoundHeader, IsRefusedIfTheFileEndsBeforeTheLastBucket) {
    EXPECT_FALSE(is_sound(sound_header(), 2048));
    EXPECT_TRUE(is_sound(sound_header(), 2049));
}

}  // namespace
