// dump and load, and the lines of text between them.
#include "pair_text.h"
#include "store_tool/run_tool.h"
#include "support/random_text.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>

namespace {

using namespace orvix::test;

std::string escaped(std::string_view bytes) {
    std::string text;
    gslstore::append_escaped(&text, bytes);
    return text;
}

// The bytes; if there are none "column: what is wrong".
std::string meant(std::string_view text) {
    std::string bytes;
    const auto fault = gslstore::read_escaped(text, &bytes);
    return fault ? std::to_string(fault->column) + ": " + fault->text : bytes;
}

std::string fault_of_line(std::string_view line) {
    std::string key;
    std::string value;
    const auto fault = gslstore::read_pair(line, &key, &value);
    return fault ? std::to_string(fault->column) + ": " + fault->text : "";
}

TEST(StoreText, BytesThatAreNoTextAreEscaped) {
    EXPECT_EQ(escaped("plain text ~!"), "plain text ~!");
    EXPECT_EQ(escaped("a\tb\nc\rd\\e"), "a\\tb\\nc\\rd\\\\e");
    EXPECT_EQ(escaped(std::string_view("\0\x01\x1f\x7f", 4)), "\\x00\\x01\\x1f\\x7f");
}

TEST(StoreText, WellFormedUtf8StaysAsItIs) {
    for (const char* text : {"\xc2\xa0", "\xc3\xa4", "\xe9\x9b\xbb", "\xf0\x9f\x98\x80", "\xed\x9f\xbf", "\xee\x80\x80",
                             "\xf4\x8f\xbf\xbf",
                             "a\xc3\xa4"
                             "b"}) {
        EXPECT_EQ(escaped(text), text);
    }
}

TEST(StoreText, WhatIsNoWellFormedUtf8IsEscaped) {
    EXPECT_EQ(escaped("\x80"), "\\x80");
    EXPECT_EQ(escaped("\xc3"), "\\xc3");
    EXPECT_EQ(escaped("\xc3"
                      "a"),
              "\\xc3a");
    EXPECT_EQ(escaped("\xc0\xaf"), "\\xc0\\xaf");                    // more bytes than needed
    EXPECT_EQ(escaped("\xe0\x80\xaf"), "\\xe0\\x80\\xaf");           // likewise
    EXPECT_EQ(escaped("\xed\xa0\x80"), "\\xed\\xa0\\x80");           // half of a surrogate pair
    EXPECT_EQ(escaped("\xf4\x90\x80\x80"), "\\xf4\\x90\\x80\\x80");  // beyond the last character
    EXPECT_EQ(escaped("\xff\xfe"), "\\xff\\xfe");
}

TEST(StoreText, InvisibleCharactersAreEscaped) {
    EXPECT_EQ(escaped("\xc2\x80\xc2\x9f"), "\\xc2\\x80\\xc2\\x9f");  // control characters
    EXPECT_EQ(escaped("\xef\xbb\xbf"), "\\xef\\xbb\\xbf");           // the byte order mark
}

TEST(StoreText, EscapesAreRead) {
    EXPECT_EQ(meant("a\\tb\\nc\\rd\\\\e"), "a\tb\nc\rd\\e");
    EXPECT_EQ(meant("\\x00\\x7F\\xfF"), std::string("\0\x7f\xff", 3));
    EXPECT_EQ(meant("\x80 any \xff byte \x01"), "\x80 any \xff byte \x01");
}

TEST(StoreText, WhatIsNoEscapeIsToldWithItsPlace) {
    const std::string complaint = ": a backslash begins no escape: \\\\, \\t, \\n, \\r, \\xHH";
    EXPECT_EQ(meant("\\"), "1" + complaint);
    EXPECT_EQ(meant("ab\\q"), "3" + complaint);
    EXPECT_EQ(meant("\\\\\\x"), "3" + complaint);
    EXPECT_EQ(meant("\\x4"), "1" + complaint);
    EXPECT_EQ(meant("\\x4g"), "1" + complaint);
    EXPECT_EQ(meant("\\X41"), "1" + complaint);
}

TEST(StoreText, LinesNeedOneTab) {
    EXPECT_EQ(fault_of_line("key\tvalue"), "");
    EXPECT_EQ(fault_of_line("\t"), "");
    EXPECT_EQ(fault_of_line("key"), "4: no tab stands behind a key");
    EXPECT_EQ(fault_of_line(""), "1: no tab stands behind a key");
    EXPECT_EQ(fault_of_line("key\tvalue\tmore"), "10: a second tab; within a value it is \\t");
    EXPECT_EQ(fault_of_line("k\tab\\q").substr(0, 3), "5: ");
}

TEST(StoreText, EveryByteMakesTheRoundTrip) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) all.push_back(static_cast<char>(byte));
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        const std::string text =
            random.text(seed % 2 == 0 ? std::string_view(all) : "\xc3\xa4\xe9\x9b\xbb\xef\xbf", 40);
        EXPECT_EQ(meant(escaped(text)), text);
        std::string key;
        std::string value;
        const std::string line = gslstore::line_of_pair(all, text);
        EXPECT_EQ(gslstore::read_pair(std::string_view(line).substr(0, line.size() - 1), &key, &value), std::nullopt);
        EXPECT_EQ(key, all);
        EXPECT_EQ(value, text);
    }
}

