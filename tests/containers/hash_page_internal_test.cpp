// Pages by their words: what the format says, worked out by hand.
#include "containers/hash/byte_order.h"
#include "containers/hash/page.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace orvix::gsl::hash;

// A header with room for overflow pages 1 to 9 of split point 1, the first of which is the bitmap.
HashHeader header_for(std::uint32_t page_shift) {
    HashHeader header{};
    header.page_shift = page_shift;
    header.page_size = std::uint32_t{1} << page_shift;
    header.spare_point = 1;
    header.spare_counts[1] = 9;
    return header;
}

constexpr std::uint32_t some_address = 2048 + 2;

class PageOf : public testing::Test {
protected:
    explicit PageOf(std::uint32_t size = 64) : bytes_(size, '\xff'), page_(bytes_.data(), size) { page_.make_fresh(); }

    std::vector<std::uint32_t> words(std::uint32_t count) const {
        std::vector<std::uint32_t> result;
        for (std::uint32_t i = 0; i < count; ++i) result.push_back(page_.word(i));
        return result;
    }
    void set_words(std::initializer_list<std::uint32_t> words) {
        std::uint32_t i = 0;
        for (const std::uint32_t word : words) page_.set_word(i++, word);
    }
    std::string_view bytes(std::uint32_t begin, std::uint32_t end) const { return page_.bytes(begin, end); }
    bool is_sound(bool is_bucket = false) const {
        return orvix::gsl::hash::is_sound(header_for(bits(page_.size())), page_, is_bucket);
    }
    static std::uint32_t bits(std::uint32_t size) { return width_of(size) - 1; }

    std::vector<char> bytes_;
    Page page_;
};

using Words = std::vector<std::uint32_t>;

class PageOf1024 : public PageOf {
protected:
    PageOf1024() : PageOf(1024) {}
};

TEST_F(PageOf1024, FreshHoldsTheWords0And1018And1024) { EXPECT_EQ(words(3), (Words{0, 1018, 1024})); }

TEST_F(PageOf1024, PairsArePackedDownwardsFromTheEnd) {
    page_.put("key", "value");
    EXPECT_EQ(words(5), (Words{2, 1021, 1016, 1006, 1016}));
    page_.put("k2", "v");
    EXPECT_EQ(words(7), (Words{4, 1021, 1016, 1014, 1013, 999, 1013}));
    EXPECT_EQ(bytes(1013, 1024), "vk2valuekey");
}

TEST_F(PageOf1024, EmptyValueHasTheOffsetOfItsKey) {
    page_.put("key", "");
    EXPECT_EQ(words(5), (Words{2, 1021, 1021, 1011, 1021}));
}

TEST_F(PageOf1024, EmptyPairTakesItsEntryAlone) {
    page_.put("", "");
    EXPECT_EQ(words(5), (Words{2, 1024, 1024, 1014, 1024}));
    EXPECT_TRUE(is_sound());
}

TEST_F(PageOf, TakesAPairOfItsFreeBytesLess8AndNoLarger) {
    EXPECT_EQ(page_.free_bytes(), 58U);
    EXPECT_TRUE(page_.fits(50));
    EXPECT_FALSE(page_.fits(51));
}

TEST_F(PageOf, HasRoomForALinkBehindTheLargestPair) {
    page_.put("k", std::string(49, 'v'));
    EXPECT_EQ(words(5), (Words{2, 63, 14, 4, 14}));
    EXPECT_FALSE(page_.fits(0));
    page_.add_link(some_address);
    EXPECT_EQ(words(7), (Words{4, 63, 14, some_address, MARK_OVERFLOW, 0, 14}));
    EXPECT_EQ(page_.next_address(), some_address);
    EXPECT_TRUE(is_sound());
}

TEST_F(PageOf, DroppingALinkUndoesAddingIt) {
    page_.put("key", "value");
    const auto before = bytes_;
    page_.add_link(some_address);
    page_.drop_link();
    EXPECT_EQ(words(5), (Words{2, 61, 56, 46, 56}));
}

TEST_F(PageOf, TakesNoPairBehindALink) {
    page_.add_link(some_address);
    EXPECT_FALSE(page_.fits(0));
}

TEST_F(PageOf, SqueezesAPairInFrontOfItsLink) {
    page_.put("a", "1");
    page_.add_link(some_address);
    EXPECT_EQ(words(7), (Words{4, 63, 62, some_address, 0, 48, 62}));
    page_.squeeze("bb", "222");
    EXPECT_EQ(words(9), (Words{6, 63, 62, 60, 57, some_address, 0, 39, 57}));
    EXPECT_EQ(bytes(57, 64), "222bb1a");
    EXPECT_TRUE(is_sound());
}

