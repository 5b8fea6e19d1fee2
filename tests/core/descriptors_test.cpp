#include "support/temporary_directory.h"

#include <orvix/core/descriptors.h>
#include <orvix/core/files.h>
#include <orvix/core/open_flags.h>

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <string>
#include <string_view>

namespace {

namespace core = orvix::core;

class Descriptors : public testing::Test {
protected:
    void SetUp() override {
        descriptor_ = orvix::open_utf8("file", core::create_exclusive_flags(), 0600);
        ASSERT_NE(descriptor_, -1);
    }
    void TearDown() override { core::close_descriptor(descriptor_); }

    std::ptrdiff_t write(std::string_view text, std::uint64_t offset) {
        return core::write_at(descriptor_, text.data(), text.size(), offset);
    }

    const orvix::test::TemporaryDirectory directory_{orvix::test::TemporaryDirectory::Enter::yes};
    int descriptor_ = -1;
};

TEST_F(Descriptors, ReadAtGivesTheBytesOfAPlace) {
    write("abcdef", 0);
    std::array<char, 3> bytes{};
    EXPECT_EQ(core::read_at(descriptor_, bytes.data(), 3, 2), 3);
    EXPECT_EQ(std::string_view(bytes.data(), 3), "cde");
}

TEST_F(Descriptors, ReadAtStopsAtTheEndOfTheFile) {
    write("abc", 0);
    std::array<char, 8> bytes{};
    EXPECT_EQ(core::read_at(descriptor_, bytes.data(), 8, 1), 2);
    EXPECT_EQ(core::read_at(descriptor_, bytes.data(), 8, 3), 0);
    EXPECT_EQ(core::read_at(descriptor_, bytes.data(), 8, 1000), 0);
}

TEST_F(Descriptors, WriteAtBehindTheEndLeavesZerosBetween) {
    EXPECT_EQ(write("x", 3), 1);
    EXPECT_EQ(directory_.read("file"), std::string("\0\0\0x", 4));
}

TEST_F(Descriptors, PiecesAreWrittenOneBehindTheOther) {
    const core::Piece pieces[] = {{"ab", 2}, {"", 0}, {"cde", 3}};
    EXPECT_EQ(core::write_pieces_at(descriptor_, pieces, 1), 5);
    EXPECT_EQ(directory_.read("file"), std::string("\0abcde", 6));
}

TEST_F(Descriptors, PiecesBeyondTheMostAreLeftOut) {
    std::array<core::Piece, core::most_pieces + 3> pieces;
    pieces.fill({"x", 1});
    EXPECT_EQ(core::write_pieces_at(descriptor_, pieces, 0), 64);
}

TEST_F(Descriptors, SizeIsThatOfTheFile) {
    EXPECT_EQ(core::size_of_descriptor(descriptor_), 0);
    write("abc", 2);
    EXPECT_EQ(core::size_of_descriptor(descriptor_), 5);
}

TEST_F(Descriptors, ClosedOnesFail) {
    EXPECT_EQ(core::close_descriptor(descriptor_), 0);
    char byte = 0;
    errno = 0;
    EXPECT_EQ(core::read_at(descriptor_, &byte, 1, 0), -1);
    EXPECT_EQ(errno, EBADF);
    EXPECT_EQ(core::write_at(descriptor_, &byte, 1, 0), -1);
    EXPECT_EQ(core::size_of_descriptor(descriptor_), -1);
    EXPECT_EQ(core::close_descriptor(descriptor_), -1);
}

}  // namespace
