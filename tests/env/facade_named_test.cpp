#include "env/facade_site.h"

#include <gtest/gtest.h>
#include <orvix/gsl/getenv.h>

#include <string>

namespace {

using orvix::test::FacadeSite;
using orvix::test::OpenedSince;
using orvix::test::taken;
using orvix::test::Text;
using orvix::test::value;
using orvix::test::value_of;

Text expanded(const char* env, const char* text) { return taken(astr_expand_environment_value(env, text)); }

// A site with one file for each level of "demo", that sets LEVEL and one setting of its own.
class Levels : public FacadeSite {
public:
    Levels() {
        write(file_of("demo", ENVLOC_CWD), "LEVEL=cwd\nCWD=1\n");
        write(file_of("demo", ENVLOC_USER), "LEVEL=user\nUSER=1\n");
        write(file_of("demo", ENVLOC_CUSTOM), "LEVEL=custom\nCUSTOM=1\n");
        write(file_of("demo", ENVLOC_SYSTEM), "LEVEL=system\nSYSTEM=1\n");
    }
};

constexpr AstrEnvlocE level(std::int32_t number) { return static_cast<AstrEnvlocE>(number); }

TEST(AstrEnvlocE, HasItsToldNumbers) {
    EXPECT_EQ(ASTR_ENVLOC_CWD, 0);
    EXPECT_EQ(ASTR_ENVLOC_USER, 1);
    EXPECT_EQ(ASTR_ENVLOC_SYSTEM, 2);
    EXPECT_EQ(ASTR_ENVLOC_ANY, 4);
    EXPECT_EQ(sizeof(AstrEnvlocE), 4U);
}

TEST(AstrGetEnvironmentValue, ReadsTheLevelAskedFor) {
    const Levels site;
    EXPECT_EQ(value_of("demo", "LEVEL", ASTR_ENVLOC_CWD), "cwd");
    EXPECT_EQ(value_of("demo", "LEVEL", ASTR_ENVLOC_USER), "user");
    EXPECT_EQ(value_of("demo", "LEVEL", ASTR_ENVLOC_SYSTEM), "system");
    EXPECT_EQ(value_of("demo", "LEVEL", ASTR_ENVLOC_ANY), "cwd");
}

TEST(AstrGetEnvironmentValue, OneLevelDoesNotShowTheSettingsOfOthers) {
    const Levels site;
    EXPECT_EQ(value_of("demo", "USER", ASTR_ENVLOC_CWD), "");
    EXPECT_EQ(value_of("demo", "CWD", ASTR_ENVLOC_USER), "");
    EXPECT_EQ(value_of("demo", "CUSTOM", ASTR_ENVLOC_SYSTEM), "");
}

TEST(AstrGetEnvironmentValue, UnknownLevelsSearchAll) {
    const Levels site;
    for (const std::int32_t number : {3, 5, -1, 100}) {
        SCOPED_TRACE(number);
        EXPECT_EQ(value_of("demo", "LEVEL", level(number)), "cwd");
        EXPECT_EQ(value_of("demo", "CUSTOM", level(number)), "1");
        EXPECT_EQ(value_of("demo", "SYSTEM", level(number)), "1");
    }
}

TEST(AstrGetEnvironmentValue, NullAndEmptyEnvironmentGiveNullWhateverIsSelected) {
    const Levels site;
    EXPECT_EQ(value_of(nullptr, "LEVEL"), std::nullopt);
    astr_set_environment("demo");
    EXPECT_EQ(value_of(nullptr, "LEVEL"), std::nullopt);
    EXPECT_EQ(value_of("", "LEVEL"), std::nullopt);
}

TEST(AstrGetEnvironmentValue, MissingSettingIsEmptyAndNotNull) {
    const Levels site;
    EXPECT_EQ(value_of("demo", "MISSING"), "");
    EXPECT_EQ(value_of("demo", nullptr), "");
    astr_set_environment("demo");
    EXPECT_EQ(value_of("demo", "MISSING"), "");
    EXPECT_EQ(value("MISSING"), std::nullopt);
}

TEST(AstrGetEnvironmentValue, EnvironmentWithoutFilesGivesEmptyStrings) {
    const FacadeSite site;
    EXPECT_EQ(value_of("nowhere", "K"), "");
}

TEST(AstrGetEnvironmentValue, ValueThatExpandsToNothingIsEmpty) {
    const FacadeSite site;
    site.write("work/demo.cfg", "K=%UNKNOWN_SETTING\n");
    EXPECT_EQ(value_of("demo", "K"), "");
}

TEST(AstrGetEnvironmentValue, LongValueComesBackWhole) {
    const FacadeSite site;
    site.write("work/demo.cfg", "K=" + std::string(150, 'x') + "\n");
    EXPECT_EQ(value_of("demo", "K"), std::string(150, 'x'));
}

TEST(AstrGetEnvironmentValue, SelectedEnvironmentShowsWhatIsNotSavedYet) {
    const Levels site;
    astr_set_environment("demo");
    ASSERT_TRUE(astr_set_environment_value("demo", "LEVEL", "changed", ASTR_ENVLOC_CWD, false));
    EXPECT_EQ(value_of("demo", "LEVEL"), "changed");
}

TEST(AstrGetEnvironmentValue, OtherEnvironmentIsClosedAndTheSelectedOneStays) {
    const Levels site;
    astr_set_environment("selected");
    const OpenedSince opened;
    EXPECT_EQ(value_of("demo", "LEVEL"), "cwd");
    EXPECT_EQ(opened.count(), 0);
    EXPECT_STREQ(astr_get_environment(), "selected");
}

TEST(AstrSetEnvironmentValue, NullAndEmptyEnvironmentFail) {
    const FacadeSite site;
    astr_set_environment("demo");
    EXPECT_FALSE(astr_set_environment_value(nullptr, "K", "v", ASTR_ENVLOC_CWD, false));
    EXPECT_FALSE(astr_set_environment_value("", "K", "v", ASTR_ENVLOC_CWD, false));
    EXPECT_EQ(value("K"), std::nullopt);
}

TEST(AstrSetEnvironmentValue, NullAndEmptySettingFail) {
    const FacadeSite site;
    astr_set_environment("demo");
    EXPECT_FALSE(astr_set_environment_value("demo", nullptr, "v", ASTR_ENVLOC_CWD, false));
    EXPECT_FALSE(astr_set_environment_value("demo", "", "v", ASTR_ENVLOC_CWD, true));
    EXPECT_FALSE(astr_set_environment_value("other", "", "v", ASTR_ENVLOC_CWD, true));
}

TEST(AstrSetEnvironmentValue, SelectedWithoutSaveStaysInMemory) {
    const FacadeSite site;
    astr_set_environment("demo");
    EXPECT_TRUE(astr_set_environment_value("demo", "K", "v", ASTR_ENVLOC_CWD, false));
    EXPECT_EQ(value("K"), "v");
    EXPECT_FALSE(site.exists("work/demo.cfg"));
}

TEST(AstrSetEnvironmentValue, SelectedWithSaveWritesTheUsersFileAndReadsAllFilesAfresh) {
    const FacadeSite site;
    astr_set_environment("a");
    site.write("work/a.cfg", "FROM_OUTSIDE=1\n");
    EXPECT_EQ(value("FROM_OUTSIDE"), std::nullopt);

    EXPECT_TRUE(astr_set_environment_value("a", "K", "v", ASTR_ENVLOC_USER, true));
    EXPECT_EQ(site.read("home/hxorvix/config/a.cfg"), "K=v\n");
    EXPECT_EQ(value("K"), "v");
    EXPECT_EQ(value("FROM_OUTSIDE"), "1");
}

TEST(AstrSetEnvironmentValue, SaveWritesEarlierChangesOfAllLevels) {
    const FacadeSite site;
    site.write("install/config/demo.cfg", "K=old\n");
    astr_set_environment("demo");
    EXPECT_TRUE(astr_set_environment_value("demo", "K", "system", ASTR_ENVLOC_SYSTEM, false));
    EXPECT_TRUE(astr_set_environment_value("demo", "K", "user", ASTR_ENVLOC_USER, false));
    EXPECT_TRUE(astr_set_environment_value("demo", "K", "cwd", ASTR_ENVLOC_CWD, true));
    EXPECT_EQ(site.read("install/config/demo.cfg"), "K=system\n");
    EXPECT_EQ(site.read("home/hxorvix/config/demo.cfg"), "K=user\n");
    EXPECT_EQ(site.read("work/demo.cfg"), "K=cwd\n");
}

TEST(AstrSetEnvironmentValue, SelectedWithSaveLeavesOneEnvironmentOpen) {
    const FacadeSite site;
    const OpenedSince opened;
    astr_set_environment("demo");
    EXPECT_TRUE(astr_set_environment_value("demo", "K", "v", ASTR_ENVLOC_CWD, true));
    EXPECT_EQ(opened.count(), 1);
}

TEST(AstrSetEnvironmentValue, IsTrueAlsoIfTheSaveFails) {
    const FacadeSite site;  // nobody makes the directory of the installation's files
    astr_set_environment("demo");
    EXPECT_TRUE(astr_set_environment_value("demo", "K", "v", ASTR_ENVLOC_SYSTEM, true));
    EXPECT_EQ(value("K"), std::nullopt);
}

TEST(AstrSetEnvironmentValue, OtherWithSaveWritesItsFileAndIsClosed) {
    const Levels site;
    const OpenedSince opened;
    EXPECT_TRUE(astr_set_environment_value("demo", "LEVEL", "new", ASTR_ENVLOC_CWD, true));
    EXPECT_EQ(site.read("work/demo.cfg"), "LEVEL=new\nCWD=1\n");
    EXPECT_EQ(opened.count(), 0);
}

TEST(AstrSetEnvironmentValue, OtherWithoutSaveIsLost) {
    const Levels site;
    const OpenedSince opened;
    EXPECT_TRUE(astr_set_environment_value("demo", "LEVEL", "new", ASTR_ENVLOC_CWD, false));
    EXPECT_EQ(value_of("demo", "LEVEL"), "cwd");
    EXPECT_EQ(site.read("work/demo.cfg"), "LEVEL=cwd\nCWD=1\n");
    EXPECT_EQ(opened.count(), 0);
}

TEST(AstrSetEnvironmentValue, AnyLevelChangesTheSettingWhereItStands) {
    const Levels site;
    EXPECT_TRUE(astr_set_environment_value("demo", "CUSTOM", "2", ASTR_ENVLOC_ANY, true));
    EXPECT_EQ(site.read("install/custom/config/demo.cfg"), "LEVEL=custom\nCUSTOM=2\n");
}

TEST(AstrSetEnvironmentValue, NullValueOfAMissingSettingFails) {
    const FacadeSite site;
    astr_set_environment("demo");
    EXPECT_FALSE(astr_set_environment_value("demo", "K", nullptr, ASTR_ENVLOC_CWD, false));
}

TEST(AstrSetEnvironmentValue, ValueMayComeFromAProcessVariable) {
    const FacadeSite site;
    const orvix::test::ScopedVariable variable("ORVIX_TEST_TOOLS", "C:\\a directory with a name of some length");
    EXPECT_TRUE(astr_set_environment_value("demo", "TOOLS", gsl_getenv("ORVIX_TEST_TOOLS"), ASTR_ENVLOC_CWD, true));
    EXPECT_EQ(value_of("demo", "TOOLS"), "C:\\a directory with a name of some length");
}

TEST(AstrSetEnvironmentValue, OwnNameOfTheSelectionMayBeTheArgument) {
    const FacadeSite site;
    astr_set_environment("demo");
    EXPECT_TRUE(astr_set_environment_value(astr_get_environment(), "K", "v", ASTR_ENVLOC_CWD, true));
    EXPECT_STREQ(astr_get_environment(), "demo");
    EXPECT_EQ(value("K"), "v");
}

TEST(AstrEnvironmentVarExists, LooksAtTheLevelAskedFor) {
    const Levels site;
    EXPECT_TRUE(astr_environment_var_exists("demo", "USER", ASTR_ENVLOC_USER));
    EXPECT_FALSE(astr_environment_var_exists("demo", "USER", ASTR_ENVLOC_CWD));
    EXPECT_TRUE(astr_environment_var_exists("demo", "CUSTOM", ASTR_ENVLOC_ANY));
    EXPECT_TRUE(astr_environment_var_exists("demo", "CUSTOM", level(3)));
    EXPECT_FALSE(astr_environment_var_exists("demo", "MISSING", ASTR_ENVLOC_ANY));
}

TEST(AstrEnvironmentVarExists, ValueLongerThanTheProbeAndEmptyValueExist) {
    const FacadeSite site;
    site.write("work/demo.cfg", "LONG=" + std::string(150, 'x') + "\nEMPTY=\n");
    EXPECT_TRUE(astr_environment_var_exists("demo", "LONG", ASTR_ENVLOC_ANY));
    EXPECT_TRUE(astr_environment_var_exists("demo", "EMPTY", ASTR_ENVLOC_ANY));
}

TEST(AstrEnvironmentVarExists, ReferencesAreNotLookedAt) {
    const FacadeSite site;
    site.write("work/demo.cfg", "K=%UNKNOWN_SETTING\n");
    EXPECT_TRUE(astr_environment_var_exists("demo", "K", ASTR_ENVLOC_ANY));
}

TEST(AstrEnvironmentVarExists, NullAndEmptyMeanTheSelectedEnvironment) {
    const Levels site;
    for (const char* selected : {static_cast<const char*>(nullptr), ""}) {
        EXPECT_FALSE(astr_environment_var_exists(selected, "LEVEL", ASTR_ENVLOC_ANY));
    }
    astr_set_environment("demo");
    for (const char* selected : {static_cast<const char*>(nullptr), ""}) {
        EXPECT_TRUE(astr_environment_var_exists(selected, "USER", ASTR_ENVLOC_USER));
        EXPECT_FALSE(astr_environment_var_exists(selected, "USER", ASTR_ENVLOC_CWD));
    }
}

TEST(AstrEnvironmentVarExists, OtherEnvironmentIsClosed) {
    const Levels site;
    const OpenedSince opened;
    EXPECT_TRUE(astr_environment_var_exists("demo", "LEVEL", ASTR_ENVLOC_ANY));
    EXPECT_FALSE(astr_environment_var_exists("demo", "MISSING", ASTR_ENVLOC_ANY));
    EXPECT_EQ(opened.count(), 0);
}

TEST(AstrExpandEnvironmentValue, UsesTheSettingsOfTheEnvironment) {
    const Levels site;
    EXPECT_EQ(expanded("demo", "<%LEVEL>"), "<cwd>");
    astr_set_environment("demo");
    EXPECT_EQ(expanded("demo", "<%LEVEL>"), "<cwd>");
}

TEST(AstrExpandEnvironmentValue, NullAndEmptyEnvironmentGiveNullWhateverIsSelected) {
    const Levels site;
    astr_set_environment("demo");
    EXPECT_EQ(expanded(nullptr, "text"), std::nullopt);
    EXPECT_EQ(expanded("", "text"), std::nullopt);
}

TEST(AstrExpandEnvironmentValue, NothingLeftAndNullTextGiveNull) {
    const Levels site;
    astr_set_environment("demo");
    EXPECT_EQ(expanded("demo", ""), std::nullopt);
    EXPECT_EQ(expanded("demo", "%UNKNOWN_SETTING"), std::nullopt);
    EXPECT_EQ(expanded("demo", nullptr), std::nullopt);
}

TEST(AstrExpandEnvironmentValue, LongTextsComeBackWhole) {
    const FacadeSite site;
    const std::string part(150, 'x');
    site.write("work/demo.cfg", "LONG=" + part + "\n");
    astr_set_environment("demo");
    EXPECT_EQ(expanded("demo", part.c_str()), part);
    EXPECT_EQ(expanded("demo", "%LONG;%LONG"), part + ";" + part);
}

TEST(AstrExpandEnvironmentValue, TextMayComeFromAProcessVariable) {
    const Levels site;
    const orvix::test::ScopedVariable variable("ORVIX_TEST_PATHS",
                                               "%LEVEL;a text of some length, longer than short ones");
    EXPECT_EQ(expanded("demo", gsl_getenv("ORVIX_TEST_PATHS")), "cwd;a text of some length, longer than short ones");
}

TEST(AstrExpandEnvironmentValue, OtherEnvironmentStaysOpenAfterEachCall) {
    const Levels site;
    const OpenedSince opened;
    EXPECT_EQ(expanded("demo", "%LEVEL"), "cwd");
    EXPECT_EQ(opened.count(), 1);
    EXPECT_EQ(expanded("demo", "%UNKNOWN_SETTING"), std::nullopt);
    EXPECT_EQ(opened.count(), 2);
}

TEST(AstrExpandEnvironmentValue, SelectedEnvironmentIsNotOpenedAgain) {
    const Levels site;
    astr_set_environment("demo");
    const OpenedSince opened;
    EXPECT_EQ(expanded("demo", "%LEVEL"), "cwd");
    EXPECT_EQ(opened.count(), 0);
}

}  // namespace
