// What no caller can bring about: a hook, further references, a sorted list with records.

#include "messages/list.h"
#include "messages/record_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

using namespace orvix::gsl;
using orvix::test::List;
using orvix::test::numbers;
using testing::ElementsAre;
using testing::Pair;

glist_header& header(const List& list) { return *as_list(list.handle()); }

std::vector<std::pair<int, unsigned>> seen;

bool take_over(glist_header*, ListOperation operation, std::uint32_t index) {
    seen.emplace_back(static_cast<int>(operation), index);
    return true;
}

TEST(RecordListHook, IsToldTheOperationAndEndsIt) {
    List list(numbers(3));
    seen.clear();
    auto* const declining = std::exchange(header(list).hook, take_over);
    char buffer[8] = "before";
    unsigned index = 4;
    EXPECT_TRUE(list.set_length(9));
    EXPECT_TRUE(glist_getstr(list.handle(), 8, buffer));
    EXPECT_TRUE(glist_getrec(list.handle(), 7, buffer, 1, nullptr));
    EXPECT_TRUE(list.put_bytes(6, "x"));
    EXPECT_TRUE(list.put(5, "x"));
    EXPECT_TRUE(list.move(1, 1));
    EXPECT_TRUE(glist_close(list.handle()));
    EXPECT_TRUE(glist_getkeyrec(list.handle(), &index, buffer, 1, nullptr));
    header(list).hook = declining;

    EXPECT_THAT(seen, ElementsAre(Pair(30, 9U), Pair(31, 8U), Pair(32, 7U), Pair(33, 6U), Pair(33, 5U), Pair(34, 1U),
                                  Pair(35, 0U), Pair(38, 4U)));
    EXPECT_STREQ(buffer, "before");
    EXPECT_THAT(list.texts(), ElementsAre("0", "1", "2"));
}

TEST(RecordListHook, IsNotAskedAboutProperties) {
    List list(numbers(3));
    seen.clear();
    auto* const declining = std::exchange(header(list).hook, take_over);
    EXPECT_EQ(list.length(), 3);
    list.set_mark(5);
    EXPECT_EQ(list.mark(), 5);
    header(list).hook = declining;
    EXPECT_TRUE(seen.empty());
}

TEST(RecordListReferences, CloseReleasesOneOfThem) {
    List list(numbers(2));
    header(list).ref_count = 2;
    EXPECT_TRUE(glist_query(list.handle(), 26, nullptr));
    EXPECT_TRUE(glist_close(list.handle()));
    EXPECT_FALSE(glist_query(list.handle(), 26, nullptr));
    EXPECT_THAT(list.texts(), ElementsAre("0", "1"));
}

TEST(RecordListHeader, HoldsWhatItWasCreatedWith) {
    char tag[] = "12345678";
    char name[] = "list";
    void* handle = nullptr;
    ASSERT_TRUE(glist_create(&handle, 0xfff, tag, name));
    const glist_header& list = *as_list(handle);
    EXPECT_EQ(std::string(list.tag, 8), "12345678");
    EXPECT_STREQ(*list.name_holder, "list");
    EXPECT_EQ(list.self, &list);
    EXPECT_EQ(list.ref_count, 1);
    EXPECT_EQ(list.flags, 0x703U);
    EXPECT_EQ(list.first_block, nullptr);
    EXPECT_EQ(list.last_link, &list.first_block);
    EXPECT_EQ(list.spare_last_slot, 0U);
    glist_close(handle);
}

TEST(RecordListBlocks, HoldThirtyRecordsByDefault) {
    const List list(numbers(31));
    const glist_block* first = header(list).first_block;
    EXPECT_EQ(first->used, 30U);
    EXPECT_EQ(first->last_slot, 29U);
    ASSERT_NE(first->next, nullptr);
    EXPECT_EQ(first->next->used, 1U);
    EXPECT_EQ(first->next->next, nullptr);
    EXPECT_EQ(header(List(numbers(30))).first_block->next, nullptr);
}

TEST(RecordListBlocks, CutToNothingLeavesNone) {
    List list(numbers(31));
    list.set_length(0);
    EXPECT_EQ(header(list).first_block, nullptr);
}