TEST_F(PageOf, SqueezesWhatLeavesOneByteFree) {
    page_.add_link(some_address);
    EXPECT_EQ(page_.free_bytes(), 54U);
    EXPECT_TRUE(page_.can_squeeze(49));
    EXPECT_FALSE(page_.can_squeeze(50));
    page_.squeeze("", std::string(49, 'v'));
    EXPECT_EQ(page_.free_bytes(), 1U);
    EXPECT_TRUE(is_sound());
}

TEST_F(PageOf, SqueezesNothingWithoutALink) { EXPECT_FALSE(page_.can_squeeze(1)); }

TEST_F(PageOf, SqueezesNothingOnAPageOfABigPair) {
    page_.put_big_part("key", MARK_KEY_PART);
    page_.add_link(some_address);
    EXPECT_GT(page_.free_bytes(), 5U);
    EXPECT_FALSE(page_.can_squeeze(1));
}

TEST_F(PageOf, RemovingThePairInFrontMovesTheOthersUp) {
    page_.put("a", "11");
    page_.put("bb", "2");
    page_.put("ccc", "33");
    page_.remove(1);
    EXPECT_EQ(words(7), (Words{4, 62, 61, 58, 56, 42, 56}));
    EXPECT_EQ(bytes(56, 64), "33ccc2bb");
}

TEST_F(PageOf, RemovingThePairInTheMiddleMovesWhatIsBelow) {
    page_.put("a", "11");
    page_.put("bb", "2");
    page_.put("ccc", "33");
    page_.remove(3);
    EXPECT_EQ(words(7), (Words{4, 63, 61, 58, 56, 42, 56}));
    EXPECT_EQ(bytes(56, 64), "33ccc11a");
}

TEST_F(PageOf, RemovingTheLastPairLeavesTheOthersWhereTheyAre) {
    page_.put("a", "11");
    page_.put("bb", "2");
    page_.remove(3);
    EXPECT_EQ(words(5), (Words{2, 63, 61, 51, 61}));
}

TEST_F(PageOf, RemovingAPairKeepsAddressAndMarkOfTheLink) {
    page_.put("a", "11");
    page_.put("bb", "2");
    page_.add_link(some_address);
    page_.remove(1);
    EXPECT_EQ(words(7), (Words{4, 62, 61, some_address, 0, 47, 61}));
    page_.remove(1);
    EXPECT_EQ(words(5), (Words{2, some_address, 0, 54, 64}));
}

TEST_F(PageOf, LeftBehindByABigPairLiesOneByteShort) {
    page_.put_big_part("key", MARK_KEY_PART);
    page_.leave_behind_big(0, false);
    EXPECT_EQ(words(3), (Words{0, 58, 63}));
    page_.leave_behind_big(some_address, false);
    EXPECT_EQ(words(5), (Words{2, some_address, 0, 54, 63}));
    EXPECT_TRUE(is_sound());
}

TEST_F(PageOf, LeftBehindByABigPairIsFreshIfAsked) {
    page_.put_big_part("key", MARK_KEY_PART);
    page_.leave_behind_big(0, true);
    EXPECT_EQ(words(3), (Words{0, 58, 64}));
}

TEST_F(PageOf, OneByteShortTakesNoPairThatWouldReachTheWords) {
    page_.leave_behind_big(0, false);
    EXPECT_TRUE(page_.fits(49));
    EXPECT_FALSE(page_.fits(50));
}

TEST_F(PageOf, SettlingMovesTheFirstPairToTheEnd) {
    page_.leave_behind_big(0, false);
    page_.settle_low();
    EXPECT_EQ(words(3), (Words{0, 58, 64}));
    page_.leave_behind_big(some_address, false);
    page_.settle_low();
    EXPECT_EQ(words(5), (Words{2, some_address, 0, 54, 64}));
}

TEST_F(PageOf, SettlingLeavesAPageWithPairsAsItIs) {
    page_.leave_behind_big(0, false);
    page_.put("key", "value");
    page_.settle_low();
    EXPECT_EQ(words(5), (Words{2, 60, 55, 45, 55}));
}

TEST_F(PageOf, BigPartStandsBelowTheEndOfThePage) {
    page_.put_big_part("0123456789", MARK_KEY_PART);
    EXPECT_EQ(words(5), (Words{2, 54, MARK_KEY_PART, 44, 54}));
    EXPECT_EQ(page_.big_part(), "0123456789");
}

