// Include lines of `.cfg` files.

#include "support/temp_site.h"

#include <orvix/gsl/environment.h>

#include <gtest/gtest.h>

#include <string>

using orvix::test::entry_of;
using orvix::test::ScopedVariable;
using orvix::test::setting;
using orvix::test::TempSite;

namespace {

// Below the site's directory, rooted but without a drive: complete at every level but the user's.
std::string rooted(const TempSite& site, std::string_view relative) { return site.name(relative).substr(2); }

}  // namespace

TEST(Include, ReadsTheNamedFileThereAndThen) {
    const TempSite site;
    site.write("work/inc.cfg", "A=inner\nB=inner\n");
    eeEnv* env = site.open("demo", "A=before\n+ inc\nB=after\nC=3\n");
    EXPECT_EQ(setting(env, "A"), "inner");
    EXPECT_EQ(setting(env, "B"), "after");
    EXPECT_EQ(setting(env, "C"), "3");
}

TEST(Include, EntriesAreMarked) {
    const TempSite site;
    site.write("work/inc.cfg", "A=1\nB=1\nB=2\n");
    eeEnv* env = site.open("demo", "+inc\nA=changed\nC=1\n");
    EXPECT_EQ(entry_of(env->cwd, "A")->mod, ENVMOD_INCLUDED);
    EXPECT_EQ(entry_of(env->cwd, "B")->mod, ENVMOD_INCLUDED);
    EXPECT_EQ(entry_of(env->cwd, "C")->mod, ENVMOD_CLEAN);
}

TEST(Include, EntryOfTheFileItselfStaysChangedWhenTheIncludeOverwritesIt) {
    const TempSite site;
    site.write("work/inc.cfg", "A=inner\n");
    eeEnv* env = site.open("demo", "A=outer\n+inc\n");
    EXPECT_EQ(entry_of(env->cwd, "A")->mod, ENVMOD_CHANGED);
}

TEST(Include, LevelKeepsThePathOfItsOwnFile) {
    const TempSite site;
    site.write("work/inc.cfg", "A=1\n");
    EXPECT_STREQ(site.open("demo", "+ inc\n")->cwd.path, "demo.cfg");
}

TEST(Include, TextBehindAHashIsANote) {
    const TempSite site;
    site.write("work/inc.cfg", "A=1\n");
    EXPECT_EQ(setting(site.open("demo", "+ inc # note\n"), "A"), "1");
    EXPECT_EQ(setting(site.open("more", "+inc#note # more\n"), "A"), "1");
}

TEST(Include, WithoutArgumentIsSkipped) {
    const TempSite site;
    site.write("work/.cfg", "A=1\n");
    for (const char* line : {"+ ", "+ #inc", "+#", "+ \t "}) {
        SCOPED_TRACE(line);
        eeEnv* env = site.open("demo", std::string(line) + "\nB=2\n");
        EXPECT_EQ(setting(env, "A"), std::nullopt);
        EXPECT_EQ(setting(env, "B"), "2");
    }
}

TEST(Include, ArgumentsThatBeginWithASignAreSkipped) {
    const TempSite site;
    for (const char* name : {"!inc", "+inc", "=inc"}) {
        SCOPED_TRACE(name);
        site.write("work/" + std::string(name) + ".cfg", "A=1\n");
        EXPECT_EQ(setting(site.open("demo", "+ " + std::string(name) + "\n"), "A"), std::nullopt);
    }
}

TEST(Include, UndefinedReferenceIsSkippedAndLoadingGoesOn) {
    const TempSite site;
    eeEnv* env = site.open("demo", "+ %UNDEFINED\nA=1\n");
    EXPECT_EQ(setting(env, "A"), "1");
}

TEST(Include, ReferencesAreExpandedAgainstWhatIsLoadedSoFar) {
    const TempSite site;
    const ScopedVariable variable("ORVIX_TEST_PART", "in");
    site.write("work/inc.cfg", "A=1\n");
    EXPECT_EQ(setting(site.open("demo", "REST=c\n+ {$ORVIX_TEST_PART}%REST\n"), "A"), "1");
    EXPECT_EQ(setting(site.open("late", "+ {$ORVIX_TEST_PART}%REST\nREST=c\n"), "A"), std::nullopt);
}

TEST(Include, NameThatExpandsBeyondTheBufferIsSkipped) {
    const TempSite site;
    eeEnv* env = site.open("demo", "LONG=" + std::string(1024, 'x') + "\n+ %LONG\nA=1\n");
    EXPECT_EQ(setting(env, "A"), "1");
    EXPECT_EQ(env->cwd.used, 2);
}

TEST(Include, RelativeNameAtTheSystemLevelLiesInTheInstallation) {
    const TempSite site;
    site.write("install/config/inc.cfg", "A=1\n");
    eeEnv* env = site.open("demo", "+ inc\n", ENVLOC_SYSTEM);
    ASSERT_NE(entry_of(env->system, "A"), nullptr);
    EXPECT_EQ(entry_of(env->system, "A")->mod, ENVMOD_INCLUDED);
}

TEST(Include, RelativeNameAtTheUserLevelLiesUnderHome) {
    const TempSite site;
    site.write("home/hxorvix/config/inc.cfg", "A=1\n");
    eeEnv* env = site.open("demo", "+ inc\n", ENVLOC_USER);
    EXPECT_EQ(setting(env, "A", ENVLOC_USER), "1");
}

