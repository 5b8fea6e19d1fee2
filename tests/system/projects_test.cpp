#include <orvix/core/path.h>
#include <orvix/gsl/projects.h>

#include "support/host.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace {

namespace fs = std::filesystem;
using orvix::test::TemporaryDirectory;

// A directory "work" to stand in, and a project "site" beside it, all that a project needs.
class Project {
public:
    Project() {
        make("site/data");
        make("site/networks");
        write("PROJECT_VERSION=1000\n");
        make("work");
        fs::current_path(directory_.path() / "work");
        gprj_init("marker");
    }
    ~Project() { gprj_init(nullptr); }
    Project(const Project&) = delete;
    Project& operator=(const Project&) = delete;

    void make(const std::string& relative) const { fs::create_directories(directory_.path() / relative); }
    void remove(const std::string& relative) const { fs::remove_all(directory_.path() / relative); }
    bool exists(const std::string& relative) const { return fs::exists(directory_.path() / relative); }
    void write(std::string_view marker) const { directory_.write("site/marker.cfg", marker); }

    std::string name(std::string_view relative = "site") const { return directory_.name(relative); }

    bool is_project() const { return gprj_is_project(name().c_str(), nullptr); }
    bool is_project(std::string list) const { return gprj_is_project(name().c_str(), list.data()); }

    // With the marker so written.
    bool is_project_with(std::string_view marker) const {
        write(marker);
        return is_project();
    }

private:
    TemporaryDirectory directory_{TemporaryDirectory::Enter::yes};
};

TEST(GprjIsProject, DataNetworksAndTheMarkerAreEnough) {
    const Project project;
    EXPECT_TRUE(project.is_project());
}

TEST(GprjIsProject, OtherUsualDirectoriesDoNoHarm) {
    const Project project;
    project.make("site/synthesis");
    project.make("site/verification");
    EXPECT_TRUE(project.is_project());
}

TEST(GprjIsProject, WithoutNetworksIsFalseWhateverElseIsThere) {
    const Project project;
    project.make("site/synthesis");
    project.make("site/verification");
    project.remove("site/networks");
    EXPECT_FALSE(project.is_project());
}

TEST(GprjIsProject, WithoutDataIsFalse) {
    const Project project;
    project.remove("site/data");
    EXPECT_FALSE(project.is_project());
}

TEST(GprjIsProject, WithoutTheMarkerIsFalse) {
    const Project project;
    project.remove("site/marker.cfg");
    EXPECT_FALSE(project.is_project());
}

TEST(GprjIsProject, AnotherVersionIsFalse) {
    const Project project;
    for (const char* version : {"999", "10000", "100", "1000.0", "", "x"}) {
        SCOPED_TRACE(version);
        EXPECT_FALSE(project.is_project_with("PROJECT_VERSION=" + std::string(version) + "\n"));
    }
}

TEST(GprjIsProject, MarkerWithoutTheKeyIsFalse) {
    const Project project;
    EXPECT_FALSE(project.is_project_with("VERSION=1000\nproject_version=1000\n"));
    EXPECT_FALSE(project.is_project_with(""));
}

TEST(GprjIsProject, BlanksBeforeTheKeyPass) {
    const Project project;
    EXPECT_TRUE(project.is_project_with("   PROJECT_VERSION=1000\n"));
    EXPECT_TRUE(project.is_project_with("   PROJECT_VERSION  =1000  \n"));
}

TEST(GprjIsProject, BlanksBehindTheEqualsSignDoNot) {
    const Project project;
    EXPECT_FALSE(project.is_project_with("PROJECT_VERSION= 1000\n"));
    EXPECT_FALSE(project.is_project_with("PROJECT_VERSION = 1000\n"));
}

TEST(GprjIsProject, FirstVersionInTheMarkerCounts) {
    const Project project;
    EXPECT_TRUE(project.is_project_with("NAME=x\nPROJECT_VERSION=1000\nPROJECT_VERSION=999\n"));
    EXPECT_FALSE(project.is_project_with("NAME=x\nPROJECT_VERSION=999\nPROJECT_VERSION=1000\n"));
}

TEST(GprjIsProject, ListTakesThePlaceOfTheUsualDirectories) {
    const Project project;
    project.remove("site/data");
    project.remove("site/networks");
    project.make("site/a");
    EXPECT_FALSE(project.is_project("a;b"));
    project.make("site/b");
    EXPECT_TRUE(project.is_project("a;b"));
    EXPECT_FALSE(project.is_project());
}

