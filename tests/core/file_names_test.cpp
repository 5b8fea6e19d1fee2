// How names of the library's form reach the host: drives, rooted and relative names, network names, letter case.

#include "support/broken_directory.h"
#include "support/drives.h"
#include "support/letter_case.h"
#include "support/links.h"
#include "support/temporary_directory.h"

#include <orvix/core/directory_saver.h>
#include <orvix/core/file_status.h>
#include <orvix/core/files.h>
#include <orvix/core/path.h>
#include <orvix/core/stored_names.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <string>

namespace fs = std::filesystem;
using orvix::Path;
using orvix::test::drives_are_variables;
using orvix::test::is_entry;
using orvix::test::letter_case_counts;
using orvix::test::links_are_seen;
using orvix::test::make_directory_link;
using orvix::test::make_link;
using orvix::test::MappedDrive;
using orvix::test::ScopedVariable;
using orvix::test::TemporaryDirectory;
using orvix::test::write_beside;

namespace {

class FileNames : public testing::Test {
protected:
    TemporaryDirectory site{TemporaryDirectory::Enter::yes};
    std::string host(const std::string& relative) const { return (site.path() / relative).string(); }
};

// What the host's spelling is to be where drives stand for directories, and on Windows, where it is the library's own.
std::string spelled(const std::string& in_directories, const std::string& on_windows) {
    return drives_are_variables ? in_directories : on_windows;
}

constexpr const char* one_name = "names that differ in letter case alone are one name here";

std::string write_through(const Path& path, const char* text) {
    std::FILE* stream = path.fopen("w");
    if (stream == nullptr) return "not opened";
    std::fputs(text, stream);
    std::fclose(stream);
    return "";
}

}  // namespace

TEST_F(FileNames, DriveCIsTheRootOfTheHost) {
    EXPECT_EQ(Path("C:\\").host(), spelled("/", "C:\\"));
    EXPECT_TRUE(Path("C:\\").is_directory());
}

TEST_F(FileNames, SeparatorsOfBothKindsDoAndRunsCountAsOne) {
    EXPECT_EQ(Path("C:\\srv//site\\\\x/").host(), spelled("/srv/site/x/", "C:\\srv\\\\site\\\\x\\"));
    EXPECT_EQ(Path("a\\\\b//c").host(), spelled("a/b/c", "a\\\\b\\\\c"));
    site.write("a/b/c", "x");
    EXPECT_TRUE(Path("a\\\\b//c").exists());
}

TEST_F(FileNames, ADriveStandsForTheDirectoryThatItIsMappedTo) {
    site.write("mnt/parts/r1.lib", "x");
    const MappedDrive drive('D', site.path() / "mnt");
    EXPECT_EQ(Path("D:\\parts\\r1.lib").host(), spelled(host("mnt/parts/r1.lib"), "D:\\parts\\r1.lib"));
    EXPECT_TRUE(Path("d:/parts/r1.lib").is_regular_file());
    EXPECT_TRUE(Path("D:\\").is_directory());
}

TEST_F(FileNames, TheVariableOfCReplacesTheRootWhereDrivesAreVariables) {
    site.write("c/x", "x");
    const ScopedVariable drive("ORVIX_DRIVE_C", host("c").c_str());
    EXPECT_EQ(Path("C:\\x").exists(), drives_are_variables);
    EXPECT_EQ(Path("C:\\x").host(), spelled(host("c/x"), "C:\\x"));
}

TEST_F(FileNames, ALetterWithoutAMappingNamesNothing) {
    const ScopedVariable drive("ORVIX_DRIVE_Q", nullptr);
    errno = 0;
    EXPECT_FALSE(Path("Q:\\").exists());
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(Path("q:x").host(), "");
    EXPECT_EQ(orvix::open_utf8("Q:\\x", 0, 0), -1);
    EXPECT_EQ(orvix::chdir_utf8("Q:"), -1);
    EXPECT_FALSE(Path("Q:\\a").create_directory());
}

