// Orders that make the sort keep hundreds of parts waiting.
#include "support/sort_model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <new>
#include <random>
#include <vector>

namespace {

// What the program's allocations without exceptions shall do, and how many of them there were. These are the only
// ones that the sort makes.
bool memory_is_refused = false;
int array_allocations = 0;

}  // namespace

void* operator new[](std::size_t bytes, const std::nothrow_t&) noexcept {
    ++array_allocations;
    if (memory_is_refused) return nullptr;
    try {
        return ::operator new[](bytes);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

namespace {

using orvix::test::NumberedElements;
using orvix::test::NumberOrder;
using orvix::test::SortModel;
using orvix::test::SortRecord;

// Answers in a way that makes every pivot one of the largest elements, and ends up with keys that go with all answers.
// Elements have no key at first, and then count as smaller than those that have. Of two without one, the one that looks
// like a pivot is given the next smaller key.
class Adversary {
public:
    explicit Adversary(int count) : keys_(static_cast<std::size_t>(count), none) {}

    int compare(int a, int b) {
        if (key(a) == none && key(b) == none) key(a == candidate_ ? a : b) = next_--;
        if (key(a) == none) {
            candidate_ = a;
        } else if (key(b) == none) {
            candidate_ = b;
        }
        return (key(a) > key(b)) - (key(a) < key(b));
    }

    const std::vector<int>& keys() const { return keys_; }

private:
    static constexpr int none = 0;

    int& key(int number) { return keys_.at(static_cast<std::size_t>(number)); }

    std::vector<int> keys_;
    int next_ = 1'000'000;
    int candidate_ = -1;
};

constexpr int element_count = 3000;

const std::vector<int>& hostile_keys() {
    static const std::vector<int> keys = [] {
        Adversary adversary(element_count);
        SortModel(element_count, [&](int a, int b) { return adversary.compare(a, b); });
        return adversary.keys();
    }();
    return keys;
}

int compare_hostile_keys(int a, int b) {
    const int left = hostile_keys().at(static_cast<std::size_t>(a));
    const int right = hostile_keys().at(static_cast<std::size_t>(b));
    return (left > right) - (left < right);
}

class GslQsortOnAHostileOrder : public testing::Test {
protected:
    GslQsortOnAHostileOrder() {
        hostile_keys();
        array_allocations = 0;
    }
    ~GslQsortOnAHostileOrder() override { memory_is_refused = false; }

    NumberedElements elements{element_count, 8, 0};
};

TEST_F(GslQsortOnAHostileOrder, ComparesAndOrdersAsTheModelDoes) {
    const SortRecord record = elements.sort(compare_hostile_keys);
    EXPECT_GT(array_allocations, 0) << "the order was not hostile enough";
    EXPECT_TRUE(record == SortModel(element_count, compare_hostile_keys).record());
}

TEST_F(GslQsortOnAHostileOrder, TheCallStackDoesNotGrow) {
    for (const std::size_t element_size : {8U, 16U}) {
        SCOPED_TRACE(element_size);
        std::uintptr_t lowest = UINTPTR_MAX;
        std::uintptr_t highest = 0;
        NumberedElements(element_count, element_size, 0).sort([&](int a, int b) {
            const auto here = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
            lowest = std::min(lowest, here);
            highest = std::max(highest, here);
            return compare_hostile_keys(a, b);
        });
        EXPECT_LT(highest - lowest, 2048U);
    }
}

TEST_F(GslQsortOnAHostileOrder, WithoutMemoryTheResultAndTheNumberOfComparisonsAreTheSame) {
    memory_is_refused = true;
    const SortRecord record = elements.sort(compare_hostile_keys);
    memory_is_refused = false;
    const SortRecord expected = SortModel(element_count, compare_hostile_keys).record();
    EXPECT_GT(array_allocations, 0) << "the order was not hostile enough";
    EXPECT_EQ(record.order, expected.order);
    EXPECT_EQ(record.comparisons.size(), expected.comparisons.size());
}

TEST(GslQsortMemory, RandomElementsNeedNone) {
    std::mt19937 random(1);
    std::vector<int> keys;
    for (int i = 0; i < 60'000; ++i) keys.push_back(static_cast<int>(random() % 1'000'000));
    NumberedElements elements(60'000, 8, 0);
    array_allocations = 0;
    elements.sort([&](int a, int b) { return keys[static_cast<std::size_t>(a)] - keys[static_cast<std::size_t>(b)]; });
    EXPECT_EQ(array_allocations, 0);
}

}  // namespace
