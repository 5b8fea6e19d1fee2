// Closing environments, and the end of them all.

#include "support/temp_site.h"

#include <orvix/gsl/environment.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace fs = std::filesystem;

using orvix::test::setting;
using orvix::test::TempSite;

TEST(GuiEnvClose, NullIsNothingToDo) {
    EXPECT_TRUE(gui_env_close(nullptr, true));
    EXPECT_TRUE(gui_env_close(nullptr, false));
}

TEST(GuiEnvClose, TakesTheEnvironmentOutOfTheChain) {
    const TempSite site;
    eeEnv* first = gui_env_open("a", ENVLOC_ANY);
    eeEnv* second = gui_env_open("b", ENVLOC_ANY);
    eeEnv* third = gui_env_open("c", ENVLOC_ANY);
    EXPECT_TRUE(gui_env_close(second, false));
    EXPECT_EQ(first->next, third);
    EXPECT_TRUE(gui_env_close(third, false));
    EXPECT_EQ(first->next, nullptr);
    eeEnv* fourth = gui_env_open("d", ENVLOC_ANY);
    EXPECT_EQ(first->next, fourth);
}

TEST(GuiEnvClose, EnvironmentThatIsNotOpenIsNotTouched) {
    const TempSite site;
    eeEnv stranger{};
    EXPECT_FALSE(gui_env_close(&stranger, true));
    eeEnv* env = gui_env_open("demo", ENVLOC_ANY);
    EXPECT_TRUE(gui_env_close(env, false));
    EXPECT_FALSE(gui_env_close(env, false));
}

TEST(GuiEnvClose, FailedLevelDoesNotKeepTheOthersFromBeingSaved) {
    const TempSite site;
    fs::create_directories(site.path("install/config/demo.cfg"));
    eeEnv* env = gui_env_open("demo", ENVLOC_ANY);
    for (const EnvlocE level : {ENVLOC_SYSTEM, ENVLOC_USER, ENVLOC_CWD}) gui_env_put(env, "A", "1", level);
    EXPECT_FALSE(gui_env_close(env, true));
    EXPECT_EQ(site.read("home/hxorvix/config/demo.cfg"), "A=1\n");
    EXPECT_EQ(site.read("work/demo.cfg"), "A=1\n");
}

TEST(GuiEnvClose, LevelsAreSavedFromFourToOne) {
    // All levels share one file; each save finds what the one before has left.
    const TempSite site;
    const std::string name = site.write("share/common", "");
    eeEnv* env = gui_env_open(name.c_str(), ENVLOC_FILE);
    for (EnvTable* table : {&env->system, &env->custom, &env->user}) name.copy(table->path, name.size());
    gui_env_put(env, "CWD", "1", ENVLOC_CWD);
    gui_env_put(env, "USER", "1", ENVLOC_USER);
    gui_env_put(env, "CUSTOM", "1", ENVLOC_CUSTOM);
    gui_env_put(env, "SYSTEM", "1", ENVLOC_SYSTEM);
    EXPECT_TRUE(gui_env_close(env, true));
    // Each of the earlier keys gained an empty line at the next save, and only then: empty lines are copied.
    EXPECT_EQ(site.read("share/common"), "SYSTEM=1\n\n\n\nCUSTOM=1\n\n\nUSER=1\n\nCWD=1\n");
}

TEST(GuiEnvDeinit, WithoutAnythingOpenIsTrue) {
    EXPECT_TRUE(gui_env_deinit(true));
    EXPECT_TRUE(gui_env_deinit(false));
}

TEST(GuiEnvDeinit, MasterAloneIsSaved) {
    const TempSite site;
    gui_env_put_ee("A", "1", ENVLOC_CWD);
    EXPECT_TRUE(gui_env_deinit(true));
    EXPECT_EQ(site.read("work/hxorvix.cfg"), "A=1\n");
}

TEST(GuiEnvDeinit, MasterAloneIsDroppedWithoutSaving) {
    const TempSite site;
    gui_env_put_ee("A", "1", ENVLOC_CWD);
    EXPECT_TRUE(gui_env_deinit(false));
    EXPECT_FALSE(fs::exists(site.path("work/hxorvix.cfg")));
    EXPECT_EQ(gui_env_get_ee("A", nullptr, nullptr, 0, ENVLOC_ANY), -1);
}

TEST(GuiEnvDeinit, WithOneFurtherEnvironmentSavesOnlyThatOne) {
    const TempSite site;
    gui_env_put_ee("A", "1", ENVLOC_CWD);
    gui_env_put(gui_env_open("demo", ENVLOC_ANY), "B", "1", ENVLOC_CWD);
    EXPECT_TRUE(gui_env_deinit(true));
    EXPECT_FALSE(fs::exists(site.path("work/hxorvix.cfg")));
    EXPECT_EQ(site.read("work/demo.cfg"), "B=1\n");
    EXPECT_EQ(gui_env_get_ee("A", nullptr, nullptr, 0, ENVLOC_ANY), -1);
}

TEST(GuiEnvDeinit, ClosesAllFurtherEnvironments) {
    const TempSite site;
    for (const char* name : {"a", "b", "c"}) gui_env_put(gui_env_open(name, ENVLOC_ANY), "K", name, ENVLOC_CWD);
    EXPECT_TRUE(gui_env_deinit(true));
    for (const char* name : {"a", "b", "c"}) {
        EXPECT_EQ(site.read(TempSite::file_of(name, ENVLOC_CWD)), "K=" + std::string(name) + "\n");
    }
}

TEST(GuiEnvDeinit, TellsOfAFailedSaveAndClosesTheOthers) {
    const TempSite site;
    gui_env_put(gui_env_open("good", ENVLOC_ANY), "K", "1", ENVLOC_CWD);
    eeEnv* bad = gui_env_open("bad", ENVLOC_ANY);
    gui_env_put(bad, "K", "1", ENVLOC_CWD);
    fs::create_directory(site.path("work/bad.cfg"));
    EXPECT_FALSE(gui_env_deinit(true));
    EXPECT_EQ(site.read("work/good.cfg"), "K=1\n");
}

TEST(GuiEnvDeinit, NextCallReadsTheMasterAfresh) {
    const TempSite site;
    site.write("work/hxorvix.cfg", "A=1\n");
    gui_env_init();
    gui_env_put_ee("A", "unsaved", ENVLOC_ANY);
    gui_env_deinit(false);
    char buffer[20];
    EXPECT_EQ(gui_env_get_ee("A", buffer, nullptr, sizeof buffer, ENVLOC_ANY), 0);
    EXPECT_STREQ(buffer, "1");
}
