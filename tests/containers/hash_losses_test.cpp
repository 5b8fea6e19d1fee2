// The two kinds of pair that get lost by the page rules, and how they are kept.
#include "containers/hash_store_access.h"

namespace {

using namespace orvix::test;

std::uint32_t bucket_0(const void*, std::size_t) { return 0; }

class HashLosses : public testing::Test {
protected:
    static constexpr HASHINFO info{64, 1000000, 0, 1U << 20, bucket_0, 0};

    void open(bool careful, int flags) {
        store_ = Store::in_file("store", flags, HASHINFO{0, 0, 0, 1U << 20, bucket_0, 0});
        orvix::gsl::hash_keep_every_pair(store_.db(), careful);
    }
    void make(bool careful) {
        store_ = Store::in_file("store", create_new(), info);
        orvix::gsl::hash_keep_every_pair(store_.db(), careful);
    }
    void reopen(bool careful) {
        ASSERT_EQ(store_.close(), 0);
        open(careful, read_write());
    }

    // Three pages of one chain: a and b, c, d. The second one is not modified when b is replaced by a value for which
    // the first one has no room, and which is squeezed onto the second.
    void squeeze_a_pair(bool careful) {
        make(careful);
        store_.put("a", std::string(20, '1'));
        store_.put("b", std::string(18, '2'));
        store_.put("c", std::string(12, '3'));
        store_.put("d", std::string(34, '4'));
        reopen(careful);
        store_.put("b", std::string(26, '5'));
    }

    const TemporaryDirectory directory_{TemporaryDirectory::Enter::yes};
    Store store_ = Store::in_memory();
};

TEST_F(HashLosses, SqueezedPairIsGoneOnceItsPageWasNotWritten) {
    squeeze_a_pair(false);
    EXPECT_EQ(store_.table()->key_count, 3);
    EXPECT_EQ(store_.get("b"), std::string(26, '5'));
    reopen(false);
    EXPECT_EQ(store_.get("b"), std::nullopt);
    EXPECT_EQ(store_.scan().size(), 3U);
    EXPECT_EQ(store_.close(), 0);
    expect_sound(report_on_file("store"));
}

TEST_F(HashLosses, SqueezedPairIsKeptAndCountedIfAsked) {
    squeeze_a_pair(true);
    EXPECT_EQ(store_.table()->key_count, 4);
    reopen(true);
    EXPECT_EQ(store_.get("b"), std::string(26, '5'));
    EXPECT_EQ(store_.scan().size(), 4U);
    EXPECT_EQ(store_.close(), 0);
    expect_faultless(report_on_file("store"));
}

TEST_F(HashLosses, SqueezedPairStaysIfSomethingElseMarksItsPage) {
    squeeze_a_pair(false);
    store_.put("c", std::string(11, '6'));  // on the same page
    reopen(false);
    EXPECT_EQ(store_.get("b"), std::string(26, '5'));
    EXPECT_EQ(store_.table()->key_count, 2);
}

TEST_F(HashLosses, PairBehindTheRemovalOfABigOneIsOneByteOff) {
    make(false);
    store_.put("k", std::string(100, 'v'));
    store_.del("k");
    EXPECT_EQ(store_.put("net", "clock"), 0);
    EXPECT_EQ(store_.get("net"), std::nullopt);
    EXPECT_EQ(store_.get("netk"), "clock");  // with the last byte of the page
    EXPECT_EQ(store_.table()->key_count, 1);
    reopen(false);
    EXPECT_EQ(store_.get("netk"), "clock");
    EXPECT_EQ(store_.close(), 0);
    expect_sound(report_on_file("store"));
}

TEST_F(HashLosses, PairThatReplacesABigOneIsOneByteOff) {
    make(false);
    store_.put("k", std::string(100, 'v'));
    EXPECT_EQ(store_.put("k", "small"), 0);
    EXPECT_EQ(store_.get("k"), std::nullopt);
    EXPECT_EQ(store_.get("kk"), "small");
}

TEST_F(HashLosses, SecondPairBehindTheRemovalOfABigOneIsFound) {
    make(false);
    store_.put("k", std::string(100, 'v'));
    store_.del("k");
    store_.put("net", "clock");
    store_.put("other", "reset");
    EXPECT_EQ(store_.get("other"), "reset");
}

TEST_F(HashLosses, PairBehindTheRemovalOfABigOneIsFoundIfAsked) {
    make(true);
    store_.put("k", std::string(100, 'v'));
    store_.put("k", "small");
    EXPECT_EQ(store_.get("k"), "small");
    store_.put("k", std::string(100, 'v'));
    store_.del("k");
    store_.put("net", "clock");
    EXPECT_EQ(store_.get("net"), "clock");
    reopen(true);
    EXPECT_EQ(store_.get("net"), "clock");
    EXPECT_EQ(store_.close(), 0);
    expect_faultless(report_on_file("store"));
}

TEST_F(HashLosses, PageThatAnotherProgramLeftOneByteShortIsCorrectedIfAsked) {
    make(false);
    store_.put("k", std::string(100, 'v'));
    store_.put("z", std::string(100, 'w'));
    store_.del("k");  // leaves a link, with its page one byte short
    reopen(true);
    store_.put("z", std::string(99, 'w'));
    orvix::gsl::hash_keep_every_pair(store_.db(), true);
    EXPECT_EQ(store_.put("net", "clock"), 0);
    EXPECT_EQ(store_.get("net"), "clock");
    EXPECT_EQ(store_.get("z"), std::string(99, 'w'));
}

TEST_F(HashLosses, PairThatFillsAPageOneByteShortGoesToAnotherOne) {
    // By the free word it fits, and would then leave no room for a link.
    make(false);
    store_.put("k", std::string(100, 'v'));
    store_.del("k");
    EXPECT_EQ(store_.put("net", std::string(47, 'v')), 0);
    EXPECT_EQ(store_.put("other", std::string(47, 'w')), 0);
    EXPECT_EQ(store_.get("net"), std::string(47, 'v'));
    EXPECT_EQ(store_.get("other"), std::string(47, 'w'));
    expect_sound(report_on(store_));
}

TEST_F(HashLosses, FileIsTheSameEitherWay) {
    std::string bytes[2];
    for (const bool careful : {false, true}) {
        make(careful);
        for (int i = 0; i < 300; ++i) {
            store_.put(std::to_string(i), std::string(static_cast<std::size_t>(i % 40), 'v'));
        }
        store_.put("big", std::string(500, 'b'));
        ASSERT_EQ(store_.close(), 0);
        bytes[careful ? 1 : 0] = directory_.read("store");
    }
    EXPECT_EQ(bytes[0], bytes[1]);
}

}  // namespace
