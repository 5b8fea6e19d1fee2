// The pool of buffers, and pages on their way to the file and back.
#include "containers/hash_store_access.h"
#include "support/broken_directory.h"
#include "support/host.h"
#include "support/permissions.h"

#include <orvix/core/descriptors.h>
#include <orvix/core/files.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

namespace {

using namespace orvix::test;

// A store with many buckets and a pool of six pages.
class HashPool : public testing::Test {
protected:
    static HASHINFO info(std::int32_t byte_order = 0) {
        HASHINFO info{};
        info.page_size = 64;
        info.cache_bytes = 1;
        info.expected_count = 64;
        info.fill_factor = 1;
        info.byte_order = byte_order;
        return info;
    }
    std::string bytes_of_page(std::uint64_t page) const { return directory_.read("store").substr(page * 64, 64); }

    _bufhead* bucket(std::uint32_t number) { return __get_buf(table_, number, nullptr, false); }
    void modify(_bufhead* buffer, char first_key_byte) {
        const DBT key{&first_key_byte, 1};
        ASSERT_EQ(__addel(table_, buffer, &key, &key), 0);
    }
    bool is_in_pool(const _bufhead* buffer, std::uint32_t number) const {
        return buffer->addr == number && (buffer->flags & BUFFER_BUCKET) != 0;
    }

