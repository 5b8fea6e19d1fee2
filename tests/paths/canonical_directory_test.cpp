#include "paths/current_directory.h"

#include <gtest/gtest.h>
#include <orvix/core/path.h>
#include <orvix/gsl/canonical_names.h>
#include <orvix/gsl/status.h>
#include <support/buffer.h>
#include <support/temporary_directory.h>
#include "support/links.h"

#include <filesystem>
#include <memory>
#include <string>

namespace fs = std::filesystem;
using namespace orvix::test;

namespace {

std::string name_of(const std::string& directory) {
    Buffer argument(directory);
    const std::unique_ptr<char, void (*)(char*)> name(HX_get_canonical_directory_name(argument), gmem_ee_free);
    EXPECT_EQ(argument.text(), directory);
    return name != nullptr ? name.get() : "none";
}

std::string name_of_path(const std::string& directory) { return HX_get_canonical_directory_name_new(directory); }

// Names are given in full, so that no other test has left an answer for them in the caches.
class CanonicalDirectory : public testing::Test {
protected:
    std::string below(const std::string& relative) const { return directory_.name(relative); }

    static void point_link_to(const char* directory) {
        fs::create_directory(directory);
        fs::remove("link");
        make_directory_link(directory, "link");
    }

    const TemporaryDirectory directory_{TemporaryDirectory::Enter::yes};
};

}  // namespace

TEST_F(CanonicalDirectory, LinksAndParentsAreResolved) {
    fs::create_directories("Real/Below");
    make_directory_link("Real/Below", "link");
    EXPECT_EQ(name_of(below("link")), here() + "\\real\\below");
    EXPECT_EQ(name_of(below("link/..")), here() + "\\real");
    EXPECT_EQ(name_of_path(below("link")), here() + "\\real\\below");
    EXPECT_EQ(name_of_path(below("link/..")), here() + "\\real");
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
    fs::create_directory("back\\slash");
    fs::create_directory_symlink("back\\slash", "Link");
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
    make_directory_link("real", "link");
    const std::string before = name_of(below("link"));
    const std::string before_as_path = name_of_path(below("link"));
    fs::remove("link");
    fs::rename("real", "renamed");
    make_directory_link("renamed", "link");
    EXPECT_EQ(name_of(below("link")), before);
    EXPECT_EQ(name_of_path(below("link")), before_as_path);
    EXPECT_EQ(before, here() + "\\real");
    EXPECT_EQ(before_as_path, here() + "\\real");
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
    point_link_to("a");
    EXPECT_EQ(name_of(below("link")), here() + "\\a");
    point_link_to("b");
    EXPECT_EQ(name_of_path(below("link")), here() + "\\b");
    EXPECT_EQ(name_of(below("link")), here() + "\\a");
}

TEST_F(CanonicalDirectory, TextsThatDifferInLetterCaseAreRememberedApart) {
    point_link_to("a");
    EXPECT_EQ(name_of(below("link")), here() + "\\a");
    point_link_to("b");
    EXPECT_EQ(name_of(below("Link")), here() + "\\b");
    EXPECT_EQ(name_of(below("link")), here() + "\\a");
}

TEST_F(CanonicalDirectory, PathsThatDifferInLetterCaseOrSeparatorsAreRememberedTogether) {
    fs::create_directory("sub");
    point_link_to("a");
    EXPECT_EQ(name_of_path(below("sub/../link")), here() + "\\a");
    point_link_to("b");
    EXPECT_EQ(name_of_path(below("Sub\\..\\\\Link")), here() + "\\a");
    EXPECT_EQ(name_of_path(below("link")), here() + "\\b");
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
