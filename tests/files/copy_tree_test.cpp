// Copying files, wildcards and trees.

#include "files/trees.h"
#include "support/broken_directory.h"
#include "support/denial.h"
#include "support/drives.h"
#include "support/limits.h"
#include "support/links.h"
#include "support/permissions.h"
#include "support/small_stack.h"
#include "support/temporary_directory.h"

#include <orvix/gsl/file_trees.h>
#include <orvix/gsl/status.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace fs = std::filesystem;
using orvix::test::Denial;
using orvix::test::drives_are_variables;
using orvix::test::entries_below;
using orvix::test::grow_deep_tree;
using orvix::test::grow_random_tree;
using orvix::test::holds_for_ordinary_user;
using orvix::test::holds_on_small_stack;
using orvix::test::links_are_seen;
using orvix::test::make_directory_link;
using orvix::test::make_link;
using orvix::test::MappedDrive;
using orvix::test::OpenFileLimit;
using orvix::test::RandomText;
using orvix::test::same_trees;
using orvix::test::ScopedVariable;
using orvix::test::set_mode;
using orvix::test::TemporaryDirectory;
using orvix::test::TreeSite;
using orvix::test::UnlistableDirectory;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class CopyTree : public testing::Test {
protected:
    TreeSite place;
    const TemporaryDirectory& site = place.directory();
};
using CopySingle = CopyTree;
using CopyWildcard = CopyTree;

// Names of so many bytes that mean the current directory.
std::string dots(std::size_t bytes) {
    std::string name;
    while (name.size() + 2 <= bytes) name += ".\\";
    return name;
}

}  // namespace

TEST_F(CopySingle, FileToANewName) {
    site.write("from", "x");
    EXPECT_TRUE(gfile_cp("from", "to", false));
    EXPECT_EQ(site.read("to"), "x");
}

TEST_F(CopySingle, FileOverAnExistingOne) {
    site.write("from", "new");
    site.write("to", "before");
    EXPECT_TRUE(gfile_cp("from", "to", true));
    EXPECT_EQ(site.read("to"), "new");
}

TEST_F(CopySingle, FileIntoADirectoryKeepsItsName) {
    site.write("a/f.txt", "x");
    fs::create_directories("b/c");
    EXPECT_TRUE(gfile_cp("a\\f.txt", "b", false));
    EXPECT_EQ(site.read("b/f.txt"), "x");
    EXPECT_TRUE(gfile_cp("a\\f.txt", "b/c/", false));
    EXPECT_EQ(site.read("b/c/f.txt"), "x");
}

TEST_F(CopySingle, FileIntoARoot) {
    const MappedDrive drive('D', site.path());
    fs::current_path(drives_are_variables ? site.path() : "D:\\");
    for (const char* root : {"/", "\\", "d:", "d:/", "d:\\"}) {
        SCOPED_TRACE(root);
        site.write("a/f.txt", root);
        EXPECT_TRUE(gfile_cp("a\\f.txt", root, false));
        EXPECT_EQ(site.read("f.txt"), root);
    }
    fs::current_path(site.path());
}

TEST_F(CopySingle, NameOfAFileWithASlashIsItsWholeName) {
    site.write("a/f.txt", "x");
    fs::create_directories("b/a");
    EXPECT_TRUE(gfile_cp("a/f.txt", "b", false));
    EXPECT_EQ(site.read("b/a/f.txt"), "x");
    fs::remove_all("b/a");
    EXPECT_FALSE(gfile_cp("a/f.txt", "b", false));
}

TEST_F(CopySingle, SeparatorAtTheEndIsIgnored) {
    site.write("from", "x");
    EXPECT_TRUE(gfile_cp("from\\", "to/", false));
    EXPECT_EQ(site.read("to"), "x");
}

TEST_F(CopySingle, MissingSourceFailsAndSetsNoCode) {
    GuiErrno = GUI_ERR_CLOCK_STOP;
    EXPECT_FALSE(gfile_cp("missing", "to", true));
    EXPECT_FALSE(gfile_cp("", "to", true));
    EXPECT_FALSE(gfile_cp(nullptr, "to", true));
    EXPECT_EQ(GuiErrno, GUI_ERR_CLOCK_STOP);
    EXPECT_FALSE(fs::exists("to"));
}