    const TemporaryDirectory directory_{TemporaryDirectory::Enter::yes};
    Store store_ = Store::in_file("store", create_new(), info());
    htab* table_ = store_.table();
};

TEST_F(HashPool, GivesTheMostRecentlyUsedPageFirst) {
    _bufhead* const a = bucket(1);
    _bufhead* const b = bucket(2);
    EXPECT_EQ(table_->bufhead.next, b);
    EXPECT_EQ(table_->bufhead.prev, a);
    EXPECT_EQ(bucket(1), a);
    EXPECT_EQ(table_->bufhead.next, a);
    EXPECT_EQ(table_->bufhead.prev, b);
}

TEST_F(HashPool, NewBucketIsAFreshPageOfItsOwn) {
    _bufhead* const buffer = bucket(3);
    EXPECT_EQ(buffer->addr, 3U);
    EXPECT_EQ(buffer->flags, BUFFER_BUCKET);
    EXPECT_EQ(buffer->ovfl, nullptr);
    EXPECT_EQ(words_of(buffer, 3), (Words{0, 58, 64}));
    EXPECT_EQ(std::string(buffer->page + 6, 58), std::string(58, '\xff'));
}

TEST_F(HashPool, NewBuffersComeOutOfTheBudgetUntilItIsSpent) {
    EXPECT_EQ(table_->buffer_budget, 6);
    for (std::uint32_t number = 0; number < 6; ++number) bucket(number);
    EXPECT_EQ(table_->buffer_budget, 0);
    _bufhead* const least_recent = table_->bufhead.prev;
    EXPECT_EQ(bucket(6), least_recent);
    EXPECT_EQ(table_->buffer_budget, 0);
}

TEST_F(HashPool, PinnedTailMakesThePoolGrow) {
    _bufhead* const first = bucket(0);
    for (std::uint32_t number = 1; number < 6; ++number) bucket(number);
    first->flags |= BUFFER_PINNED;
    _bufhead* const seventh = bucket(6);
    EXPECT_TRUE(is_in_pool(first, 0));
    EXPECT_NE(seventh, first);
    first->flags = BUFFER_BUCKET;
    EXPECT_EQ(bucket(7), first);
}

TEST_F(HashPool, ModifiedPageIsWrittenWhenItLeaves) {
    modify(bucket(0), 'a');
    for (std::uint32_t number = 1; number <= 6; ++number) bucket(number);
    EXPECT_EQ(table_->dir[0][0], 2U);
    EXPECT_EQ(bytes_of_page(8), std::string("\2\0\x3f\0\x3e\0\x34\0\x3e\0", 10) + std::string(52, '\xff') + "aa");
    EXPECT_EQ(words_of(bucket(0), 5), (Words{2, 63, 62, 52, 62}));
}

TEST_F(HashPool, UnmodifiedPageOfANewStoreLeavesNothingBehind) {
    bucket(0);
    for (std::uint32_t number = 1; number <= 6; ++number) bucket(number);
    EXPECT_EQ(table_->dir[0][0], 0U);
    EXPECT_EQ(std::filesystem::file_size("store"), 0U);
}

TEST_F(HashPool, SlotRemembersThatThePageIsOnDisk) {
    modify(bucket(0), 'a');
    for (std::uint32_t number = 1; number <= 6; ++number) bucket(number);
    _bufhead* const buffer = bucket(0);
    EXPECT_EQ(table_->dir[0][0], reinterpret_cast<HashSlot>(buffer) | 2);
    for (std::uint32_t number = 1; number <= 6; ++number) bucket(number);
    EXPECT_EQ(table_->dir[0][0], 2U);
}

TEST_F(HashPool, ReclaimedBufferIsBlankAndTheFirstToBeUsedAgain) {
    bucket(1);
    _bufhead* const buffer = __add_ovflpage(table_, bucket(0));
    __reclaim_buf(table_, buffer);
    EXPECT_EQ(buffer->addr, 0U);
    EXPECT_EQ(buffer->flags, 0U);
    EXPECT_EQ(buffer->ovfl, nullptr);
    EXPECT_EQ(table_->bufhead.prev, buffer);
}

TEST_F(HashPool, BucketTakesItsChainAlong) {
    _bufhead* const first = bucket(0);
    _bufhead* const second = __add_ovflpage(table_, first);
    _bufhead* const third = __add_ovflpage(table_, second);
    const std::uint32_t address = second->addr;
    for (std::uint32_t number = 1; number < 4; ++number) bucket(number);
    ASSERT_EQ(table_->buffer_budget, 0);
    bucket(4);  // takes the buffer of the bucket, and the two others are blank
    EXPECT_EQ(second->addr, 0U);
    EXPECT_EQ(third->addr, 0U);
    EXPECT_EQ(words_of(bucket(0), 3), (Words{2, address, MARK_OVERFLOW}));
    EXPECT_EQ(words_of(__get_buf(table_, address, bucket(0), false), 1), (Words{2}));
}

TEST_F(HashPool, OverflowPageIsFoundThroughThePageBeforeIt) {
    _bufhead* const first = bucket(0);
    _bufhead* const second = __add_ovflpage(table_, first);
    EXPECT_EQ(first->ovfl, second);
    EXPECT_EQ(__get_buf(table_, second->addr, first, false), second);
    EXPECT_EQ(table_->bufhead.next, second);
}

TEST_F(HashPool, BucketWithTheNumberOfAnAddressIsNotTakenForTheOverflowPage) {
    _bufhead* const first = bucket(0);
    _bufhead* const second = __add_ovflpage(table_, first);
    const std::uint32_t address = second->addr;
    second->flags = BUFFER_BUCKET;  // as if the buffer had been used again for the bucket of that number
    EXPECT_NE(__get_buf(table_, address, first, false), second);
    __reclaim_buf(table_, second);
}

TEST_F(HashPool, WritingAllLeavesTheMarksSet) {
    _bufhead* const buffer = bucket(0);
    modify(buffer, 'a');
    EXPECT_EQ(__buf_free(table_, false, true), 0);
    EXPECT_EQ(buffer->flags & BUFFER_DIRTY, BUFFER_DIRTY);
    EXPECT_EQ(bytes_of_page(8).substr(62), "aa");
}

TEST_F(HashPool, FreeingAllEmptiesThePoolAndKeepsWhatWasWritten) {
    modify(bucket(0), 'a');
    EXPECT_EQ(__buf_free(table_, true, true), 0);
    EXPECT_EQ(table_->bufhead.next, &table_->bufhead);
    EXPECT_EQ(words_of(bucket(0), 3), (Words{2, 63, 62}));
}

TEST_F(HashPool, FreeingAPoolThatWasNeverSetUpDoesNothing) {
    htab table{};
    EXPECT_EQ(__buf_free(&table, true, true), 0);
}

TEST_F(HashPool, SetUpHoldsAtLeastSixPages) {
    htab table{};
    table.page_size = 1024;
    table.page_shift = 10;
    __buf_init(&table, 1);
    EXPECT_EQ(table.buffer_budget, 6);
    EXPECT_EQ(table.bufhead.next, &table.bufhead);
    EXPECT_EQ(table.bufhead.prev, &table.bufhead);
    __buf_init(&table, 7 * 1024 + 1);
    EXPECT_EQ(table.buffer_budget, 8);
}

// Pages between memory and file.

class HashPages : public HashPool {
protected:
    void write_at(std::uint64_t page, std::string_view bytes) {
        ASSERT_EQ(orvix::core::write_at(table_->fp, bytes.data(), bytes.size(), page * 64),
                  static_cast<std::ptrdiff_t>(bytes.size()));
    }
    int get(bool is_bucket, std::uint32_t address, bool is_bitmap = false) {
        return __get_page(table_, page_, address, is_bucket, true, is_bitmap);
    }
    Words words(std::size_t count) {
        _bufhead buffer{};
        buffer.page = page_;
        return words_of(&buffer, count);
    }

