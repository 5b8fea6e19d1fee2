// Removing files, wildcards and trees.

#include "files/trees.h"
#include "support/broken_directory.h"
#include "support/denial.h"
#include "support/letter_case.h"
#include "support/limits.h"
#include "support/links.h"
#include "support/permissions.h"
#include "support/small_stack.h"
#include "support/temporary_directory.h"

#include <orvix/gsl/file_trees.h>
#include <orvix/gsl/status.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>

namespace fs = std::filesystem;
using orvix::test::Denial;
using orvix::test::entries_below;
using orvix::test::grow_deep_tree;
using orvix::test::grow_random_tree;
using orvix::test::holds_for_ordinary_user;
using orvix::test::holds_on_small_stack;
using orvix::test::is_entry;
using orvix::test::links_are_seen;
using orvix::test::make_directory_link;
using orvix::test::make_link;
using orvix::test::OpenFileLimit;
using orvix::test::RandomText;
using orvix::test::set_mode;
using orvix::test::TemporaryDirectory;
using orvix::test::TreeSite;
using orvix::test::UnlistableDirectory;
using orvix::test::write_beside;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class RemoveTree : public testing::Test {
protected:
    TreeSite place;
    const TemporaryDirectory& site = place.directory();
};
using RemoveSingle = RemoveTree;
using RemoveWildcard = RemoveTree;

}  // namespace

TEST_F(RemoveSingle, File) {
    site.write("a/x", "1");
    EXPECT_TRUE(gfile_rm("a\\x", false));
    EXPECT_TRUE(fs::is_empty("a"));
    site.write("a/y", "1");
    EXPECT_TRUE(gfile_rm("a/y", true));
    EXPECT_TRUE(fs::is_empty("a"));
}

TEST_F(RemoveSingle, FileIsFoundIgnoringLetterCase) {
    site.write("Layout.CFG", "1");
    EXPECT_TRUE(gfile_rm("layout.cfg", false));
    EXPECT_FALSE(fs::exists("Layout.CFG"));
}

TEST_F(RemoveSingle, MissingNameFailsAndSetsNoCode) {
    GuiErrno = GUI_ERR_CLOCK_STOP;
    EXPECT_FALSE(gfile_rm("missing", true));
    EXPECT_FALSE(gfile_rm("", true));
    EXPECT_FALSE(gfile_rm(nullptr, true));
    EXPECT_EQ(GuiErrno, GUI_ERR_CLOCK_STOP);
}

TEST_F(RemoveSingle, LinkGoesAndWhatItLeadsToStays) {
    site.write("dir/x", "1");
    for (const char* name : {"link", "link\\", "link/", "link\\\\", "link///"}) {
        for (const bool recursive : {false, true}) {
            SCOPED_TRACE(name);
            if (!fs::exists("link")) make_directory_link("dir", "link");
            EXPECT_EQ(gfile_rm(name, recursive), links_are_seen());
            EXPECT_EQ(fs::exists("link"), !links_are_seen());
            EXPECT_EQ(site.read("dir/x"), "1");
        }
    }
}

TEST_F(RemoveSingle, LinkThatLeadsNowhereGoes) {
    make_link("nowhere", "link");
    // Where links are not seen one that leads nowhere is no name.
    EXPECT_EQ(gfile_rm("link", false), links_are_seen());
    EXPECT_FALSE(is_entry("link"));
}

TEST_F(RemoveSingle, NameOfMoreThan1024BytesFails) {
    std::string name;
    while (name.size() < 1024) name += ".\\";
    site.write("x", "1");
    EXPECT_FALSE(gfile_rm((name + "x").c_str(), true));
    EXPECT_TRUE(gfile_rm((name.substr(2) + "x").c_str(), true));
}

TEST_F(RemoveWildcard, RemovesTheFilesThatMatch) {
    site.write("a/x.txt", "1");
    site.write("a/y.txt", "2");
    site.write("a/z.cfg", "3");
    EXPECT_TRUE(gfile_rm("a\\*.txt", false));
    EXPECT_THAT(entries_below("a"), ElementsAre("z.cfg"));
}

TEST_F(RemoveWildcard, LeavesMatchingSubdirectories) {
    site.write("a/x", "1");
    site.write("a/sub/y", "2");
    fs::create_directory("a/empty");
    EXPECT_TRUE(gfile_rm("a\\*", true));
    EXPECT_THAT(entries_below("a"), ElementsAre("empty", "sub", "sub/y"));
}

