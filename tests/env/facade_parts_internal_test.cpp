#include "env/browser_command.h"
#include "env/heap_text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using orvix::gsl::env::fetch;
using orvix::gsl::env::HeapText;
using orvix::gsl::env::program_of_command;

TEST(Fetch, StartsWith100BytesAndAddsWhatIsNeeded) {
    std::vector<std::size_t> sizes;
    const HeapText text = fetch([&](char* buffer, std::size_t bytes) -> long long {
        sizes.push_back(bytes);
        buffer[0] = 'x';
        buffer[1] = '\0';
        return sizes.size() < 3 ? 151 : 0;
    });
    EXPECT_EQ(sizes, (std::vector<std::size_t>{100, 251, 402}));
    EXPECT_STREQ(text.get(), "x");
}

TEST(Fetch, NegativeResultGivesNull) {
    EXPECT_EQ(fetch([](char*, std::size_t) -> long long { return -1; }), nullptr);
    int calls = 0;
    EXPECT_EQ(fetch([&](char*, std::size_t) -> long long { return ++calls == 1 ? 200 : -1; }), nullptr);
}

TEST(FetchDeathTest, SizeOfZeroInItsLow32BitsIsExhaustedMemory) {
    const auto read = [](char*, std::size_t) -> long long { return (1LL << 32) - 100; };
    EXPECT_EXIT(fetch(read), testing::ExitedWithCode(1), "^FATAL ERROR: out of memory\n$");
}

TEST(ProgramOfCommand, EndsBehindTheProgram) {
    EXPECT_EQ(program_of_command("C:\\b.exe -url %1"), "C:\\b.exe");
    EXPECT_EQ(program_of_command("C:\\b.exe"), "C:\\b.exe");
    EXPECT_EQ(program_of_command("C:\\B.EXE %1"), "C:\\B.EXE");
}

TEST(ProgramOfCommand, QuotesBeforeTheEndAreBlanks) {
    EXPECT_EQ(program_of_command("\"C:\\Program Files\\b.exe\" \"%1\""), " C:\\Program Files\\b.exe");
}

TEST(ProgramOfCommand, ExtensionInsideANameIsPassedOver) {
    EXPECT_EQ(program_of_command("C:\\b.exe.d\\.exec\\c.exe -x.exe"), "C:\\b.exe.d\\.exec\\c.exe");
}

TEST(ProgramOfCommand, MixedCaseIsNoExtension) { EXPECT_EQ(program_of_command("a.Exe b.exe c"), "a.Exe b.exe"); }

TEST(ProgramOfCommand, CommandWithoutAProgramStaysAsItIs) {
    for (const char* command : {"", ".", "\"C:\\b.com\" %1", "b.ex", "b.exe\t"}) {
        SCOPED_TRACE(command);
        EXPECT_EQ(program_of_command(command), command);
    }
}

}  // namespace
