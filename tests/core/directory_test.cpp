// Directories that are held open, one and in chains.

#include "support/broken_directory.h"
#include "support/descriptors.h"
#include "support/letter_case.h"
#include "support/limits.h"
#include "support/links.h"
#include "support/permissions.h"
#include "support/temporary_directory.h"

#include <orvix/core/directory.h>
#include <orvix/core/directory_chain.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <map>
#include <set>
#include <string>

namespace fs = std::filesystem;
using orvix::Path;
using orvix::core::Directory;
using orvix::core::DirectoryChain;
using orvix::core::File;
using orvix::core::FileKind;
using orvix::test::kept_mode;
using orvix::test::letter_case_counts;
using orvix::test::links_are_seen;
using orvix::test::make_directory_link;
using orvix::test::make_link;
using orvix::test::mode_of;
using orvix::test::open_files;
using orvix::test::open_files_are_limited;
using orvix::test::TemporaryDirectory;
using testing::ElementsAre;

namespace {

constexpr auto scan = Directory::Use::scan;
constexpr auto place = Directory::Use::place;
constexpr auto followed = Directory::Links::followed;
constexpr auto refused = Directory::Links::refused;

class HeldDirectory : public testing::Test {
protected:
    TemporaryDirectory site{TemporaryDirectory::Enter::yes};
};

class Chain : public testing::Test {
protected:
    TemporaryDirectory site{TemporaryDirectory::Enter::yes};

    // Makes "top/d/d/.../d", so many levels in all, and goes down to the bottom.
    static void go_down(DirectoryChain* chain, int levels) {
        fs::path path = "top";
        for (int level = 1; level < levels; ++level) path /= "d";
        fs::create_directories(path);
        ASSERT_TRUE(chain->start(Path("top"), refused));
        while (chain->depth() < static_cast<std::size_t>(levels)) ASSERT_TRUE(chain->enter("d"));
    }
};

std::set<std::string> names_in(Directory& directory) {
    std::set<std::string> names;
    for (Directory::Entry entry; directory.next(&entry);) names.insert(entry.name);
    return names;
}

}  // namespace

TEST_F(HeldDirectory, ScansNamesAndKinds) {
    site.write("dir/file", "x");
    fs::create_directory("dir/sub");
    make_directory_link("sub", "dir/link");
    Directory directory;
    ASSERT_TRUE(directory.open(Path("DIR"), scan, followed));
    std::map<std::string, FileKind> kinds;
    for (Directory::Entry entry; directory.next(&entry);) kinds[entry.name] = entry.kind;
    EXPECT_THAT(kinds, testing::UnorderedElementsAre(
                           testing::Pair(".", FileKind::directory), testing::Pair("..", FileKind::directory),
                           testing::Pair("file", FileKind::regular), testing::Pair("sub", FileKind::directory),
                           testing::Pair("link", FileKind::link)));
    EXPECT_TRUE(directory.is_complete());
}

TEST_F(HeldDirectory, FollowsOrRefusesLinks) {
    fs::create_directory("dir");
    make_directory_link("dir", "link");
    Directory directory;
    EXPECT_TRUE(directory.open(Path("link"), scan, followed));
    EXPECT_FALSE(directory.open(Path("link"), scan, refused));
    EXPECT_FALSE(directory.open(Path("link"), place, refused));
    Directory here;
    ASSERT_TRUE(here.open(Path("."), place, followed));
    EXPECT_TRUE(directory.open(here, "link", scan, followed));
    EXPECT_FALSE(directory.open(here, "link", scan, refused));
}

TEST_F(HeldDirectory, IsNoFile) {
    site.write("file", "x");
    Directory directory;
    EXPECT_FALSE(directory.open(Path("file"), scan, followed));
    EXPECT_EQ(errno, ENOTDIR);
    EXPECT_FALSE(directory.open(Path("missing"), scan, followed));
    EXPECT_EQ(errno, ENOENT);
}

