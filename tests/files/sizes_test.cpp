// Sizes of files, trees and volumes.

#include "files/trees.h"
#include "support/denial.h"
#include "support/links.h"
#include "support/small_stack.h"
#include "support/temporary_directory.h"

#include <orvix/core/files.h>
#include <orvix/gsl/files.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>

namespace fs = std::filesystem;
using orvix::test::Denial;
using orvix::test::holds_for_ordinary_user;
using orvix::test::holds_on_small_stack;
using orvix::test::make_directory_link;
using orvix::test::make_link;
using orvix::test::TemporaryDirectory;
using orvix::test::TreeSite;

namespace {

class Sizes : public testing::Test {
protected:
    TreeSite place;
    const TemporaryDirectory& site = place.directory();

    // Makes a file without data in it; false if the file system takes none of that size.
    bool write_sparse(const std::string& name, std::uintmax_t bytes) const {
        site.write(name, "");
        return orvix::test::set_length(name, bytes);
    }
};

std::int64_t reported_size(const char* name) { return static_cast<std::int64_t>(orvix::filesize_utf8(name)); }

std::string printed_by_dirsize(const char* name, std::int32_t* result) {
    testing::internal::CaptureStderr();
    *result = gfile_dirsize(name);
    return testing::internal::GetCapturedStderr();
}

std::string printed_by_freedir_space(std::string name, std::int32_t* result) {
    testing::internal::CaptureStderr();
    *result = gfile_freedir_space(name.data());
    return testing::internal::GetCapturedStderr();
}

}  // namespace

TEST_F(Sizes, FilesizeCountsBytes) {
    site.write("f", "12345");
    site.write("empty", "");
    EXPECT_EQ(gfile_filesize("f"), 5);
    EXPECT_EQ(gfile_filesize("empty"), 0);
}

TEST_F(Sizes, FilesizeOfNullAndOfAMissingFileIsZero) {
    EXPECT_EQ(gfile_filesize(nullptr), 0);
    EXPECT_EQ(gfile_filesize("missing"), 0);
}

TEST_F(Sizes, FilesizeStopsAtTheLargestNumber) {
    ASSERT_TRUE(write_sparse("large", 2147483646));
    EXPECT_EQ(gfile_filesize("large"), 2147483646);
    ASSERT_TRUE(write_sparse("larger", 3000000000));
    EXPECT_EQ(gfile_filesize("larger"), 2147483647);
}

TEST_F(Sizes, DirsizeAddsUpAllBelow) {
    site.write("tree/a", std::string(10000, 'x'));
    site.write("tree/sub/b", std::string(20000, 'x'));
    site.write("tree/sub/.profile", std::string(3000, 'x'));
    // Each of the two directories has "." and "..", and the lower one is an entry of the upper one.
    const std::int64_t tree = reported_size("tree");
    const std::int64_t sub = reported_size("tree/sub");
    const std::int64_t directories = tree + reported_size(".") + sub + sub + tree;
    EXPECT_EQ(gfile_dirsize("tree"), (33000 + directories) / 1024);
    EXPECT_EQ(gfile_dirsize("tree\\"), (33000 + directories) / 1024);
}

TEST_F(Sizes, DirsizeOfAnEmptyDirectoryIsThatOfItselfAndItsParent) {
    fs::create_directory("empty");
    EXPECT_EQ(gfile_dirsize("empty"), (reported_size("empty") + reported_size(".")) / 1024);
}

TEST_F(Sizes, DirsizeDoesNotEnterDirectoriesThatBeginWithADot) {
    site.write("tree/.cache/large", std::string(50000, 'x'));
    const std::int64_t expected = reported_size("tree") + reported_size(".") + reported_size("tree/.cache");
    EXPECT_EQ(gfile_dirsize("tree"), expected / 1024);
}

TEST_F(Sizes, DirsizeFollowsLinksAndPassesThoseThatLeadNowhere) {
    site.write("outside", std::string(40000, 'x'));
    fs::create_directory("tree");
    make_link("../outside", "tree/link");
    if (orvix::test::links_are_seen()) make_link("nowhere", "tree/dangling");
    EXPECT_EQ(gfile_dirsize("tree"), (40000 + reported_size("tree") + reported_size(".")) / 1024);
}

TEST_F(Sizes, DirsizeDoesNotGoRoundInACircle) {
    site.write("tree/a", std::string(10000, 'x'));
    make_directory_link(".", "tree/again");
    std::int32_t size = 0;
    EXPECT_EQ(printed_by_dirsize("tree", &size), "");
    EXPECT_EQ(size, (10000 + 2 * reported_size("tree") + reported_size(".")) / 1024);
}

TEST_F(Sizes, DirsizeOfAFilePrintsAMessageAndGivesZero) {
    site.write("f", std::string(5000, 'x'));
    std::int32_t size = -1;
    EXPECT_EQ(printed_by_dirsize("f", &size), "gfile: f is not a directory \n");
    EXPECT_EQ(size, 0);
    EXPECT_EQ(printed_by_dirsize("missing", &size), "gfile: missing is not a directory \n");
    EXPECT_EQ(size, 0);
    EXPECT_EQ(printed_by_dirsize(nullptr, &size), "gfile:  is not a directory \n");
    EXPECT_EQ(size, 0);
}

TEST_F(Sizes, DirsizeNamesADirectoryThatCannotBeRead) {
    site.write("tree/sub/secret/f", std::string(5000, 'x'));
    const Denial denial = Denial::of_reading("tree/sub/secret");
    EXPECT_TRUE(holds_for_ordinary_user([] {
        std::int32_t size = 0;
        return printed_by_dirsize("tree", &size) == "gfile: tree\\sub\\secret is not a directory \n";
    }));
}

TEST_F(Sizes, DirsizeStopsAtTheLargestNumber) {
    if (!write_sparse("tree/large", std::uintmax_t{3} << 40U)) GTEST_SKIP() << "no files of this size here";
    EXPECT_EQ(gfile_dirsize("tree"), 2147483647);
}

TEST_F(Sizes, DirsizeOfADeepTreeNeedsNoDeepStack) {
    fs::path path = "t";
    for (int level = 0; level < 400; ++level) path /= "d";
    site.write((path / "f").string(), std::string(1 << 20, 'x'));
    EXPECT_TRUE(holds_on_small_stack([] { return gfile_dirsize("t") >= 1024; }));
}

TEST_F(Sizes, FreedirSpaceIsThatOfTheVolume) {
    const double expected = static_cast<double>(fs::space(".").free) / 1024;
    std::string name = site.name() + "/";
    const double space = gfile_freedir_space(name.data());
    EXPECT_NEAR(space, std::min(expected, 2147483647.0), 0.1 * expected);
    EXPECT_EQ(name, site.name() + "\\");
}

TEST_F(Sizes, FreedirSpaceOfAMissingDirectoryPrintsAMessageAndGivesZero) {
    site.write("f", "");
    std::int32_t space = -1;
    EXPECT_EQ(printed_by_freedir_space("no/such", &space), " The directory no\\such doesn't exist\n");
    EXPECT_EQ(space, 0);
    EXPECT_EQ(printed_by_freedir_space("f", &space), " The directory f doesn't exist\n");
    EXPECT_EQ(space, 0);
}

TEST_F(Sizes, FreedirSpaceOfNullIsZero) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(gfile_freedir_space(nullptr), 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), " The directory  doesn't exist\n");
}
