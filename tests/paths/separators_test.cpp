#include <gtest/gtest.h>
#include <orvix/gsl/file_names.h>
#include <support/buffer.h>

using namespace orvix::test;

TEST(ConvertFileName, EverySlashBecomesABackslash) {
    Buffer name("/a//b\\c/");
    EXPECT_EQ(convertFileName(name), name.get());
    EXPECT_EQ(name.text(), "\\a\\\\b\\c\\");
}

TEST(ConvertFileName, EmptyNameIsReturnedAsItIs) {
    Buffer name("");
    EXPECT_EQ(convertFileName(name), name.get());
    EXPECT_EQ(name.text(), "");
}

TEST(ConvertFileName, NullIsReturned) { EXPECT_EQ(convertFileName(nullptr), nullptr); }
