// Calls on files and directories through core.

#include "support/commands.h"
#include "support/descriptors.h"
#include "support/links.h"
#include "support/permissions.h"
#include "support/temporary_directory.h"
#include "support/temporary_place.h"

#include <orvix/core.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <set>
#include <stdexcept>
#include <string>
#include <system_error>

#include <fcntl.h>

namespace fs = std::filesystem;
using orvix::Path;
using orvix::test::close_descriptor;
using orvix::test::is_inherited;
using orvix::test::kept_mode;
using orvix::test::make_directory_link;
using orvix::test::make_link;
using orvix::test::mode_of;
using orvix::test::ScopedVariable;
using orvix::test::temporary_place;
using orvix::test::TemporaryDirectory;

namespace {

class Files : public testing::Test {
protected:
    TemporaryDirectory site{TemporaryDirectory::Enter::yes};
};

}  // namespace

TEST_F(Files, FopenReadsWritesAndAppends) {
    std::FILE* stream = Path("f.txt").fopen("w");
    ASSERT_NE(stream, nullptr);
    EXPECT_FALSE(is_inherited(orvix::core::descriptor_of(stream)));
    std::fputs("one", stream);
    std::fclose(stream);
    stream = Path("f.txt").fopen("ab");
    ASSERT_NE(stream, nullptr);
    std::fputs("two", stream);
    std::fclose(stream);
    EXPECT_EQ(site.read("f.txt"), "onetwo");
    stream = Path("f.txt").fopen("r+b");
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(std::fgetc(stream), 'o');
    std::fclose(stream);
    stream = Path("f.txt").fopen("w+b");
    ASSERT_NE(stream, nullptr);
    std::fclose(stream);
    EXPECT_EQ(site.read("f.txt"), "");
}

TEST_F(Files, FopenOfAMissingFileFailsWithEnoent) {
    errno = 0;
    EXPECT_EQ(Path("missing").fopen("r"), nullptr);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_FALSE(fs::exists(site.path() / "missing"));
}

TEST_F(Files, FopenRefusesADirectory) {
    errno = 0;
    EXPECT_EQ(Path(site.name()).fopen("r"), nullptr);
    EXPECT_EQ(errno, EISDIR);
    EXPECT_EQ(Path(site.name()).fopen("w"), nullptr);
    EXPECT_EQ(errno, EISDIR);
}

TEST_F(Files, FopenRefusesWhatIsNoMode) {
    for (const char* mode : {"", "q", "+r"}) {
        errno = 0;
        EXPECT_EQ(Path("f").fopen(mode), nullptr);
        EXPECT_EQ(errno, EINVAL);
    }
    EXPECT_EQ(Path("f").fopen(nullptr), nullptr);
}

TEST_F(Files, CreateDirectoryIsTrueOnlyIfItMadeOne) {
    EXPECT_TRUE(Path("d").create_directory());
    EXPECT_FALSE(Path("d").create_directory());
    EXPECT_FALSE(Path("x\\y").create_directory());
    EXPECT_TRUE(Path("d\\e\\").create_directory());
}

TEST_F(Files, CreateDirectoriesMakesAllMissingLevels) {
    EXPECT_TRUE(Path("a/b\\c").create_directories());
    EXPECT_TRUE(fs::is_directory(site.path() / "a/b/c"));
    EXPECT_FALSE(Path("a/b\\c").create_directories());
    EXPECT_TRUE(Path("a/b/d/").create_directories());
    EXPECT_TRUE(Path(site.name("p\\q")).create_directories());
    EXPECT_TRUE(fs::is_directory(site.path() / "p/q"));
}

TEST_F(Files, CreateDirectoriesFailsBehindAFile) {
    site.write("file", "");
    EXPECT_FALSE(Path("file\\a\\b").create_directories());
}