TEST_F(HeldDirectory, MakesAndRemovesEntries) {
    fs::create_directory("dir");
    Directory directory;
    ASSERT_TRUE(directory.open(Path("dir"), place, followed));
    EXPECT_FALSE(directory.open_to_read("b").is_open());
    EXPECT_TRUE(directory.open_to_write("b").is_open());
    EXPECT_TRUE(directory.open_to_read("b").is_open());
    EXPECT_TRUE(directory.remove_file("b"));
    EXPECT_FALSE(directory.remove_file("b"));
    EXPECT_TRUE(directory.make_directory("sub"));
    EXPECT_FALSE(directory.make_directory("sub"));
    EXPECT_FALSE(directory.remove_file("sub"));
    EXPECT_TRUE(directory.remove_directory("sub"));
    EXPECT_TRUE(fs::is_empty("dir"));
}

TEST_F(HeldDirectory, TakesNamesExactly) {
    if (!letter_case_counts) GTEST_SKIP() << "names that differ in letter case alone are one name here";
    site.write("dir/a", "small");
    site.write("dir/A", "LARGE");
    site.write("dir/x\\y", "backslash");
    Directory directory;
    ASSERT_TRUE(directory.open(Path("dir"), place, followed));
    EXPECT_TRUE(directory.open_to_write("b").is_open());
    EXPECT_FALSE(directory.open_to_read("B").is_open());
    EXPECT_TRUE(directory.remove_file("a"));
    EXPECT_FALSE(directory.remove_file("a"));
    EXPECT_EQ(site.read("dir/A"), "LARGE");
    EXPECT_TRUE(directory.open_to_read("x\\y").is_open());
    EXPECT_TRUE(directory.make_directory("sub"));
    EXPECT_TRUE(directory.make_directory("SUB"));
    EXPECT_TRUE(directory.remove_directory("sub"));
    EXPECT_TRUE(fs::exists("dir/SUB"));
}

TEST_F(HeldDirectory, ReadsWhatLinksLeadToAndRemovesThemselves) {
    site.write("dir/file", "12345");
    make_link("file", "dir/link");
    Directory directory;
    ASSERT_TRUE(directory.open(Path("dir"), place, followed));
    orvix::core::FileStatus status;
    ASSERT_EQ(directory.status("link", &status), 0);
    EXPECT_EQ(status.st_size, 5);
    EXPECT_TRUE(directory.change_mode("link", 0600));
    EXPECT_EQ(mode_of("dir/file"), kept_mode(0600));
    EXPECT_EQ(directory.remove_file("link"), links_are_seen());
    errno = ENOENT;
    EXPECT_EQ(directory.status("link", &status), links_are_seen() ? -1 : 0);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_TRUE(fs::exists("dir/file"));
}

TEST_F(HeldDirectory, TellsAFileThatItMadeFromAllOthers) {
    site.write("dir/old", "x");
    fs::create_hard_link("dir/old", "dir/same");
    Directory directory;
    ASSERT_TRUE(directory.open(Path("dir"), place, followed));
    const File old = directory.open_to_write("old");
    const File made = directory.open_to_write("made");
    ASSERT_TRUE(made.is_open());
    EXPECT_TRUE(old.is_same_file(directory.open_to_write("same")));
    EXPECT_FALSE(made.is_same_file(old));
    EXPECT_FALSE(made.is_same_file(directory.open_to_write("made_too")));
    EXPECT_EQ(made.status().st_size, 0);
}

TEST_F(HeldDirectory, WritesThroughALinkThatLeadsNowhere) {
    fs::create_directory("dir");
    make_link("../new", "dir/link");
    Directory directory;
    ASSERT_TRUE(directory.open(Path("dir"), place, followed));
    File file = directory.open_to_write("link");
    EXPECT_EQ(file.write("abc", 3), 3U);
    EXPECT_EQ(site.read("new"), "abc");
}

