#include <gtest/gtest.h>
#include <orvix/core/files.h>
#include <support/drives.h>
#include <support/temporary_directory.h>

#include <filesystem>
#include <string>
#include <system_error>

using namespace orvix::test;

namespace {

std::string put() {
    std::string room(8192, '#');
    room.resize(orvix::core::put_current_directory(room.data()));
    return room;
}

}  // namespace

TEST(PutCurrentDirectory, WritesTheTextAndNoZeroByte) {
    const TemporaryDirectory directory(TemporaryDirectory::Enter::yes);
    const std::string name = directory.name();
    std::string room(name.size() + 1, '#');
    EXPECT_EQ(orvix::core::put_current_directory(room.data()), name.size());
    EXPECT_EQ(room, name + '#');
}

TEST(PutCurrentDirectory, AgreesWithGetcwd) {
    const TemporaryDirectory directory(TemporaryDirectory::Enter::yes);
    EXPECT_EQ(put(), orvix::getcwd_utf8());
    const MappedDrive drive('D', directory.path());
    ASSERT_EQ(orvix::chdir_utf8("D:\\"), 0);
    EXPECT_EQ(put(), "D:\\");
    EXPECT_EQ(put(), orvix::getcwd_utf8());
}

TEST(PutCurrentDirectory, NamesOfAnyLengthAreWritten) {
    const TemporaryDirectory directory(TemporaryDirectory::Enter::yes);
    std::error_code refused;
    for (int i = 0; i < 12 && !refused; ++i) {
        const std::string part(200, 'a');
        std::filesystem::create_directory(part, refused);
        std::filesystem::current_path(part, refused);
    }
    // Some systems have no longer names for it than 259 bytes.
    EXPECT_GT(put().size(), refused ? 220U : 2400U);
    EXPECT_EQ(put(), orvix::getcwd_utf8());
}
