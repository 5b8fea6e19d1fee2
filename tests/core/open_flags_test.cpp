#include "support/temporary_directory.h"

#include <orvix/core/files.h>
#include <orvix/core/open_flags.h>

#include <gtest/gtest.h>

#include <cerrno>

#include <unistd.h>

namespace {

TEST(CreateExclusiveFlags, MakeAFileToReadAndWriteThatMustNotBeThere) {
    const orvix::test::TemporaryDirectory directory(orvix::test::TemporaryDirectory::Enter::yes);
    const int descriptor = orvix::open_utf8("new", orvix::core::create_exclusive_flags(), 0600);
    ASSERT_NE(descriptor, -1);
    char byte = '\0';
    EXPECT_EQ(write(descriptor, "x", 1), 1);
    EXPECT_EQ(pread(descriptor, &byte, 1, 0), 1);
    EXPECT_EQ(byte, 'x');
    close(descriptor);

    errno = 0;
    EXPECT_EQ(orvix::open_utf8("new", orvix::core::create_exclusive_flags(), 0600), -1);
    EXPECT_EQ(errno, EEXIST);
}

}  // namespace