TEST_F(CopySingle, FailureOfTheCopyLeavesItsCode) {
    site.write("from", "x");
    EXPECT_FALSE(gfile_cp("from", "no\\such", false));
    EXPECT_EQ(GuiErrno, GUI_ERR_FILE_OPEN);
    EXPECT_FALSE(gfile_cp("from", nullptr, false));
}

TEST_F(CopySingle, FileOntoItselfFailsAndLosesNothing) {
    site.write("f", "precious");
    EXPECT_FALSE(gfile_cp("f", "f", false));
    EXPECT_FALSE(gfile_cp("f", ".", false));
    EXPECT_EQ(site.read("f"), "precious");
}

TEST_F(CopySingle, NamesOfMoreThan1024BytesFail) {
    site.write("from", "x");
    EXPECT_TRUE(gfile_cp((dots(1020) + "from").c_str(), "a", false));
    EXPECT_FALSE(gfile_cp((dots(1022) + "from").c_str(), "b", false));
    EXPECT_TRUE(gfile_cp("from", (dots(1022) + "cc").c_str(), false));
    EXPECT_FALSE(gfile_cp("from", (dots(1024) + "d").c_str(), false));
    EXPECT_THAT(entries_below("."), ElementsAre("a", "cc", "from"));
}

TEST_F(CopySingle, NameInsideADirectoryOfMoreThan1024BytesFails) {
    site.write("from", "x");
    fs::create_directory("dd");
    EXPECT_FALSE(gfile_cp("from", (dots(1020) + "dd").c_str(), false));
    EXPECT_THAT(entries_below("dd"), IsEmpty());
}

TEST_F(CopyWildcard, CopiesTheFilesThatMatch) {
    site.write("a/x.txt", "1");
    site.write("a/y.txt", "2");
    site.write("a/z.cfg", "3");
    fs::create_directory("b");
    EXPECT_TRUE(gfile_cp("a\\*.txt", "b", false));
    EXPECT_THAT(entries_below("b"), ElementsAre("x.txt", "y.txt"));
    EXPECT_EQ(site.read("b/y.txt"), "2");
}

TEST_F(CopyWildcard, PassesDirectoriesOver) {
    site.write("a/x", "1");
    site.write("a/sub/y", "2");
    fs::create_directory("b");
    EXPECT_TRUE(gfile_cp("a\\*", "b", true));
    EXPECT_THAT(entries_below("b"), ElementsAre("x"));
}

TEST_F(CopyWildcard, ReplacesWhatTheTargetHas) {
    site.write("a/x", "new");
    site.write("b/x", "before");
    EXPECT_TRUE(gfile_cp("a\\?", "b/", false));
    EXPECT_EQ(site.read("b/x"), "new");
}

TEST_F(CopyWildcard, NeedsATargetThatIsADirectory) {
    site.write("a/x", "1");
    site.write("file", "2");
    EXPECT_FALSE(gfile_cp("a\\*", "missing", false));
    EXPECT_FALSE(gfile_cp("a\\*", "file", false));
    EXPECT_FALSE(fs::exists("missing"));
    EXPECT_EQ(site.read("file"), "2");
}

TEST_F(CopyWildcard, NeedsADirectoryNamedWithABackslash) {
    site.write("x.txt", "1");
    site.write("a/x.txt", "1");
    fs::create_directory("b");
    EXPECT_FALSE(gfile_cp("*.txt", "b", false));
    EXPECT_FALSE(gfile_cp("a/*.txt", "b", false));
    EXPECT_FALSE(gfile_cp("\\*.txt", "b", false));
    EXPECT_FALSE(gfile_cp("no\\*.txt", "b", false));
    EXPECT_FALSE(gfile_cp("x.txt\\*", "b", false));
    EXPECT_THAT(entries_below("b"), IsEmpty());
    EXPECT_TRUE(gfile_cp(".\\*.txt", "b", false));
    EXPECT_THAT(entries_below("b"), ElementsAre("x.txt"));
}

TEST_F(CopyWildcard, PatternBeginsBehindTheLastColon) {
    site.write("a/x", "1");
    site.write("a/y", "2");
    fs::create_directory("b");
    EXPECT_TRUE(gfile_cp("a\\c:*", "b", false));
    EXPECT_THAT(entries_below("b"), ElementsAre("x", "y"));
}

