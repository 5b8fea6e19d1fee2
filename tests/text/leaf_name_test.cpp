#include <gtest/gtest.h>
#include <orvix/gsl/string_utilities.h>
#include <support/buffer.h>

#include <string>

using namespace orvix::test;

namespace {

std::string path_name(char* path) {
    char* result = astr_get_path_name(path);
    std::string copy = result;
    astr_free_string(result);
    return copy;
}

}  // namespace

TEST(AstrGetLeafName, StandsBehindTheLastSeparatorOfEitherKind) {
    EXPECT_STREQ(astr_get_leaf_name("a\\b/c"), "c");
    EXPECT_STREQ(astr_get_leaf_name("a/b\\c"), "c");
}

TEST(AstrGetLeafName, IsEmptyBehindATrailingSeparator) {
    Buffer path("a/b\\");
    EXPECT_EQ(astr_get_leaf_name(path.get()), path.get() + 4);
}

TEST(AstrGetLeafName, IsThePathItselfWithoutSeparator) {
    const char* path = "c:abc";
    EXPECT_EQ(astr_get_leaf_name(path), path);
}

TEST(AstrGetLeafName, NullGivesNull) {
    EXPECT_EQ(astr_get_leaf_name(static_cast<char*>(nullptr)), nullptr);
    EXPECT_EQ(astr_get_leaf_name(static_cast<const char*>(nullptr)), nullptr);
}

TEST(AstrGetPathName, GivesTheDirectoryAndTurnsTheSlashesOfTheArgument) {
    Buffer path("a/b/c");
    EXPECT_EQ(path_name(path), "a\\b");
    EXPECT_EQ(path.text(), "a\\b\\c");
}

TEST(AstrGetPathName, NameWithoutDirectoryGivesTheCurrentOne) {
    EXPECT_EQ(path_name(Buffer("c")), ".\\");
    EXPECT_EQ(path_name(Buffer("")), ".\\");
}

TEST(AstrGetPathName, RootAloneGivesTheCurrentDirectory) {
    EXPECT_EQ(path_name(Buffer("\\c")), ".\\");
    EXPECT_EQ(path_name(Buffer("/c")), ".\\");
}

TEST(AstrGetPathName, DriveRootLosesItsSeparator) { EXPECT_EQ(path_name(Buffer("c:\\x")), "c:"); }

TEST(AstrGetPathName, OnlyTheLastSeparatorIsCut) {
    EXPECT_EQ(path_name(Buffer("a\\\\b")), "a\\");
    EXPECT_EQ(path_name(Buffer("a\\b\\")), "a\\b");
}

TEST(AstrGetPathName, NullGivesNull) { EXPECT_EQ(astr_get_path_name(nullptr), nullptr); }
