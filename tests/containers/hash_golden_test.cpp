// Files whose bytes were worked out by hand. What any version wrote must open for ever.
//
// Their texts hold hexadecimal digits; "ff * 52" stands for 52 times what comes before the star, and "#" begins a
// comment.
#include "containers/hash_store_access.h"

#include <sstream>

namespace {

using namespace orvix::test;

std::string bytes_of_text(const std::string& text) {
    std::string bytes;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line.substr(0, line.find('#')));
        std::string last;
        for (std::string word; words >> word;) {
            std::size_t times = 1;
            if (word == "*") {
                words >> times;
                --times;  // one is there already
            } else {
                last.clear();
                for (std::size_t i = 0; i < word.size(); i += 2) {
                    last.push_back(static_cast<char>(std::stoi(word.substr(i, 2), nullptr, 16)));
                }
            }
            for (std::size_t i = 0; i < times; ++i) bytes += last;
        }
    }
    return bytes;
}

class HashGolden : public testing::Test {
protected:
    static std::string golden(const std::string& name) {
        return bytes_of_text(read_file(std::string(ORVIX_TEST_DATA) + "/../containers/golden/" + name + ".hex"));
    }
    Store open(const std::string& name, int flags) {
        directory_.write("store", golden(name));
        Store store = Store::in_file("store", flags);
        EXPECT_TRUE(store.is_open());
        return store;
    }
    static std::string letters() { return "abcdefghijklmnopqrstuvwxyzabcdefghijklmnopqrstuvwx"; }

    const TemporaryDirectory directory_{TemporaryDirectory::Enter::yes};
};

TEST_F(HashGolden, TwoPairsAreRead) {
    Store store = open("two_pairs", read_only());
    EXPECT_EQ(store.scan(), (std::map<std::string, std::string>{{"a", "1"}, {"b", "2"}}));
    EXPECT_EQ(store.get("a"), "1");
    EXPECT_EQ(store.get("b"), "2");
    EXPECT_EQ(store.get("c"), std::nullopt);
    expect_faultless(report_on_file("store"));
}

TEST_F(HashGolden, TwoPairsAreWritten) {
    Store store = Store::in_file("store", create_new(), HASHINFO{64, 0, 0, 0, nullptr, 1234});
    store.put("a", "1");
    store.put("b", "2");
    ASSERT_EQ(store.close(), 0);
    EXPECT_EQ(directory_.read("store"), golden("two_pairs"));
}

TEST_F(HashGolden, BigPairIsRead) {
    Store store = open("big_pair", read_only());
    EXPECT_EQ(store.get("k"), letters());
    EXPECT_EQ(store.scan(), (std::map<std::string, std::string>{{"k", letters()}}));
    expect_faultless(report_on_file("store"));
}

TEST_F(HashGolden, BigPairIsWritten) {
    Store store = Store::in_file("store", create_new(), HASHINFO{64, 0, 0, 0, nullptr, 4321});
    store.put("k", letters());
    ASSERT_EQ(store.close(), 0);
    EXPECT_EQ(directory_.read("store"), golden("big_pair"));
}

TEST_F(HashGolden, WhatTheRulesLeftBehindIsRead) {
    Store store = open("left_behind", read_only());
    EXPECT_EQ(store.scan(), (std::map<std::string, std::string>{{"y", "7"}, {"xp", "8"}, {"c", "3"}}));
    EXPECT_EQ(store.get("c"), "3");
    EXPECT_EQ(store.get("y"), "7");
    EXPECT_EQ(store.get("x"), std::nullopt);
    EXPECT_EQ(report_on_file("store").text(),
              "remark: page 11, offset 2: the pair belongs in bucket 0, not in 1, and is not found\n"
              "remark: page 0, offset 56: the header counts 2 of 3 pairs\n");
}

TEST_F(HashGolden, WhatTheRulesLeftBehindIsChanged) {
    Store store = open("left_behind", read_write());
    EXPECT_EQ(store.del("y"), 0);
    EXPECT_EQ(store.put("c", "4"), 0);
    EXPECT_EQ(store.put("b", "2"), 0);
    ASSERT_EQ(store.close(), 0);
    Store again = Store::in_file("store", read_only());
    EXPECT_EQ(again.scan(), (std::map<std::string, std::string>{{"xp", "8"}, {"c", "4"}, {"b", "2"}}));
    EXPECT_EQ(directory_.read("store")[7], '\2');
    expect_sound(report_on_file("store"));
}

}  // namespace
