// Add-on files of the installation.

#include "support/broken_directory.h"
#include "support/temp_site.h"

#include <orvix/gsl/environment.h>

#include <gtest/gtest.h>

#include <string>

using orvix::test::entry_of;
using orvix::test::ScopedVariable;
using orvix::test::setting;
using orvix::test::TempSite;

namespace {

const std::string directory = "install/config/addons_cfgs/demo/";

}  // namespace

TEST(AddOns, LevelFourNamesTheLastFileRead) {
    const TempSite site;
    const std::string name = site.write(directory + "one.cfg", "A=1\n");
    eeEnv* env = site.open("demo", "", ENVLOC_SYSTEM);
    EXPECT_EQ(env->system.path, name);
    EXPECT_EQ(setting(env, "A"), "1");
}

TEST(AddOns, EntriesAreTheLevelsOwn) {
    const TempSite site;
    site.write(directory + "one.cfg", "A=1\n");
    EXPECT_EQ(entry_of(site.open("demo", "", ENVLOC_SYSTEM)->system, "A")->mod, ENVMOD_CLEAN);
}

TEST(AddOns, ComeBehindTheFileOfTheLevel) {
    const TempSite site;
    site.write(directory + "one.cfg", "A=add-on\n");
    eeEnv* env = site.open("demo", "A=level\nB=level\n", ENVLOC_SYSTEM);
    EXPECT_EQ(setting(env, "A"), "add-on");
    EXPECT_EQ(setting(env, "B"), "level");
}

TEST(AddOns, EveryFileCountsWhateverItsEnding) {
    const TempSite site;
    site.write(directory + "one.cfg", "A=1\n");
    site.write(directory + "two.txt", "B=1\n");
    site.write(directory + ".hidden", "C=1\n");
    eeEnv* env = site.open("demo", "", ENVLOC_SYSTEM);
    for (const char* key : {"A", "B", "C"}) EXPECT_EQ(setting(env, key), "1") << key;
}

TEST(AddOns, AreReadWithoutAFileOfTheLevelToo) {
    const TempSite site;
    site.write(directory + "one.cfg", "A=1\n");
    EXPECT_EQ(setting(gui_env_open("demo", ENVLOC_ANY), "A"), "1");
}

TEST(AddOns, BelongToTheSystemLevelAlone) {
    const TempSite site;
    site.write(directory + "one.cfg", "A=1\n");
    for (const EnvlocE level : {ENVLOC_CWD, ENVLOC_USER, ENVLOC_CUSTOM, ENVLOC_FILE}) {
        EXPECT_EQ(setting(gui_env_open("demo", level), "A"), std::nullopt) << level;
    }
}

TEST(AddOns, SubdirectoryIsPassedOverButNamed) {
    const TempSite site;
    site.write(directory + "sub/file", "A=1\n");
    eeEnv* env = site.open("demo", "B=1\n", ENVLOC_SYSTEM);
    EXPECT_EQ(env->system.path, site.name(directory + "sub"));
    EXPECT_EQ(env->system.used, 1);
}

TEST(AddOns, RootDirectoryPlaysNoPart) {
    const TempSite site;
    site.write("root/config/addons_cfgs/demo/one.cfg", "A=root\n");
    site.write(directory + "one.cfg", "A=variable\n");
    guienv_set_root_directory(site.name("root").c_str());
    EXPECT_EQ(setting(gui_env_open("demo", ENVLOC_SYSTEM), "A"), "variable");
}

TEST(AddOns, WithoutTheVariableTheyLieInTheWorkingDirectory) {
    const TempSite site;
    const ScopedVariable unset("HXORVIX_DIR", nullptr);
    site.write("work/config/addons_cfgs/demo/one.cfg", "A=1\n");
    eeEnv* env = gui_env_open("demo", ENVLOC_SYSTEM);
    EXPECT_EQ(setting(env, "A"), "1");
    EXPECT_STREQ(env->system.path, "config\\addons_cfgs\\demo\\one.cfg");
}

