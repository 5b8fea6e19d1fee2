#include "text/expect_clumps.h"

#include <gtest/gtest.h>
#include <orvix/gsl/line_parser.h>
#include <support/buffer.h>
#include <support/random_text.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <vector>

using namespace orvix::test;

namespace {

// A line and its record, with the texts of all clumps.
class Parsed {
public:
    Parsed(std::string line, const char* delims, const char* singles = "", char comment = '\0')
        : line_(std::move(line)) {
        result = gparse_parline(line_.c_str(), delims, singles, comment, &record);
    }

    std::string text(std::size_t index) {
        Buffer dst = room_for(line_.size() + 1);
        return gparse_getclump(&record, index, dst) ? dst.text() : "none";
    }

    std::vector<std::string> texts() {
        std::vector<std::string> all;
        for (std::size_t i = 0; i < record.nclumps; ++i) all.push_back(text(i));
        return all;
    }

    std::string stretch(std::size_t first, std::size_t last) {
        Buffer dst("before", line_.size() + 8);
        gparse_getplinstr(&record, first, last, dst);
        return dst.text();
    }

    parserec record;
    bool result;

private:
    std::string line_;
};

parserec_clump only_clump(const std::string& line) {
    Parsed parsed(line, " ");
    EXPECT_EQ(parsed.record.nclumps, 1U);
    return parsed.record.clumps[0];
}

std::string kind_of(const std::string& line) {
    const parserec_clump clump = only_clump(line);
    EXPECT_TRUE(clump.is_real || !clump.is_int);
    return clump.is_int ? "int" : clump.is_real ? "real" : "text";
}

using Texts = std::vector<std::string>;

}  // namespace

// ---------------------------------------------------------------------------------------------------------------------
// Clumps

TEST(GparseParline, DelimitersSeparateSinglesStandAloneAndTheCommentEnds) {
    Parsed parsed("a=1 ! note", " ", "=", '!');
    EXPECT_TRUE(parsed.result);
    EXPECT_EQ(parsed.texts(), (Texts{"a", "=", "1"}));
    EXPECT_TRUE(parsed.record.clumps[2].is_int);
    for (const int i : {0, 1}) {
        EXPECT_FALSE(parsed.record.clumps[i].is_int);
        EXPECT_FALSE(parsed.record.clumps[i].is_real);
    }
}

TEST(GparseParline, PositionsOfFirstAndLastByteAreKept) {
    const Parsed parsed("  ab,c", " ,");
    ASSERT_EQ(parsed.record.nclumps, 2U);
    EXPECT_EQ(parsed.record.clumps[0].start, 2);
    EXPECT_EQ(parsed.record.clumps[0].end, 3);
    EXPECT_EQ(parsed.record.clumps[1].start, 5);
    EXPECT_EQ(parsed.record.clumps[1].end, 5);
}

TEST(GparseParline, LineIsNotCopied) {
    const char line[] = "a";
    parserec record;
    gparse_parline(line, " ", "", '\0', &record);
    EXPECT_EQ(record.line, line);
}

TEST(GparseParline, LineOfDelimitersAndEmptyLineHaveNoClumps) {
    for (const char* line : {"", " ", " \t ,"}) {
        SCOPED_TRACE(line);
        const Parsed parsed(line, " \t,");
        EXPECT_TRUE(parsed.result);
        EXPECT_EQ(parsed.record.nclumps, 0U);
    }
}

TEST(GparseParline, EmptyDelimitersAreRefused) {
    const Parsed parsed("a b", "", "=");
    EXPECT_FALSE(parsed.result);
    EXPECT_EQ(parsed.record.nclumps, 0U);
}

TEST(GparseParline, CommentInsideAClumpEndsIt) { EXPECT_EQ(Parsed("ab!c", " ", "", '!').texts(), (Texts{"ab"})); }

TEST(GparseParline, CommentWinsOverDelimitersAndSingles) {
    EXPECT_EQ(Parsed("a!b", "!", "", '!').texts(), (Texts{"a"}));
    EXPECT_EQ(Parsed("a!b", " ", "!", '!').texts(), (Texts{"a"}));
}

TEST(GparseParline, SinglesWinOverDelimiters) { EXPECT_EQ(Parsed("a=b", " =", "=").texts(), (Texts{"a", "=", "b"})); }

TEST(GparseParline, SinglesInARowAreOneClumpEach) { EXPECT_EQ(Parsed("((a))", " ", "()").texts().size(), 5U); }

TEST(GparseParline, QuotesAreOrdinaryBytes) { EXPECT_EQ(Parsed("\"a b\"", " ").texts(), (Texts{"\"a", "b\""})); }

