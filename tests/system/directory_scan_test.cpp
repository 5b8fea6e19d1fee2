#include <orvix/gsl/directory_scan.h>

#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string>
#include <tuple>
#include <vector>

namespace fs = std::filesystem;
using orvix::gsl::closedir;
using orvix::gsl::dirent;
using orvix::gsl::opendir;
using orvix::gsl::opendir_utf8;
using orvix::gsl::readdir;
using orvix::test::ScopedVariable;
using orvix::test::TemporaryDirectory;

namespace {

std::vector<std::string> sorted_entries(const std::string& name) {
    std::vector<std::string> entries;
    orvix::gsl::_dirdesc* scan = opendir(name.c_str());
    if (scan == nullptr) return {"not opened"};
    while (const dirent* entry = readdir(scan)) {
        EXPECT_EQ(entry->d_namlen, std::strlen(entry->d_name));
        entries.emplace_back(entry->d_name);
    }
    EXPECT_EQ(closedir(scan), 0);
    std::sort(entries.begin(), entries.end());
    return entries;
}

// What tells files apart in their records; the number of a file is not known everywhere.
auto identity(const orvix::core::FileStatus32& record) {
    return std::tuple(record.st_ino, record.st_mtime, record.st_ctime);
}

class DirectoryScan : public testing::Test {
protected:
    TemporaryDirectory site{TemporaryDirectory::Enter::yes};
    const std::vector<std::string> two_files{".", "..", "a", "b"};

    void SetUp() override {
        site.write("dir/a", "1");
        site.write("dir/b", "22");
    }
};

using GslStat = DirectoryScan;

}  // namespace

TEST_F(DirectoryScan, NullEmptyAndPatternGiveNull) {
    EXPECT_EQ(opendir(nullptr), nullptr);
    EXPECT_EQ(opendir(""), nullptr);
    EXPECT_EQ(opendir("x*"), nullptr);
    EXPECT_EQ(opendir("dir\\*"), nullptr);
}

TEST_F(DirectoryScan, MissingDirectoryAndPlainFileGiveNull) {
    EXPECT_EQ(opendir("missing"), nullptr);
    EXPECT_EQ(opendir("dir\\a"), nullptr);
}

TEST_F(DirectoryScan, ATrailingTildeOpensHome) {
    const ScopedVariable home("HOME", site.name("dir").c_str());
    EXPECT_EQ(sorted_entries("x~"), two_files);
    EXPECT_EQ(sorted_entries("~"), two_files);
}

TEST_F(DirectoryScan, ATildeNameIsNotOpenedUnderItsOwnName) {
    fs::create_directory(site.path() / "own~");
    const ScopedVariable home("HOME", site.name("dir").c_str());
    EXPECT_EQ(sorted_entries("own~"), two_files);
}

TEST_F(DirectoryScan, ATildeWithoutHomeOpensHomepath) {
    const ScopedVariable home("HOME", "");
    const ScopedVariable homepath("HOMEPATH", site.name("dir").c_str());
    EXPECT_EQ(sorted_entries("~"), two_files);
}

TEST_F(DirectoryScan, ATildeWithNoHomeAtAllGivesNull) {
    const ScopedVariable home("HOME", nullptr);
    const ScopedVariable homepath("HOMEPATH", nullptr);
    EXPECT_EQ(opendir("x~"), nullptr);
}

TEST_F(DirectoryScan, ASeparatorAtTheEndMakesNoDifference) {
    for (const char* name : {"dir", "dir/", "dir\\"}) EXPECT_EQ(sorted_entries(name), two_files) << name;
}

TEST_F(DirectoryScan, TheSecondNameIsTheSameFunction) {
    orvix::gsl::_dirdesc* scan = opendir_utf8("dir");
    ASSERT_NE(scan, nullptr);
    EXPECT_EQ(closedir(scan), 0);
}

TEST_F(DirectoryScan, DotAndDotDotAreHandedOutInTheSystemsOrder) {
    std::vector<std::string> ours;
    orvix::gsl::_dirdesc* scan = opendir(site.name("dir").c_str());
    while (const dirent* entry = readdir(scan)) ours.emplace_back(entry->d_name);
    closedir(scan);
    std::vector<std::string> theirs;
    for (const auto& entry : fs::directory_iterator(site.path() / "dir"))
        theirs.push_back(entry.path().filename().string());
    EXPECT_EQ(std::count(ours.begin(), ours.end(), "."), 1);
    EXPECT_EQ(std::count(ours.begin(), ours.end(), ".."), 1);
    std::erase(ours, ".");
    std::erase(ours, "..");
    EXPECT_EQ(ours, theirs);
}

