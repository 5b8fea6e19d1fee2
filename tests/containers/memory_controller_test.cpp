#include "containers/pool_memory.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <set>
#include <string>

using orvix::test::PoolHeader;
using orvix::test::PoolMemory;
using orvix::test::word_at;

namespace {

constexpr std::uint16_t free_magic = 64710;
constexpr std::uint16_t used_magic = 13695;

// Bytes from the start of a block's arena to the block.
std::ptrdiff_t place(const void* block, const void* arena) {
    return static_cast<const char*>(block) - static_cast<const char*>(arena);
}

}  // namespace

// ---------------------------------------------------------------------------------------------------------------------
// Controller

TEST(MemoryController, ZeroedOneGivesNothing) {
    MEMC memory{};
    EXPECT_EQ(alloc_Mem(&memory, 8, 1), nullptr);
    char block[8];
    EXPECT_EQ(realloc_Mem(&memory, block, 16, 1), nullptr);
    EXPECT_FALSE(free_Mem(&memory, block));
    EXPECT_FALSE(set_MemCntl(&memory, 1));
}

TEST(MemoryController, NullMethodsUnbindIt) {
    MEMC memory;
    EXPECT_FALSE(initialize_MemCntl(&memory, nullptr));
    EXPECT_EQ(alloc_Mem(&memory, 8, 1), nullptr);
}

TEST(MemoryController, ClearsTheStateWord) {
    for (const MEMH* methods : {orvixMem, poolMem}) {
        int anything;
        MEMC memory{nullptr, &anything};
        EXPECT_TRUE(initialize_MemCntl(&memory, methods));
        EXPECT_EQ(memory.methods, methods);
        EXPECT_EQ(memory.state, nullptr);
    }
}

TEST(MemoryController, HasNothingToSet) {
    for (const MEMH* methods : {orvixMem, poolMem}) {
        MEMC memory;
        initialize_MemCntl(&memory, methods);
        EXPECT_FALSE(set_MemCntl(&memory, 0));
        EXPECT_FALSE(set_MemCntl(&memory, 1));
    }
}

TEST(MemoryController, CallsTheMethodsOfItsOwner) {
    static std::string calls;
    const MEMH methods = {
        [](void** state, std::uint32_t size, std::int32_t count) -> void* {
            calls += "alloc " + std::to_string(size) + " " + std::to_string(count) + "; ";
            return *state;
        },
        [](void**, void* block, std::uint32_t size, std::int32_t count) -> void* {
            calls += "realloc " + std::to_string(size) + " " + std::to_string(count) + "; ";
            return block;
        },
        [](void**, void* block) {
            calls += "free; ";
            return block == nullptr;
        },
        [](void**) { return true; },
        [](void** state) {
            calls += "init; ";
            *state = &calls;
            return false;
        },
        [](void**, int value) {
            calls += "set " + std::to_string(value) + "; ";
            return true;
        },
    };
    calls.clear();
    MEMC memory;
    int block;
    EXPECT_FALSE(initialize_MemCntl(&memory, &methods));
    EXPECT_EQ(alloc_Mem(&memory, 12, -3), &calls);
    EXPECT_EQ(realloc_Mem(&memory, &block, 4, 5), &block);
    EXPECT_EQ(realloc_Mem(&memory, nullptr, 6, 7), nullptr);
    EXPECT_FALSE(free_Mem(&memory, &block));
    EXPECT_TRUE(free_Mem(&memory, nullptr));
    EXPECT_TRUE(set_MemCntl(&memory, 9));
    EXPECT_EQ(calls, "init; alloc 12 -3; realloc 4 5; free; free; set 9; ");
}

// ---------------------------------------------------------------------------------------------------------------------
// Heap

class HeapController : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(initialize_MemCntl(&memory, orvixMem)); }

    MEMC memory;
};

