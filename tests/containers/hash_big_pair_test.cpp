// Pairs too large for a page. A page of 64 bytes takes 50 bytes of a big pair, with room for a link.
#include "containers/hash_store_access.h"

#include <cerrno>

namespace {

using namespace orvix::test;

// All pairs of a table come to one chain.
std::uint32_t bucket_0(const void*, std::size_t) { return 0; }

class HashBigPair : public testing::Test {
protected:
    static Store make(std::uint32_t page_size = 64, std::uint32_t cache_bytes = 1U << 20) {
        return Store::in_memory(HASHINFO{page_size, 1000000, 0, cache_bytes, bucket_0, 0});
    }

    // Stores a pair, which is the first of its chain, and gives its first page.
    _bufhead* put(const std::string& key, const std::string& value) {
        EXPECT_EQ(store_.put(key, value), 0);
        return __get_buf(table_, 0, nullptr, false)->ovfl;
    }
    Words words(const _bufhead* page) { return words_of(page, words_of(page, 1)[0] + 3); }
    static std::string tail(const _bufhead* page, std::size_t bytes) { return {page->page + 64 - bytes, bytes}; }
    static std::string bytes(std::size_t count, char from = 'a') {
        std::string text(count, '\0');
        for (std::size_t i = 0; i < count; ++i) text[i] = static_cast<char>(static_cast<std::size_t>(from) + i % 26);
        return text;
    }

