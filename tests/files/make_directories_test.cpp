// Paths of directories, made and asked about.

#include "support/buffer.h"
#include "support/denial.h"
#include "support/temporary_directory.h"

#include <orvix/gsl/file_trees.h>
#include <orvix/gsl/status.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace fs = std::filesystem;
using orvix::test::Buffer;
using orvix::test::Denial;
using orvix::test::holds_for_ordinary_user;
using orvix::test::ScopedVariable;
using orvix::test::TemporaryDirectory;

namespace {

class MakeDirectories : public testing::Test {
protected:
    TemporaryDirectory site{TemporaryDirectory::Enter::yes};
};
using MakeableDirectories = MakeDirectories;

bool make(const std::string& name, bool each_level = true) {
    Buffer buffer(name);
    return gfile_mkdir(buffer, each_level, 493);
}

bool makeable(const std::string& name, bool levels_may_be_missing = true) {
    Buffer buffer(name);
    return gfile_makebledir(buffer, levels_may_be_missing);
}

// What a call prints to the standard error stream.
template <class Call>
std::string printed_by(Call call) {
    testing::internal::CaptureStderr();
    call();
    return testing::internal::GetCapturedStderr();
}

}  // namespace

TEST_F(MakeDirectories, MakesEachLevel) {
    EXPECT_TRUE(make("a\\b\\c"));
    EXPECT_TRUE(fs::is_directory("a/b/c"));
    EXPECT_TRUE(make("a/b/d/e/"));
    EXPECT_TRUE(fs::is_directory("a/b/d/e"));
    EXPECT_TRUE(make("single"));
    EXPECT_TRUE(fs::is_directory("single"));
}

TEST_F(MakeDirectories, WithoutEachLevelMakesTheLastAlone) {
    EXPECT_FALSE(make("a\\b\\c", false));
    EXPECT_FALSE(fs::exists("a"));
    fs::create_directories("a/b");
    EXPECT_TRUE(make("a\\b\\c", false));
    EXPECT_TRUE(fs::is_directory("a/b/c"));
}

TEST_F(MakeDirectories, WhatIsThereIsASuccess) {
    fs::create_directories("a/b");
    EXPECT_TRUE(make("a\\b", true));
    EXPECT_TRUE(make("a\\b", false));
}

TEST_F(MakeDirectories, AFileInItsPlaceCountsAsThere) {
    site.write("file", "x");
    EXPECT_TRUE(make("file", true));
    EXPECT_TRUE(make("file", false));
    EXPECT_EQ(site.read("file"), "x");
}

TEST_F(MakeDirectories, BelowAFileFails) {
    site.write("file", "x");
    EXPECT_FALSE(make("file\\a"));
    EXPECT_FALSE(make("file\\a", false));
}

TEST_F(MakeDirectories, TurnsSlashesInPlace) {
    Buffer name("a/b");
    EXPECT_TRUE(gfile_mkdir(name, true, 0));
    EXPECT_EQ(name.text(), "a\\b");
}

TEST_F(MakeDirectories, RunsOfSeparatorsCountOnce) {
    EXPECT_TRUE(make("a\\\\\\b\\\\"));
    EXPECT_TRUE(fs::is_directory("a/b"));
}

TEST_F(MakeDirectories, TakesNamesWithADrive) {
    EXPECT_TRUE(make(site.name("a/b")));
    EXPECT_TRUE(fs::is_directory("a/b"));
    EXPECT_TRUE(make(site.name("a/c"), false));
    EXPECT_TRUE(fs::is_directory("a/c"));
}

TEST_F(MakeDirectories, NameThatBeginsWithABackslashLosesTheCharacterBehindIt) {
    const std::string below_root = site.path().relative_path().string();
    EXPECT_TRUE(make("\\x" + below_root + "\\a\\b"));
    EXPECT_TRUE(fs::is_directory("a/b"));
}

