// Making directories.

#include "support/permissions.h"
#include "support/temporary_directory.h"

#include <orvix/gsl/files.h>
#include <orvix/gsl/status.h>

#include <gtest/gtest.h>

#include <filesystem>

namespace fs = std::filesystem;
using orvix::test::CreationMask;
using orvix::test::kept_directory_mode;
using orvix::test::mode_of;
using orvix::test::TemporaryDirectory;

namespace {

class Directories : public testing::Test {
protected:
    TemporaryDirectory site{TemporaryDirectory::Enter::yes};
};

}  // namespace

TEST_F(Directories, MkdirMakesOneLevel) {
    EXPECT_EQ(gsl_mkdir("x", 493), 0);
    EXPECT_TRUE(fs::is_directory("x"));
    EXPECT_EQ(gsl_mkdir("x/y/", 493), 0);
    EXPECT_TRUE(fs::is_directory("x/y"));
    EXPECT_EQ(gsl_mkdir("x\\z\\", 493), 0);
    EXPECT_TRUE(fs::is_directory("x/z"));
}

TEST_F(Directories, MkdirOfWhatIsThereGivesMinusOne) {
    fs::create_directory("x");
    site.write("file", "");
    EXPECT_EQ(gsl_mkdir("x", 493), -1);
    EXPECT_EQ(gsl_mkdir("file", 493), -1);
}

TEST_F(Directories, MkdirWithoutItsParentGivesMinusOne) {
    EXPECT_EQ(gsl_mkdir("x\\y", 493), -1);
    EXPECT_FALSE(fs::exists("x"));
}

TEST_F(Directories, MkdirOfNullAndOfTheEmptyNameGivesMinusOne) {
    EXPECT_EQ(gsl_mkdir(nullptr, 493), -1);
    EXPECT_EQ(gsl_mkdir("", 493), -1);
}

TEST_F(Directories, ModeIsIgnored) {
    {
        const CreationMask mask(022);
        EXPECT_EQ(gsl_mkdir("x", 0), 0);
        EXPECT_EQ(gsl_forceDirectoryToExist("y\\z", 0), 0);
    }
    EXPECT_EQ(mode_of("x"), kept_directory_mode(0755));
    EXPECT_EQ(mode_of("y"), kept_directory_mode(0755));
    EXPECT_EQ(mode_of("y/z"), kept_directory_mode(0755));
}

TEST_F(Directories, ForceMakesAllMissingLevels) {
    EXPECT_EQ(gsl_forceDirectoryToExist("a/b\\c/", 493), 0);
    EXPECT_TRUE(fs::is_directory("a/b/c"));
    EXPECT_EQ(gsl_forceDirectoryToExist(site.name("a/b/d").c_str(), 493), 0);
    EXPECT_TRUE(fs::is_directory("a/b/d"));
}

TEST_F(Directories, ForceOfWhatIsThereGivesMinusOne) {
    fs::create_directories("a/b");
    EXPECT_EQ(gsl_forceDirectoryToExist("a\\b", 493), -1);
}

TEST_F(Directories, ForceBelowAFileGivesMinusOne) {
    site.write("file", "");
    EXPECT_EQ(gsl_forceDirectoryToExist("file\\a\\b", 493), -1);
}

TEST_F(Directories, ForceOfNullAndOfTheEmptyNameGivesMinusOne) {
    EXPECT_EQ(gsl_forceDirectoryToExist(nullptr, 493), -1);
    EXPECT_EQ(gsl_forceDirectoryToExist("", 493), -1);
}

TEST_F(Directories, NeverTouchTheStatusWord) {
    GuiErrno = GUI_ERR_CLOCK_STOP;
    gsl_mkdir("no\\such", 493);
    gsl_forceDirectoryToExist(nullptr, 493);
    EXPECT_EQ(GuiErrno, GUI_ERR_CLOCK_STOP);
}
