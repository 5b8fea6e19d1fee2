#include <orvix/gsl/status.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace {

using Block = std::unique_ptr<char, void (*)(char*)>;

Block owned(char* block) { return {block, gmem_ee_free}; }

TEST(GmemEeMalloc, ProductOfZeroGivesNull) {
    EXPECT_EQ(gmem_ee_malloc(0, 8), nullptr);
    EXPECT_EQ(gmem_ee_malloc(8, 0), nullptr);
    EXPECT_EQ(gmem_ee_malloc(0, 0), nullptr);
}

TEST(GmemEeMalloc, GivesCountTimesSizeWritableBytes) {
    const Block block = owned(gmem_ee_malloc(3, 5));
    ASSERT_NE(block, nullptr);
    std::memset(block.get(), 'x', 15);
    EXPECT_EQ(block.get()[14], 'x');
}

TEST(GmemEeMalloc, BlockMayGoBackToTheRuntime) {
    char* block = gmem_ee_malloc(1, 16);
    ASSERT_NE(block, nullptr);
    std::free(block);
}

TEST(GmemEeCalloc, ProductOfZeroGivesNull) {
    EXPECT_EQ(gmem_ee_calloc(0, 0), nullptr);
    EXPECT_EQ(gmem_ee_calloc(0, 8), nullptr);
    EXPECT_EQ(gmem_ee_calloc(8, 0), nullptr);
}

TEST(GmemEeCalloc, IsZeroFilled) {
    const Block block = owned(gmem_ee_calloc(4, 3));
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(std::memcmp(block.get(), "\0\0\0\0\0\0\0\0\0\0\0", 12), 0);
}

TEST(GmemEeRealloc, ProductOfZeroGivesNullAndLeavesTheBlockToTheCaller) {
    const Block block = owned(gmem_ee_malloc(1, 4));
    std::memcpy(block.get(), "abc", 4);
    EXPECT_EQ(gmem_ee_realloc(block.get(), 0, 1), nullptr);
    EXPECT_STREQ(block.get(), "abc");
}

TEST(GmemEeRealloc, ProductOfZeroWithoutABlockGivesNull) { EXPECT_EQ(gmem_ee_realloc(nullptr, 1, 0), nullptr); }

TEST(GmemEeRealloc, GrowingKeepsTheContent) {
    char* block = gmem_ee_malloc(1, 4);
    std::memcpy(block, "abc", 4);
    const Block grown = owned(gmem_ee_realloc(block, 100, 100));
    ASSERT_NE(grown, nullptr);
    EXPECT_STREQ(grown.get(), "abc");
}

TEST(GmemEeRealloc, FirstBlockCountsTheLow32BitsOfTheProductAlone) {
    // No allocator grants the whole of this.
    const Block block = owned(gmem_ee_realloc(nullptr, 1, (std::size_t{1} << 62) + 16));
    EXPECT_NE(block, nullptr);
}

TEST(GmemEeFree, NullIsHarmless) { gmem_ee_free(nullptr); }

void say_goodbye() { std::fputs("goodbye\n", stderr); }

void leave_with_seven() { std::_Exit(7); }

void throw_away() { throw std::runtime_error("not today"); }

class AerrMemoryErrorDeathTest : public testing::Test {
    void TearDown() override { aerr_set_exit_function(nullptr); }
};

TEST_F(AerrMemoryErrorDeathTest, PrintsAndExitsWithOne) {
    EXPECT_EXIT(aerr_memory_error(), testing::ExitedWithCode(1), testing::StrEq("FATAL ERROR: out of memory\n"));
}

TEST_F(AerrMemoryErrorDeathTest, HookRunsBetweenMessageAndExit) {
    aerr_set_exit_function(say_goodbye);
    EXPECT_EXIT(aerr_memory_error(), testing::ExitedWithCode(1),
                testing::StrEq("FATAL ERROR: out of memory\ngoodbye\n"));
}

TEST_F(AerrMemoryErrorDeathTest, NullClearsTheHook) {
    aerr_set_exit_function(say_goodbye);
    aerr_set_exit_function(nullptr);
    EXPECT_EXIT(aerr_memory_error(), testing::ExitedWithCode(1), testing::StrEq("FATAL ERROR: out of memory\n"));
}

TEST_F(AerrMemoryErrorDeathTest, HookThatEndsTheProcessItselfDecidesTheStatus) {
    aerr_set_exit_function(leave_with_seven);
    EXPECT_EXIT(aerr_memory_error(), testing::ExitedWithCode(7), "");
}

TEST_F(AerrMemoryErrorDeathTest, HookThatThrowsSkipsTheExit) {
    aerr_set_exit_function(throw_away);
    testing::internal::CaptureStderr();
    EXPECT_THROW(aerr_memory_error(), std::runtime_error);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "FATAL ERROR: out of memory\n");
}

}  // namespace
