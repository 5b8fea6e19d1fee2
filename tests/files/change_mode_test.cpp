// Permissions over names and wildcards.

#include "support/broken_directory.h"
#include "support/denial.h"
#include "support/letter_case.h"
#include "support/links.h"
#include "support/permissions.h"
#include "support/temporary_directory.h"

#include <orvix/gsl/file_trees.h>
#include <orvix/gsl/status.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace fs = std::filesystem;
using orvix::test::kept_directory_mode;
using orvix::test::kept_mode;
using orvix::test::mode_of;
using orvix::test::set_mode;
using orvix::test::TemporaryDirectory;
using orvix::test::UnlistableDirectory;
using orvix::test::write_beside;

namespace {

class ChangeMode : public testing::Test {
protected:
    TemporaryDirectory site{TemporaryDirectory::Enter::yes};

    void write(const std::string& name, unsigned mode) const {
        site.write(name, "x");
        set_mode(name, mode);
    }
};

}  // namespace

TEST_F(ChangeMode, ChangesAFile) {
    write("dir/f", 0644);
    EXPECT_TRUE(gfile_chmod("dir/f", 0400));
    EXPECT_EQ(mode_of("dir/f"), kept_mode(0400));
    EXPECT_TRUE(gfile_chmod("dir/f", 0600));
    EXPECT_EQ(mode_of("dir/f"), kept_mode(0600));
}

TEST_F(ChangeMode, ChangesADirectoryAndNothingInIt) {
    write("dir/f", 0644);
    EXPECT_TRUE(gfile_chmod("dir\\", 0711));
    EXPECT_EQ(mode_of("dir"), kept_directory_mode(0711));
    EXPECT_EQ(mode_of("dir/f"), kept_mode(0644));
}

TEST_F(ChangeMode, AllPermissionsAreTheOwners) {
    write("f", 0444);
    EXPECT_TRUE(gfile_chmod_give_all_permissions("f"));
    EXPECT_EQ(mode_of("f"), kept_mode(0700));
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
    EXPECT_TRUE(gfile_chmod("dir/*.txt", 0500));
    EXPECT_EQ(mode_of("dir/a.txt"), kept_mode(0500));
    EXPECT_EQ(mode_of("dir/b.txt"), kept_mode(0500));
    EXPECT_EQ(mode_of("dir/c.cfg"), kept_mode(0644));
    EXPECT_EQ(mode_of("dir/d.txt"), kept_directory_mode(0500));
    EXPECT_EQ(mode_of("dir/d.txt/e.txt"), kept_mode(0644));
}

TEST_F(ChangeMode, WildcardPassesTheDirectoryItselfAndItsParent) {
    write("dir/.hidden", 0644);
    set_mode(".", 0750);
    set_mode("dir", 0750);
    EXPECT_TRUE(gfile_chmod("dir\\.*", 0500));
    EXPECT_EQ(mode_of("dir/.hidden"), kept_mode(0500));
    EXPECT_EQ(mode_of("dir"), kept_directory_mode(0750));
    EXPECT_EQ(mode_of("."), kept_directory_mode(0750));
}

TEST_F(ChangeMode, OfANameOfMoreThan1024BytesFails) {
    std::string dots;
    while (dots.size() < 1022) dots += ".\\";
    write("ff", 0644);
    EXPECT_FALSE(gfile_chmod((dots + ".\\ff").c_str(), 0500));
    EXPECT_EQ(mode_of("ff"), kept_mode(0644));
    EXPECT_TRUE(gfile_chmod((dots + "ff").c_str(), 0500));
    EXPECT_EQ(mode_of("ff"), kept_mode(0500));
}

TEST_F(ChangeMode, WildcardInADirectoryBehindALinkChangesWhatIsThere) {
    write("dir/f", 0644);
    orvix::test::make_directory_link("dir", "link");
    EXPECT_TRUE(gfile_chmod("link\\*", 0500));
    EXPECT_EQ(mode_of("dir/f"), kept_mode(0500));
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
    EXPECT_EQ(mode_of("a.txt"), kept_mode(0644));
    EXPECT_TRUE(gfile_chmod(".\\*.txt", 0500));
    EXPECT_EQ(mode_of("a.txt"), kept_mode(0500));
}

TEST_F(ChangeMode, WildcardInADirectoryThatCannotBeListedFails) {
    const UnlistableDirectory directory;
    if (!directory.exists()) GTEST_SKIP() << "no such directory here";
    EXPECT_FALSE(gfile_chmod(directory.wildcard().c_str(), 0700));
}

TEST_F(ChangeMode, WildcardStopsAtTheFirstFailure) {
    fs::create_directory("dir");
    orvix::test::make_name_without_permissions("dir/closed");
    EXPECT_FALSE(gfile_chmod("dir\\*", 0700));
}

TEST_F(ChangeMode, WildcardTellsNamesThatDifferInLetterCaseApart) {
    write_beside("dir/a", "");
    write_beside("dir/A", "");
    EXPECT_TRUE(gfile_chmod("dir\\a", 0700));
    EXPECT_TRUE(gfile_chmod("dir\\A*", 0511));
    EXPECT_EQ(mode_of("dir/a"), kept_mode(0700));
    EXPECT_EQ(mode_of("dir/A"), kept_mode(0511));
}

TEST_F(ChangeMode, NeverTouchesTheStatusWord) {
    GuiErrno = GUI_ERR_CLOCK_STOP;
    gfile_chmod("missing", 0700);
    gfile_chmod("missing\\*", 0700);
    EXPECT_EQ(GuiErrno, GUI_ERR_CLOCK_STOP);
}