TEST_F(HeapController, AllocatesResizesAndFrees) {
    auto* block = static_cast<char*>(alloc_Mem(&memory, 2, 3));
    ASSERT_NE(block, nullptr);
    std::memcpy(block, "abcdef", 6);
    block = static_cast<char*>(realloc_Mem(&memory, block, 1000, 100));
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(std::memcmp(block, "abcdef", 6), 0);
    std::memset(block, 'x', 100000);
    EXPECT_TRUE(free_Mem(&memory, block));
    EXPECT_EQ(memory.state, nullptr);
}

TEST_F(HeapController, RequestOfNoBytesGivesNull) {
    EXPECT_EQ(alloc_Mem(&memory, 0, 3), nullptr);
    EXPECT_EQ(alloc_Mem(&memory, 3, 0), nullptr);
}

TEST_F(HeapController, BlockResizedToNoBytesStays) {
    void* const block = alloc_Mem(&memory, 8, 1);
    std::memset(block, 'x', 8);
    EXPECT_EQ(realloc_Mem(&memory, block, 0, 1), nullptr);
    EXPECT_EQ(word_at<char>(block), 'x');
    EXPECT_TRUE(free_Mem(&memory, block));
}

TEST_F(HeapController, NullBlockIsNeitherResizedNorFreed) {
    EXPECT_EQ(realloc_Mem(&memory, nullptr, 8, 1), nullptr);
    EXPECT_FALSE(free_Mem(&memory, nullptr));
}

TEST_F(HeapController, ChecksAsSound) { EXPECT_TRUE(orvixMem->check(&memory.state)); }

// ---------------------------------------------------------------------------------------------------------------------
// Pool

TEST(PoolController, FreshOneChecksAsSound) {
    PoolMemory pool;
    EXPECT_TRUE(pool.check());
    EXPECT_EQ(pool.newest_arena(), nullptr);
}

TEST(PoolController, NullBlockIsNotResizedAndNothingIsAllocated) {
    PoolMemory pool;
    EXPECT_EQ(pool.reallocate(nullptr, 8), nullptr);
    EXPECT_EQ(pool.newest_arena(), nullptr);
}

TEST(PoolController, NullBlockIsNotReleased) {
    PoolMemory pool;
    EXPECT_FALSE(pool.release(nullptr));
}

TEST(PoolController, MethodsOfTheTableTakeNullBlocks) {
    void* state = nullptr;
    EXPECT_EQ(poolMem->realloc(&state, nullptr, 8, 1), nullptr);
    EXPECT_FALSE(poolMem->free(&state, nullptr));
}

TEST(PoolController, SecondReleaseReturnsFalse) {
    PoolMemory pool;
    void* const block = pool.allocate(100);
    EXPECT_TRUE(pool.release(block));
    EXPECT_FALSE(pool.release(block));
}

TEST(PoolController, FirstBlockLiesBehindTheArenasRecord) {
    PoolMemory pool;
    void* const block = pool.allocate(24);
    EXPECT_EQ(place(block, pool.newest_arena()), 16);
    EXPECT_EQ(PoolHeader::of(block), (PoolHeader{5, 1, 1, used_magic}));
}

TEST(PoolController, FreshArenaCarriesAMarkThatDataCovers) {
    PoolMemory pool;
    void* const block = pool.allocate(8, 509);
    EXPECT_EQ(word_at<PoolHeader>(block), (PoolHeader{512, 0, 1, free_magic}));
}

TEST(PoolController, SplitLeavesAFreeBlockAndTheArenaEndsBeforeIt) {
    PoolMemory pool;
    void* const block = pool.allocate(24);
    EXPECT_EQ(word_at<PoolHeader>(static_cast<char*>(block) + 24), (PoolHeader{512, 1, 5, free_magic}));
    EXPECT_EQ(word_at<std::uint16_t>(static_cast<const char*>(pool.newest_arena()) + 8), 5);   // limit
    EXPECT_EQ(word_at<std::uint16_t>(static_cast<const char*>(pool.newest_arena()) + 10), 1);  // first
}

