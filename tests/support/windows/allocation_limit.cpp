#include "support/allocation_limit.h"

#include "support/windows/imports.h"

#include <climits>
#include <cstdlib>
#include <new>

namespace orvix::test {

namespace {

int allocations_left = 0;

void* limited_new(std::size_t size) {
    void* const block = allocations_left > 0 ? std::malloc(size) : nullptr;
    if (block == nullptr) throw std::bad_alloc();
    --allocations_left;
    return block;
}

constexpr const char* name_of_new = "_Znwy";  // as the linker knows it

}  // namespace

AllocationLimit::AllocationLimit(int blocks) {
    allocations_left = INT_MAX;  // until all is in place
    auto* scope = new ImportReplacement;
    replacement_ = scope;
    scope->replace(name_of_new, reinterpret_cast<void*>(limited_new));
    allocations_left = blocks;
}

AllocationLimit::~AllocationLimit() { delete static_cast<ImportReplacement*>(replacement_); }

}  // namespace orvix::test
