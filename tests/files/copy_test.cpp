// Copying, moving and erasing one file.

#include "files/ordinary_user.h"
#include "support/random_text.h"
#include "support/temporary_directory.h"

#include <orvix/gsl/files.h>
#include <orvix/gsl/status.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;
using orvix::test::holds_for_ordinary_user;
using orvix::test::RandomText;
using orvix::test::ScopedVariable;
using orvix::test::TemporaryDirectory;
using testing::MatchesRegex;

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool memory_can_be_limited = false;
#else
constexpr bool memory_can_be_limited = true;
#endif

class CopyFile : public testing::Test {
protected:
    TemporaryDirectory site{TemporaryDirectory::Enter::yes};

    void SetUp() override { gerror_set_all_errors(GUI_ERR_NONE, 0); }
};
using MoveFile = CopyFile;
using EraseFile = CopyFile;

struct stat status_of(const char* name) {
    struct stat status {};
    EXPECT_EQ(stat(name, &status), 0) << name;
    return status;
}

void set_times(const char* name, time_t access, time_t modification) {
    const timespec times[2] = {{.tv_sec = access, .tv_nsec = 0}, {.tv_sec = modification, .tv_nsec = 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, name, times, 0), 0);
}

std::string random_bytes(std::size_t bytes) {
    RandomText random(7);
    std::string text(bytes, '\0');
    for (char& c : text) c = static_cast<char>(random.number(255));
    return text;
}

// Allows this process only so much address space beyond what it has.
bool limit_memory(std::size_t more_bytes) {
    std::size_t pages = 0;
    std::FILE* stream = std::fopen("/proc/self/statm", "r");
    const bool read = stream != nullptr && std::fscanf(stream, "%zu", &pages) == 1;
    if (stream != nullptr) std::fclose(stream);
    const rlim_t bytes = pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + more_bytes;
    const rlimit limit{bytes, bytes};
    return read && setrlimit(RLIMIT_AS, &limit) == 0;
}

// Takes all memory in blocks of 1001 bytes and more.
void use_up_memory() {
    static void* volatile last;  // or the compiler would see that nobody wants the blocks
    for (std::size_t bytes = 1U << 30U; bytes > 1000;
         bytes = bytes > 1001 ? std::max<std::size_t>(bytes / 2, 1001) : 0) {
        do {
            last = std::malloc(bytes);
        } while (last != nullptr);
    }
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
    EXPECT_EQ(status_of("to").st_mtim.tv_nsec, status_of("from").st_mtim.tv_nsec);
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
    fs::permissions("from", fs::perms(0700));
    fs::permissions("existing", fs::perms(0640));
    const mode_t mask = umask(022);
    EXPECT_TRUE(gfile_copy("from", "new"));
    EXPECT_TRUE(gfile_copy("from", "existing"));
    umask(mask);
    EXPECT_EQ(fs::status("new").permissions(), fs::perms(0644));
    EXPECT_EQ(fs::status("existing").permissions(), fs::perms(0640));
}

TEST_F(CopyFile, CopiesWhatALinkLeadsTo) {
    site.write("real", "x");
    fs::create_symlink("real", "link");
    EXPECT_TRUE(gfile_copy("link", "to"));
    EXPECT_FALSE(fs::is_symlink("to"));
    EXPECT_EQ(site.read("to"), "x");
}

