#include <orvix/gsl/arrays.h>
#include <orvix/gsl/status.h>

#include <gtest/gtest.h>
#include <support/random_text.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <vector>

namespace {

// An array of 64-bit numbers, of which 0 means a free element.
class Numbers {
public:
    ~Numbers() { gmem_ee_free(static_cast<char*>(array)); }

    long long alloc(long long initial) {
        return HX_alloc_array(&array, &capacity, is_free, sizeof(std::int64_t), initial);
    }
    long long alloc_sequentially(long long initial) {
        return HX_alloc_array_sequentially(&array, &used, &capacity, sizeof(std::int64_t), initial);
    }
    bool alloc_fixed(long long wanted) { return HX_alloc_fixed_array(&array, &capacity, sizeof(std::int64_t), wanted); }

    std::int64_t& operator[](long long i) { return static_cast<std::int64_t*>(array)[i]; }
    std::vector<std::int64_t> all() const {
        const auto* const begin = static_cast<const std::int64_t*>(array);
        return std::vector<std::int64_t>(begin, begin + capacity);
    }
    // Takes all elements into use.
    void fill() {
        for (long long i = 0; i < capacity; ++i) (*this)[i] = i + 1;
    }

    void* array = nullptr;
    long long used = 0;
    long long capacity = 0;

private:
    static bool is_free(const void* elements, long long index) {
        return static_cast<const std::int64_t*>(elements)[index] == 0;
    }
};

using All = std::vector<std::int64_t>;

bool never_free(const void*, long long) { return false; }

}  // namespace

// ---------------------------------------------------------------------------------------------------------------------

TEST(HxAllocArray, InitialCapacityBelowOneCreatesFiveZeroedElements) {
    for (const long long initial : {0, -1}) {
        Numbers numbers;
        EXPECT_EQ(numbers.alloc(initial), 0);
        EXPECT_EQ(numbers.capacity, 5);
        EXPECT_EQ(numbers.all(), All(5, 0));
    }
}

TEST(HxAllocArray, CreatesTheInitialCapacity) {
    Numbers numbers;
    EXPECT_EQ(numbers.alloc(3), 0);
    EXPECT_EQ(numbers.all(), All(3, 0));
}

TEST(HxAllocArray, FindsTheFirstFreeElement) {
    Numbers numbers;
    numbers.alloc(4);
    numbers[0] = 10;
    numbers[2] = 12;
    EXPECT_EQ(numbers.alloc(4), 1);
    EXPECT_EQ(numbers.alloc(4), 1);  // which was not marked
    EXPECT_EQ(numbers.all(), (All{10, 0, 12, 0}));
}

TEST(HxAllocArray, FullArrayDoublesAndGivesTheFirstNewElement) {
    Numbers numbers;
    numbers.alloc(3);
    numbers.fill();
    EXPECT_EQ(numbers.alloc(3), 3);
    EXPECT_EQ(numbers.all(), (All{1, 2, 3, 0, 0, 0}));
}

TEST(HxAllocArray, FreshArrayIsAskedAboutToo) {
    void* array = nullptr;
    long long capacity = 0;
    EXPECT_EQ(HX_alloc_array(&array, &capacity, never_free, 1, 4), 4);
    EXPECT_EQ(capacity, 8);
    gmem_ee_free(static_cast<char*>(array));
}

TEST(HxAllocArray, ArrayOfNoCapacityIsMadeAnew) {
    Numbers numbers;
    std::int64_t elsewhere = 7;
    numbers.array = &elsewhere;
    EXPECT_EQ(numbers.alloc(2), 0);
    EXPECT_NE(numbers.array, &elsewhere);
    EXPECT_EQ(numbers.all(), (All{0, 0}));
}

TEST(HxAllocArray, NullArrayIsMadeWhateverTheCapacity) {
    Numbers numbers;
    numbers.capacity = 100;
    EXPECT_EQ(numbers.alloc(2), 0);
    EXPECT_EQ(numbers.capacity, 2);
}

