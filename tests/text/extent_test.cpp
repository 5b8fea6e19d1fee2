#include <gtest/gtest.h>
#include <orvix/gsl/string_utilities.h>
#include <support/buffer.h>
#include <support/random_text.h>

#include <string>

using namespace orvix::test;

namespace {

std::string add_extent(const std::string& path, const std::string& ext) {
    char* result = astr_add_extent(path.c_str(), ext.c_str());
    std::string copy = result != nullptr ? result : "(null)";
    astr_free_string(result);
    return copy;
}

std::string remove_extent(const std::string& path) {
    Buffer buffer(path);
    EXPECT_TRUE(astr_remove_extent(buffer));
    return buffer.text();
}

}  // namespace

TEST(AstrAddExtent, ExtensionIsPutAtTheEnd) { EXPECT_EQ(add_extent("a", ".cfg"), "a.cfg"); }

TEST(AstrAddExtent, ExtensionThatIsThereIsNotDoubled) { EXPECT_EQ(add_extent("x.cfg", ".cfg"), "x.cfg"); }

TEST(AstrAddExtent, LetterCaseOfTheExtensionCounts) { EXPECT_EQ(add_extent("x.CFG", ".cfg"), "x.CFG.cfg"); }

TEST(AstrAddExtent, PathAsLongAsTheExtensionNeverHasIt) { EXPECT_EQ(add_extent(".cfg", ".cfg"), ".cfg.cfg"); }

TEST(AstrAddExtent, NoDotIsSupplied) { EXPECT_EQ(add_extent("a", "cfg"), "acfg"); }

TEST(AstrAddExtent, SlashesOfTheResultAreTurned) {
    EXPECT_EQ(add_extent("a/b", "/c"), "a\\b\\c");
    EXPECT_EQ(add_extent("a/b/c", "/c"), "a\\b\\c");
}

TEST(AstrAddExtent, ExtensionIsLookedForBeforeSlashesAreTurned) { EXPECT_EQ(add_extent("a/c", "\\c"), "a\\c\\c"); }

TEST(AstrAddExtent, NullOrEmptyExtensionGivesNull) {
    EXPECT_EQ(astr_add_extent(nullptr, ".cfg"), nullptr);
    EXPECT_EQ(astr_add_extent("a", nullptr), nullptr);
    EXPECT_EQ(astr_add_extent("a", ""), nullptr);
}

TEST(AstrAddExtent, EmptyPathGivesTheExtension) { EXPECT_EQ(add_extent("", ".cfg"), ".cfg"); }

TEST(AstrRemoveExtent, CutsAtTheFirstDotOfTheLeaf) {
    EXPECT_EQ(remove_extent("a.b.c"), "a");
    EXPECT_EQ(remove_extent("dir.d\\a.b.c"), "dir.d\\a");
    EXPECT_EQ(remove_extent("dir.d/a.b.c"), "dir.d/a");
}

TEST(AstrRemoveExtent, NameWithoutDotStays) {
    EXPECT_EQ(remove_extent("dir.d\\a"), "dir.d\\a");
    EXPECT_EQ(remove_extent(""), "");
}

TEST(AstrRemoveExtent, LeadingDotCounts) { EXPECT_EQ(remove_extent("a\\.profile"), "a\\"); }

TEST(AstrReplaceExtent, ReplacesWhatStandsBehindTheLastDot) {
    Buffer path("a.b.c", 20);
    EXPECT_TRUE(astr_replace_extent(path, 19, "d"));
    EXPECT_EQ(path.text(), "a.b.d");
}

TEST(AstrReplaceExtent, WithoutRoomTheOldExtensionIsGoneAllTheSame) {
    Buffer path("a.b.c");
    EXPECT_FALSE(astr_replace_extent(path, 4, "d"));
    EXPECT_EQ(path.text(), "a.b");
}

TEST(AstrReplaceExtent, RoomIsReckonedWithOneByteBesidesNameAndExtension) {
    Buffer path("a.c", 10);
    EXPECT_TRUE(astr_replace_extent(path, 6, ".dat"));
    EXPECT_EQ(path.text(), "a.dat");
    EXPECT_FALSE(astr_replace_extent(path, 5, ".dat"));
    EXPECT_EQ(path.text(), "a");
}

TEST(AstrReplaceExtent, DotIsSuppliedWithinTheSameReckoning) {
    Buffer path("a.c", 6);
    EXPECT_TRUE(astr_replace_extent(path, 5, "dat"));
    EXPECT_EQ(path.text(), "a.dat");
}

TEST(AstrReplaceExtent, NegativeRoomIsNone) {
    Buffer path("a.c");
    EXPECT_FALSE(astr_replace_extent(path, -1, nullptr));
    EXPECT_EQ(path.text(), "a");
}

TEST(AstrReplaceExtent, NullRemovesTheExtension) {
    Buffer path("a.c");
    EXPECT_TRUE(astr_replace_extent(path, 2, nullptr));
    EXPECT_EQ(path.text(), "a");
}

TEST(AstrReplaceExtent, NullNeedsRoomToo) {
    Buffer path("a.c");
    EXPECT_FALSE(astr_replace_extent(path, 1, nullptr));
    EXPECT_EQ(path.text(), "a");
}

TEST(AstrReplaceExtent, EmptyExtensionLeavesADot) {
    Buffer path("a.c");
    EXPECT_TRUE(astr_replace_extent(path, 2, ""));
    EXPECT_EQ(path.text(), "a.");
}

TEST(AstrReplaceExtent, DotOfADirectoryIsNotCut) {
    Buffer path("dir.d/a", 20);
    EXPECT_TRUE(astr_replace_extent(path, 19, "x"));
    EXPECT_EQ(path.text(), "dir.d\\a.x");
}

TEST(AstrReplaceExtent, DotAtTheStartCounts) {
    Buffer path(".profile");
    EXPECT_TRUE(astr_replace_extent(path, 8, "x"));
    EXPECT_EQ(path.text(), ".x");
}

TEST(AstrReplaceExtent, EmptyNameBecomesTheExtension) {
    Buffer path("", 3);
    EXPECT_TRUE(astr_replace_extent(path, 2, "x"));
    EXPECT_EQ(path.text(), ".x");
}

TEST(AstrReplaceExtent, NullNameGivesFalse) { EXPECT_FALSE(astr_replace_extent(nullptr, 9, "x")); }

TEST(AstrExtents, AgreeWithTheModelOnRandomNames) {
    for (unsigned seed = 0; seed < 5000; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        const std::string path = random.text("ab./\\:", 10);
        const std::string ext = random.text(".a/", 3);
        const std::size_t leaf = path.find_last_of("/\\") == std::string::npos ? 0 : path.find_last_of("/\\") + 1;

        const std::size_t first = path.find('.', leaf);
        EXPECT_EQ(remove_extent(path), path.substr(0, first));

        std::string turned = path;
        for (char& c : turned) c = c == '/' ? '\\' : c;
        const std::size_t last = turned.rfind('.');
        std::string expected = last != std::string::npos && last >= leaf ? turned.substr(0, last) : turned;
        const std::size_t room = random.number(14);
        const bool fits = expected.size() + ext.size() + 1 <= room;
        if (fits) expected += ext.starts_with('.') ? ext : '.' + ext;
        Buffer buffer(path, room + 1);
        EXPECT_EQ(astr_replace_extent(buffer, static_cast<int>(room), ext.c_str()), fits);
        EXPECT_EQ(buffer.text(), expected);
    }
}
