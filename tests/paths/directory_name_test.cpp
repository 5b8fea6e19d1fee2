#include "paths/models.h"

#include <gtest/gtest.h>
#include <orvix/gsl/file_names.h>
#include <support/buffer.h>
#include <support/random_text.h>

#include <string>

using namespace orvix::test;

namespace {

std::string prepared(const std::string& name) {
    Buffer buffer(name, name.size() + 2);
    EXPECT_TRUE(gfile_prepare_dir_name(buffer));
    return buffer.text();
}

std::string stripped(const std::string& name) {
    Buffer buffer(name);
    EXPECT_TRUE(gfile_strip_dir_name(buffer));
    return buffer.text();
}

}  // namespace

TEST(GfilePrepareDirName, AddsABackslash) {
    EXPECT_EQ(prepared("a"), "a\\");
    EXPECT_EQ(prepared("c:"), "c:\\");
}

TEST(GfilePrepareDirName, TurnsOnlyTheLastSlash) {
    EXPECT_EQ(prepared("a/b"), "a/b\\");
    EXPECT_EQ(prepared("a/b/"), "a/b\\");
}

TEST(GfilePrepareDirName, NameThatEndsInABackslashStays) { EXPECT_EQ(prepared("a\\"), "a\\"); }

TEST(GfilePrepareDirName, EmptyNameStaysEmpty) { EXPECT_EQ(prepared(""), ""); }

TEST(GfileStripDirName, CutsOneSeparator) {
    EXPECT_EQ(stripped("a\\"), "a");
    EXPECT_EQ(stripped("a/b/"), "a/b");
    EXPECT_EQ(stripped("a\\\\"), "a\\");
}

TEST(GfileStripDirName, DriveRootStays) {
    EXPECT_EQ(stripped("c:\\"), "c:\\");
    EXPECT_EQ(stripped("c:/"), "c:\\");
}

TEST(GfileStripDirName, NameOfOneByteStays) {
    EXPECT_EQ(stripped("\\"), "\\");
    EXPECT_EQ(stripped("/"), "/");
    EXPECT_EQ(stripped(""), "");
}

TEST(GfileStripDirName, NameWithoutTrailingSeparatorStays) { EXPECT_EQ(stripped("a/b"), "a/b"); }

TEST(GfileStripDirName, NullIsHarmless) { EXPECT_TRUE(gfile_strip_dir_name(nullptr)); }

TEST(GfileStripDirNameKstring, CutsOneSeparatorOfEitherKind) {
    EXPECT_EQ(gfile_strip_dir_name_kstring("ab/"), "ab");
    EXPECT_EQ(gfile_strip_dir_name_kstring("ab\\"), "ab");
    EXPECT_EQ(gfile_strip_dir_name_kstring("a\\\\"), "a\\");
}

TEST(GfileStripDirNameKstring, NothingIsConverted) { EXPECT_EQ(gfile_strip_dir_name_kstring("a/b/"), "a/b"); }

TEST(GfileStripDirNameKstring, ThreeBytesWithAColonInTheMiddleStay) {
    EXPECT_EQ(gfile_strip_dir_name_kstring("c:/"), "c:/");
    EXPECT_EQ(gfile_strip_dir_name_kstring("c:\\"), "c:\\");
    EXPECT_EQ(gfile_strip_dir_name_kstring("c:x"), "c:x");
}

TEST(GfileStripDirNameKstring, NameOfOneByteStays) {
    EXPECT_EQ(gfile_strip_dir_name_kstring("/"), "/");
    EXPECT_EQ(gfile_strip_dir_name_kstring(""), "");
}

TEST(GfileStripDirNameAndConvertKstring, BringsTheSeparatorsToTheSystemsForm) {
    EXPECT_EQ(gfile_strip_dir_name_and_convert_kstring("a/b/"), "a\\b");
    EXPECT_EQ(gfile_strip_dir_name_and_convert_kstring("c:/"), "c:\\");
    EXPECT_EQ(gfile_strip_dir_name_and_convert_kstring("/"), "\\");
}

TEST(DirectoryNames, AgreeWithTheModelOnRandomNames) {
    for (unsigned seed = 0; seed < 3000; ++seed) {
        SCOPED_TRACE(seed);
        const std::string name = RandomText(seed).text("a:/\\", 5);
        EXPECT_EQ(stripped(name), model::stripped_directory(name));
        if (name.empty()) continue;
        const std::string ended = name.ends_with('/') ? name.substr(0, name.size() - 1) : name;
        EXPECT_EQ(prepared(name), name.ends_with('\\') ? name : ended + '\\');
    }
}
