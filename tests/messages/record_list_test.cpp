#include "messages/list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>

namespace {

using namespace std::string_literals;
using orvix::test::List;
using orvix::test::numbers;
using testing::ElementsAre;
using testing::ElementsAreArray;

TEST(GlistCreate, NewListIsEmpty) {
    const List list;
    EXPECT_EQ(list.length(), 0);
    EXPECT_EQ(list.mark(), 0);
    char buffer[4] = "abc";
    EXPECT_FALSE(glist_getstr(list.handle(), 0, buffer));
    EXPECT_STREQ(buffer, "abc");
}

TEST(GlistCreate, TagOfEightBytesNeedsNoEnd) {
    char tag[] = {'a', 'b', 'c', 'd', 'e', 'f', 'g', 'h', 'i', '\0'};
    char name[] = "list";
    void* handle = nullptr;
    ASSERT_TRUE(glist_create(&handle, 0, tag, name));
    EXPECT_TRUE(glist_close(handle));
}

TEST(GlistCreate, WithoutAPlaceForTheHandleMakesNone) { EXPECT_FALSE(glist_create(nullptr, 0, nullptr, nullptr)); }

TEST(GlistClose, NullGivesFalse) { EXPECT_FALSE(glist_close(nullptr)); }

TEST(GlistClose, ListsMayBeClosedInAnyOrder) {
    void* lists[4];
    for (void*& list : lists) ASSERT_TRUE(glist_create(&list, 0, nullptr, nullptr));
    for (const int i : {1, 3, 0, 2}) EXPECT_TRUE(glist_close(lists[i]));
    EXPECT_EQ(List().length(), 0);
}

TEST(RecordList, NullHandleGivesFalseEverywhere) {
    char text[] = "text";
    char buffer[16] = "before";
    unsigned index = 7;
    std::size_t copied = 7;
    EXPECT_FALSE(glist_setlength(nullptr, 1));
    EXPECT_FALSE(glist_putrec(nullptr, 0, text, 4));
    EXPECT_FALSE(glist_putstr(nullptr, 0, text));
    EXPECT_FALSE(glist_getrec(nullptr, 0, buffer, 4, &copied));
    EXPECT_FALSE(glist_getstr(nullptr, 0, buffer));
    EXPECT_FALSE(glist_getkeyrec(nullptr, &index, buffer, 4, &copied));
    EXPECT_FALSE(glist_move(nullptr, 0, 0));
    EXPECT_STREQ(buffer, "before");
    EXPECT_EQ(index, 7U);
    EXPECT_EQ(copied, 7U);
}

TEST(GlistPutstr, StoresACopy) {
    List list;
    std::string text = "one";
    EXPECT_TRUE(glist_putstr(list.handle(), 0, text.data()));
    text = "two";
    EXPECT_EQ(list.text(0), "one");
    EXPECT_EQ(list.length(), 1);
}

TEST(GlistPutstr, ReplacesWhatWasThere) {
    List list(numbers(3));
    EXPECT_TRUE(list.put(1, "a longer text than before"));
    EXPECT_THAT(list.texts(), ElementsAre("0", "a longer text than before", "2"));
}

TEST(GlistPutstr, EmptyTextMakesTheRecordEmpty) {
    List list(numbers(2));
    EXPECT_TRUE(list.put(1, ""));
    std::size_t copied = 7;
    char buffer[4] = "abc";
    EXPECT_TRUE(glist_getrec(list.handle(), 1, buffer, 3, &copied));
    EXPECT_EQ(copied, 0U);
    EXPECT_STREQ(buffer, "abc");
    EXPECT_EQ(list.length(), 2);
}

TEST(GlistPutstr, NullTextChangesNothing) {
    List list(numbers(1));
    EXPECT_FALSE(glist_putstr(list.handle(), 0, nullptr));
    EXPECT_FALSE(glist_putstr(list.handle(), 5, nullptr));
    EXPECT_THAT(list.texts(), ElementsAre("0"));
}

TEST(GlistPutrec, StoreBehindTheEndMakesEmptyRecordsInFront) {
    List list;
    EXPECT_TRUE(list.put(100, "x"));
    EXPECT_EQ(list.length(), 101);
    EXPECT_EQ(list.text(5), "");
    EXPECT_EQ(list.text(100), "x");
    EXPECT_EQ(list.text(101), "(none)");
}

TEST(GlistPutrec, SizeOfZeroMakesTheRecordEmpty) {
    List list(numbers(1));
    char byte = 'x';
    EXPECT_TRUE(glist_putrec(list.handle(), 0, &byte, 0));
    EXPECT_TRUE(glist_putrec(list.handle(), 3, nullptr, 0));
    EXPECT_THAT(list.texts(), ElementsAre("", "", "", ""));
}

TEST(GlistPutrec, NullDataChangesNothing) {
    List list(numbers(1));
    EXPECT_FALSE(glist_putrec(list.handle(), 0, nullptr, 3));
    EXPECT_THAT(list.texts(), ElementsAre("0"));
}

TEST(GlistPutrec, LastIndexOfAllIsNoPlace) {
    List list(numbers(2));
    EXPECT_FALSE(list.put(UINT_MAX, "x"));
    EXPECT_THAT(list.texts(), ElementsAre("0", "1"));
}

TEST(GlistPutrec, LeavesTheCallersCountAlone) {
    List list;
    list.set_mark(7);
    list.put(3, "x");
    EXPECT_EQ(list.mark(), 7);
}

TEST(GlistGetrec, CopiesTheBytesAskedFor) {
    List list;
    list.put_bytes(0, "a\0bcd"s);
    char buffer[8] = "-------";
    std::size_t copied = 0;
    EXPECT_TRUE(glist_getrec(list.handle(), 0, buffer, 4, &copied));
    EXPECT_EQ(copied, 4U);
    EXPECT_EQ(std::string(buffer, 7), "a\0bc---"s);
}

TEST(GlistGetrec, EmptyRecordGivesTrueAndCopiesNothing) {
    List list;
    list.set_length(1);
    char buffer[4] = "abc";
    std::size_t copied = 7;
    EXPECT_TRUE(glist_getrec(list.handle(), 0, buffer, 3, &copied));
    EXPECT_EQ(copied, 0U);
    EXPECT_STREQ(buffer, "abc");
}

TEST(GlistGetrec, NullBufferOrSizeOfZeroCopiesNothing) {
    List list(numbers(1));
    std::size_t copied = 7;
    EXPECT_TRUE(glist_getrec(list.handle(), 0, nullptr, 2, &copied));
    EXPECT_EQ(copied, 0U);
    char byte = '?';
    copied = 7;
    EXPECT_TRUE(glist_getrec(list.handle(), 0, &byte, 0, &copied));
    EXPECT_EQ(copied, 0U);
    EXPECT_EQ(byte, '?');
}

TEST(GlistGetrec, IndexBehindTheEndGivesFalse) {
    List list(numbers(1));
    char byte = '?';
    EXPECT_FALSE(glist_getrec(list.handle(), 1, &byte, 1, nullptr));
    EXPECT_FALSE(glist_getrec(list.handle(), UINT_MAX, &byte, 1, nullptr));
}

TEST(GlistGetrec, MoreThanWasStoredIsFilledWithZeroBytes) {
    List list;
    list.put_bytes(0, "ab");
    char buffer[8] = "-------";
    std::size_t copied = 0;
    EXPECT_TRUE(glist_getrec(list.handle(), 0, buffer, 5, &copied));
    EXPECT_EQ(copied, 5U);
    EXPECT_EQ(std::string(buffer, 7), "ab\0\0\0--"s);
}

TEST(GlistGetstr, EndsAtTheFirstZeroByte) {
    List list;
    list.put_bytes(0, "ab\0cd"s);
    EXPECT_EQ(list.text(0), "ab");
}

TEST(GlistGetstr, RecordWithoutAZeroByteGivesAllOfIt) {
    List list;
    list.put_bytes(0, "abcdefgh");
    EXPECT_EQ(list.text(0), "abcdefgh");
}

TEST(GlistGetstr, EmptyRecordGivesTheEmptyText) {
    List list;
    list.set_length(1);
    char buffer[4] = "abc";
    EXPECT_TRUE(glist_getstr(list.handle(), 0, buffer));
    EXPECT_STREQ(buffer, "");
}

TEST(GlistGetstr, NullBufferGivesFalse) {
    const List list(numbers(1));
    EXPECT_FALSE(glist_getstr(list.handle(), 0, nullptr));
}

TEST(GlistSetlength, GrowsWithEmptyRecords) {
    List list(numbers(2));
    EXPECT_TRUE(list.set_length(4));
    EXPECT_THAT(list.texts(), ElementsAre("0", "1", "", ""));
}

TEST(GlistSetlength, CutsAndFrees) {
    List list(numbers(100));
    for (const unsigned length : {99U, 61U, 60U, 59U, 31U, 30U, 29U, 1U}) {
        EXPECT_TRUE(list.set_length(length));
        EXPECT_THAT(list.texts(), ElementsAreArray(numbers(static_cast<int>(length))));
    }
    EXPECT_TRUE(list.set_length(0));
    EXPECT_EQ(list.length(), 0);
}

TEST(GlistSetlength, CutListGrowsAgain) {
    List list(numbers(75));
    list.set_length(33);
    list.put(33, "new");
    EXPECT_EQ(list.text(32), "32");
    EXPECT_EQ(list.text(33), "new");
    list.set_length(0);
    list.put(0, "first");
    EXPECT_THAT(list.texts(), ElementsAre("first"));
}

TEST(GlistSetlength, CutRecordsDoNotComeBack) {
    List list(numbers(40));
    list.set_length(5);
    list.set_length(40);
    EXPECT_EQ(list.text(4), "4");
    EXPECT_EQ(list.text(5), "");
    EXPECT_EQ(list.text(35), "");
}

TEST(GlistSetlength, SameLengthIsTrue) {
    List list(numbers(3));
    EXPECT_TRUE(list.set_length(3));
    EXPECT_THAT(list.texts(), ElementsAre("0", "1", "2"));
}

TEST(GlistSetlength, LeavesTheCallersCountAlone) {
    List list(numbers(3));
    list.set_mark(9);
    list.set_length(1);
    list.set_length(5);
    EXPECT_EQ(list.mark(), 9);
}

TEST(BlockSize, OfThirtyTwoBytesHoldsTwoRecords) {
    List list;
    list.set_block_bytes(32);
    for (unsigned i = 0; i < 9; ++i) EXPECT_TRUE(list.put(i, std::to_string(i)));
    EXPECT_THAT(list.texts(), ElementsAreArray(numbers(9)));
}

TEST(BlockSize, MayChangeWhileTheListGrows) {
    List list;
    int bytes[] = {32, 256, 40, 33, 1000, 47};
    for (unsigned i = 0; i < 600; ++i) {
        list.set_block_bytes(bytes[i % 6]);
        ASSERT_TRUE(list.put(i, std::to_string(i)));
    }
    EXPECT_THAT(list.texts(), ElementsAreArray(numbers(600)));
}

TEST(BlockSize, WithoutRoomForABlockTheListCannotGrow) {
    for (const int bytes : {0, 31, 1, -1, -256, INT_MIN}) {
        SCOPED_TRACE(bytes);
        List list;
        list.set_block_bytes(bytes);
        EXPECT_FALSE(list.set_length(1));
        EXPECT_FALSE(list.put(0, "x"));
        EXPECT_EQ(list.length(), 0);
    }
}

TEST(BlockSize, ListGrowsAsFarAsItsLastBlockGoes) {
    List list(numbers(1));
    list.set_block_bytes(0);
    EXPECT_FALSE(list.set_length(31));
    EXPECT_EQ(list.length(), 30);
    EXPECT_FALSE(list.put(30, "x"));
    EXPECT_TRUE(list.put(29, "x"));
}

TEST(GlistGetkeyrec, ListThatWasNotCreatedSortedGivesFalse) {
    List list;
    list.set_length(3);
    unsigned index = 7;
    EXPECT_FALSE(glist_getkeyrec(list.handle(), &index, nullptr, 0, nullptr));
    EXPECT_EQ(index, 7U);
}

TEST(GlistGetkeyrec, EmptyListGivesFalse) {
    const List list(0x100);
    char key[] = "a";
    unsigned index = 7;
    EXPECT_FALSE(glist_getkeyrec(list.handle(), &index, key, 1, nullptr));
}

TEST(GlistGetkeyrec, EmptyRecordIsFoundByANullKeyInTheMiddleFirst) {
    List list(0x100);
    list.set_length(5);
    unsigned index = 7;
    std::size_t copied = 7;
    EXPECT_TRUE(glist_getkeyrec(list.handle(), &index, nullptr, 4, &copied));
    EXPECT_EQ(index, 2U);
    EXPECT_EQ(copied, 0U);
}

TEST(GlistGetkeyrec, EmptyRecordIsNotFoundByAText) {
    for (const int flags : {0x100, 0x300}) {
        List list(flags);
        list.set_length(5);
        char key[] = "";
        unsigned index = 7;
        EXPECT_FALSE(glist_getkeyrec(list.handle(), &index, key, 1, nullptr));
    }
}

TEST(GlistGetkeyrec, AnyStoreEndsTheSearching) {
    List list(0x100);
    list.set_length(2);
    EXPECT_TRUE(glist_getkeyrec(list.handle(), nullptr, nullptr, 0, nullptr));
    list.put(0, "");
    EXPECT_FALSE(glist_getkeyrec(list.handle(), nullptr, nullptr, 0, nullptr));

    List other(0x100);
    other.put(0, "a");
    char key[] = "a";
    EXPECT_FALSE(glist_getkeyrec(other.handle(), nullptr, key, 2, nullptr));
}

}  // namespace