TEST_F(HeldDirectory, StaysItselfWhenItIsRenamed) {
    site.write("before/x", "1");
    Directory directory;
    ASSERT_TRUE(directory.open(Path("before"), place, followed));
    fs::rename("before", "after");
    EXPECT_TRUE(directory.open_to_write("y").is_open());
    EXPECT_TRUE(fs::exists("after/y"));
}

TEST_F(HeldDirectory, LiesWithinItselfAndAllAbove) {
    fs::create_directories("a/b/c");
    fs::create_directory("ab");
    Directory a;
    Directory c;
    Directory ab;
    ASSERT_TRUE(a.open(Path("a"), place, followed));
    ASSERT_TRUE(c.open(Path("a\\b\\c"), place, followed));
    ASSERT_TRUE(ab.open(Path("ab"), place, followed));
    EXPECT_TRUE(a.lies_within(a));
    EXPECT_TRUE(c.lies_within(a));
    EXPECT_FALSE(a.lies_within(c));
    EXPECT_FALSE(ab.lies_within(a));
    EXPECT_FALSE(a.lies_within(ab));
}

TEST_F(HeldDirectory, GoesOnWithItsScanWhenItIsLetGo) {
    std::set<std::string> expected{".", ".."};
    for (int i = 0; i < 3000; ++i) {
        const std::string name = "entry_with_a_longer_name_" + std::to_string(i);
        site.write("dir/" + name, "");
        expected.insert(name);
    }
    Directory directory;
    ASSERT_TRUE(directory.open(Path("dir"), scan, followed));
    std::set<std::string> names;
    Directory::Entry entry;
    for (int i = 0; i < 10; ++i) {
        ASSERT_TRUE(directory.next(&entry));
        names.insert(entry.name);
    }
    const auto before = open_files();
    directory.let_go();
    EXPECT_FALSE(directory.is_held());
    EXPECT_EQ(open_files(), before - 1);
    directory.let_go();
    names.merge(names_in(directory));
    EXPECT_TRUE(names == expected);
    EXPECT_TRUE(directory.is_complete());

    Directory again;
    ASSERT_TRUE(again.open(Path("dir"), place, followed));
    EXPECT_TRUE(directory.take_hold(std::move(again)));
    EXPECT_TRUE(directory.remove_file("entry_with_a_longer_name_0"));
    EXPECT_FALSE(directory.next(&entry));
}

TEST_F(HeldDirectory, IsNotTakenForAnother) {
    fs::create_directory("one");
    fs::create_directory("two");
    Directory one;
    Directory two;
    ASSERT_TRUE(one.open(Path("one"), scan, followed));
    ASSERT_TRUE(two.open(Path("two"), scan, followed));
    EXPECT_FALSE(one.is_same_directory(two));
    one.let_go();
    EXPECT_FALSE(one.take_hold(std::move(two)));
    EXPECT_EQ(errno, ENOENT);
}

TEST_F(HeldDirectory, TellsWhenTheSystemRefusesToGoOn) {
    fs::create_directory("dir");
    Directory directory;
    ASSERT_TRUE(directory.open(Path("dir"), scan, followed));
    const orvix::test::BrokenDirectory broken("dir");
    Directory::Entry entry;
    EXPECT_FALSE(directory.next(&entry));
    EXPECT_FALSE(directory.is_complete());
}

TEST_F(Chain, GoesDownAndUp) {
    fs::create_directories("top/a/b");
    DirectoryChain chain(scan, refused);
    EXPECT_FALSE(chain.start(Path("missing"), refused));
    EXPECT_EQ(chain.depth(), 0U);
    ASSERT_TRUE(chain.start(Path("top"), refused));
    EXPECT_EQ(chain.current_name(), "");
    ASSERT_TRUE(chain.enter("a"));
    ASSERT_TRUE(chain.enter("b"));
    EXPECT_EQ(chain.depth(), 3U);
    EXPECT_EQ(chain.current_name(), "b");
    EXPECT_FALSE(chain.enter("c"));
    EXPECT_EQ(chain.depth(), 3U);
    EXPECT_TRUE(chain.leave());
    EXPECT_EQ(chain.current_name(), "a");
    EXPECT_TRUE(chain.current().remove_directory("b"));
}

