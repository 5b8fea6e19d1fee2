// Long random sequences of operations on a store and a map, for all page sizes, both byte orders, small and large
// caches, with every pair kept and by the page rules to the letter.
//
// ORVIX_HASH_OPERATIONS sets how many operations each setting goes through.
#include "containers/hash_store_pair.h"
#include "support/random_text.h"

#include <cstdlib>
#include <tuple>

namespace {

using namespace orvix::test;

constexpr unsigned keys = 300;

std::size_t operations(std::uint32_t page_size) {
    if (const char* const asked = std::getenv("ORVIX_HASH_OPERATIONS")) return std::strtoul(asked, nullptr, 10);
    return page_size > 16384 ? 600 : 3000;
}

class Texts {
public:
    Texts(std::uint32_t page_size, unsigned seed) : page_size_(page_size), random_(seed) {}

    std::size_t number(std::size_t most) { return random_.number(most); }

    // Keys end with a byte that none has elsewhere, so that no key is another one and a byte.
    std::string key() {
        const unsigned id = static_cast<unsigned>(random_.number(keys));
        if (id == 0) return "";
        RandomText own(id);
        std::string key = std::to_string(id);
        const std::size_t shape = own.number(19);
        if (shape < 12) key += own.text("abc", 20);
        if (shape == 19) key += own.text("abcdef", 3 * page_size_);
        return key + "$";
    }

    std::string value() {
        const std::size_t shape = random_.number(999);
        if (shape == 0) return random_.text("xyz", 4 * page_size_);
        if (shape == 1) return random_.text("x", std::size_t{1} << 20);
        if (shape < 30) return std::string(random_.number(page_size_), 'v');
        if (shape < 60) return std::string(page_size_ - 20 + random_.number(30), 'p');
        if (shape < 300) return "";
        return random_.text("abcdefghij", 40);
    }

private:
    std::uint32_t page_size_;
    RandomText random_;
};

void step(HashStorePair* pair, Texts* texts) {
    const std::size_t choice = texts->number(999);
    if (choice < 400) {
        pair->put(texts->key(), texts->value());
    } else if (choice < 500) {
        pair->put_new(texts->key(), texts->value());
    } else if (choice < 700) {
        pair->del(texts->key());
    } else if (choice < 990) {
        pair->look_for(texts->key());
    } else if (choice < 994) {
        pair->sync();
    } else if (choice < 997) {
        pair->reopen();
    } else {
        pair->scan();
    }
}

using Setting = std::tuple<std::uint32_t, std::int32_t, std::uint32_t, Keeps>;  // page size, byte order, cache

class HashStoreAndMap : public testing::TestWithParam<Setting> {
protected:
    void run(const std::string& name) {
        const auto [page_size, byte_order, cache_bytes, keeps] = GetParam();
        const unsigned seed = 7 * page_size + cache_bytes + static_cast<unsigned>(byte_order);
        SCOPED_TRACE("seed " + std::to_string(seed));
        HashStorePair pair(name, HASHINFO{page_size, 0, 0, cache_bytes, nullptr, byte_order}, keeps);
        Texts texts(page_size, seed);
        const std::size_t count = operations(page_size);
        for (std::size_t i = 0; i < count; ++i) {
            step(&pair, &texts);
            ASSERT_EQ(pair.fault(), "") << "at step " << i;
        }
        pair.scan();
        pair.verify();
        pair.reopen();
        pair.scan();
        EXPECT_EQ(pair.fault(), "");
    }

    const TemporaryDirectory directory_{TemporaryDirectory::Enter::yes};
};

std::string name_of(const testing::TestParamInfo<Setting>& tested) {
    const auto [page_size, byte_order, cache_bytes, keeps] = tested.param;
    return "Page" + std::to_string(page_size) + (byte_order == 1234 ? "Little" : "Big") +
           (cache_bytes == 1 ? "SmallCache" : "LargeCache") + (keeps == Keeps::every_pair ? "Careful" : "ByTheRules");
}

TEST_P(HashStoreAndMap, AgreeInAFile) {
    testing::internal::CaptureStderr();  // small pages run out of overflow pages
    run("store");
    testing::internal::GetCapturedStderr();
}

TEST_P(HashStoreAndMap, AgreeInMemory) {
    testing::internal::CaptureStderr();
    run("");
    testing::internal::GetCapturedStderr();
}

INSTANTIATE_TEST_SUITE_P(Settings, HashStoreAndMap,
                         testing::Combine(testing::Values(64, 128, 256, 512, 1024, 2048, 4096, 8192, 16384, 32768,
                                                          65536),
                                          testing::Values(1234, 4321), testing::Values(1, 1U << 26),
                                          testing::Values(Keeps::every_pair, Keeps::what_the_rules_keep)),
                         name_of);

}  // namespace