TEST(PoolController, RequestIsRoundedUpToUnits) {
    PoolMemory pool;
    EXPECT_EQ(PoolHeader::of(pool.allocate(1)).next, 3);
    EXPECT_EQ(PoolHeader::of(pool.allocate(8)).next, 3);
    EXPECT_EQ(PoolHeader::of(pool.allocate(3, 3)).next, 4);
}

TEST(PoolController, RequestOfNoBytesGivesAnEmptyBlock) {
    PoolMemory pool;
    void* const block = pool.allocate(0, 7);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(PoolHeader::of(block), (PoolHeader{2, 1, 1, used_magic}));
    EXPECT_TRUE(pool.release(block));
}

TEST(PoolController, BlockIsTakenWholeWhereTheRestHasNoRoomForAHeaderAndAUnit) {
    PoolMemory split;
    EXPECT_EQ(PoolHeader::of(split.allocate(8, 508)).next, 510);
    PoolMemory whole;
    EXPECT_EQ(PoolHeader::of(whole.allocate(8, 509)).next, 512);
    PoolMemory exact;
    EXPECT_EQ(PoolHeader::of(exact.allocate(8, 510)).next, 512);
}

TEST(PoolController, EveryBlockInUseHasAnArenaOfItsOwn) {
    PoolMemory pool;
    std::set<const void*> arenas;
    for (int i = 0; i < 10; ++i) {
        const void* const block = pool.allocate(8);
        EXPECT_EQ(place(block, pool.newest_arena()), 16);
        arenas.insert(pool.newest_arena());
    }
    EXPECT_EQ(arenas.size(), 10U);
    EXPECT_TRUE(pool.check());
}

TEST(PoolController, ReleasedBlockServesARequestOfItsSize) {
    PoolMemory pool;
    void* const block = pool.allocate(80);
    pool.release(block);
    EXPECT_EQ(pool.allocate(80), block);
    EXPECT_EQ(PoolHeader::of(block), (PoolHeader{12, 1, 1, used_magic}));
}

TEST(PoolController, ReleasedBlockStaysAsSmallAsItsLastRequest) {
    PoolMemory pool;
    void* const block = pool.allocate(80);
    pool.release(block);
    EXPECT_EQ(pool.allocate(8), block);
    pool.release(block);
    EXPECT_NE(pool.allocate(80), block);
}

TEST(PoolController, ReleasedBlockWithOneUnitTooMuchIsTakenWhole) {
    PoolMemory pool;
    void* const block = pool.allocate(80);
    pool.release(block);
    EXPECT_EQ(pool.allocate(72), block);
    EXPECT_EQ(PoolHeader::of(block).next, 12);
}

TEST(PoolController, NewestArenaIsSearchedFirst) {
    PoolMemory pool;
    void* const older = pool.allocate(80);
    void* const newer = pool.allocate(80);
    pool.release(older);
    pool.release(newer);
    EXPECT_EQ(pool.allocate(80), newer);
    EXPECT_EQ(pool.allocate(80), older);
}

TEST(PoolController, RequestOf511UnitsSkipsTheSearch) {
    PoolMemory pool;
    void* const large = pool.allocate(8, 600);
    pool.release(large);
    void* const next = pool.allocate(8, 511);
    EXPECT_NE(next, large);
    EXPECT_EQ(place(next, pool.newest_arena()), 16);
    EXPECT_EQ(PoolHeader::of(next), (PoolHeader{513, 1, 1, used_magic}));
    EXPECT_EQ(pool.allocate(8, 510), large);
}

TEST(PoolController, LargestRequestIsServed) {
    PoolMemory pool;
    void* const block = pool.allocate(524264);
    ASSERT_NE(block, nullptr);
    std::memset(block, 'x', 524264);
    EXPECT_EQ(PoolHeader::of(block), (PoolHeader{65535, 1, 1, used_magic}));
    EXPECT_TRUE(pool.check());
    EXPECT_TRUE(pool.release(block));
}