    Store store_ = make();
    htab* table_ = store_.table();
};

TEST_F(HashBigPair, OfFreeWordLess8BytesIsARegularOne) {
    EXPECT_EQ(store_.put("k", bytes(49)), 0);
    _bufhead* const first = __get_buf(table_, 0, nullptr, false);
    EXPECT_EQ(words(first), (Words{2, 63, 14, 4, 14}));
}

TEST_F(HashBigPair, OfOneByteMoreHasPagesToItself) {
    const _bufhead* const page = put("k", bytes(50));
    const std::uint32_t next = page->ovfl->addr;
    EXPECT_EQ(words(page), (Words{4, 63, MARK_KEY_END_DATA, next, 14, 0, 14}));
    EXPECT_EQ(tail(page, 50), bytes(49) + "k");
    EXPECT_EQ(words(page->ovfl), (Words{2, 63, MARK_KEY_END_DATA, 53, 63}));
    EXPECT_EQ(tail(page->ovfl, 1), bytes(50).substr(49));
}

TEST_F(HashBigPair, KeyIsStoredInParts) {
    const std::string key = bytes(120);
    const _bufhead* const page = put(key, "v");
    const _bufhead* const second = page->ovfl;
    const _bufhead* const third = second->ovfl;
    EXPECT_EQ(words(page), (Words{4, 14, MARK_KEY_PART, second->addr, MARK_OVERFLOW, 0, 14}));
    EXPECT_EQ(words(second), (Words{4, 14, MARK_KEY_PART, third->addr, MARK_OVERFLOW, 0, 14}));
    EXPECT_EQ(words(third), (Words{4, 44, MARK_KEY_END_DATA, third->ovfl->addr, 43, 29, 43}));
    EXPECT_EQ(tail(page, 50) + tail(second, 50) + tail(third, 20), key);
    EXPECT_EQ(words(third->ovfl), (Words{0, 58, 64}));
}

TEST_F(HashBigPair, ValueThatLeavesAFreeByteBehindItsKeyEndsThere) {
    // Behind a key of 60 bytes the second page has 64 - 10 - 14 = 40 bytes free.
    const _bufhead* const page = put(bytes(60), bytes(39))->ovfl;
    EXPECT_EQ(words(page), (Words{4, 54, MARK_KEY_END_DATA, page->ovfl->addr, 15, 1, 15}));
    EXPECT_EQ(words(page->ovfl), (Words{0, 58, 64}));
    EXPECT_EQ(store_.get(bytes(60)), bytes(39));
}

TEST_F(HashBigPair, ValueOfExactlyTheRoomBehindItsKeyGoesToTheNextPageWhole) {
    const _bufhead* const page = put(bytes(60), bytes(40))->ovfl;
    EXPECT_EQ(words(page), (Words{4, 54, MARK_KEY_END, page->ovfl->addr, MARK_OVERFLOW, 40, 54}));
    EXPECT_EQ(words(page->ovfl), (Words{2, 24, MARK_KEY_END_DATA, 14, 24}));
    EXPECT_EQ(store_.get(bytes(60)), bytes(40));
}

TEST_F(HashBigPair, LongerValueFillsThePageOfItsKeyAndGoesOn) {
    const _bufhead* const page = put(bytes(60), bytes(41))->ovfl;
    EXPECT_EQ(words(page), (Words{4, 54, MARK_KEY_END_DATA, page->ovfl->addr, 14, 0, 14}));
    EXPECT_EQ(words(page->ovfl), (Words{2, 63, MARK_KEY_END_DATA, 53, 63}));
    EXPECT_EQ(store_.get(bytes(60)), bytes(41));
}

TEST_F(HashBigPair, ValueThatWouldFillItsFirstPageIsSpreadOverTwo) {
    const _bufhead* const page = put(bytes(50), bytes(50));
    EXPECT_EQ(words(page), (Words{4, 14, MARK_KEY_END, page->ovfl->addr, MARK_OVERFLOW, 0, 14}));
    const _bufhead* const second = page->ovfl;
    EXPECT_EQ(words(second), (Words{4, 15, MARK_KEY_END, second->ovfl->addr, MARK_OVERFLOW, 1, 15}));
    EXPECT_EQ(words(second->ovfl), (Words{2, 63, MARK_KEY_END_DATA, 53, 63}));
    EXPECT_EQ(store_.get(bytes(50)), bytes(50));
}

TEST_F(HashBigPair, ValueOfSeveralPagesHasPartsThatEndWithKeyEndData) {
    const _bufhead* const page = put(bytes(50), bytes(120));
    const _bufhead* const second = page->ovfl;
    const _bufhead* const third = second->ovfl;
    EXPECT_EQ(words(second), (Words{4, 14, MARK_KEY_END, third->addr, MARK_OVERFLOW, 0, 14}));
    EXPECT_EQ(words(third), (Words{4, 14, MARK_KEY_END, third->ovfl->addr, MARK_OVERFLOW, 0, 14}));
    EXPECT_EQ(words(third->ovfl), (Words{2, 44, MARK_KEY_END_DATA, 34, 44}));
    EXPECT_EQ(store_.get(bytes(50)), bytes(120));
}

TEST_F(HashBigPair, EmptyValueStandsBehindItsKeyWithoutAByte) {
    const _bufhead* const page = put(bytes(60), "")->ovfl;
    EXPECT_EQ(words(page), (Words{4, 54, MARK_KEY_END_DATA, page->ovfl->addr, 54, 40, 54}));
    EXPECT_EQ(store_.get(bytes(60)), "");
}

TEST_F(HashBigPair, KeyWithAnEmptyValueLeavesAFreeByteBehindIt) {
    // A key of 100 bytes would fill two pages and leave no free byte to tell of the value.
    const _bufhead* const page = put(bytes(100), "");
    const _bufhead* const third = page->ovfl->ovfl;
    EXPECT_EQ(words(page->ovfl), (Words{4, 15, MARK_KEY_PART, third->addr, MARK_OVERFLOW, 1, 15}));
    EXPECT_EQ(words(third), (Words{4, 63, MARK_KEY_END_DATA, third->ovfl->addr, 63, 49, 63}));
    EXPECT_EQ(store_.get(bytes(100)), "");
}

TEST_F(HashBigPair, EmptyValueThatAnotherWriterLeftWithoutAPageIsRead) {
    put(bytes(50), bytes(70));
    _bufhead* const page = __get_buf(table_, 0, nullptr, false)->ovfl;
    ASSERT_EQ(words(page), (Words{4, 14, MARK_KEY_END, page->ovfl->addr, MARK_OVERFLOW, 0, 14}));
    // The page of the value becomes a page like any other.
    const std::uint16_t fresh[] = {0, 58, 64};
    std::memcpy(page->ovfl->page, fresh, sizeof fresh);
    EXPECT_EQ(store_.get(bytes(50)), "");
    EXPECT_EQ(store_.scan().at(bytes(50)), "");
    EXPECT_EQ(store_.put(bytes(51), "x"), 0);
    EXPECT_EQ(store_.get(bytes(50)), "");
    EXPECT_EQ(store_.del(bytes(50)), 0);
    EXPECT_EQ(store_.get(bytes(50)), std::nullopt);
}

TEST_F(HashBigPair, EmptyKeyHasAnEmptyPart) {
    const _bufhead* const page = put("", bytes(70));
    EXPECT_EQ(words(page), (Words{4, 64, MARK_KEY_END_DATA, page->ovfl->addr, 14, 0, 14}));
    EXPECT_EQ(store_.get(""), bytes(70));
    EXPECT_EQ(store_.scan().at(""), bytes(70));
}

TEST_F(HashBigPair, KeysThatDifferInLengthOrInOneByteAreTakenApart) {
    const std::string key = bytes(130);
    std::string differs_late = key;
    differs_late.back() = '!';
    std::string differs_early = key;
    differs_early[3] = '!';
    store_.put(key, "value");
    EXPECT_EQ(store_.get(differs_late), std::nullopt);
    EXPECT_EQ(store_.get(differs_early), std::nullopt);
    for (std::size_t length = 0; length < 200; ++length) {
        EXPECT_EQ(store_.get(bytes(length)).has_value(), length == 130) << length;
    }
}

TEST_F(HashBigPair, FindGivesTheIndexOrMinus2) {
    _bufhead* const page = put(bytes(130), "value");
    EXPECT_EQ(__find_bigpair(table_, page, 1, bytes(130).data(), 130), 1);
    EXPECT_EQ(__find_bigpair(table_, page, 1, bytes(129).data(), 129), -2);
    EXPECT_EQ(__find_bigpair(table_, page, 1, bytes(100).data(), 100), -2);
    EXPECT_EQ(__find_bigpair(table_, page, 1, "", 0), -2);
    EXPECT_EQ(__find_bigpair(table_, page, 1, "", -1), -2);
}

TEST_F(HashBigPair, FindGivesMinus3IfAPageIsDamaged) {
    _bufhead* const page = put(bytes(130), "value");
    const std::uint16_t fresh[] = {0, 58, 64};
    std::memcpy(page->ovfl->page, fresh, sizeof fresh);
    errno = 0;
    EXPECT_EQ(__find_bigpair(table_, page, 1, bytes(130).data(), 130), -3);
    EXPECT_EQ(errno, EINVAL);
}

TEST_F(HashBigPair, LastPageIsTheOneWithTheEndOfTheValue) {
    _bufhead* page = put(bytes(50), bytes(120));
    _bufhead* const last = page->ovfl->ovfl->ovfl;
    EXPECT_EQ(__find_last_page(table_, &page), 0U);
    EXPECT_EQ(page, last);
}

TEST_F(HashBigPair, LastPageTellsWhereTheChainGoesOn) {
    _bufhead* page = put(bytes(60), "v");
    _bufhead* const last = page->ovfl;
    EXPECT_EQ(__find_last_page(table_, &page), last->ovfl->addr);
    EXPECT_EQ(page, last);
}

TEST_F(HashBigPair, DeletingTheOnlyOneOfABucketLeavesAnEmptyPageOneByteShort) {
    const _bufhead* const page = put(bytes(50), bytes(120));
    EXPECT_EQ(store_.del(bytes(50)), 0);
    EXPECT_EQ(words(page), (Words{0, 58, 63}));
    EXPECT_EQ(page->ovfl, nullptr);
    EXPECT_EQ(table_->key_count, 0);
    EXPECT_EQ(table_->bitmap_pages[0][0] & 0xff, 0xe3U);  // of five pages the bitmap and this one are in use
    expect_faultless(report_on(store_));
}

TEST_F(HashBigPair, DeletingOneInFrontOfOthersLeavesALinkToThem) {
    const std::string first_key = bytes(60);
    const std::string second_key = bytes(60, 'b');
    _bufhead* const page = put(first_key, bytes(100));
    put(second_key, bytes(100));
    _bufhead* last = page;
    const std::uint32_t second_page = __find_last_page(table_, &last);
    ASSERT_NE(second_page, 0U);
    EXPECT_EQ(store_.del(first_key), 0);
    EXPECT_EQ(words(page), (Words{2, second_page, MARK_OVERFLOW, 54, 63}));
    EXPECT_EQ(page->ovfl->addr, second_page);
    EXPECT_EQ(store_.get(second_key), bytes(100));
    expect_faultless(report_on(store_));
}

TEST_F(HashBigPair, DeletingOneWhoseValueEndsOnAPageOfItsKeyLeavesALinkToTheEmptyPageBehind) {
    const _bufhead* const page = put(bytes(60), bytes(20));
    const std::uint32_t behind = page->ovfl->ovfl->addr;
    EXPECT_EQ(store_.del(bytes(60)), 0);
    EXPECT_EQ(words(page), (Words{2, behind, MARK_OVERFLOW, 54, 63}));
    EXPECT_EQ(words(page->ovfl), (Words{0, 58, 64}));
    expect_faultless(report_on(store_));
}

TEST_F(HashBigPair, DamagedChainIsNotDeleted) {
    _bufhead* const page = put(bytes(50), bytes(120));
    const std::uint16_t fresh[] = {0, 58, 64};
    std::memcpy(page->ovfl->ovfl->page, fresh, sizeof fresh);
    const Words before = words(page);
    errno = 0;
    EXPECT_EQ(store_.del(bytes(50)), -1);
    EXPECT_EQ(errno, EINVAL);
    EXPECT_EQ(words(page), before);
    EXPECT_EQ(table_->key_count, 1);
}

TEST_F(HashBigPair, BucketStaysPinnedAfterAFailureUntilTheNextOperation) {
    _bufhead* const page = put(bytes(50), bytes(120));
    const std::uint16_t fresh[] = {0, 58, 64};
    std::memcpy(page->ovfl->ovfl->page, fresh, sizeof fresh);
    _bufhead* const first = __get_buf(table_, 0, nullptr, false);
    DBT value;
    EXPECT_EQ(store_.get_result(bytes(50), &value), -1);
    EXPECT_EQ(first->flags & BUFFER_PINNED, BUFFER_PINNED);
    EXPECT_EQ(store_.get("other"), std::nullopt);
    EXPECT_EQ(first->flags & BUFFER_PINNED, 0);
    EXPECT_EQ(store_.del(bytes(50)), -1);
    EXPECT_EQ(first->flags & BUFFER_PINNED, BUFFER_PINNED);
}

TEST_F(HashBigPair, InsertWantsAnEmptyPage) {
    _bufhead* const page = put(bytes(50), bytes(120));
    const DBT key = text_of("k");
    EXPECT_EQ(__big_insert(table_, page, &key, &key), -1);
    EXPECT_EQ(errno, EINVAL);
}

TEST_F(HashBigPair, ReturnMovesTheScanBehindThePair) {
    _bufhead* const page = put(bytes(60), "v");
    table_->scan_bucket = 0;
    DBT key;
    DBT value;
    EXPECT_EQ(__big_keydata(table_, page, &key, &value, true), 0);
    EXPECT_EQ(string_of(key), bytes(60));
    EXPECT_EQ(string_of(value), "v");
    EXPECT_EQ(table_->scan_bucket, 1);  // behind the pair comes an empty page
    EXPECT_EQ(table_->scan_index, 1);
    EXPECT_EQ(table_->scan_page, nullptr);
}

TEST_F(HashBigPair, ReturnWithoutMovingTheScanLeavesIt) {
    _bufhead* const page = put(bytes(60), "v");
    table_->scan_bucket = 0;
    table_->scan_index = 3;
    DBT value;
    EXPECT_EQ(__big_return(table_, page, 1, &value, false), 0);
    EXPECT_EQ(string_of(value), "v");
    EXPECT_EQ(table_->scan_bucket, 0);
    EXPECT_EQ(table_->scan_index, 3);
}

// All lengths around the borders of pages: pieces that fill a page, miss it by one byte, or need one byte more.
class HashBigPairLengths : public testing::TestWithParam<std::uint32_t> {};

TEST_P(HashBigPairLengths, AreReadBackFromMemoryAndFromTheFile) {
    const std::uint32_t page_size = GetParam();
    const std::uint32_t part = page_size - 14;
    const TemporaryDirectory directory(TemporaryDirectory::Enter::yes);
    std::vector<std::size_t> lengths;
    for (const std::uint32_t pages : {0U, 1U, 2U, 3U}) {
        for (std::uint32_t bytes = pages * part >= 15 ? pages * part - 15 : 0; bytes <= pages * part + 15; ++bytes) {
            lengths.push_back(bytes);
        }
    }
    const auto text = [](std::size_t count, std::size_t salt) {
        std::string result(count, '\0');
        for (std::size_t i = 0; i < count; ++i) result[i] = static_cast<char>('!' + (i * 7 + salt) % 90);
        return result;
    };
    const HASHINFO info{page_size, 0, 0, 0, nullptr, 0};
    for (const std::size_t key_bytes : lengths) {
        SCOPED_TRACE(key_bytes);
        Store store = Store::careful("store", create_new(), info);
        for (const std::size_t value_bytes : lengths) {
            SCOPED_TRACE(value_bytes);
            ASSERT_EQ(store.put(text(key_bytes, 1), text(value_bytes, 2)), 0);
            ASSERT_EQ(store.get(text(key_bytes, 1)), text(value_bytes, 2));
            ASSERT_EQ(store.get(text(key_bytes + 1, 1)), std::nullopt);
        }
        ASSERT_EQ(store.put(text(key_bytes + 1, 5), text(key_bytes, 6)), 0);
        ASSERT_EQ(store.close(), 0);
        expect_faultless(report_on_file("store"));
        Store again = Store::careful("store", read_write());
        const auto pairs = again.scan();
        ASSERT_EQ(pairs.size(), 2U);
        EXPECT_EQ(pairs.at(text(key_bytes, 1)), text(lengths.back(), 2));
        EXPECT_EQ(again.del(text(key_bytes, 1)), 0);
        EXPECT_EQ(again.get(text(key_bytes + 1, 5)), text(key_bytes, 6));
    }
}

INSTANTIATE_TEST_SUITE_P(PageSizes, HashBigPairLengths, testing::Values(64, 128),
                         [](const auto& tested) { return "page_" + std::to_string(tested.param); });

TEST(HashBigPairLimits, ValueLargerThanThePoolIsReadWhole) {
    const TemporaryDirectory directory(TemporaryDirectory::Enter::yes);
    std::string large(1 << 20, '\0');
    for (std::size_t i = 0; i < large.size(); ++i) large[i] = static_cast<char>(i * 2654435761U >> 13);
    {
        Store store = Store::in_file("store", create_new(), HASHINFO{128, 0, 0, 1, nullptr, 0});
        ASSERT_EQ(store.put("large", large), 0);
        ASSERT_EQ(store.put(large, "by a large key"), 0);
        ASSERT_EQ(store.close(), 0);
    }
    expect_faultless(report_on_file("store"));
    Store store = Store::in_file("store", read_only(), HASHINFO{0, 0, 0, 1, nullptr, 0});
    std::map<std::string, std::string> pairs = store.scan();  // which pins nothing
    EXPECT_EQ(pairs.size(), 2U);
    EXPECT_EQ(pairs["large"], large);
    EXPECT_EQ(pairs[large], "by a large key");
    EXPECT_EQ(store.get("large"), large);
    EXPECT_EQ(store.get(large), "by a large key");
}

TEST(HashBigPairLimits, InsertThatRunsOutOfPagesLeavesTheStoreAsItWas) {
    Store store = Store::in_memory(HASHINFO{64, 0, 0, 1U << 30, nullptr, 0});
    ASSERT_EQ(store.put("small", "value"), 0);
    const std::string large(1 << 20, 'x');
    testing::internal::CaptureStderr();
    errno = 0;
    EXPECT_EQ(store.put("large", large), -1);
    EXPECT_EQ(errno, ENOSPC);
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(store.get("large"), std::nullopt);
    EXPECT_EQ(store.get("small"), "value");
    EXPECT_EQ(store.put("large", large.substr(0, 700000)), 0);
    EXPECT_EQ(store.get("large"), large.substr(0, 700000));
    expect_faultless(report_on(store));
}

}  // namespace
