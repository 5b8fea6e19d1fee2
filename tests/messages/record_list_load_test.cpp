#include "messages/list.h"
#include "support/temporary_directory.h"

#include <orvix/gsl/streams.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <memory>

namespace {

using namespace std::string_literals;
using orvix::test::List;
using orvix::test::numbers;
using orvix::test::TemporaryDirectory;
using testing::ElementsAre;
using testing::IsEmpty;

class GlistLoad : public testing::Test {
protected:
    // Loads a file of these bytes; a failure shows as its message in front of the records.
    std::vector<std::string> loaded(const std::string& bytes) {
        List list;
        char message[1024] = "untouched";
        if (!list.load(directory_.write("file", bytes), message)) ADD_FAILURE() << message;
        EXPECT_STREQ(message, "untouched");
        EXPECT_EQ(list.mark(), list.length());
        return list.texts();
    }

    TemporaryDirectory directory_;
    char message_[1024] = "untouched";
};

TEST_F(GlistLoad, EmptyFileGivesTrueWithACountOfZero) {
    List list;
    list.set_mark(7);
    EXPECT_TRUE(list.load(directory_.write("file", ""), message_));
    EXPECT_EQ(list.mark(), 0);
    EXPECT_EQ(list.length(), 0);
}

TEST_F(GlistLoad, MakesARecordOfEachLine) {
    EXPECT_THAT(loaded("one\ntwo\nthree\n"), ElementsAre("one", "two", "three"));
    EXPECT_THAT(loaded("one\ntwo"), ElementsAre("one", "two"));
}

TEST_F(GlistLoad, EmptyLineTakesAnIndexAndMakesAnEmptyRecord) {
    List list;
    EXPECT_TRUE(list.load(directory_.write("file", "one\n\nthree\n"), message_));
    EXPECT_THAT(list.texts(), ElementsAre("one", "", "three"));
    EXPECT_EQ(list.mark(), 3);
    std::size_t copied = 7;
    char byte;
    EXPECT_TRUE(glist_getrec(list.handle(), 1, &byte, 1, &copied));
    EXPECT_EQ(copied, 0U);
}

TEST_F(GlistLoad, TabsBecomeBlanks) { EXPECT_THAT(loaded("\ta\t\tb\t\n\t\n"), ElementsAre(" a  b ", " ")); }

TEST_F(GlistLoad, HasNoCommentsAndNoEscapes) {
    EXPECT_THAT(loaded("# one\n\\n\\t\n  two  \n"), ElementsAre("# one", "\\n\\t", "  two  "));
}

TEST_F(GlistLoad, LineEndsAreThoseOfTheLineReader) {
    EXPECT_THAT(loaded("a\r\nb\rgone\nc\x1agone\nd\0gone\n\r\ne\n\x1a\ngone\n"s),
                ElementsAre("a", "b", "c", "d", "", "e"));
}

TEST_F(GlistLoad, LongLineKeepsIts1023Bytes) {
    const std::string kept(1023, 'x');
    EXPECT_THAT(loaded(kept + "yyy\nnext\n" + kept + "\nlast"), ElementsAre(kept, "next", kept, "last"));
    EXPECT_THAT(loaded(kept + std::string(40'000, 'y') + "\nnext\n"), ElementsAre(kept, "next"));
}

TEST_F(GlistLoad, OverwritesFromTheStartAndKeepsALongerTail) {
    List list(numbers(5));
    EXPECT_TRUE(list.load(directory_.write("file", "a\n\nc\n"), message_));
    EXPECT_THAT(list.texts(), ElementsAre("a", "", "c", "3", "4"));
    EXPECT_EQ(list.mark(), 3);
}

TEST_F(GlistLoad, LoadedRecordsAreReplacedLikeAnyOther) {
    List list;
    EXPECT_TRUE(list.load(directory_.write("file", "a\nb\nc\n"), message_));
    EXPECT_TRUE(list.put(1, "a much longer text than the one before it"));
    EXPECT_TRUE(list.load(directory_.write("file", "d\n"), message_));
    EXPECT_TRUE(list.move(1, -1));
    EXPECT_THAT(list.texts(), ElementsAre("a much longer text than the one before it", "c"));
}

TEST_F(GlistLoad, MakesTheListUnsorted) {
    List list(0x100);
    EXPECT_TRUE(list.load(directory_.write("file", "a\n"), message_));
    EXPECT_FALSE(glist_query(list.handle(), 27, nullptr));
}

TEST_F(GlistLoad, NullListTellsSo) {
    std::string file = directory_.write("file", "a\n");
    EXPECT_FALSE(glist_load(nullptr, file.data(), message_));
    EXPECT_EQ(message_, "<GLIST_LOAD> (0) not open: " + file);
}

TEST_F(GlistLoad, MissingFileTellsSo) {
    List list;
    list.set_mark(7);
    const std::string file = directory_.name("missing");
    EXPECT_FALSE(list.load(file, message_));
    EXPECT_EQ(message_, "Not found: " + file);
    EXPECT_EQ(list.mark(), 7);
}

TEST_F(GlistLoad, DirectoryIsNotFound) {
    List list;
    EXPECT_FALSE(list.load(directory_.name(), message_));
    EXPECT_EQ(message_, "Not found: " + directory_.name());
}

TEST_F(GlistLoad, NullNameIsNotFound) {
    const List list;
    EXPECT_FALSE(glist_load(list.handle(), nullptr, message_));
    EXPECT_STREQ(message_, "Not found: ");
}

TEST_F(GlistLoad, WithoutRoomForABlockTellsThatItIsIncomplete) {
    List list(numbers(29));
    list.set_mark(7);
    list.set_block_bytes(0);
    std::string bytes;
    for (int i = 0; i < 40; ++i) bytes += "line " + std::to_string(i) + "\n";
    const std::string file = directory_.write("file", bytes);
    EXPECT_FALSE(list.load(file, message_));
    EXPECT_EQ(message_, "Load incomplete: " + file);
    EXPECT_EQ(list.mark(), 7);
    EXPECT_EQ(list.length(), 30);
    EXPECT_EQ(list.text(29), "line 29");
}

TEST_F(GlistLoad, MessageIsCutTo1023Bytes) {
    List list;
    const std::string file = "C:\\" + std::string(3000, 'x');
    EXPECT_FALSE(list.load(file, message_));
    EXPECT_EQ(message_, ("Not found: " + file).substr(0, 1023));
}

TEST_F(GlistLoad, MessageMayBeNull) {
    List list;
    EXPECT_FALSE(list.load(directory_.name("missing"), nullptr));
    EXPECT_FALSE(glist_load(nullptr, nullptr, nullptr));
}

TEST_F(GlistLoad, TakesManyLines) {
    std::string bytes;
    for (int i = 0; i < 20'000; ++i) bytes += std::to_string(i) + "\n";
    List list;
    EXPECT_TRUE(list.load(directory_.write("file", bytes), message_));
    EXPECT_EQ(list.mark(), 20'000);
    EXPECT_EQ(list.text(19'999), "19999");
    EXPECT_EQ(list.text(12'345), "12345");
}

}  // namespace
