#include "text/line_parser_models.h"

#include <gtest/gtest.h>
#include <orvix/gsl/line_parser.h>
#include <support/buffer.h>
#include <support/random_text.h>

#include <cstring>
#include <string>

using namespace orvix::test;

namespace {

// Lines of fixed shape. Every test begins with a table that holds "w", "x", "y" and "z", at 0, 2, 4 and 6.
class FixedLine : public testing::Test {
protected:
    FixedLine() { EXPECT_TRUE(parse3("w x y z")); }

    bool parse2(const std::string& line, const char* delims = " ") { return parse(gparse_parline2, line, delims); }
    bool parse3(const std::string& line, const char* delims = " ") { return parse(gparse_parline3, line, delims); }

    std::string get2(std::size_t index) {
        Buffer dst = room_for(line_.text().size() + 1);
        EXPECT_TRUE(gparse_getclump2(&record_, index, dst));
        return dst.text();
    }

    std::string get3(std::size_t index) {
        Buffer dst = room_for(line_.text().size() + 2);
        EXPECT_TRUE(gparse_getclump3(&record_, index, dst));
        const std::string text = dst.text();
        EXPECT_EQ(dst.get()[text.size() + 1], '\0');
        return text;
    }

    std::size_t closed() const { return record_.nclumps; }

    Buffer line_{""};
    parserecStruct1 record_{};

private:
    bool parse(bool (*function)(char*, char*, parserecStruct1*), const std::string& line, const char* delims) {
        line_ = Buffer(line);
        Buffer bytes(delims);
        const bool result = function(line_, bytes, &record_);
        EXPECT_EQ(line_.text(), line);
        EXPECT_EQ(record_.line, line_.get());
        return result;
    }
};

}  // namespace

TEST_F(FixedLine, ThreeFieldsWithLineFeed) {
    EXPECT_TRUE(parse2("key value\n"));
    EXPECT_EQ(closed(), 1U);
    EXPECT_EQ(get2(0), "key");
    EXPECT_EQ(get2(2), "value");
}

TEST_F(FixedLine, FieldThatIsMissingGivesWhatAnEarlierLineHadThere) {
    EXPECT_TRUE(parse2("one two three\n"));
    EXPECT_TRUE(parse2("key value\n"));
    EXPECT_EQ(get2(1), "val");  // bytes 4 to 6, where "two" stood
}

TEST_F(FixedLine, LastClumpOfOneByteIsGivenWhole) {
    EXPECT_TRUE(parse2("a b"));
    EXPECT_EQ(get2(0), "a");
    EXPECT_EQ(get2(2), "b");
}

TEST_F(FixedLine, LongerLastClumpWithoutLineFeedLosesItsLastByte) {
    EXPECT_TRUE(parse2("a bc"));
    EXPECT_EQ(get2(2), "b");
}

TEST_F(FixedLine, OnlyClumpOfALineIsTheThirdField) {
    EXPECT_TRUE(parse2("alone\n"));
    EXPECT_EQ(closed(), 0U);
    EXPECT_EQ(get2(2), "alone");
    EXPECT_EQ(get2(0), "a");  // where "w" stood
}

TEST_F(FixedLine, LastClumpIsTheThirdFieldHoweverManyCameBefore) {
    EXPECT_TRUE(parse2("a b c d e\n"));
    EXPECT_EQ(closed(), 4U);
    EXPECT_EQ(get2(0), "a");
    EXPECT_EQ(get2(1), "b");
    EXPECT_EQ(get2(2), "e");
}

TEST_F(FixedLine, LineThatEndsInADelimiterLeavesTheThirdFieldAlone) {
    EXPECT_TRUE(parse2("12345 b "));
    EXPECT_EQ(closed(), 2U);
    EXPECT_EQ(get2(2), "");  // byte 4 without its last
    EXPECT_TRUE(parse3("1234567 "));
    EXPECT_EQ(get3(2), "5");
}

TEST_F(FixedLine, EmptyLineAndEmptyDelimitersAreRefused) {
    EXPECT_FALSE(parse2(""));
    EXPECT_FALSE(parse2("a b", ""));
    EXPECT_EQ(closed(), 0U);
    EXPECT_FALSE(parse3(""));
    EXPECT_FALSE(parse3("a b", ""));
    EXPECT_EQ(closed(), 0U);
}

TEST_F(FixedLine, LineOfDelimitersHasNoFields) {
    EXPECT_TRUE(parse2("  "));
    EXPECT_EQ(closed(), 0U);
    EXPECT_TRUE(parse3("  "));
    EXPECT_EQ(closed(), 0U);
}

TEST_F(FixedLine, LineAsLongAsTheFirstFieldLeftBehindIsRefused) {
    EXPECT_TRUE(parse2("abcd x\n"));  // the first field ends at 3
    EXPECT_FALSE(parse2("abc"));
    EXPECT_TRUE(parse2("abcd"));
    EXPECT_TRUE(parse2("ab"));
    EXPECT_TRUE(parse2("a b"));  // has a first field of its own
    EXPECT_TRUE(parse2("abc"));
}