TEST_F(PageOf, FirstPartOfAValueTakesThePlaceOfTheLinksMark) {
    page_.put_big_part("key", MARK_KEY_PART);
    page_.add_link(some_address);
    page_.put_big_value_part("value");
    EXPECT_EQ(words(7), (Words{4, 61, MARK_KEY_END_DATA, some_address, 56, 42, 56}));
    EXPECT_EQ(page_.big_value_part(), "value");
    EXPECT_EQ(page_.next_address(), some_address);
    EXPECT_TRUE(page_.ends_big());
    EXPECT_TRUE(is_sound());
}

TEST_F(PageOf, KeyPageWithoutAFreeByteIsNotTheLastOne) {
    page_.put_big_part("key", MARK_KEY_PART);
    page_.add_link(some_address);
    page_.put_big_value_part(std::string(page_.free_bytes(), 'v'));
    EXPECT_EQ(page_.free_bytes(), 0U);
    EXPECT_FALSE(page_.ends_big());
    EXPECT_TRUE(is_sound());
}

// Pages as a file may have them.
struct Case {
    const char* what;
    std::vector<std::uint32_t> words;
    bool sound;
    bool sound_as_bucket;
};
void PrintTo(const Case& found, std::ostream* out) { *out << found.what; }

std::string name_of(const testing::TestParamInfo<Case>& tested) { return tested.param.what; }

class FoundPage : public testing::TestWithParam<Case> {};

TEST_P(FoundPage, IsTakenOrRefusedByItsWords) {
    std::vector<char> bytes(64, '\0');
    const Page page(bytes.data(), 64);
    Page writer = page;
    for (std::uint32_t i = 0; i < GetParam().words.size(); ++i) writer.set_word(i, GetParam().words[i]);
    EXPECT_EQ(is_sound(header_for(6), page, false), GetParam().sound);
    EXPECT_EQ(is_sound(header_for(6), page, true), GetParam().sound_as_bucket);
}

constexpr std::uint32_t to_bitmap = 2048 + 1;
constexpr std::uint32_t never_allocated = 2048 + 10;

INSTANTIATE_TEST_SUITE_P(
    Words, FoundPage,
    testing::Values(
        Case{"AnEmptyPage", {0, 58, 64}, true, true}, Case{"AnEmptyPageOneShort", {0, 58, 63}, true, true},
        Case{"APair", {2, 60, 50, 40, 50}, true, true}, Case{"AnEmptyPair", {2, 64, 64, 54, 64}, true, true},
        Case{"AnOddNumberOfWords", {3, 60, 50, 40, 50, 50}, false, false},
        Case{"MoreWordsThanThePageHas", {30, 60, 50, 40, 50}, false, false},
        Case{"WordsThatFillThePage",
             {28, 64, 64, 64, 64, 64, 64, 64, 64, 64, 64, 64, 64, 64, 64, 64,
              64, 64, 64, 64, 64, 64, 64, 64, 64, 64, 64, 64, 64, 2,  64},
             true,
             true},
        Case{"AKeyBehindThePage", {2, 65, 50, 40, 50}, false, false},
        Case{"AValueBehindItsKey", {2, 50, 51, 40, 50}, false, false},
        Case{"AValueWithinTheWords", {2, 60, 9, 0, 9}, false, false},
        Case{"ASecondKeyAboveTheFirstValue", {4, 60, 50, 51, 45, 31, 45}, false, false},
        Case{"DataBelowItsOffset", {2, 60, 50, 40, 51}, false, false},
        Case{"AGapBelowTheData", {2, 60, 50, 40, 50}, true, true},
        Case{"AnOffsetWithinTheWords", {2, 60, 50, 0, 9}, false, false},
        Case{"AnOffsetBehindThePage", {0, 58, 65}, false, false}, Case{"NoOffset", {0, 58, 0}, false, false},
        Case{"OneFreeByteTooMany", {2, 60, 50, 41, 50}, true, true},
        Case{"TwoFreeBytesTooMany", {2, 60, 50, 42, 50}, false, false},
        Case{"FewerFreeBytes", {2, 60, 50, 3, 50}, true, true}, Case{"ALink", {2, some_address, 0, 54, 64}, true, true},
        Case{"ALinkToABitmap", {2, to_bitmap, 0, 54, 64}, false, false},
        Case{"ALinkToAPageThatNeverWas", {2, never_allocated, 0, 54, 64}, false, false},
        Case{"ALinkToNumber0", {2, 2048, 0, 54, 64}, false, false},
        Case{"ALinkToALaterSplitPoint", {2, 2 * 2048 + 1, 0, 54, 64}, false, false},
        Case{"ALinkInFront", {4, some_address, 0, 60, 50, 36, 50}, false, false},
        Case{"AMarkBehindAPair", {4, 60, 50, 40, MARK_KEY_PART, 36, 50}, false, false},
        Case{"APartOfAKey", {4, 50, MARK_KEY_PART, some_address, 0, 36, 50}, true, false},
        Case{"APartOfAKeyWithoutALink", {2, 50, MARK_KEY_PART, 40, 50}, false, false},
        Case{"AnEndOfAKeyWithoutALink", {2, 50, MARK_KEY_END, 40, 50}, false, false},
        Case{"ALastPart", {2, 50, MARK_KEY_END_DATA, 40, 50}, true, false},
        Case{"ALastPartWithALink", {4, 50, MARK_KEY_END_DATA, some_address, 0, 36, 50}, true, false},
        Case{"ABigPairThatGoesOnAtABitmap", {4, 50, MARK_KEY_PART, to_bitmap, 0, 36, 50}, false, false},
        Case{"ABigPageWithAPair", {6, 50, MARK_KEY_PART, 40, 30, some_address, 0, 12, 30}, false, false},
        Case{"AValueBehindAPartOfAKey", {4, 50, MARK_KEY_PART, some_address, 40, 26, 40}, false, false},
        Case{"AValueBehindAKey", {4, 50, MARK_KEY_END_DATA, some_address, 40, 26, 40}, true, false},
        Case{"AValueAboveItsKey", {4, 50, MARK_KEY_END_DATA, some_address, 51, 36, 50}, false, false},
        Case{"AValueWithinTheWordsOfABigPage", {4, 50, MARK_KEY_END_DATA, some_address, 13, 0, 14}, false, false},
        Case{"ABigPartWithinTheWords", {2, 9, MARK_KEY_END_DATA, 0, 10}, false, false},
        Case{"ABigPartBehindThePage", {2, 65, MARK_KEY_END_DATA, 40, 50}, false, false},
        Case{"NoBigPart", {2, 0, MARK_KEY_END_DATA, 40, 50}, false, false}),
    name_of);