TEST_F(Files, DeleteRemovesFilesAndEmptyDirectoriesOnly) {
    site.write("dir/file", "");
    EXPECT_FALSE(Path("dir").delete_file_or_directory());
    EXPECT_EQ(errno, ENOTEMPTY);
    EXPECT_TRUE(Path("dir\\file").delete_file_or_directory());
    EXPECT_TRUE(Path("dir").delete_file_or_directory());
    EXPECT_FALSE(Path("dir").delete_file_or_directory());
    EXPECT_EQ(errno, ENOENT);
}

TEST_F(Files, TestsOfKindFollowLinks) {
    site.write("file", "");
    fs::create_directory(site.path() / "dir");
    make_link("file", site.path() / "to_file");
    make_directory_link("dir", site.path() / "to_dir");
    EXPECT_TRUE(Path("to_file").is_regular_file());
    EXPECT_FALSE(Path("to_file").is_directory());
    EXPECT_TRUE(Path("to_dir").is_directory());
    EXPECT_FALSE(Path("missing").is_directory());
    EXPECT_FALSE(Path("missing").is_regular_file());
}

TEST_F(Files, OpenGivesADescriptorThatChildrenDoNotInherit) {
    site.write("file", "abc");
    const int file = orvix::open_utf8("file", O_RDONLY, 0);
    ASSERT_NE(file, -1);
    EXPECT_FALSE(is_inherited(file));
    close_descriptor(file);
}

TEST_F(Files, OpenCreatesWithThePermissionGiven) {
    const int file = orvix::open_utf8("new", O_CREAT | O_EXCL | O_RDWR, 0600);
    ASSERT_NE(file, -1);
    close_descriptor(file);
    EXPECT_EQ(mode_of("new"), kept_mode(0600));
    errno = 0;
    EXPECT_EQ(orvix::open_utf8("new", O_CREAT | O_EXCL | O_RDWR, 0600), -1);
    EXPECT_EQ(errno, EEXIST);
}

TEST_F(Files, AccessTellsWhatTheProcessMay) {
    site.write("file", "");
    EXPECT_EQ(orvix::access_utf8("file", 4), 0);
    EXPECT_EQ(orvix::access_utf8("file", 2), 0);
    EXPECT_EQ(orvix::access_utf8("file", 0), 0);
    EXPECT_EQ(orvix::access_utf8("missing", 4), -1);
}

TEST_F(Files, FilesizeOfAMissingFileIsZero) {
    site.write("file", "12345");
    EXPECT_EQ(orvix::filesize_utf8("file"), 5U);
    errno = 0;
    EXPECT_EQ(orvix::filesize_utf8("missing"), 0U);
    EXPECT_EQ(errno, ENOENT);
}

TEST_F(Files, ChmodAndUnlinkAreTheSystems) {
    site.write("file", "");
    EXPECT_EQ(orvix::chmod_utf8("file", 0400), 0);
    EXPECT_EQ(mode_of("file"), kept_mode(0400));
    EXPECT_EQ(orvix::unlink_utf8("file"), 0);
    EXPECT_EQ(orvix::unlink_utf8("file"), -1);
    EXPECT_EQ(orvix::chmod_utf8("file", 0400), -1);
}

TEST_F(Files, SetFileTimesTakesSecondsSince1970) {
    site.write("file", "");
    ASSERT_EQ(orvix::core::set_file_times("file", 1000000000, 1100000000), 0);
    orvix::core::FileStatus status;
    ASSERT_EQ(orvix::core::read_status("file", &status), 0);
    EXPECT_EQ(status.st_atime, 1000000000);
    EXPECT_EQ(status.st_mtime, 1100000000);
}

TEST_F(Files, DirectorySaverGoesBackAtTheEndOfItsScope) {
    fs::create_directory(site.path() / "in");
    {
        orvix::DirectorySaver saver;
        EXPECT_TRUE(saver.change_dir("in"));
        EXPECT_EQ(orvix::getcwd_utf8(), site.name("in"));
    }
    EXPECT_EQ(orvix::getcwd_utf8(), site.name());
}