TEST(AddOns, ValuesAreExpandedAtLoad) {
    const TempSite site;
    const ScopedVariable variable("ORVIX_TEST_PART", "from the process");
    site.write(directory + "one.cfg", "A=%BASE/x\nB=$ORVIX_TEST_PART\nC=%C_LATER/y\nC_LATER=z\n");
    eeEnv* env = site.open("demo", "BASE=b\n", ENVLOC_SYSTEM);
    EXPECT_EQ(setting(env, "A"), "b/x");
    EXPECT_EQ(setting(env, "B"), "from the process");
    EXPECT_EQ(setting(env, "C"), "y");
}

TEST(AddOns, ValueThatExpandsToNothingStaysAsItIs) {
    const TempSite site;
    site.write(directory + "one.cfg", "A=%UNDEFINED\nB=:\nC=\n");
    eeEnv* env = site.open("demo", "", ENVLOC_SYSTEM);
    EXPECT_EQ(setting(env, "A"), "%UNDEFINED");
    EXPECT_EQ(setting(env, "B"), ":");
    EXPECT_EQ(setting(env, "C"), "");
}

TEST(AddOns, ValueOfAThousandAndTwentyFourBytesStaysAsItIs) {
    const TempSite site;
    const std::string longest(1023, 'x');
    site.write(directory + "one.cfg", "A=%FITS\nB=%LONGER\n");
    eeEnv* env = site.open("demo", "FITS=" + longest + "\nLONGER=x" + longest + "\n", ENVLOC_SYSTEM);
    EXPECT_EQ(setting(env, "A"), longest);
    EXPECT_EQ(setting(env, "B"), "%LONGER");
}

TEST(AddOns, ValuesOfTheFileOfTheLevelAreNotExpanded) {
    const TempSite site;
    site.write(directory + "one.cfg", "");
    EXPECT_EQ(setting(site.open("demo", "B=1\nA=%B\n", ENVLOC_SYSTEM), "A"), "%B");
}

TEST(AddOns, OfAnIncludedNameAreIncluded) {
    const TempSite site;
    site.write("install/config/inc.cfg", "A=1\n");
    site.write("install/config/addons_cfgs/inc/one.cfg", "B=%A\n");
    eeEnv* env = site.open("demo", "+ inc\n", ENVLOC_SYSTEM);
    ASSERT_NE(entry_of(env->system, "B"), nullptr);
    EXPECT_EQ(entry_of(env->system, "B")->mod, ENVMOD_INCLUDED);
    EXPECT_STREQ(entry_of(env->system, "B")->value, "1");
    EXPECT_EQ(env->system.path, site.name("install") + "\\config\\demo.cfg");
}

TEST(AddOns, ThatIncludeTheirOwnNameEnd) {
    const TempSite site;
    site.write(directory + "one.cfg", "+ demo\n+ demo\nA=1\n");
    EXPECT_EQ(setting(site.open("demo", "+ demo\n", ENVLOC_SYSTEM), "A"), "1");
}

TEST(AddOns, DirectoryThatCannotBeScannedIsTold) {
    const TempSite site;
    const orvix::test::UnscannableDirectory name;
    const std::string place = "install/config/addons_cfgs/" + name.text();
    site.write(place + "/one.cfg", "A=1\n");
    testing::internal::CaptureStderr();
    eeEnv* env = gui_env_open(name.text().c_str(), ENVLOC_SYSTEM);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "gfile: " + site.name(place) + " is not a directory \n");
    EXPECT_EQ(env->system.used, 0);
}

TEST(AddOns, FileInPlaceOfTheDirectoryIsSilent) {
    const TempSite site;
    site.write("install/config/addons_cfgs/demo", "A=1\n");
    testing::internal::CaptureStderr();
    EXPECT_EQ(gui_env_open("demo", ENVLOC_SYSTEM)->system.used, 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}