TEST_F(CopyWildcard, InADirectoryIsNoWildcard) {
    site.write("a/x", "1");
    fs::create_directory("b");
    EXPECT_FALSE(gfile_cp("?\\x", "b", false));
}

TEST_F(CopyWildcard, ThatMatchesNothingSucceeds) {
    fs::create_directory("a");
    fs::create_directory("b");
    EXPECT_TRUE(gfile_cp("a\\*.txt", "b", false));
}

TEST_F(CopyWildcard, TellsLetterCaseApart) {
    site.write("a/x.TXT", "1");
    site.write("a/y.txt", "2");
    fs::create_directory("b");
    EXPECT_TRUE(gfile_cp("A\\*.txt", "B", false));
    EXPECT_THAT(entries_below("b"), ElementsAre("y.txt"));
}

TEST_F(CopyWildcard, InADirectoryThatCannotBeListedFails) {
    const UnlistableDirectory directory;
    if (!directory.exists()) GTEST_SKIP() << "no such directory here";
    fs::create_directory("b");
    EXPECT_FALSE(gfile_cp(directory.wildcard().c_str(), "b", false));
}

TEST_F(CopyWildcard, StopsAtAFailure) {
    fs::create_directories("a");
    fs::create_directories("b/x");
    site.write("a/x", "1");
    EXPECT_FALSE(gfile_cp("a\\*", "b", false));
    EXPECT_EQ(GuiErrno, GUI_ERR_FILE_OPEN);
}

TEST_F(CopyWildcard, IntoTheSameDirectoryFailsAndLosesNothing) {
    site.write("a/x", "precious");
    EXPECT_FALSE(gfile_cp("a\\*", "a", false));
    EXPECT_EQ(site.read("a/x"), "precious");
}

TEST_F(CopyWildcard, IntoADirectoryBelowIsNoDanger) {
    site.write("a/x", "1");
    fs::create_directory("a/sub");
    EXPECT_TRUE(gfile_cp("a\\*", "a\\sub", false));
    EXPECT_THAT(entries_below("a"), ElementsAre("sub", "sub/x", "x"));
}

TEST_F(CopyTree, NeedsToBeAskedFor) {
    site.write("a/x", "1");
    fs::create_directory("b");
    EXPECT_FALSE(gfile_cp("a", "b", false));
    EXPECT_FALSE(gfile_cp("a", "new", false));
    EXPECT_THAT(entries_below("b"), IsEmpty());
    EXPECT_FALSE(fs::exists("new"));
}

TEST_F(CopyTree, MakesAMissingTarget) {
    site.write("a/x", "1");
    site.write("a/sub/deeper/y", "2");
    fs::create_directory("a/empty");
    EXPECT_TRUE(gfile_cp("a", "b", true));
    EXPECT_TRUE(same_trees("a", "b"));
}

TEST_F(CopyTree, GoesIntoAnExistingTarget) {
    site.write("a/sub/x", "1");
    site.write("b/y", "2");
    EXPECT_TRUE(gfile_cp("a/", "b\\", true));
    EXPECT_THAT(entries_below("b"), ElementsAre("sub", "sub/x", "y"));
}

TEST_F(CopyTree, MakesOneLevelOfTheTargetAlone) {
    site.write("a/x", "1");
    EXPECT_FALSE(gfile_cp("a", "no\\such", true));
    EXPECT_FALSE(fs::exists("no"));
}

TEST_F(CopyTree, OntoAFileFails) {
    site.write("a/x", "1");
    site.write("file", "2");
    EXPECT_FALSE(gfile_cp("a", "file", true));
    EXPECT_EQ(site.read("file"), "2");
}

TEST_F(CopyTree, FailsAtASubdirectoryThatTheTargetHas) {
    site.write("a/sub/x", "1");
    fs::create_directories("b/sub");
    EXPECT_FALSE(gfile_cp("a", "b", true));
    EXPECT_THAT(entries_below("b"), ElementsAre("sub"));
}

