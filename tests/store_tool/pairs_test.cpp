// get, put and del.
#include "store_tool/run_tool.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

using namespace orvix::test;

class StorePairs : public testing::Test {
protected:
    const ToolPlace tool_{};
};

TEST_F(StorePairs, PutMakesAStoreAndGetPrintsTheValue) {
    const ToolRun put = tool_.run({"put", "nets", "GND", "0 V"});
    EXPECT_EQ(put.status, 0);
    EXPECT_EQ(put.output, "");
    EXPECT_EQ(put.error, "");
    EXPECT_EQ(tool_.output({"get", "nets", "GND"}), "0 V\n");
}

TEST_F(StorePairs, PutReplacesAValue) {
    tool_.run({"put", "nets", "GND", "0 V"});
    EXPECT_EQ(tool_.status({"put", "nets", "GND", "ground"}), 0);
    EXPECT_EQ(tool_.output({"get", "nets", "GND"}), "ground\n");
}

TEST_F(StorePairs, PutLeavesAKeyThatIsThereIfAsked) {
    tool_.run({"put", "nets", "GND", "0 V"});
    const ToolRun kept = tool_.run({"put", "--keep", "nets", "GND", "ground"});
    EXPECT_EQ(kept.status, 1);
    EXPECT_EQ(kept.error, "gslstore: nets: the key is there already\n");
    EXPECT_EQ(tool_.status({"put", "-k", "nets", "VCC", "3.3 V"}), 0);
    EXPECT_EQ(tool_.output({"get", "nets", "GND"}), "0 V\n");
    EXPECT_EQ(tool_.output({"get", "nets", "VCC"}), "3.3 V\n");
}

TEST_F(StorePairs, AbsentKeyGivesStatusOne) {
    tool_.run({"put", "nets", "GND", "0 V"});
    for (const char* command : {"get", "del"}) {
        const ToolRun result = tool_.run({command, "nets", "VCC"});
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.error, "gslstore: nets: the key is not there\n");
    }
}

TEST_F(StorePairs, DelRemovesAPair) {
    tool_.run({"load", "nets"}, four_nets());
    EXPECT_EQ(tool_.output({"del", "nets", "RST"}), "");
    EXPECT_EQ(tool_.status({"get", "nets", "RST"}), 1);
    EXPECT_EQ(tool_.output({"get", "nets", "CLK"}), "clock, 25 MHz\n");
}

TEST_F(StorePairs, ValueIsPrintedWithEscapesOrRaw) {
    tool_.write("value", std::string("a\tb\n\0\xff\\c", 8));
    EXPECT_EQ(tool_.output({"put", "nets", "k", "--file", "value"}), "");
    EXPECT_EQ(tool_.output({"get", "nets", "k"}), "a\\tb\\n\\x00\\xff\\\\c\n");
    EXPECT_EQ(tool_.output({"get", "--raw", "nets", "k"}), std::string("a\tb\n\0\xff\\c", 8));
}

TEST_F(StorePairs, ValueComesFromStandardInput) {
    const std::string value = std::string("\0\r\n\x1a", 4) + std::string(200000, 'v');
    EXPECT_EQ(tool_.output({"put", "nets", "k", "-f", "-"}, value), "");
    EXPECT_EQ(tool_.output({"get", "-r", "nets", "k"}), value);
}

TEST_F(StorePairs, EmptyKeyAndValueAreStored) {
    EXPECT_EQ(tool_.output({"put", "nets", "empty", "-f", "-"}, ""), "");
    EXPECT_EQ(tool_.output({"get", "nets", "empty"}), "\n");
    EXPECT_EQ(tool_.output({"put", "nets", "", ""}), "");
    EXPECT_EQ(tool_.output({"dump", "nets"}), "\t\nempty\t\n");
}

TEST_F(StorePairs, EscapesAreReadIfAsked) {
    EXPECT_EQ(tool_.output({"put", "-e", "nets", "a\\tb", "\\x00\\n"}), "");
    EXPECT_EQ(tool_.output({"dump", "nets"}), "a\\tb\t\\x00\\n\n");
    EXPECT_EQ(tool_.output({"get", "--escapes", "nets", "\\x61\\tb"}), "\\x00\\n\n");
    EXPECT_EQ(tool_.output({"del", "-e", "nets", "a\\tb"}), "");
    const ToolRun wrong = tool_.run({"put", "-e", "nets", "ab\\q", "v"});
    EXPECT_EQ(wrong.status, 2);
    EXPECT_EQ(wrong.error, "gslstore: KEY, byte 3: a backslash begins no escape: \\\\, \\t, \\n, \\r, \\xHH\n");
}

TEST_F(StorePairs, WithoutEscapesABackslashIsABackslash) {
    tool_.run({"put", "nets", "a\\tb", "\\n"});
    EXPECT_EQ(tool_.output({"dump", "nets"}), "a\\\\tb\t\\\\n\n");
}

TEST_F(StorePairs, WordsThatLookLikeSomethingElseArePlainKeys) {
    for (const char* key : {"[a,b]", "{x}", "%", "a=b", "get", "--", "-k", "--raw"}) {
        SCOPED_TRACE(key);
        EXPECT_EQ(tool_.output({"put", "nets", "--", key, key}), "");
        EXPECT_EQ(tool_.output({"get", "nets", "--", key}), key + std::string("\n"));
    }
}

TEST_F(StorePairs, NamesAndKeysAreUtf8) {
    const std::string store =
        "gr\xc3\xb6\xc3\x9f"
        "e";
    EXPECT_EQ(tool_.output({"put", store, "\xe9\x9b\xbb\xe6\xba\x90", "\xc2\xb5V"}), "");
    EXPECT_EQ(tool_.output({"dump", store}), "\xe9\x9b\xbb\xe6\xba\x90\t\xc2\xb5V\n");
    const std::u8string name(store.begin(), store.end());
    EXPECT_TRUE(std::filesystem::exists(std::filesystem::path(name)));
}

TEST_F(StorePairs, EveryPairIsKept) {
    // By the page rules to the letter the small value would be stored one byte off.
    tool_.run({"put", "--page-size", "64", "nets", "k", "-f", "-"}, std::string(100, 'v'));
    tool_.run({"put", "nets", "k", "small"});
    EXPECT_EQ(tool_.output({"get", "nets", "k"}), "small\n");
    EXPECT_EQ(tool_.output({"verify", "nets"}), "0 faults, 0 remarks, 1 pair\n");
}

}  // namespace