TEST_F(DirectoryScan, NullHandlesAreHarmless) {
    EXPECT_EQ(readdir(nullptr), nullptr);
    EXPECT_EQ(closedir(nullptr), 0);
}

TEST_F(DirectoryScan, TheFirstEntryWasReadWhenTheScanWasOpened) {
    orvix::gsl::_dirdesc* scan = opendir("dir");
    ASSERT_NE(scan, nullptr);
    EXPECT_EQ(scan->count, 0);
    EXPECT_NE(scan->current->d_namlen, 0U);
    const std::string first = scan->current->d_name;
    EXPECT_EQ(readdir(scan)->d_name, first);
    EXPECT_EQ(scan->count, 1);
    closedir(scan);
}

TEST_F(DirectoryScan, AfterTheEndItStaysAtTheEnd) {
    orvix::gsl::_dirdesc* scan = opendir("dir");
    while (readdir(scan) != nullptr) {
    }
    EXPECT_EQ(readdir(scan), nullptr);
    EXPECT_EQ(scan->count, 4);
    EXPECT_EQ(closedir(scan), 0);
}

TEST_F(DirectoryScan, TheLongestNameOfTheHostFits) {
    const std::string longest(255, 'n');
    site.write("long/" + longest, "");
    EXPECT_EQ(sorted_entries("long"), (std::vector<std::string>{".", "..", longest}));
}

TEST_F(GslStat, ABareDriveIsLookedAtAsItsRoot) {
    orvix::core::FileStatus32 drive;
    orvix::core::FileStatus32 root;
    ASSERT_EQ(gsl_stat("c:", &drive), 0);
    ASSERT_EQ(gsl_stat("c:\\", &root), 0);
    EXPECT_EQ(identity(drive), identity(root));
    orvix::core::FileStatus32 here;
    ASSERT_EQ(gsl_stat(".", &here), 0);
    EXPECT_NE(identity(drive), identity(here));
}

TEST_F(GslStat, ASeparatorAtTheEndOfADirectoryIsIgnored) {
    orvix::core::FileStatus32 record;
    EXPECT_EQ(gsl_stat("dir/", &record), 0);
    EXPECT_EQ(gsl_stat("dir\\", &record), 0);
    EXPECT_TRUE(gsl_stat_is_dir(&record));
}

TEST_F(GslStat, ASeparatorAtTheEndOfAFileIsIgnoredToo) { EXPECT_EQ(gsl_stat("dir/a/", nullptr), 0); }

TEST_F(GslStat, ANullNameFails) {
    orvix::core::FileStatus32 record;
    EXPECT_EQ(gsl_stat(nullptr, &record), -1);
    EXPECT_EQ(gsl_stat_64(nullptr, nullptr), -1);
}

TEST_F(GslStat, ANullRecordOnlyTestsExistence) {
    EXPECT_EQ(gsl_stat("dir/a", nullptr), 0);
    EXPECT_EQ(gsl_stat("dir/missing", nullptr), -1);
    EXPECT_EQ(gsl_stat_64("dir/a", nullptr), 0);
}

TEST_F(GslStat, AMissingNameFailsWithEnoent) {
    orvix::core::FileStatus32 record;
    errno = 0;
    EXPECT_EQ(gsl_stat("missing/", &record), -1);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(gsl_stat("", &record), -1);
}

TEST_F(GslStat, TheRecordTellsSizeAndTimes) {
    orvix::core::FileStatus32 narrow;
    orvix::core::FileStatus wide;
    ASSERT_EQ(gsl_stat("dir/b", &narrow), 0);
    ASSERT_EQ(gsl_stat_64("dir\\b", &wide), 0);
    EXPECT_EQ(narrow.st_size, 2);
    EXPECT_EQ(wide.st_size, 2);
    EXPECT_EQ(narrow.st_mtime, wide.st_mtime);
}

TEST_F(GslStat, OnlyTheDirectoryBitsMakeADirectory) {
    using Mode = decltype(orvix::core::FileStatus32::st_mode);
    orvix::core::FileStatus32 record{};
    for (const unsigned type : {0U, 010000U, 020000U, 060000U, 0100000U, 0120000U, 0140000U}) {
        record.st_mode = static_cast<Mode>(type | 0777U);
        EXPECT_FALSE(gsl_stat_is_dir(&record)) << type;
    }
    record.st_mode = 040755U;
    EXPECT_TRUE(gsl_stat_is_dir(&record));
}