class StoreLoad : public testing::Test {
protected:
    std::map<std::string, std::string> pairs_of(const std::string& store) {
        std::istringstream lines(tool_.output({"dump", store}));
        std::map<std::string, std::string> pairs;
        std::string key;
        std::string value;
        for (std::string line; std::getline(lines, line);) {
            EXPECT_EQ(gslstore::read_pair(line, &key, &value), std::nullopt) << line;
            EXPECT_TRUE(pairs.emplace(key, value).second) << line;
        }
        return pairs;
    }
    using Pairs = std::map<std::string, std::string>;

    const ToolPlace tool_{};
};

TEST_F(StoreLoad, LinesBecomePairs) {
    EXPECT_EQ(tool_.output({"load", "nets"}, "a\t1\nb\\t\tx\\n\n\tempty key\nempty value\t\n"), "");
    EXPECT_EQ(pairs_of("nets"), (Pairs{{"a", "1"}, {"b\t", "x\n"}, {"", "empty key"}, {"empty value", ""}}));
}

TEST_F(StoreLoad, LinesComeFromAFileToo) {
    tool_.write("lines", "a\t1\n");
    EXPECT_EQ(tool_.output({"load", "nets", "lines"}), "");
    EXPECT_EQ(tool_.output({"load", "nets", "-"}, "b\t2\n"), "");
    EXPECT_EQ(pairs_of("nets"), (Pairs{{"a", "1"}, {"b", "2"}}));
}

TEST_F(StoreLoad, LastLineNeedsNoEnd) {
    EXPECT_EQ(tool_.output({"load", "nets"}, "a\t1\nb\t2"), "");
    EXPECT_EQ(pairs_of("nets"), (Pairs{{"a", "1"}, {"b", "2"}}));
}

TEST_F(StoreLoad, WhatEditorsAddIsDropped) {
    EXPECT_EQ(tool_.output({"load", "nets"},
                           "\xef\xbb\xbf"
                           "a\t1\r\nb\t2\\r\r\n"),
              "");
    EXPECT_EQ(pairs_of("nets"), (Pairs{{"a", "1"}, {"b", "2\r"}}));
}

TEST_F(StoreLoad, LaterLinesReplaceEarlierOnesAndThoseThatAreThere) {
    tool_.run({"load", "nets"}, "a\told\nb\told\n");
    EXPECT_EQ(tool_.output({"load", "nets"}, "a\t1\na\t2\n"), "");
    EXPECT_EQ(pairs_of("nets"), (Pairs{{"a", "2"}, {"b", "old"}}));
}

TEST_F(StoreLoad, KeysThatAreThereAreKeptIfAsked) {
    tool_.run({"load", "nets"}, "a\told\n");
    EXPECT_EQ(tool_.output({"load", "--keep", "nets"}, "a\tnew\nb\tnew\nb\tlater\n"), "");
    EXPECT_EQ(pairs_of("nets"), (Pairs{{"a", "old"}, {"b", "new"}}));
}

