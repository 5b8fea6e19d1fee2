// Saves that fail: the result tells, and the old file stays.

#include "support/denial.h"
#include "support/limits.h"
#include "support/links.h"
#include "support/temp_site.h"
#include "support/temporary_place.h"

#include <orvix/gsl/environment.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <string>

namespace fs = std::filesystem;

using orvix::test::make_link;
using orvix::test::ScopedVariable;
using orvix::test::temporary_place;
using orvix::test::TempSite;

namespace {

constexpr const char* file = "work/demo.cfg";

// Saves and closes while no file may grow beyond so many bytes.
bool closes_within(std::size_t bytes, eeEnv* env) {
    const orvix::test::FileSizeLimit limit(bytes);
    return gui_env_close(env, true);
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
    make_link(site.path(file), site.path(file));
    eeEnv* env = gui_env_open("demo", ENVLOC_CWD);
    gui_env_put(env, "A", "1", ENVLOC_CWD);
    EXPECT_FALSE(gui_env_close(env, true));
}

TEST(FailedSave, ReadOnlyPlace) {
    const TempSite site;
    eeEnv* env = gui_env_open(orvix::test::file_that_nobody_writes(site.path("closed.cfg")).c_str(), ENVLOC_FILE);
    gui_env_put(env, "A", "1", ENVLOC_CWD);
    EXPECT_FALSE(gui_env_close(env, true));
}

TEST(FullDisk, MergeThatDoesNotFitLeavesTheOldFile) {
    const TempSite site;
    const std::string before = "A=1\nB=" + std::string(20'000, 'b') + "\n";
    site.write(file, before);
    eeEnv* env = gui_env_open("demo", ENVLOC_CWD);
    gui_env_put(env, "A", std::string(1000, 'a').c_str(), ENVLOC_CWD);
    EXPECT_FALSE(closes_within(20'500, env));
    EXPECT_EQ(site.read(file), before);
}

TEST(FullDisk, MergeThatDoesNotFitByOneByteLeavesTheOldFile) {
    const TempSite site;
    site.write(file, "A=1\n");
    eeEnv* env = gui_env_open("demo", ENVLOC_CWD);
    gui_env_put(env, "A", "123456", ENVLOC_CWD);
    EXPECT_FALSE(closes_within(8, env));
    EXPECT_EQ(site.read(file), "A=1\n");
}

TEST(FullDisk, MergeThatJustFitsIsSaved) {
    const TempSite site;
    site.write(file, "A=1\n");
    eeEnv* env = gui_env_open("demo", ENVLOC_CWD);
    gui_env_put(env, "A", "12345", ENVLOC_CWD);
    EXPECT_TRUE(closes_within(8, env));
    EXPECT_EQ(site.read(file), "A=12345\n");
}

TEST(FullDisk, NewFileThatDoesNotFitIsTold) {
    const TempSite site;
    eeEnv* env = gui_env_open("demo", ENVLOC_CWD);
    gui_env_put(env, "A", "123456", ENVLOC_CWD);
    EXPECT_FALSE(closes_within(8, env));
}

TEST(FullDisk, NoTemporaryFileIsLeftBehind) {
    const TempSite site;
    fs::create_directory(site.path("tmp"));
    const ScopedVariable temporary(temporary_place, site.path("tmp"));
    site.write(file, "A=1\n");
    eeEnv* env = gui_env_open("demo", ENVLOC_CWD);
    gui_env_put(env, "A", "123456", ENVLOC_CWD);
    EXPECT_FALSE(closes_within(4, env));
    EXPECT_TRUE(fs::is_empty(site.path("tmp")));
}