class PageOf65536 : public PageOf {
protected:
    PageOf65536() : PageOf(65536) {}
};

TEST_F(PageOf65536, FreshHasAnOffsetThatDoesNotFit) {
    EXPECT_EQ(words(3), (Words{0, 65530, 0}));
    EXPECT_EQ(page_.low(), 65536U);
    EXPECT_TRUE(is_sound());
}

TEST_F(PageOf65536, TakesNoRegularPair) {
    EXPECT_FALSE(page_.fits(0));
    page_.add_link(some_address);
    EXPECT_FALSE(page_.can_squeeze(1));
}

TEST_F(PageOf65536, HoldsAnEmptyPartAtItsEnd) {
    page_.put_big_part("", MARK_KEY_PART);
    EXPECT_EQ(words(5), (Words{2, 0, MARK_KEY_PART, 65526, 0}));
    EXPECT_EQ(page_.big_part(), "");
    page_.add_link(some_address);
    page_.put_big_value_part("");
    EXPECT_TRUE(page_.has_big_value_part());
    EXPECT_EQ(page_.big_value_part(), "");
    EXPECT_TRUE(page_.ends_big());
    EXPECT_TRUE(is_sound());
}

TEST_F(PageOf, SwappedOutIsSwappedBackIn) {
    page_.put("key", "value");
    page_.add_link(some_address);
    const auto before = bytes_;
    swap_out(page_);
    EXPECT_EQ(bytes_[0], '\0');
    EXPECT_EQ(bytes_[1], '\4');
    EXPECT_EQ(bytes(56, 64), "valuekey");
    EXPECT_TRUE(swap_in(page_));
    EXPECT_EQ(bytes_, before);
}

TEST_F(PageOf, SwappedInWithTooManyWordsIsRefused) {
    set_words({0x1c00});
    EXPECT_TRUE(swap_in(page_));  // 28 words in entries and 3 more are all that a page of 64 bytes has
    set_words({0x1e00});
    EXPECT_FALSE(swap_in(page_));
}

TEST(Bitmap, IsSwappedWordByWordOf32Bits) {
    char bytes[] = "abcdefgh";
    swap_bitmap(bytes, 8);
    EXPECT_STREQ(bytes, "dcbahgfe");
}

}  // namespace