TEST_F(FileNames, AMappingThatIsNoAbsoluteDirectoryNamesNothing) {
    for (const char* value : {"", "relative/dir", "D:\\x"}) {
        const ScopedVariable drive("ORVIX_DRIVE_Q", value);
        EXPECT_EQ(Path("Q:\\x").host(), "");
    }
}

TEST_F(FileNames, NetworkNamesNameNothing) {
    for (const char* name : {"\\\\server\\share", "//tmp", "\\/tmp"}) {
        errno = 0;
        EXPECT_FALSE(Path(name).exists()) << name;
        EXPECT_EQ(errno, ENOENT);
    }
}

TEST_F(FileNames, TheEmptyNameAndAZeroByteNameNothing) {
    errno = 0;
    EXPECT_FALSE(Path("").exists());
    EXPECT_EQ(errno, ENOENT);
    site.write("a", "x");
    EXPECT_FALSE(Path(std::string("a\0b", 3)).exists());
}

TEST_F(FileNames, ARootedNameLiesOnTheCurrentDrive) {
    site.write("mnt/deep/x", "");
    site.write("mnt/top", "");
    const MappedDrive drive('D', site.path() / "mnt");
    EXPECT_EQ(Path("\\top").host(),
              spelled("/top", "\\top"));  // outside the mapped directory another drive is the current
    EXPECT_FALSE(Path("\\top").exists());
    ASSERT_EQ(orvix::chdir_utf8("D:\\deep"), 0);
    EXPECT_EQ(Path("\\top").host(), spelled(host("mnt/top"), "\\top"));
    EXPECT_TRUE(Path("\\top").exists());
    EXPECT_EQ(orvix::core::current_drive(), 'D');
}

// Where drives are variables it is the one with the longest root, else the one by which the directory was entered.
TEST_F(FileNames, TheCurrentDriveIsOneOfSeveralThatHoldTheDirectory) {
    fs::create_directories(site.path() / "a/b/c");
    const MappedDrive outer('E', site.path() / "a");
    const MappedDrive inner('F', site.path() / "a/b");
    ASSERT_EQ(orvix::chdir_utf8("E:\\b\\c"), 0);
    EXPECT_EQ(orvix::core::current_drive(), drives_are_variables ? 'F' : 'E');
    EXPECT_EQ(orvix::getcwd_utf8(), drives_are_variables ? "F:\\c" : "E:\\b\\c");
    EXPECT_EQ(Path::current_path().native(), orvix::getcwd_utf8());
}

TEST_F(FileNames, ADriveWhoseRootIsALinkHoldsTheCurrentDirectory) {
    fs::create_directories(site.path() / "real/x");
    make_directory_link(site.path() / "real", site.path() / "link");
    const MappedDrive drive('D', site.path() / "link");
    ASSERT_EQ(orvix::chdir_utf8("D:\\x"), 0);
    EXPECT_EQ(orvix::getcwd_utf8(), "D:\\x");
}

TEST_F(FileNames, ARootOnlyHoldsWholeComponents) {
    fs::create_directories(site.path() / "mnt");
    fs::create_directories(site.path() / "mnt2");
    const MappedDrive drive('D', site.path() / "mnt");
    fs::current_path(site.path() / "mnt2");
    EXPECT_EQ(orvix::core::current_drive(), 'C');
}

TEST_F(FileNames, WithNoDriveOverTheCurrentDirectoryRelativeNamesStillWork) {
    fs::create_directory(site.path() / "c");
    site.write("x", "");
    const ScopedVariable drive("ORVIX_DRIVE_C", host("c").c_str());
    EXPECT_EQ(orvix::core::current_drive(), drives_are_variables ? '\0' : 'C');
    EXPECT_EQ(orvix::getcwd_utf8(), drives_are_variables ? "" : site.name());
    EXPECT_FALSE(Path("\\x").exists());
    EXPECT_TRUE(Path("x").exists());
}

