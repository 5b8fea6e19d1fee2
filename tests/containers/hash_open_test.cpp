// Opening a store, new or from its file.
#include "containers/hash_store_access.h"
#include "support/permissions.h"

#include <cerrno>
#include <filesystem>

#include <fcntl.h>

namespace {

using namespace orvix::test;

class HashOpen : public testing::Test {
protected:
    Store open(int flags, const HASHINFO& info = {}) { return Store::in_file("store", flags, info); }
    void make(const HASHINFO& info = {}) {
        Store store = open(create_new(), info);
        ASSERT_TRUE(store.is_open());
        store.put("net", "clock");
        ASSERT_EQ(store.close(), 0);
    }
    std::string bytes() const { return directory_.read("store"); }
    void expect_refused(int flags, int reason, const HASHINFO& info = {}) {
        errno = 0;
        EXPECT_FALSE(open(flags, info).is_open());
        EXPECT_EQ(errno, reason);
    }

    const TemporaryDirectory directory_{TemporaryDirectory::Enter::yes};
};

TEST_F(HashOpen, KeepsPairsInItsFile) {
    make();
    Store store = open(read_write());
    EXPECT_EQ(store.get("net"), "clock");
}

TEST_F(HashOpen, ReadOnlyStoreIsReadAndLeftAsItIs) {
    make();
    const std::string before = bytes();
    {
        Store store = open(read_only());
        EXPECT_EQ(store.get("net"), "clock");
        EXPECT_EQ(store.sync(), 0);
        EXPECT_EQ(store.close(), 0);
    }
    EXPECT_EQ(bytes(), before);
}

TEST_F(HashOpen, OfAMissingFileGivesEnoent) { expect_refused(read_write(), ENOENT); }

TEST_F(HashOpen, WithTheFlagToCreateMakesAMissingFileAndClearsErrno) {
    errno = 0;
    EXPECT_TRUE(open(O_RDWR | O_CREAT).is_open());
    EXPECT_EQ(errno, 0);
    EXPECT_TRUE(std::filesystem::exists("store"));
}

TEST_F(HashOpen, WithTheFlagToCreateOpensAnExistingStore) {
    make();
    EXPECT_EQ(open(O_RDWR | O_CREAT).get("net"), "clock");
}

TEST_F(HashOpen, WithTheFlagToTruncateStartsAnew) {
    make();
    EXPECT_EQ(open(O_RDWR | O_TRUNC).get("net"), std::nullopt);
}

TEST_F(HashOpen, ExclusivelyFailsIfTheFileIsThere) {
    make();
    expect_refused(O_RDWR | O_CREAT | O_EXCL, EEXIST);
}

TEST_F(HashOpen, ForWritingAloneIsSilentlyForReading) {
    make();
    Store store = open(O_WRONLY);
    ASSERT_TRUE(store.is_open());
    EXPECT_EQ(store.get("net"), "clock");
    EXPECT_EQ(store.put("net", "reset"), -1);
    EXPECT_EQ(errno, EPERM);
}

TEST_F(HashOpen, IgnoresFlagsBeyondItsFour) {
    make();
    Store store = open(O_RDWR | O_APPEND);
    store.put("other", "value");
    EXPECT_EQ(store.close(), 0);
    EXPECT_EQ(open(read_only()).get("other"), "value");
}

TEST_F(HashOpen, GivesTheFileToItsMode) {
    const Store store(hash_open("store", create_new(), 0600, nullptr));
    EXPECT_EQ(mode_of("store"), kept_mode(0600));
}

TEST_F(HashOpen, OfAnEmptyFileGivesEinval) {
    directory_.write("store", "");
    expect_refused(read_write(), EINVAL);
}

TEST_F(HashOpen, OfAFileThatIsNoStoreGivesEinvalAndLeavesIt) {
    const std::string text(5000, 'x');
    directory_.write("store", text);
    expect_refused(read_write(), EINVAL);
    EXPECT_EQ(bytes(), text);
}

TEST_F(HashOpen, OfADirectoryFails) {
    std::filesystem::create_directory("store");
    expect_refused(read_write(), EISDIR);
}

TEST_F(HashOpen, OfADirectoryToReadGivesTheErrorOfTheRead) {
    std::filesystem::create_directory("store");
    expect_refused(read_only(), EISDIR);
}

std::uint32_t length_hash(const void*, std::size_t length) { return static_cast<std::uint32_t>(length); }

TEST_F(HashOpen, WithAnotherHashGivesEinvalAndLeavesTheFile) {
    make();
    const std::string before = bytes();
    HASHINFO info{};
    info.hash = length_hash;
    expect_refused(read_write(), EINVAL, info);
    EXPECT_EQ(bytes(), before);
}

TEST_F(HashOpen, WithAHashOfItsOwnFindsPairsAgain) {
    HASHINFO info{};
    info.hash = length_hash;
    make(info);
    EXPECT_EQ(open(read_write(), info).get("net"), "clock");
    expect_refused(read_write(), EINVAL);
}

TEST_F(HashOpen, OfVersion1IsWrittenAsVersion2) {
    make();
    std::string old = bytes();
    ASSERT_EQ(old.substr(4, 4), std::string("\0\0\0\2", 4));
    old[7] = '\1';
    directory_.write("store", old);
    {
        Store store = open(read_only());
        EXPECT_EQ(store.get("net"), "clock");
    }
    EXPECT_EQ(bytes()[7], '\1');
    {
        Store store = open(read_write());
        EXPECT_EQ(store.get("net"), "clock");
        EXPECT_EQ(store.sync(), 0);
        EXPECT_EQ(bytes()[7], '\2');
    }
    EXPECT_EQ(bytes()[7], '\2');
}

TEST_F(HashOpen, OfVersion3GivesEinval) {
    make();
    std::string later = bytes();
    later[7] = '\3';
    directory_.write("store", later);
    expect_refused(read_write(), EINVAL);
}

TEST_F(HashOpen, FdIsThatOfTheFile) {
    Store store = open(create_new());
    struct stat by_descriptor;
    struct stat by_name;
    ASSERT_EQ(fstat(store.db()->fd(store.db()), &by_descriptor), 0);
    ASSERT_EQ(stat("store", &by_name), 0);
    EXPECT_EQ(by_descriptor.st_ino, by_name.st_ino);
}

TEST_F(HashOpen, PageSizeIsRoundedUp) {
    HASHINFO info{};
    info.page_size = 1025;
    EXPECT_EQ(open(create_new(), info).table()->page_size, 2048U);
    info.page_size = 33;
    EXPECT_EQ(open(create_new(), info).table()->page_size, 64U);
    info.page_size = 65536;
    EXPECT_EQ(open(create_new(), info).table()->page_size, 65536U);
}

TEST_F(HashOpen, PageSizeOutsideItsBoundsGivesEinval) {
    for (const std::uint32_t size : {1U, 32U, 65537U, 0x80000000U, 0xffffffffU}) {
        SCOPED_TRACE(size);
        HASHINFO info{};
        info.page_size = size;
        expect_refused(create_new(), EINVAL, info);
    }
}

TEST_F(HashOpen, ByteOrderThatIsNoneGivesEinval) {
    HASHINFO info{};
    info.byte_order = 1243;
    expect_refused(create_new(), EINVAL, info);
}

TEST_F(HashOpen, ExistingStoreTakesOnlyCacheAndHashFromTheCaller) {
    HASHINFO info{};
    info.page_size = 256;
    make(info);
    HASHINFO other{};
    other.page_size = 4096;
    other.byte_order = 4321;
    other.fill_factor = 3;
    other.cache_bytes = 2560;
    Store store = open(read_write(), other);
    EXPECT_EQ(store.table()->page_size, 256U);
    EXPECT_EQ(store.table()->byte_order, 1234);
    EXPECT_EQ(store.table()->fill_factor, 65536U);
    EXPECT_EQ(store.table()->buffer_budget, 10);
}

TEST_F(HashOpen, DefaultsOfANewTable) {
    Store in_file = open(create_new());
    EXPECT_EQ(in_file.table()->page_size, 1024U);
    EXPECT_EQ(in_file.table()->header_pages, 1U);
    Store in_memory = Store::in_memory();
    const htab& table = *in_memory.table();
    EXPECT_EQ(table.byte_order, 1234);
    EXPECT_EQ(table.page_size, 4096U);
    EXPECT_EQ(table.page_shift, 12U);
    EXPECT_EQ(table.seg_size, 256U);
    EXPECT_EQ(table.seg_shift, 8U);
    EXPECT_EQ(table.dir_size, 256U);
    EXPECT_EQ(table.fill_factor, 65536U);
    EXPECT_EQ(table.key_count, 0);
    EXPECT_EQ(table.seg_count, 1);
    EXPECT_EQ(table.buffer_budget, 16);
    EXPECT_EQ(table.scan_bucket, -1);
    EXPECT_EQ(table.created, 1);
    EXPECT_EQ(table.writable_file, 0);
    EXPECT_EQ(table.fp, -1);
}

TEST_F(HashOpen, ExpectedCountOf1YieldsTwoBuckets) {
    HASHINFO info{};
    info.expected_count = 1;
    const Store store = Store::in_memory(info);
    const htab& table = *store.table();
    EXPECT_EQ(table.top_bucket, 1U);
    EXPECT_EQ(table.mask_low, 1U);
    EXPECT_EQ(table.mask_high, 3U);
    EXPECT_EQ(table.spare_point, 1U);
    EXPECT_EQ(table.spare_counts[1], 2U);
    EXPECT_EQ(table.spare_counts[2], 2U);
    EXPECT_EQ(table.free_hint, 2U);
    EXPECT_EQ(table.bitmap_addrs[0], (1U << 11) + 1);
    EXPECT_EQ(table.bitmap_count, 1);
    EXPECT_EQ(table.bitmap_pages[0][0], 0xfffffffdU);
    EXPECT_EQ(table.bitmap_pages[0][1], 0xffffffffU);
}

TEST_F(HashOpen, ExpectedCountIsDividedByTheFillFactorAndRoundedUp) {
    HASHINFO info{};
    info.expected_count = 100001;
    info.fill_factor = 8;
    const Store store = Store::in_memory(info);
    EXPECT_EQ(store.table()->top_bucket, 16383U);
    EXPECT_EQ(store.table()->spare_point, 14U);
    EXPECT_EQ(store.table()->spare_counts[14], 15U);
    EXPECT_EQ(store.table()->seg_count, 64);
    EXPECT_EQ(store.table()->dir_size, 256U);
}

TEST_F(HashOpen, ExpectedCountBeyondAllMemoryGivesNull) {
    HASHINFO info{};
    info.expected_count = 0xffffffff;
    info.fill_factor = 1;
    errno = 0;
    EXPECT_FALSE(Store::in_memory(info).is_open());
    EXPECT_TRUE(errno == ENOMEM || errno == EFBIG) << errno;
}

TEST_F(HashOpen, CacheHoldsAtLeastSixPages) {
    HASHINFO info{};
    info.cache_bytes = 1;
    EXPECT_EQ(open(create_new(), info).table()->buffer_budget, 6);
    info.cache_bytes = 10000;
    EXPECT_EQ(open(create_new(), info).table()->buffer_budget, 10);
}

TEST_F(HashOpen, HeaderBeginsWithItsMagicInEitherByteOrder) {
    for (const std::int32_t order : {1234, 4321}) {
        HASHINFO info{};
        info.byte_order = order;
        make(info);
        EXPECT_EQ(bytes().substr(0, 4), std::string("\x00\x06\x15\x61", 4));
    }
}

TEST_F(HashOpen, SyncWritesEverythingAndClearsCreated) {
    Store store = open(create_new());
    store.put("net", "clock");
    EXPECT_EQ(store.table()->created, 1);
    EXPECT_EQ(store.sync(), 0);
    EXPECT_EQ(store.table()->created, 0);
    Store reader = open(read_only());
    EXPECT_EQ(reader.get("net"), "clock");
    expect_faultless(report_on_file("store"));
}

TEST_F(HashOpen, NothingIsWrittenToAFileThatWasOpenedToBeRead) {
    Store store = open(O_RDONLY | O_CREAT);
    ASSERT_TRUE(store.is_open());
    EXPECT_EQ(store.table()->writable_file, 0);
    EXPECT_EQ(store.close(), 0);
    EXPECT_EQ(bytes(), "");
}

}  // namespace