TEST_F(Files, DirectorySaverGoesBackWhenAnExceptionLeavesItsScope) {
    fs::create_directory(site.path() / "in");
    EXPECT_THROW(
        {
            orvix::DirectorySaver saver;
            saver.change_dir("in");
            throw std::runtime_error("out");
        },
        std::runtime_error);
    EXPECT_EQ(orvix::getcwd_utf8(), site.name());
}

TEST_F(Files, DirectorySaverStaysWhereItIsWhenTheDirectoryCannotBeEntered) {
    orvix::DirectorySaver saver;
    EXPECT_FALSE(saver.change_dir("missing"));
    EXPECT_EQ(orvix::getcwd_utf8(), site.name());
}

TEST_F(Files, DirectorySaverFindsADirectoryAgainThatSomebodyWantsToRename) {
    fs::create_directories(site.path() / "one/in");
    fs::current_path(site.path() / "one");
    std::error_code refused;
    {
        orvix::DirectorySaver saver;
        ASSERT_TRUE(saver.change_dir("in"));
        fs::rename(site.path() / "one", site.path() / "two", refused);
    }
    EXPECT_EQ(static_cast<bool>(refused), !orvix::test::current_directory_can_be_renamed);
    EXPECT_EQ(orvix::getcwd_utf8(), site.name(refused ? "one" : "two"));
}

TEST_F(Files, TemporaryFileIsThereForItsOwnerAloneAndGoneAfterwards) {
    std::string host;
    {
        const orvix::TemporaryFile file("env_file", "cfg");
        host = file.path().host();
        ASSERT_TRUE(fs::is_regular_file(host));
        EXPECT_EQ(mode_of(host), kept_mode(0600));
        EXPECT_TRUE(fs::path(host).filename().string().starts_with("env_file"));
        EXPECT_EQ(fs::path(host).extension(), ".cfg");
    }
    EXPECT_FALSE(fs::exists(host));
}

TEST_F(Files, TemporaryFileLiesWhereTheSystemIsToldTo) {
    const ScopedVariable place(temporary_place, site.path());
    const orvix::TemporaryFile file("x", ".y");
    EXPECT_EQ(fs::path(file.path().host()).parent_path(), site.path());
    EXPECT_EQ(fs::path(file.path().host()).extension(), ".y");
}

TEST_F(Files, TemporaryFileLiesInTheDirectoryOfItsPrefix) {
    fs::create_directory(site.path() / "in");
    const orvix::TemporaryFile file("in\\x", "y");
    EXPECT_TRUE(fs::path(file.path().host()).parent_path().string().ends_with("in"));
    EXPECT_EQ(std::distance(fs::directory_iterator(site.path() / "in"), fs::directory_iterator()), 1);
}

TEST_F(Files, TemporaryFileIsOpenForWritingAndReading) {
    orvix::TemporaryFile temporary("x", "y");
    ASSERT_TRUE(temporary.file().is_open());
    EXPECT_EQ(temporary.file().write("text", 4), 4U);
    EXPECT_TRUE(temporary.file().rewind());
    char text[8] = "";
    EXPECT_EQ(temporary.file().read(text, sizeof text), 4U);
    EXPECT_STREQ(text, "text");
    EXPECT_EQ(orvix::test::read_file(temporary.path().host()), "text");
}

TEST_F(Files, TemporaryFileLiesInTheLastResortIfItsPlaceDoesNotWork) {
    const orvix::test::NoTemporaryPlace missing;
    const orvix::TemporaryFile file("x", "y");
    EXPECT_EQ(fs::path(file.path().host()).parent_path(), orvix::test::last_temporary_place());
}

TEST_F(Files, TemporaryFileThatCannotBeMadeHasAnEmptyPath) {
    const orvix::TemporaryFile file("missing\\x", "y");
    EXPECT_EQ(file.path().string(), "");
    EXPECT_FALSE(orvix::TemporaryFile("missing\\x", "y").file().is_open());
}