TEST(GparseParline, BytesBeyondAsciiAreOrdinaryOrListed) {
    EXPECT_EQ(Parsed("\xc3\xa4 \xff", " ").texts(), (Texts{"\xc3\xa4", "\xff"}));
    EXPECT_EQ(Parsed("a\xff"
                     "b",
                     "\xff")
                  .texts(),
              (Texts{"a", "b"}));
}

TEST(GparseParline, LineFeedIsAnOrdinaryByte) { EXPECT_EQ(Parsed("a 1\n", " ").texts(), (Texts{"a", "1\n"})); }

TEST(GparseParline, ThreeHundredClumpsAreKeptAndTheRestIsDropped) {
    std::string line;
    for (int i = 0; i < 301; ++i) line += "a ";
    Parsed parsed(line, " ");
    EXPECT_TRUE(parsed.result);
    EXPECT_EQ(parsed.record.nclumps, 300U);
    EXPECT_EQ(parsed.record.clumps[299].start, 598);
}

TEST(GparseParline, ThreeHundredSinglesAreKeptAndTheRestIsDropped) {
    EXPECT_EQ(Parsed(std::string(301, '='), " ", "=").record.nclumps, 300U);
}

TEST(GparseParline, SingleDirectlyBehindARunInTheLastSlotIsTheSpareEntry) {
    std::string line;
    for (int i = 0; i < 299; ++i) line += "a ";
    Parsed parsed(line + "7=b", " ", "=");
    EXPECT_EQ(parsed.record.nclumps, 301U);
    EXPECT_EQ(parsed.text(299), "7");
    EXPECT_TRUE(parsed.record.clumps[299].is_int);
    EXPECT_EQ(parsed.text(300), "=");
    EXPECT_FALSE(parsed.record.clumps[300].is_real);
}

TEST(GparseParline, SingleBehindASeparatorBehindTheLastSlotIsDropped) {
    std::string line;
    for (int i = 0; i < 299; ++i) line += "a ";
    EXPECT_EQ(Parsed(line + "a =", " ", "=").record.nclumps, 300U);
}

TEST(GparseParline, RunInTheLastSlotMayEndTheLine) {
    std::string line;
    for (int i = 0; i < 299; ++i) line += "a ";
    Parsed parsed(line + "last", " ");
    EXPECT_EQ(parsed.record.nclumps, 300U);
    EXPECT_EQ(parsed.text(299), "last");
}

TEST(GparseParline, RecordCanBeUsedAgain) {
    parserec record;
    gparse_parline("1 2 3", " ", "", '\0', &record);
    gparse_parline("a", " ", "", '\0', &record);
    EXPECT_EQ(record.nclumps, 1U);
    EXPECT_FALSE(record.clumps[0].is_real);
    EXPECT_EQ(record.clumps[0].real_value, 0);
    EXPECT_EQ(record.clumps[0].int_value, 0);
}

// ---------------------------------------------------------------------------------------------------------------------
// Numbers

TEST(GparseParline, WholeNumbersAreIntAndReal) {
    const parserec_clump clump = only_clump("007");
    EXPECT_TRUE(clump.is_int);
    EXPECT_EQ(clump.int_value, 7);
    EXPECT_TRUE(clump.is_real);
    EXPECT_EQ(clump.real_value, 7);
}

TEST(GparseParline, NumberWithFractionIsRealOnly) {
    const parserec_clump clump = only_clump("1.5");
    EXPECT_FALSE(clump.is_int);
    EXPECT_EQ(clump.int_value, 0);
    EXPECT_TRUE(clump.is_real);
    EXPECT_EQ(clump.real_value, 1.5);
}

TEST(GparseParline, FractionOfZeroIsWhole) {
    EXPECT_EQ(only_clump("2.0").int_value, 2);
    EXPECT_TRUE(only_clump("2.0").is_int);
    EXPECT_EQ(only_clump("2.5e1").int_value, 25);
    EXPECT_EQ(only_clump("1e3").int_value, 1000);
    EXPECT_EQ(only_clump("-12.").int_value, -12);
    EXPECT_EQ(only_clump(".0").int_value, 0);
    EXPECT_TRUE(only_clump(".0").is_int);
}

TEST(GparseParline, RangeOfWholeNumbersIsSymmetric) {
    EXPECT_EQ(kind_of("2147483647"), "int");
    EXPECT_EQ(kind_of("2147483648"), "real");
    EXPECT_EQ(kind_of("-2147483647"), "int");
    EXPECT_EQ(kind_of("-2147483648"), "real");
    EXPECT_EQ(only_clump("2147483648").real_value, 2147483648.0);
    EXPECT_EQ(only_clump("-2147483647").int_value, -2147483647);
}