TEST(HxAllocArray, ArrayBeyondFourGigabytesGivesMinusOne) {
    void* array = nullptr;
    long long capacity = 0;
    EXPECT_EQ(HX_alloc_array(&array, &capacity, never_free, std::size_t{1} << 31, 2), -1);
    EXPECT_EQ(array, nullptr);
    EXPECT_EQ(HX_alloc_array(&array, &capacity, never_free, 8, 0x7FFFFFFFFFFFFFFF), -1);
    EXPECT_EQ(array, nullptr);
    EXPECT_EQ(capacity, 0);
}

TEST(HxAllocArray, ArrayThatCannotGrowStaysAsItWas) {
    Numbers numbers;
    numbers.alloc(3);
    numbers.fill();
    void* const before = numbers.array;
    EXPECT_EQ(HX_alloc_array(&numbers.array, &numbers.capacity, never_free, std::size_t{1} << 30, 1), -1);
    EXPECT_EQ(numbers.array, before);
    EXPECT_EQ(numbers.all(), (All{1, 2, 3}));
}

TEST(HxAllocArray, ElementsOfNoBytesGiveMinusOne) {
    void* array = nullptr;
    long long capacity = 0;
    EXPECT_EQ(HX_alloc_array(&array, &capacity, never_free, 0, 2), -1);
}

// ---------------------------------------------------------------------------------------------------------------------

TEST(HxAllocArraySequentially, InitialCapacityBelowOneCreatesFiveZeroedElements) {
    for (const long long initial : {0, -1}) {
        Numbers numbers;
        EXPECT_EQ(numbers.alloc_sequentially(initial), 0);
        EXPECT_EQ(numbers.used, 1);
        EXPECT_EQ(numbers.all(), All(5, 0));
    }
}

TEST(HxAllocArraySequentially, MakingAnArrayStartsTheCountAnew) {
    Numbers numbers;
    numbers.used = 40;
    EXPECT_EQ(numbers.alloc_sequentially(2), 0);
    EXPECT_EQ(numbers.used, 1);
}

TEST(HxAllocArraySequentially, GivesOneElementBehindTheOther) {
    Numbers numbers;
    EXPECT_EQ(numbers.alloc_sequentially(3), 0);
    EXPECT_EQ(numbers.alloc_sequentially(3), 1);
    EXPECT_EQ(numbers.alloc_sequentially(3), 2);
    EXPECT_EQ(numbers.capacity, 3);
}

TEST(HxAllocArraySequentially, FullArrayGrowsToTwiceTheCount) {
    Numbers numbers;
    for (int i = 0; i < 3; ++i) numbers[numbers.alloc_sequentially(3)] = 7;
    EXPECT_EQ(numbers.alloc_sequentially(3), 3);
    EXPECT_EQ(numbers.used, 4);
    EXPECT_EQ(numbers.all(), (All{7, 7, 7, 0, 0, 0}));
}

TEST(HxAllocArraySequentially, CountBeyondTheCapacityDecidesOnTheGrowth) {
    Numbers numbers;
    numbers.alloc_sequentially(3);
    numbers.used = 5;
    EXPECT_EQ(numbers.alloc_sequentially(3), 5);
    EXPECT_EQ(numbers.all(), All(10, 0));
}

TEST(HxAllocArraySequentially, ArrayBeyondFourGigabytesThrowsAndStaysAsItWas) {
    Numbers numbers;
    EXPECT_THROW(HX_alloc_array_sequentially(&numbers.array, &numbers.used, &numbers.capacity, 8, 1LL << 29),
                 std::bad_alloc);
    EXPECT_EQ(numbers.array, nullptr);
    for (int i = 0; i < 3; ++i) numbers[numbers.alloc_sequentially(3)] = 7;
    EXPECT_THROW(HX_alloc_array_sequentially(&numbers.array, &numbers.used, &numbers.capacity, std::size_t{1} << 30, 1),
                 std::bad_alloc);
    EXPECT_EQ(numbers.used, 3);
    EXPECT_EQ(numbers.all(), (All{7, 7, 7}));
}