TEST_F(Files, TemporaryFileWorksWhereNoDriveHoldsItsDirectory) {
    const ScopedVariable drive("ORVIX_DRIVE_C", site.path() / "elsewhere");
    const ScopedVariable place(temporary_place, site.path());
    const orvix::TemporaryFile file("x", "y");
    std::FILE* stream = file.path().fopen("w");
    ASSERT_NE(stream, nullptr);
    std::fclose(stream);
}

TEST_F(Files, TemporaryNamesAreFreshAndLieWhereAsked) {
    fs::create_directory(site.path() / "in");
    std::set<std::string> names;
    for (int i = 0; i < 100; ++i) names.insert(orvix::core::temporary_name("in", "pre"));
    EXPECT_EQ(names.size(), 100U);
    EXPECT_TRUE(names.begin()->starts_with("in\\pre")) << *names.begin();
    EXPECT_FALSE(Path(*names.begin()).exists());
}

TEST_F(Files, TemporaryNamesFallBackToTheSystemsDirectory) {
    const ScopedVariable place(temporary_place, site.path());
    EXPECT_TRUE(orvix::core::temporary_name("missing", nullptr).starts_with(site.name() + "\\"));
    EXPECT_TRUE(orvix::core::temporary_name(nullptr, "p").starts_with(site.name() + "\\p"));
}

TEST_F(Files, DirectoryScanGivesEveryEntryOnce) {
    std::multiset<std::string> expected{".", ".."};
    for (int i = 0; i < 3000; ++i) {
        const std::string name = "entry_with_a_name_of_some_length_" + std::to_string(i);
        site.write(name, "");
        expected.insert(name);
    }
    orvix::core::DirectoryScan scan;
    ASSERT_TRUE(scan.open("."));
    std::multiset<std::string> seen;
    for (std::string_view name; scan.next(&name);) seen.insert(std::string(name));
    EXPECT_EQ(seen, expected);
    EXPECT_TRUE(scan.close());
    EXPECT_TRUE(scan.close());
}

TEST_F(Files, DirectoryScanOfNoDirectoryFails) {
    site.write("file", "");
    orvix::core::DirectoryScan scan;
    EXPECT_FALSE(scan.open("file"));
    EXPECT_FALSE(scan.open("missing"));
    std::string_view name;
    EXPECT_FALSE(scan.next(&name));
}

TEST_F(Files, FreeSpaceIsThatOfTheVolume) {
    std::uint64_t bytes = 0;
    ASSERT_TRUE(orvix::core::total_free_bytes(site.name(), &bytes));
    const auto expected = fs::space(site.path()).free;
    EXPECT_NEAR(static_cast<double>(bytes), static_cast<double>(expected), 1e9);
    EXPECT_FALSE(orvix::core::total_free_bytes("missing", &bytes));
}

TEST_F(Files, PipesRunACommandAndTellItsStatus) {
    std::FILE* pipe = orvix::core::open_pipe(orvix::test::echo_one_and_exit_3, "r");
    ASSERT_NE(pipe, nullptr);
    char text[16] = "";
    EXPECT_NE(std::fgets(text, sizeof text, pipe), nullptr);
    EXPECT_STREQ(text, "one\n");
    EXPECT_EQ(orvix::core::close_pipe(pipe), orvix::test::status_of_exit(3));
}

TEST_F(Files, PipesRefuseWhatIsNoModeAndNoCommand) {
    EXPECT_EQ(orvix::core::open_pipe(nullptr, "r"), nullptr);
    EXPECT_EQ(orvix::core::open_pipe("true", "x"), nullptr);
    EXPECT_EQ(orvix::core::open_pipe("true", nullptr), nullptr);
    EXPECT_EQ(orvix::core::close_pipe(nullptr), -1);
}

TEST_F(Files, TheProcessNumberIsTheSystems) { EXPECT_EQ(orvix::core::process_number(), orvix::test::process_number()); }