TEST_F(CopyFile, WritesThroughALinkAtTheTarget) {
    site.write("from", "new");
    site.write("real", "before");
    fs::create_symlink("real", "link");
    EXPECT_TRUE(gfile_copy("from", "link"));
    EXPECT_TRUE(fs::is_symlink("link"));
    EXPECT_EQ(site.read("real"), "new");
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

TEST_F(CopyFile, IntoAReadOnlyDirectoryFailsWith23) {
    site.write("from", "x");
    fs::create_directory("dir");
    fs::permissions("dir", fs::perms(0555));
    EXPECT_TRUE(holds_for_ordinary_user([] {
        return !gfile_copy("from", "dir\\to") && GuiErrno == GUI_ERR_FILE_OPEN && gerror_get_system_error() == EACCES;
    }));
    EXPECT_FALSE(fs::exists("dir/to"));
}

TEST_F(CopyFile, OfAnUnreadableFileFailsWith23AndMakesNothing) {
    site.write("secret", "x");
    fs::permissions("secret", fs::perms(0000));
    fs::permissions(".", fs::perms(0777));
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
    EXPECT_FALSE(gfile_copy("from", "/dev/full"));
    EXPECT_EQ(GuiErrno, GUI_ERR_FILE_WRITE);
    EXPECT_EQ(gerror_get_system_error(), ENOSPC);
}

TEST_F(CopyFile, ThatFailsOnTheWayLeavesWhatItHasWritten) {
    site.write("from", std::string(10000, 'n'));
    site.write("to", std::string(9000, 'o'));
    // Writing beyond 4000 bytes is refused.
    const pid_t child = fork();
    if (child == 0) {
        const rlimit limit{4000, 4000};
        setrlimit(RLIMIT_FSIZE, &limit);
        signal(SIGXFSZ, SIG_IGN);
        _exit(!gfile_copy("from", "to") && GuiErrno == GUI_ERR_FILE_WRITE && gerror_get_system_error() == EFBIG ? 0
                                                                                                                : 1);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(site.read("to"), std::string(4000, 'n'));
}

TEST_F(CopyFile, ThatIsShorterThanTheSourceSaidFailsWith24) {
    // The system reports a size of 4096 bytes for such files, and gives a few.
    const char* const source = "/sys/kernel/mm/transparent_hugepage/enabled";
    std::error_code error;
    if (fs::file_size(source, error) != 4096) GTEST_SKIP() << "no file of this kind here";
    site.write("to", "before");
    EXPECT_FALSE(gfile_copy(source, "to"));
    EXPECT_EQ(GuiErrno, GUI_ERR_FILE_READ);
    EXPECT_EQ(site.read("to"), "");
}

TEST_F(CopyFile, OntoItselfFailsWith24AndLosesNothing) {
    site.write("f", "precious");
    fs::create_hard_link("f", "same");
    fs::create_symlink("f", "link");
    for (const char* target : {"f", "F", ".\\f", "same", "link"}) {
        SCOPED_TRACE(target);
        gerror_set_error(GUI_ERR_NONE);
        EXPECT_FALSE(gfile_copy("f", target));
        EXPECT_EQ(GuiErrno, GUI_ERR_FILE_READ);
        EXPECT_EQ(site.read("f"), "precious");
    }
}

TEST_F(CopyFile, OfAPipeThatNobodyWritesToDoesNotWait) {
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    EXPECT_TRUE(gfile_copy("pipe", "to"));
    EXPECT_EQ(site.read("to"), "");
}

TEST_F(CopyFile, LeavesTheStatusWordAfterSuccess) {
    site.write("from", "x");
    GuiErrno = GUI_ERR_CLOCK_STOP;
    EXPECT_TRUE(gfile_copy("from", "to"));
    EXPECT_EQ(GuiErrno, GUI_ERR_CLOCK_STOP);
}

TEST_F(CopyFile, LeavesNoFileOpen) {
    const auto open_files = [] {
        return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
    };
    site.write("from", "x");
    const auto before = open_files();
    EXPECT_TRUE(gfile_copy("from", "to"));
    EXPECT_FALSE(gfile_copy("from", "no\\such"));
    EXPECT_FALSE(gfile_copy("from", "/dev/full"));
    EXPECT_EQ(open_files(), before);
}

TEST_F(CopyFile, GoesOnInPiecesIfMemoryIsShort) {
    if (!memory_can_be_limited) GTEST_SKIP() << "the sanitizer needs address space";
    const std::string bytes = random_bytes(40 << 20);
    site.write("from", bytes);
    fs::permissions(".", fs::perms(0777));
    EXPECT_TRUE(holds_for_ordinary_user([] { return limit_memory(24 << 20) && gfile_copy("from", "to"); }));
    EXPECT_TRUE(site.read("to") == bytes);
}

TEST_F(CopyFile, WithoutMemoryFailsWith27AndMakesNothing) {
    if (!memory_can_be_limited) GTEST_SKIP() << "the sanitizer needs address space";
    site.write("from", std::string(100000, 'x'));
    fs::permissions(".", fs::perms(0777));
    EXPECT_TRUE(holds_for_ordinary_user([] {
        if (!limit_memory(1 << 20)) return false;
        use_up_memory();
        return !gfile_copy("from", "to") && GuiErrno == GUI_ERR_FILE_COPY_ALLOC;
    }));
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
                MatchesRegex("\n\\? Error at line [1-9][0-9]* of file legacy-infrastructure/gsl/source/gfile\n"
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
    fs::permissions("dir", fs::perms(0555));
    fs::permissions(".", fs::perms(0777));
    EXPECT_TRUE(
        holds_for_ordinary_user([] { return !gfile_move("dir\\from", "to") && GuiErrno == GUI_ERR_FILE_DELETE; }));
    fs::permissions("dir", fs::perms(0755));
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

TEST_F(EraseFile, RemovesFilesLinksAndEmptyDirectories) {
    site.write("f", "x");
    fs::create_directory("dir");
    fs::create_directory_symlink("dir", "link");
    EXPECT_TRUE(gfile_erasefil("f"));
    EXPECT_TRUE(gfile_erasefil("link"));
    EXPECT_TRUE(fs::exists("dir"));
    EXPECT_TRUE(gfile_erasefil("dir"));
    EXPECT_TRUE(fs::is_empty("."));
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
                MatchesRegex("\n\\? Error at line [1-9][0-9]* of file legacy-infrastructure/gsl/source/gfile\n"
                             "Unable to delete file : [^\n]+\n"));
}
