#include "text/line_scanner.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace orvix::gsl::text;

namespace {

// Keeps what it is given, as "3-5", with "." behind a run that ends the line.
struct ListingSink {
    std::vector<std::string> clumps;
    std::size_t limit = 100;

    bool full() const { return clumps.size() >= limit; }
    static const char* read_ahead(const char* at) { return at; }
    void add(Clump run, bool closed) { clumps.push_back(shown(run) + (closed ? "" : ".")); }
    void add_single(Clump single) { clumps.push_back(shown(single) + "!"); }

    static std::string shown(Clump clump) { return std::to_string(clump.start) + '-' + std::to_string(clump.end); }
};

std::vector<std::string> scanned(const char* line, std::ptrdiff_t most) {
    ListingSink sink;
    scan_line(line, ByteClasses(" ", "=", '!'), sink, most);
    return sink.clumps;
}

using Clumps = std::vector<std::string>;

}  // namespace

TEST(ScanLine, TellsRunsFromSinglesAndClosedRunsFromTheOpenOne) {
    EXPECT_EQ(scanned("ab =c= d", 100), (Clumps{"0-1", "3-3!", "4-4", "5-5!", "7-7."}));
    EXPECT_EQ(scanned("ab!", 100), (Clumps{"0-1."}));
}

TEST(ScanLine, NothingLiesBehindTheLongestLine) {
    EXPECT_EQ(scanned("ab cd", 5), (Clumps{"0-1", "3-4."}));
    EXPECT_EQ(scanned("ab cd", 4), (Clumps{"0-1", "3-3."}));
    EXPECT_EQ(scanned("ab cd", 3), (Clumps{"0-1"}));
    EXPECT_EQ(scanned("ab=cd", 2), (Clumps{"0-1"}));
    EXPECT_EQ(scanned("ab=cd", 3), (Clumps{"0-1", "2-2!"}));
    EXPECT_EQ(scanned("   ab", 2), (Clumps{}));
}

TEST(ScanLine, FullSinkIsAskedBeforeEachClumpButTheSingleBehindARun) {
    ListingSink sink;
    sink.limit = 1;
    scan_line("ab=c", ByteClasses(" ", "=", '\0'), sink);
    EXPECT_EQ(sink.clumps, (Clumps{"0-1", "2-2!"}));
}

TEST(ByteClasses, BytesOfNumbersAreTextUnlessListed) {
    EXPECT_TRUE(ByteClasses(" \t,;:", "=()", '!').numbers_are_text());
    for (const char* listed : {"+", "-", ".", "0", "5", "9", "e", "E"}) {
        SCOPED_TRACE(listed);
        EXPECT_FALSE(ByteClasses(listed, "", '\0').numbers_are_text());
        EXPECT_FALSE(ByteClasses(" ", listed, '\0').numbers_are_text());
        EXPECT_FALSE(ByteClasses(" ", "", *listed).numbers_are_text());
    }
}
