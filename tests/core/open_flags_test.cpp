#include "support/descriptors.h"
#include "support/temporary_directory.h"

#include <orvix/core/files.h>
#include <orvix/core/open_flags.h>

#include <gtest/gtest.h>

#include <cerrno>

namespace {

TEST(CreateExclusiveFlags, MakeAFileToReadAndWriteThatMustNotBeThere) {
    const orvix::test::TemporaryDirectory directory(orvix::test::TemporaryDirectory::Enter::yes);
    const int descriptor = orvix::open_utf8("new", orvix::core::create_exclusive_flags(), 0600);
    ASSERT_NE(descriptor, -1);
    EXPECT_TRUE(orvix::test::write_bytes(descriptor, "x\n"));
    EXPECT_EQ(orvix::test::bytes_at_start(descriptor, 9), "x\n");
    orvix::test::close_descriptor(descriptor);

    errno = 0;
    EXPECT_EQ(orvix::open_utf8("new", orvix::core::create_exclusive_flags(), 0600), -1);
    EXPECT_EQ(errno, EEXIST);
}

TEST(OpenFlags, WaysOfAccessExcludeEachOther) {
    const orvix::core::OpenFlags flags = orvix::core::open_flags();
    EXPECT_EQ(flags.read_only & flags.access, flags.read_only);
    EXPECT_EQ(flags.write_only & flags.access, flags.write_only);
    EXPECT_EQ(flags.read_write & flags.access, flags.read_write);
    EXPECT_NE(flags.read_only, flags.write_only);
    EXPECT_NE(flags.read_only, flags.read_write);
    EXPECT_NE(flags.write_only, flags.read_write);
}

TEST(OpenFlags, CreateWithTruncateMakesAFileAndLaterEmptiesIt) {
    const orvix::test::TemporaryDirectory directory(orvix::test::TemporaryDirectory::Enter::yes);
    const orvix::core::OpenFlags flags = orvix::core::open_flags();
    for (int time = 0; time < 2; ++time) {
        const int descriptor = orvix::open_utf8("file", flags.read_write | flags.create | flags.truncate, 0600);
        ASSERT_NE(descriptor, -1);
        EXPECT_EQ(lseek(descriptor, 0, SEEK_END), 0);
        EXPECT_EQ(write(descriptor, "x", 1), 1);
        close(descriptor);
    }
    EXPECT_EQ(orvix::open_utf8("file", flags.read_write | flags.create | flags.exclusive, 0600), -1);
}

}  // namespace