TEST_F(Chain, HoldsFewDirectoriesOpenHoweverDeepItGoes) {
    const auto before = open_files();
    DirectoryChain chain(scan, refused);
    go_down(&chain, 300);
    EXPECT_TRUE(!open_files_are_limited || open_files() < before + 40);
    while (chain.depth() > 1) {
        ASSERT_TRUE(chain.leave());
        ASSERT_THAT(names_in(chain.current()), testing::IsSupersetOf({std::string("d")}));
        ASSERT_TRUE(chain.current().remove_directory("d"));
    }
    EXPECT_TRUE(fs::is_empty("top"));
}

TEST_F(Chain, FindsTheWayBackWhenADirectoryAboveIsRenamed) {
    DirectoryChain chain(place, refused);
    go_down(&chain, 100);
    fs::rename("top/d/d", "top/d/renamed");
    fs::create_directories("top/d/d");
    while (chain.depth() > 3) ASSERT_TRUE(chain.leave());
    EXPECT_TRUE(chain.current().make_directory("here"));
    EXPECT_TRUE(fs::exists("top/d/renamed/here"));
}

TEST_F(Chain, FindsTheWayBackWhenADirectoryBelowIsMovedAway) {
    DirectoryChain chain(place, refused);
    go_down(&chain, 100);
    fs::rename("top/d/d/d", "elsewhere");
    while (chain.depth() > 3) ASSERT_TRUE(chain.leave());
    EXPECT_TRUE(chain.current().make_directory("here"));
    EXPECT_TRUE(fs::exists("top/d/d/here"));
}

TEST_F(Chain, FailsRatherThanGoElsewhere) {
    DirectoryChain chain(place, refused);
    go_down(&chain, 100);
    fs::rename("top/d/d/d", "elsewhere");
    fs::rename("top/d/d", "moved");
    make_directory_link("../../moved", "top/d/d");
    while (chain.depth() > 4) ASSERT_TRUE(chain.leave());
    // What is held open needs no way back.
    EXPECT_EQ(chain.leave(), !open_files_are_limited);
}

TEST_F(Chain, FindsTheWayBackFromALink) {
    fs::path deep = "outside";
    for (int level = 0; level < 60; ++level) deep /= "d";
    fs::create_directories(deep);
    fs::create_directories("top/a");
    make_directory_link("../../outside", "top/a/link");
    DirectoryChain chain(place, followed);
    ASSERT_TRUE(chain.start(Path("top"), followed));
    ASSERT_TRUE(chain.enter("a"));
    ASSERT_TRUE(chain.enter("link"));
    for (int level = 0; level < 60; ++level) ASSERT_TRUE(chain.enter("d"));
    while (chain.depth() > 2) ASSERT_TRUE(chain.leave());
    EXPECT_TRUE(chain.current().make_directory("here"));
    EXPECT_TRUE(fs::exists("top/a/here"));
}

TEST_F(Chain, DoesNotGoRoundInACircle) {
    fs::create_directories("top/a/b");
    make_directory_link("../../a", "top/a/b/back");
    DirectoryChain chain(place, followed);
    ASSERT_TRUE(chain.start(Path("top"), followed));
    ASSERT_TRUE(chain.enter("a"));
    ASSERT_TRUE(chain.enter("b"));
    EXPECT_FALSE(chain.enter("back"));
    EXPECT_EQ(errno, ELOOP);
    EXPECT_EQ(chain.depth(), 3U);
    EXPECT_FALSE(chain.enter("."));
}