TEST(PoolController, LargerRequestsThanIndicesCanTellGiveNull) {
    PoolMemory pool;
    EXPECT_EQ(pool.allocate(524265), nullptr);
    EXPECT_EQ(pool.allocate(524288), nullptr);
    EXPECT_EQ(pool.allocate(65536, 65536), nullptr);
    EXPECT_EQ(pool.allocate(0xFFFFFFFF, 0x7FFFFFFF), nullptr);
    EXPECT_EQ(pool.allocate(8, -1), nullptr);
    EXPECT_EQ(pool.newest_arena(), nullptr);
}

TEST(PoolController, BlockOfTheSameUnitsStaysWhereItIs) {
    PoolMemory pool;
    void* const block = pool.allocate(80);
    EXPECT_EQ(pool.reallocate(block, 73), block);
    EXPECT_EQ(PoolHeader::of(block).next, 12);
}

TEST(PoolController, BlockOf510UnitsOrMoreMovesEvenIfItKeepsItsSize) {
    PoolMemory pool;
    void* const block = pool.allocate(8, 509);
    ASSERT_EQ(PoolHeader::of(block).next, 512);  // 510 units
    std::memset(block, 'x', 4080);
    auto* const moved = static_cast<char*>(pool.reallocate(block, 8, 510));
    EXPECT_NE(moved, block);
    EXPECT_EQ(std::string(moved, 4080), std::string(4080, 'x'));
    EXPECT_FALSE(pool.release(block));
}

TEST(PoolController, SmallerBlockStaysAndTheArenaEndsBehindIt) {
    PoolMemory pool;
    void* const block = pool.allocate(80);
    EXPECT_EQ(pool.reallocate(block, 16), block);
    EXPECT_EQ(PoolHeader::of(block), (PoolHeader{4, 1, 1, used_magic}));
    EXPECT_EQ(word_at<PoolHeader>(static_cast<char*>(block) + 16), (PoolHeader{12, 1, 4, free_magic}));
}

TEST(PoolController, SmallerBlockKeepsASingleUnit) {
    PoolMemory pool;
    void* const block = pool.allocate(80);
    EXPECT_EQ(pool.reallocate(block, 72), block);
    EXPECT_EQ(PoolHeader::of(block).next, 12);
}

TEST(PoolController, LargerBlockMovesWithItsContentsAndTheOldOneIsReleased) {
    PoolMemory pool;
    auto* const block = static_cast<char*>(pool.allocate(16));
    std::memcpy(block, "0123456789abcdef", 16);
    auto* const moved = static_cast<char*>(pool.reallocate(block, 24));
    ASSERT_NE(moved, nullptr);
    EXPECT_NE(moved, block);
    EXPECT_EQ(std::string(moved, 16), "0123456789abcdef");
    EXPECT_EQ(PoolHeader::of(block).magic, free_magic);
    EXPECT_EQ(pool.allocate(16), block);
}

TEST(PoolController, BlockThatIsNotInUseIsNotResized) {
    PoolMemory pool;
    void* const block = pool.allocate(16);
    pool.release(block);
    EXPECT_EQ(pool.reallocate(block, 8), nullptr);
    EXPECT_EQ(PoolHeader::of(block), (PoolHeader{4, 1, 1, free_magic}));
}

TEST(PoolController, BlockStaysInUseWhereTheLargerOneIsRefused) {
    PoolMemory pool;
    void* const block = pool.allocate(16);
    EXPECT_EQ(pool.reallocate(block, 524288), nullptr);
    EXPECT_EQ(PoolHeader::of(block), (PoolHeader{4, 1, 1, used_magic}));
    EXPECT_TRUE(pool.release(block));
}

TEST(PoolController, CheckSeesAHeaderThatWasWrittenOver) {
    PoolMemory pool;
    pool.allocate(8);
    auto* const block = static_cast<char*>(pool.allocate(8));
    pool.allocate(8);
    EXPECT_TRUE(pool.check());
    block[-4] = 2;  // the block's own index
    EXPECT_FALSE(pool.check());
}
