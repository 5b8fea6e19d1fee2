#include "paths/current_directory.h"
#include "support/host.h"

#include <gtest/gtest.h>
#include <orvix/core/path.h>
#include <orvix/gsl/canonical_names.h>
#include <orvix/gsl/status.h>
#include <support/buffer.h>
#include <support/links.h>
#include <support/temporary_directory.h>

#include <filesystem>
#include <memory>
#include <string>

namespace fs = std::filesystem;
using namespace orvix::test;

namespace {

constexpr const char* no_backslashes = "a name holds no backslash here";

std::string name_of(const std::string& directory) {
    Buffer argument(directory);
    const std::unique_ptr<char, void (*)(char*)> name(HX_get_canonical_directory_name(argument), gmem_ee_free);
    EXPECT_EQ(argument.text(), directory);
    return name != nullptr ? name.get() : "none";
}

std::string name_of_path(const std::string& directory) { return HX_get_canonical_directory_name_new(directory); }

// Names are given in full or used by one test alone, so that no other test has left an answer for them in the caches.
class CanonicalDirectory : public testing::Test {
protected:
    std::string below(const std::string& relative) const { return directory_.name(relative); }

    // Makes a directory below one at the top, and makes that one the current directory.
    void enter(const char* at_the_top, const char* directory) const {
        fs::create_directories(directory_.path() / at_the_top / directory);
        fs::current_path(directory_.path() / at_the_top);
    }

    const TemporaryDirectory directory_{TemporaryDirectory::Enter::yes};
    const std::string top_ = here();
};

}  // namespace

TEST_F(CanonicalDirectory, LinksAndParentsAreResolved) {
    fs::create_directories("Real/Below");
    make_directory_link("Real/Below", "link");
    const bool resolved = orvix::test::entered_links_are_resolved;
    const std::string entered = here() + (resolved ? "\\real\\below" : "\\link");
    const std::string above = here() + (resolved ? "\\real" : "");
    EXPECT_EQ(name_of(below("link")), entered);
    EXPECT_EQ(name_of(below("link/..")), above);
    EXPECT_EQ(name_of_path(below("link")), entered);
    EXPECT_EQ(name_of_path(below("link/..")), above);
}

TEST_F(CanonicalDirectory, WhatCannotBeEnteredKeepsItsNameInLowerCase) {
    directory_.write("File", "");
    EXPECT_EQ(name_of("No/Such"), "no/such");
    EXPECT_EQ(name_of("File"), "file");
    EXPECT_EQ(name_of(""), "");
    EXPECT_EQ(name_of_path("No/Such"), "no\\such");
    EXPECT_EQ(name_of_path(""), "");
}

TEST_F(CanonicalDirectory, DirectoryThatCanBeEnteredButNotToldKeepsItsNameAsTextAndHasNoneAsPath) {
    if (!may_stand_in_names('\\')) GTEST_SKIP() << no_backslashes;
    fs::create_directory("back\\slash");
    make_directory_link("back\\slash", "Link");
    EXPECT_EQ(name_of(below("Link")), here() + "\\link");
    EXPECT_EQ(name_of_path(below("Link")), "");
}

TEST_F(CanonicalDirectory, RelativeNameKeepsItsAnswerWhereverTheProcessGoes) {
    fs::create_directories("one_for_this_test");
    fs::create_directories("other/one_for_this_test");
    const std::string first = here() + "\\one_for_this_test";
    EXPECT_EQ(name_of("one_for_this_test"), first);
    EXPECT_EQ(name_of_path("one_for_this_test"), first);
    fs::current_path("other");
    EXPECT_EQ(name_of("one_for_this_test"), first);
    EXPECT_EQ(name_of_path("one_for_this_test"), first);
}

TEST_F(CanonicalDirectory, NullHasNoName) { EXPECT_EQ(HX_get_canonical_directory_name(nullptr), nullptr); }

TEST_F(CanonicalDirectory, EachCallGivesABlockOfItsOwn) {
    Buffer argument(below(""));
    char* const first = HX_get_canonical_directory_name(argument);
    first[0] = '#';
    char* const second = HX_get_canonical_directory_name(argument);
    EXPECT_EQ(second, here());
    gmem_ee_free(first);
    gmem_ee_free(second);
}

TEST_F(CanonicalDirectory, AnswerOutlivesTheRenamingOfTheDirectory) {
    fs::create_directory("real");
    EXPECT_EQ(name_of("real"), here() + "\\real");
    EXPECT_EQ(name_of_path("real"), here() + "\\real");
    fs::rename("real", "renamed");
    EXPECT_EQ(name_of("real"), here() + "\\real");
    EXPECT_EQ(name_of_path("real"), here() + "\\real");
}

TEST_F(CanonicalDirectory, AnswerForAMissingDirectoryOutlivesItsCreation) {
    fs::create_directory("a");
    EXPECT_EQ(name_of(below("Late")), here() + "\\late");
    EXPECT_EQ(name_of_path(below("Late")), here() + "\\late");
    make_directory_link("a", "Late");
    EXPECT_EQ(name_of(below("Late")), here() + "\\late");
    EXPECT_EQ(name_of_path(below("Late")), here() + "\\late");
}

TEST_F(CanonicalDirectory, TheTwoCachesAreSeparate) {
    enter("a", "separate");
    EXPECT_EQ(name_of("separate"), top_ + "\\a\\separate");
    enter("b", "separate");
    EXPECT_EQ(name_of_path("separate"), top_ + "\\b\\separate");
    EXPECT_EQ(name_of("separate"), top_ + "\\a\\separate");
}

TEST_F(CanonicalDirectory, TextsThatDifferInLetterCaseAreRememberedApart) {
    enter("a", "apart");
    EXPECT_EQ(name_of("apart"), top_ + "\\a\\apart");
    enter("b", "apart");
    EXPECT_EQ(name_of("Apart"), top_ + "\\b\\apart");
    EXPECT_EQ(name_of("apart"), top_ + "\\a\\apart");
}

TEST_F(CanonicalDirectory, PathsThatDifferInLetterCaseOrSeparatorsAreRememberedTogether) {
    enter("a", "sub");
    enter("a", "together");
    EXPECT_EQ(name_of_path("sub/../together"), top_ + "\\a\\together");
    enter("b", "sub");
    enter("b", "together");
    EXPECT_EQ(name_of_path("Sub\\..\\\\Together"), top_ + "\\a\\together");
    EXPECT_EQ(name_of_path("together"), top_ + "\\b\\together");
}

TEST_F(CanonicalDirectory, CanonicalNameOpensTheDirectoryAgain) {
    fs::create_directories("Mixed/Case");
    EXPECT_TRUE(orvix::Path(name_of(below("Mixed/Case"))).is_directory());
}

TEST_F(CanonicalDirectory, CurrentDirectoryIsRestored) {
    fs::create_directory("a");
    const fs::path before = fs::current_path();
    name_of(below("a"));
    EXPECT_EQ(fs::current_path(), before);
    name_of_path(below("a"));
    EXPECT_EQ(fs::current_path(), before);
}
