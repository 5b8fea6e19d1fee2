// Stores that find no room, in the file or in memory.

#include "containers/hash_store_access.h"
#include "support/exhausted_memory.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>

namespace {

using namespace orvix::test;

// Stores on a disk that is full: with 500 old pairs, synchronised.
class HashFullDisk : public testing::Test {
protected:
    static Store make(std::uint32_t cache_bytes) {
        Store store = Store::careful("store", create_new(), HASHINFO{256, 0, 0, cache_bytes, nullptr, 0});
        for (int i = 0; i < 500; ++i) EXPECT_EQ(store.put("old" + std::to_string(i), "value"), 0);
        EXPECT_EQ(store.sync(), 0);
        return store;
    }
    static void put_new_pairs(Store& store) {
        for (int i = 0; i < 5000; ++i) ASSERT_EQ(store.put("new" + std::to_string(i), "value"), 0);
    }
    static FileSizeLimit no_growth() { return FileSizeLimit(std::filesystem::file_size("store")); }
    static void expect_old_pairs_in_a_sound_file() {
        {
            Store store = Store::in_file("store", read_only());
            ASSERT_TRUE(store.is_open());
            for (int i = 0; i < 500; ++i) ASSERT_EQ(store.get("old" + std::to_string(i)), "value");
        }
        EXPECT_THAT(report_on_file("store").findings, testing::IsEmpty());
    }

    const TemporaryDirectory directory_{TemporaryDirectory::Enter::yes};
};

TEST_F(HashFullDisk, CloseThatCannotGrowTheFileLeavesWhatWasSynchronised) {
    Store store = make(1U << 26);
    const std::string before = read_file("store");
    put_new_pairs(store);
    {
        const FileSizeLimit limit = no_growth();
        errno = 0;
        EXPECT_EQ(store.close(), -1);
        EXPECT_EQ(errno, FileSizeLimit::error);
    }
    EXPECT_EQ(read_file("store"), before);
    expect_old_pairs_in_a_sound_file();
}

TEST_F(HashFullDisk, SyncThatFailsCanBeRepeated) {
    Store store = make(1U << 26);
    put_new_pairs(store);
    {
        const FileSizeLimit limit = no_growth();
        EXPECT_EQ(store.sync(), -1);
    }
    EXPECT_EQ(store.sync(), 0);
    EXPECT_EQ(store.close(), 0);
    expect_old_pairs_in_a_sound_file();
    EXPECT_EQ(Store::in_file("store", read_only()).get("new4999"), "value");
}

TEST_F(HashFullDisk, PutThatCannotLetGoOfAPageFailsAndTheStoreWorksOn) {
    Store store = make(1);
    int stored = 0;
    {
        const FileSizeLimit limit = no_growth();
        errno = 0;
        while (store.put("new" + std::to_string(stored), "value") == 0) ++stored;
        EXPECT_TRUE(errno == FileSizeLimit::error || errno == EINVAL);  // that of a page which was written in part
    }
    for (int i = 0; i < 500; ++i) ASSERT_EQ(store.get("old" + std::to_string(i)), "value");
    for (int i = 0; i < stored; ++i) ASSERT_EQ(store.get("new" + std::to_string(i)), "value");
    for (int i = stored + 1; i < 3000; ++i) ASSERT_EQ(store.put("new" + std::to_string(i), "value"), 0);
    EXPECT_EQ(store.close(), 0);
    expect_old_pairs_in_a_sound_file();
}

TEST_F(HashFullDisk, ShortHeaderIsNoted) {
    Store store = Store::in_file("store", create_new());
    const FileSizeLimit limit(100);
    errno = 0;
    EXPECT_EQ(store.sync(), -1);
    EXPECT_EQ(errno, EINVAL);
    EXPECT_EQ(store.table()->error, EINVAL);
}

using HashWithoutMemory = ExhaustedMemory;

TEST_F(HashWithoutMemory, OpeningGivesNull) {
    const HASHINFO info{};
    __db* store = nullptr;
    without_memory([&] {
        errno = 0;
        store = hash_open(nullptr, read_write(), 0, &info);
    });
    EXPECT_EQ(errno, ENOMEM);
    EXPECT_EQ(store, nullptr);
}

TEST_F(HashWithoutMemory, PutFailsForAPageAndAllPairsStay) {
    Store store = Store::in_memory(HASHINFO{256, 0, 0, 1U << 30, nullptr, 0});
    orvix::gsl::hash_keep_every_pair(store.db(), true);
    char key[16];
    const auto name = [&](int i) {
        return std::string_view(key, static_cast<std::size_t>(std::snprintf(key, sizeof key, "%d", i)));
    };
    for (int i = 0; i < 1000; ++i) ASSERT_EQ(store.put(name(i), "value"), 0);
    int stored = 1000;
    int error = 0;
    int misses = 0;
    without_memory([&] {
        while (store.put(name(stored), "value") == 0) ++stored;
        error = errno;
        DBT value;
        for (int i = 0; i < stored; ++i) misses += store.get_result(name(i), &value) == 0 ? 0 : 1;
        for (int i = 0; i < stored; i += 2) misses += store.del(name(i)) == 0 ? 0 : 1;
        for (int i = 1; i < stored; i += 2) misses += store.get_result(name(i), &value) == 0 ? 0 : 1;
    });
    EXPECT_EQ(error, ENOMEM);
    EXPECT_EQ(misses, 0);
}

TEST_F(HashWithoutMemory, GetOfABigValueFails) {
    Store store = Store::in_memory(HASHINFO{256, 0, 0, 1U << 24, nullptr, 0});
    // Growth splits bucket 0, so that nothing has put the large value together yet.
    const std::string large = KeysOfBucket(store, 1).next(5);
    const std::string small = KeysOfBucket(store, 0).next(5);
    ASSERT_EQ(store.put(large, std::string(std::size_t{6} << 20, 'x')), 0);
    ASSERT_EQ(store.put(small, "value"), 0);
    DBT value;
    int result = 0;
    int error = 0;
    int next_result = -1;
    without_memory([&] {
        result = store.get_result(large, &value);
        error = errno;
        next_result = store.get_result(small, &value);
    });
    EXPECT_EQ(result, -1);
    EXPECT_EQ(error, ENOMEM);
    EXPECT_EQ(next_result, 0);
}

}  // namespace
