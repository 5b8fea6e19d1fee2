#include "env/facade_site.h"

#include "support/buffer.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using orvix::test::FacadeSite;
using orvix::test::taken;
using orvix::test::Text;
using orvix::test::value;

// A site whose environment "demo" holds these settings, selected.
class Selected : public FacadeSite {
public:
    explicit Selected(std::string_view settings) {
        write(file_of("demo", ENVLOC_CWD), settings);
        astr_set_environment("demo");
    }
};

Text as_stored(const char* name) { return taken(astr_environment_value_not_expanded(name)); }

TEST(AstrEnvironmentValue, FindsTheNearestLevel) {
    const FacadeSite site;
    const struct {
        EnvlocE level;
        const char* settings;
    } files[] = {
        {ENVLOC_SYSTEM, "A=system\nB=system\nC=system\nD=system\n"},
        {ENVLOC_CUSTOM, "A=custom\nB=custom\nC=custom\n"},
        {ENVLOC_USER, "A=user\nB=user\n"},
        {ENVLOC_CWD, "A=cwd\n"},
    };
    for (const auto& file : files) site.write(FacadeSite::file_of("demo", file.level), file.settings);
    astr_set_environment("demo");
    EXPECT_EQ(value("A"), "cwd");
    EXPECT_EQ(value("B"), "user");
    EXPECT_EQ(value("C"), "custom");
    EXPECT_EQ(value("D"), "system");
}

TEST(AstrEnvironmentValue, MissingSettingGivesNull) {
    const Selected site("K=v\n");
    EXPECT_EQ(value("MISSING"), std::nullopt);
}

TEST(AstrEnvironmentValue, NullAndEmptyNameGiveNull) {
    const Selected site("K=v\n");
    EXPECT_EQ(value(nullptr), std::nullopt);
    EXPECT_EQ(value(""), std::nullopt);
}

TEST(AstrEnvironmentValue, WithoutASelectionGivesNull) {
    const FacadeSite site;
    EXPECT_EQ(value("K"), std::nullopt);
    EXPECT_EQ(as_stored("K"), std::nullopt);
}

TEST(AstrEnvironmentValue, ReplacesReferences) {
    const Selected site("ROOT=\\tools\nLIB=%ROOT\\lib\n");
    EXPECT_EQ(value("LIB"), "\\tools\\lib");
}

TEST(AstrEnvironmentValue, ValueThatExpandsToNothingGivesNull) {
    const Selected site("K=%UNKNOWN_SETTING\nEMPTY=\n");
    EXPECT_EQ(value("K"), std::nullopt);
    EXPECT_EQ(value("EMPTY"), std::nullopt);
}

TEST(AstrEnvironmentValue, ValuesOfEveryLengthAroundTheFirstBlockComeBackWhole) {
    std::string settings;
    for (const std::size_t length : {98U, 99U, 100U, 101U, 150U, 199U, 200U, 5000U})
        settings += "K" + std::to_string(length) + "=" + std::string(length, 'x') + "\n";
    const Selected site(settings);
    for (const std::size_t length : {98U, 99U, 100U, 101U, 150U, 199U, 200U, 5000U}) {
        SCOPED_TRACE(length);
        const std::string name = "K" + std::to_string(length);
        EXPECT_EQ(value(name.c_str()), std::string(length, 'x'));
        EXPECT_EQ(as_stored(name.c_str()), std::string(length, 'x'));
    }
}

TEST(AstrEnvironmentValue, ShortValueThatExpandsToALongOneComesBackWhole) {
    const Selected site("LONG=" + std::string(150, 'x') + "\nK=%LONG;%LONG;%LONG\n");
    const std::string part(150, 'x');
    EXPECT_EQ(value("K"), part + ";" + part + ";" + part);
}

TEST(AstrEnvironmentValue, LongValueThatExpandsToALongerOneComesBackWhole) {
    const std::string head(150, 'h');
    const std::string tail(400, 't');
    const Selected site("TAIL=" + tail + "\nK=" + head + "%TAIL\n");
    EXPECT_EQ(value("K"), head + tail);
}

TEST(AstrEnvironmentValueNotExpanded, LeavesReferencesAsTheyAre) {
    const Selected site("ROOT=\\tools\n");
    ASSERT_TRUE(astr_set_environment_value("demo", "LIB", "%ROOT\\lib", ASTR_ENVLOC_ANY, false));
    EXPECT_EQ(as_stored("LIB"), "%ROOT\\lib");
    EXPECT_EQ(value("LIB"), "\\tools\\lib");
}

TEST(AstrEnvironmentValueNotExpanded, EmptyValueIsTheEmptyString) {
    const Selected site("EMPTY=\n");
    EXPECT_EQ(as_stored("EMPTY"), "");
}

TEST(AstrEnvironmentValueNotExpanded, MissingSettingGivesNull) {
    const Selected site("K=v\n");
    EXPECT_EQ(as_stored("MISSING"), std::nullopt);
}

TEST(AstrEnvironmentString, CopiesTheExpandedValue) {
    const Selected site("ROOT=\\tools\nLIB=%ROOT\\lib\n");
    char buffer[20] = "before";
    EXPECT_TRUE(astr_environment_string("LIB", buffer, sizeof buffer));
    EXPECT_STREQ(buffer, "\\tools\\lib");
}

TEST(AstrEnvironmentString, FitsInABufferOfOneByteMoreThanItsLength) {
    const Selected site("K=abc\n");
    orvix::test::Buffer buffer("", 4);
    EXPECT_TRUE(astr_environment_string("K", buffer, 4));
    EXPECT_STREQ(buffer, "abc");
}

TEST(AstrEnvironmentString, TooSmallABufferIsNotTouched) {
    const Selected site("K=abc\n");
    for (const int size : {3, 1, 0, -1, -2147483647}) {
        SCOPED_TRACE(size);
        char buffer[8] = "before";
        EXPECT_FALSE(astr_environment_string("K", buffer, size));
        EXPECT_STREQ(buffer, "before");
    }
}

TEST(AstrEnvironmentString, BufferThatTakesTheStoredValueAndNotTheExpandedOneIsEmptied) {
    const Selected site("LONG=0123456789\n");
    ASSERT_TRUE(astr_set_environment_value("demo", "K", "%LONG", ASTR_ENVLOC_ANY, false));
    char buffer[8] = "before";
    EXPECT_FALSE(astr_environment_string("K", buffer, sizeof buffer));
    EXPECT_STREQ(buffer, "");
}

TEST(AstrEnvironmentString, MissingSettingAndNoSelectionGiveFalse) {
    char buffer[8] = "before";
    {
        const Selected site("K=abc\n");
        EXPECT_FALSE(astr_environment_string("MISSING", buffer, sizeof buffer));
        EXPECT_FALSE(astr_environment_string(nullptr, buffer, sizeof buffer));
    }
    const FacadeSite site;
    EXPECT_FALSE(astr_environment_string("K", buffer, sizeof buffer));
    EXPECT_STREQ(buffer, "before");
}

TEST(AstrEnvironmentString, WithoutABufferIsFalse) {
    const Selected site("K=abc\n");
    EXPECT_FALSE(astr_environment_string("K", nullptr, 100));
}

}  // namespace