TEST(GparseParline, NumbersBeginAndEndAsNumbersDo) {
    for (const char* text : {"1e5", "1.", "+1", "-.5", "1E+05", "0x10"}) {
        SCOPED_TRACE(text);
        EXPECT_NE(kind_of(text), "text");
    }
    for (const char* text :
         {"inf",   "nan", "+inf", "-infinity", "1e",   "1f",  "1e+", ".",  "+",   "-",  "+-1",  "-+1",  "--1",
          "1.2.3", "1..", "0x",   "0xg1",      "0x1f", "1_0", "1,5", "e5", ".e5", "+.", "1e5.", "12:00"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(kind_of(text), "text");
    }
}

TEST(GparseParline, HexadecimalNumbersCountIfTheyEndInADigit) {
    EXPECT_EQ(only_clump("0x10").int_value, 16);
    EXPECT_EQ(only_clump("-0X10").int_value, -16);
    EXPECT_EQ(only_clump("0x.8").real_value, 0.5);
    EXPECT_EQ(only_clump("0x1p-2").real_value, 0.25);
    EXPECT_EQ(only_clump("0xA.").int_value, 10);
}

TEST(GparseParline, ZeroBelowZeroIsPlainZero) {
    const parserec_clump clump = only_clump("-0.0");
    EXPECT_TRUE(clump.is_int);
    EXPECT_FALSE(std::signbit(clump.real_value));
}

TEST(GparseParline, NumberTooLargeIsInfinite) {
    EXPECT_EQ(kind_of("1e999"), "real");
    EXPECT_EQ(only_clump("1e999").real_value, std::numeric_limits<double>::infinity());
    EXPECT_EQ(only_clump("-1e999").real_value, -std::numeric_limits<double>::infinity());
}

TEST(GparseParline, NumberTooSmallIsZero) {
    EXPECT_EQ(kind_of("1e-999"), "int");
    EXPECT_EQ(only_clump("1e-999").int_value, 0);
}

TEST(GparseParline, SmallestNumbersAreRounded) {
    EXPECT_EQ(only_clump("5e-324").real_value, 5e-324);
    EXPECT_EQ(only_clump("2e-324").real_value, 0);
}

TEST(GparseParline, DecimalPointIsADotInAnyLocale) {
    EXPECT_EQ(kind_of("1,5"), "text");
    EXPECT_EQ(only_clump("0.1").real_value, 0.1);
    EXPECT_EQ(only_clump("1.00000000000000000000000001").int_value, 1);
}

TEST(GparseParline, DigitsMayBeDelimitersOrSingles) {
    EXPECT_EQ(Parsed("1020", "0").texts(), (Texts{"1", "2"}));
    Parsed parsed("a5b1.5", " ", "5");
    EXPECT_EQ(parsed.texts(), (Texts{"a", "5", "b1.", "5"}));
    EXPECT_EQ(parsed.record.clumps[1].int_value, 5);
    EXPECT_TRUE(parsed.record.clumps[1].is_int);
}

TEST(GparseParline, SignsAndPointsMayBeDelimitersSinglesOrTheComment) {
    EXPECT_EQ(Parsed("1-2", "-").texts(), (Texts{"1", "2"}));
    EXPECT_EQ(Parsed("1+2", " ", "+").texts(), (Texts{"1", "+", "2"}));
    EXPECT_EQ(Parsed("1.5", " ", "", '.').texts(), (Texts{"1"}));
    EXPECT_EQ(Parsed("1e5", "e").texts(), (Texts{"1", "5"}));
}

TEST(GparseParline, NumbersOfAnyLengthAreRead) {
    const std::string zeros(100000, '0');
    EXPECT_EQ(only_clump(zeros + "12").int_value, 12);
    EXPECT_EQ(only_clump("0." + zeros + "1").int_value, 0);
    EXPECT_EQ(only_clump("1" + zeros).real_value, std::numeric_limits<double>::infinity());
    EXPECT_EQ(only_clump("1" + zeros + "e-100000").int_value, 1);
    EXPECT_EQ(only_clump("0x" + zeros + "10").int_value, 16);
    EXPECT_EQ(kind_of(std::string(100000, '9') + "x"), "text");
}

// ---------------------------------------------------------------------------------------------------------------------
// Accessors

TEST(GparseGetclump, NoSuchClumpLeavesTheBufferUntouched) {
    Parsed parsed("a", " ");
    Buffer dst("before");
    EXPECT_FALSE(gparse_getclump(&parsed.record, 1, dst));
    EXPECT_FALSE(gparse_getclump(&parsed.record, static_cast<std::size_t>(-1), dst));
    EXPECT_EQ(dst.text(), "before");
}

TEST(GparseGetclump, BufferOfTheClumpsLengthAndAZeroByteIsEnough) {
    Parsed parsed("abc d", " ");
    Buffer dst = room_for(4);
    EXPECT_TRUE(gparse_getclump(&parsed.record, 0, dst));
    EXPECT_EQ(dst.text(), "abc");
}

TEST(GparseGetplinstr, TakesTheDelimitersBetweenAlong) {
    EXPECT_EQ(Parsed("a , b", " ,").stretch(0, 1), "a , b");
    EXPECT_EQ(Parsed(" one  two three ", " ").stretch(0, 1), "one  two");
    EXPECT_EQ(Parsed("ab", " ").stretch(0, 0), "ab");
}

TEST(GparseGetplinstr, EndBeforeTheStartGivesTheEmptyText) { EXPECT_EQ(Parsed("a b", " ").stretch(1, 0), ""); }

TEST(GparseGetplinstr, ClumpsOfAnEarlierLineGiveAPartOfThisOne) {
    Parsed parsed("one two three", " ");
    const char shorter[] = "four fiv";
    gparse_parline(shorter, " ", "", '\0', &parsed.record);
    EXPECT_EQ(parsed.stretch(0, 2), "four fiv");
    EXPECT_EQ(parsed.stretch(2, 2), "");
}

TEST(GparseGetplinstr, ClumpsBeyondTheTableGiveTheEmptyText) {
    Parsed parsed("a b", " ");
    EXPECT_EQ(parsed.stretch(0, 301), "");
    EXPECT_EQ(parsed.stretch(static_cast<std::size_t>(-1), 0), "");
}

TEST(GparseIntclump, GivesWholeNumbersAndElseZero) {
    Parsed parsed("12 1.5 x", " ");
    int out = 99;
    EXPECT_TRUE(gparse_intclump(&parsed.record, 0, &out));
    EXPECT_EQ(out, 12);
    for (const std::size_t index : {1U, 2U, 3U}) {
        out = 99;
        EXPECT_FALSE(gparse_intclump(&parsed.record, index, &out));
        EXPECT_EQ(out, 0);
    }
}

TEST(GparseDRelclump, GivesNumbersAndElseZero) {
    Parsed parsed("12 0.1 x", " ");
    double out = 99;
    EXPECT_TRUE(gparse_d_relclump(&parsed.record, 0, &out));
    EXPECT_EQ(out, 12);
    EXPECT_TRUE(gparse_d_relclump(&parsed.record, 1, &out));
    EXPECT_EQ(out, 0.1);
    for (const std::size_t index : {2U, 3U}) {
        out = 99;
        EXPECT_FALSE(gparse_d_relclump(&parsed.record, index, &out));
        EXPECT_EQ(out, 0);
    }
}

TEST(GparseSRelclump, NarrowsByOrdinaryRounding) {
    Parsed parsed("0.1 16777217 x", " ");
    float out = 99;
    EXPECT_TRUE(gparse_s_relclump(&parsed.record, 0, &out));
    EXPECT_EQ(out, 0.1F);
    EXPECT_TRUE(gparse_s_relclump(&parsed.record, 1, &out));
    EXPECT_EQ(out, 16777216.0F);
    EXPECT_FALSE(gparse_s_relclump(&parsed.record, 2, &out));
    EXPECT_EQ(out, 0);
}

// ---------------------------------------------------------------------------------------------------------------------
// Against the model

namespace {

void expect_as_modelled(const std::string& line, const std::string& delims, const std::string& singles, char comment) {
    const Parsed parsed(line, delims.c_str(), singles.c_str(), comment);
    const auto expected = model::parsed(line, delims, singles, comment);
    ASSERT_EQ(parsed.result, expected.has_value());
    expect_clumps(parsed.record, expected.value_or(std::vector<model::ModelClump>()));
}

}  // namespace

TEST(GparseParline, AgreesWithTheModelOnRandomLines) {
    for (unsigned seed = 0; seed < 20000; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        const std::string line = random.text("a1 2,=!.+-eEx0", 30);
        const std::string delims = random.text(" ,=1e.", 3);
        const std::string singles = random.text("=, -2", 2);
        expect_as_modelled(line, delims, singles, random.coin() ? '!' : '\0');
    }
}

TEST(GparseParline, AgreesWithTheModelOnRandomNumbers) {
    for (unsigned seed = 0; seed < 20000; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        std::string number = random.text("+-", 1) + random.text("0123456789", 22);
        if (random.coin()) number += '.' + random.text("0123456789", 20);
        if (random.coin()) number += (random.coin() ? "e" : "E") + random.text("+-", 1) + random.text("0123456789", 3);
        expect_as_modelled(number, " ", "", '\0');
    }
}

TEST(GparseParline, AgreesWithTheModelOnLinesOfManyClumps) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        std::string line;
        while (line.size() < 700) line += random.text("a7", 2) + random.text(" =", 2);
        expect_as_modelled(line, " ", "=", '\0');
    }
}
