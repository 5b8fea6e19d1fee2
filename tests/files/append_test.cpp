// Appending to files.

#include "support/descriptors.h"
#include "support/temporary_directory.h"

#include <orvix/gsl/files.h>
#include <orvix/gsl/status.h>

#include <gtest/gtest.h>

#include <filesystem>

namespace fs = std::filesystem;
using orvix::test::open_files;
using orvix::test::TemporaryDirectory;

namespace {

class Append : public testing::Test {
protected:
    TemporaryDirectory site{TemporaryDirectory::Enter::yes};
};

}  // namespace

TEST_F(Append, LineIsAddedWithALineFeed) {
    site.write("log", "one\n");
    EXPECT_TRUE(gfile_append_line_to_file("log", "two"));
    EXPECT_TRUE(gfile_append_line_to_file(site.name("log").c_str(), "three"));
    EXPECT_EQ(site.read("log"), "one\ntwo\nthree\n");
}

TEST_F(Append, LineMakesAMissingFile) {
    EXPECT_TRUE(gfile_append_line_to_file("log", "one"));
    EXPECT_EQ(site.read("log"), "one\n");
}

TEST_F(Append, EmptyLineMakesTheFileAndWritesNothing) {
    EXPECT_TRUE(gfile_append_line_to_file("log", ""));
    EXPECT_EQ(site.read("log"), "");
    EXPECT_TRUE(gfile_append_line_to_file("other", nullptr));
    EXPECT_EQ(site.read("other"), "");
}

TEST_F(Append, EmptyLineLeavesWhatThereIs) {
    site.write("log", "one\n");
    EXPECT_TRUE(gfile_append_line_to_file("log", ""));
    EXPECT_EQ(site.read("log"), "one\n");
}

TEST_F(Append, LineToWhatCannotBeOpenedFails) {
    fs::create_directory("dir");
    EXPECT_FALSE(gfile_append_line_to_file("dir", "x"));
    EXPECT_FALSE(gfile_append_line_to_file("no\\such", "x"));
    EXPECT_FALSE(gfile_append_line_to_file("", "x"));
    EXPECT_FALSE(gfile_append_line_to_file(nullptr, "x"));
}

TEST_F(Append, WriteThatFailsGoesUnnoticed) {
    EXPECT_TRUE(gfile_append_line_to_file(orvix::test::full_device, "lost"));
}

TEST_F(Append, FileFromAReadableSourceFailsAndLeavesTheTarget) {
    site.write("target", "one\n");
    site.write("source", "two\n");
    EXPECT_FALSE(gfile_append_file_to_file("target", "source"));
    EXPECT_EQ(site.read("target"), "one\n");
    EXPECT_EQ(site.read("source"), "two\n");
}

TEST_F(Append, FileFromAReadableSourceLeavesBothStreamsOpen) {
    site.write("source", "two\n");
    const auto before = open_files();
    EXPECT_FALSE(gfile_append_file_to_file("target", "source"));
    EXPECT_EQ(open_files(), before + 2);
}

TEST_F(Append, FileFromAMissingSourceFailsAndLeavesNothingOpen) {
    site.write("target", "one\n");
    const auto before = open_files();
    EXPECT_FALSE(gfile_append_file_to_file("target", "missing"));
    EXPECT_FALSE(gfile_append_file_to_file("target", nullptr));
    EXPECT_EQ(site.read("target"), "one\n");
    EXPECT_EQ(open_files(), before);
}

TEST_F(Append, FileMakesAMissingTarget) {
    site.write("source", "two\n");
    EXPECT_FALSE(gfile_append_file_to_file("target", "source"));
    EXPECT_EQ(site.read("target"), "");
}

TEST_F(Append, FileToWhatCannotBeOpenedFails) {
    site.write("source", "two\n");
    EXPECT_FALSE(gfile_append_file_to_file("no\\such", "source"));
    EXPECT_FALSE(gfile_append_file_to_file(nullptr, "source"));
}

TEST_F(Append, NeverTouchesTheStatusWord) {
    GuiErrno = GUI_ERR_CLOCK_STOP;
    gfile_append_line_to_file("no\\such", "x");
    gfile_append_file_to_file("no\\such", "x");
    EXPECT_EQ(GuiErrno, GUI_ERR_CLOCK_STOP);
}
