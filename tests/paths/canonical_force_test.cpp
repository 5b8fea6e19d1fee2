#include "paths/current_directory.h"
#include "support/host.h"

#include <gtest/gtest.h>
#include <orvix/gsl/canonical_names.h>
#include <support/buffer.h>
#include <support/temporary_directory.h>
#include "support/links.h"

#include <filesystem>
#include <optional>
#include <string>

namespace fs = std::filesystem;
using namespace orvix::test;

namespace {

std::optional<std::string> forced(const std::string& name) {
    Buffer out = room_for(8192);
    char* const result = HX_canonical_path_force(name.c_str(), out);
    if (result == nullptr) return std::nullopt;
    EXPECT_EQ(result, out.get());
    return out.text();
}

class HxCanonicalPathForce : public testing::Test {
protected:
    const TemporaryDirectory directory_{TemporaryDirectory::Enter::yes};
};

}  // namespace

TEST_F(HxCanonicalPathForce, DirectoryBehindALinkHasItsOwnName) {
    fs::create_directory("Real");
    make_directory_link("Real", "link");
    const std::string own = here() + (orvix::test::entered_links_are_resolved ? "\\real" : "\\link");
    EXPECT_EQ(forced("link/File"), own + "\\file");
    EXPECT_EQ(HX_canonical_path_force_new("link/File"), own + "\\file");
}

TEST_F(HxCanonicalPathForce, ParentInTheDirectoryIsResolved) {
    fs::create_directory("a");
    EXPECT_EQ(forced("a/../x"), here() + "\\x");
    EXPECT_EQ(HX_canonical_path_force_new("a/../x"), here() + "\\x");
}

TEST_F(HxCanonicalPathForce, LastPartIsNotLookedUp) {
    fs::create_directory("a");
    make_directory_link("a", "link");
    EXPECT_EQ(forced("a/link"), here() + "\\a\\link");
    EXPECT_EQ(forced("link"), here() + "\\link");
    EXPECT_EQ(forced("a/.."), here() + "\\a\\..");
    EXPECT_EQ(forced("Missing"), here() + "\\missing");
}

TEST_F(HxCanonicalPathForce, NameInAMissingDirectoryStillHasACanonicalText) {
    EXPECT_EQ(forced("C:/No Such/Directory/File"), "c:\\no such\\directory\\file");
    EXPECT_EQ(forced("none/File"), here() + "\\none\\file");
    EXPECT_EQ(HX_canonical_path_force_new("C:/No Such/Directory/File"), "c:\\no such\\directory\\file");
}

TEST_F(HxCanonicalPathForce, PrefixesOfADotAreSkipped) {
    EXPECT_EQ(forced("./.\\x"), here() + "\\x");
    EXPECT_EQ(HX_canonical_path_force_new("./.\\x"), here() + "\\x");
}

TEST_F(HxCanonicalPathForce, NameOfNothingGivesNullAndWritesNothing) {
    Buffer out("before");
    for (const char* name : {"", "./", ".\\./"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(HX_canonical_path_force(name, out), nullptr);
        EXPECT_EQ(HX_canonical_path_force_new(name), "");
    }
    EXPECT_EQ(HX_canonical_path_force(nullptr, out), nullptr);
    EXPECT_EQ(out.text(), "before");
}

TEST_F(HxCanonicalPathForce, TrailingSeparatorLeavesAnEmptyLastPart) {
    fs::create_directory("a");
    EXPECT_EQ(forced("a/"), here() + "\\a");
    EXPECT_EQ(HX_canonical_path_force_new("a/"), here() + "\\a\\");
}

TEST_F(HxCanonicalPathForce, FileInTheRootWithoutDriveStaysThere) {
    EXPECT_EQ(forced("\\File"), "\\file");
    EXPECT_EQ(HX_canonical_path_force_new("\\File"), "\\file");
}

TEST_F(HxCanonicalPathForce, FileInTheRootOfADriveIsTakenFromTheDrivesCurrentDirectory) {
    EXPECT_EQ(forced("c:\\File"), here() + "\\file");
}

TEST_F(HxCanonicalPathForce, AbsoluteNameWithoutSeparatorIsRefusedAsText) { EXPECT_EQ(forced("c:x"), std::nullopt); }

TEST_F(HxCanonicalPathForce, AbsoluteNameWithoutSeparatorHasTheEmptyDirectoryAsValue) {
    EXPECT_EQ(HX_canonical_path_force_new("c:x"), "\\c:x");
}

TEST_F(HxCanonicalPathForce, NamesLongerThanTheSystemTakesAreSpelledAsText) {
    const std::string part(3000, 'A');
    EXPECT_EQ(forced("C:\\" + part + "\\B"), "c:\\" + std::string(3000, 'a') + "\\b");
    EXPECT_EQ(HX_canonical_path_force_new("C:\\" + part + "\\B"), "c:\\" + std::string(3000, 'a') + "\\b");
}

TEST_F(HxCanonicalPathForce, CurrentDirectoryStaysWhatItIs) {
    fs::create_directory("a");
    const fs::path before = fs::current_path();
    forced("a/x");
    HX_canonical_path_force_new("a/x");
    EXPECT_EQ(fs::current_path(), before);
}
