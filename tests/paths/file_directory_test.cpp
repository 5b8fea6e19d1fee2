#include "paths/current_directory.h"

#include <gtest/gtest.h>
#include <orvix/gsl/canonical_names.h>
#include <support/buffer.h>
#include <support/random_text.h>
#include <support/temporary_directory.h>

#include <string>

using namespace orvix::test;

namespace {

std::string directory_of(const char* name) {
    Buffer out("before", 8192);
    EXPECT_EQ(HX_get_directory_from_file(name, out), out.get());
    return out.text();
}

class HxGetDirectoryFromFile : public testing::Test {
protected:
    const TemporaryDirectory directory_{TemporaryDirectory::Enter::yes};
};

}  // namespace

TEST_F(HxGetDirectoryFromFile, FileWithoutDirectoryCanonicalisesADot) {
    EXPECT_EQ(directory_of("file"), here() + "\\.");
    EXPECT_EQ(HX_get_directory_from_file_new("file"), here() + "\\.");
    EXPECT_EQ(directory_of("c:file"), here() + "\\.");
}

TEST_F(HxGetDirectoryFromFile, EmptyNameAndNullCanonicaliseADot) {
    EXPECT_EQ(directory_of(""), here() + "\\.");
    EXPECT_EQ(directory_of(nullptr), here() + "\\.");
    EXPECT_EQ(HX_get_directory_from_file_new(""), here() + "\\.");
}

TEST_F(HxGetDirectoryFromFile, CutsAtTheLastSeparatorOfEitherKind) {
    EXPECT_EQ(directory_of("A/B\\c"), here() + "\\a\\b");
    EXPECT_EQ(directory_of("A\\B/c"), here() + "\\a\\b");
    EXPECT_EQ(directory_of("C:\\A\\b"), "c:\\a");
    EXPECT_EQ(HX_get_directory_from_file_new("A/B\\c"), here() + "\\a\\b");
}

TEST_F(HxGetDirectoryFromFile, FileInTheRootLeavesTheBufferAsItWas) {
    EXPECT_EQ(directory_of("\\file"), "before");
    EXPECT_EQ(directory_of("/file"), "before");
    EXPECT_EQ(HX_get_directory_from_file_new("\\file"), "");
}

TEST_F(HxGetDirectoryFromFile, FileInTheRootOfADriveIsInTheBareDrive) {
    EXPECT_EQ(directory_of("C:\\file"), "c:");
    EXPECT_EQ(HX_get_directory_from_file_new("C:\\file"), "c:");
}

TEST_F(HxGetDirectoryFromFile, DirectoryThatIsAllPrefixLeavesTheBufferAsItWas) {
    EXPECT_EQ(directory_of("././file"), here() + "\\.");
    EXPECT_EQ(directory_of(".//file"), "before");
    EXPECT_EQ(HX_get_directory_from_file_new(".//file"), "");
}

TEST_F(HxGetDirectoryFromFile, ValueFormKeepsATrailingSeparator) {
    EXPECT_EQ(HX_get_directory_from_file_new("a//file"), here() + "\\a\\");
    EXPECT_EQ(directory_of("a//file"), here() + "\\a");
}

TEST_F(HxGetDirectoryFromFile, NamesOfAnyLengthAreHandled) {
    const std::string part(3000, 'A');
    EXPECT_EQ(directory_of(("C:\\" + part + "\\b").c_str()), "c:\\" + std::string(3000, 'a'));
}
