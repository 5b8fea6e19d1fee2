// Copying, moving and erasing one file.

#include "support/denial.h"
#include "support/descriptors.h"
#include "support/file_times.h"
#include "support/limits.h"
#include "support/links.h"
#include "support/matches_pattern.h"
#include "support/permissions.h"
#include "support/random_text.h"
#include "support/temporary_directory.h"

#include <orvix/core/file_status.h>
#include <orvix/core/path.h>
#include <orvix/gsl/files.h>
#include <orvix/gsl/status.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <string>

namespace fs = std::filesystem;
using orvix::test::CreationMask;
using orvix::test::Denial;
using orvix::test::FileSizeLimit;
using orvix::test::full_device;
using orvix::test::holds_for_ordinary_user;
using orvix::test::kept_mode;
using orvix::test::kept_time;
using orvix::test::links_are_seen;
using orvix::test::make_directory_link;
using orvix::test::make_link;
using orvix::test::MatchesPattern;
using orvix::test::memory_can_be_limited;
using orvix::test::MemoryLimit;
using orvix::test::mode_of;
using orvix::test::open_files;
using orvix::test::RandomText;
using orvix::test::ScopedVariable;
using orvix::test::set_mode;
using orvix::test::TemporaryDirectory;

namespace {

class CopyFile : public testing::Test {
protected:
    TemporaryDirectory site{TemporaryDirectory::Enter::yes};

    void SetUp() override { gerror_set_all_errors(GUI_ERR_NONE, 0); }
};
using MoveFile = CopyFile;
using EraseFile = CopyFile;

orvix::core::FileStatus status_of(const char* name) {
    orvix::core::FileStatus status{};
    EXPECT_EQ(orvix::core::read_status_utf8(name, &status), 0) << name;
    return status;
}

void set_times(const char* name, std::int64_t access, std::int64_t modification) {
    ASSERT_EQ(orvix::core::set_file_times(orvix::Path(name), access, modification), 0);
}

std::string random_bytes(std::size_t bytes) {
    RandomText random(7);
    std::string text(bytes, '\0');
    for (char& c : text) c = static_cast<char>(random.number(255));
    return text;
}

}  // namespace

TEST_F(CopyFile, HasTheSameBytes) {
    const std::string bytes = random_bytes(300001);
    site.write("from", bytes);
    EXPECT_TRUE(gfile_copy("from", "to"));
    EXPECT_EQ(site.read("to"), bytes);
    EXPECT_EQ(site.read("from"), bytes);
}

TEST_F(CopyFile, TakesNamesOfBothKinds) {
    site.write("a/from", "x");
    EXPECT_TRUE(gfile_copy("a/from", "a\\to"));
    EXPECT_TRUE(gfile_copy(site.name("a\\to").c_str(), site.name("last").c_str()));
    EXPECT_EQ(site.read("last"), "x");
}

TEST_F(CopyFile, FindsTheSourceIgnoringLetterCase) {
    site.write("Layout.CFG", "x");
    EXPECT_TRUE(gfile_copy("layout.cfg", "copy"));
    EXPECT_EQ(site.read("copy"), "x");
}

TEST_F(CopyFile, OfAnEmptyFileIsEmptyAndHasItsTimes) {
    site.write("from", "");
    set_times("from", 1000000000, 1100000000);
    EXPECT_TRUE(gfile_copy("from", "to"));
    EXPECT_EQ(status_of("to").st_size, 0);
    EXPECT_EQ(status_of("to").st_atime, 1000000000);
    EXPECT_EQ(status_of("to").st_mtime, 1100000000);
}

TEST_F(CopyFile, HasTheTimesOfTheSourceAsTheyWereBefore) {
    site.write("from", "x");
    set_times("from", 1000000000, 1100000000);
    EXPECT_TRUE(gfile_copy("from", "to"));
    EXPECT_EQ(status_of("to").st_atime, 1000000000);
    EXPECT_EQ(status_of("to").st_mtime, 1100000000);
}

TEST_F(CopyFile, DoesNotLookOlderThanItsSourceByAFractionOfASecond) {
    site.write("from", "x");
    EXPECT_TRUE(gfile_copy("from", "to"));
    EXPECT_EQ(fs::last_write_time("to"), kept_time(fs::last_write_time("from")));
}

TEST_F(CopyFile, OfAMissingFileFailsWith22AndMakesNothing) {
    EXPECT_FALSE(gfile_copy("missing", "to"));
    EXPECT_EQ(GuiErrno, GUI_ERR_FILE_NOT_FOUND);
    EXPECT_EQ(gerror_get_system_error(), ENOENT);
    EXPECT_FALSE(fs::exists("to"));
}

