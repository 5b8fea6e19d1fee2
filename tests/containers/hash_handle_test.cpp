// The operations of a store as applications call them.
#include "containers/hash_store_access.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <limits>

#include <fcntl.h>

namespace {

using namespace orvix::test;
using orvix::gsl::hash_first;
using orvix::gsl::hash_keep_existing;
using orvix::gsl::hash_next;

class HashHandle : public testing::Test {
protected:
    Store store_ = Store::in_memory();
};

TEST_F(HashHandle, IsOfTypeOne) { EXPECT_EQ(store_.db()->type, 1U); }

TEST_F(HashHandle, GetFindsWhatWasPut) {
    EXPECT_EQ(store_.put("net", "clock"), 0);
    EXPECT_EQ(store_.get("net"), "clock");
}

TEST_F(HashHandle, GetOfAnAbsentKeyGives1AndLeavesTheValue) {
    DBT value = text_of("before");
    EXPECT_EQ(store_.get_result("net", &value), 1);
    EXPECT_EQ(string_of(value), "before");
}

TEST_F(HashHandle, KeyIsTheWholeOfItsBytes) {
    store_.put("net", "1");
    store_.put(std::string_view("net\0", 4), "2");
    EXPECT_EQ(store_.get("net"), "1");
    EXPECT_EQ(store_.get(std::string_view("net\0", 4)), "2");
    EXPECT_EQ(store_.get("ne"), std::nullopt);
}

TEST_F(HashHandle, PutReplaces) {
    store_.put("net", "clock");
    EXPECT_EQ(store_.put("net", "reset line"), 0);
    EXPECT_EQ(store_.get("net"), "reset line");
    EXPECT_EQ(store_.table()->key_count, 1);
}

TEST_F(HashHandle, PutWithFlag8KeepsAnExistingKeyAndGives1) {
    EXPECT_EQ(store_.put("net", "clock", 8), 0);
    EXPECT_EQ(store_.put("net", "reset", hash_keep_existing), 1);
    EXPECT_EQ(store_.get("net"), "clock");
}

TEST_F(HashHandle, DelRemovesAndGives1ForAnAbsentKey) {
    store_.put("net", "clock");
    EXPECT_EQ(store_.del("net"), 0);
    EXPECT_EQ(store_.get("net"), std::nullopt);
    EXPECT_EQ(store_.del("net"), 1);
    EXPECT_EQ(store_.table()->key_count, 0);
}

TEST_F(HashHandle, DelTakesFlag1) {
    store_.put("net", "clock");
    EXPECT_EQ(store_.del("net", 1), 0);
}

TEST_F(HashHandle, EmptyKeyHashesTo0AndIsStoredLikeAnyOther) {
    EXPECT_EQ(store_.put("", "nobody"), 0);
    EXPECT_EQ(__call_hash(store_.table(), "", 0), 0U);
    EXPECT_EQ(store_.get(""), "nobody");
    EXPECT_EQ(store_.scan().at(""), "nobody");
    EXPECT_EQ(store_.del(""), 0);
    EXPECT_EQ(store_.get(""), std::nullopt);
}

TEST_F(HashHandle, EmptyKeyMayBeNull) {
    const DBT nothing{nullptr, 0};
    DBT value;
    EXPECT_EQ(store_.db()->put(store_.db(), &nothing, &nothing, 0), 0);
    EXPECT_EQ(store_.db()->get(store_.db(), &nothing, &value, 0), 0);
    EXPECT_EQ(value.size, 0U);
}

TEST_F(HashHandle, EmptyValueIsStoredWithTheOffsetOfItsKey) {
    EXPECT_EQ(store_.put("net", ""), 0);
    EXPECT_EQ(store_.get("net"), "");
    const std::uint32_t bucket = __call_hash(store_.table(), "net", 3);
    EXPECT_EQ(words_of(__get_buf(store_.table(), bucket, nullptr, false), 3), (Words{2, 4093, 4093}));
}

struct BadFlag {
    const char* operation;
    std::uint32_t flag;
};

class HashHandleFlags : public HashHandle, public testing::WithParamInterface<BadFlag> {
protected:
    int call(const std::string& operation, std::uint32_t flag) {
        __db* const db = store_.db();
        DBT key = text_of("net");
        DBT value = text_of("clock");
        if (operation == "get") return db->get(db, &key, &value, flag);
        if (operation == "put") return db->put(db, &key, &value, flag);
        if (operation == "del") return db->del(db, &key, flag);
        if (operation == "seq") return db->seq(db, &key, &value, flag);
        return db->sync(db, flag);
    }
};

TEST_P(HashHandleFlags, ThatAreNotTakenGiveEinvalAndAreNoted) {
    errno = 0;
    EXPECT_EQ(call(GetParam().operation, GetParam().flag), -1);
    EXPECT_EQ(errno, EINVAL);
    EXPECT_EQ(store_.table()->error, EINVAL);
}

INSTANTIATE_TEST_SUITE_P(Operations, HashHandleFlags,
                         testing::Values(BadFlag{"get", 1}, BadFlag{"get", 8}, BadFlag{"put", 1}, BadFlag{"put", 3},
                                         BadFlag{"del", 2}, BadFlag{"del", 8}, BadFlag{"seq", 1}, BadFlag{"seq", 8},
                                         BadFlag{"sync", 1}),
                         [](const auto& tested) { return tested.param.operation + std::to_string(tested.param.flag); });

TEST_F(HashHandle, ChangesToAStoreThatIsReadOnlyGiveEperm) {
    Store reader(hash_open(nullptr, read_only(), 0, nullptr));
    ASSERT_TRUE(reader.is_open());
    errno = 0;
    EXPECT_EQ(reader.put("net", "clock"), -1);
    EXPECT_EQ(errno, EPERM);
    EXPECT_EQ(reader.table()->error, EPERM);
    errno = 0;
    EXPECT_EQ(reader.del("net"), -1);
    EXPECT_EQ(errno, EPERM);
    EXPECT_EQ(reader.get("net"), std::nullopt);
}

TEST_F(HashHandle, BadFlagOfAReadOnlyStoreIsEinvalFirst) {
    Store reader(hash_open(nullptr, read_only(), 0, nullptr));
    EXPECT_EQ(reader.put("net", "clock", 77), -1);
    EXPECT_EQ(errno, EINVAL);
}

TEST_F(HashHandle, NullRecordsFail) {
    __db* const db = store_.db();
    DBT key = text_of("net");
    DBT value;
    EXPECT_EQ(db->close(nullptr), -1);
    EXPECT_EQ(db->fd(nullptr), -1);
    EXPECT_EQ(db->get(nullptr, &key, &value, 0), -1);
    EXPECT_EQ(db->put(nullptr, &key, &key, 0), -1);
    EXPECT_EQ(db->del(nullptr, &key, 0), -1);
    EXPECT_EQ(db->seq(nullptr, &key, &value, 0), -1);
    EXPECT_EQ(db->sync(nullptr, 0), -1);
    EXPECT_EQ(db->get(db, nullptr, &value, 0), -1);
    EXPECT_EQ(db->get(db, &key, nullptr, 0), -1);
    EXPECT_EQ(db->put(db, &key, nullptr, 0), -1);
}

TEST_F(HashHandle, BytesThatAreNotThereAreRefused) {
    const DBT missing{nullptr, 3};
    const DBT key = text_of("net");
    EXPECT_EQ(store_.db()->put(store_.db(), &missing, &key, 0), -1);
    EXPECT_EQ(errno, EINVAL);
    EXPECT_EQ(store_.db()->put(store_.db(), &key, &missing, 0), -1);
    EXPECT_EQ(errno, EINVAL);
}

TEST_F(HashHandle, TextOf2GibibytesIsRefused) {
    char byte = 'x';
    const DBT key = text_of("net");
    const DBT large{&byte, std::size_t{std::numeric_limits<std::int32_t>::max()} + 1};  // which is not looked at
    EXPECT_EQ(store_.db()->put(store_.db(), &key, &large, 0), -1);
    EXPECT_EQ(errno, EINVAL);
    EXPECT_EQ(store_.get("net"), std::nullopt);
}

TEST_F(HashHandle, FdWithoutAFileIsMinus1WithEnoent) {
    errno = 0;
    EXPECT_EQ(store_.db()->fd(store_.db()), -1);
    EXPECT_EQ(errno, ENOENT);
}

TEST_F(HashHandle, SyncWithoutAFileDoesNothing) {
    store_.put("net", "clock");
    EXPECT_EQ(store_.sync(), 0);
    EXPECT_EQ(store_.table()->created, 1);
}

TEST_F(HashHandle, KeepEveryPairGivesWhatWasSwitchedBefore) {
    EXPECT_FALSE(orvix::gsl::hash_keep_every_pair(store_.db(), true));
    EXPECT_TRUE(orvix::gsl::hash_keep_every_pair(store_.db(), false));
    EXPECT_FALSE(orvix::gsl::hash_keep_every_pair(store_.db(), false));
    EXPECT_FALSE(orvix::gsl::hash_keep_every_pair(nullptr, true));
}

class HashScan : public HashHandle {
protected:
    void fill(int count) {
        for (int i = 0; i < count; ++i) store_.put("key" + std::to_string(i), "value" + std::to_string(i));
    }
};

TEST_F(HashScan, OfAnEmptyStoreEndsAtOnce) {
    DBT key;
    DBT value;
    EXPECT_EQ(store_.db()->seq(store_.db(), &key, &value, 0), 1);
    EXPECT_EQ(store_.table()->scan_bucket, -1);
}

TEST_F(HashScan, GivesEachPairOnce) {
    fill(1000);
    const auto pairs = store_.scan();
    EXPECT_EQ(pairs.size(), 1000U);
    EXPECT_EQ(pairs.at("key999"), "value999");
}

TEST_F(HashScan, BehindTheLastPairGives1AndFlag0StartsAgain) {
    fill(3);
    const auto first = store_.next();
    store_.next();
    store_.next();
    DBT key;
    DBT value;
    EXPECT_EQ(store_.db()->seq(store_.db(), &key, &value, 0), 1);
    EXPECT_EQ(store_.next(), first);
}

TEST_F(HashScan, Flag7GoesOnAndBeginsAsFlag0Does) {
    fill(2);
    const auto first = store_.next(hash_next);
    const auto second = store_.next(hash_next);
    ASSERT_TRUE(first && second);
    EXPECT_NE(first, second);
    EXPECT_EQ(store_.next(7), std::nullopt);
}

TEST_F(HashScan, Flag3StartsAgain) {
    fill(3);
    const auto first = store_.next(3);
    store_.next();
    EXPECT_EQ(store_.next(hash_first), first);
}

TEST_F(HashScan, GoesOnWhereItStoodAfterLookups) {
    HASHINFO info{};
    info.page_size = 64;
    info.cache_bytes = 1;
    const TemporaryDirectory directory(TemporaryDirectory::Enter::yes);
    Store store = Store::in_file("small", create_new(), info);
    for (unsigned i = 0; i < 400; ++i) ASSERT_EQ(store.put("k" + std::to_string(i), std::string(i % 90, 'v')), 0);
    std::map<std::string, std::string> pairs;
    int i = 0;
    for (auto pair = store.next(hash_first); pair; pair = store.next(), ++i) {
        EXPECT_TRUE(pairs.insert(*pair).second);
        for (int other = 0; other < 20; ++other) store.get("k" + std::to_string((i * 31 + other * 17) % 400));
    }
    EXPECT_EQ(pairs.size(), 400U);
}

TEST_F(HashScan, SurvivesRemovalOfWhatItGave) {
    fill(500);
    std::size_t count = 0;
    for (auto pair = store_.next(hash_first); pair; pair = store_.next(), ++count) {
        EXPECT_EQ(store_.del(pair->first), 0);
        ASSERT_LE(count, 500U);
    }
    expect_sound(report_on(store_));
}

// Opening.

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
    EXPECT_EQ(std::filesystem::status("store").permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
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
