#include <gtest/gtest.h>
#include <orvix/core/files.h>
#include <support/temporary_directory.h>

#include <filesystem>
#include <string>

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
    const ScopedVariable drive("ORVIX_DRIVE_D", directory.path().c_str());
    EXPECT_EQ(put(), "D:\\");
    EXPECT_EQ(put(), orvix::getcwd_utf8());
}

TEST(PutCurrentDirectory, NothingIsWrittenWhereTheDirectoryHasNoName) {
    const TemporaryDirectory directory(TemporaryDirectory::Enter::yes);
    std::filesystem::create_directory("a\\b");
    std::filesystem::current_path("a\\b");
    EXPECT_EQ(put(), "");
    EXPECT_EQ(orvix::getcwd_utf8(), "");
}

TEST(PutCurrentDirectory, NamesOfAnyLengthAreWritten) {
    const TemporaryDirectory directory(TemporaryDirectory::Enter::yes);
    for (int i = 0; i < 12; ++i) {
        const std::string part(200, 'a');
        std::filesystem::create_directory(part);
        std::filesystem::current_path(part);
    }
    EXPECT_GT(put().size(), 2400U);
    EXPECT_EQ(put(), orvix::getcwd_utf8());
}