TEST_F(FileNames, ADriveRelativeNameIsTakenFromTheCurrentDirectoryOnTheCurrentDrive) {
    site.write("x", "");
    EXPECT_TRUE(Path("c:x").exists());
    EXPECT_EQ(Path("c:x").host(), spelled("x", "c:x"));
    EXPECT_EQ(Path("c:").host(), spelled(".", "c:"));
}

TEST_F(FileNames, ADirectoryWithABackslashInItsHostNameCannotBeTold) {
    if (!drives_are_variables) GTEST_SKIP() << "a name holds no backslash here";
    fs::create_directory(site.path() / "a\\b");
    fs::current_path(site.path() / "a\\b");
    EXPECT_EQ(orvix::getcwd_utf8(), "");
    char untouched = '#';
    EXPECT_EQ(orvix::core::put_current_directory(&untouched), 0U);
    EXPECT_EQ(untouched, '#');
}

TEST_F(FileNames, NamesBelowTheCurrentDirectoryIgnoreLetterCase) {
    site.write("File", "");
    EXPECT_TRUE(Path::current_path().append("FILE").exists());
}

TEST_F(FileNames, ADriveRelativeNameIsTakenFromTheRootOfAnotherDrive) {
    site.write("mnt/x", "");
    const MappedDrive drive('D', site.path() / "mnt");
    EXPECT_EQ(Path("d:x").host(), spelled(host("mnt/x"), "d:x"));
    EXPECT_EQ(Path("d:").host(), spelled(host("mnt") + "/", "d:"));
    EXPECT_TRUE(Path("d:x").exists());
}

TEST_F(FileNames, TheCurrentDirectoryIsToldInTheLibrarysForm) {
    EXPECT_EQ(orvix::getcwd_utf8(), site.name());
    EXPECT_EQ(Path::current_path().string(), site.name());
}

TEST_F(FileNames, CompletePathIsAbsoluteAgainstTheCurrentDirectory) {
    EXPECT_EQ(Path("a/b").complete_path().native(), site.name() + "\\a\\b");
    EXPECT_EQ(Path("c:a").complete_path().native(), site.name() + "\\a");
    EXPECT_EQ(Path("").complete_path().native(), site.name());
    EXPECT_EQ(Path("/tmp/x").complete_path().native(), "C:\\tmp\\x");
    EXPECT_EQ(Path("Q:/x").complete_path().native(), "Q:\\x");
    EXPECT_EQ(Path("q:x").complete_path().native(), "q:\\x");
    EXPECT_EQ(Path("\\\\srv\\x").complete_path().native(), "\\\\srv\\x");
    EXPECT_EQ(Path("..\\x").complete_path().native(), site.name() + "\\..\\x");
}

TEST_F(FileNames, FromFsPathGivesTheLibrarysForm) {
    EXPECT_EQ(Path::from_fs_path(site.path() / "srv/site").string(), site.name("srv\\site"));
    EXPECT_EQ(Path::from_fs_path("a/b").string(), "a\\b");
}

TEST_F(FileNames, FromFsPathFindsTheDriveOfAnAbsoluteHostName) {
    const std::string mnt = site.name("mnt");
    const MappedDrive drive('D', site.path() / "mnt");
    EXPECT_EQ(Path::from_fs_path(site.path() / "mnt/site").string(),
              drives_are_variables ? "D:\\site" : mnt + "\\site");
    EXPECT_EQ(Path::from_fs_path(site.path() / "mnt").string(), drives_are_variables ? "D:\\" : mnt);
}

TEST_F(FileNames, APathThatNoDriveHoldsStillWorksThroughFromFsPath) {
    const ScopedVariable drive("ORVIX_DRIVE_C", host("elsewhere").c_str());
    site.write("x", "");
    EXPECT_TRUE(Path::from_fs_path(site.path() / "x").exists());
}

// Letter case.

