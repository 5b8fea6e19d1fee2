// Permissions over names and wildcards.

#include "files/unlistable_directory.h"
#include "support/temporary_directory.h"

#include <orvix/gsl/file_trees.h>
#include <orvix/gsl/status.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace fs = std::filesystem;
using orvix::test::TemporaryDirectory;
using orvix::test::UnlistableDirectory;

namespace {

class ChangeMode : public testing::Test {
protected:
    TemporaryDirectory site{TemporaryDirectory::Enter::yes};

    static unsigned mode_of(const fs::path& name) { return static_cast<unsigned>(fs::status(name).permissions()); }

    void write(const std::string& name, unsigned mode) const {
        site.write(name, "x");
        fs::permissions(name, fs::perms(mode));
    }
};

}  // namespace

TEST_F(ChangeMode, ChangesAFile) {
    write("dir/f", 0644);
    EXPECT_TRUE(gfile_chmod("dir/f", 0600));
    EXPECT_EQ(mode_of("dir/f"), 0600U);
}

TEST_F(ChangeMode, ChangesADirectoryAndNothingInIt) {
    write("dir/f", 0644);
    EXPECT_TRUE(gfile_chmod("dir\\", 0711));
    EXPECT_EQ(mode_of("dir"), 0711U);
    EXPECT_EQ(mode_of("dir/f"), 0644U);
}

TEST_F(ChangeMode, AllPermissionsAreTheOwners) {
    write("f", 0444);
    EXPECT_TRUE(gfile_chmod_give_all_permissions("f"));
    EXPECT_EQ(mode_of("f"), 0700U);
}

TEST_F(ChangeMode, OfAMissingFileFails) {
    EXPECT_FALSE(gfile_chmod("missing", 0600));
    EXPECT_FALSE(gfile_chmod("", 0600));
    EXPECT_FALSE(gfile_chmod(nullptr, 0600));
    EXPECT_FALSE(gfile_chmod_give_all_permissions("missing"));
}

TEST_F(ChangeMode, WildcardChangesWhatMatchesAndEntersNoDirectory) {
    write("dir/a.txt", 0644);
    write("dir/b.txt", 0644);
    write("dir/c.cfg", 0644);
    write("dir/d.txt/e.txt", 0644);
    EXPECT_TRUE(gfile_chmod("dir/*.txt", 0700));
    EXPECT_EQ(mode_of("dir/a.txt"), 0700U);
    EXPECT_EQ(mode_of("dir/b.txt"), 0700U);
    EXPECT_EQ(mode_of("dir/c.cfg"), 0644U);
    EXPECT_EQ(mode_of("dir/d.txt"), 0700U);
    EXPECT_EQ(mode_of("dir/d.txt/e.txt"), 0644U);
}

TEST_F(ChangeMode, WildcardPassesTheDirectoryItselfAndItsParent) {
    write("dir/.hidden", 0644);
    fs::permissions(".", fs::perms(0750));
    fs::permissions("dir", fs::perms(0750));
    EXPECT_TRUE(gfile_chmod("dir\\.*", 0700));
    EXPECT_EQ(mode_of("dir/.hidden"), 0700U);
    EXPECT_EQ(mode_of("dir"), 0750U);
    EXPECT_EQ(mode_of("."), 0750U);
}

TEST_F(ChangeMode, OfANameOfMoreThan1024BytesFails) {
    std::string dots;
    while (dots.size() < 1022) dots += ".\\";
    write("ff", 0644);
    EXPECT_FALSE(gfile_chmod((dots + ".\\ff").c_str(), 0700));
    EXPECT_EQ(mode_of("ff"), 0644U);
    EXPECT_TRUE(gfile_chmod((dots + "ff").c_str(), 0700));
    EXPECT_EQ(mode_of("ff"), 0700U);
}

TEST_F(ChangeMode, WildcardInADirectoryBehindALinkChangesWhatIsThere) {
    write("dir/f", 0644);
    fs::create_directory_symlink("dir", "link");
    EXPECT_TRUE(gfile_chmod("link\\*", 0700));
    EXPECT_EQ(mode_of("dir/f"), 0700U);
}

TEST_F(ChangeMode, WildcardThatMatchesNothingSucceeds) {
    fs::create_directory("dir");
    EXPECT_TRUE(gfile_chmod("dir\\*", 0700));
}

TEST_F(ChangeMode, WildcardInAMissingDirectoryFails) {
    site.write("file", "");
    EXPECT_FALSE(gfile_chmod("missing\\*", 0700));
    EXPECT_FALSE(gfile_chmod("file\\*", 0700));
}

TEST_F(ChangeMode, WildcardNeedsADirectoryInFrontOfIt) {
    write("a.txt", 0644);
    EXPECT_FALSE(gfile_chmod("*.txt", 0700));
    EXPECT_EQ(mode_of("a.txt"), 0644U);
    EXPECT_TRUE(gfile_chmod(".\\*.txt", 0700));
    EXPECT_EQ(mode_of("a.txt"), 0700U);
}

TEST_F(ChangeMode, WildcardInADirectoryThatCannotBeListedFails) {
    const UnlistableDirectory directory;
    if (!directory.exists()) GTEST_SKIP() << "no such directory here";
    EXPECT_FALSE(gfile_chmod(directory.wildcard().c_str(), 0700));
}

TEST_F(ChangeMode, WildcardStopsAtTheFirstFailure) {
    fs::create_directory("dir");
    fs::create_symlink("nowhere", "dir/dangling");
    EXPECT_FALSE(gfile_chmod("dir\\*", 0700));
}

TEST_F(ChangeMode, WildcardTellsNamesThatDifferInLetterCaseApart) {
    write("dir/a", 0644);
    write("dir/A", 0600);
    EXPECT_TRUE(gfile_chmod("dir\\a", 0700));
    EXPECT_TRUE(gfile_chmod("dir\\A*", 0711));
    EXPECT_EQ(mode_of("dir/a"), 0700U);
    EXPECT_EQ(mode_of("dir/A"), 0711U);
}

TEST_F(ChangeMode, NeverTouchesTheStatusWord) {
    GuiErrno = GUI_ERR_CLOCK_STOP;
    gfile_chmod("missing", 0700);
    gfile_chmod("missing\\*", 0700);
    EXPECT_EQ(GuiErrno, GUI_ERR_CLOCK_STOP);
}
