// Parsers and number text that want more memory than there is. POSIX, because the test must take memory away from its
// process; without the address sanitizer, because that reserves more than any limit allows.

#if !defined(_WIN32) && !defined(__SANITIZE_ADDRESS__)
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ORVIX_TEST_MEMORY_CANNOT_BE_LIMITED
#endif
#endif
#else
#define ORVIX_TEST_MEMORY_CANNOT_BE_LIMITED
#endif

#ifndef ORVIX_TEST_MEMORY_CANNOT_BE_LIMITED

#include <orvix/gsl/memory_parser.h>
#include <orvix/gsl/number_text.h>
#include <orvix/gsl/status.h>

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

namespace {

void allow_more_bytes(std::size_t bytes) {
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    const rlimit limit{pages * 4096 + bytes, RLIM_INFINITY};
    if (setrlimit(RLIMIT_AS, &limit) != 0) std::_Exit(2);
}

void allow_all_memory() {
    const rlimit limit{RLIM_INFINITY, RLIM_INFINITY};
    if (setrlimit(RLIMIT_AS, &limit) != 0) std::_Exit(2);
}

void* volatile taken;  // which keeps the compiler from seeing that nobody uses the blocks

// Takes all memory, and leaves no block of any size at hand.
void take_all_memory() {
    allow_more_bytes(std::size_t{1} << 20);
    for (std::size_t bytes = std::size_t{1} << 20; bytes >= 16; bytes = bytes > 2048 ? bytes / 2 : bytes - 8) {
        do {
            taken = std::malloc(bytes);
        } while (taken != nullptr);
    }
}

void expect(bool condition, int status) {
    if (!condition) std::_Exit(status);
}

bool parse(const char* line, parserecMem* record) { return gparse_parline_mem(line, " ", "", '\0', record); }

bool parse_efficiently(const char* line, parserecMem* record) {
    return gparse_efficient_parline_mem(line, " ", "", '\0', record);
}

TEST(ExhaustedMemoryDeathTest, ParseFailsWithoutMemoryForAnEntry) {
    EXPECT_EXIT(
        {
            parserecMem first{};
            parserecMem second{};
            expect(parse("a", &first), 3);
            take_all_memory();
            expect(!parse("b", &second), 4);
            expect(second.slot == 0 && second.nclumps == 0 && second.clumps == nullptr, 5);
            expect(first.nclumps == 1, 6);
            allow_all_memory();
            expect(parse("b", &second) && second.slot == 2, 7);
            std::_Exit(0);
        },
        testing::ExitedWithCode(0), "");
}

TEST(ExhaustedMemoryDeathTest, EntryOfAFailedParseIsReusedUnderANumberOneLess) {
    EXPECT_EXIT(
        {
            parserecMem records[3] = {};
            expect(parse_efficiently("a", &records[0]) && parse_efficiently("b", &records[1]), 3);
            parserecMem without_memory{};
            take_all_memory();
            expect(!parse_efficiently("c", &without_memory), 4);
            expect(without_memory.nclumps == 0 && without_memory.clumps == nullptr, 5);
            allow_all_memory();
            expect(parse_efficiently("d", &records[2]), 6);
            expect(records[2].slot == 2 && records[1].slot == 2, 7);  // the third entry, and the second
            expect(parse_efficiently("e", &records[2]) && parse_efficiently("f", &records[1]), 8);
            for (parserecMem& record : records) expect(gparse_efficient_parline_free_mem(&record), 9);
            std::_Exit(0);
        },
        testing::ExitedWithCode(0), "");
}

TEST(ExhaustedMemoryDeathTest, LineThatNeedsTooMuchMemoryFailsAndTheNextIsParsed) {
    EXPECT_EXIT(
        {
            std::string line;
            for (int i = 0; i < 1000000; ++i) line += "a ";
            parserecMem record{};
            allow_more_bytes(std::size_t{4} << 20);
            expect(!parse(line.c_str(), &record), 3);
            expect(record.nclumps == 0 && record.clumps == nullptr, 4);
            gparse_init_parserecMem(&record);
            expect(parse("1 2", &record) && record.nclumps == 2 && record.clumps[1].int_value == 2, 5);
            std::_Exit(0);
        },
        testing::ExitedWithCode(0), "");
}

TEST(ExhaustedMemoryDeathTest, RecordInPlaceFailsWithoutMemoryAndKeepsItsSlot) {
    EXPECT_EXIT(
        {
            parserecMem record{};
            expect(parse("a", &record), 3);
            take_all_memory();
            expect(!parse("1 2 3 4 5 6 7 8 9", &record), 4);
            expect(record.nclumps == 0 && record.clumps == nullptr && record.slot == 1, 5);
            allow_all_memory();
            expect(parse("1 2", &record) && record.nclumps == 2, 6);
            std::_Exit(0);
        },
        testing::ExitedWithCode(0), "");
}

TEST(ExhaustedMemoryDeathTest, StrippedTextFailsWithoutMemory) {
    EXPECT_EXIT(
        {
            char short_number[] = "1.5";
            char long_number[] = "1234567890.1234567";
            char* const out = gmem_ee_malloc(33, 1);
            take_all_memory();
            expect(gparse_cnvt_string_string_stripped(nullptr, short_number, 2, 4) == nullptr, 3);
            expect(gparse_cnvt_string_string_stripped(out, long_number, 9, 20) == nullptr, 4);
            std::_Exit(0);
        },
        testing::ExitedWithCode(0), "");
}

}  // namespace

#endif