TEST_F(CopyFile, OfAMissingFileLeavesAnExistingTarget) {
    site.write("to", "before");
    EXPECT_FALSE(gfile_copy("missing", "to"));
    EXPECT_EQ(site.read("to"), "before");
}

TEST_F(CopyFile, OfNullAndOfTheEmptyNameFailsWith22) {
    for (const char* name : {static_cast<const char*>(nullptr), ""}) {
        gerror_set_error(GUI_ERR_NONE);
        EXPECT_FALSE(gfile_copy(name, "to"));
        EXPECT_EQ(GuiErrno, GUI_ERR_FILE_NOT_FOUND);
    }
}

TEST_F(CopyFile, ReplacesAnExistingTarget) {
    for (const std::size_t old_bytes : {0U, 1U, 99U, 100U, 101U, 5000U, 65536U, 200000U}) {
        for (const std::size_t new_bytes : {0U, 100U, 65536U, 65537U, 100000U}) {
            SCOPED_TRACE(std::to_string(old_bytes) + " by " + std::to_string(new_bytes));
            site.write("from", std::string(new_bytes, 'n'));
            site.write("to", std::string(old_bytes, 'o'));
            EXPECT_TRUE(gfile_copy("from", "to"));
            EXPECT_EQ(site.read("to"), std::string(new_bytes, 'n'));
        }
    }
}

TEST_F(CopyFile, DoesNotCopyPermissions) {
    site.write("from", "x");
    site.write("existing", "y");
    set_mode("from", 0700);
    set_mode("existing", 0640);
    {
        const CreationMask mask(022);
        EXPECT_TRUE(gfile_copy("from", "new"));
        EXPECT_TRUE(gfile_copy("from", "existing"));
    }
    EXPECT_EQ(mode_of("new"), kept_mode(0644));
    EXPECT_EQ(mode_of("existing"), kept_mode(0640));
}

TEST_F(CopyFile, OfAReadOnlyFileCanBeWritten) {
    site.write("from", "x");
    set_mode("from", 0444);
    EXPECT_TRUE(gfile_copy("from", "to"));
    EXPECT_EQ(mode_of("to") & 0200U, 0200U);
}

TEST_F(CopyFile, CopiesWhatALinkLeadsTo) {
    site.write("real", "x");
    make_link("real", "link");
    EXPECT_TRUE(gfile_copy("link", "to"));
    EXPECT_EQ(site.read("to"), "x");
    site.write("real", "y");
    EXPECT_EQ(site.read("to"), "x");
}

TEST_F(CopyFile, WritesThroughALinkAtTheTarget) {
    site.write("from", "new");
    site.write("real", "before");
    make_link("real", "link");
    EXPECT_TRUE(gfile_copy("from", "link"));
    EXPECT_EQ(site.read("real"), "new");
    site.write("real", "newer");
    EXPECT_EQ(site.read("link"), "newer");
}

TEST_F(CopyFile, ToAnUnwritablePlaceFailsWith23) {
    site.write("from", "x");
    EXPECT_FALSE(gfile_copy("from", "no\\such"));
    EXPECT_EQ(GuiErrno, GUI_ERR_FILE_OPEN);
    EXPECT_EQ(gerror_get_system_error(), ENOENT);

    gerror_set_error(GUI_ERR_NONE);
    fs::create_directory("dir");
    EXPECT_FALSE(gfile_copy("from", "dir"));
    EXPECT_EQ(GuiErrno, GUI_ERR_FILE_OPEN);
    EXPECT_EQ(gerror_get_system_error(), EISDIR);

    gerror_set_error(GUI_ERR_NONE);
    EXPECT_FALSE(gfile_copy("from", nullptr));
    EXPECT_EQ(GuiErrno, GUI_ERR_FILE_OPEN);
}

TEST_F(CopyFile, WhereNothingMayBeWrittenFailsWith23) {
    site.write("from", "x");
    site.write("dir/to", "before");
    set_mode("dir/to", 0444);
    const Denial denial = Denial::of_changing("dir");
    EXPECT_TRUE(holds_for_ordinary_user([] {
        return !gfile_copy("from", "dir\\to") && GuiErrno == GUI_ERR_FILE_OPEN && gerror_get_system_error() == EACCES;
    }));
    EXPECT_EQ(site.read("dir/to"), "before");
}

TEST_F(CopyFile, OfAnUnreadableFileFailsWith23AndMakesNothing) {
    site.write("secret", "x");
    const Denial denial = Denial::of_reading("secret");
    set_mode(".", 0777);
    EXPECT_TRUE(holds_for_ordinary_user([] {
        return !gfile_copy("secret", "to") && GuiErrno == GUI_ERR_FILE_OPEN && gerror_get_system_error() == EACCES;
    }));
    EXPECT_FALSE(fs::exists("to"));
}