TEST_F(CopyTree, StopsAtTheFirstFailureAndLeavesWhatItHasCopied) {
    for (int i = 0; i < 20; ++i) site.write("a/f" + std::to_string(i), "1");
    std::vector<std::string> order;
    for (const auto& entry : fs::directory_iterator("a")) order.push_back(entry.path().filename().string());
    // A directory is in the way of the tenth file.
    fs::create_directories("b/" + order[9]);
    EXPECT_FALSE(gfile_cp("a", "b", true));
    EXPECT_EQ(GuiErrno, GUI_ERR_FILE_OPEN);
    EXPECT_EQ(gerror_get_system_error(), EISDIR);
    EXPECT_EQ(entries_below("b"), std::set<std::string>(order.begin(), order.begin() + 10));
}

TEST_F(CopyTree, WithNamesThatDifferInLetterCaseIsCopiedAsItIs) {
    site.write("t/a", "1");
    site.write("t/A", "2");
    site.write("t/dir/x", "3");
    site.write("t/DIR/x", "4");
    site.write("t/DIR/X", "5");
    EXPECT_TRUE(gfile_cp("t", "copy", true));
    EXPECT_TRUE(same_trees("t", "copy"));
}

TEST_F(CopyTree, FollowsLinks) {
    site.write("outside/x", "1");
    site.write("file", "2");
    fs::create_directory("t");
    make_directory_link("../outside", "t/dir");
    make_link("../file", "t/link");
    EXPECT_TRUE(gfile_cp("t", "copy", true));
    EXPECT_EQ(site.read("copy/dir/x"), "1");
    EXPECT_EQ(site.read("copy/link"), "2");
    site.write("outside/x", "changed");
    site.write("file", "changed");
    EXPECT_EQ(site.read("copy/dir/x"), "1");
    EXPECT_EQ(site.read("copy/link"), "2");
}

TEST_F(CopyTree, TwoLinksToOneDirectoryAreCopiedTwice) {
    site.write("outside/x", "1");
    fs::create_directory("t");
    make_directory_link("../outside", "t/one");
    make_directory_link("../outside", "t/two");
    EXPECT_TRUE(gfile_cp("t", "copy", true));
    EXPECT_THAT(entries_below("copy"), ElementsAre("one", "one/x", "two", "two/x"));
}

TEST_F(CopyTree, LinkThatLeadsNowhereFails) {
    fs::create_directory("t");
    make_link("nowhere", "t/link");
    // Where links are not seen one that leads nowhere is no entry.
    EXPECT_EQ(gfile_cp("t", "copy", true), !links_are_seen());
}

TEST_F(CopyTree, LinkThatLeadsBackFails) {
    fs::create_directories("t/a/b");
    make_directory_link("../..", "t/a/b/back");
    EXPECT_FALSE(gfile_cp("t", "copy", true));
    fs::create_directories("u/a");
    make_directory_link(".", "u/a/self");
    EXPECT_FALSE(gfile_cp("u", "copy2", true));
}

TEST_F(CopyTree, IntoItselfFailsAndMakesNothing) {
    site.write("t/sub/x", "1");
    const auto before = entries_below("t");
    EXPECT_FALSE(gfile_cp("t", "t", true));
    EXPECT_FALSE(gfile_cp("t", "t\\sub", true));
    EXPECT_FALSE(gfile_cp("t", "t\\new", true));
    EXPECT_FALSE(gfile_cp("t", "t\\sub\\new", true));
    EXPECT_FALSE(gfile_cp(".", "t\\sub\\new", true));
    EXPECT_FALSE(gfile_cp("t", (site.name("t") + "\\sub\\new").c_str(), true));
    EXPECT_EQ(entries_below("t"), before);
}

TEST_F(CopyTree, IntoItselfThroughALinkFails) {
    site.write("t/sub/x", "1");
    make_directory_link("t/sub", "link");
    EXPECT_FALSE(gfile_cp("t", "link", true));
    EXPECT_FALSE(gfile_cp("t", "link\\new", true));
    EXPECT_THAT(entries_below("t"), ElementsAre("sub", "sub/x"));
}

TEST_F(CopyTree, LinkInTheSourceThatLeadsToTheTargetFails) {
    fs::create_directories("data/out");
    fs::create_directory("t");
    make_directory_link("../data", "t/link");
    EXPECT_FALSE(gfile_cp("t", "data\\out", true));
    EXPECT_THAT(entries_below("data"), ElementsAre("out", "out/link", "out/link/out"));
    fs::create_directory("u");
    make_directory_link("../v", "u/link");
    EXPECT_FALSE(gfile_cp("u", "v", true));
    EXPECT_THAT(entries_below("v"), ElementsAre("link"));
}

