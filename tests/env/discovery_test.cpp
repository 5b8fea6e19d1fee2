// Where the files of the levels lie, and what opening an environment reads.

#include "support/temp_site.h"

#include <orvix/gsl/environment.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

using orvix::test::ScopedVariable;
using orvix::test::setting;
using orvix::test::TempSite;

namespace {

// QDS_CUSTOM_DIR counts at the first call in a process, so its tests run in processes of their own.
class CustomDirectory : public testing::Test {
protected:
    CustomDirectory() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

template <class Check>
void exit_with(Check check) {
    check();
    std::exit(testing::Test::HasFailure() ? 1 : 0);
}

}  // namespace

TEST(LevelPath, InstallationIsTheRootOfTheDriveByDefault) {
    const TempSite site;
    const ScopedVariable unset("HXORVIX_DIR", nullptr);
    eeEnv* env = gui_env_open("hxorvix", ENVLOC_ANY);
    EXPECT_STREQ(env->system.path, "\\hxorvix\\config\\hxorvix.cfg");
    EXPECT_STREQ(env->custom.path, "\\hxorvix\\custom\\config\\hxorvix.cfg");
}

TEST(LevelPath, InstallationIsWhatTheVariableSays) {
    const TempSite site;
    const ScopedVariable variable("HXORVIX_DIR", "D:\\inst");
    eeEnv* env = gui_env_open("demo", ENVLOC_ANY);
    EXPECT_STREQ(env->system.path, "D:\\inst\\config\\demo.cfg");
    EXPECT_STREQ(env->custom.path, "D:\\inst\\custom\\config\\demo.cfg");
}

TEST(LevelPath, EmptyVariableIsNoUnsetOne) {
    const TempSite site;
    const ScopedVariable variable("HXORVIX_DIR", "");
    EXPECT_STREQ(gui_env_open("demo", ENVLOC_ANY)->system.path, "\\config\\demo.cfg");
}

TEST(LevelPath, RootDirectoryTakesThePlaceOfTheVariable) {
    const TempSite site;
    guienv_set_root_directory("E:\\root");
    eeEnv* env = gui_env_open("demo", ENVLOC_ANY);
    EXPECT_STREQ(env->system.path, "E:\\root\\config\\demo.cfg");
    EXPECT_STREQ(env->custom.path, "E:\\root\\custom\\config\\demo.cfg");
}

TEST(LevelPath, WorkingDirectoryLevelIsRelative) {
    const TempSite site;
    EXPECT_STREQ(gui_env_open("demo", ENVLOC_ANY)->cwd.path, "demo.cfg");
}

TEST(LevelPath, OneBackslashAtTheEndOfHomeIsCut) {
    const TempSite site;
    const ScopedVariable home("HOME", "C:\\Users\\me\\");
    EXPECT_STREQ(gui_env_open("hxorvix", ENVLOC_ANY)->user.path, "C:\\Users\\me\\hxorvix\\config\\hxorvix.cfg");
    const ScopedVariable two("HOME", "C:\\Users\\me\\\\");
    EXPECT_STREQ(gui_env_open("hxorvix", ENVLOC_ANY)->user.path, "C:\\Users\\me\\\\hxorvix\\config\\hxorvix.cfg");
    const ScopedVariable slash("HOME", "/home/me/");
    EXPECT_STREQ(gui_env_open("hxorvix", ENVLOC_ANY)->user.path, "/home/me/\\hxorvix\\config\\hxorvix.cfg");
}

TEST(LevelPath, UnsetAndEmptyHomeLieAtTheRoot) {
    const TempSite site;
    const ScopedVariable unset("HOME", nullptr);
    EXPECT_STREQ(gui_env_open("hxorvix", ENVLOC_ANY)->user.path, "\\hxorvix\\config\\hxorvix.cfg");
    const ScopedVariable empty("HOME", "");
    EXPECT_STREQ(gui_env_open("hxorvix", ENVLOC_ANY)->user.path, "\\hxorvix\\config\\hxorvix.cfg");
}

TEST(LevelPath, HomeOfOneBackslashBecomesABlank) {
    const TempSite site;
    const ScopedVariable home("HOME", "\\");
    EXPECT_STREQ(gui_env_open("demo", ENVLOC_ANY)->user.path, " \\hxorvix\\config\\demo.cfg");
}

TEST(LevelPath, FileLevelTakesTheWholeName) {
    const TempSite site;
    const std::string name = site.write("some.file", "A=1\n");
    eeEnv* env = gui_env_open(name.c_str(), ENVLOC_FILE);
    EXPECT_EQ(env->cwd.path, name);
    EXPECT_EQ(setting(env, "A", ENVLOC_CWD), "1");
}

TEST(LevelPath, NameThatDoesNotFitLeavesTheLevelWithoutFile) {
    const TempSite site;
    eeEnv* env = gui_env_open(std::string(507, 'n').c_str(), ENVLOC_CWD);
    EXPECT_EQ(env->cwd.path, std::string(507, 'n') + ".cfg");
    env = gui_env_open(std::string(508, 'n').c_str(), ENVLOC_ANY);
    EXPECT_STREQ(env->cwd.path, "");
    EXPECT_STREQ(env->system.path, "");
    env = gui_env_open(std::string(5000, 'n').c_str(), ENVLOC_FILE);
    EXPECT_STREQ(env->cwd.path, "");
    EXPECT_TRUE(gui_env_put(env, "A", "1", ENVLOC_ANY));
}

TEST(LevelPath, DirectoriesThatDoNotFitLeaveTheirLevelsWithoutFile) {
    const TempSite site;
    const ScopedVariable home("HOME", ("C:\\" + std::string(3000, 'h')).c_str());
    const ScopedVariable install("HXORVIX_DIR", ("C:\\" + std::string(600, 'i')).c_str());
    eeEnv* env = gui_env_open("demo", ENVLOC_ANY);
    EXPECT_STREQ(env->user.path, "");
    EXPECT_STREQ(env->custom.path, "");
    EXPECT_STREQ(env->system.path, "");
    EXPECT_STREQ(env->cwd.path, "demo.cfg");
}

TEST_F(CustomDirectory, HoldsTheSitesFilesWithoutTheRootDirectory) {
    EXPECT_EXIT(exit_with([] {
                    const TempSite site;
                    const ScopedVariable custom("QDS_CUSTOM_DIR", "D:\\site");
                    guienv_set_root_directory("E:\\root");
                    EXPECT_STREQ(gui_env_open("hxorvix", ENVLOC_ANY)->custom.path, "D:\\site\\hxorvix.cfg");
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(CustomDirectory, IsReadOnceInAProcess) {
    EXPECT_EXIT(exit_with([] {
                    const TempSite site;
                    const ScopedVariable first("QDS_CUSTOM_DIR", "D:\\first");
                    gui_env_init();
                    const ScopedVariable second("QDS_CUSTOM_DIR", "D:\\second");
                    gui_env_deinit(false);
                    EXPECT_STREQ(gui_env_open("demo", ENVLOC_ANY)->custom.path, "D:\\first\\demo.cfg");
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(CustomDirectory, EmptyIsNone) {
    EXPECT_EXIT(exit_with([] {
                    const TempSite site;
                    const ScopedVariable custom("QDS_CUSTOM_DIR", "");
                    const ScopedVariable install("HXORVIX_DIR", "D:\\inst");
                    EXPECT_STREQ(gui_env_open("demo", ENVLOC_ANY)->custom.path, "D:\\inst\\custom\\config\\demo.cfg");
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(CustomDirectory, TooLongLeavesTheLevelWithoutFile) {
    EXPECT_EXIT(exit_with([] {
                    const TempSite site;
                    const ScopedVariable custom("QDS_CUSTOM_DIR", ("D:\\" + std::string(3000, 'c')).c_str());
                    EXPECT_STREQ(gui_env_open("demo", ENVLOC_ANY)->custom.path, "");
                }),
                testing::ExitedWithCode(0), "");
}

TEST(RootDirectory, IsNullUntilSetAndAfterItIsTakenBack) {
    const TempSite site;
    EXPECT_EQ(guienv_get_root_directory(), nullptr);
    guienv_set_root_directory("E:\\root");
    EXPECT_STREQ(guienv_get_root_directory(), "E:\\root");
    guienv_set_root_directory("");
    EXPECT_EQ(guienv_get_root_directory(), nullptr);
    guienv_set_root_directory("E:\\root");
    guienv_set_root_directory(nullptr);
    EXPECT_EQ(guienv_get_root_directory(), nullptr);
}

TEST(RootDirectory, MayBeSetToAPieceOfItself) {
    const TempSite site;
    guienv_set_root_directory("E:\\root");
    guienv_set_root_directory(guienv_get_root_directory() + 2);
    EXPECT_STREQ(guienv_get_root_directory(), "\\root");
}

TEST(RootDirectory, ChangesNothingThatIsLoaded) {
    const TempSite site;
    eeEnv* env = site.open("demo", "A=1\n", ENVLOC_SYSTEM);
    const std::string path = env->system.path;
    guienv_set_root_directory("E:\\root");
    EXPECT_EQ(env->system.path, path);
    EXPECT_EQ(setting(env, "A"), "1");
}

TEST(GuiEnvOpen, ReadsAllLevels) {
    const TempSite site;
    site.write("work/demo.cfg", "A=cwd\n");
    site.write("home/hxorvix/config/demo.cfg", "A=user\nB=user\n");
    site.write("install/custom/config/demo.cfg", "A=custom\nB=custom\nC=custom\n");
    site.write("install/config/demo.cfg", "A=system\nB=system\nC=system\nD=system\n");
    eeEnv* env = gui_env_open("demo", ENVLOC_ANY);
    EXPECT_EQ(setting(env, "A"), "cwd");
    EXPECT_EQ(setting(env, "B"), "user");
    EXPECT_EQ(setting(env, "C"), "custom");
    EXPECT_EQ(setting(env, "D"), "system");
    EXPECT_EQ(setting(env, "A", ENVLOC_SYSTEM), "system");
}

TEST(GuiEnvOpen, ReadsOneLevelAlone) {
    const TempSite site;
    site.write("work/demo.cfg", "A=cwd\n");
    site.write("home/hxorvix/config/demo.cfg", "B=user\n");
    eeEnv* env = gui_env_open("demo", ENVLOC_USER);
    EXPECT_EQ(setting(env, "A"), std::nullopt);
    EXPECT_EQ(setting(env, "B"), "user");
    EXPECT_STREQ(env->cwd.path, "");
}

TEST(GuiEnvOpen, UnknownLevelReadsNothing) {
    const TempSite site;
    site.write("work/demo.cfg", "A=cwd\n");
    eeEnv* env = gui_env_open("demo", static_cast<EnvlocE>(9));
    ASSERT_NE(env, nullptr);
    EXPECT_EQ(env->cwd.used, 0);
    EXPECT_STREQ(env->cwd.path, "");
}

TEST(GuiEnvOpen, NoNameNoEnvironment) {
    const TempSite site;
    EXPECT_EQ(gui_env_open(nullptr, ENVLOC_ANY), nullptr);
    EXPECT_EQ(gui_env_open("", ENVLOC_ANY), nullptr);
}

TEST(GuiEnvOpen, NoNameBringsTheMasterUpAllTheSame) {
    const TempSite site;
    gui_env_open(nullptr, ENVLOC_ANY);
    site.write("work/hxorvix.cfg", "A=too late\n");
    EXPECT_EQ(gui_env_get_ee("A", nullptr, nullptr, 0, ENVLOC_ANY), -1);
}

TEST(GuiEnvOpen, EnvironmentsStandInTheOrderInWhichTheyWereOpened) {
    const TempSite site;
    eeEnv* first = gui_env_open("a", ENVLOC_ANY);
    eeEnv* second = gui_env_open("b", ENVLOC_ANY);
    EXPECT_EQ(first->next, second);
    EXPECT_EQ(second->next, nullptr);
}

TEST(GuiEnvOpen, OneFileMayBeOpenTwice) {
    const TempSite site;
    eeEnv* first = site.open("demo", "A=1\n");
    eeEnv* second = gui_env_open("demo", ENVLOC_CWD);
    gui_env_put(first, "A", "2", ENVLOC_ANY);
    EXPECT_EQ(setting(second, "A"), "1");
}

TEST(GuiEnvOpen, FileLevelReplacesAKeyWhereItStands) {
    // The loader reads one level at a time, so only the same file can hold a key twice; the later line wins.
    const TempSite site;
    const std::string name = site.write("some.file", "A=1\nA=2\n");
    eeEnv* env = gui_env_open(name.c_str(), ENVLOC_FILE);
    EXPECT_EQ(env->cwd.used, 1);
    EXPECT_EQ(setting(env, "A"), "2");
}

TEST(GuiEnvInit, ReadsTheMasterOnce) {
    const TempSite site;
    site.write("install/config/hxorvix.cfg", "A=1\n");
    EXPECT_TRUE(gui_env_init());
    site.write("install/config/hxorvix.cfg", "A=2\n");
    EXPECT_TRUE(gui_env_init());
    char buffer[10];
    gui_env_get_ee("A", buffer, nullptr, sizeof buffer, ENVLOC_ANY);
    EXPECT_STREQ(buffer, "1");
}
