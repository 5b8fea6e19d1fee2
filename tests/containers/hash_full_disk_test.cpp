// Stores that find no room, in the file or in memory. POSIX, because the test must take both away from its process;
// without the address sanitizer, because that reserves more memory than any limit allows.

#if !defined(_WIN32) && !defined(__SANITIZE_ADDRESS__)
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ORVIX_TEST_RESOURCES_CANNOT_BE_LIMITED
#endif
#endif
#else
#define ORVIX_TEST_RESOURCES_CANNOT_BE_LIMITED
#endif

#ifndef ORVIX_TEST_RESOURCES_CANNOT_BE_LIMITED

#include "containers/hash_store_access.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>

#include <sys/resource.h>

namespace {

using namespace orvix::test;

void require(bool condition, int status) {
    if (!condition) std::_Exit(status);
}

void limit(decltype(RLIMIT_AS) resource, std::size_t bytes) {
    const rlimit limits{bytes, RLIM_INFINITY};
    require(setrlimit(resource, &limits) == 0, 2);
}

void limit_files(std::size_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    limit(RLIMIT_FSIZE, bytes);
}

void* volatile taken;  // which keeps the compiler from seeing that nobody uses the blocks

// Takes all memory, and leaves no block of any size at hand.
void take_all_memory() {
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    limit(RLIMIT_AS, pages * 4096 + (std::size_t{1} << 20));
    for (std::size_t bytes = std::size_t{1} << 20; bytes >= 16; bytes = bytes > 2048 ? bytes / 2 : bytes - 8) {
        do {
            taken = std::malloc(bytes);
        } while (taken != nullptr);
    }
}

// Runs in a process of its own.
void expect_good_end(const std::function<void()>& scenario) {
    EXPECT_EXIT(
        {
            scenario();
            std::_Exit(0);
        },
        testing::ExitedWithCode(0), "");
}

class HashFullDiskDeathTest : public testing::Test {
protected:
    // A store with 500 pairs, synchronised.
    static Store make(std::uint32_t cache_bytes) {
        Store store = Store::careful("store", create_new(), HASHINFO{256, 0, 0, cache_bytes, nullptr, 0});
        for (int i = 0; i < 500; ++i) require(store.put("old" + std::to_string(i), "value") == 0, 3);
        require(store.sync() == 0, 4);
        return store;
    }
    static void require_old_pairs(int status) {
        Store store = Store::in_file("store", read_only());
        require(store.is_open(), status);
        for (int i = 0; i < 500; ++i) require(store.get("old" + std::to_string(i)) == "value", status + 1);
    }

    const TemporaryDirectory directory_{TemporaryDirectory::Enter::yes};
};

TEST_F(HashFullDiskDeathTest, CloseThatCannotGrowTheFileLeavesWhatWasSynchronised) {
    expect_good_end([] {
        Store store = make(1U << 26);
        const std::string before = read_file("store");
        limit_files(std::filesystem::file_size("store"));
        for (int i = 0; i < 5000; ++i) require(store.put("new" + std::to_string(i), "value") == 0, 5);
        errno = 0;
        require(store.close() == -1, 6);
        require(errno == EFBIG, 7);
        require(read_file("store") == before, 8);
        require_old_pairs(9);
        require(report_on_file("store").findings.empty(), 11);
    });
}

TEST_F(HashFullDiskDeathTest, SyncThatFailsCanBeRepeated) {
    expect_good_end([] {
        Store store = make(1U << 26);
        limit_files(std::filesystem::file_size("store"));
        for (int i = 0; i < 5000; ++i) require(store.put("new" + std::to_string(i), "value") == 0, 5);
        require(store.sync() == -1, 6);
        limit_files(RLIM_INFINITY);
        require(store.sync() == 0, 7);
        require(store.close() == 0, 8);
        require_old_pairs(9);
        require(report_on_file("store").findings.empty(), 11);
        require(Store::in_file("store", read_only()).get("new4999") == "value", 12);
    });
}

TEST_F(HashFullDiskDeathTest, PutThatCannotLetGoOfAPageFailsAndTheStoreWorksOn) {
    expect_good_end([] {
        Store store = make(1);
        limit_files(std::filesystem::file_size("store"));
        int stored = 0;
        errno = 0;
        while (store.put("new" + std::to_string(stored), "value") == 0) ++stored;
        require(errno == EFBIG || errno == EINVAL, 5);  // that of a page which was written in part
        limit_files(RLIM_INFINITY);
        for (int i = 0; i < 500; ++i) require(store.get("old" + std::to_string(i)) == "value", 6);
        for (int i = 0; i < stored; ++i) require(store.get("new" + std::to_string(i)) == "value", 7);
        for (int i = stored + 1; i < 3000; ++i) require(store.put("new" + std::to_string(i), "value") == 0, 8);
        require(store.close() == 0, 9);
        require_old_pairs(10);
        require(report_on_file("store").findings.empty(), 12);
    });
}

TEST_F(HashFullDiskDeathTest, ShortHeaderIsNoted) {
    expect_good_end([] {
        Store store = Store::in_file("store", create_new());
        limit_files(100);
        errno = 0;
        require(store.sync() == -1, 5);
        require(errno == EINVAL && store.table()->error == EINVAL, 6);
    });
}

TEST_F(HashFullDiskDeathTest, OpeningWithoutMemoryGivesNull) {
    expect_good_end([] {
        const HASHINFO info{};
        take_all_memory();
        errno = 0;
        require(hash_open(nullptr, read_write(), 0, &info) == nullptr, 5);
        require(errno == ENOMEM, 6);
    });
}

TEST_F(HashFullDiskDeathTest, PutWithoutMemoryForAPageFailsAndKeepsAllPairs) {
    expect_good_end([] {
        Store store = Store::in_memory(HASHINFO{256, 0, 0, 1U << 30, nullptr, 0});
        orvix::gsl::hash_keep_every_pair(store.db(), true);
        char key[16];
        const auto name = [&](int i) {
            return std::string_view(key, static_cast<std::size_t>(std::snprintf(key, sizeof key, "%d", i)));
        };
        for (int i = 0; i < 1000; ++i) require(store.put(name(i), "value") == 0, 3);
        take_all_memory();
        int stored = 1000;
        errno = 0;
        while (store.put(name(stored), "value") == 0) ++stored;
        require(errno == ENOMEM, 5);
        DBT value;
        for (int i = 0; i < stored; ++i) require(store.get_result(name(i), &value) == 0, 6);
        for (int i = 0; i < stored; i += 2) require(store.del(name(i)) == 0, 7);
        for (int i = 1; i < stored; i += 2) require(store.get_result(name(i), &value) == 0, 8);
    });
}

TEST_F(HashFullDiskDeathTest, GetWithoutMemoryForABigValueFails) {
    expect_good_end([] {
        Store store = Store::in_memory(HASHINFO{256, 0, 0, 1U << 24, nullptr, 0});
        // Growth splits bucket 0, so that nothing has put the large value together yet.
        const std::string large = KeysOfBucket(store, 1).next(5);
        const std::string small = KeysOfBucket(store, 0).next(5);
        require(store.put(large, std::string(std::size_t{6} << 20, 'x')) == 0, 3);
        require(store.put(small, "value") == 0, 4);
        take_all_memory();
        DBT value;
        errno = 0;
        require(store.get_result(large, &value) == -1, 5);
        require(errno == ENOMEM, 6);
        require(store.get_result(small, &value) == 0, 7);
    });
}

}  // namespace

#endif
