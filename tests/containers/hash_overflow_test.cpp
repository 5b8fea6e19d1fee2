// Overflow pages: their numbers, their bitmaps, and what happens when there are no more.
#include "containers/hash_store_access.h"

#include <cerrno>

namespace {

using namespace orvix::test;

constexpr const char* exhausted = "HASH: Out of overflow pages.  Increase page size\n";

class HashOverflow : public testing::Test {
protected:
    explicit HashOverflow(std::uint32_t page_size = 1024)
        : store_(Store::in_memory(HASHINFO{page_size, 0, 0, 1U << 30, nullptr, 0})), table_(store_.table()) {
        tail_ = __get_buf(table_, 0, nullptr, false);
    }

    // Adds a page to the chain of bucket 0 and gives its address, 0 on failure.
    std::uint32_t add() {
        _bufhead* const added = __add_ovflpage(table_, tail_);
        if (added == nullptr) return 0;
        tail_ = added;
        return added->addr;
    }
    void add(int pages) {
        for (int i = 0; i < pages; ++i) ASSERT_NE(add(), 0U) << i;
    }
    bool is_marked(std::uint32_t number) const {
        const std::uint32_t bits = table_->page_size * 8;
        return (table_->bitmap_pages[number / bits][number % bits / 32] >> number % 32 & 1) != 0;
    }
    static std::uint32_t address(std::uint32_t split, std::uint32_t number) { return (split << 11) + number; }

