// Files without a buffer in between.

#include "support/temporary_directory.h"

#include <orvix/core/file.h>
#include <orvix/core/memory.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;
using orvix::Path;
using orvix::core::File;
using orvix::test::TemporaryDirectory;

namespace {

class UnbufferedFile : public testing::Test {
protected:
    TemporaryDirectory site{TemporaryDirectory::Enter::yes};
};

std::string read_all(File& file, std::size_t bytes) {
    std::string text(bytes, '?');
    text.resize(file.read(text.data(), bytes));
    return text;
}

}  // namespace

TEST_F(UnbufferedFile, IsReadInSteps) {
    site.write("f", "abcdef");
    File file = File::open_to_read(Path("f"));
    ASSERT_TRUE(file.is_open());
    EXPECT_EQ(file.status().st_size, 6);
    EXPECT_EQ(read_all(file, 4), "abcd");
    EXPECT_EQ(read_all(file, 4), "ef");
    EXPECT_EQ(read_all(file, 4), "");
    EXPECT_TRUE(file.close());
    EXPECT_FALSE(file.is_open());
    EXPECT_TRUE(file.close());
}

TEST_F(UnbufferedFile, ThatIsMissingOrADirectoryIsNotOpenedToRead) {
    fs::create_directory("dir");
    EXPECT_FALSE(File::open_to_read(Path("missing")).is_open());
    EXPECT_EQ(errno, ENOENT);
    EXPECT_FALSE(File::open_to_read(Path("dir")).is_open());
    EXPECT_EQ(errno, EISDIR);
}

TEST_F(UnbufferedFile, IsMadeToBeWritten) {
    File file = File::open_to_write(Path("f"));
    ASSERT_TRUE(file.is_open());
    EXPECT_EQ(file.write("abc", 3), 3U);
    EXPECT_TRUE(file.close());
    EXPECT_EQ(site.read("f"), "abc");
}

TEST_F(UnbufferedFile, KeepsWhatIsNotWrittenOverUntilItIsShortened) {
    site.write("f", "abcdef");
    File file = File::open_to_write(Path("f"));
    EXPECT_EQ(file.write("xy", 2), 2U);
    EXPECT_EQ(site.read("f"), "xycdef");
    EXPECT_TRUE(file.shorten(6));
    EXPECT_EQ(site.read("f"), "xycdef");
    EXPECT_TRUE(file.shorten(2));
    EXPECT_EQ(site.read("f"), "xy");
}

TEST_F(UnbufferedFile, DeviceHasNothingToShorten) {
    File device = File::open_to_write(Path("/dev/full"));
    ASSERT_TRUE(device.is_open());
    EXPECT_TRUE(device.shorten(0));
    errno = 0;
    EXPECT_EQ(device.write("abc", 3), 0U);
    EXPECT_EQ(errno, ENOSPC);
}

TEST_F(UnbufferedFile, IsTheSameUnderAllItsNames) {
    site.write("f", "x");
    site.write("other", "x");
    fs::create_hard_link("f", "same");
    fs::create_symlink("f", "link");
    const File file = File::open_to_read(Path("f"));
    EXPECT_TRUE(file.is_same_file(File::open_to_write(Path("same"))));
    EXPECT_TRUE(file.is_same_file(File::open_to_read(Path("link"))));
    EXPECT_FALSE(file.is_same_file(File::open_to_read(Path("other"))));
}

TEST_F(UnbufferedFile, TakesTimesFromAStatus) {
    File file = File::open_to_write(Path("f"));
    orvix::core::FileStatus status{};
    status.st_atim = {.tv_sec = 1000000000, .tv_nsec = 1};
    status.st_mtim = {.tv_sec = 1100000000, .tv_nsec = 123456789};
    EXPECT_TRUE(file.set_times(status));
    struct stat after {};
    ASSERT_EQ(stat("f", &after), 0);
    EXPECT_EQ(after.st_atim.tv_sec, 1000000000);
    EXPECT_EQ(after.st_mtim.tv_sec, 1100000000);
    EXPECT_EQ(after.st_mtim.tv_nsec, 123456789);
}

TEST_F(UnbufferedFile, IsHandedOnByMoving) {
    site.write("f", "abc");
    File first = File::open_to_read(Path("f"));
    File second = std::move(first);
    EXPECT_EQ(read_all(second, 3), "abc");
    File third;
    third = std::move(second);
    EXPECT_TRUE(third.is_open());
    EXPECT_EQ(third.status().st_size, 3);
}

TEST_F(UnbufferedFile, IsNotInheritedAndClosesItself) {
    const int lowest = open("/dev/null", O_RDONLY | O_CLOEXEC);
    close(lowest);
    {
        const File file = File::open_to_write(Path("f"));
        EXPECT_NE(fcntl(lowest, F_GETFD) & FD_CLOEXEC, 0);
    }
    EXPECT_EQ(fcntl(lowest, F_GETFD), -1);
}

TEST_F(UnbufferedFile, PipeIsOpenedWithoutWaitingForAWriter) {
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    EXPECT_TRUE(File::open_to_read(Path("pipe")).is_open());
}

TEST_F(UnbufferedFile, LeaseOfAnotherProcessIsWaitedFor) {
    site.write("f", "abc");
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t child = fork();
    if (child == 0) {
        // Gives the lease back when the system asks for it.
        signal(SIGIO, [](int) { _exit(0); });
        const int file = open("f", O_RDWR);
        const char answer = fcntl(file, F_SETLEASE, F_WRLCK) == 0 ? 'y' : 'n';
        if (write(ready[1], &answer, 1) != 1) _exit(1);
        while (answer == 'y') pause();
        _exit(1);
    }
    char answer = 'n';
    ASSERT_EQ(read(ready[0], &answer, 1), 1);
    if (answer == 'y') {
        File file = File::open_to_read(Path("f"));
        EXPECT_EQ(read_all(file, 3), "abc");
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    close(ready[0]);
    close(ready[1]);
    if (answer != 'y') GTEST_SKIP() << "no leases here";
    EXPECT_EQ(status, 0);
}

TEST_F(UnbufferedFile, ReadGoesOnAfterASignal) {
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    struct sigaction action {};
    action.sa_handler = [](int) {};
    struct sigaction before {};
    ASSERT_EQ(sigaction(SIGUSR1, &action, &before), 0);  // without SA_RESTART
    const pid_t parent = getpid();
    const pid_t child = fork();
    if (child == 0) {
        const int writer = open("pipe", O_WRONLY);
        usleep(50000);
        kill(parent, SIGUSR1);
        usleep(50000);
        _exit(write(writer, "abc", 3) == 3 ? 0 : 1);
    }
    // Opened to be written a pipe is opened for both, and reading it waits.
    File file = File::open_to_write(Path("pipe"));
    EXPECT_EQ(read_all(file, 3), "abc");
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    sigaction(SIGUSR1, &before, nullptr);
}

TEST(ExpectToBeFilled, LeavesBlocksAsTheyAre) {
    for (const std::size_t bytes : {std::size_t{0}, std::size_t{1000}, std::size_t{100} << 20U}) {
        char* block = static_cast<char*>(std::malloc(bytes + 1));
        ASSERT_NE(block, nullptr);
        block[0] = 'a';
        block[bytes] = 'z';
        orvix::core::expect_to_be_filled(block, bytes + 1);
        EXPECT_EQ(block[bytes], 'z');
        std::free(block);
    }
}
