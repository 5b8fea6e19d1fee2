// Growth and splitting, and how pairs come to their pages.
#include "containers/hash_store_access.h"

#include <cerrno>
#include <utility>

namespace {

using namespace orvix::test;

std::uint32_t bucket_0(const void*, std::size_t) { return 0; }

// The hash is the key itself, a number in decimal digits; other keys have 0.
std::uint32_t number_hash(const void* bytes, std::size_t length) {
    std::uint32_t number = 0;
    const auto* const text = static_cast<const char*>(bytes);
    for (std::size_t i = 0; i < length && text[i] >= '0' && text[i] <= '9'; ++i) {
        number = number * 10 + static_cast<std::uint32_t>(text[i] - '0');
    }
    return number;
}

class HashTable : public testing::Test {
protected:
    explicit HashTable(const HASHINFO& info = {64, 1000000, 0, 1U << 28, number_hash, 0})
        : store_(Store::in_memory(info)), table_(store_.table()) {}

    _bufhead* bucket(std::uint32_t number) { return __get_buf(table_, number, nullptr, false); }
    Words words(const _bufhead* page) { return words_of(page, words_of(page, 1)[0] + 3); }
    // The first pages of the chain of bucket 0.
    Words first_words(std::size_t page) {
        const _bufhead* buffer = bucket(0);
        for (; page != 0; --page) buffer = buffer->ovfl;
        return words(buffer);
    }
    void add(std::string_view key, std::string_view value) {
        const DBT k = text_of(key);
        const DBT v = text_of(value);
        ASSERT_EQ(__addel(table_, bucket(0), &k, &v), 0);
    }