TEST_F(MakeDirectories, RootIsThere) {
    for (const char* name : {"\\", "\\x", "c:\\", "c:", ""}) {
        EXPECT_TRUE(make(name, true)) << name;
        EXPECT_TRUE(make(name, false)) << name;
    }
}

TEST_F(MakeDirectories, OfNullFails) {
    EXPECT_FALSE(gfile_mkdir(nullptr, true, 0));
    EXPECT_FALSE(gfile_makebledir(nullptr, true));
}

TEST_F(MakeDirectories, PartsMayBeVariables) {
    const ScopedVariable place("ORVIX_TEST_PLACE", "project");
    EXPECT_TRUE(make("$ORVIX_TEST_PLACE\\a"));
    EXPECT_TRUE(fs::is_directory("project/a"));
    EXPECT_TRUE(make("b\\%ORVIX_TEST_PLACE%\\c"));
    EXPECT_TRUE(fs::is_directory("b/project/c"));
    EXPECT_TRUE(make("d\\$ORVIX_TEST_PLACE"));
    EXPECT_TRUE(fs::is_directory("d/project"));
}

TEST_F(MakeDirectories, ValueOfAVariableMayHoldSeparators) {
    fs::create_directory("a");
    const ScopedVariable place("ORVIX_TEST_PLACE", site.name("a").c_str());
    EXPECT_TRUE(make("$ORVIX_TEST_PLACE\\b"));
    EXPECT_TRUE(fs::is_directory("a/b"));
}

TEST_F(MakeDirectories, OnlyWholePartsAreVariables) {
    const ScopedVariable place("ORVIX_TEST_PLACE", "project");
    EXPECT_TRUE(make("x$ORVIX_TEST_PLACE\\%ORVIX_TEST_PLACE\\%"));
    EXPECT_TRUE(fs::is_directory("x$ORVIX_TEST_PLACE/%ORVIX_TEST_PLACE/%"));
}

TEST_F(MakeDirectories, UnsetVariableFailsWithAMessage) {
    const ScopedVariable unset("NOSUCH", nullptr);
    bool made = true;
    EXPECT_EQ(printed_by([&] { made = make("$NOSUCH\\a"); }), "gfile:gfile_expand_dir could not expand $NOSUCH\n");
    EXPECT_FALSE(made);
    EXPECT_EQ(printed_by([&] { made = make("b\\%NOSUCH%\\c"); }), "gfile:gfile_expand_dir could not expand %NOSUCH%\n");
    EXPECT_FALSE(made);
    EXPECT_FALSE(printed_by([&] { made = make("$"); }).empty());
    EXPECT_FALSE(made);
    EXPECT_FALSE(printed_by([&] { made = make("%%"); }).empty());
    EXPECT_FALSE(made);
}

TEST_F(MakeDirectories, LevelsAboveAnUnsetVariableAreMade) {
    const ScopedVariable unset("NOSUCH", nullptr);
    printed_by([] { make("a\\$NOSUCH\\b"); });
    EXPECT_TRUE(fs::is_directory("a"));
}

TEST_F(MakeDirectories, EmptyVariableFailsInSilence) {
    const ScopedVariable empty("ORVIX_TEST_PLACE", "");
    bool made = true;
    EXPECT_EQ(printed_by([&] { made = make("$ORVIX_TEST_PLACE\\a"); }), "");
    EXPECT_FALSE(made);
}

TEST_F(MakeDirectories, LongNamesAreNoDanger) {
    const std::string part(3000, 'x');
    EXPECT_FALSE(make(part + "\\" + part));
    EXPECT_TRUE(makeable(part + "\\" + part));
    std::string many;
    for (int i = 0; i < 3000; ++i) many += ".\\";
    EXPECT_FALSE(make(many + "a"));
}

TEST_F(MakeDirectories, NeverTouchesTheStatusWord) {
    GuiErrno = GUI_ERR_CLOCK_STOP;
    make("no\\such", false);
    makeable("no\\such", false);
    EXPECT_EQ(GuiErrno, GUI_ERR_CLOCK_STOP);
}