TEST_F(StoreLoad, StoreIsMadeAnewIfAsked) {
    tool_.write("nets", "no store");
    EXPECT_EQ(tool_.output({"load", "--new", "nets"}, "a\t1\n"), "");
    EXPECT_EQ(tool_.output({"load", "--new", "nets"}, "b\t2\n"), "");
    EXPECT_EQ(pairs_of("nets"), (Pairs{{"b", "2"}}));
}

TEST_F(StoreLoad, WrongLinesAreNamedAndLeftOut) {
    const ToolRun result = tool_.run({"load", "nets"}, "a\t1\nb\nc\t\\q\nd\t4\t5\ne\t6\n");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.error,
              "gslstore: standard input, line 2, byte 2: no tab stands behind a key\n"
              "gslstore: standard input, line 3, byte 3: a backslash begins no escape: \\\\, \\t, \\n, \\r, \\xHH\n"
              "gslstore: standard input, line 4, byte 4: a second tab; within a value it is \\t\n"
              "gslstore: standard input: 3 lines of 5 left out; all others are stored\n");
    EXPECT_EQ(pairs_of("nets"), (Pairs{{"a", "1"}, {"e", "6"}}));
}

TEST_F(StoreLoad, NoMoreThanTwentyWrongLinesAreNamed) {
    std::string lines;
    for (int i = 0; i < 30; ++i) lines += "wrong\n";
    const ToolRun result = tool_.run({"load", "nets"}, lines);
    EXPECT_NE(result.error.find("line 20,"), std::string::npos);
    EXPECT_EQ(result.error.find("line 21,"), std::string::npos);
    EXPECT_NE(result.error.find("30 lines of 30 left out"), std::string::npos);
}

TEST_F(StoreLoad, DumpAndLoadGiveTheSamePairs) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) all.push_back(static_cast<char>(byte));
    for (unsigned seed = 0; seed < 8; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        Pairs pairs;
        for (int i = 0; i < 300; ++i) {
            const std::size_t most = random.number(40) == 0 ? 3000 : 30;
            pairs[random.text(seed % 2 == 0 ? std::string_view(all) : "ab", 12)] = random.text(all, most);
        }
        std::string lines;
        for (const auto& [key, value] : pairs) lines += gslstore::line_of_pair(key, value);
        const std::string first_order = seed % 3 == 0 ? "big" : "little";
        const std::string page_size = std::to_string(64U << (seed % 4 * 2));
        EXPECT_EQ(tool_.output({"load", "--new", "one", "--page-size", page_size, "--byte-order", first_order}, lines),
                  "");
        EXPECT_EQ(pairs_of("one"), pairs);
        EXPECT_EQ(tool_.output({"load", "--new", "other", "--byte-order", "big", "--expected-count", "300"},
                               tool_.output({"dump", "one"})),
                  "");
        EXPECT_EQ(pairs_of("other"), pairs);
        const std::string sound = "0 faults, 0 remarks, " + std::to_string(pairs.size()) + " pairs\n";
        EXPECT_EQ(tool_.output({"verify", "one"}), sound);
        EXPECT_EQ(tool_.output({"verify", "other"}), sound);
    }
}

TEST_F(StoreLoad, LongLinesAndManyLinesAreRead) {
    std::string lines = "long\t" + std::string(1000000, 'v') + "\n";
    for (int i = 0; i < 20000; ++i) lines += "key " + std::to_string(i) + "\t" + std::to_string(i) + "\n";
    EXPECT_EQ(tool_.output({"load", "nets"}, lines), "");
    EXPECT_EQ(tool_.output({"verify", "nets"}), "0 faults, 0 remarks, 20001 pairs\n");
    EXPECT_EQ(tool_.output({"get", "nets", "key 12345"}), "12345\n");
    EXPECT_EQ(tool_.output({"get", "nets", "long"}), std::string(1000000, 'v') + "\n");
}

}  // namespace
