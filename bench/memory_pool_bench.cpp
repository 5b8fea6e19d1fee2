// Pool and plain heap behind a controller, beside malloc and the standard library's pool.

#include "ratio.h"

#include <orvix/gsl/memory_controller.h>

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdlib>
#include <memory_resource>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

class Pool {
public:
    Pool() { initialize_MemCntl(&memory_, poolMem); }
    void* allocate(std::size_t bytes) { return alloc_Mem(&memory_, static_cast<std::uint32_t>(bytes), 1); }
    void release(void* block, std::size_t) { free_Mem(&memory_, block); }

private:
    MEMC memory_;
};

class Heap {
public:
    Heap() { initialize_MemCntl(&memory_, orvixMem); }
    void* allocate(std::size_t bytes) { return alloc_Mem(&memory_, static_cast<std::uint32_t>(bytes), 1); }
    void release(void* block, std::size_t) { free_Mem(&memory_, block); }

private:
    MEMC memory_;
};

class Malloc {
public:
    void* allocate(std::size_t bytes) { return std::malloc(bytes); }
    void release(void* block, std::size_t) { std::free(block); }
};

class StandardPool {
public:
    void* allocate(std::size_t bytes) { return pool_.allocate(bytes); }
    void release(void* block, std::size_t bytes) { pool_.deallocate(block, bytes); }

private:
    std::pmr::unsynchronized_pool_resource pool_;
};

constexpr std::size_t block_bytes = 64;

// One block, taken and given back.
template <class Memory>
void one_block(benchmark::State& state) {
    static Memory memory;  // pools keep what they have to the end of the process
    for (auto _ : state) {
        void* const block = memory.allocate(block_bytes);
        benchmark::DoNotOptimize(block);
        memory.release(block, block_bytes);
    }
}

// `count` blocks in use, one of which, any, is given back and taken anew.
template <class Memory>
void turnover(benchmark::State& state, std::size_t count) {
    static Memory memory;
    std::vector<void*> blocks(count);
    for (void*& block : blocks) block = memory.allocate(block_bytes);
    std::mt19937 random(1);
    std::vector<std::size_t> order(4096);
    for (std::size_t& place : order) place = random() % count;
    std::size_t step = 0;
    for (auto _ : state) {
        void*& block = blocks[order[step++ % order.size()]];
        memory.release(block, block_bytes);
        block = memory.allocate(block_bytes);
        benchmark::DoNotOptimize(block);
    }
    for (void* const block : blocks) memory.release(block, block_bytes);
}

template <class Function, class... Arguments>
void measure(const std::string& name, Function function, Arguments... arguments) {
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) { function(state, arguments...); });
}

bool register_all() {
    measure("pool_block/ours", one_block<Pool>);
    measure("pool_block/malloc", one_block<Malloc>);
    measure("pool_block/pmr_pool", one_block<StandardPool>);
    measure("heap_block/ours", one_block<Heap>);
    measure("heap_block/malloc", one_block<Malloc>);
    for (const std::size_t count : {std::size_t{10}, std::size_t{100}, std::size_t{1000}}) {
        const std::string name = "pool_turnover/" + std::to_string(count) + "/";
        measure(name + "ours", turnover<Pool>, count);
        measure(name + "malloc", turnover<Malloc>, count);
        measure(name + "pmr_pool", turnover<StandardPool>, count);
    }
    return true;
}

const bool registered = register_all();

}  // namespace
