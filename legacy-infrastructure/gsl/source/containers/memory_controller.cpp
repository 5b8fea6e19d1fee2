#include <orvix/gsl/memory_controller.h>

#include "containers/pool.h"

#include <orvix/gsl/status.h>

#include <cstddef>

using orvix::gsl::pool::Pool;

namespace {

char* as_chars(void* block) { return static_cast<char*>(block); }

// A negative count becomes more than any heap has.
std::size_t heap_count(std::int32_t count) { return static_cast<std::size_t>(count); }

bool clear(void** state) {
    *state = nullptr;
    return true;
}

bool has_no_properties(void**, int) { return false; }

constexpr MEMH heap_methods = {
    .alloc = [](void**, std::uint32_t size, std::int32_t count) -> void* {
        return gmem_ee_malloc(size, heap_count(count));
    },
    .realloc = [](void**, void* block, std::uint32_t size, std::int32_t count) -> void* {
        return gmem_ee_realloc(as_chars(block), size, heap_count(count));
    },
    .free =
        [](void**, void* block) {
            gmem_ee_free(as_chars(block));
            return block != nullptr;
        },
    .check = [](void**) { return true; },
    .init = clear,
    .set = has_no_properties,
};

constexpr MEMH pool_methods = {
    .alloc = [](void** state, std::uint32_t size, std::int32_t count) { return Pool(state).allocate(size, count); },
    .realloc =
        [](void** state, void* block, std::uint32_t size, std::int32_t count) {
            return block != nullptr ? Pool(state).reallocate(block, size, count) : nullptr;
        },
    .free = [](void** state, void* block) { return block != nullptr && Pool(state).release(block); },
    .check = [](void** state) { return Pool(state).is_sound(); },
    .init = clear,
    .set = has_no_properties,
};

}  // namespace

constinit const MEMH* const orvixMem = &heap_methods;
constinit const MEMH* const poolMem = &pool_methods;

bool initialize_MemCntl(MEMC* memory, const MEMH* methods) {
    memory->methods = methods;
    return methods != nullptr && methods->init(&memory->state);
}

void* alloc_Mem(MEMC* memory, std::uint32_t size, std::int32_t count) {
    return memory->methods != nullptr ? memory->methods->alloc(&memory->state, size, count) : nullptr;
}

void* realloc_Mem(MEMC* memory, void* block, std::uint32_t size, std::int32_t count) {
    if (memory->methods == nullptr || block == nullptr) return nullptr;
    return memory->methods->realloc(&memory->state, block, size, count);
}

bool free_Mem(MEMC* memory, void* block) {
    return memory->methods != nullptr && memory->methods->free(&memory->state, block);
}

bool set_MemCntl(MEMC* memory, int value) {
    return memory->methods != nullptr && memory->methods->set(&memory->state, value);
}