TEST_F(RemoveWildcard, ThatMatchesNothingSucceeds) {
    site.write("a/x", "1");
    EXPECT_TRUE(gfile_rm("a\\*.txt", false));
    EXPECT_THAT(entries_below("a"), ElementsAre("x"));
    fs::create_directory("empty");
    EXPECT_TRUE(gfile_rm("empty\\*", false));
}

TEST_F(RemoveWildcard, NeedsADirectoryNamedWithABackslash) {
    site.write("x.txt", "1");
    site.write("a/x.txt", "1");
    EXPECT_FALSE(gfile_rm("*.txt", false));
    EXPECT_FALSE(gfile_rm("a/*.txt", false));
    EXPECT_FALSE(gfile_rm("missing\\*.txt", false));
    EXPECT_FALSE(gfile_rm("x.txt\\*", false));
    EXPECT_THAT(entries_below("."), ElementsAre("a", "a/x.txt", "x.txt"));
}

TEST_F(RemoveWildcard, InADirectoryThatCannotBeListedFails) {
    const UnlistableDirectory directory;
    if (!directory.exists()) GTEST_SKIP() << "no such directory here";
    EXPECT_FALSE(gfile_rm(directory.wildcard().c_str(), false));
}

TEST_F(RemoveWildcard, RemovesLinksAndNotWhatTheyLeadTo) {
    site.write("outside/x", "1");
    fs::create_directory("a");
    make_directory_link("../outside", "a/link");
    make_link("../outside/x", "a/file");
    if (links_are_seen()) make_link("nowhere", "a/dangling");
    EXPECT_EQ(gfile_rm("a\\*", false), links_are_seen());
    EXPECT_EQ(fs::is_empty("a"), links_are_seen());
    EXPECT_EQ(site.read("outside/x"), "1");
}

TEST_F(RemoveWildcard, TellsLetterCaseApart) {
    site.write("a/xy", "1");
    site.write("a/Xz", "2");
    EXPECT_TRUE(gfile_rm("A\\x*", false));
    EXPECT_THAT(entries_below("a"), ElementsAre("Xz"));
}

TEST_F(RemoveTree, NeedsToBeAskedFor) {
    site.write("a/x", "1");
    fs::create_directory("empty");
    EXPECT_FALSE(gfile_rm("a", false));
    EXPECT_FALSE(gfile_rm("empty", false));
    EXPECT_EQ(site.read("a/x"), "1");
    EXPECT_TRUE(fs::exists("empty"));
}

TEST_F(RemoveTree, TakesAllBelowWithIt) {
    site.write("a/x", "1");
    site.write("a/.hidden/y", "2");
    site.write("a/b/c/z", "3");
    fs::create_directory("a/empty");
    EXPECT_TRUE(gfile_rm("a/", true));
    EXPECT_FALSE(fs::exists("a"));
}

TEST_F(RemoveTree, NeverGoesThroughLinks) {
    site.write("outside/sub/x", "1");
    site.write("file", "2");
    fs::create_directories("a/b");
    make_directory_link("../../outside", "a/b/dir");
    make_directory_link("..", "a/b/parent");
    make_link("../file", "a/link");
    if (links_are_seen()) make_link("nowhere", "a/dangling");
    EXPECT_EQ(gfile_rm("a", true), links_are_seen());
    EXPECT_EQ(fs::exists("a"), !links_are_seen());
    EXPECT_EQ(site.read("outside/sub/x"), "1");
    EXPECT_EQ(site.read("file"), "2");
}

TEST_F(RemoveTree, TakesReadOnlyFilesAlong) {
    site.write("a/x", "1");
    set_mode("a/x", 0444);
    EXPECT_TRUE(gfile_rm("a", true));
    EXPECT_FALSE(fs::exists("a"));
}

TEST_F(RemoveTree, GoesOnAfterAFailureAndReportsItAtTheEnd) {
    for (int i = 0; i < 20; ++i) site.write("a/f" + std::to_string(i), "1");
    site.write("a/kept/y", "2");
    site.write("a/kept/deeper/z", "3");
    site.write("a/gone/z", "4");
    for (const char* name : {"a", "a/kept/deeper", "a/gone"}) set_mode(name, 0777);
    {
        const Denial denial = Denial::of_changing("a/kept");
        EXPECT_TRUE(holds_for_ordinary_user([] { return !gfile_rm("a", true); }));
    }
    EXPECT_THAT(entries_below("a"), ElementsAre("kept", "kept/deeper", "kept/y"));
}