TEST_F(CopyTree, SiblingWithALongerNameIsNotInside) {
    site.write("t/x", "1");
    EXPECT_TRUE(gfile_cp("t", "tt", true));
    EXPECT_TRUE(same_trees("t", "tt"));
}

TEST_F(CopyTree, UnreadableDirectoryFails) {
    site.write("t/secret/x", "1");
    const Denial denial = Denial::of_reading("t/secret");
    set_mode(".", 0777);
    EXPECT_TRUE(holds_for_ordinary_user([] { return !gfile_cp("t", "copy", true); }));
}

TEST_F(CopyTree, UnreadableFileFailsWithItsCode) {
    site.write("t/secret", "1");
    const Denial denial = Denial::of_reading("t/secret");
    set_mode(".", 0777);
    EXPECT_TRUE(holds_for_ordinary_user([] { return !gfile_cp("t", "copy", true) && GuiErrno == GUI_ERR_FILE_OPEN; }));
}

TEST_F(CopyTree, IntoADirectoryThatMayOnlyBeWritten) {
    site.write("t/sub/x", "1");
    fs::create_directory("drop");
    set_mode("drop", 0333);
    EXPECT_TRUE(holds_for_ordinary_user([] { return gfile_cp("t", "drop", true); }));
    set_mode("drop", 0755);
    EXPECT_TRUE(same_trees("t", "drop"));
}

TEST_F(CopyTree, OfDepth200) {
    grow_deep_tree("t", 200);
    EXPECT_TRUE(gfile_cp("t", "copy", true));
    EXPECT_TRUE(same_trees("t", "copy"));
}

TEST_F(CopyTree, AsDeepAsNamesMayBeWithFewOpenFiles) {
    // "t" and 511 times "\d" make 1023 bytes, and there is no room for a file below that.
    grow_deep_tree("t", 510);
    for (fs::path path = "t/d"; path.string().size() < 1000; path /= "d/d/d") site.write(path.string() + "/e/f", "");
    bool copied = false;
    {
        const OpenFileLimit limit(100);
        copied = gfile_cp("t", "u", true);
    }
    EXPECT_TRUE(copied);
    EXPECT_TRUE(entries_below("t") == entries_below("u"));
}

TEST_F(CopyTree, DeepTreeNeedsNoDeepStack) {
    grow_deep_tree("t", 500);
    EXPECT_TRUE(holds_on_small_stack([] { return gfile_cp("t", "copy", true); }));
    EXPECT_TRUE(same_trees("t", "copy"));
}

TEST_F(CopyTree, FindsTheWayBackFromADeepTreeBehindALink) {
    grow_deep_tree("outside", 60);
    fs::create_directories("t/a");
    make_directory_link("../../outside", "t/a/link");
    for (const char* name : {"t/a/b", "t/a/y", "t/z", "t/B"}) site.write(name, "x");
    EXPECT_TRUE(gfile_cp("t", "copy", true));
    EXPECT_TRUE(same_trees("t", "copy"));
}

TEST_F(CopyTree, DeeperThanNamesMayBeFails) {
    grow_deep_tree("t", 512);
    EXPECT_FALSE(gfile_cp("t", "u", true));
    grow_deep_tree("s", 505);
    EXPECT_TRUE(gfile_cp("s", "v", true));
    EXPECT_FALSE(gfile_cp("s", "a_target_with_a_longer_name", true));
    grow_deep_tree("a_source_with_a_longer_name", 505);
    EXPECT_FALSE(gfile_cp("a_source_with_a_longer_name", "w", true));
}

TEST_F(CopyTree, OfTenThousandFiles) {
    for (int i = 0; i < 10000; ++i) site.write("t/" + std::to_string(i % 100) + "/" + std::to_string(i), "x");
    EXPECT_TRUE(gfile_cp("t", "copy", true));
    EXPECT_TRUE(same_trees("t", "copy"));
}

TEST_F(CopyTree, OfRandomNamesIsTheSameToTheSystem) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        const std::string source = "source" + std::to_string(seed);
        const std::string target = "target" + std::to_string(seed);
        grow_random_tree(source, random, 40);
        ASSERT_TRUE(gfile_cp(source.c_str(), target.c_str(), true));
        ASSERT_TRUE(same_trees(source, target));
    }
}