    Store store_;
    htab* table_;
};

class HashTableOfOneBucket : public HashTable {
protected:
    HashTableOfOneBucket() : HashTable({64, 1000000, 0, 1U << 28, bucket_0, 0}) {}
};

TEST_F(HashTable, BucketOfAHashBeyondTheTopIsTakenByTheLowMask) {
    ASSERT_EQ(__expand_table(table_), 0);  // buckets 0 to 2
    EXPECT_EQ(__call_hash(table_, "2", 1), 2U);
    EXPECT_EQ(__call_hash(table_, "3", 1), 1U);
    EXPECT_EQ(__call_hash(table_, "6", 1), 2U);
    EXPECT_EQ(__call_hash(table_, "7", 1), 1U);
}

TEST_F(HashTable, GrowsByOneBucketAtATime) {
    EXPECT_EQ(__expand_table(table_), 0);
    EXPECT_EQ(table_->top_bucket, 2U);
    EXPECT_EQ(table_->mask_low, 1U);
    EXPECT_EQ(table_->mask_high, 3U);
    EXPECT_EQ(__expand_table(table_), 0);
    EXPECT_EQ(table_->top_bucket, 3U);
    EXPECT_EQ(table_->mask_high, 3U);
    EXPECT_EQ(__expand_table(table_), 0);
    EXPECT_EQ(table_->top_bucket, 4U);
    EXPECT_EQ(table_->mask_low, 3U);
    EXPECT_EQ(table_->mask_high, 7U);
}

TEST_F(HashTable, CrossingAPowerOfTwoRaisesTheSplitPointAndCarriesTheCountsForward) {
    __add_ovflpage(table_, bucket(0));
    __add_ovflpage(table_, bucket(1));
    ASSERT_EQ(table_->spare_counts[1], 3U);
    ASSERT_EQ(table_->spare_counts[2], 2U);  // as it was made
    EXPECT_EQ(__expand_table(table_), 0);
    EXPECT_EQ(table_->spare_point, 2U);
    EXPECT_EQ(table_->spare_counts[2], 3U);
    EXPECT_EQ(__expand_table(table_), 0);
    EXPECT_EQ(table_->spare_point, 2U);
    EXPECT_EQ(__expand_table(table_), 0);
    EXPECT_EQ(table_->spare_point, 3U);
    EXPECT_EQ(table_->spare_counts[3], 3U);
}

TEST_F(HashTable, DirectorySizeIsThatInBytesAfterTheFirstGrowth) {
    Store store = Store::in_memory(HASHINFO{64, 1, 65536, 1U << 20, number_hash, 0});
    htab* const table = store.table();
    ASSERT_EQ(table->top_bucket, 65535U);
    ASSERT_EQ(table->dir_size, 256U);
    ASSERT_EQ(table->seg_count, 256);
    EXPECT_EQ(__expand_table(table), 0);
    EXPECT_EQ(table->dir_size, 4096U);
    EXPECT_EQ(table->seg_count, 257);
    EXPECT_EQ(table->extra_segs, 1);
    EXPECT_EQ(__expand_table(table), 0);
    EXPECT_EQ(table->dir_size, 4096U);
    EXPECT_EQ(table->seg_count, 257);
    EXPECT_EQ(store.put("65536", "value"), 0);
    EXPECT_EQ(store.get("65536"), "value");
}

TEST_F(HashTable, GrowthBeyondTheLastPlaceOfAFileGivesEfbigAndChangesNothing) {
    // 4,194,304 buckets of 1024 bytes fill a file.
    HashHeader& header = *table_;
    const HashHeader before = header;
    header.page_size = 1024;
    header.page_shift = 10;
    header.top_bucket = header.mask_low = 4194302;
    header.spare_point = 22;
    const HashHeader full = header;
    errno = 0;
    EXPECT_EQ(__expand_table(table_), -1);
    EXPECT_EQ(errno, EFBIG);
    EXPECT_EQ(std::memcmp(&full, &header, sizeof full), 0);
    header = before;
}

TEST_F(HashTable, PutGrowsAboveTheFillFactor) {
    Store store = Store::in_memory(HASHINFO{1024, 2, 0, 0, number_hash, 0});
    for (int i = 0; i < 5; ++i) store.put(std::to_string(i), "");
    EXPECT_EQ(store.table()->top_bucket, 1U);  // 5 / 2 is not above 2
    store.put("5", "");
    EXPECT_EQ(store.table()->top_bucket, 2U);
    store.put("6", "");
    EXPECT_EQ(store.table()->top_bucket, 2U);
}

TEST_F(HashTable, CountBelowZeroAsksForNoGrowth) {
    table_->key_count = -100;
    table_->fill_factor = 1;
    store_.put("1", "");
    EXPECT_EQ(table_->key_count, -99);
    EXPECT_EQ(table_->top_bucket, 1U);
}

TEST_F(HashTable, OverflowPageGrowsTheTableWhateverTheFillFactor) {
    store_.put("2", std::string(30, 'a'));
    store_.put("4", std::string(30, 'b'));  // does not fit
    EXPECT_EQ(table_->top_bucket, 2U);
    EXPECT_EQ(store_.get("2"), std::string(30, 'a'));
    EXPECT_EQ(store_.get("4"), std::string(30, 'b'));
    expect_faultless(report_on(store_));
}

TEST_F(HashTable, SplitMovesThePairsOfTheNewBucketAndClosesTheGaps) {
    for (const char* const key : {"0", "2", "4", "6"}) store_.put(key, key);
    EXPECT_EQ(__expand_table(table_), 0);  // 2 and 6 belong to bucket 2
    EXPECT_EQ(words(bucket(0)), (Words{4, 63, 62, 61, 60, 46, 60}));
    EXPECT_EQ(std::string(bucket(0)->page + 60, 4), "4400");
    EXPECT_EQ(words(bucket(2)), (Words{4, 63, 62, 61, 60, 46, 60}));
    EXPECT_EQ(std::string(bucket(2)->page + 60, 4), "6622");
}

TEST_F(HashTable, SplitMarksBothPagesAndLeavesNonePinned) {
    store_.put("0", "");
    bucket(0)->flags = BUFFER_BUCKET;
    EXPECT_EQ(__expand_table(table_), 0);
    EXPECT_EQ(bucket(0)->flags, BUFFER_BUCKET | BUFFER_DIRTY);
    EXPECT_EQ(bucket(2)->flags, BUFFER_BUCKET | BUFFER_DIRTY);
}

TEST_F(HashTable, SplitOfAChainFreesItsOverflowPages) {
    // Pages of three pairs each, all in bucket 0 until there is a bucket 64: 0, 64, 128 | 192, 256, 320.
    for (const char* const key : {"0", "64", "128", "192", "256", "320"}) add(key, std::string(8, 'v'));
    EXPECT_EQ(words(bucket(0)->ovfl).front(), 6U);
    while (table_->top_bucket < 64) ASSERT_EQ(__expand_table(table_), 0);
    for (const char* const key : {"0", "64", "128", "192", "256", "320"}) {
        EXPECT_EQ(store_.get(key), std::string(8, 'v')) << key;
    }
    EXPECT_EQ(words(bucket(0)).front(), 6U);
    EXPECT_EQ(words(bucket(64)).front(), 6U);
    const gslstore::Report report = report_on(store_);
    expect_faultless(report);
    EXPECT_EQ(report.used_overflow_pages, 0U);
}

TEST_F(HashTable, SplitHandsBigPairsOverAndCarriesThoseBehindThemAlong) {
    orvix::gsl::hash_keep_every_pair(store_.db(), true);
    add("0", std::string(100, 'a'));
    add("64", std::string(100, 'b'));
    add("128", std::string(20, 'c'));
    add("192", std::string(20, 'd'));
    add("256", std::string(100, 'e'));
    add("320", std::string(20, 'f'));
    while (table_->top_bucket < 256) ASSERT_EQ(__expand_table(table_), 0);
    EXPECT_EQ(store_.get("0"), std::string(100, 'a'));
    EXPECT_EQ(store_.get("64"), std::string(100, 'b'));
    EXPECT_EQ(store_.get("128"), std::string(20, 'c'));
    EXPECT_EQ(store_.get("192"), std::string(20, 'd'));
    EXPECT_EQ(store_.get("256"), std::string(100, 'e'));
    EXPECT_EQ(store_.get("320"), std::string(20, 'f'));
    EXPECT_EQ(store_.scan().size(), 6U);
    expect_faultless(report_on(store_));
}

// Odd numbers leave bucket 0 when there is a bucket 512.
std::uint32_t late_hash(const void* bytes, std::size_t length) { return number_hash(bytes, length) % 2 << 9; }

class HashTableOfOneChain : public HashTable {
protected:
    HashTableOfOneChain() : HashTable({64, 1000000, 0, 1U << 28, late_hash, 0}) {
        orvix::gsl::hash_keep_every_pair(store_.db(), true);
        for (int i = 0; i < 60; ++i) add(std::to_string(i), std::string(static_cast<std::size_t>(i % 30), 'v'));
        for (int i = 60; i < 64; ++i) add(std::to_string(i), std::string(200, 'x'));
        for (int i = 64; i < 100; ++i) add(std::to_string(i), "v");
        while (table_->top_bucket < 511) EXPECT_EQ(__expand_table(table_), 0);
    }