TEST(Include, RelativeNameAtTheCustomLevelLiesInTheInstallation) {
    const TempSite site;
    site.write("install/custom/config/inc.cfg", "A=1\n");
    eeEnv* env = site.open("demo", "+ inc\n", ENVLOC_CUSTOM);
    EXPECT_EQ(setting(env, "A", ENVLOC_CUSTOM), "1");
}

TEST(Include, RootedNameIsCompleteButNotWithADrive) {
    const TempSite site;
    site.write("share/common", "A=rooted\n");
    site.write("share/common.cfg", "A=with ending\n");
    EXPECT_EQ(setting(site.open("demo", "+ " + rooted(site, "share/common") + "\n"), "A"), "rooted");
    EXPECT_EQ(setting(site.open("more", "+ " + site.name("share/common") + "\n"), "A"), "with ending");
}

TEST(Include, RootedNameIsCompleteAtTheCustomAndSystemLevels) {
    const TempSite site;
    site.write("share/common", "A=rooted\n");
    const std::string line = "+ " + rooted(site, "share/common") + "\n";
    EXPECT_EQ(setting(site.open("demo", line, ENVLOC_CUSTOM), "A"), "rooted");
    EXPECT_EQ(setting(site.open("demo", line, ENVLOC_SYSTEM), "A"), "rooted");
}

TEST(Include, NameWithADriveIsCompleteAtTheUserLevel) {
    const TempSite site;
    site.write("share/common", "A=with drive\n");
    std::string name = site.name("share/common");
    EXPECT_EQ(setting(site.open("demo", "+ " + name + "\n", ENVLOC_USER), "A"), "with drive");
    name[2] = '/';
    EXPECT_EQ(setting(site.open("more", "+ " + name + "\n", ENVLOC_USER), "A"), "with drive");
    EXPECT_EQ(setting(site.open("root", "+ " + rooted(site, "share/common") + "\n", ENVLOC_USER), "A"), std::nullopt);
}

TEST(Include, InAFileNamedInFullIsAFileNamedInFull) {
    const TempSite site;
    site.write("work/inc", "A=1\n");
    site.write("work/inc.cfg", "A=2\n");
    eeEnv* env = gui_env_open(site.write("work/whole.name", "+ inc\n").c_str(), ENVLOC_FILE);
    EXPECT_EQ(setting(env, "A", ENVLOC_CWD), "1");
}

TEST(Include, MissingFileIsSilent) {
    const TempSite site;
    testing::internal::CaptureStderr();
    eeEnv* env = site.open("demo", "+ missing\nA=1\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(setting(env, "A"), "1");
}

TEST(Include, DirectoryInPlaceOfTheFileIsSilent) {
    const TempSite site;
    site.write("work/inc.cfg/file", "");
    EXPECT_EQ(setting(site.open("demo", "+ inc\nA=1\n"), "A"), "1");
}

TEST(IncludeBounds, FilesNestTwoHundredDeep) {
    const TempSite site;
    for (int i = 1; i <= 210; ++i) {
        site.write("work/f" + std::to_string(i) + ".cfg",
                   "K" + std::to_string(i) + "=1\n+ f" + std::to_string(i + 1) + "\n");
    }
    eeEnv* env = site.open("f0", "+ f1\n");
    EXPECT_EQ(env->cwd.used, 200);
    EXPECT_EQ(setting(env, "K200"), "1");
    EXPECT_EQ(setting(env, "K201"), std::nullopt);
}

TEST(IncludeBounds, FileThatIncludesItselfEnds) {
    const TempSite site;
    eeEnv* env = site.open("demo", "A=1\n+ demo\nB=2\n");
    EXPECT_EQ(setting(env, "A"), "1");
    EXPECT_EQ(setting(env, "B"), "2");
}

TEST(IncludeBounds, FileThatIncludesItselfManyTimesEnds) {
    const TempSite site;
    eeEnv* env = site.open("demo", "A=1\n+ demo\n+ demo\n+ demo\nB=2\n");
    EXPECT_EQ(setting(env, "A"), "1");
    EXPECT_EQ(setting(env, "B"), "2");
}

TEST(IncludeBounds, EachLevelOfOneLoadSharesTheBound) {
    const TempSite site;
    for (const EnvlocE level : {ENVLOC_CWD, ENVLOC_USER, ENVLOC_CUSTOM, ENVLOC_SYSTEM}) {
        site.write(TempSite::file_of("demo", level), "+ demo\n+ demo\nA=1\n");
    }
    eeEnv* env = gui_env_open("demo", ENVLOC_ANY);
    for (const EnvlocE level : {ENVLOC_CWD, ENVLOC_USER, ENVLOC_CUSTOM, ENVLOC_SYSTEM}) {
        EXPECT_EQ(setting(env, "A", level), "1") << level;
    }
}

TEST(IncludeBounds, ThousandsOfIncludesSideBySideAreAllRead) {
    const TempSite site;
    std::string lines;
    for (int i = 0; i < 1000; ++i) {
        site.write("work/p" + std::to_string(i) + ".cfg", "K" + std::to_string(i) + "=1\n");
        lines += "+ p" + std::to_string(i) + "\n";
    }
    EXPECT_EQ(site.open("demo", lines)->cwd.used, 1000);
}

TEST(IncludeBounds, MissingFilesDoNotCount) {
    const TempSite site;
    std::string lines;
    for (int i = 0; i < 10'500; ++i) lines += "+ missing\n";
    site.write("work/inc.cfg", "A=1\n");
    EXPECT_EQ(setting(site.open("demo", lines + "+ inc\n"), "A"), "1");
}
