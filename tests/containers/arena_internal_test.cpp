// Arenas of several blocks. The library makes none, as block 1 takes the end of its arena along when it is split; these
// leave block 1 out of the walk.
#include "containers/arena.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <initializer_list>
#include <vector>

using namespace orvix::gsl::pool;

namespace {

struct Block {
    Index index;
    bool used;
};

class HandMadeArena {
public:
    // Blocks from unit 2 on, ascending; the last ends at `limit`.
    HandMadeArena(std::initializer_list<Block> blocks, Index limit) {
        put(1, {limit, 2, 1, used_magic});
        Index prev = 0;
        for (auto block = blocks.begin(); block != blocks.end(); prev = block++->index) {
            const Index next = block + 1 == blocks.end() ? limit : (block + 1)->index;
            put(block->index, {next, prev, block->index, block->used ? used_magic : free_magic});
        }
    }

    Arena* operator->() { return reinterpret_cast<Arena*>(units_.data()); }
    void* data(Index index) { return &units_[index + 1U]; }

    void put(Index index, BlockHeader header) { std::memcpy(&units_[index], &header, sizeof header); }
    BlockHeader at(Index index) const {
        BlockHeader header;
        std::memcpy(&header, &units_[index], sizeof header);
        return header;
    }

    // The indices on the walk, those of free blocks negative; at the end the limit.
    std::vector<int> walk() const {
        std::vector<int> indices;
        Index index = 2;
        for (; index < at(1).next && indices.size() < 100; index = at(index).next) {
            indices.push_back(at(index).magic == free_magic ? -index : index);
        }
        indices.push_back(index);
        return indices;
    }

    // Whether each block knows the one before it and itself.
    bool is_linked() const {
        Index prev = 0;
        for (Index index = 2; index < at(1).next; index = at(index).next) {
            if (at(index).prev != prev || at(index).self != index || at(index).next <= index) return false;
            prev = index;
        }
        return true;
    }

private:
    alignas(16) std::array<std::uint64_t, 64> units_{};
};

using Walk = std::vector<int>;

}  // namespace

TEST(Arena, TakesTheFirstFreeBlockThatIsLargeEnough) {
    HandMadeArena arena({{2, false}, {5, true}, {8, false}, {20, false}}, 40);
    EXPECT_EQ(arena->allocate(3), arena.data(8));
    EXPECT_EQ(arena.walk(), (Walk{-2, 5, 8, -12, -20, 40}));
    EXPECT_TRUE(arena.is_linked());
}

TEST(Arena, TakesABlockOfExactlyTheSize) {
    HandMadeArena arena({{2, false}, {5, true}}, 40);
    EXPECT_EQ(arena->allocate(2), arena.data(2));
    EXPECT_EQ(arena.walk(), (Walk{2, 5, 40}));
}

TEST(Arena, SplitOfTheLastBlockEndsAtTheLimit) {
    HandMadeArena arena({{2, true}, {5, false}}, 40);
    EXPECT_EQ(arena->allocate(4), arena.data(5));
    EXPECT_EQ(arena.walk(), (Walk{2, 5, -10, 40}));
    EXPECT_TRUE(arena.is_linked());
}

TEST(Arena, GivesNullWithoutALargeEnoughBlock) {
    HandMadeArena arena({{2, false}, {5, true}, {8, false}}, 12);
    EXPECT_EQ(arena->allocate(4), nullptr);
    EXPECT_EQ(arena.walk(), (Walk{-2, 5, -8, 12}));
}

TEST(Arena, ReleasedBlockTakesInAFreeOneBehindIt) {
    HandMadeArena arena({{2, true}, {5, true}, {8, false}, {20, true}}, 40);
    EXPECT_TRUE(arena->release(5));
    EXPECT_EQ(arena.walk(), (Walk{2, -5, 20, 40}));
    EXPECT_TRUE(arena.is_linked());
}

TEST(Arena, ReleasedBlockGoesToAFreeOneBeforeIt) {
    HandMadeArena arena({{2, false}, {5, true}, {8, true}}, 40);
    EXPECT_TRUE(arena->release(5));
    EXPECT_EQ(arena.walk(), (Walk{-2, 8, 40}));
    EXPECT_TRUE(arena.is_linked());
}

TEST(Arena, ReleasedBlockJoinsItsNeighbours) {
    HandMadeArena arena({{2, false}, {5, true}, {8, false}}, 40);
    EXPECT_TRUE(arena->release(5));
    EXPECT_EQ(arena.walk(), (Walk{-2, 40}));
}

TEST(Arena, ReleaseStaysInsideTheArena) {
    HandMadeArena arena({{2, true}}, 10);
    arena.put(10, {20, 2, 10, free_magic});
    EXPECT_TRUE(arena->release(2));
    EXPECT_EQ(arena.walk(), (Walk{-2, 10}));
}

TEST(Arena, ReleaseSeesADamagedNeighbour) {
    HandMadeArena behind({{2, true}, {5, false}, {9, true}}, 20);
    behind.put(5, {9, 2, 6, free_magic});
    EXPECT_FALSE(behind->release(2));
    EXPECT_EQ(behind.at(2).next, 5);
    HandMadeArena before({{2, false}, {5, true}, {9, true}}, 20);
    before.put(2, {5, 0, 3, free_magic});
    EXPECT_FALSE(before->release(5));
    EXPECT_EQ(before.at(2).next, 5);
}

TEST(Arena, ReleaseOfAFreeBlockReturnsFalse) {
    HandMadeArena arena({{2, false}, {5, false}}, 40);
    EXPECT_FALSE(arena->release(2));
    EXPECT_EQ(arena.walk(), (Walk{-2, -5, 40}));
}

TEST(Arena, ShrunkBlockGivesItsRestToAFreeOneBehindIt) {
    HandMadeArena arena({{2, true}, {10, false}, {20, true}}, 40);
    arena->shrink(2, 6);  // which leaves a single unit
    EXPECT_EQ(arena.walk(), (Walk{2, -9, 20, 40}));
    EXPECT_TRUE(arena.is_linked());
}

TEST(Arena, ShrunkBlockMakesABlockOfItsRest) {
    HandMadeArena arena({{2, true}, {10, true}}, 40);
    arena->shrink(2, 5);
    EXPECT_EQ(arena.walk(), (Walk{2, -8, 10, 40}));
    EXPECT_TRUE(arena.is_linked());
}

TEST(Arena, ShrunkBlockKeepsARestOfOneUnit) {
    HandMadeArena arena({{2, true}, {10, true}}, 40);
    arena->shrink(2, 6);
    EXPECT_EQ(arena.walk(), (Walk{2, 10, 40}));
}

TEST(Arena, ChecksTheIndexOfEachBlock) {
    HandMadeArena arena({{2, true}, {5, false}, {9, true}}, 20);
    EXPECT_TRUE(arena->is_sound());
    arena.put(9, {20, 5, 8, used_magic});
    EXPECT_FALSE(arena->is_sound());
}

TEST(Arena, WalkThatLeadsBackEnds) {
    HandMadeArena arena({{2, true}, {5, true}, {9, true}}, 20);
    arena.put(9, {5, 5, 9, used_magic});
    EXPECT_FALSE(arena->is_sound());
    EXPECT_EQ(arena->allocate(1), nullptr);
}
