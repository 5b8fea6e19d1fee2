// Help, options, and what is no command.
#include "store_tool/run_tool.h"

#include <gtest/gtest.h>

namespace {

using namespace orvix::test;

class StoreUsage : public testing::Test {
protected:
    void expect_failure(const std::vector<std::string>& arguments, const std::string& complaint) {
        const ToolRun result = tool_.run(arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.error, "gslstore: " + complaint + "\n");
    }

    const ToolPlace tool_{};
};

TEST_F(StoreUsage, HelpTellsOfCommandsTextAndStatus) {
    for (const char* option : {"--help", "-h"}) {
        const std::string help = tool_.output({option});
        for (const char* told : {"stat ", "verify ", "dump ", "load ", "get ", "put ", "del ",
                                 "Exit status: 0 done; 1 ", "\\xHH any byte in hexadecimal", "Usage: gslstore "}) {
            EXPECT_NE(help.find(told), std::string::npos) << told;
        }
    }
}

TEST_F(StoreUsage, HelpOfACommandTellsOfItsOptions) {
    const std::string help = tool_.output({"put", "--help"});
    for (const char* told : {"Usage: gslstore put [OPTIONS] STORE KEY [VALUE]", "--page-size 64..65536",
                             "--byte-order little|big", "--expected-count N", "--keep", "--file FILE"}) {
        EXPECT_NE(help.find(told), std::string::npos) << told;
    }
}

TEST_F(StoreUsage, VersionIsPrinted) { EXPECT_EQ(tool_.output({"--version"}).substr(0, 10), "gslstore 1"); }

TEST_F(StoreUsage, WrongCommandLinesGiveStatusTwo) {
    expect_failure({}, "A subcommand is required (see gslstore --help)");
    expect_failure({"get", "nets"}, "KEY is required (see gslstore --help)");
    expect_failure({"put", "nets", "k"}, "put needs VALUE or --file (see gslstore put --help)");
    expect_failure({"put", "nets", "k", "v", "--page-size", "32"},
                   "--page-size: Value 32 not in range 64 to 65536 (see gslstore --help)");
    expect_failure({"put", "nets", "k", "v", "--byte-order", "middle"}, "--byte-order is little or big, not middle");
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"frob"},
                                                      {"get", "nets", "k", "v"},
                                                      {"stat", "--frob", "nets"},
                                                      {"put", "nets", "k", "v", "--file", "input"},
                                                      {"put", "nets", "k", "v", "--expected-count", "-1"}}) {
        const ToolRun result = tool_.run(arguments);
        EXPECT_EQ(result.status, 2) << arguments.back();
        EXPECT_EQ(result.output, "");
        EXPECT_NE(result.error.find("see gslstore --help"), std::string::npos) << result.error;
    }
}

TEST_F(StoreUsage, FilesThatAreMissingGiveStatusTwo) {
    for (const char* command : {"stat", "verify", "dump", "get", "del"}) {
        SCOPED_TRACE(command);
        std::vector<std::string> arguments{command, "missing"};
        if (std::string(command).size() == 3) arguments.push_back("key");
        expect_failure(arguments, "missing: No such file or directory");
    }
    expect_failure({"put", "nets", "k", "--file", "missing"}, "missing: No such file or directory");
    expect_failure({"load", "nets", "missing"}, "missing: No such file or directory");
}

TEST_F(StoreUsage, FilesThatAreNoStoresGiveStatusTwoAndStayAsTheyAre) {
    tool_.write("text", std::string(1000, '.'));
    for (const char* command : {"get", "put", "del"}) {
        SCOPED_TRACE(command);
        std::vector<std::string> arguments{command, "text", "k"};
        if (command == std::string("put")) arguments.push_back("v");
        expect_failure(arguments, "text: the file is no hash store");
    }
    expect_failure({"stat", "text"}, "text: the file is no hash store");
    expect_failure({"load", "text"}, "text: the file is no hash store");
    EXPECT_EQ(tool_.read("text"), std::string(1000, '.'));
}

TEST_F(StoreUsage, StoreOfAnotherHashIsNotChangedAndStillDumped) {
    tool_.run({"put", "nets", "GND", "0 V"});
    std::string bytes = tool_.read("nets");
    bytes[67] = 'x';
    tool_.write("nets", bytes);
    expect_failure({"put", "nets", "k", "v"}, "nets: the store was made with another hash function");
    expect_failure({"get", "nets", "GND"}, "nets: the store was made with another hash function");
    EXPECT_EQ(tool_.output({"dump", "nets"}), "GND\t0 V\n");
    EXPECT_EQ(tool_.output({"verify", "nets"}),
              "remark: page 0, offset 64: the store was made with another hash function; nobody looked whether pairs "
              "stand in their buckets\n0 faults, 1 remark, 1 pair\n");
    EXPECT_EQ(tool_.read("nets"), bytes);
}

TEST_F(StoreUsage, OptionsOfCreationReachTheHeader) {
    tool_.run({"put", "nets", "k", "v", "--page-size", "100", "--byte-order", "big", "--fill-factor", "7",
               "--expected-count", "100"});
    const std::string header = tool_.output({"stat", "nets"});
    for (const char* line : {"\nbyte_order            4321\n", "\npage_size             128\n",
                             "\nfill_factor           7\n", "\ntop_bucket            15\n"}) {
        EXPECT_NE(header.find(line), std::string::npos) << line << header;
    }
}

TEST_F(StoreUsage, CommandsThatOnlyLookNeverChangeTheFile) {
    tool_.run({"load", "--page-size", "64", "nets"}, four_nets());
    const std::string bytes = tool_.read("nets");
    tool_.output({"stat", "nets"});
    tool_.output({"verify", "nets"});
    tool_.output({"dump", "nets"});
    tool_.output({"get", "nets", "RST"});
    tool_.status({"get", "nets", "absent"});
    EXPECT_EQ(tool_.read("nets"), bytes);
}

TEST_F(StoreUsage, StatPrintsHeaderAndUseOfPages) {
    tool_.run({"load", "--page-size", "64", "nets"}, four_nets());
    EXPECT_EQ(tool_.output({"stat", "nets"}),
              "file bytes            896\n"
              "magic                 0x00061561\n"
              "version               2\n"
              "byte_order            1234\n"
              "page_size             64\n"
              "page_shift            6\n"
              "dir_size              256\n"
              "seg_size              256\n"
              "seg_shift             8\n"
              "spare_point           2\n"
              "free_hint             2\n"
              "top_bucket            2\n"
              "mask_high             0x00000003\n"
              "mask_low              0x00000001\n"
              "fill_factor           4\n"
              "key_count             4\n"
              "header_pages          8\n"
              "check_hash            0x956e7de3\n"
              "spare_counts          0 3 3\n"
              "bitmap_addrs          2049\n"
              "buckets               3\n"
              "overflow pages        3\n"
              "  of bitmaps          1\n"
              "  in chains           2\n"
              "  free                0\n"
              "longest chain         3 pages\n"
              "pairs                 4\n"
              "  too big for a page  1\n"
              "bytes of pairs        106, 33 % of their pages\n");
}

}  // namespace
