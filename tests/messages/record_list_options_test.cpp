#include "messages/list.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

namespace {

using orvix::test::List;
using orvix::test::numbers;

int* as_value(char* text) { return reinterpret_cast<int*>(text); }

// Options that read text take an int*, so it is kept where an int may lie.
struct TextBuffer {
    alignas(int) char text[256] = "before";
};

std::string name_of(void* list) {
    TextBuffer buffer;
    EXPECT_TRUE(glist_query(list, 22, as_value(buffer.text)));
    return buffer.text;
}

bool rename(void* list, const std::string& name) {
    TextBuffer buffer;
    name.copy(buffer.text, sizeof buffer.text - 1);
    buffer.text[name.size()] = '\0';
    return glist_set(list, 22, as_value(buffer.text));
}

void* create(int flags, const std::string& name) {
    void* list = nullptr;
    std::string copy = name;
    EXPECT_TRUE(glist_create(&list, flags, nullptr, copy.data()));
    return list;
}

TEST(GlistQuery, OptionsOutsideTheTableGiveFalseAndStoreNothing) {
    const List list;
    for (const int option : {19, 30, 0, -1, INT_MAX, INT_MIN}) {
        int value = 77;
        EXPECT_FALSE(glist_query(list.handle(), option, &value)) << option;
        EXPECT_EQ(value, 77) << option;
    }
}

TEST(GlistQuery, NullListStoresZeroForNumbersAndAnEmptyName) {
    for (const int option : {20, 21, 28}) {
        int value = 77;
        EXPECT_FALSE(glist_query(nullptr, option, &value)) << option;
        EXPECT_EQ(value, 0) << option;
    }
    TextBuffer buffer;
    EXPECT_FALSE(glist_query(nullptr, 22, as_value(buffer.text)));
    EXPECT_STREQ(buffer.text, "");
}

TEST(GlistQuery, NullListStoresNothingForOtherOptions) {
    for (const int option : {19, 23, 24, 25, 26, 27, 29, 30}) {
        int value = 77;
        EXPECT_FALSE(glist_query(nullptr, option, &value)) << option;
        EXPECT_EQ(value, 77) << option;
    }
}

TEST(GlistQuery, NullValueGivesFalseWhereItWouldBeStored) {
    const List list;
    for (const int option : {20, 21, 22, 28}) {
        EXPECT_FALSE(glist_query(list.handle(), option, nullptr)) << option;
        EXPECT_FALSE(glist_query(nullptr, option, nullptr)) << option;
    }
}

TEST(GlistQuery, CountsAreThoseOfTheList) {
    List list(numbers(5));
    int value = 12;
    EXPECT_TRUE(glist_set(list.handle(), 20, &value));
    value = 0;
    EXPECT_TRUE(glist_query(list.handle(), 20, &value));
    EXPECT_EQ(value, 12);
    EXPECT_TRUE(glist_query(list.handle(), 21, &value));
    EXPECT_EQ(value, 5);
}

TEST(GlistQuery, OpenListExists) { EXPECT_TRUE(glist_query(List().handle(), 23, nullptr)); }

TEST(GlistQuery, FlagsAreThoseOfTheCreation) {
    const List none;
    const List all(0x703);
    for (const int option : {24, 25, 27}) {
        EXPECT_FALSE(glist_query(none.handle(), option, nullptr)) << option;
        EXPECT_TRUE(glist_query(all.handle(), option, nullptr)) << option;
    }
    EXPECT_TRUE(glist_query(List(0x001).handle(), 24, nullptr));
    EXPECT_TRUE(glist_query(List(0x002).handle(), 25, nullptr));
    EXPECT_TRUE(glist_query(List(0x100).handle(), 27, nullptr));
}

TEST(GlistQuery, BitFourIsNotTakenFromTheCreation) { EXPECT_FALSE(glist_query(List(-1).handle(), 29, nullptr)); }

TEST(GlistQuery, ListHasOneReference) { EXPECT_FALSE(glist_query(List().handle(), 26, nullptr)); }

TEST(GlistQuery, StoreMakesTheListUnsorted) {
    List list(0x100);
    list.set_length(3);
    EXPECT_TRUE(glist_query(list.handle(), 27, nullptr));
    list.put(1, "x");
    EXPECT_FALSE(glist_query(list.handle(), 27, nullptr));
}

TEST(GlistQuery, NameIsThatOfTheCreation) {
    void* list = create(0, "measurements");
    EXPECT_EQ(name_of(list), "measurements");
    glist_close(list);
    EXPECT_EQ(name_of(List().handle()), "");
}

TEST(GlistQuery, NameKeeps128Bytes) {
    void* list = create(0, std::string(200, 'n'));
    EXPECT_EQ(name_of(list), std::string(128, 'n'));
    glist_close(list);
}

TEST(GlistSet, NameIsReplacedUpTo128Bytes) {
    void* list = create(0, "before");
    EXPECT_TRUE(rename(list, std::string(200, 'm')));
    EXPECT_EQ(name_of(list), std::string(128, 'm'));
    EXPECT_TRUE(rename(list, "short"));
    EXPECT_EQ(name_of(list), "short");
    glist_close(list);
}

TEST(GlistSet, BlockSizeIs256UntilItIsSet) {
    const List list;
    int value = 0;
    EXPECT_TRUE(glist_query(list.handle(), 28, &value));
    EXPECT_EQ(value, 256);
    value = -5;
    EXPECT_TRUE(glist_set(list.handle(), 28, &value));
    value = 0;
    EXPECT_TRUE(glist_query(list.handle(), 28, &value));
    EXPECT_EQ(value, -5);
}

TEST(GlistSet, OptionTwentyNineTogglesWhateverTheValue) {
    const List list;
    int value = 0;
    EXPECT_FALSE(glist_query(list.handle(), 29, nullptr));
    EXPECT_TRUE(glist_set(list.handle(), 29, &value));
    EXPECT_TRUE(glist_query(list.handle(), 29, nullptr));
    value = 1;
    EXPECT_TRUE(glist_set(list.handle(), 29, &value));
    EXPECT_FALSE(glist_query(list.handle(), 29, nullptr));
    EXPECT_TRUE(glist_set(list.handle(), 29, nullptr));
    EXPECT_TRUE(glist_query(list.handle(), 29, nullptr));
}

TEST(GlistSet, OtherOptionsAndANullListGiveFalse) {
    const List list;
    int value = 1;
    for (const int option : {19, 21, 23, 24, 25, 26, 27, 30}) {
        EXPECT_FALSE(glist_set(list.handle(), option, &value)) << option;
    }
    for (const int option : {20, 22, 28, 29}) {
        EXPECT_FALSE(glist_set(nullptr, option, &value)) << option;
    }
    for (const int option : {20, 22, 28}) {
        EXPECT_FALSE(glist_set(list.handle(), option, nullptr)) << option;
    }
}

}  // namespace
