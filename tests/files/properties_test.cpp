// Questions about one file.

#include "support/denial.h"
#include "support/descriptors.h"
#include "support/links.h"
#include "support/permissions.h"
#include "support/temporary_directory.h"

#include <orvix/gsl/files.h>
#include <orvix/gsl/status.h>

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>

namespace fs = std::filesystem;
using orvix::test::Denial;
using orvix::test::holds_for_ordinary_user;
using orvix::test::make_directory_link;
using orvix::test::set_mode;
using orvix::test::TemporaryDirectory;

namespace {

constexpr int directory = 16384;
constexpr int regular_file = 32768;

class FileProperties : public testing::Test {
protected:
    TemporaryDirectory site{TemporaryDirectory::Enter::yes};
};

void set_age(const fs::path& file, std::chrono::seconds age) {
    fs::last_write_time(file, fs::file_time_type::clock::now() - age);
}

}  // namespace

TEST_F(FileProperties, ExistsFindsFilesAndDirectories) {
    site.write("dir/f", "x");
    EXPECT_TRUE(gfile_exists("dir"));
    EXPECT_TRUE(gfile_exists("dir\\"));
    EXPECT_TRUE(gfile_exists("dir\\f"));
    EXPECT_TRUE(gfile_exists("dir/f"));
    EXPECT_TRUE(gfile_exists(site.name("dir/f").c_str()));
    EXPECT_FALSE(gfile_exists("dir\\g"));
}

TEST_F(FileProperties, NullAndEmptyNamesAreMissingFiles) {
    for (const char* name : {static_cast<const char*>(nullptr), ""}) {
        EXPECT_FALSE(gfile_exists(name));
        EXPECT_FALSE(gfile_is_dir(name));
        EXPECT_FALSE(gfile_is_readable(name));
        EXPECT_FALSE(gfile_is_executable(name));
        EXPECT_FALSE(gfile_is_writable(name));
        EXPECT_FALSE(gfile_is_file_older(name, name));
        EXPECT_EQ(gfile_type(name), 0);
    }
}

TEST_F(FileProperties, IsDirFollowsLinks) {
    site.write("dir/f", "x");
    make_directory_link("dir", "link");
    EXPECT_TRUE(gfile_is_dir("dir"));
    EXPECT_TRUE(gfile_is_dir("link"));
    EXPECT_FALSE(gfile_is_dir("dir\\f"));
    EXPECT_FALSE(gfile_is_dir("missing"));
}

TEST_F(FileProperties, AnyReadableFileIsExecutable) {
    site.write("plain.txt", "no program");
    set_mode("plain.txt", 0400);
    EXPECT_TRUE(gfile_is_readable("plain.txt"));
    EXPECT_TRUE(gfile_is_executable("plain.txt"));
    EXPECT_FALSE(gfile_is_executable("missing"));
}

TEST_F(FileProperties, WhoMayNotReadOrWriteIsToldSo) {
    site.write("read_only", "x");
    site.write("secret", "x");
    set_mode("read_only", 0444);
    const Denial denial = Denial::of_reading("secret");
    EXPECT_TRUE(holds_for_ordinary_user([] { return gfile_is_readable("read_only"); }));
    EXPECT_TRUE(holds_for_ordinary_user([] { return !gfile_is_writable("read_only"); }));
    EXPECT_TRUE(holds_for_ordinary_user([] { return !gfile_is_readable("secret"); }));
    EXPECT_TRUE(holds_for_ordinary_user([] { return !gfile_is_executable("secret"); }));
}

TEST_F(FileProperties, WritableFilesAndDirectoriesAre) {
    site.write("dir/f", "x");
    EXPECT_TRUE(gfile_is_writable("dir"));
    EXPECT_TRUE(gfile_is_writable("dir\\f"));
    EXPECT_FALSE(gfile_is_writable("dir\\g"));
}

TEST_F(FileProperties, FileOlderIsTrueIfTheSecondIsTheOlderOne) {
    site.write("new", "");
    site.write("old", "");
    set_age("old", std::chrono::hours(1));
    EXPECT_TRUE(gfile_is_file_older("new", "old"));
    EXPECT_FALSE(gfile_is_file_older("old", "new"));
}

TEST_F(FileProperties, FileOlderIsFalseInBothOrdersForEqualTimes) {
    site.write("a", "");
    site.write("b", "");
    fs::last_write_time("b", fs::last_write_time("a"));
    EXPECT_FALSE(gfile_is_file_older("a", "b"));
    EXPECT_FALSE(gfile_is_file_older("b", "a"));
}

TEST_F(FileProperties, FileOlderIsFalseForAMissingName) {
    site.write("a", "");
    EXPECT_FALSE(gfile_is_file_older("a", "missing"));
    EXPECT_FALSE(gfile_is_file_older("missing", "a"));
}

TEST_F(FileProperties, TypeIsThatOfTheFile) {
    site.write("dir/f", "x");
    make_directory_link("dir", "link");
    EXPECT_EQ(gfile_type("dir"), directory);
    EXPECT_EQ(gfile_type("dir\\"), directory);
    EXPECT_EQ(gfile_type("dir/"), directory);
    EXPECT_EQ(gfile_type("link"), directory);
    EXPECT_EQ(gfile_type("dir\\f"), regular_file);
    EXPECT_EQ(gfile_type(orvix::test::full_device), 8192);
    EXPECT_EQ(gfile_type("missing"), 0);
}

TEST_F(FileProperties, TypeOfTheRootOfADriveIsADirectory) { EXPECT_EQ(gfile_type("c:\\"), directory); }

TEST_F(FileProperties, TypeTakesNamesOf1024BytesAndNoLongerOnes) {
    std::string name;
    while (name.size() < 1020) name += ".\\";
    site.write("file", "x");
    EXPECT_EQ(gfile_type((name + "file").c_str()), regular_file);
    EXPECT_EQ(gfile_type((".\\" + name + "file").c_str()), 0);
}

TEST_F(FileProperties, NoQuestionTouchesTheStatusWord) {
    GuiErrno = GUI_ERR_CLOCK_STOP;
    gfile_exists("missing");
    gfile_is_dir("missing");
    gfile_is_readable("missing");
    gfile_is_writable("missing");
    gfile_is_file_older("missing", "missing");
    gfile_type("missing");
    EXPECT_EQ(GuiErrno, GUI_ERR_CLOCK_STOP);
}