// ---------------------------------------------------------------------------------------------------------------------

TEST(HxAllocFixedArray, WantedCountOfThreeCreatesTenElements) {
    Numbers numbers;
    EXPECT_TRUE(numbers.alloc_fixed(3));
    EXPECT_EQ(numbers.all(), All(10, 0));
}

TEST(HxAllocFixedArray, LargerWantedCountIsCreatedAsItIs) {
    Numbers numbers;
    EXPECT_TRUE(numbers.alloc_fixed(11));
    EXPECT_EQ(numbers.all(), All(11, 0));
}

TEST(HxAllocFixedArray, TenElementsGrowTo22ForEleven) {
    Numbers numbers;
    numbers.alloc_fixed(10);
    numbers.fill();
    EXPECT_TRUE(numbers.alloc_fixed(11));
    EXPECT_EQ(numbers.all(), (All{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(HxAllocFixedArray, SufficientCapacityStays) {
    Numbers numbers;
    numbers.alloc_fixed(10);
    void* const before = numbers.array;
    for (const long long wanted : {10, 3, 0, -5}) {
        EXPECT_TRUE(numbers.alloc_fixed(wanted));
        EXPECT_EQ(numbers.array, before);
        EXPECT_EQ(numbers.capacity, 10);
    }
}

TEST(HxAllocFixedArray, ArrayBeyondFourGigabytesGivesFalseAndStaysAsItWas) {
    Numbers numbers;
    EXPECT_FALSE(numbers.alloc_fixed(1LL << 29));
    EXPECT_EQ(numbers.array, nullptr);
    numbers.alloc_fixed(10);
    numbers.fill();
    void* const before = numbers.array;
    EXPECT_FALSE(numbers.alloc_fixed(1LL << 28));
    EXPECT_FALSE(numbers.alloc_fixed(0x7FFFFFFFFFFFFFFF));
    EXPECT_EQ(numbers.array, before);
    EXPECT_EQ(numbers.all(), (All{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
}

// ---------------------------------------------------------------------------------------------------------------------

TEST(GrowableArrays, AgreeWithAVectorOnRandomCalls) {
    for (unsigned seed = 0; seed < 200 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        orvix::test::RandomText random(seed);
        Numbers found;
        Numbers appended;
        Numbers fixed;
        All free_model;
        All append_model;
        All fixed_model;
        std::size_t used = 0;
        for (int step = 0; step < 100; ++step) {
            // The first free element, and one that is freed now and then.
            if (free_model.empty()) free_model.resize(3);
            std::size_t first = 0;
            while (first < free_model.size() && free_model[first] != 0) ++first;
            if (first == free_model.size()) free_model.resize(2 * first);
            const long long index = found.alloc(3);
            ASSERT_EQ(index, static_cast<long long>(first));
            found[index] = free_model[first] = step + 1;
            const std::size_t freed = random.number(free_model.size() - 1);
            if (random.coin()) found[static_cast<long long>(freed)] = free_model[freed] = 0;
            ASSERT_EQ(found.all(), free_model);

            if (append_model.empty()) append_model.resize(5);
            if (used == append_model.size()) append_model.resize(2 * used);
            ASSERT_EQ(appended.alloc_sequentially(0), static_cast<long long>(used));
            appended[static_cast<long long>(used)] = append_model[used] = step + 1;
            ++used;
            ASSERT_EQ(appended.all(), append_model);

            const std::size_t wanted = random.number(static_cast<std::size_t>(step) + 1);
            if (fixed_model.empty()) fixed_model.resize(wanted < 10 ? 10 : wanted);
            if (wanted > fixed_model.size()) fixed_model.resize(2 * wanted);
            ASSERT_TRUE(fixed.alloc_fixed(static_cast<long long>(wanted)));
            const std::size_t changed = random.number(fixed_model.size() - 1);
            fixed[static_cast<long long>(changed)] = fixed_model[changed] = step + 1;
            ASSERT_EQ(fixed.all(), fixed_model);
        }
    }
}
