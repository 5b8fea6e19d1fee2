#include "paths/canonical_models.h"
#include "paths/current_directory.h"

#include <gtest/gtest.h>
#include <orvix/gsl/canonical_names.h>
#include <support/random_text.h>
#include <support/temporary_directory.h>

#include <string>

using namespace orvix::test;

namespace {

bool same(const char* a, const char* b) { return HX_paths_are_same(a, b, false); }
bool lies_in(const char* a, const char* b) { return HX_paths_are_same(a, b, true); }

}  // namespace

TEST(HxPathsAreSame, SpellingMakesNoDifference) {
    EXPECT_TRUE(same("C:\\A//b/", "c:/a/./B"));
    EXPECT_TRUE(same("./x", "X"));
    EXPECT_FALSE(same("c:/a", "c:/b"));
    EXPECT_FALSE(same("c:/a", "c:/ab"));
}

TEST(HxPathsAreSame, RelativeNameEqualsItsAbsoluteOne) {
    const TemporaryDirectory directory(TemporaryDirectory::Enter::yes);
    EXPECT_TRUE(same("File", directory.name("file").c_str()));
}

TEST(HxPathsAreSame, ParentIsNotResolved) { EXPECT_FALSE(same("a/../b", "b")); }

TEST(HxPathsAreSame, NameWithoutCanonicalTextIsTheSameAsNothing) {
    for (const char* none : {static_cast<const char*>(nullptr), "", "./"}) {
        EXPECT_FALSE(same(none, none));
        EXPECT_FALSE(same(none, "x"));
        EXPECT_FALSE(same("x", none));
        EXPECT_FALSE(lies_in(none, "x"));
    }
}

TEST(HxPathsAreSame, RootsAreTheSame) { EXPECT_TRUE(same("/", "\\")); }

TEST(HxPathsAreSame, FileLiesInItsDirectory) { EXPECT_TRUE(lies_in("d\\f", "d")); }

TEST(HxPathsAreSame, DirectoryDoesNotLieInItsFile) { EXPECT_FALSE(lies_in("d", "d\\f")); }

TEST(HxPathsAreSame, FileDoesNotLieTwoLevelsUp) { EXPECT_FALSE(lies_in("d/e/f", "d")); }

TEST(HxPathsAreSame, NameWithNothingButARootBeforeItIsNotCut) {
    EXPECT_TRUE(lies_in("\\x", "\\x"));
    EXPECT_FALSE(lies_in("\\x", "/"));
    EXPECT_TRUE(lies_in("c:x", "c:x"));
}

TEST(HxPathsAreSame, FileInTheRootOfADriveLiesInTheDrive) { EXPECT_TRUE(lies_in("c:\\f", "c:\\")); }

TEST(HxPathsAreSame, ServerIsNotCut) {
    EXPECT_TRUE(lies_in("\\\\srv", "\\\\srv"));
    EXPECT_TRUE(lies_in("\\\\srv\\x", "\\\\srv"));
    EXPECT_TRUE(lies_in("\\\\a\\x", "\\\\a"));
}

TEST(HxPathsAreSame, SeparatorsInFrontOfAServerDoNotCut) {
    EXPECT_TRUE(lies_in("\\\\x", "\\\\x"));
    EXPECT_FALSE(lies_in("\\\\x", "\\"));
    EXPECT_TRUE(lies_in("\\\\", "\\\\"));
}

TEST(HxPathsAreSame, NamesOfAnyLengthAreCompared) {
    const std::string name = "c:\\" + std::string(30000, 'a');
    EXPECT_TRUE(same(name.c_str(), name.c_str()));
    EXPECT_FALSE(same(name.c_str(), (name + 'b').c_str()));
}

TEST(HxPathsAreSame, AgreesWithTheModelOnRandomNames) {
    for (unsigned seed = 0; seed < 5000; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        const std::string a = random.text("cC:./\\", 6);
        const std::string b = random.text("cC:./\\", 4);
        EXPECT_EQ(same(a.c_str(), b.c_str()), model::same(a, b, false, here()));
        EXPECT_EQ(lies_in(a.c_str(), b.c_str()), model::same(a, b, true, here()));
    }
}

TEST(GdirComparePaths, CaseSeparatorsAndOneTrailingSeparatorMakeNoDifference) {
    EXPECT_TRUE(gdir_compare_paths("a/", "A"));
    EXPECT_TRUE(gdir_compare_paths("c:/A/", "C:\\a"));
    EXPECT_TRUE(gdir_compare_paths("", ""));
}

TEST(GdirComparePaths, SecondTrailingSeparatorMakesADifference) { EXPECT_FALSE(gdir_compare_paths("a//", "a")); }

TEST(GdirComparePaths, RootKeepsItsSeparator) {
    EXPECT_TRUE(gdir_compare_paths("c:/", "C:\\"));
    EXPECT_FALSE(gdir_compare_paths("c:\\", "c:"));
    EXPECT_FALSE(gdir_compare_paths("/", ""));
}

TEST(GdirComparePaths, NothingIsResolved) {
    const TemporaryDirectory directory(TemporaryDirectory::Enter::yes);
    EXPECT_FALSE(gdir_compare_paths("a\\..\\b", "b"));
    EXPECT_FALSE(gdir_compare_paths("a", directory.name("a").c_str()));
}

TEST(GdirComparePaths, OneNameAtTheFrontOfTheOtherIsAnother) {
    EXPECT_FALSE(gdir_compare_paths("ab", "a"));
    EXPECT_FALSE(gdir_compare_paths("a", "ab"));
}

TEST(GdirComparePaths, NullIsTheSameAsNothing) {
    EXPECT_FALSE(gdir_compare_paths(nullptr, ""));
    EXPECT_FALSE(gdir_compare_paths("", nullptr));
    EXPECT_FALSE(gdir_compare_paths(nullptr, nullptr));
}

TEST(GdirComparePaths, BytesBeyondAsciiHaveNoCase) { EXPECT_FALSE(gdir_compare_paths("\xe4", "\xc4")); }

TEST(GdirComparePaths, AgreesWithTheModelOnRandomNames) {
    for (unsigned seed = 0; seed < 3000; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        const std::string a = random.text("cC:/\\", 4);
        const std::string b = random.text("cC:/\\", 4);
        EXPECT_EQ(gdir_compare_paths(a.c_str(), b.c_str()), model::compared(a) == model::compared(b));
    }
}