TEST_F(CopyFile, OfADirectoryFailsWith23AndMakesNothing) {
    fs::create_directory("dir");
    EXPECT_FALSE(gfile_copy("dir", "to"));
    EXPECT_EQ(GuiErrno, GUI_ERR_FILE_OPEN);
    EXPECT_EQ(gerror_get_system_error(), EISDIR);
    EXPECT_FALSE(fs::exists("to"));
}

TEST_F(CopyFile, ThatCannotBeWrittenFailsWith25) {
    site.write("from", "x");
    EXPECT_FALSE(gfile_copy("from", full_device));
    EXPECT_EQ(GuiErrno, GUI_ERR_FILE_WRITE);
    EXPECT_EQ(gerror_get_system_error(), ENOSPC);
}

TEST_F(CopyFile, ThatFailsOnTheWayLeavesWhatItHasWritten) {
    site.write("from", std::string(10000, 'n'));
    site.write("to", std::string(9000, 'o'));
    bool copied = true;
    {
        const FileSizeLimit limit(4000);
        copied = gfile_copy("from", "to");
    }
    EXPECT_FALSE(copied);
    EXPECT_EQ(GuiErrno, GUI_ERR_FILE_WRITE);
    EXPECT_EQ(gerror_get_system_error(), FileSizeLimit::error);
    EXPECT_EQ(site.read("to"), std::string(4000, 'n'));
}

TEST_F(CopyFile, ThatIsShorterThanTheSourceSaidFailsWith24) {
    // The system reports a size of 4096 bytes for such files, and gives a few.
    const char* const source = orvix::test::short_file;
    if (gfile_filesize(source) != 4096) GTEST_SKIP() << "no file of this kind here";
    site.write("to", "before");
    EXPECT_FALSE(gfile_copy(source, "to"));
    EXPECT_EQ(GuiErrno, GUI_ERR_FILE_READ);
    EXPECT_EQ(site.read("to"), "");
}

TEST_F(CopyFile, OntoItselfFailsWith24AndLosesNothing) {
    site.write("f", "precious");
    fs::create_hard_link("f", "same");
    make_link("f", "link");
    for (const char* target : {"f", "F", ".\\f", "same", "link"}) {
        SCOPED_TRACE(target);
        gerror_set_error(GUI_ERR_NONE);
        EXPECT_FALSE(gfile_copy("f", target));
        EXPECT_EQ(GuiErrno, GUI_ERR_FILE_READ);
        EXPECT_EQ(site.read("f"), "precious");
    }
}

TEST_F(CopyFile, LeavesTheStatusWordAfterSuccess) {
    site.write("from", "x");
    GuiErrno = GUI_ERR_CLOCK_STOP;
    EXPECT_TRUE(gfile_copy("from", "to"));
    EXPECT_EQ(GuiErrno, GUI_ERR_CLOCK_STOP);
}

TEST_F(CopyFile, LeavesNoFileOpen) {
    site.write("from", "x");
    const auto before = open_files();
    EXPECT_TRUE(gfile_copy("from", "to"));
    EXPECT_FALSE(gfile_copy("from", "no\\such"));
    EXPECT_FALSE(gfile_copy("from", full_device));
    EXPECT_EQ(open_files(), before);
}

TEST_F(CopyFile, GoesOnInPiecesIfMemoryIsShort) {
    if (!memory_can_be_limited) GTEST_SKIP() << "the sanitizer needs address space";
    const std::string bytes = random_bytes(40 << 20);
    site.write("from", bytes);
    bool copied = false;
    {
        const MemoryLimit limit(24 << 20);
        copied = gfile_copy("from", "to");
    }
    EXPECT_TRUE(copied);
    EXPECT_TRUE(site.read("to") == bytes);
}

TEST_F(CopyFile, WithoutMemoryFailsWith27AndMakesNothing) {
    if (!memory_can_be_limited) GTEST_SKIP() << "the sanitizer needs address space";
    site.write("from", std::string(100000, 'x'));
    bool copied = true;
    {
        MemoryLimit limit(1 << 20);
        limit.use_up(1001);
        copied = gfile_copy("from", "to");
    }
    EXPECT_FALSE(copied);
    EXPECT_EQ(GuiErrno, GUI_ERR_FILE_COPY_ALLOC);
    EXPECT_FALSE(fs::exists("to"));
}

