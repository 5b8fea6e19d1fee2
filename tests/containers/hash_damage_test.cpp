// Stores whose files were damaged: every operation ends, with its result or with -1 and EINVAL, and touches nothing
// that is not its own.
#include "containers/hash_store_access.h"
#include "support/random_text.h"

#include <cerrno>
#include <functional>

namespace {

using namespace orvix::test;

std::uint32_t bucket_0(const void*, std::size_t) { return 0; }

class HashDamage : public testing::Test {
protected:
    static constexpr std::uint32_t page_size = 128;

    // Overwrites a 16-bit word of a page.
    void damage(std::uint64_t page, std::uint32_t word, std::uint16_t value) {
        std::string bytes = directory_.read("store");
        const std::size_t at = page * page_size + 2 * word;
        ASSERT_LE(at + 2, bytes.size());
        bytes[at] = static_cast<char>(value);
        bytes[at + 1] = static_cast<char>(value >> 8);
        directory_.write("store", bytes);
    }
    std::uint16_t word(std::uint64_t page, std::uint32_t index) const {
        const std::string bytes = directory_.read("store");
        const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(bytes[at]); };
        const std::size_t at = page * page_size + 2 * index;
        return static_cast<std::uint16_t>(byte(at) | byte(at + 1) << 8);
    }
    std::uint64_t page_of(std::uint32_t address) const {
        const gslstore::FileSource source("store");
        return source.header().page_of_address(address);
    }

    // All pairs come to bucket 0, on page 4 behind four pages of header.
    static constexpr std::uint64_t first_page = 4;
    void make(const std::vector<Pair>& pairs) {
        Store store = Store::careful("store", create_new(), HASHINFO{page_size, 1000000, 0, 0, bucket_0, 0});
        for (const auto& [key, value] : pairs) ASSERT_EQ(store.put(key, value), 0);
        ASSERT_EQ(store.close(), 0);
        expect_faultless(report_on_file("store"));
    }
    Store open() {
        Store store = Store::careful("store", read_write(), HASHINFO{0, 0, 0, 0, bucket_0, 0});
        EXPECT_TRUE(store.is_open());
        return store;
    }
    void expect_einval(const std::function<int(Store&)>& operation) {
        Store store = open();
        errno = 0;
        EXPECT_EQ(operation(store), -1);
        EXPECT_EQ(errno, EINVAL);
    }
    void expect_all_fail(const std::string& key) {
        expect_einval([&](Store& store) {
            DBT value;
            return store.get_result(key, &value);
        });
        expect_einval([&](Store& store) { return store.put(key, "new"); });
        expect_einval([&](Store& store) { return store.del(key); });
        expect_einval([&](Store& store) {
            DBT k;
            DBT v;
            int result = 0;
            for (int i = 0; i < 100 && result == 0; ++i) result = store.db()->seq(store.db(), &k, &v, 0);
            return result;
        });
    }

    const TemporaryDirectory directory_{TemporaryDirectory::Enter::yes};
};

TEST_F(HashDamage, PageOutOfOrderFailsTheOperationsThatMeetIt) {
    make({{"a", "1"}});
    damage(first_page, 0, 0xfff0);
    expect_all_fail("a");
    expect_all_fail("absent");
    EXPECT_FALSE(report_on_file("store").findings.empty());
}

TEST_F(HashDamage, ScanGoesOnBehindABucketThatIsDamaged) {
    {
        Store store = Store::careful("store", create_new(), HASHINFO{page_size, 2, 20, 0, nullptr, 0});
        for (int i = 0; i < 20; ++i) store.put(std::to_string(i), "v");
        ASSERT_EQ(store.close(), 0);
    }
    damage(first_page + 1, 0, 3);
    Store store = Store::careful("store", read_only());
    DBT key;
    DBT value;
    int failures = 0;
    int pairs = 0;
    int result = store.db()->seq(store.db(), &key, &value, orvix::gsl::hash_first);
    for (; result != 1 && pairs + failures < 100; result = store.db()->seq(store.db(), &key, &value, 0)) {
        ++(result == 0 ? pairs : failures);
    }
    EXPECT_EQ(failures, 1);
    EXPECT_GT(pairs, 10);
    EXPECT_LT(pairs, 20);
}

TEST_F(HashDamage, LinkToAPageThatWasNeverAllocatedFails) {
    make({{"a", std::string(80, '1')}, {"b", std::string(80, '2')}});
    ASSERT_EQ(word(first_page, 4), MARK_OVERFLOW);
    damage(first_page, 3, 0x7fff);
    expect_all_fail("a");
}

TEST_F(HashDamage, LinkToABitmapFails) {
    make({{"a", std::string(80, '1')}, {"b", std::string(80, '2')}});
    damage(first_page, 3, (1U << 11) + 1);
    expect_all_fail("b");
}

TEST_F(HashDamage, ChainThatClosesOnItselfEnds) {
    make({{"a", std::string(80, '1')}, {"b", std::string(80, '2')}, {"c", std::string(80, '3')}});
    const std::uint16_t second = word(first_page, 3);
    const std::uint64_t page = page_of(second);
    ASSERT_EQ(word(page, 4), MARK_OVERFLOW);
    damage(page, 3, second);
    expect_einval([&](Store& store) {
        DBT value;
        return store.get_result("c", &value);
    });
    expect_einval([&](Store& store) { return store.put("new", std::string(70, 'n')); });
    expect_einval([&](Store& store) {
        DBT k;
        DBT v;
        int result = 0;
        for (int i = 0; i < 100 && result == 0; ++i) result = store.db()->seq(store.db(), &k, &v, 0);
        return result;
    });
    Store store = open();
    EXPECT_EQ(store.get("b"), std::string(80, '2'));
    EXPECT_EQ(__expand_table(store.table()), -1);
    EXPECT_EQ(errno, EINVAL);
    EXPECT_EQ(store.get("b"), std::string(80, '2'));
}