TEST_F(FixedLine, RefusedLineHasBeenParsedAllTheSame) {
    EXPECT_TRUE(parse2("abcd x\n"));
    EXPECT_FALSE(parse2("ab\n"));
    EXPECT_EQ(get2(2), "ab");
}

TEST_F(FixedLine, FourFields) {
    EXPECT_TRUE(parse3("one two three four"));
    EXPECT_EQ(closed(), 3U);
    EXPECT_EQ(get3(0), "one");
    EXPECT_EQ(get3(1), "two");
    EXPECT_EQ(get3(2), "three");
    EXPECT_EQ(get3(3), "four");
}

TEST_F(FixedLine, OpenClumpBehindTwoIsTheThirdAndTheFourthField) {
    EXPECT_TRUE(parse3("a b c"));
    EXPECT_EQ(closed(), 2U);
    EXPECT_EQ(get3(2), "c");
    EXPECT_EQ(get3(3), "c");
}

TEST_F(FixedLine, OpenClumpBehindOneIsDropped) {
    EXPECT_TRUE(parse3("a bcdef"));
    EXPECT_EQ(closed(), 1U);
    EXPECT_EQ(get3(0), "a");
    EXPECT_EQ(get3(1), "b");  // where "x" stood
    EXPECT_EQ(get3(2), "d");  // where "y" stood
}

TEST_F(FixedLine, OpenClumpBehindFourIsDropped) {
    EXPECT_TRUE(parse3("a b c d e"));
    EXPECT_EQ(closed(), 4U);
    EXPECT_EQ(get3(2), "c");
    EXPECT_EQ(get3(3), "d");  // where "z" stood
}

TEST_F(FixedLine, LastClumpOfTheFourFieldParseKeepsItsLastByte) {
    EXPECT_TRUE(parse3("a b cd\n"));
    EXPECT_EQ(get3(3), "cd\n");
}

TEST_F(FixedLine, BothParsesShareOneTable) {
    EXPECT_TRUE(parse3("one two three four"));
    EXPECT_TRUE(parse2("123456789012345678"));
    EXPECT_EQ(get2(0), "123");
    EXPECT_EQ(get3(1), "567");
    EXPECT_EQ(get3(3), "5678");
}

TEST_F(FixedLine, BlanksAtTheEndsOfAFieldAreStripped) {
    EXPECT_TRUE(parse2(" a b , c ,  d e \n", ","));
    EXPECT_EQ(get2(0), "a b");
    EXPECT_EQ(get2(1), "c");
    EXPECT_EQ(get2(2), "d e");
    EXPECT_TRUE(parse3(" a , b ,\tc ,  d  ", ","));
    EXPECT_EQ(get3(0), "a");
    EXPECT_EQ(get3(2), "\tc");
    EXPECT_EQ(get3(3), "d");
}

TEST_F(FixedLine, FieldOfNothingButBlanksIsEmpty) {
    EXPECT_TRUE(parse3("  ,b,  ,d", ","));
    EXPECT_EQ(get3(0), "");
    EXPECT_EQ(get3(2), "");
}

TEST_F(FixedLine, IndexBeyondTheFieldsLeavesTheBufferUntouched) {
    Buffer dst("before");
    EXPECT_FALSE(gparse_getclump2(&record_, 3, dst));
    EXPECT_FALSE(gparse_getclump3(&record_, 4, dst));
    EXPECT_FALSE(gparse_getclump3(&record_, static_cast<std::size_t>(-1), dst));
    EXPECT_EQ(dst.text(), "before");
}

TEST_F(FixedLine, FieldsLeftBeyondTheEndOfTheLineAreEmpty) {
    EXPECT_TRUE(parse3("a long line with fields"));
    EXPECT_TRUE(parse3("x "));
    EXPECT_EQ(get3(1), "");
    EXPECT_EQ(get3(2), "");
}

TEST_F(FixedLine, OnlyTheLineOfTheRecordIsRead) {
    EXPECT_TRUE(parse2("one two three\n"));
    Buffer other("ONE TWO THREE\n");
    parserecStruct1 record{other, 0};
    Buffer dst = room_for(20);
    EXPECT_TRUE(gparse_getclump2(&record, 1, dst));
    EXPECT_EQ(dst.text(), "TWO");
}

TEST_F(FixedLine, AgreesWithTheModelOnRandomLines) {
    model::FixedLines model;
    model.parse3("w x y z", " ");
    for (unsigned seed = 0; seed < 20000; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        const std::string line = random.text("ab ,\n", 14);
        const std::string delims = random.text(" ,", 2);
        const bool three_fields = random.coin();
        if (three_fields) {
            ASSERT_EQ(parse2(line, delims.c_str()), model.parse2(line, delims));
        } else {
            ASSERT_EQ(parse3(line, delims.c_str()), model.parse3(line, delims));
        }
        ASSERT_EQ(closed(), model.closed);
        for (const std::size_t index : {0U, 1U, 2U}) ASSERT_EQ(get2(index), model.clump2(index));
        for (const std::size_t index : {0U, 1U, 2U, 3U}) ASSERT_EQ(get3(index), model.clump3(index));
    }
}
