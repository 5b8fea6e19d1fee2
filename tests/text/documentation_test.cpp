// The examples of docs/text.md.

#include <gtest/gtest.h>
#include <orvix/gsl/line_parser.h>
#include <orvix/gsl/number_text.h>
#include <support/temporary_directory.h>

#include <charconv>
#include <cstddef>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Row = std::vector<std::string>;

std::string page() {
    const std::filesystem::path file = std::filesystem::path(ORVIX_TEST_DATA) / "../../docs/text.md";
    return orvix::test::read_file(file.lexically_normal());
}

// The cells of a table's row; code without its quotes.
Row cells_of(const std::string& line) {
    Row cells;
    std::istringstream stream(line);
    std::string cell;
    std::getline(stream, cell, '|');
    while (std::getline(stream, cell, '|')) {
        const std::size_t quote = cell.find('`');
        if (quote == std::string::npos) {
            cell.erase(0, cell.find_first_not_of(' '));
            cell.erase(cell.find_last_not_of(' ') + 1);
        } else {
            cell = cell.substr(quote + 1, cell.rfind('`') - quote - 1);
        }
        cells.push_back(cell);
    }
    return cells;
}

// The rows of the table with this head.
std::vector<Row> table(const std::string& head) {
    std::istringstream lines(page());
    std::string line;
    while (std::getline(lines, line) && !line.starts_with(head)) continue;
    std::getline(lines, line);  // the rule below it
    std::vector<Row> rows;
    while (std::getline(lines, line) && line.starts_with("|")) rows.push_back(cells_of(line));
    return rows;
}

double number(const std::string& text) {
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

}  // namespace

TEST(TextPage, LineHasTheClumpsOfTheTable) {
    const std::vector<Row> rows = table("| Clump | Text |");
    const std::string line = "R12 in out 4.7e3 tc=-0.5 ; carbon film";
    EXPECT_NE(page().find("```\n" + line + "\n```\n"), std::string::npos);
    parserec record;
    gparse_parline(line.c_str(), " ", "=", ';', &record);
    ASSERT_EQ(record.nclumps, 7U);
    ASSERT_EQ(rows.size(), 7U);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        char text[40];
        gparse_getclump(&record, i, text);
        EXPECT_EQ(text, rows[i][1]);
        const parserec_clump& clump = record.clumps[i];
        EXPECT_EQ(clump.is_int ? "whole number" : clump.is_real ? "number" : "text", rows[i][2]);
        EXPECT_EQ(clump.real_value, number(rows[i][3]));
    }
}

TEST(TextPage, TextsReadAsTheTableSays) {
    const std::vector<Row> rows = table("| Text | Number |");
    ASSERT_EQ(rows.size(), 14U);
    for (const Row& row : rows) {
        SCOPED_TRACE(row[0]);
        double real = 0;
        int whole = 0;
        EXPECT_EQ(gparse_astodbl(row[0].c_str(), &real), row[1] != "no");
        EXPECT_EQ(gparse_astoint(row[0].c_str(), &whole), row[2] != "no");
        if (row[1] != "no") {
            EXPECT_EQ(real, number(row[1]));
        }
        if (row[2] != "no") {
            EXPECT_EQ(whole, number(row[2]));
        }
    }
}

TEST(TextPage, FieldsHoldWhatTheTableSays) {
    const std::vector<Row> rows = table("| Value | Width |");
    ASSERT_EQ(rows.size(), 11U);
    for (const Row& row : rows) {
        SCOPED_TRACE(row[0]);
        const int width = std::stoi(row[1]);
        const int decimals = std::stoi(row[2]);
        char text[40];
        EXPECT_EQ(gparse_dbltoas(number(row[0]), width, decimals, text) ? text : "fails", row[3]);
        EXPECT_EQ(gparse_dblxxas(number(row[0]), width, decimals, text) ? text : "fails", row[4]);
    }
}

TEST(TextPage, StrippedTextsAreThoseOfTheTable) {
    const std::vector<Row> rows = table("| Value | Least decimals |");
    ASSERT_EQ(rows.size(), 6U);
    for (const Row& row : rows) {
        SCOPED_TRACE(row[0]);
        EXPECT_EQ(gparse_cnvt_double_string_stripped(nullptr, number(row[0]), std::stoi(row[1]), std::stoi(row[2])),
                  row[3]);
    }
}