TEST(GprjIsProject, EmptyListActsAsNone) {
    const Project project;
    EXPECT_TRUE(project.is_project(""));
    project.remove("site/networks");
    EXPECT_FALSE(project.is_project(""));
}

TEST(GprjIsProject, ListMayNameOtherUsualDirectories) {
    const Project project;
    EXPECT_FALSE(project.is_project("data;synthesis"));
    project.make("site/synthesis");
    EXPECT_TRUE(project.is_project("data;synthesis"));
}

TEST(GprjIsProject, SeparatorAtTheEndOfAListedNameIsIgnored) {
    const Project project;
    EXPECT_TRUE(project.is_project("data\\;networks/"));
}

TEST(GprjIsProject, ListedNamesKeepTheirBlanks) {
    const Project project;
    project.make("site/my data");
    EXPECT_TRUE(project.is_project("my data"));
    EXPECT_FALSE(project.is_project("data; networks"));
}

TEST(GprjIsProject, ListedNamesMayLieDeeper) {
    const Project project;
    project.make("site/data/deep");
    EXPECT_TRUE(project.is_project("data\\deep"));
    EXPECT_FALSE(project.is_project("data\\deeper"));
}

TEST(GprjIsProject, ListEndsAtAnExclamationMark) {
    const Project project;
    EXPECT_TRUE(project.is_project("data!;missing"));
}

TEST(GprjIsProject, ListWithoutANameRequiresNone) {
    const Project project;
    project.remove("site/data");
    EXPECT_TRUE(project.is_project(";"));
    EXPECT_TRUE(project.is_project(";;;"));
    EXPECT_TRUE(project.is_project("!data"));
}

TEST(GprjIsProject, ListIsNotChanged) {
    const Project project;
    char list[] = "data\\;networks/!x";
    EXPECT_TRUE(gprj_is_project(project.name().c_str(), list));
    EXPECT_STREQ(list, "data\\;networks/!x");
}

TEST(GprjIsProject, ListOfTenNamesPassesAndOfElevenDoesNot) {
    const Project project;
    EXPECT_TRUE(project.is_project("data;data;data;data;data;data;data;data;data;data"));
    EXPECT_FALSE(project.is_project("data;data;data;data;data;data;data;data;data;data;data"));
}

