#include <orvix/core/memory.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

namespace {

namespace core = orvix::core;

TEST(AllocateLarge, GivesAlignedZerosOfThatSize) {
    for (const std::size_t pages : {std::size_t{1}, std::size_t{3}}) {
        const std::size_t bytes = pages * core::large_page_bytes;
        auto* const block = static_cast<char*>(core::allocate_large(bytes));
        ASSERT_NE(block, nullptr);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % core::large_page_bytes, 0U);
        EXPECT_EQ(block[0], '\0');
        EXPECT_EQ(block[bytes - 1], '\0');
        std::memset(block, 'x', bytes);
        core::free_large(block, bytes);
    }
}

TEST(AllocateLarge, GivesNullBeyondAllMemory) { EXPECT_EQ(core::allocate_large(std::size_t{1} << 62), nullptr); }

}  // namespace
