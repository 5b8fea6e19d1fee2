// The operations of a store as applications call them.
#include "containers/hash_store_access.h"

#include <cerrno>
#include <limits>

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

TEST_F(HashHandle, PutReplacesAndKeepsTheCount) {
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
void PrintTo(const BadFlag& bad, std::ostream* out) { *out << bad.operation << ' ' << bad.flag; }

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

}  // namespace