TEST_F(MakeableDirectories, ExistingDirectoryMustBeWritable) {
    fs::create_directory("open");
    fs::create_directory("closed");
    const Denial denial = Denial::of_changing("closed");
    EXPECT_TRUE(makeable("open"));
    EXPECT_TRUE(makeable("open", false));
    EXPECT_TRUE(holds_for_ordinary_user([] { return !makeable("closed"); }));
    EXPECT_TRUE(holds_for_ordinary_user([] { return !makeable("closed", false); }));
}

TEST_F(MakeableDirectories, NameInsideAReadOnlyDirectoryIsNot) {
    fs::create_directory("closed");
    const Denial denial = Denial::of_changing("closed");
    EXPECT_TRUE(holds_for_ordinary_user([] { return !makeable("closed\\a"); }));
    EXPECT_TRUE(holds_for_ordinary_user([] { return !makeable("closed\\a", false); }));
    EXPECT_TRUE(holds_for_ordinary_user([] { return !makeable("closed\\a\\b"); }));
}

TEST_F(MakeableDirectories, NothingIsMade) {
    EXPECT_TRUE(makeable("a\\b\\c"));
    EXPECT_TRUE(fs::is_empty("."));
}

TEST_F(MakeableDirectories, NearestExistingLevelDecides) {
    site.write("dir/file", "x");
    EXPECT_TRUE(makeable("dir\\a\\b\\c"));
    EXPECT_FALSE(makeable("dir\\file\\a\\b"));
    EXPECT_FALSE(makeable("dir\\file"));
}

TEST_F(MakeableDirectories, WithoutAnyExistingLevelTheAnswerIsYes) { EXPECT_TRUE(makeable("no\\such\\place")); }

TEST_F(MakeableDirectories, LastLevelMayBeMissing) {
    fs::create_directory("dir");
    EXPECT_TRUE(makeable("dir\\a", false));
    EXPECT_TRUE(makeable("dir\\a\\\\", false));
    EXPECT_TRUE(makeable("a", false));
}

TEST_F(MakeableDirectories, LevelAboveTheLastMayNotBeMissingUnlessAllowed) {
    fs::create_directory("dir");
    EXPECT_FALSE(makeable("dir\\a\\b", false));
    EXPECT_TRUE(makeable("dir\\a\\b", true));
}

TEST_F(MakeableDirectories, PartBehindAMissingLevelLosesItsFirstCharacter) {
    const ScopedVariable unset("NOSUCH", nullptr);
    bool answer = true;
    EXPECT_EQ(printed_by([&] { answer = makeable("no\\$NOSUCH", false); }), "");
    EXPECT_FALSE(answer);
    EXPECT_NE(printed_by([&] { answer = makeable("no\\x$NOSUCH", false); }), "");
    EXPECT_FALSE(answer);
}

TEST_F(MakeableDirectories, VariablesAreExpandedInTheSameWay) {
    fs::create_directory("dir");
    const ScopedVariable place("ORVIX_TEST_PLACE", "dir");
    const ScopedVariable unset("NOSUCH", nullptr);
    EXPECT_TRUE(makeable("$ORVIX_TEST_PLACE\\a", false));
    bool answer = true;
    EXPECT_EQ(printed_by([&] { answer = makeable("$NOSUCH\\a"); }),
              "gfile:gfile_expand_dir could not expand $NOSUCH\n");
    EXPECT_FALSE(answer);
}

TEST_F(MakeableDirectories, EmptyVariableFailsInSilence) {
    const ScopedVariable empty("ORVIX_TEST_PLACE", "");
    bool answer = true;
    EXPECT_EQ(printed_by([&] { answer = makeable("%ORVIX_TEST_PLACE%\\a"); }), "");
    EXPECT_FALSE(answer);
}
