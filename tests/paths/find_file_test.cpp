#include "paths/current_directory.h"

#include <gtest/gtest.h>
#include <orvix/gsl/canonical_names.h>
#include <orvix/gsl/environment.h>
#include <orvix/gsl/status.h>
#include <support/temporary_directory.h>
#include "support/links.h"

#include <filesystem>
#include <memory>
#include <string>

namespace fs = std::filesystem;
using namespace orvix::test;

namespace {

constexpr bool files_only = false;
constexpr bool also_directories = true;

// "" if nothing was found.
std::string found(const char* name, const char* search_path, bool accept_directories = files_only) {
    const std::unique_ptr<char, void (*)(char*)> result(HX_find_file(name, search_path, accept_directories),
                                                        gmem_ee_free);
    return result != nullptr ? result.get() : "";
}

class HxFindFile : public testing::Test {
protected:
    const TemporaryDirectory directory_{TemporaryDirectory::Enter::yes};
};

}  // namespace

TEST_F(HxFindFile, DirectoryThatHoldsTheNameIsPutInFront) {
    fs::create_directory("a");
    directory_.write("b/x", "");
    EXPECT_EQ(found("x", "a;b"), "b\\x");
    EXPECT_EQ(HX_find_file_new("x", "a;b", files_only), "b\\x");
}

TEST_F(HxFindFile, FirstDirectoryThatHoldsTheNameWins) {
    directory_.write("a/x", "");
    directory_.write("b/x", "");
    EXPECT_EQ(found("x", "a;b"), "a\\x");
    EXPECT_EQ(found("x", "b:a"), "b\\x");
}

TEST_F(HxFindFile, NullSearchPathMeansTheCurrentDirectoryOnly) {
    directory_.write("x", "");
    directory_.write("a/y", "");
    EXPECT_EQ(found("x", nullptr), ".\\x");
    EXPECT_EQ(found("y", nullptr), "");
}

TEST_F(HxFindFile, CurrentDirectoryIsNoFallBack) {
    directory_.write("x", "");
    fs::create_directory("a");
    EXPECT_EQ(found("x", "a"), "");
    EXPECT_EQ(found("x", "a;."), ".\\x");
}

TEST_F(HxFindFile, DirectoryIsSpelledCanonicallyAndTheNameIsNot) {
    directory_.write("Dir/Sub/X", "");
    EXPECT_EQ(found("Sub/X", "./Dir//"), ".\\dir\\Sub/X");
}

TEST_F(HxFindFile, DrivePrefixBelongsToItsElement) {
    const std::string file = directory_.write("Dir/x", "");
    const std::string directory = file.substr(0, file.size() - 2);
    EXPECT_EQ(found("x", ("c:\\nowhere;" + directory).c_str()), canonical_spelling(directory_.path() / "Dir") + "\\x");
}

TEST_F(HxFindFile, EmptyElementLooksAtTheRoot) {
    const std::string file = directory_.write("x", "").substr(2);
    EXPECT_EQ(found(file.c_str() + 1, "a;"), file);
    EXPECT_EQ(HX_find_file_new(file.substr(1), "", files_only), file);
}

TEST_F(HxFindFile, EmptyNameAndNullAreNeverFound) {
    EXPECT_EQ(HX_find_file("", ".", also_directories), nullptr);
    EXPECT_EQ(HX_find_file(nullptr, ".", also_directories), nullptr);
    EXPECT_EQ(HX_find_file_new("", ".", also_directories), "");
}

TEST_F(HxFindFile, AbsoluteNameIsFoundInCanonicalSpellingWithoutTheSearchPath) {
    const std::string file = directory_.write("Dir/File.TXT", "");
    EXPECT_EQ(found(file.c_str(), "nowhere"), canonical_spelling(directory_.path() / "Dir/File.TXT"));
    EXPECT_EQ(found((file + "/").c_str(), nullptr), canonical_spelling(directory_.path() / "Dir/File.TXT"));
}

TEST_F(HxFindFile, AbsoluteNameThatIsMissingIsNotLookedForAlongThePath) {
    EXPECT_EQ(found(directory_.name("x").c_str(), "."), "");
    EXPECT_EQ(found("c:x", "."), "");
}

TEST_F(HxFindFile, DirectoryIsFoundWhereDirectoriesAreAccepted) {
    fs::create_directories("a/x");
    EXPECT_EQ(found("x", "a", files_only), "");
    EXPECT_EQ(found("x", "a", also_directories), "a\\x");
    EXPECT_EQ(found(directory_.name("a").c_str(), nullptr, also_directories), here() + "\\a");
}

TEST_F(HxFindFile, LinkToAFileIsNeverFound) {
    directory_.write("a/file", "");
    make_link("file", "a/link");
    EXPECT_EQ(found("link", "a", files_only), "");
    EXPECT_EQ(found("link", "a", also_directories), "");
    EXPECT_EQ(found(directory_.name("a/link").c_str(), nullptr), "");
    EXPECT_EQ(HX_find_file_new("link", "a", files_only), "");
}

TEST_F(HxFindFile, LinkToAFileDoesNotHideTheFileOfALaterDirectory) {
    fs::create_directory("a");
    directory_.write("b/x", "");
    make_link("../b/x", "a/x");
    EXPECT_EQ(found("x", "a;b"), "b\\x");
}

TEST_F(HxFindFile, FileBelowALinkToItsDirectoryIsFound) {
    directory_.write("a/x", "");
    make_directory_link("a", "link");
    EXPECT_EQ(found("x", "link"), "link\\x");
}

TEST_F(HxFindFile, LinkToADirectoryIsFoundWhereDirectoriesAreAccepted) {
    fs::create_directory("a");
    make_directory_link("a", "link");
    EXPECT_EQ(found("link", ".", files_only), "");
    EXPECT_EQ(found("link", ".", also_directories), ".\\link");
}

TEST_F(HxFindFile, LinkToNothingIsNotFound) {
    make_link("nothing", "link");
    EXPECT_EQ(found("link", ".", also_directories), "");
}

TEST_F(HxFindFile, DirectoriesOfAnyLengthAreTried) {
    directory_.write("x", "");
    const std::string longer(3000, 'a');
    EXPECT_EQ(found("x", ("a;" + longer + ';' + longer + longer + ";.").c_str()), ".\\x");
}

TEST_F(HxFindFile, CallersTextsStay) {
    directory_.write("B/x", "");
    char name[] = "x";
    char search_path[] = "A;B";
    EXPECT_EQ(found(name, search_path), "b\\x");
    EXPECT_STREQ(name, "x");
    EXPECT_STREQ(search_path, "A;B");
}

TEST_F(HxFindFile, NameMayComeFromTheTokeniser) {
    directory_.write("b/x", "");
    char names[] = "x;y";
    EXPECT_EQ(found(gui_env_get_tok(names), "a_directory_with_a_name_of_some_length;b"), "b\\x");
}

TEST_F(HxFindFile, TokeniserHasNothingLeftAfterASearchThatStoppedEarly) {
    directory_.write("x", "");
    EXPECT_EQ(found("x", ".;a;b"), ".\\x");
    EXPECT_EQ(gui_env_get_tok(nullptr), nullptr);
}