TEST_F(CopyFile, FailurePrintsNothingWithoutTheDebugMode) {
    const ScopedVariable mode("HXORVIX_DEBUG_MODE", nullptr);
    testing::internal::CaptureStderr();
    gfile_copy("missing", "to");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(CopyFile, FailurePrintsItsPlaceAndMessagesInTheDebugMode) {
    const ScopedVariable mode("HXORVIX_DEBUG_MODE", "error");
    testing::internal::CaptureStderr();
    gfile_copy("missing", "to");
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                MatchesPattern("\n\\? Error at line [1-9][0-9]* of file legacy-infrastructure/gsl/source/gfile\n"
                               "Cannot find file : [^\n]+\n"));
}

TEST_F(MoveFile, TakesTheFileWithItsTimesToTheTarget) {
    site.write("from", "x");
    set_times("from", 1000000000, 1100000000);
    EXPECT_TRUE(gfile_move("from", "to"));
    EXPECT_FALSE(fs::exists("from"));
    EXPECT_EQ(site.read("to"), "x");
    EXPECT_EQ(status_of("to").st_mtime, 1100000000);
}

TEST_F(MoveFile, OfAMissingFileLeavesTheTarget) {
    site.write("to", "before");
    EXPECT_FALSE(gfile_move("missing", "to"));
    EXPECT_EQ(GuiErrno, GUI_ERR_FILE_NOT_FOUND);
    EXPECT_EQ(site.read("to"), "before");
}

TEST_F(MoveFile, ThatCannotBeCopiedLeavesTheSource) {
    site.write("from", "x");
    EXPECT_FALSE(gfile_move("from", "no\\such"));
    EXPECT_EQ(GuiErrno, GUI_ERR_FILE_OPEN);
    EXPECT_EQ(site.read("from"), "x");
}

TEST_F(MoveFile, WhoseSourceCannotBeErasedLeavesBothAndFails) {
    site.write("dir/from", "x");
    set_mode(".", 0777);
    {
        const Denial denial = Denial::of_changing("dir");
        EXPECT_TRUE(
            holds_for_ordinary_user([] { return !gfile_move("dir\\from", "to") && GuiErrno == GUI_ERR_FILE_DELETE; }));
    }
    EXPECT_EQ(site.read("dir/from"), "x");
    EXPECT_EQ(site.read("to"), "x");
}

TEST_F(MoveFile, OntoItselfFailsAndLosesNothing) {
    site.write("full", "precious");
    site.write("empty", "");
    EXPECT_FALSE(gfile_move("full", "full"));
    EXPECT_EQ(site.read("full"), "precious");
    EXPECT_FALSE(gfile_move("empty", "empty"));
    EXPECT_TRUE(fs::exists("empty"));
}

TEST_F(EraseFile, RemovesFilesAndEmptyDirectories) {
    site.write("f", "x");
    fs::create_directory("dir");
    EXPECT_TRUE(gfile_erasefil("f"));
    EXPECT_TRUE(gfile_erasefil("dir"));
    EXPECT_TRUE(fs::is_empty("."));
}

TEST_F(EraseFile, RemovesALinkAndNotWhatItLeadsTo) {
    site.write("dir/f", "x");
    make_directory_link("dir", "link");
    make_link("dir/f", "other");
    EXPECT_EQ(gfile_erasefil("link"), links_are_seen());
    EXPECT_EQ(gfile_erasefil("other"), links_are_seen());
    EXPECT_EQ(fs::exists("link"), !links_are_seen());
    EXPECT_EQ(site.read("dir/f"), "x");
}

TEST_F(EraseFile, RemovesAReadOnlyFile) {
    site.write("f", "x");
    set_mode("f", 0444);
    EXPECT_TRUE(gfile_erasefil("f"));
    EXPECT_FALSE(fs::exists("f"));
}

TEST_F(EraseFile, ThatIsRefusedFailsWith26) {
    site.write("dir/f", "x");
    EXPECT_FALSE(gfile_erasefil("dir"));
    EXPECT_EQ(GuiErrno, GUI_ERR_FILE_DELETE);
    EXPECT_EQ(gerror_get_system_error(), ENOTEMPTY);
    EXPECT_FALSE(gfile_erasefil("missing"));
    EXPECT_EQ(gerror_get_system_error(), ENOENT);
    EXPECT_FALSE(gfile_erasefil(nullptr));
    EXPECT_EQ(site.read("dir/f"), "x");
}

TEST_F(EraseFile, FailurePrintsItsPlaceAndMessagesInTheDebugMode) {
    const ScopedVariable mode("HXORVIX_DEBUG_MODE", "all");
    testing::internal::CaptureStderr();
    gfile_erasefil("missing");
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                MatchesPattern("\n\\? Error at line [1-9][0-9]* of file legacy-infrastructure/gsl/source/gfile\n"
                               "Unable to delete file : [^\n]+\n"));
}
