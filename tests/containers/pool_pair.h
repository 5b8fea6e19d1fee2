// A pool and a model of it, driven alike. After each step the pool has the arenas of the model in its order, their
// records agree, and the contents of all blocks in use are what was written to them.
//
// The model says what becomes of the pool's records when one follows them through: an arena holds a single block, whose
// room never grows again.
#pragma once

#include "pool_memory.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

namespace orvix::test {

class PoolPair {
public:
    std::size_t used_blocks() const { return contents_.size(); }

    void allocate(std::uint32_t size, std::int32_t count) {
        void* const block = pool_.allocate(size, count);
        const std::int64_t bytes = std::int64_t{size} * count;
        if (bytes < 0 || bytes > 524264) {
            if (block != nullptr) fault_ = "a block that its arena cannot tell";
            return;
        }
        if (place(block, units(bytes))) write(block, static_cast<std::size_t>(bytes));
    }

    // Resizes one of the blocks in use.
    void reallocate(std::size_t which, std::uint32_t bytes) {
        Contents& old = contents_[which];
        void* const block = pool_.reallocate(old.block, bytes);
        const std::string kept = old.bytes.substr(0, bytes);
        Arena& arena = arena_of(old.block);
        const unsigned wanted = units(bytes);
        if (wanted < arena.room || (wanted == arena.room && wanted < 510)) {
            if (arena.room >= wanted + 2) arena.room = wanted;
            if (block != old.block) fault_ = "a block that moved";
        } else {
            if (!place(block, wanted)) return;
            arena_of(old.block).used = false;
        }
        if (std::string(static_cast<char*>(block), kept.size()) != kept) fault_ = "lost contents";
        released_.push_back(old.block);
        contents_.erase(contents_.begin() + static_cast<std::ptrdiff_t>(which));
        write(block, bytes);
    }

    void release(std::size_t which) {
        void* const block = contents_[which].block;
        if (!pool_.release(block)) fault_ = "a block that was not released";
        arena_of(block).used = false;
        released_.push_back(block);
        contents_.erase(contents_.begin() + static_cast<std::ptrdiff_t>(which));
    }

    // Releases and resizes a block that was in use earlier, and may be again.
    void release_again(std::size_t which) {
        if (released_.empty()) return;
        void* const block = released_[which % released_.size()];
        if (arena_of(block).used) return;
        if (pool_.release(block)) fault_ = "a second release";
        if (pool_.reallocate(block, 8) != nullptr) fault_ = "a new size for a block that is not in use";
    }

    // What is wrong after the last step, or "".
    std::string fault() {
        if (!fault_.empty()) return fault_;
        if (!pool_.check()) return "a check that fails";
        const void* arena = pool_.newest_arena();
        for (const Arena& expected : arenas_) {
            if (arena != expected.start) return "other arenas than the model's";
            const auto end = static_cast<std::uint16_t>(expected.room + 2);
            const auto magic = static_cast<std::uint16_t>(expected.used ? 13695 : 64710);
            if (PoolHeader::of(static_cast<const char*>(arena) + 16) != PoolHeader{end, 1, 1, magic})
                return "other records than the model's";
            arena = word_at<void*>(arena);
        }
        if (arena != nullptr) return "more arenas than the model's";
        for (const Contents& contents : contents_) {
            if (std::string(static_cast<char*>(contents.block), contents.bytes.size()) != contents.bytes)
                return "changed contents";
        }
        return "";
    }

private:
    struct Arena {
        const void* start;
        unsigned room;  // units of its block
        bool used;
    };
    struct Contents {
        void* block;
        std::string bytes;
    };

    static unsigned units(std::int64_t bytes) { return static_cast<unsigned>((bytes + 7) / 8); }
    static const void* start_of(const void* block) { return static_cast<const char*>(block) - 16; }

    Arena& arena_of(const void* block) {
        return *std::find_if(arenas_.begin(), arenas_.end(),
                             [=](const Arena& arena) { return arena.start == start_of(block); });
    }

    // Holds a new block against the one that the model takes. False if they differ.
    bool place(const void* block, unsigned wanted) {
        auto arena = arenas_.end();
        if (wanted < 511)
            arena = std::find_if(arenas_.begin(), arenas_.end(),
                                 [=](const Arena& a) { return !a.used && a.room >= wanted; });
        if (block == nullptr || (arena != arenas_.end() && arena->start != start_of(block))) {
            fault_ = "another block than the model's";
            return false;
        }
        if (arena == arenas_.end()) {
            arenas_.push_front({start_of(block), std::max(510U, wanted), false});
            arena = arenas_.begin();
        }
        arena->used = true;
        if (arena->room >= wanted + 2) arena->room = wanted;
        return true;
    }

    void write(void* block, std::size_t bytes) {
        std::string text(bytes, '\0');
        for (char& c : text) c = static_cast<char>(++written_);
        text.copy(static_cast<char*>(block), bytes);
        contents_.push_back({block, text});
    }

    PoolMemory pool_;
    std::deque<Arena> arenas_;  // the newest first
    std::vector<Contents> contents_;
    std::vector<void*> released_;
    unsigned written_ = 0;
    std::string fault_;
};

}  // namespace orvix::test
