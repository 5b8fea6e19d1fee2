#include "support/temporary_directory.h"

#include <orvix/core/program.h>

#include <gtest/gtest.h>

#include <cstdio>

namespace {

TEST(PassBytesUntranslated, LineEndsStayAsTheyAre) {
    const orvix::test::TemporaryDirectory directory(orvix::test::TemporaryDirectory::Enter::yes);
    std::FILE* const file = std::fopen("file", "w");
    ASSERT_NE(file, nullptr);
    orvix::core::pass_bytes_untranslated(file);
    EXPECT_GE(std::fputs("a\nb\r\n\x1a", file), 0);
    std::fclose(file);
    EXPECT_EQ(directory.read("file"), "a\nb\r\n\x1a");
}

}  // namespace