    Store store_;
    htab* table_;
    _bufhead* tail_;
};

class HashOverflowOf64 : public HashOverflow {
protected:
    HashOverflowOf64() : HashOverflow(64) {}
};

TEST_F(HashOverflow, LinkStandsBehindThePairsInItsReserve) {
    store_.put("key", "value");
    _bufhead* const first = __get_buf(table_, __call_hash(table_, "key", 3), nullptr, false);
    ASSERT_EQ(words_of(first, 5), (Words{2, 1021, 1016, 1006, 1016}));
    _bufhead* const added = __add_ovflpage(table_, first);
    EXPECT_EQ(words_of(first, 7), (Words{4, 1021, 1016, added->addr, MARK_OVERFLOW, 1002, 1016}));
    EXPECT_EQ(first->ovfl, added);
    EXPECT_EQ(first->flags & BUFFER_DIRTY, BUFFER_DIRTY);
    EXPECT_EQ(added->flags, BUFFER_DIRTY);
    EXPECT_EQ(words_of(added, 3), (Words{0, 1018, 1024}));
}

TEST_F(HashOverflow, FirstPagesAreThoseMadeWithTheTable) {
    EXPECT_EQ(add(), address(1, 2));
    EXPECT_EQ(table_->spare_counts[1], 2U);
    EXPECT_EQ(table_->free_hint, 1U);
    EXPECT_EQ(add(), address(1, 3));
    EXPECT_EQ(table_->spare_counts[1], 3U);
    EXPECT_EQ(table_->free_hint, 2U);
    EXPECT_TRUE(is_marked(2));
}

TEST_F(HashOverflow, FirstOneSettlesTheFillFactorAtHalfTheWordsAndNotBelow4) {
    EXPECT_EQ(table_->fill_factor, 65536U);
    add();
    EXPECT_EQ(table_->fill_factor, 4U);

    Store store = Store::in_memory(HASHINFO{1024, 0, 0, 0, nullptr, 0});
    KeysOfBucket keys(store, 0);
    for (int i = 0; i < 7; ++i) store.put(keys.next(8), "");
    __add_ovflpage(store.table(), __get_buf(store.table(), 0, nullptr, false));
    EXPECT_EQ(store.table()->fill_factor, 7U);
}

TEST_F(HashOverflow, FillFactorThatWasAskedForStays) {
    Store store = Store::in_memory(HASHINFO{1024, 17, 0, 0, nullptr, 0});
    __add_ovflpage(store.table(), __get_buf(store.table(), 0, nullptr, false));
    EXPECT_EQ(store.table()->fill_factor, 17U);
}

TEST_F(HashOverflow, LowestFreedPageIsUsedNext) {
    add(10);
    _bufhead* before = __get_buf(table_, 0, nullptr, false);
    std::vector<_bufhead*> pages;
    for (int i = 0; i < 10; ++i) pages.push_back(before = before->ovfl);
    __free_ovflpage(table_, pages[9]);
    __free_ovflpage(table_, pages[4]);
    __free_ovflpage(table_, pages[7]);
    EXPECT_EQ(table_->free_hint, 5U);
    EXPECT_FALSE(is_marked(5));
    tail_ = pages[3];
    EXPECT_EQ(words_of(tail_, 3)[1], address(1, 6));
    // What follows the links is of no matter here.
    _bufhead* const other = __get_buf(table_, 1, nullptr, false);
    tail_ = other;
    EXPECT_EQ(add(), address(1, 6));
    EXPECT_EQ(add(), address(1, 9));
    EXPECT_EQ(add(), address(1, 11));
    EXPECT_EQ(add(), address(1, 12));
    EXPECT_TRUE(is_marked(5));
}

TEST_F(HashOverflow, The2048thPageOfASplitPointMovesToTheNextOne) {
    add(2046);  // 2 to 2047; number 1 is the bitmap
    EXPECT_EQ(tail_->addr, address(1, 2047));
    EXPECT_EQ(table_->spare_point, 1U);
    EXPECT_EQ(add(), address(2, 1));
    EXPECT_EQ(table_->spare_point, 2U);
    EXPECT_EQ(table_->spare_counts[1], 2047U);
    EXPECT_EQ(table_->spare_counts[2], 2048U);
    EXPECT_EQ(add(), address(2, 2));
}

TEST_F(HashOverflow, FreedNumber2047IsUsedAgain) {
    add(2046);
    ASSERT_EQ(tail_->addr, address(1, 2047));
    __free_ovflpage(table_, tail_);
    tail_ = __get_buf(table_, 1, nullptr, false);
    EXPECT_EQ(add(), address(1, 2047));
}

TEST_F(HashOverflowOf64, BehindAFullBitmapComeTheNextBitmapAndThePage) {
    add(511);  // with the bitmap 512 pages, as many as a page of 64 bytes has bits
    EXPECT_EQ(table_->bitmap_count, 1);
    EXPECT_EQ(table_->spare_counts[1], 512U);
    EXPECT_EQ(add(), address(1, 514));
    EXPECT_EQ(table_->bitmap_count, 2);
    EXPECT_EQ(table_->bitmap_addrs[1], address(1, 513));
    EXPECT_EQ(table_->spare_counts[1], 514U);
    EXPECT_EQ(table_->bitmap_pages[1][0], 0xffffffffU);
    EXPECT_EQ(add(), address(1, 515));
}

TEST_F(HashOverflowOf64, NumberBehindABitmapWithNumber2047Is1) {
    ASSERT_EQ(__expand_table(table_), 0);
    ASSERT_EQ(table_->spare_point, 2U);
    ASSERT_EQ(table_->spare_counts[2], 2U);
    int added = 0;
    while (table_->spare_counts[2] < 2048) {
        ASSERT_NE(add(), 0U);
        ++added;
    }
    ASSERT_EQ(tail_->addr, address(2, 2046));
    ASSERT_EQ(table_->bitmap_count, 4);
    EXPECT_EQ(add(), address(3, 1));
    EXPECT_EQ(table_->bitmap_addrs[4], address(2, 2047));
    EXPECT_EQ(table_->spare_point, 3U);
    EXPECT_EQ(table_->spare_counts[2], 2049U);
    EXPECT_EQ(table_->spare_counts[3], 2050U);
    EXPECT_EQ(add(), address(3, 2));
    expect_faultless(report_on(store_));
}

TEST_F(HashOverflowOf64, AddressIsFoundBackFromTheBitOfAFreedPage) {
    add(3000);
    std::vector<std::uint32_t> freed;
    std::vector<_bufhead*> pages;
    for (_bufhead* page = __get_buf(table_, 0, nullptr, false)->ovfl; page != nullptr; page = page->ovfl) {
        pages.push_back(page);
    }
    for (std::size_t i = 0; i < pages.size(); i += 137) {
        freed.push_back(pages[i]->addr);
        __free_ovflpage(table_, pages[i]);
    }
    tail_ = __get_buf(table_, 1, nullptr, false);
    for (const std::uint32_t expected : freed) EXPECT_EQ(add(), expected);
}

TEST_F(HashOverflowOf64, WithoutAnyMoreGivesNullEnospcAndTheMessage) {
    constexpr int bitmaps = 32;
    constexpr int pages_of_bitmap = 512;
    add(bitmaps * (pages_of_bitmap - 1));
    EXPECT_EQ(table_->bitmap_count, bitmaps);
    const HashHeader before = *table_;
    for (int time = 0; time < 2; ++time) {
        testing::internal::CaptureStderr();
        errno = 0;
        EXPECT_EQ(add(), 0U);
        EXPECT_EQ(errno, ENOSPC);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), exhausted);
    }
    EXPECT_EQ(table_->spare_counts[table_->spare_point], before.spare_counts[before.spare_point]);
    EXPECT_EQ(table_->spare_point, before.spare_point);
    expect_faultless(report_on(store_));
}

