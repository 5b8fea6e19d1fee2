// Files between processes, on a host with signals, leases, and pipes among its files.

#include "core/read_all.h"
#include "support/temporary_directory.h"

#include <orvix/core/file.h>

#include <gtest/gtest.h>

#include <csignal>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using orvix::Path;
using orvix::core::File;
using orvix::test::read_all;
using orvix::test::TemporaryDirectory;

namespace {

class SharedFile : public testing::Test {
protected:
    TemporaryDirectory site{TemporaryDirectory::Enter::yes};
};

}  // namespace

TEST_F(SharedFile, PipeIsOpenedWithoutWaitingForAWriter) {
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    EXPECT_TRUE(File::open_to_read(Path("pipe")).is_open());
}

TEST_F(SharedFile, LeaseOfAnotherProcessIsWaitedFor) {
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

TEST_F(SharedFile, ReadGoesOnAfterASignal) {
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
