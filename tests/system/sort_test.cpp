#include "support/sort_model.h"

#include <orvix/gsl/sort.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using orvix::test::NumberedElements;
using orvix::test::NumberOrder;
using orvix::test::numbers_below;
using orvix::test::SortModel;
using orvix::test::SortRecord;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using Pairs = std::vector<std::pair<int, int>>;

int sign(int a, int b) { return (a > b) - (a < b); }

// Element i has the key keys[i].
NumberOrder by(const std::vector<int>& keys) {
    return [keys](int a, int b) {
        return sign(keys.at(static_cast<std::size_t>(a)), keys.at(static_cast<std::size_t>(b)));
    };
}

SortRecord sort(const std::vector<int>& keys, std::size_t element_size = 8, std::size_t offset = 0) {
    return NumberedElements(static_cast<int>(keys.size()), element_size, offset).sort(by(keys));
}

Pairs first_comparisons(const SortRecord& record, std::size_t count) {
    return {record.comparisons.begin(), record.comparisons.begin() + static_cast<std::ptrdiff_t>(count)};
}

std::vector<int> in_order(std::vector<int> numbers) {
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

std::vector<int> random_keys(int count, int different, std::uint32_t seed) {
    std::mt19937 random(seed);
    std::vector<int> keys;
    for (int i = 0; i < count; ++i) keys.push_back(static_cast<int>(random() % static_cast<unsigned>(different)));
    return keys;
}

TEST(GslQsort, NoElementAndOneElementAreNeverCompared) {
    EXPECT_THAT(sort({}).comparisons, IsEmpty());
    EXPECT_THAT(sort({5}).comparisons, IsEmpty());
}

TEST(GslQsort, TwoElementsAreComparedOnce) {
    EXPECT_THAT(sort({1, 2}).comparisons, ElementsAre(Pair(0, 1)));
    EXPECT_THAT(sort({2, 1}).comparisons, ElementsAre(Pair(0, 1)));
    EXPECT_THAT(sort({2, 1}).order, ElementsAre(1, 0));
}

TEST(GslQsort, SixElementsAreSortedByInsertionOnly) {
    const SortRecord record = sort({3, 1, 2, 6, 5, 4});
    EXPECT_THAT(record.comparisons, ElementsAre(Pair(0, 1),                            // 1 3
                                                Pair(0, 2), Pair(1, 2),                // 1 2 3
                                                Pair(0, 3),                            // 1 2 3 6
                                                Pair(3, 4), Pair(0, 4),                // 1 2 3 5 6
                                                Pair(3, 5), Pair(4, 5), Pair(0, 5)));  // 1 2 3 4 5 6
    EXPECT_THAT(record.order, ElementsAre(1, 2, 0, 5, 4, 3));
}

TEST(GslQsort, InsertionLeavesEqualElementsInTheirOrder) {
    EXPECT_THAT(sort({2, 1, 2, 1}).order, ElementsAre(1, 3, 0, 2));
}

TEST(GslQsort, OfSevenTheMiddleOneIsThePivotWithoutAComparison) {
    const SortRecord record = sort({1, 2, 3, 4, 5, 6, 7});
    // Elements in order need no exchange but that of the pivot, so insertion finishes them.
    const Pairs partition{{1, 3}, {2, 3}, {0, 3}, {4, 3}, {6, 3}, {5, 3}, {4, 3}};
    const Pairs insertion{{3, 1}, {3, 2}, {1, 2}, {3, 0}, {2, 0}, {1, 0}, {3, 4}, {4, 5}, {5, 6}};
    Pairs expected = partition;
    expected.insert(expected.end(), insertion.begin(), insertion.end());
    EXPECT_EQ(record.comparisons, expected);
    EXPECT_EQ(record.order, numbers_below(7));
}

TEST(GslQsort, OfEightThePivotIsTheMedianOfFirstMiddleAndLast) {
    EXPECT_EQ(first_comparisons(sort({1, 2, 3, 4, 5, 6, 7, 8}), 3), (Pairs{{0, 4}, {4, 7}, {1, 4}}));
    EXPECT_EQ(first_comparisons(sort({8, 2, 3, 4, 5, 6, 7, 1}), 3), (Pairs{{0, 4}, {4, 7}, {1, 4}}));
    EXPECT_EQ(first_comparisons(sort({1, 2, 3, 4, 9, 6, 7, 8}), 4), (Pairs{{0, 4}, {4, 7}, {0, 7}, {1, 7}}));
    EXPECT_EQ(first_comparisons(sort({7, 2, 3, 4, 9, 6, 8, 1}), 4), (Pairs{{0, 4}, {4, 7}, {0, 7}, {1, 0}}));
    EXPECT_EQ(first_comparisons(sort({7, 2, 3, 4, 1, 6, 5, 9}), 4), (Pairs{{0, 4}, {4, 7}, {0, 7}, {1, 0}}));
    EXPECT_EQ(first_comparisons(sort({9, 2, 3, 4, 1, 6, 5, 7}), 4), (Pairs{{0, 4}, {4, 7}, {0, 7}, {1, 7}}));
}

TEST(GslQsort, OfFortyThePivotIsTheMedianOfThree) {
    EXPECT_EQ(first_comparisons(sort(numbers_below(40)), 3), (Pairs{{0, 20}, {20, 39}, {1, 20}}));
}

TEST(GslQsort, OfFortyOneThePivotComesFromNineCandidates) {
    EXPECT_EQ(first_comparisons(sort(numbers_below(41)), 9),
              (Pairs{{0, 5}, {5, 10}, {15, 20}, {20, 25}, {30, 35}, {35, 40}, {5, 20}, {20, 35}, {1, 20}}));
}

TEST(GslQsort, AllEqualElementsAreComparedOnceWithThePivotAndNotInserted) {
    const SortRecord record = sort(std::vector<int>(7, 1));
    EXPECT_THAT(record.comparisons,
                ElementsAre(Pair(1, 3), Pair(2, 3), Pair(0, 3), Pair(4, 3), Pair(5, 3), Pair(6, 3)));
    EXPECT_THAT(record.order, ElementsAre(3, 1, 2, 0, 4, 5, 6));
}

TEST(GslQsort, TheLowerPartIsFinishedBeforeTheUpperOne) {
    const SortRecord record = sort({12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1});
    // Element 6, with the key 6, is the pivot; those with the keys 1 to 5 stand behind it at first.
    std::string parts;
    for (const auto& [a, b] : record.comparisons) {
        if (a > 6 && b > 6) parts += 'l';
        if (a < 6 && b < 6) parts += 'u';
    }
    EXPECT_THAT(parts, testing::MatchesRegex("l+u+"));
}

TEST(GslQsort, SizesAndAlignmentsOfElementsDoNotMatter) {
    const std::vector<int> keys = random_keys(100, 40, 1);
    const SortRecord expected = SortModel(100, by(keys)).record();
    for (std::size_t size = 1; size <= 40; ++size) {
        for (std::size_t offset = 0; offset < 8; ++offset) {
            SCOPED_TRACE(std::to_string(size) + " bytes, offset " + std::to_string(offset));
            EXPECT_EQ(sort(keys, size, offset), expected);
        }
    }
}

// Named ways to make keys for a number of elements.
struct Distribution {
    const char* name;
    std::vector<int> (*keys)(int count);
};

std::vector<int> each(int count, int (*key)(int i, int count)) {
    std::vector<int> keys;
    for (int i = 0; i < count; ++i) keys.push_back(key(i, count));
    return keys;
}

const Distribution distributions[] = {
    {"random", [](int count) { return random_keys(count, 1'000'000, static_cast<std::uint32_t>(count)); }},
    {"three values", [](int count) { return random_keys(count, 3, static_cast<std::uint32_t>(count)); }},
    {"two equal ones each", [](int count) { return random_keys(count, count / 2 + 1, 7); }},
    {"sorted", [](int count) { return each(count, [](int i, int) { return i; }); }},
    {"reversed", [](int count) { return each(count, [](int i, int) { return -i; }); }},
    {"equal", [](int count) { return std::vector<int>(static_cast<std::size_t>(count), 1); }},
    {"up and down", [](int count) { return each(count, [](int i, int n) { return i < n - i ? i : n - i; }); }},
    {"saw teeth", [](int count) { return each(count, [](int i, int) { return i % 9; }); }},
    {"last first", [](int count) { return each(count, [](int i, int n) { return i == n - 1 ? -1 : i; }); }},
    {"first last", [](int count) { return each(count, [](int i, int n) { return i == 0 ? n : i; }); }},
    {"blocks", [](int count) { return each(count, [](int i, int) { return (i / 10) % 4; }); }},
};

class GslQsortOn : public testing::TestWithParam<Distribution> {};

TEST_P(GslQsortOn, ComparesAndOrdersAsTheModelDoes) {
    for (int count = 0; count <= 200; ++count) {
        const std::vector<int> keys = GetParam().keys(count);
        const SortRecord expected = SortModel(count, by(keys)).record();
        for (const int variant : {0, 1, 2}) {
            const auto size = static_cast<std::size_t>((count + 8 * variant) % 24 + 1);
            const auto offset = static_cast<std::size_t>((count / 24 + variant) % 8);
            SCOPED_TRACE(std::to_string(count) + " elements of " + std::to_string(size) + " bytes at offset " +
                         std::to_string(offset));
            ASSERT_EQ(sort(keys, size, offset), expected);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Keys, GslQsortOn, testing::ValuesIn(distributions),
                         [](const testing::TestParamInfo<Distribution>& parameter) {
                             std::string name = parameter.param.name;
                             std::replace(name.begin(), name.end(), ' ', '_');
                             return name;
                         });

// Ranges of up to 65536 bytes of such elements are partitioned in another way than longer ones, and than pointers.
TEST(GslQsort, ManyElementsLargerThanAPointerAreComparedAndOrderedAsInTheModel) {
    for (const int different : {3, 50, 1000, 1'000'000}) {
        for (const int count : {500, 1500, 6000}) {
            const std::vector<int> keys = random_keys(count, different, static_cast<std::uint32_t>(count));
            const SortRecord expected = SortModel(count, by(keys)).record();
            for (const std::size_t size : {9U, 16U, 24U, 100U}) {
                SCOPED_TRACE(std::to_string(count) + " elements of " + std::to_string(size) + " bytes with " +
                             std::to_string(different) + " values");
                ASSERT_TRUE(sort(keys, size) == expected);
            }
        }
    }
}

TEST(GslQsort, PutsRandomElementsInOrder) {
    for (const std::uint32_t seed : {1U, 2U, 3U}) {
        SCOPED_TRACE(seed);
        const std::vector<int> keys = random_keys(20'000, 5'000, seed);
        const std::vector<int> order = sort(keys).order;
        const auto key_of = [&](int number) { return keys.at(static_cast<std::size_t>(number)); };
        EXPECT_TRUE(std::is_sorted(order.begin(), order.end(), [&](int a, int b) { return key_of(a) < key_of(b); }));
        EXPECT_EQ(in_order(order), numbers_below(20'000));
    }
}

TEST(GslQsort, TheSizeOfAnAnswerDoesNotMatterItsSignDoes) {
    const std::vector<int> keys = random_keys(150, 60, 5);
    const NumberOrder plain = by(keys);
    const NumberOrder extreme = [&](int a, int b) {
        const int result = plain(a, b);
        return result < 0 ? INT_MIN : result > 0 ? INT_MAX : 0;
    };
    EXPECT_EQ(NumberedElements(150, 8, 0).sort(extreme), SortModel(150, plain).record());
}

TEST(GslQsort, AnswersThatContradictEachOtherKeepAllElements) {
    for (std::uint32_t seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE(seed);
        const NumberOrder contradictory = [seed](int a, int b) {
            const std::uint32_t mixed =
                (static_cast<std::uint32_t>(a) * 2654435761U) ^ (static_cast<std::uint32_t>(b) * 40503U + seed);
            return static_cast<int>((mixed >> 7U) % 3U) - 1;
        };
        for (const std::size_t size : {8U, 16U}) {
            const SortRecord record = NumberedElements(300, size, 0).sort(contradictory);
            EXPECT_EQ(record, SortModel(300, contradictory).record());
            EXPECT_EQ(in_order(record.order), numbers_below(300));
        }
    }
}

int unexpected_comparison(const void*, const void*) {
    ADD_FAILURE() << "compared";
    return 0;
}

int (*untyped(int (*compare)(const void*, const void*)))() {
    return reinterpret_cast<int (*)()>(reinterpret_cast<void (*)()>(compare));
}

TEST(GslQsort, ElementsOfNoSizeAreLeftAlone) {
    char bytes[] = "cba";
    gsl_qsort(bytes, 3, 0, untyped(unexpected_comparison));
    EXPECT_STREQ(bytes, "cba");
}

TEST(GslQsort, ANullArrayIsLeftAlone) { gsl_qsort(nullptr, 3, 1, untyped(unexpected_comparison)); }

TEST(GslQsort, WithoutAnOrderTheArrayIsLeftAlone) {
    char bytes[] = "cba";
    gsl_qsort(bytes, 3, 1, nullptr);
    EXPECT_STREQ(bytes, "cba");
}

int compare_bytes(const void* a, const void* b) {
    return *static_cast<const unsigned char*>(a) - *static_cast<const unsigned char*>(b);
}

int sort_another_and_compare(const void* a, const void* b) {
    char other[] = "hgfedcba";
    gsl_qsort(other, 8, 1, untyped(compare_bytes));
    EXPECT_STREQ(other, "abcdefgh");
    return compare_bytes(a, b);
}

TEST(GslQsort, AComparisonMaySortAnotherArray) {
    char bytes[] = "the quick brown fox";
    gsl_qsort(bytes, sizeof bytes - 1, 1, untyped(sort_another_and_compare));
    EXPECT_STREQ(bytes, "   bcefhiknooqrtuwx");
}

int throw_at_the_pivot(const void* a, const void* b) {
    if (*static_cast<const char*>(a) == 'd') throw std::runtime_error("no order");
    return compare_bytes(a, b);
}

TEST(GslQsort, AComparisonMayThrowAndNoElementIsLost) {
    std::string bytes = "hgfedcbahgfedcba";
    EXPECT_THROW(gsl_qsort(bytes.data(), bytes.size(), 1, untyped(throw_at_the_pivot)), std::runtime_error);
    EXPECT_THAT(bytes, testing::UnorderedElementsAreArray("hgfedcbahgfedcba", 16));
}

struct Record {
    int key;
    int payload[3];
};

int throw_after_some_comparisons(const void* a, const void* b) {
    static int left = 700;
    if (--left == 0) throw std::runtime_error("no order");
    return sign(static_cast<const Record*>(a)->key, static_cast<const Record*>(b)->key);
}

TEST(GslQsort, AComparisonOfLargerElementsMayThrowAndNoElementIsLost) {
    std::vector<Record> records;
    for (const int key : random_keys(500, 1000, 1)) records.push_back({key, {key, key, key}});
    const auto keys_in_order = [&] {
        std::vector<int> keys;
        for (const Record& record : records) {
            EXPECT_THAT(record.payload, testing::Each(record.key));
            keys.push_back(record.key);
        }
        return in_order(keys);
    };
    const std::vector<int> before = keys_in_order();
    auto* base = reinterpret_cast<char*>(records.data());
    EXPECT_THROW(gsl_qsort(base, records.size(), sizeof(Record), untyped(throw_after_some_comparisons)),
                 std::runtime_error);
    EXPECT_EQ(keys_in_order(), before);
}

}  // namespace
