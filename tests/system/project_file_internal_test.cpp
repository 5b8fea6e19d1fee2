#include "system/project_file.h"

#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

namespace {

using orvix::gsl::system::gprj_read_value;
using orvix::test::TemporaryDirectory;

// The value of KEY in a file of these bytes; none if the key is not found.
std::optional<std::string> value_in(std::string_view bytes) {
    const TemporaryDirectory directory;
    directory.write("marker.cfg", bytes);
    std::string value = "before";
    if (gprj_read_value(directory.name(), "marker.cfg", "KEY", &value)) return value;
    EXPECT_EQ(value, "");
    return std::nullopt;
}

TEST(GprjReadValue, GivesWhatStandsBehindTheEqualsSign) {
    EXPECT_EQ(value_in("KEY=1000\n"), "1000");
    EXPECT_EQ(value_in("KEY=1000"), "1000");
    EXPECT_EQ(value_in("KEY=1000\r\n"), "1000");
}

TEST(GprjReadValue, MissingFileGivesFalseAndNoValue) {
    const TemporaryDirectory directory;
    std::string value = "before";
    EXPECT_FALSE(gprj_read_value(directory.name(), "missing.cfg", "KEY", &value));
    EXPECT_EQ(value, "");
}

TEST(GprjReadValue, DirectoryInPlaceOfTheFileGivesFalse) {
    const TemporaryDirectory directory;
    directory.write("marker.cfg/file", "KEY=1\n");
    std::string value;
    EXPECT_FALSE(gprj_read_value(directory.name(), "marker.cfg", "KEY", &value));
}

TEST(GprjReadValue, FileWithoutTheKeyGivesFalse) {
    EXPECT_EQ(value_in(""), std::nullopt);
    EXPECT_EQ(value_in("OTHER=1\n\n=\n   \n"), std::nullopt);
}

TEST(GprjReadValue, KeyIsComparedWholeAndInEveryLetter) {
    EXPECT_EQ(value_in("key=1\nKEYS=2\nKE=3\nA KEY=4\n"), std::nullopt);
}

TEST(GprjReadValue, FirstMatchCounts) { EXPECT_EQ(value_in("OTHER=0\nKEY=1\nKEY=2\n"), "1"); }

TEST(GprjReadValue, BlanksAroundTheKeyDoNotCount) { EXPECT_EQ(value_in("   KEY  =1\n"), "1"); }

TEST(GprjReadValue, BlanksInFrontOfTheValueCountAndThoseAtTheEndOfTheLineDoNot) {
    EXPECT_EQ(value_in("KEY=  1 2  \n"), "  1 2");
}

TEST(GprjReadValue, TabsAreNoBlanks) {
    EXPECT_EQ(value_in("\tKEY=1\n"), std::nullopt);
    EXPECT_EQ(value_in("KEY\t=1\n"), std::nullopt);
    EXPECT_EQ(value_in("KEY=1\t\n"), "1\t");
}

TEST(GprjReadValue, RunOfEqualsSignsCountsAsOneAndThoseInFrontAsNone) {
    EXPECT_EQ(value_in("KEY===1\n"), "1");
    EXPECT_EQ(value_in("==KEY=1\n"), "1");
    EXPECT_EQ(value_in("= KEY =1\n"), "1");
}

TEST(GprjReadValue, ValueEndsAtTheNextEqualsSign) { EXPECT_EQ(value_in("KEY=1 =2\n"), "1 "); }

TEST(GprjReadValue, KeyWithoutAValueHasTheEmptyOneAndEndsTheSearch) {
    EXPECT_EQ(value_in("KEY\nKEY=1\n"), "");
    EXPECT_EQ(value_in("KEY=\nKEY=1\n"), "");
    EXPECT_EQ(value_in("KEY=   \nKEY=1\n"), "");
}

TEST(GprjReadValue, EndMarkAtTheStartOfALineEndsTheFile) { EXPECT_EQ(value_in("\x1aKEY=1\nKEY=2\n"), std::nullopt); }

TEST(GprjReadValue, WhatIsBehind1023BytesOfALineIsDropped) {
    EXPECT_EQ(value_in(std::string(1019, ' ') + "KEY=1234\n"), "");
    EXPECT_EQ(value_in(std::string(1017, ' ') + "KEY=1234\n"), "12");
    EXPECT_EQ(value_in(std::string(1023, 'x') + "KEY=1\n"), std::nullopt);
    EXPECT_EQ(value_in(std::string(3000, 'x') + "\nKEY=1\n"), "1");
}

}  // namespace
