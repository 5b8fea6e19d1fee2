#include <orvix/gsl/search_table.h>

#include "support/host.h"
#include "support/temporary_directory.h"

#include <orvix/gsl/hash_store.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <string>

namespace {

using orvix::gsl::ENTER;
using orvix::gsl::entry;
using orvix::gsl::FIND;
using orvix::gsl::hcreate;
using orvix::gsl::hdestroy;
using orvix::gsl::hsearch;

entry* enter(std::string key, std::string data) { return hsearch({key.data(), data.data()}, ENTER); }

// The text of a key, "(none)" if there is none.
std::string find(std::string key) {
    const entry* const found = hsearch({key.data(), nullptr}, FIND);
    return found != nullptr ? found->data : "(none)";
}

class SearchTable : public testing::Test {
protected:
    void SetUp() override {
        table_ = reinterpret_cast<__db*>(hcreate(10));
        ASSERT_NE(table_, nullptr);
    }
    void TearDown() override { hdestroy(); }

    __db* table_ = nullptr;
};

TEST(SearchTableThatIsNotThere, FindsAndTakesNothing) {
    EXPECT_EQ(find("key"), "(none)");
    EXPECT_EQ(enter("key", "data"), nullptr);
    hdestroy();
}

TEST_F(SearchTable, FindsWhatWasEntered) {
    EXPECT_NE(enter("key", "data"), nullptr);
    EXPECT_EQ(find("key"), "data");
    EXPECT_EQ(find("other"), "(none)");
}

TEST_F(SearchTable, EnterGivesTheCallersOwnTexts) {
    char key[] = "key";
    char data[] = "data";
    const entry* const entered = hsearch({key, data}, ENTER);
    ASSERT_NE(entered, nullptr);
    EXPECT_EQ(entered->key, key);
    EXPECT_EQ(entered->data, data);
}

TEST_F(SearchTable, FindGivesTheCallersKeyAndTheTablesText) {
    char key[] = "key";
    char data[] = "data";
    hsearch({key, data}, ENTER);
    char again[] = "key";
    const entry* const found = hsearch({again, nullptr}, FIND);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->key, again);
    EXPECT_STREQ(found->data, "data");
    EXPECT_NE(found->data, data);
}

TEST_F(SearchTable, AllCallsGiveTheSameEntry) {
    const entry* const first = enter("a", "1");
    EXPECT_EQ(enter("b", "2"), first);
    char key[] = "a";
    EXPECT_EQ(hsearch({key, nullptr}, FIND), first);
}

TEST_F(SearchTable, EnteringAPresentKeyGivesNullAndKeepsItsText) {
    enter("key", "first");
    EXPECT_EQ(enter("key", "second"), nullptr);
    EXPECT_EQ(find("key"), "first");
}

TEST_F(SearchTable, KeysMatchAsWholes) {
    enter("net", "short");
    enter("network", "long");
    EXPECT_EQ(find("net"), "short");
    EXPECT_EQ(find("network"), "long");
    EXPECT_EQ(find("netw"), "(none)");
    EXPECT_EQ(find(""), "(none)");
}

TEST_F(SearchTable, KeyIsWhatComesBeforeItsFirstZero) {
    char key[] = "net\0rest";
    char data[] = "data";
    hsearch({key, data}, ENTER);
    EXPECT_EQ(find("net"), "data");
}

TEST_F(SearchTable, EmptyTextsAreEntered) {
    EXPECT_NE(enter("", ""), nullptr);
    EXPECT_EQ(find(""), "");
}

TEST_F(SearchTable, AnyOtherActionLooksForTheKey) {
    enter("key", "data");
    char key[] = "key";
    EXPECT_NE(hsearch({key, nullptr}, static_cast<orvix::gsl::ACTIONSEARCH>(7)), nullptr);
}

TEST_F(SearchTable, NullTextsAreRefused) {
    char key[] = "key";
    errno = 0;
    EXPECT_EQ(hsearch({nullptr, nullptr}, FIND), nullptr);
    EXPECT_EQ(errno, EINVAL);
    EXPECT_EQ(hsearch({key, nullptr}, ENTER), nullptr);
    EXPECT_EQ(errno, EINVAL);
}

TEST_F(SearchTable, DestroyingTwiceDoesNothingTheSecondTime) {
    enter("key", "data");
    hdestroy();
    hdestroy();
    EXPECT_EQ(find("key"), "(none)");
}

TEST_F(SearchTable, NewTableIsEmptyAndTheOldOneStaysOpen) {
    hdestroy();
    auto* const old = reinterpret_cast<__db*>(hcreate(10));
    enter("key", "data");
    ASSERT_NE(hcreate(10), 0);
    EXPECT_EQ(find("key"), "(none)");
    char text[] = "key";
    const DBT key{text, sizeof text};
    DBT value;
    EXPECT_EQ(old->get(old, &key, &value, 0), 0);
    EXPECT_EQ(old->close(old), 0);
}

TEST_F(SearchTable, GrowsPastItsExpectedCountAndSpillsToAFile) {
    const orvix::test::TemporaryDirectory directory(orvix::test::TemporaryDirectory::Enter::yes);
    EXPECT_EQ(table_->fd(table_), -1);
    constexpr int count = 20000;
    for (int i = 0; i < count; ++i) {
        ASSERT_NE(enter("key" + std::to_string(i), "data of " + std::to_string(i)), nullptr) << i;
    }
    for (int i = 0; i < count; ++i) ASSERT_EQ(find("key" + std::to_string(i)), "data of " + std::to_string(i));
    EXPECT_NE(table_->fd(table_), -1);
    EXPECT_EQ(std::filesystem::is_empty("."), orvix::test::removed_names_go_at_once());
    hdestroy();
    EXPECT_TRUE(std::filesystem::is_empty("."));
}

TEST_F(SearchTable, TakesTextsLargerThanItsPages) {
    const std::string key(1000, 'k');
    const std::string data(100000, 'd');
    EXPECT_NE(enter(key, data), nullptr);
    EXPECT_EQ(find(key), data);
}

}  // namespace