    // A page of the chain of bucket 0.
    _bufhead* chain_page(std::uint32_t number) {
        _bufhead* page = bucket(0);
        for (; number != 0; --number) {
            const Words found = words(page);
            page = __get_buf(table_, found[found[0] - 1], page, false);
        }
        return page;
    }
    std::uint32_t chain_pages() {
        std::uint32_t count = 0;
        for (const _bufhead* page = bucket(0); page != nullptr; page = page->ovfl) ++count;
        return count;
    }
};

TEST_F(HashTableOfOneChain, SplitThatFailsLeavesEverythingAsItWas) {
    const auto pairs = store_.scan();
    ASSERT_EQ(pairs.size(), 100U);
    const std::uint32_t pages = chain_pages();
    ASSERT_GT(pages, 30U);
    for (std::uint32_t damaged = 1; damaged + 1 < pages; ++damaged) {
        SCOPED_TRACE(damaged);
        _bufhead* page = chain_page(damaged);
        const std::size_t link_at = 2 * std::size_t{words(page).front() - 1};
        std::uint16_t link = 0;
        std::memcpy(&link, page->page + link_at, sizeof link);
        const auto to_itself = static_cast<std::uint16_t>(page->addr);
        std::memcpy(page->page + link_at, &to_itself, sizeof to_itself);
        _bufhead* const behind = std::exchange(page->ovfl, page);
        errno = 0;
        EXPECT_EQ(__expand_table(table_), -1);
        EXPECT_EQ(errno, EINVAL);
        EXPECT_EQ(table_->top_bucket, 511U);
        page = chain_page(damaged);
        std::memcpy(page->page + link_at, &link, sizeof link);
        page->ovfl = behind;
        EXPECT_EQ(store_.scan(), pairs);
        expect_faultless(report_on(store_));
    }
    EXPECT_EQ(__expand_table(table_), 0);
    EXPECT_EQ(store_.get("61"), std::string(200, 'x'));
    EXPECT_EQ(store_.scan(), pairs);
    expect_faultless(report_on(store_));
}

// What __addel and __delpair do to pages.

TEST_F(HashTableOfOneBucket, AddedPairIsNotLookedFor) {
    add("key", "1");
    add("key", "2");
    EXPECT_EQ(table_->key_count, 2);
    EXPECT_EQ(first_words(0), (Words{4, 61, 60, 57, 56, 42, 56}));
}

TEST_F(HashTableOfOneBucket, PairThatDoesNotFitGoesToAnOverflowPage) {
    add("a", std::string(30, '1'));
    add("b", std::string(30, '2'));
    const std::uint32_t address = bucket(0)->ovfl->addr;
    EXPECT_EQ(first_words(0), (Words{4, 63, 33, address, MARK_OVERFLOW, 19, 33}));
    EXPECT_EQ(first_words(1), (Words{2, 63, 33, 23, 33}));
}

TEST_F(HashTableOfOneBucket, PairIsSqueezedInFrontOfALinkAndNeitherMarksNorCounts) {
    add("a", std::string(30, '1'));
    add("b", std::string(30, '2'));
    bucket(0)->flags = BUFFER_BUCKET;
    const std::uint32_t address = bucket(0)->ovfl->addr;
    add("c", "3");
    EXPECT_EQ(first_words(0), (Words{6, 63, 33, 32, 31, address, MARK_OVERFLOW, 13, 31}));
    EXPECT_EQ(bucket(0)->flags & BUFFER_DIRTY, 0);
    EXPECT_EQ(table_->key_count, 2);
    EXPECT_EQ(store_.get("c"), "3");
}

TEST_F(HashTableOfOneBucket, SqueezedPairLeavesAByteFree) {
    add("a", std::string(30, '1'));
    add("b", std::string(30, '2'));
    ASSERT_EQ(first_words(0)[5], 19U);
    add("c", std::string(14, '3'));  // 15 and 4 are not less than 19
    EXPECT_EQ(first_words(0).front(), 4U);
    EXPECT_EQ(first_words(1).front(), 4U);
    add("d", std::string(13, '4'));
    EXPECT_EQ(first_words(0).front(), 6U);
    EXPECT_EQ(first_words(0)[7], 1U);
}

TEST_F(HashTableOfOneBucket, NothingIsSqueezedOnThePagesOfABigPair) {
    add("k", std::string(60, 'v'));
    const std::string key(60, 'k');
    add(key, std::string(40, 'v'));  // leaves room behind the end of the key
    add("small", "1");
    add("other", "2");
    for (const auto& [name, value] : std::map<std::string, std::string>{
             {"k", std::string(60, 'v')}, {key, std::string(40, 'v')}, {"small", "1"}, {"other", "2"}}) {
        EXPECT_EQ(store_.get(name), value) << name;
    }
    expect_sound(report_on(store_));
}

TEST_F(HashTableOfOneBucket, ReplacedPairGoesWhereTheOldOneStoodAndIsNotCountedIfSqueezed) {
    store_.put("a", std::string(20, '1'));
    store_.put("b", std::string(20, '2'));
    store_.put("c", std::string(20, '3'));
    ASSERT_EQ(first_words(0).front(), 6U);  // a, b and the link
    EXPECT_EQ(store_.put("b", "new"), 0);
    EXPECT_EQ(first_words(0).front(), 6U);
    EXPECT_EQ(store_.get("b"), "new");
    EXPECT_EQ(table_->key_count, 2);  // it was squeezed
}

TEST_F(HashTableOfOneBucket, AbsentKeyGoesToTheLastPage) {
    store_.put("a", std::string(20, '1'));
    store_.put("b", std::string(18, '2'));
    store_.put("c", std::string(20, '3'));
    ASSERT_EQ(store_.del("b"), 0);  // the first page has room in front of its link
    store_.put("d", "4");
    EXPECT_EQ(first_words(0).front(), 4U);
    EXPECT_EQ(first_words(1).front(), 4U);
    EXPECT_EQ(table_->key_count, 3);
}

TEST_F(HashTableOfOneBucket, EmptiedOverflowPageStaysInItsChain) {
    store_.put("a", std::string(30, '1'));
    store_.put("b", std::string(30, '2'));
    EXPECT_EQ(store_.del("b"), 0);
    EXPECT_EQ(first_words(0).front(), 4U);
    EXPECT_EQ(first_words(1), (Words{0, 58, 64}));
    EXPECT_EQ(table_->key_count, 1);
}

TEST_F(HashTableOfOneBucket, AllPairsOfAFullPageAreFound) {
    for (char key = 'a'; key <= 'j'; ++key) store_.put(std::string_view(&key, 1), "");
    EXPECT_EQ(words(bucket(0)).front(), 20U);
    for (char key = 'a'; key <= 'j'; ++key) EXPECT_EQ(store_.get(std::string_view(&key, 1)), "") << key;
    EXPECT_EQ(store_.get("k"), std::nullopt);
}

TEST_F(HashTableOfOneBucket, RemovingWhatIsNoPairIsRefused) {
    store_.put("a", "1");
    errno = 0;
    EXPECT_EQ(__delpair(table_, bucket(0), 3), -1);
    EXPECT_EQ(errno, EINVAL);
    __add_ovflpage(table_, bucket(0));
    EXPECT_EQ(__delpair(table_, bucket(0), 3), -1);
    for (const std::int32_t index : {-1, 0, 2}) EXPECT_EQ(__delpair(table_, bucket(0), index), -1) << index;
    EXPECT_EQ(table_->key_count, 1);
    EXPECT_EQ(store_.get("a"), "1");
}

TEST(HashTableLimits, StoreThatRunsOutOfPagesKeepsAllItTook) {
    for (const bool careful : {false, true}) {
        SCOPED_TRACE(careful);
        Store store = Store::in_memory(HASHINFO{64, 1000000, 0, 1U << 28, bucket_0, 0});
        orvix::gsl::hash_keep_every_pair(store.db(), careful);
        std::map<std::string, std::string> pairs;
        testing::internal::CaptureStderr();
        int result = 0;
        for (int i = 0; result == 0; ++i) {
            const std::string key = std::to_string(i) + std::string(200, 'k');
            std::string value(1000, static_cast<char>('a' + i % 26));
            errno = 0;
            result = store.put(key, value);
            if (result == 0) pairs[key] = value;
        }
        EXPECT_EQ(errno, ENOSPC);
        EXPECT_NE(testing::internal::GetCapturedStderr(), "");
        EXPECT_GT(pairs.size(), 500U);
        for (const auto& [key, value] : pairs) ASSERT_EQ(store.get(key), value);
        expect_sound(report_on(store));
    }
}

TEST(HashTableLimits, StoreThatFillsItsFileGivesEfbigAndCanBeReadOn) {
    // Pages of 65536 bytes: each pair takes one, and 65,536 of them fill a file.
    Store store = Store::in_memory(HASHINFO{65536, 0, 40000, 1U << 24, nullptr, 0});
    (void)store;
    const TemporaryDirectory directory(TemporaryDirectory::Enter::yes);
    Store large = Store::careful("large", create_new(), HASHINFO{65536, 1, 40000, 1U << 22, nullptr, 0});
    EXPECT_FALSE(large.is_open());  // 65,536 buckets and the header are one page too many
    EXPECT_EQ(errno, EFBIG);
}

}  // namespace
