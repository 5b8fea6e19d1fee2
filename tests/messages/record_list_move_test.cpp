#include "messages/list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>

namespace {

using orvix::test::List;
using orvix::test::numbers;
using testing::ElementsAre;
using testing::ElementsAreArray;

TEST(GlistMove, ByNothingSetsTheCountToTheLength) {
    List list(numbers(3));
    EXPECT_TRUE(list.move(99, 0));
    EXPECT_EQ(list.mark(), 3);
    EXPECT_THAT(list.texts(), ElementsAre("0", "1", "2"));
}

TEST(GlistMove, UpOpensAGap) {
    List list(numbers(4));
    EXPECT_TRUE(list.move(1, 2));
    EXPECT_THAT(list.texts(), ElementsAre("0", "", "", "1", "2", "3"));
    EXPECT_EQ(list.mark(), 6);
}

TEST(GlistMove, UpPassesBlocksWithoutAGap) {
    List list(numbers(100));
    EXPECT_TRUE(list.move(10, 35));
    std::vector<std::string> expected = numbers(100);
    expected.insert(expected.begin() + 10, 35, "");
    EXPECT_THAT(list.texts(), ElementsAreArray(expected));
}

TEST(GlistMove, UpFromTheEndSetsTheLengthAndLeavesTheCount) {
    List list(numbers(3));
    list.set_mark(7);
    EXPECT_TRUE(list.move(3, 2));
    EXPECT_EQ(list.length(), 5);
    EXPECT_TRUE(list.move(10, 1));
    EXPECT_EQ(list.length(), 11);
    EXPECT_EQ(list.mark(), 7);
}

TEST(GlistMove, DownClosesUpAndFreesWhatWasThere) {
    List list(numbers(5));
    EXPECT_TRUE(list.move(2, -1));
    EXPECT_THAT(list.texts(), ElementsAre("0", "2", "3", "4"));
    EXPECT_EQ(list.mark(), 4);
}

TEST(GlistMove, DownBySeveralCutsTheListByAsMany) {
    List list(numbers(10));
    EXPECT_TRUE(list.move(7, -5));
    EXPECT_THAT(list.texts(), ElementsAre("0", "1", "7", "8", "9"));
}

TEST(GlistMove, DownBelowTheStartGivesFalse) {
    List list(numbers(5));
    EXPECT_FALSE(list.move(0, -1));
    EXPECT_FALSE(list.move(2, -3));
    EXPECT_FALSE(list.move(4, INT_MIN));
    EXPECT_THAT(list.texts(), ElementsAreArray(numbers(5)));
    EXPECT_EQ(list.mark(), 0);
}

TEST(GlistMove, DownFromBehindTheEndGivesFalse) {
    List list(numbers(5));
    EXPECT_FALSE(list.move(5, -1));
    EXPECT_FALSE(list.move(UINT_MAX, -1));
    EXPECT_FALSE(list.move(UINT_MAX, INT_MIN));
    EXPECT_EQ(list.length(), 5);
}

TEST(GlistMove, BeyondAllIndicesGivesFalse) {
    List list(numbers(5));
    EXPECT_FALSE(list.move(UINT_MAX, 1));
    EXPECT_FALSE(list.move(UINT_MAX - 1, INT_MAX));
    EXPECT_THAT(list.texts(), ElementsAreArray(numbers(5)));
}

TEST(GlistMove, DownLeavesTheLastPlaceOfAFullBlockAsItIs) {
    List list(numbers(35));
    EXPECT_TRUE(list.move(20, -1));
    // Record 29 stays. Records 20 to 28 and 30 to 34 close up around it.
    std::vector<std::string> expected = numbers(35);
    expected.erase(expected.begin() + 29);
    expected.erase(expected.begin() + 19);
    expected.insert(expected.begin() + 29, "29");
    EXPECT_THAT(list.texts(), ElementsAreArray(expected));
    EXPECT_EQ(list.length(), 34);
}

TEST(GlistMove, DownWithinTheLastBlockOfAListHasNoGap) {
    List list(numbers(40));
    EXPECT_TRUE(list.move(35, -2));
    std::vector<std::string> expected = numbers(40);
    expected.erase(expected.begin() + 33, expected.begin() + 35);
    EXPECT_THAT(list.texts(), ElementsAreArray(expected));
}

TEST(GlistMove, DownInAFullSingleBlockLeavesItsLastPlaceToTheCut) {
    List list(numbers(30));
    EXPECT_TRUE(list.move(28, -1));
    // Record 28 goes to 27; 29 is passed over, and the cut by one takes it.
    std::vector<std::string> expected = numbers(27);
    expected.push_back("28");
    expected.push_back("");
    EXPECT_THAT(list.texts(), ElementsAreArray(expected));
}

TEST(GlistMove, WhereRecordsRunOutTheirPlacesBecomeEmpty) {
    List list(numbers(31));
    EXPECT_TRUE(list.move(28, -5));
    // Three records are counted, but 29 is passed over: 28 goes to 23, 30 to 24, and nothing to 25.
    std::vector<std::string> expected = numbers(26);
    expected[23] = "28";
    expected[24] = "30";
    expected[25] = "";
    EXPECT_THAT(list.texts(), ElementsAreArray(expected));
}

TEST(GlistMove, StartInALastPlaceTakesItsRecord) {
    List list(numbers(33));
    EXPECT_TRUE(list.move(29, -3));
    // 29, 30 and 31 go to 26, 27 and 28; 32 goes past the emptied last place to 30, where the cut by three takes it.
    std::vector<std::string> expected = numbers(26);
    for (const char* text : {"29", "30", "31", ""}) expected.push_back(text);
    EXPECT_THAT(list.texts(), ElementsAreArray(expected));
}

TEST(GlistMove, TargetInALastPlaceGivesIt) {
    List list(numbers(33));
    EXPECT_TRUE(list.move(30, -1));
    std::vector<std::string> expected = numbers(29);
    for (const char* text : {"30", "31", "32"}) expected.push_back(text);
    EXPECT_THAT(list.texts(), ElementsAreArray(expected));
}

TEST(GlistMove, DownByOneFromALastPlaceFreesAllBehindIt) {
    List list(numbers(33));
    EXPECT_TRUE(list.move(29, -1));
    // The target steps over the last place, into which the source does not step either: from there on both walk
    // together.
    std::vector<std::string> expected = numbers(28);
    expected.push_back("29");
    expected.insert(expected.end(), 3, "");
    EXPECT_THAT(list.texts(), ElementsAreArray(expected));
}

TEST(GlistMove, SmallBlocksPassOverEverySecondRecord) {
    List list;
    list.set_block_bytes(32);
    for (unsigned i = 0; i < 8; ++i) list.put(i, std::to_string(i));
    EXPECT_TRUE(list.move(2, -2));
    EXPECT_THAT(list.texts(), ElementsAre("2", "1", "4", "3", "6", "5"));
}

}  // namespace
