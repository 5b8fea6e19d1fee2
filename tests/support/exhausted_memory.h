// Tests without memory.
#pragma once

#include "support/limits.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <new>

namespace orvix::test {

// Passes its tests over where memory cannot be taken away.
class ExhaustedMemory : public testing::Test {
protected:
    void SetUp() override {
        if (!memory_can_be_limited) GTEST_SKIP() << "the sanitizer needs address space";
    }
};

// Makes a call while no block of any size is to be had.
template <class Call>
void without_memory(Call call) {
    MemoryLimit limit(std::size_t{1} << 20);
    limit.use_up(1);
    call();
}

template <class Call>
bool throws_bad_alloc(Call call) {
    try {
        call();
        return false;
    } catch (const std::bad_alloc&) {
        return true;
    }
}

}  // namespace orvix::test