TEST_F(RemoveTree, UnreadableDirectoryStays) {
    site.write("a/x", "1");
    fs::create_directory("a/secret");
    set_mode("a", 0777);
    {
        const Denial denial = Denial::of_reading("a/secret");
        EXPECT_TRUE(holds_for_ordinary_user([] { return !gfile_rm("a", true); }));
    }
    EXPECT_THAT(entries_below("a"), ElementsAre("secret"));
}

TEST_F(RemoveTree, WithNamesThatDifferInLetterCase) {
    for (const char* name : {"t/a", "t/A"}) write_beside(name, "");
    EXPECT_TRUE(gfile_rm("t\\A", true));
    EXPECT_THAT(entries_below("t"), ElementsAre("a"));
    write_beside("u/dir/x", "");
    write_beside("u/dir/X", "");
    EXPECT_TRUE(gfile_rm("u", true));
    EXPECT_FALSE(fs::exists("u"));
}

TEST_F(RemoveTree, OfDepth200) {
    grow_deep_tree("t", 200);
    EXPECT_TRUE(gfile_rm("t", true));
    EXPECT_FALSE(fs::exists("t"));
}

TEST_F(RemoveTree, AsDeepAsNamesMayBeWithFewOpenFiles) {
    grow_deep_tree("t", 510);
    for (fs::path path = "t/d"; path.string().size() < 1000; path /= "d/d/d") site.write(path.string() + "/e/f", "");
    bool removed = false;
    {
        const OpenFileLimit limit(60);
        removed = gfile_rm("t", true);
    }
    EXPECT_TRUE(removed);
    EXPECT_FALSE(fs::exists("t"));
}

TEST_F(RemoveTree, DeepTreeNeedsNoDeepStack) {
    grow_deep_tree("t", 500);
    EXPECT_TRUE(holds_on_small_stack([] { return gfile_rm("t", true); }));
    EXPECT_FALSE(fs::exists("t"));
}

TEST_F(RemoveTree, WhatIsDeeperThanNamesMayBeStays) {
    const fs::path bottom = grow_deep_tree("t", 512);
    site.write("t/x", "1");
    EXPECT_FALSE(gfile_rm("t", true));
    EXPECT_TRUE(fs::exists(bottom / "f"));
    EXPECT_FALSE(fs::exists("t/x"));
}

TEST_F(RemoveTree, StopsInADirectoryAtANameThatIsTooLongAndGoesOnAboveIt) {
    // Names of files in the directory have room for 10 bytes.
    fs::path directory = "t";
    for (int level = 0; level < 4; ++level) directory /= std::string(199, 'd');
    directory /= std::string(1024 - 10 - 1 - directory.string().size() - 1, 'd');
    for (int i = 0; i < 10; ++i) site.write((directory / ("short" + std::to_string(i))).string(), "");
    site.write((directory / "longer_name").string(), "");
    for (int i = 10; i < 20; ++i) site.write((directory / ("short" + std::to_string(i))).string(), "");
    site.write("t/beside", "");

    std::set<std::string> behind;
    for (const auto& entry : fs::directory_iterator(orvix::test::of_any_length(directory, true))) {
        const std::string name = entry.path().filename().string();
        if (!behind.empty() || name == "longer_name") behind.insert(name);
    }
    EXPECT_FALSE(gfile_rm("t", true));
    EXPECT_EQ(entries_below(directory), behind);
    EXPECT_FALSE(fs::exists("t/beside"));
}

TEST_F(RemoveTree, OfTenThousandFiles) {
    for (int i = 0; i < 10000; ++i) site.write("t/" + std::to_string(i % 3) + "/" + std::to_string(i), "");
    EXPECT_TRUE(gfile_rm("t", true));
    EXPECT_FALSE(fs::exists("t"));
}

TEST_F(RemoveTree, OfRandomNames) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        grow_random_tree("t", random, 40);
        ASSERT_TRUE(gfile_rm("t", true));
        ASSERT_THAT(entries_below("."), IsEmpty());
    }
}
