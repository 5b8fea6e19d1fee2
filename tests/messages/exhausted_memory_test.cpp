// Lists that want more memory than there is.

#include "support/exhausted_memory.h"
#include "messages/list.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace {

using orvix::test::ExhaustedMemory;
using orvix::test::List;
using orvix::test::MemoryLimit;
using orvix::test::numbers;

}  // namespace

TEST_F(ExhaustedMemory, StoreFarBeyondMemoryFailsAndLeavesTheList) {
    List list(numbers(3));
    bool stored = true;
    bool lengthened = true;
    bool moved = true;
    {
        const MemoryLimit limit(std::size_t{1} << 30);
        stored = list.put(4'294'967'294U, "x");
        lengthened = list.set_length(4'294'967'295U);
        moved = list.move(0, 2'147'483'647);
    }
    EXPECT_FALSE(stored);
    EXPECT_FALSE(lengthened);
    EXPECT_FALSE(moved);
    EXPECT_EQ(list.texts(), numbers(3));
}

TEST_F(ExhaustedMemory, GrowthEndsAsFarAsMemoryWent) {
    List list(numbers(3));
    bool lengthened = true;
    {
        const MemoryLimit limit(std::size_t{4} << 20);
        lengthened = list.set_length(1'000'000);
    }
    EXPECT_FALSE(lengthened);
    const int length = list.length();
    EXPECT_GT(length, 3);
    EXPECT_LT(length, 1'000'000);
    EXPECT_EQ(list.text(2), "2");
    EXPECT_EQ(list.text(static_cast<unsigned>(length) - 1), "");
    EXPECT_TRUE(list.set_length(2));
    EXPECT_EQ(list.texts(), numbers(2));
}

TEST_F(ExhaustedMemory, StoreWithoutMemoryEmptiesTheRecord) {
    List list(numbers(3));
    std::string large(std::size_t{8} << 20, 'x');
    bool stored = true;
    {
        const MemoryLimit limit(std::size_t{1} << 20);
        stored = glist_putrec(list.handle(), 1, large.data(), large.size());
    }
    EXPECT_FALSE(stored);
    EXPECT_EQ(list.text(0), "0");
    EXPECT_EQ(list.text(1), "");
    EXPECT_EQ(list.text(2), "2");
}
