// Parsers and number text that want more memory than there is.

#include "support/exhausted_memory.h"

#include <orvix/gsl/memory_parser.h>
#include <orvix/gsl/number_text.h>
#include <orvix/gsl/status.h>

#include <cstddef>
#include <string>

using orvix::test::ExhaustedMemory;
using orvix::test::MemoryLimit;
using orvix::test::without_memory;

namespace {

bool parse(const char* line, parserecMem* record) { return gparse_parline_mem(line, " ", "", '\0', record); }

bool parse_efficiently(const char* line, parserecMem* record) {
    return gparse_efficient_parline_mem(line, " ", "", '\0', record);
}

}  // namespace

TEST_F(ExhaustedMemory, ParseFailsWithoutMemoryForAnEntry) {
    parserecMem first{};
    parserecMem second{};
    ASSERT_TRUE(parse("a", &first));
    bool parsed = true;
    without_memory([&] { parsed = parse("b", &second); });
    EXPECT_FALSE(parsed);
    EXPECT_EQ(second.slot, 0);
    EXPECT_EQ(second.nclumps, 0);
    EXPECT_EQ(second.clumps, nullptr);
    EXPECT_EQ(first.nclumps, 1);
    EXPECT_TRUE(parse("b", &second));
    EXPECT_EQ(second.slot, 2);
}

TEST_F(ExhaustedMemory, EntryOfAFailedParseIsReusedUnderANumberOneLess) {
    parserecMem records[3] = {};
    ASSERT_TRUE(parse_efficiently("a", &records[0]));
    ASSERT_TRUE(parse_efficiently("b", &records[1]));
    parserecMem failed{};
    bool parsed = true;
    without_memory([&] { parsed = parse_efficiently("c", &failed); });
    EXPECT_FALSE(parsed);
    EXPECT_EQ(failed.nclumps, 0);
    EXPECT_EQ(failed.clumps, nullptr);
    EXPECT_TRUE(parse_efficiently("d", &records[2]));
    EXPECT_EQ(records[2].slot, 2);  // for the third entry
    EXPECT_EQ(records[1].slot, 2);  // for the second
    EXPECT_TRUE(parse_efficiently("e", &records[2]));
    EXPECT_TRUE(parse_efficiently("f", &records[1]));
    for (parserecMem& record : records) EXPECT_TRUE(gparse_efficient_parline_free_mem(&record));
}

TEST_F(ExhaustedMemory, LineThatNeedsTooMuchMemoryFailsAndTheNextIsParsed) {
    std::string line;
    for (int i = 0; i < 1000000; ++i) line += "a ";
    parserecMem record{};
    bool parsed = true;
    bool parsed_next = false;
    {
        const MemoryLimit limit(std::size_t{4} << 20);
        parsed = parse(line.c_str(), &record);
        EXPECT_EQ(record.nclumps, 0);
        EXPECT_EQ(record.clumps, nullptr);
        gparse_init_parserecMem(&record);
        parsed_next = parse("1 2", &record);
    }
    EXPECT_FALSE(parsed);
    EXPECT_TRUE(parsed_next);
    EXPECT_EQ(record.nclumps, 2);
    EXPECT_EQ(record.clumps[1].int_value, 2);
}

TEST_F(ExhaustedMemory, RecordInPlaceFailsWithoutMemoryAndKeepsItsSlot) {
    parserecMem record{};
    ASSERT_TRUE(parse("a", &record));
    bool parsed = true;
    without_memory([&] { parsed = parse("1 2 3 4 5 6 7 8 9", &record); });
    EXPECT_FALSE(parsed);
    EXPECT_EQ(record.nclumps, 0);
    EXPECT_EQ(record.clumps, nullptr);
    EXPECT_EQ(record.slot, 1);
    EXPECT_TRUE(parse("1 2", &record));
    EXPECT_EQ(record.nclumps, 2);
}

TEST_F(ExhaustedMemory, StrippedTextFailsWithoutMemory) {
    char short_number[] = "1.5";
    char long_number[] = "1234567890.1234567";
    char* const out = gmem_ee_malloc(33, 1);
    const char* short_text = "";
    const char* long_text = "";
    without_memory([&] {
        short_text = gparse_cnvt_string_string_stripped(nullptr, short_number, 2, 4);
        long_text = gparse_cnvt_string_string_stripped(out, long_number, 9, 20);
    });
    EXPECT_EQ(short_text, nullptr);
    EXPECT_EQ(long_text, nullptr);
}
