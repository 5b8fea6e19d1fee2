// Lines of real files under both parsers and the model: a Touchstone file that lies beside the tests, and what other
// Debian packages bring along.

#include "text/expect_clumps.h"

#include <gtest/gtest.h>
#include <orvix/gsl/line_parser.h>
#include <orvix/gsl/memory_parser.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

using namespace orvix::test;

namespace {

struct Dialect {
    std::string delims;
    std::string singles;
    char comment;
};

std::vector<std::string> lines_of(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) lines.push_back(line.c_str());  // up to a zero byte
    return lines;
}

void expect_line_as_modelled(const std::string& line, const Dialect& dialect) {
    SCOPED_TRACE(line);
    const char* const delims = dialect.delims.c_str();
    const char* const singles = dialect.singles.c_str();
    const std::vector<model::ModelClump> expected =
        *model::parsed(line, dialect.delims, dialect.singles, dialect.comment);

    parserec record;
    EXPECT_TRUE(gparse_parline(line.c_str(), delims, singles, dialect.comment, &record));
    expect_clumps(record, expected);

    parserecMem on_heap{};
    EXPECT_TRUE(gparse_efficient_parline_mem(line.c_str(), delims, singles, dialect.comment, &on_heap));
    expect_clumps(on_heap, expected);
    EXPECT_TRUE(gparse_efficient_parline_free_mem(&on_heap));
}

void expect_file_as_modelled(const std::filesystem::path& file, const Dialect& dialect) {
    SCOPED_TRACE(file);
    const std::vector<std::string> lines = lines_of(file);
    EXPECT_FALSE(lines.empty());
    for (const std::string& line : lines) expect_line_as_modelled(line, dialect);
}

bool is_there(const std::filesystem::path& file) { return std::filesystem::exists(file); }

const std::filesystem::path touchstone = std::filesystem::path(ORVIX_TEST_DATA) / "lowpass.s2p";

}  // namespace

TEST(RealFiles, TouchstoneAgreesWithTheModel) { expect_file_as_modelled(touchstone, {" \t", "", '!'}); }

TEST(RealFiles, TouchstoneLineHasAFrequencyAndFourParameters) {
    std::size_t points = 0;
    for (const std::string& line : lines_of(touchstone)) {
        parserec record;
        gparse_parline(line.c_str(), " \t", "", '!', &record);
        if (record.nclumps == 0 || line[0] == '#') continue;
        SCOPED_TRACE(line);
        ++points;
        ASSERT_EQ(record.nclumps, 9U);
        for (std::size_t i = 0; i < 9; ++i) EXPECT_TRUE(record.clumps[i].is_real);
        double frequency = 0;
        double through = 0;
        gparse_d_relclump(&record, 0, &frequency);
        gparse_d_relclump(&record, 3, &through);
        if (frequency == 1000) {
            EXPECT_EQ(through, 0.70710678);
        }
    }
    EXPECT_EQ(points, 201U);
}

TEST(RealFiles, NetlistsAgreeWithTheModel) {
    const std::filesystem::path folder = "/usr/share/doc/gnucap/examples";
    if (!is_there(folder)) GTEST_SKIP() << "without the examples of the package gnucap";
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == ".ckt") files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    EXPECT_GT(files.size(), 100U);
    for (const auto& file : files) expect_file_as_modelled(file, {" \t", "=()", '*'});
}

TEST(RealFiles, CommaSeparatedValuesAgreeWithTheModel) {
    const std::filesystem::path file = "/usr/share/distro-info/debian.csv";
    if (!is_there(file)) GTEST_SKIP() << "without the package distro-info-data";
    expect_file_as_modelled(file, {",", "", '\0'});
}

TEST(RealFiles, ZoneTablesAgreeWithTheModel) {
    const std::filesystem::path folder = "/usr/share/zoneinfo";
    if (!is_there(folder / "zone1970.tab")) GTEST_SKIP() << "without the package tzdata";
    expect_file_as_modelled(folder / "zone1970.tab", {"\t", "+-", '#'});
    expect_file_as_modelled(folder / "tzdata.zi", {" ", ":", '#'});
}

TEST(RealFiles, ProseAgreesWithTheModel) {
    const std::filesystem::path file = "/usr/share/common-licenses/GPL-3";
    if (!is_there(file)) GTEST_SKIP() << "without the licences of a Debian system";
    expect_file_as_modelled(file, {" ", ".,;:()\"", '\0'});
}