// A list that holds these texts and may be searched.
void make_sorted(List* list, const std::vector<std::string>& texts) {
    for (unsigned i = 0; i < texts.size(); ++i) list->put(i, texts[i]);
    header(*list).flags |= flag_sorted;
}

unsigned place_of(const List& list, std::string key) {
    unsigned index = 99;
    std::size_t copied = 0;
    key.resize(16);
    return glist_getkeyrec(list.handle(), &index, key.data(), 1, &copied) ? index : 99;
}

TEST(RecordListSearch, FindsEveryKeyOfAnAscendingList) {
    List list;
    make_sorted(&list, {"a", "b", "ba", "bb", "c", "d"});
    EXPECT_EQ(place_of(list, "a"), 0U);
    EXPECT_EQ(place_of(list, "b"), 1U);
    EXPECT_EQ(place_of(list, "ba"), 2U);
    EXPECT_EQ(place_of(list, "bb"), 3U);
    EXPECT_EQ(place_of(list, "c"), 4U);
    EXPECT_EQ(place_of(list, "d"), 5U);
    for (const char* key : {"", "A", "aa", "bc", "e"}) EXPECT_EQ(place_of(list, key), 99U) << key;
}

TEST(RecordListSearch, FindsEveryKeyOfADescendingList) {
    List list(0x200);
    make_sorted(&list, {"d", "c", "b", "a"});
    EXPECT_EQ(place_of(list, "d"), 0U);
    EXPECT_EQ(place_of(list, "c"), 1U);
    EXPECT_EQ(place_of(list, "b"), 2U);
    EXPECT_EQ(place_of(list, "a"), 3U);
    for (const char* key : {"", "bb", "e"}) EXPECT_EQ(place_of(list, key), 99U) << key;
}

TEST(RecordListSearch, FindsKeysInManyBlocks) {
    std::vector<std::string> texts;
    for (int i = 1000; i < 1200; ++i) texts.push_back(std::to_string(i));
    List list;
    make_sorted(&list, texts);
    for (unsigned i = 0; i < 200; ++i) EXPECT_EQ(place_of(list, texts[i]), i);
}

TEST(RecordListSearch, OrdersBySignedBytes) {
    List list;
    make_sorted(&list, {"\x80", "\xff", "a", "z"});
    EXPECT_EQ(place_of(list, "\x80"), 0U);
    EXPECT_EQ(place_of(list, "\xff"), 1U);
    EXPECT_EQ(place_of(list, "a"), 2U);
    EXPECT_EQ(place_of(list, "z"), 3U);
}

TEST(RecordListSearch, CopiesTheRecordOverTheKey) {
    List list;
    std::string record = "key\0value";
    record.assign("key\0value", 9);
    list.put_bytes(0, record);
    header(list).flags |= flag_sorted;
    char key[16] = "key";
    unsigned index = 99;
    std::size_t copied = 0;
    EXPECT_TRUE(glist_getkeyrec(list.handle(), &index, key, 9, &copied));
    EXPECT_EQ(index, 0U);
    EXPECT_EQ(copied, 9U);
    EXPECT_EQ(std::string(key, 9), record);
}

TEST(RecordListSearch, RecordWithoutAnEndIsComparedAsFarAsItGoes) {
    List list;
    list.put_bytes(0, "ke");
    list.put_bytes(1, "key");
    list.put_bytes(2, "keyx");
    header(list).flags |= flag_sorted;
    EXPECT_EQ(place_of(list, "ke"), 0U);
    EXPECT_EQ(place_of(list, "key"), 1U);
    EXPECT_EQ(place_of(list, "keyx"), 2U);
}

TEST(CompareRecord, IsTheOrderOfTheKeyAgainstTheRecord) {
    List list({"b"});
    const char* record = *header(list).first_block->slots;
    EXPECT_EQ(compare_record(record, "b"), 0);
    EXPECT_EQ(compare_record(record, "a"), -1);
    EXPECT_EQ(compare_record(record, "d"), 2);
    EXPECT_EQ(compare_record(record, "\xff"), -1 - 'b');
    EXPECT_EQ(compare_record(record, "ba"), 'a');
    EXPECT_EQ(compare_record(record, nullptr), -1);
    EXPECT_EQ(compare_record(nullptr, ""), 1);
    EXPECT_EQ(compare_record(nullptr, nullptr), 0);
}

}  // namespace
