// Saves that fail: the result tells, and the old file stays.

#include "support/temp_site.h"

#include <orvix/gsl/environment.h>

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <sys/resource.h>

namespace fs = std::filesystem;

using orvix::test::ScopedVariable;
using orvix::test::TempSite;

namespace {

constexpr const char* file = "work/demo.cfg";

// No file may grow beyond this: what is written then fails as on a full disk.
void limit_file_size(rlim_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{bytes, bytes};
    setrlimit(RLIMIT_FSIZE, &limit);
}

// The limit stays for the process, so these tests run in processes of their own.
class FullDisk : public testing::Test {
protected:
    FullDisk() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

template <class Check>
void exit_with(Check check) {
    check();
    std::exit(testing::Test::HasFailure() ? 1 : 0);
}

}  // namespace

TEST(FailedSave, DirectoryInPlaceOfTheFile) {
    const TempSite site;
    fs::create_directory(site.path(file));
    eeEnv* env = gui_env_open("demo", ENVLOC_CWD);
    gui_env_put(env, "A", "1", ENVLOC_CWD);
    EXPECT_FALSE(gui_env_close(env, true));
    EXPECT_TRUE(fs::is_directory(site.path(file)));
}

TEST(FailedSave, DirectoryIsGone) {
    const TempSite site;
    eeEnv* env = gui_env_open((site.name("gone") + "\\demo.cfg").c_str(), ENVLOC_FILE);
    gui_env_put(env, "A", "1", ENVLOC_CWD);
    EXPECT_FALSE(gui_env_close(env, true));
}

TEST(FailedSave, FileInPlaceOfADirectory) {
    const TempSite site;
    site.write("home/hxorvix", "in the way");
    eeEnv* env = gui_env_open("demo", ENVLOC_ANY);
    gui_env_put(env, "A", "1", ENVLOC_USER);
    EXPECT_FALSE(gui_env_close(env, true));
    EXPECT_EQ(site.read("home/hxorvix"), "in the way");
}

TEST(FailedSave, LevelWithoutAPath) {
    const TempSite site;
    eeEnv* env = gui_env_open("demo", ENVLOC_USER);
    gui_env_put(env, "A", "1", ENVLOC_CWD);
    EXPECT_FALSE(gui_env_close(env, true));
}

TEST(FailedSave, LoopOfLinksIsNotAMissingFile) {
    const TempSite site;
    fs::create_symlink(site.path(file), site.path(file));
    eeEnv* env = gui_env_open("demo", ENVLOC_CWD);
    gui_env_put(env, "A", "1", ENVLOC_CWD);
    EXPECT_FALSE(gui_env_close(env, true));
    EXPECT_TRUE(fs::is_symlink(site.path(file)));
}

TEST(FailedSave, ReadOnlyPlace) {
    // Not even the superuser writes here.
    if (!fs::exists("/proc/version")) return;
    const TempSite site;
    eeEnv* env = gui_env_open("C:\\proc\\version", ENVLOC_FILE);
    gui_env_put(env, "A", "1", ENVLOC_CWD);
    EXPECT_FALSE(gui_env_close(env, true));
}

TEST_F(FullDisk, MergeThatDoesNotFitLeavesTheOldFile) {
    EXPECT_EXIT(exit_with([] {
                    const TempSite site;
                    const std::string before = "A=1\nB=" + std::string(20'000, 'b') + "\n";
                    site.write(file, before);
                    eeEnv* env = gui_env_open("demo", ENVLOC_CWD);
                    gui_env_put(env, "A", std::string(1000, 'a').c_str(), ENVLOC_CWD);
                    limit_file_size(20'500);
                    EXPECT_FALSE(gui_env_close(env, true));
                    EXPECT_EQ(site.read(file), before);
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(FullDisk, MergeThatDoesNotFitByOneByteLeavesTheOldFile) {
    EXPECT_EXIT(exit_with([] {
                    const TempSite site;
                    site.write(file, "A=1\n");
                    eeEnv* env = gui_env_open("demo", ENVLOC_CWD);
                    gui_env_put(env, "A", "123456", ENVLOC_CWD);
                    limit_file_size(8);
                    EXPECT_FALSE(gui_env_close(env, true));
                    EXPECT_EQ(site.read(file), "A=1\n");
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(FullDisk, MergeThatJustFitsIsSaved) {
    EXPECT_EXIT(exit_with([] {
                    const TempSite site;
                    site.write(file, "A=1\n");
                    eeEnv* env = gui_env_open("demo", ENVLOC_CWD);
                    gui_env_put(env, "A", "12345", ENVLOC_CWD);
                    limit_file_size(8);
                    EXPECT_TRUE(gui_env_close(env, true));
                    EXPECT_EQ(site.read(file), "A=12345\n");
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(FullDisk, NewFileThatDoesNotFitIsTold) {
    EXPECT_EXIT(exit_with([] {
                    const TempSite site;
                    eeEnv* env = gui_env_open("demo", ENVLOC_CWD);
                    gui_env_put(env, "A", "123456", ENVLOC_CWD);
                    limit_file_size(8);
                    EXPECT_FALSE(gui_env_close(env, true));
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(FullDisk, NoTemporaryFileIsLeftBehind) {
    EXPECT_EXIT(exit_with([] {
                    const TempSite site;
                    fs::create_directory(site.path("tmp"));
                    const ScopedVariable temporary("TMPDIR", site.path("tmp").c_str());
                    site.write(file, "A=1\n");
                    eeEnv* env = gui_env_open("demo", ENVLOC_CWD);
                    gui_env_put(env, "A", "123456", ENVLOC_CWD);
                    limit_file_size(4);
                    EXPECT_FALSE(gui_env_close(env, true));
                    EXPECT_TRUE(fs::is_empty(site.path("tmp")));
                }),
                testing::ExitedWithCode(0), "");
}