TEST_F(HashDamage, BigPairWhosePagesCloseOnThemselvesEnds) {
    make({{"big", std::string(1000, 'v')}});
    const std::uint16_t first = word(first_page, 1);
    const std::uint64_t page = page_of(first);
    ASSERT_EQ(word(page, 2), MARK_KEY_END_DATA);
    const std::uint16_t second = word(page, 3);
    damage(page_of(second), 3, second);
    expect_all_fail("big");
    expect_einval([](Store& store) {
        int result = 0;
        for (int i = 0; i < 10 && result == 0; ++i) result = __expand_table(store.table());  // splits each bucket
        return result;
    });
    const std::string key(1000, 'k');
    make({{key, "v"}});
    const std::uint16_t key_page = word(first_page, 1);
    damage(page_of(key_page), 3, key_page);
    expect_all_fail(key);
}

TEST_F(HashDamage, BigPairThatGoesOnAtAnotherPageFails) {
    make({{"big", std::string(1000, 'v')}, {"small", std::string(50, 's')}, {"other", std::string(90, 'o')}});
    const std::uint64_t page = page_of(word(first_page, 1));
    std::uint16_t last = 0;
    for (std::uint16_t next = word(page, 3); next != 0;) {
        last = next;
        const std::uint64_t at = page_of(next);
        next = word(at, 0) == 0 || word(at, word(at, 0)) != MARK_OVERFLOW ? 0 : word(at, word(at, 0) - 1U);
    }
    ASSERT_NE(last, 0U);
    damage(page, 3, last);
    expect_einval([&](Store& store) {
        DBT value;
        return store.get_result("big", &value);
    });
    expect_einval([&](Store& store) { return store.del("big"); });
}

TEST_F(HashDamage, BitmapThatDoesNotMarkItselfFailsWhatNeedsIt) {
    make({{"a", std::string(80, '1')}});
    damage(page_of((1U << 11) + 1), 0, 0);
    Store store = open();
    EXPECT_EQ(store.get("a"), std::string(80, '1'));
    errno = 0;
    EXPECT_EQ(store.put("b", std::string(80, '2')), -1);
    EXPECT_EQ(errno, EINVAL);
    EXPECT_EQ(store.get("a"), std::string(80, '1'));
    EXPECT_EQ(store.put("c", "3"), 0);
}

TEST_F(HashDamage, FileCutShortFailsWhatLiesBehind) {
    make({{"a", std::string(80, '1')}, {"b", std::string(80, '2')}, {"c", std::string(80, '3')}});
    const std::string bytes = directory_.read("store");
    for (std::size_t length = 0; length < bytes.size(); length += 7) {
        directory_.write("store", bytes.substr(0, length));
        Store store = Store::careful("store", read_write(), HASHINFO{0, 0, 0, 0, bucket_0, 0});
        if (!store.is_open()) continue;
        DBT key;
        DBT value;
        for (int i = 0; i < 10; ++i) store.db()->seq(store.db(), &key, &value, 0);
        store.put("d", std::string(80, '4'));
        store.del("a");
        store.get("c");
    }
}

// Whatever stands in the file.
TEST_F(HashDamage, AnyBytesAreSurvived) {
    for (unsigned seed = 0; seed < 400; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        {
            Store store =
                Store::careful("store", create_new(), HASHINFO{64, 3, 0, 0, nullptr, seed % 2 == 0 ? 1234 : 4321});
            for (int i = 0; i < 40; ++i) store.put(random.text("abc", 30), random.text("xyz", i % 7 == 0 ? 300 : 20));
        }
        std::string bytes = directory_.read("store");
        const std::size_t flips = 1 + random.number(6);
        for (std::size_t i = 0; i < flips; ++i) {
            // Half of them on a page's words, few in the header.
            const std::size_t at = random.coin() ? 512 + random.number(bytes.size() - 513) / 64 * 64 + random.number(9)
                                                 : (i == 0 ? 0 : 512) + random.number(bytes.size() - 513);
            if (at < bytes.size()) bytes[at] = static_cast<char>(random.number(255));
        }
        directory_.write("store", bytes);
        report_on_file("store");
        Store store = Store::in_file("store", read_write(), HASHINFO{0, 0, 0, seed % 3 == 0 ? 1U : 0U, nullptr, 0});
        if (!store.is_open()) continue;
        orvix::gsl::hash_keep_every_pair(store.db(), seed % 2 == 0);
        for (int i = 0; i < 60; ++i) {
            const std::string key = random.text("abc", 30);
            switch (random.number(3)) {
                case 0:
                    store.del(key);
                    break;
                case 1:
                    store.get(key);
                    break;
                default:
                    store.put(key, random.text("xyz", i % 9 == 0 ? 400 : 30));
            }
        }
        DBT key;
        DBT value;
        for (int i = 0; i < 3000 && store.db()->seq(store.db(), &key, &value, 0) != 1; ++i) {
        }
        store.sync();
    }
}

}  // namespace
