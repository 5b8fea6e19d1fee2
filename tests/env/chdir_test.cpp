// Changing the working directory.

#include "support/host.h"
#include "support/temp_site.h"

#include <orvix/core/files.h>
#include <orvix/gsl/environment.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace fs = std::filesystem;

using orvix::test::setting;
using orvix::test::TempSite;

namespace {

class GuiChdir : public testing::Test {
protected:
    GuiChdir() { fs::create_directory(site.path("other")); }

    TempSite site;
};

}  // namespace

TEST_F(GuiChdir, ReadsTheFileOfTheNewDirectory) {
    site.write("other/demo.cfg", "A=other\n");
    eeEnv* env = site.open("demo", "A=work\nB=work\n");
    EXPECT_EQ(gui_chdir(site.name("other").c_str(), false), 0);
    EXPECT_EQ(fs::current_path(), site.path("other"));
    EXPECT_EQ(setting(env, "A"), "other");
    EXPECT_EQ(setting(env, "B"), std::nullopt);
    EXPECT_STREQ(env->cwd.path, "demo.cfg");
}

TEST_F(GuiChdir, ReachesEveryEnvironmentTheMasterToo) {
    site.write("other/hxorvix.cfg", "A=master\n");
    site.write("other/first.cfg", "A=first\n");
    site.write("other/second.cfg", "A=second\n");
    eeEnv* first = gui_env_open("first", ENVLOC_ANY);
    eeEnv* second = gui_env_open("second", ENVLOC_ANY);
    EXPECT_EQ(gui_chdir(site.name("other").c_str(), false), 0);
    EXPECT_EQ(setting(first, "A"), "first");
    EXPECT_EQ(setting(second, "A"), "second");
    char buffer[20];
    gui_env_get_ee("A", buffer, nullptr, sizeof buffer, ENVLOC_ANY);
    EXPECT_STREQ(buffer, "master");
}

TEST_F(GuiChdir, LeavesTheOtherLevelsAlone) {
    eeEnv* env = gui_env_open("demo", ENVLOC_ANY);
    gui_env_put(env, "U", "unsaved", ENVLOC_USER);
    EXPECT_EQ(gui_chdir(site.name("other").c_str(), true), 0);
    EXPECT_EQ(setting(env, "U"), "unsaved");
    EXPECT_FALSE(fs::exists(site.path("home/hxorvix")));
}

TEST_F(GuiChdir, SavesInTheOldDirectoryIfAsked) {
    eeEnv* env = site.open("demo", "A=1\n");
    gui_env_put(env, "A", "2", ENVLOC_ANY);
    EXPECT_EQ(gui_chdir(site.name("other").c_str(), true), 0);
    EXPECT_EQ(site.read("work/demo.cfg"), "A=2\n");
    EXPECT_FALSE(fs::exists(site.path("other/demo.cfg")));
}

TEST_F(GuiChdir, DropsChangesWithoutSaving) {
    eeEnv* env = site.open("demo", "A=1\n");
    gui_env_put(env, "A", "2", ENVLOC_ANY);
    EXPECT_EQ(gui_chdir(site.name("other").c_str(), false), 0);
    EXPECT_EQ(site.read("work/demo.cfg"), "A=1\n");
    EXPECT_EQ(setting(env, "A"), std::nullopt);
}

TEST_F(GuiChdir, FailedSaveIsToldAndTheDirectoryChangesAllTheSame) {
    site.write("other/demo.cfg", "A=other\n");
    eeEnv* env = gui_env_open("demo", ENVLOC_ANY);
    gui_env_put(env, "A", "2", ENVLOC_CWD);
    fs::create_directory(site.path("work/demo.cfg"));
    EXPECT_EQ(gui_chdir(site.name("other").c_str(), true), -1);
    EXPECT_EQ(fs::current_path(), site.path("other"));
    EXPECT_EQ(setting(env, "A"), "other");
}