TEST_F(FileNames, ANameIsFoundUnderOtherLetterCase) {
    site.write("Lib/Parts/R1.Lib", "x");
    EXPECT_TRUE(Path(site.name("lib\\parts\\r1.lib")).is_regular_file());
    EXPECT_TRUE(Path("LIB\\PARTS").is_directory());
    EXPECT_EQ(Path("lib/parts/r1.LIB").host(), spelled("Lib/Parts/R1.Lib", "lib\\parts\\r1.LIB"));
    EXPECT_EQ(orvix::filesize_utf8("lib\\parts\\r1.lib"), 1U);
}

TEST_F(FileNames, TheExactSpellingWinsOverOthers) {
    write_beside("a", "lower");
    write_beside("A", "upper!");
    EXPECT_EQ(orvix::filesize_utf8("a"), 5U);
    EXPECT_EQ(orvix::filesize_utf8("A"), 6U);
}

TEST_F(FileNames, WithSeveralMatchesTheNameStandsAsTyped) {
    if (!letter_case_counts) GTEST_SKIP() << one_name;
    site.write("Ab", "");
    site.write("aB", "");
    EXPECT_FALSE(Path("ab").exists());
    EXPECT_EQ(Path("ab").host(), "ab");
    EXPECT_EQ(write_through("ab", "new"), "");
    EXPECT_EQ(site.read("ab"), "new");
    EXPECT_EQ(site.read("Ab"), "");
}

TEST_F(FileNames, AnAmbiguousDirectoryLeavesAllBehindItAsTyped) {
    if (!letter_case_counts) GTEST_SKIP() << one_name;
    site.write("Dir/X", "");
    site.write("dIR/X", "");
    EXPECT_EQ(Path("dir/x").host(), "dir/x");
}

TEST_F(FileNames, TheLibraryIgnoresTheCaseOfAsciiLettersAlone) {
    site.write("\xc3\x84", "");
    EXPECT_EQ(Path("\xc3\xa4").exists(), !letter_case_counts);
}

TEST_F(FileNames, WritingReplacesTheFileThatDiffersInLetterCaseAlone) {
    site.write("Setup.cfg", "old");
    EXPECT_EQ(write_through("SETUP.CFG", "new"), "");
    EXPECT_EQ(site.read("Setup.cfg"), "new");
    EXPECT_FALSE(is_entry("SETUP.CFG"));
}

TEST_F(FileNames, ANewFileGoesIntoTheDirectoryThatMatches) {
    fs::create_directory(site.path() / "Out");
    EXPECT_EQ(write_through("OUT\\new.txt", "x"), "");
    EXPECT_EQ(site.read("Out/new.txt"), "x");
}

TEST_F(FileNames, NoDirectoryIsMadeBesideOneThatDiffersInLetterCaseAlone) {
    fs::create_directory(site.path() / "Out");
    EXPECT_FALSE(Path("out").create_directory());
    EXPECT_FALSE(is_entry("out"));
}

TEST_F(FileNames, ExclusiveCreationMeetsTheFileThatDiffersInLetterCaseAlone) {
    site.write("A.txt", "");
    errno = 0;
    EXPECT_EQ(Path("a.TXT").fopen("wx"), nullptr);
    EXPECT_EQ(errno, EEXIST);
}

TEST_F(FileNames, AFileMadeByAnotherProgramIsSeenAtOnce) {
    EXPECT_FALSE(Path("late.txt").exists());
    site.write("LATE.txt", "");
    EXPECT_TRUE(Path("late.txt").exists());
    fs::remove(site.path() / "LATE.txt");
    EXPECT_FALSE(Path("late.txt").exists());
    site.write("Late.TXT", "");
    EXPECT_TRUE(Path("late.txt").exists());
}