    alignas(4) char page_[64] = {};
};

TEST_F(HashPages, BehindTheEndOfTheFileAreEmpty) {
    EXPECT_EQ(get(true, 5), 0);
    EXPECT_EQ(words(3), (Words{0, 58, 64}));
}

TEST_F(HashPages, OfZerosAreEmpty) {
    write_at(8, std::string(64, '\0'));
    EXPECT_EQ(get(true, 0), 0);
    EXPECT_EQ(words(3), (Words{0, 58, 64}));
}

TEST_F(HashPages, CutShortGiveEinval) {
    write_at(8, std::string(63, '\0'));
    errno = 0;
    EXPECT_EQ(get(true, 0), -1);
    EXPECT_EQ(errno, EINVAL);
    table_->created = 0;
    errno = 0;
    EXPECT_EQ(bucket(0), nullptr);
    EXPECT_EQ(errno, EINVAL);
}

TEST_F(HashPages, ThatWereNeverWrittenAreNotRead) {
    write_at(8, std::string(64, '\x7f'));
    EXPECT_EQ(__get_page(table_, page_, 0, true, false, false), 0);
    EXPECT_EQ(words(3), (Words{0, 58, 64}));
}

TEST_F(HashPages, OutOfOrderGiveEinval) {
    write_at(8, std::string(64, '\x7f'));
    errno = 0;
    EXPECT_EQ(get(true, 0), -1);
    EXPECT_EQ(errno, EINVAL);
}

TEST_F(HashPages, NewOverflowPageIsFreshEvenWhereOldDataLies) {
    // The next overflow page is page 1 of its split point: bucket 63 is at 8 + 63, the bitmap behind it.
    write_at(8 + 63 + 2, std::string("\2\0\x3f\0\x3e\0\x34\0\x3e\0", 10) + std::string(52, '\xff') + "aa");
    _bufhead* const added = __add_ovflpage(table_, bucket(0));
    EXPECT_EQ(added->addr, (6U << 11) + 2);
    EXPECT_EQ(words_of(added, 3), (Words{0, 58, 64}));
}

TEST_F(HashPages, NewBucketIsFreshEvenWhereOldDataLies) {
    // As a program leaves it that could not write the header which tells of the bucket.
    write_at(8 + 64 + table_->spare_counts[6], std::string(64, '\x7f'));
    table_->created = 0;
    ASSERT_EQ(table_->top_bucket, 63U);
    EXPECT_EQ(__expand_table(table_), 0);
    EXPECT_EQ(words_of(bucket(64), 3), (Words{0, 58, 64}));
}

TEST_F(HashPages, ThatTheTableDoesNotHaveGiveEinval) {
    for (const std::uint32_t address : {0U, 1U, (6U << 11) + 2000, (7U << 11) + 1, 0xffffffffU}) {
        errno = 0;
        EXPECT_EQ(__get_buf(table_, address, bucket(0), false), nullptr) << address;
        EXPECT_EQ(errno, EINVAL);
        EXPECT_EQ(get(false, address), -1) << address;
        EXPECT_EQ(__put_page(table_, page_, address, false, false), -1) << address;
    }
    EXPECT_EQ(__get_buf(table_, 256, nullptr, false), nullptr);
    EXPECT_EQ(__get_buf(table_, 0xffffffffU, nullptr, false), nullptr);
}

TEST_F(HashPages, FileThatIsGoneGivesTheErrorOfTheRead) {
    orvix::core::close_descriptor(table_->fp);
    errno = 0;
    EXPECT_EQ(get(true, 0), -1);
    EXPECT_EQ(errno, EBADF);
    table_->fp = orvix::open_utf8("store", read_write(), 0);
}

class HashPagesOfTheOtherOrder : public HashPages {
protected:
    HashPagesOfTheOtherOrder() {
        store_ = Store::in_file("store", create_new(), info(4321));
        table_ = store_.table();
    }
};

TEST_F(HashPagesOfTheOtherOrder, SurviveARoundTripThroughTheFile) {
    _bufhead* const buffer = bucket(0);
    modify(buffer, 'a');
    const std::string before(buffer->page, 64);
    for (std::uint32_t number = 1; number <= 6; ++number) bucket(number);
    EXPECT_EQ(bytes_of_page(8), std::string("\0\2\0\x3f\0\x3e\0\x34\0\x3e", 10) + std::string(52, '\xff') + "aa");
    const _bufhead* const again = bucket(0);
    EXPECT_EQ(std::string(again->page, 64), before);
}

TEST_F(HashPagesOfTheOtherOrder, AreLeftSwappedAfterAWrite) {
    _bufhead* const buffer = bucket(0);
    modify(buffer, 'a');
    EXPECT_EQ(__put_page(table_, buffer->page, 0, true, false), 0);
    EXPECT_EQ(words_of(buffer, 3), (Words{0x0200, 0x3f00, 0x3e00}));
    ASSERT_EQ(__get_page(table_, buffer->page, 0, true, true, false), 0);
}

TEST_F(HashPagesOfTheOtherOrder, WorkOnAfterASync) {
    ASSERT_EQ(store_.put("key", "value"), 0);
    ASSERT_EQ(store_.sync(), 0);
    EXPECT_EQ(store_.get("key"), "value");
    ASSERT_EQ(store_.put("other", "value"), 0);
    const std::string first = [&] { return store_.sync(), directory_.read("store"); }();
    ASSERT_EQ(store_.close(), 0);
    EXPECT_EQ(directory_.read("store"), first);
    expect_faultless(report_on_file("store"));
}

TEST_F(HashPagesOfTheOtherOrder, BitmapsAreSwappedAs32BitWords) {
    ASSERT_EQ(store_.sync(), 0);
    // 64 buckets: seven pages at first, the bitmap's own in use.
    EXPECT_EQ(bytes_of_page(8 + 63 + 1), std::string("\xff\xff\xff\x81", 4) + std::string(60, '\xff'));
    ASSERT_EQ(get(false, (6U << 11) + 1, true), 0);
    std::uint32_t word;
    std::memcpy(&word, page_, sizeof word);
    EXPECT_EQ(word, 0xffffff81U);
}

// The file of a store in memory.

TEST(HashTemporaryFile, IsMadeInTheCurrentDirectoryAndBearsNoName) {
    const TemporaryDirectory directory(TemporaryDirectory::Enter::yes);
    HASHINFO info{};
    info.cache_bytes = 1;
    Store store = Store::in_memory(info);
    EXPECT_EQ(store.table()->fp, -1);
    for (int i = 0; i < 3000; ++i) ASSERT_EQ(store.put("key" + std::to_string(i), std::string(50, 'v')), 0);
    EXPECT_NE(store.table()->fp, -1);
    struct stat status;
    ASSERT_EQ(fstat(store.db()->fd(store.db()), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, kept_mode(0600));
    EXPECT_EQ(std::filesystem::is_empty("."), removed_names_go_at_once());
    EXPECT_EQ(store.scan().size(), 3000U);
    expect_sound(report_on(store));
    EXPECT_EQ(store.close(), 0);
    EXPECT_TRUE(std::filesystem::is_empty("."));
}

TEST(HashTemporaryFile, SeveralStoresHaveOneEach) {
    const TemporaryDirectory directory(TemporaryDirectory::Enter::yes);
    HASHINFO info{};
    info.cache_bytes = 1;
    std::vector<Store> stores;
    for (int n = 0; n < 3; ++n) {
        stores.push_back(Store::in_memory(info));
        for (int i = 0; i < 2000; ++i) {
            ASSERT_EQ(stores.back().put("key" + std::to_string(i), std::to_string(n)), 0);
        }
        EXPECT_NE(stores.back().table()->fp, -1);
    }
    for (int n = 0; n < 3; ++n) EXPECT_EQ(stores[static_cast<std::size_t>(n)].get("key7"), std::to_string(n));
}

TEST(HashTemporaryFile, ThatCannotBeMadeFailsTheOperation) {
    const TemporaryDirectory directory(TemporaryDirectory::Enter::yes);
    HASHINFO info{};
    info.cache_bytes = 1;
    Store store = Store::in_memory(info);
    std::filesystem::create_directory("gone");
    std::filesystem::current_path("gone");
    const LostDirectory lost(directory.path() / "gone");
    int result = 0;
    int stored = 0;
    for (int i = 0; i < 3000 && result == 0; ++i, ++stored) {
        result = store.put("key" + std::to_string(i), std::string(50, 'v'));
    }
    EXPECT_EQ(result, -1);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(store.table()->fp, -1);
    std::filesystem::current_path(directory.path());
    for (int i = 0; i + 1 < stored; ++i) ASSERT_NE(store.get("key" + std::to_string(i)), std::nullopt) << i;
}

}  // namespace