TEST_F(GuiChdir, MissingDirectoryLeavesTheLevelEmptyEverywhere) {
    eeEnv* env = site.open("demo", "A=1\n");
    eeEnv* more = site.open("more", "B=1\n");
    EXPECT_EQ(gui_chdir(site.name("missing").c_str(), false), -1);
    EXPECT_EQ(fs::current_path(), site.path("work"));
    for (const EnvTable* table : {&env->cwd, &more->cwd}) {
        EXPECT_EQ(table->used, 0);
        EXPECT_EQ(table->capacity, 0);
        EXPECT_EQ(table->entries, nullptr);
    }
    EXPECT_STREQ(env->cwd.path, "demo.cfg");
}

TEST_F(GuiChdir, QuotesAreTakenOff) {
    EXPECT_EQ(gui_chdir(("\"" + site.name("other") + "\"").c_str(), false), 0);
    EXPECT_EQ(fs::current_path(), site.path("other"));
    EXPECT_EQ(gui_chdir(("\"" + site.name("work")).c_str(), false), 0);
    EXPECT_EQ(fs::current_path(), site.path("work"));
}

TEST_F(GuiChdir, ClosingQuoteAloneStays) {
    const bool can_be_made = orvix::test::may_stand_in_names('"');
    const fs::path before = fs::current_path();
    fs::create_directory(site.path("odd"));
    if (can_be_made) fs::create_directory(site.path("odd\""));
    EXPECT_EQ(gui_chdir((site.name("odd") + "\"").c_str(), false), can_be_made ? 0 : -1);
    EXPECT_EQ(fs::current_path(), can_be_made ? site.path("odd\"") : before);
}

TEST_F(GuiChdir, NothingBetweenQuotesIsNoDirectory) {
    EXPECT_EQ(gui_chdir("\"\"", false), -1);
    EXPECT_EQ(gui_chdir("\"", false), -1);
    EXPECT_EQ(gui_chdir("", false), -1);
}

TEST_F(GuiChdir, DriveMeansItsRoot) {
    EXPECT_EQ(gui_chdir("\"C:\"", false), 0);
    EXPECT_EQ(orvix::getcwd_utf8(), "C:\\");
}

TEST_F(GuiChdir, NameBelowTheMountPointIsTriedWithoutIt) {
    const std::string rooted = site.path("other").string();
    EXPECT_EQ(gui_chdir(("/tmp_mnt" + rooted).c_str(), false), 0);
    EXPECT_EQ(fs::current_path(), site.path("other"));
    EXPECT_EQ(gui_chdir("/tmp_mnt/orvix/no/such/directory", false), -1);
    EXPECT_EQ(gui_chdir("/tmp_mnt", false), -1);
}

TEST_F(GuiChdir, NullFailsAndChangesNothing) {
    eeEnv* env = site.open("demo", "A=1\n");
    EXPECT_EQ(gui_chdir(nullptr, true), -1);
    EXPECT_EQ(setting(env, "A"), "1");
}

TEST_F(GuiChdir, WithoutEnvironmentsOnlyChangesTheDirectory) {
    EXPECT_EQ(gui_chdir(site.name("other").c_str(), true), 0);
    EXPECT_EQ(fs::current_path(), site.path("other"));
}

TEST_F(GuiChdir, IncludesAreReadAgain) {
    site.write("other/demo.cfg", "+ inc\n");
    site.write("other/inc.cfg", "A=included\n");
    eeEnv* env = site.open("demo", "");
    EXPECT_EQ(gui_chdir(site.name("other").c_str(), false), 0);
    EXPECT_EQ(setting(env, "A"), "included");
    EXPECT_EQ(env->cwd.entries[0].mod, ENVMOD_INCLUDED);
}

TEST_F(GuiChdir, LevelWithoutFileStaysWithoutOne) {
    eeEnv* env = gui_env_open("demo", ENVLOC_USER);
    EXPECT_EQ(gui_chdir(site.name("other").c_str(), false), 0);
    EXPECT_STREQ(env->cwd.path, "");
    EXPECT_EQ(env->cwd.used, 0);
}