TEST_F(FileNames, ForExactPathsTheLibraryNeverIgnoresLetterCase) {
    site.write("A", "");
    EXPECT_EQ(Path::exact("a").exists(), !letter_case_counts);
    EXPECT_TRUE(Path::exact("A").exists());
    EXPECT_EQ(Path::exact(site.name()).append("a").exists(), !letter_case_counts);
    EXPECT_EQ(Path::exact("a").create_directory(), letter_case_counts);
    EXPECT_EQ(is_entry("a"), letter_case_counts);
}

TEST_F(FileNames, DeletingFindsTheOneMatch) {
    site.write("Old.txt", "");
    EXPECT_TRUE(Path("old.TXT").delete_file_or_directory());
    EXPECT_FALSE(fs::exists(site.path() / "Old.txt"));
}

TEST_F(FileNames, TheStoredSpellingIsTold) {
    site.write("Lib/R1.Lib", "");
    std::string part = "untouched";
    EXPECT_TRUE(orvix::core::stored_last_part("LIB\\r1.lib", &part));
    EXPECT_EQ(part, "R1.Lib");
    EXPECT_FALSE(orvix::core::stored_last_part("lib\\missing", &part));
    EXPECT_EQ(part, "R1.Lib");
    EXPECT_EQ(orvix::core::long_name(site.name("lib\\r1.LIB")), site.name("Lib\\R1.Lib"));
    EXPECT_EQ(orvix::core::long_name("lib\\\\r1.lib"), "Lib\\\\R1.Lib");
    EXPECT_EQ(orvix::core::long_name("missing"), "");
    const std::string short_form = orvix::core::short_name("lib/r1.lib");
    EXPECT_EQ(Path::compare_filenames(short_form, "lib\\r1.lib"), 0) << short_form;
    EXPECT_EQ(orvix::core::short_name("missing"), "");
}

TEST_F(FileNames, ADanglingLinkIsAName) {
    make_link("nowhere", site.path() / "link");
    EXPECT_FALSE(Path("link").exists());
    // Where links are not seen one that leads nowhere is no name.
    using orvix::core::FileKind;
    EXPECT_EQ(orvix::core::kind_of_name("link"), links_are_seen() ? FileKind::link : FileKind::missing);
    EXPECT_EQ(orvix::core::is_symbolic_link("link"), links_are_seen());
    EXPECT_FALSE(orvix::core::is_symbolic_link("missing"));
    EXPECT_EQ(Path("link").delete_file_or_directory(), links_are_seen());
}

TEST_F(FileNames, TheKindOfATargetIsThatBehindLinks) {
    using orvix::core::FileKind;
    using orvix::core::kind_of_target;
    site.write("Dir/file", "");
    make_link("Dir/file", site.path() / "to_file");
    make_directory_link("Dir", site.path() / "to_dir");
    make_link("nowhere", site.path() / "to_nothing");
    EXPECT_EQ(kind_of_target("dir\\FILE"), FileKind::regular);
    EXPECT_EQ(kind_of_target("to_file"), FileKind::regular);
    EXPECT_EQ(kind_of_target("to_dir"), FileKind::directory);
    EXPECT_EQ(kind_of_target("to_nothing"), FileKind::missing);
    EXPECT_EQ(errno, ENOENT);
}

TEST_F(FileNames, DeletingALinkToADirectoryLeavesTheDirectory) {
    site.write("dir/x", "kept");
    make_directory_link("dir", site.path() / "link");
    EXPECT_EQ(Path("link").delete_file_or_directory(), links_are_seen());
    EXPECT_EQ(site.read("dir/x"), "kept");
}

TEST_F(FileNames, ASymbolicLinkThatCannotBeReadThrows) {
    const orvix::test::UnreadableStatus unreadable;
    try {
        orvix::core::is_symbolic_link(unreadable.name());
        FAIL() << "no exception";
    } catch (const fs::filesystem_error& error) {
        EXPECT_NE(std::string(error.what()).find("symlink_status"), std::string::npos);
        EXPECT_EQ(error.code().value(), unreadable.error());
    }
}
