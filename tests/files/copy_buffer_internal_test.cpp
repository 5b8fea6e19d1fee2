// The memory of a copy, with an allocator that is short of it.

#include "gfile_copy_buffer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

using orvix::gsl::CopyBuffer;
using testing::ElementsAre;

namespace {

std::size_t most = 0;                // bytes that are to be had in one block
std::vector<std::size_t> asked_for;  // in the order of asking

// Notes what is asked for, and gives no more than `most` bytes: a small block whose size nobody tests.
void* short_of_memory(std::size_t bytes) {
    asked_for.push_back(bytes);
    return bytes <= most ? std::malloc(1) : nullptr;
}

class CopyBuffers : public testing::Test {
protected:
    void SetUp() override { asked_for.clear(); }
};

}  // namespace

TEST_F(CopyBuffers, HoldTheWholeFileIfTheyCan) {
    most = 1000000;
    const CopyBuffer buffer(100000, short_of_memory);
    EXPECT_NE(buffer.data(), nullptr);
    EXPECT_EQ(buffer.bytes(), 100000);
    EXPECT_THAT(asked_for, ElementsAre(100001));
}

TEST_F(CopyBuffers, OfAnEmptyFileAskForOneByte) {
    most = 1;
    const CopyBuffer buffer(0, short_of_memory);
    EXPECT_NE(buffer.data(), nullptr);
    EXPECT_THAT(asked_for, ElementsAre(1));
}

TEST_F(CopyBuffers, AreHalvedUntilThereIsMemory) {
    most = 20000;
    const CopyBuffer buffer(100000, short_of_memory);
    EXPECT_NE(buffer.data(), nullptr);
    EXPECT_EQ(buffer.bytes(), 12500);
    EXPECT_THAT(asked_for, ElementsAre(100001, 50001, 25001, 12501));
}

TEST_F(CopyBuffers, AreGivenUpAtAThousandBytes) {
    most = 1001;
    const CopyBuffer buffer(8000, short_of_memory);
    EXPECT_EQ(buffer.data(), nullptr);
    EXPECT_THAT(asked_for, ElementsAre(8001, 4001, 2001));
}

TEST_F(CopyBuffers, GoDownToJustAboveAThousandBytes) {
    most = 1002;
    const CopyBuffer buffer(4004, short_of_memory);
    EXPECT_NE(buffer.data(), nullptr);
    EXPECT_EQ(buffer.bytes(), 1001);
}

TEST_F(CopyBuffers, OfASmallFileAreAskedForOnce) {
    most = 10;
    const CopyBuffer buffer(500, short_of_memory);
    EXPECT_EQ(buffer.data(), nullptr);
    EXPECT_THAT(asked_for, ElementsAre(501));
}

TEST_F(CopyBuffers, OfAHugeFileStopAtTheLargestNumber) {
    most = 3000000000;
    const CopyBuffer buffer(5000000000, short_of_memory);
    EXPECT_EQ(buffer.bytes(), 2147483647);
    EXPECT_THAT(asked_for, ElementsAre(2147483648));
}
