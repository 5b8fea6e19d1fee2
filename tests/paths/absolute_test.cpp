#include <gtest/gtest.h>
#include <orvix/gsl/file_names.h>
#include <support/temporary_directory.h>

#include <cstdlib>
#include <string>

using namespace orvix::test;

namespace {

std::string absolute(const std::string& name) {
    char* full = gfile_abs_path(name.c_str());
    std::string copy = full;
    std::free(full);
    return copy;
}

}  // namespace

TEST(GfileHasfullpath, NullAndTheEmptyNameAreNot) {
    EXPECT_FALSE(gfile_hasfullpath(nullptr));
    EXPECT_FALSE(gfile_hasfullpath(""));
}

TEST(AbsoluteNames, BeginWithASeparatorOrALetterAndAColon) {
    for (const char* name : {"/", "\\", "/a", "\\a", "\\\\host", "c:", "c:\\x", "Z:/x", "a:", "z:", "A:"}) {
        SCOPED_TRACE(name);
        EXPECT_TRUE(gfile_hasfullpath(name));
        EXPECT_TRUE(HX_path_is_absolute(name));
    }
}

TEST(AbsoluteNames, NameRelativeToADriveCounts) {
    EXPECT_TRUE(gfile_hasfullpath("c:x"));
    EXPECT_TRUE(HX_path_is_absolute("c:x"));
}

TEST(AbsoluteNames, EverythingElseIsRelative) {
    for (const char* name :
         {"", "a", "a/b", "a\\b", "cc:x", "1:x", "@:x", "[:x", "`:x", "{:x", "\xe4:x", ":", ":x", "."}) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(gfile_hasfullpath(name));
        EXPECT_FALSE(HX_path_is_absolute(name));
    }
}

TEST(GfileAbsPath, RelativeNameIsCompletedFromTheCurrentDirectory) {
    TemporaryDirectory site(TemporaryDirectory::Enter::yes);
    EXPECT_EQ(absolute("sub/a.txt"), site.name() + "\\sub\\a.txt");
}

TEST(GfileAbsPath, AbsoluteNameComesBackInTheSystemsForm) { EXPECT_EQ(absolute("C:/srv/x.txt"), "C:\\srv\\x.txt"); }
