// The text side of paths: nothing here looks at the file system.

#include <orvix/core/files.h>
#include <orvix/core/path.h>

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

using orvix::Path;

TEST(Path, DefaultIsEmpty) { EXPECT_EQ(Path().string(), ""); }

TEST(Path, NullTextIsEmpty) { EXPECT_EQ(Path(static_cast<const char*>(nullptr)).string(), ""); }

TEST(Path, KeepsTheTextThatItWasGiven) {
    EXPECT_EQ(Path("a/b\\C").string(), "a/b\\C");
    EXPECT_EQ(std::string(Path(std::string("a//b/"))), "a//b/");
}

TEST(Path, IsAValue) {
    Path a("x");
    Path b = a;
    a = Path("y");
    EXPECT_EQ(b.string(), "x");
    b = std::move(a);
    EXPECT_EQ(b.string(), "y");
    static_assert(std::is_nothrow_move_constructible_v<Path> && std::is_nothrow_move_assignable_v<Path>);
}

TEST(Path, NativeTurnsEverySlashIntoABackslashAndNothingElse) {
    EXPECT_EQ(Path("C:/a//b\\c/").native(), "C:\\a\\\\b\\c\\");
    EXPECT_EQ(Path("\xc3\xa4/\xff").native(), "\xc3\xa4\\\xff");
}

TEST(Path, FixFilenameSlashesDoesTheSame) {
    EXPECT_EQ(orvix::fixFilenameSlashes("a/b\\c/"), "a\\b\\c\\");
    EXPECT_EQ(orvix::fixFilenameSlashes(""), "");
}

TEST(Path, WideTextHasOneElementForACharacterOfTheBasicPlane) {
    EXPECT_EQ(Path("a\xc3\xa4\xe6\x97\xa5").wstring(), L"a\u00e4\u65e5");
}

struct PathPair {
    const char* path;
    const char* result;
};

TEST(Path, ParentPathCutsTheLastPart) {
    for (const auto& [path, result] : {PathPair{"a\\b\\c", "a\\b"},
                                       {"a/b", "a"},
                                       {"a", ""},
                                       {"", ""},
                                       {"c:\\a", "c:\\"},
                                       {"c:\\", "c:\\"},
                                       {"c:a", "c:"},
                                       {"\\a", "\\"},
                                       {"\\", "\\"},
                                       {"a\\\\b", "a"},
                                       {"a\\b\\", "a\\b"}}) {
        SCOPED_TRACE(path);
        EXPECT_EQ(Path(path).parent_path().string(), result);
    }
}

TEST(Path, AppendPutsOneSeparatorBetween) {
    EXPECT_EQ(Path("a").append("b").string(), "a\\b");
    EXPECT_EQ(Path("a\\").append("b").string(), "a\\b");
    EXPECT_EQ(Path("a/").append("b/c").string(), "a/b/c");
    EXPECT_EQ(Path("c:\\").append("x").string(), "c:\\x");
}

TEST(Path, AppendToAnEmptyPathGivesThePart) { EXPECT_EQ(Path().append("config").string(), "config"); }

TEST(Path, AppendOfARootedPartReplacesThePath) {
    EXPECT_EQ(Path("a").append("\\b").string(), "\\b");
    EXPECT_EQ(Path("a").append("d:b").string(), "d:b");
}

TEST(Path, AppendOfAnEntryStaysBelowThePathWhateverItsName) {
    EXPECT_EQ(Path("a").append(Path::exact("c:x")).string(), "a\\c:x");
}

TEST(Path, AppendToABareDriveStaysOnItsCurrentDirectory) { EXPECT_EQ(Path("c:").append("x").string(), "c:x"); }

TEST(PathCompareFilenames, TwoSpellingsOfOneNameAreEqual) {
    EXPECT_EQ(Path::compare_filenames("C:\\Temp\\A.txt", "c:/temp//a.TXT"), 0);
    EXPECT_EQ(Path::compare_filenames("", ""), 0);
}

TEST(PathCompareFilenames, NetworkNamesDifferFromRootedOnes) {
    EXPECT_NE(Path::compare_filenames("\\\\srv\\x", "\\srv\\x"), 0);
    EXPECT_EQ(Path::compare_filenames("\\\\srv\\x", "//SRV/x"), 0);
}

TEST(PathCompareFilenames, OrdersByFoldedBytes) {
    EXPECT_LT(Path::compare_filenames("a", "B"), 0);
    EXPECT_GT(Path::compare_filenames("b", "A"), 0);
    EXPECT_LT(Path::compare_filenames("a", "a\\b"), 0);
    EXPECT_GT(Path::compare_filenames("\xc3\xa4", "z"), 0);
}

TEST(PathCompareFilenames, OnlyAsciiLettersFold) { EXPECT_NE(Path::compare_filenames("\xc3\x84", "\xc3\xa4"), 0); }
