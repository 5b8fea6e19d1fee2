// Long random sequences of operations on a store and a map, for all page sizes, both byte orders, small and large
// caches, with every pair kept and by the page rules to the letter.
//
// ORVIX_STORE_OPERATIONS sets how many operations each setting goes through.
#include "containers/hash_store_access.h"
#include "containers/hash_store_pair.h"
#include "support/random_text.h"

#include <algorithm>
#include <cstdlib>
#include <ostream>

namespace {

using namespace orvix::test;

struct Setting {
    std::uint32_t page_size;
    std::int32_t byte_order;
    bool has_small_cache;
    Keeps keeps;
};

std::string name_of(const Setting& setting) {
    return "page_" + std::to_string(setting.page_size) +
           (setting.byte_order == 1234 ? "_little_endian" : "_big_endian") +
           (setting.has_small_cache ? "_small_cache" : "_large_cache") +
           (setting.keeps == Keeps::every_pair ? "_careful" : "_by_the_rules");
}
void PrintTo(const Setting& setting, std::ostream* out) { *out << name_of(setting); }

std::vector<Setting> all_settings() {
    std::vector<Setting> all;
    for (std::uint32_t page_size = 64; page_size <= 65536; page_size *= 2) {
        for (const std::int32_t byte_order : {1234, 4321}) {
            for (const bool has_small_cache : {true, false}) {
                for (const Keeps keeps : {Keeps::every_pair, Keeps::what_the_rules_keep}) {
                    all.push_back({page_size, byte_order, has_small_cache, keeps});
                }
            }
        }
    }
    return all;
}

std::size_t operations(std::uint32_t page_size) {
    if (const char* const asked = std::getenv("ORVIX_STORE_OPERATIONS")) return std::strtoul(asked, nullptr, 10);
    return page_size > 16384 ? 600 : 2000;
}

// The more operations, the more keys, as long as the store stays of a size that is soon looked through.
std::size_t number_of_keys(std::uint32_t page_size, std::size_t operations) {
    const std::size_t most = (std::size_t{1} << 26) / page_size;
    return std::min(300 + operations / 100, most);
}

class Texts {
public:
    Texts(std::uint32_t page_size, std::size_t keys, unsigned seed)
        : page_size_(page_size), keys_(keys), random_(seed) {}

    std::size_t number(std::size_t most) { return random_.number(most); }

    // Keys end with a byte that none has elsewhere, so that no key is another one and a byte.
    std::string key() {
        const std::size_t id = random_.number(keys_ - 1);
        if (id == 0) return "";
        if (id == 1 && random_.number(9) == 0) return std::string(largest - 1, 'k') + '$';
        RandomText own(static_cast<unsigned>(id));
        std::string key = std::to_string(id);
        const std::size_t shape = own.number(19);
        if (shape < 12) key += own.text("abc", 20);
        if (shape == 19) key += own.text("abcdef", 3 * std::size_t{page_size_});
        return key + '$';
    }

    std::string value() {
        const std::size_t shape = random_.number(999);
        if (shape == 0) return std::string(random_.number(largest), 'x');
        if (shape < 5) return random_.text("xyz", 4 * std::size_t{page_size_});
        if (shape < 30) return std::string(random_.number(page_size_), 'v');
        if (shape < 60) return std::string(page_size_ - 20 + random_.number(30), 'p');
        if (shape < 300) return "";
        return random_.text("abcdefghij", 40);
    }

private:
    static constexpr std::size_t largest = std::size_t{1} << 20;

    std::uint32_t page_size_;
    std::size_t keys_;
    RandomText random_;
};

void step(HashStorePair* pair, Texts* texts) {
    const std::size_t choice = texts->number(99);
    if (choice < 40) {
        pair->put(texts->key(), texts->value());
    } else if (choice < 50) {
        pair->put_new(texts->key(), texts->value());
    } else if (choice < 70) {
        pair->del(texts->key());
    } else {
        pair->look_for(texts->key());
    }
}

// What is done at times, to the store as a whole.
void turn(HashStorePair* pair, std::size_t number) {
    switch (number % 4) {
        case 0:
            return pair->sync();
        case 1:
            return pair->scan();
        case 2:
            return pair->verify();
        default:
            return pair->reopen();
    }
}

class HashStoreAndMap : public testing::TestWithParam<Setting> {
protected:
    void run(const std::string& name) {
        const Setting setting = GetParam();
        const unsigned seed = 7 * setting.page_size + static_cast<unsigned>(setting.byte_order);
        SCOPED_TRACE("seed " + std::to_string(seed));
        const std::uint32_t cache_bytes = setting.has_small_cache ? 1 : 1U << 26;
        const HASHINFO info{setting.page_size, 0, 0, cache_bytes, nullptr, setting.byte_order};
        const std::size_t count = operations(setting.page_size);
        const std::size_t between_turns = std::max(count / 200, std::size_t{70});
        HashStorePair pair(name, info, setting.keeps);
        Texts texts(setting.page_size, number_of_keys(setting.page_size, count), seed);
        testing::internal::CaptureStderr();  // where small pages tell that they ran out of overflow pages
        for (std::size_t i = 0; i < count && pair.fault().empty(); ++i) {
            step(&pair, &texts);
            if (i % between_turns == 0) turn(&pair, i / between_turns);
        }
        pair.scan();
        pair.verify();
        pair.reopen();
        pair.scan();
        testing::internal::GetCapturedStderr();
        EXPECT_EQ(pair.fault(), "");
    }

    const TemporaryDirectory directory_{TemporaryDirectory::Enter::yes};
};

TEST_P(HashStoreAndMap, AgreeInAFile) { run("store"); }

TEST_P(HashStoreAndMap, AgreeInMemory) { run(""); }

INSTANTIATE_TEST_SUITE_P(Settings, HashStoreAndMap, testing::ValuesIn(all_settings()),
                         [](const auto& tested) { return name_of(tested.param); });

}  // namespace