TEST_F(HashOverflow, BehindTheLastPlaceOfAFileGivesEfbig) {
    // 4,294,967,296 bytes are 4,194,304 pages of 1024: split point 22 begins behind them.
    table_->spare_point = 22;
    table_->spare_counts[21] = table_->spare_counts[22] = 2;
    table_->bitmap_pages[0][0] = 0xffffffff;
    errno = 0;
    EXPECT_EQ(add(), 0U);
    EXPECT_EQ(errno, EFBIG);
    EXPECT_EQ(table_->spare_counts[22], 2U);
}

TEST_F(HashOverflow, FreeingAPageWithoutABitmapLeavesItAllocated) {
    add(1);
    std::uint32_t* const bitmap = std::exchange(table_->bitmap_pages[0], nullptr);
    table_->bitmap_count = 0;
    __free_ovflpage(table_, tail_);
    EXPECT_EQ(tail_->addr, 0U);
    table_->bitmap_pages[0] = bitmap;
    table_->bitmap_count = 1;
    EXPECT_TRUE(is_marked(1));
}

TEST_F(HashOverflow, NewBitmapHasItsClearBitsAndMarksItself) {
    EXPECT_EQ(__ibitmap(table_, address(1, 5), 35, 3), 0);
    EXPECT_EQ(table_->bitmap_count, 2);
    EXPECT_EQ(table_->bitmap_addrs[3], address(1, 5));
    EXPECT_EQ(table_->bitmap_pages[3][0], 1U);
    EXPECT_EQ(table_->bitmap_pages[3][1], 0xfffffff8U);
    EXPECT_EQ(table_->bitmap_pages[3][2], 0xffffffffU);
    EXPECT_EQ(table_->bitmap_pages[3][255], 0xffffffffU);
}

TEST_F(HashOverflow, BitmapThatNoTableHasIsRefused) {
    EXPECT_EQ(__ibitmap(table_, address(1, 5), 35, 32), 1);
    EXPECT_EQ(__ibitmap(table_, address(1, 5), 35, -1), 1);
    EXPECT_EQ(__ibitmap(table_, address(1, 5), 0, 3), 1);
    EXPECT_EQ(__ibitmap(table_, address(1, 5), 8193, 3), 1);
    EXPECT_EQ(table_->bitmap_count, 1);
}

}  // namespace