TEST(GprjIsProject, ListOfVeryManyOrVeryLongNamesIsFalse) {
    const Project project;
    std::string many;
    for (int i = 0; i < 1000; ++i) many += "data;";
    EXPECT_FALSE(project.is_project(many));
    EXPECT_FALSE(project.is_project(std::string(100'000, 'x')));
}

TEST(GprjIsProject, FullNameOf255BytesPassesAndOf256DoesNot) {
    const Project project;
    const std::size_t room = 255 - project.name().size() - 1;
    const std::string fits(room, 'x');
    const std::string too_long(room + 1, 'x');
    project.make("site/" + fits);
    project.make("site/" + too_long);
    EXPECT_TRUE(project.is_project(fits));
    EXPECT_FALSE(project.is_project(too_long));
}

TEST(GprjIsProject, SubdirectoryMayBeAFile) {
    const Project project;
    project.remove("site/data");
    EXPECT_TRUE(project.is_project("marker.cfg"));
}

TEST(GprjIsProject, TakesEverySpellingOfTheDirectory) {
    const Project project;
    const std::string name = project.name();
    std::string slashes = name;
    for (char& c : slashes) {
        if (c == '\\') c = '/';
    }
    for (const std::string& spelling :
         {name + "\\", name + "/", slashes, std::string("..\\site"), std::string("../site/"), name + "\\data\\.."}) {
        SCOPED_TRACE(spelling);
        EXPECT_TRUE(gprj_is_project(spelling.c_str(), nullptr));
    }
}

TEST(GprjIsProject, KeepsTheCurrentDirectoryAndItsArgument) {
    const Project project;
    const fs::path before = fs::current_path();
    const std::string name = project.name() + "/";
    EXPECT_TRUE(gprj_is_project(name.c_str(), nullptr));
    EXPECT_EQ(fs::current_path(), before);
    EXPECT_EQ(name, project.name() + "/");
}

TEST(GprjIsProject, MissingDirectoryAFileNullAndTheEmptyNameAreFalse) {
    const Project project;
    EXPECT_FALSE(gprj_is_project(project.name("missing").c_str(), nullptr));
    EXPECT_FALSE(gprj_is_project(project.name("site/marker.cfg").c_str(), nullptr));
    EXPECT_FALSE(gprj_is_project(nullptr, nullptr));
    EXPECT_FALSE(gprj_is_project("", nullptr));
}

TEST(GprjIsProject, DirectoryIsCutTo1023Bytes) {
    const Project project;
    std::string name = project.name();
    while (name.size() + 2 <= 1023) name += "\\.";
    name.append(1023 - name.size(), '\\');
    EXPECT_TRUE(gprj_is_project((name + "missing").c_str(), nullptr));
    name.pop_back();
    EXPECT_FALSE(gprj_is_project((name + "missing").c_str(), nullptr));
}

TEST(GprjIsProject, DirectoryFarBelowIsFalse) {
    const Project project;
    // Where the current directory cannot be that far below the name is that long.
    const bool can_be_entered = orvix::test::longest_current_directory > 6000;
    std::string deep = ".";
    for (int level = 0; level < (can_be_entered ? 30 : 15); ++level) {
        const std::string name(200, 'x');
        if (!can_be_entered) deep += "\\" + name;
        ASSERT_TRUE(orvix::Path(can_be_entered ? name : deep).create_directory());
        if (can_be_entered) fs::current_path(name);
    }
    for (const char* made : {"\\data", "\\networks"}) ASSERT_TRUE(orvix::Path(deep + made).create_directory());
    char none[] = ";";
    EXPECT_FALSE(gprj_is_project(deep.c_str(), nullptr));
    EXPECT_FALSE(gprj_is_project(deep.c_str(), none));
}

TEST(GprjIsProject, BeforeGprjInitIsFalse) {
    const TemporaryDirectory directory;
    for (const char* file : {"data/x", "networks/x", ".cfg", "marker.cfg"})
        directory.write(file, "PROJECT_VERSION=1000\n");
    EXPECT_FALSE(gprj_is_project(directory.name().c_str(), nullptr));
}

TEST(GprjInit, NameCanBeChangedAndTakenBack) {
    const Project project;
    char other[] = "other";
    gprj_init(other);
    other[0] = 'x';
    EXPECT_FALSE(project.is_project());
    fs::rename("../site/marker.cfg", "../site/other.cfg");
    EXPECT_TRUE(project.is_project());
    gprj_init(nullptr);
    EXPECT_FALSE(project.is_project());
}

TEST(GprjInit, EmptyNameMeansTheBareExtension) {
    const Project project;
    gprj_init("");
    EXPECT_FALSE(project.is_project());
    fs::rename("../site/marker.cfg", "../site/.cfg");
    EXPECT_TRUE(project.is_project());
}

TEST(GprjInit, LongNameIsNoMarker) {
    const Project project;
    gprj_init(std::string(100'000, 'x').c_str());
    EXPECT_FALSE(project.is_project());
}

TEST(GprjDelete, RemovesTheWholeTree) {
    const Project project;
    project.make("site/data/deep/er");
    EXPECT_TRUE(gprj_delete(project.name().c_str()));
    EXPECT_FALSE(project.exists("site"));
}

TEST(GprjDelete, IgnoresOneSeparatorAtTheEnd) {
    const Project project;
    EXPECT_TRUE(gprj_delete((project.name() + "\\").c_str()));
    EXPECT_FALSE(project.exists("site"));
}

TEST(GprjDelete, DoesNotAskWhetherItIsAProject) {
    const Project project;
    EXPECT_TRUE(gprj_delete(project.name("site/data").c_str()));
    EXPECT_FALSE(project.exists("site/data"));
    EXPECT_TRUE(project.exists("site/networks"));
}

TEST(GprjDelete, MissingNameNullAndTheEmptyNameFail) {
    const Project project;
    EXPECT_FALSE(gprj_delete(project.name("missing").c_str()));
    EXPECT_FALSE(gprj_delete(nullptr));
    EXPECT_FALSE(gprj_delete(""));
}

TEST(GprjDelete, NameOf255BytesIsRemovedAndOf256IsNot) {
    const Project project;
    const std::string fits = "site/" + std::string(255 - project.name().size() - 1, 'x');
    project.make(fits);
    project.make(fits + "x");
    EXPECT_TRUE(gprj_delete(project.name(fits).c_str()));
    EXPECT_FALSE(gprj_delete(project.name(fits + "x").c_str()));
    EXPECT_FALSE(project.exists(fits));
    EXPECT_TRUE(project.exists(fits + "x"));
}

}  // namespace
