// Files without a buffer in between.

#include "core/read_all.h"
#include "support/descriptors.h"
#include "support/file_times.h"
#include "support/links.h"
#include "support/temporary_directory.h"

#include <orvix/core/file.h>
#include <orvix/core/file_status.h>
#include <orvix/core/memory.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>

namespace fs = std::filesystem;
using orvix::Path;
using orvix::core::File;
using orvix::test::inherited_files;
using orvix::test::kept_time;
using orvix::test::make_link;
using orvix::test::open_files;
using orvix::test::read_all;
using orvix::test::TemporaryDirectory;

namespace {

class UnbufferedFile : public testing::Test {
protected:
    TemporaryDirectory site{TemporaryDirectory::Enter::yes};
};

}  // namespace

TEST_F(UnbufferedFile, IsReadInSteps) {
    site.write("f", "abcdef");
    File file = File::open_to_read(Path("f"));
    ASSERT_TRUE(file.is_open());
    EXPECT_EQ(file.status().st_size, 6);
    EXPECT_EQ(read_all(file, 4), "abcd");
    EXPECT_EQ(read_all(file, 4), "ef");
    EXPECT_EQ(read_all(file, 4), "");
    EXPECT_TRUE(file.close());
    EXPECT_FALSE(file.is_open());
    EXPECT_TRUE(file.close());
}

TEST_F(UnbufferedFile, ThatIsMissingOrADirectoryIsNotOpenedToRead) {
    fs::create_directory("dir");
    EXPECT_FALSE(File::open_to_read(Path("missing")).is_open());
    EXPECT_EQ(errno, ENOENT);
    EXPECT_FALSE(File::open_to_read(Path("dir")).is_open());
    EXPECT_EQ(errno, EISDIR);
}

TEST_F(UnbufferedFile, IsMadeToBeWritten) {
    File file = File::open_to_write(Path("f"));
    ASSERT_TRUE(file.is_open());
    EXPECT_EQ(file.write("abc", 3), 3U);
    EXPECT_TRUE(file.close());
    EXPECT_EQ(site.read("f"), "abc");
}

TEST_F(UnbufferedFile, KeepsWhatIsNotWrittenOverUntilItIsShortened) {
    site.write("f", "abcdef");
    File file = File::open_to_write(Path("f"));
    EXPECT_EQ(file.write("xy", 2), 2U);
    EXPECT_EQ(site.read("f"), "xycdef");
    EXPECT_TRUE(file.shorten(6));
    EXPECT_EQ(site.read("f"), "xycdef");
    EXPECT_TRUE(file.shorten(2));
    EXPECT_EQ(site.read("f"), "xy");
}

TEST_F(UnbufferedFile, DeviceHasNothingToShorten) {
    File device = File::open_to_write(Path(orvix::test::full_device));
    ASSERT_TRUE(device.is_open());
    EXPECT_TRUE(device.shorten(0));
    errno = 0;
    EXPECT_EQ(device.write("abc", 3), 0U);
    EXPECT_EQ(errno, ENOSPC);
}

TEST_F(UnbufferedFile, IsTheSameUnderAllItsNames) {
    site.write("f", "x");
    site.write("other", "x");
    fs::create_hard_link("f", "same");
    make_link("f", "link");
    const File file = File::open_to_read(Path("f"));
    EXPECT_TRUE(file.is_same_file(File::open_to_write(Path("same"))));
    EXPECT_TRUE(file.is_same_file(File::open_to_read(Path("link"))));
    EXPECT_FALSE(file.is_same_file(File::open_to_read(Path("other"))));
}

TEST_F(UnbufferedFile, TakesTimesFromAStatus) {
    File file = File::open_to_write(Path("f"));
    orvix::core::FileStatus status{};
    status.st_atime = 1000000000;
    status.st_mtime = 1100000000;
    EXPECT_TRUE(file.set_times(status));
    orvix::core::FileStatus after{};
    ASSERT_EQ(orvix::core::read_status(Path("f"), &after), 0);
    EXPECT_EQ(after.st_atime, 1000000000);
    EXPECT_EQ(after.st_mtime, 1100000000);
}

TEST_F(UnbufferedFile, TakesTimesAsExactAsAStatusHasThem) {
    site.write("from", "x");
    const auto long_ago = fs::file_time_type::clock::now() - std::chrono::hours(100);
    fs::last_write_time("from", long_ago);
    const File from = File::open_to_read(Path("from"));
    File to = File::open_to_write(Path("to"));
    EXPECT_TRUE(to.set_times(from.status()));
    EXPECT_TRUE(to.close());
    EXPECT_EQ(fs::last_write_time("to"), kept_time(fs::last_write_time("from")));
}

TEST_F(UnbufferedFile, IsHandedOnByMoving) {
    site.write("f", "abc");
    File first = File::open_to_read(Path("f"));
    File second = std::move(first);
    EXPECT_EQ(read_all(second, 3), "abc");
    File third;
    third = std::move(second);
    EXPECT_TRUE(third.is_open());
    EXPECT_EQ(third.status().st_size, 3);
}

TEST_F(UnbufferedFile, IsNotInheritedAndClosesItself) {
    const auto before = open_files();
    const auto inherited_before = inherited_files();
    {
        const File file = File::open_to_write(Path("f"));
        EXPECT_EQ(open_files(), before + 1);
        EXPECT_EQ(inherited_files(), inherited_before);
    }
    EXPECT_EQ(open_files(), before);
}

TEST(ExpectToBeFilled, LeavesBlocksAsTheyAre) {
    for (const std::size_t bytes : {std::size_t{0}, std::size_t{1000}, std::size_t{100} << 20U}) {
        char* block = static_cast<char*>(std::malloc(bytes + 1));
        ASSERT_NE(block, nullptr);
        block[0] = 'a';
        block[bytes] = 'z';
        orvix::core::expect_to_be_filled(block, bytes + 1);
        EXPECT_EQ(block[bytes], 'z');
        std::free(block);
    }
}
