#include "text/parser_registry.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <vector>

using namespace orvix::gsl::text;

namespace {

// Registries as they are left by parses: with a slot of 0, an entry was never finished.
template <class Policy>
class Entries {
public:
    explicit Entries(const std::vector<std::uint32_t>& slots) {
        for (const std::uint32_t slot : slots) registry[registry.append()] = {nullptr, nullptr, slot, slot != 0};
    }
    ~Entries() { registry.clear(); }
    Entries(const Entries&) = delete;
    Entries& operator=(const Entries&) = delete;

    std::vector<std::uint32_t> slots() {
        std::vector<std::uint32_t> all;
        for (std::size_t i = 0; i < registry.count(); ++i) all.push_back(registry[i].slot);
        return all;
    }

    ParserRegistry<Policy> registry;
};

constexpr std::size_t nowhere = ParserRegistry<PlainPolicy>::nowhere;
using Slots = std::vector<std::uint32_t>;

}  // namespace

template <class Policy>
class AnyParserRegistry : public testing::Test {};

using Policies = testing::Types<PlainPolicy, EfficientPolicy>;
TYPED_TEST_SUITE(AnyParserRegistry, Policies);

TYPED_TEST(AnyParserRegistry, FindsTheEntryOfASlotWhereverItIs) {
    Entries<TypeParam> entries({3, 2, 7});
    EXPECT_EQ(entries.registry.find(3), 0U);
    EXPECT_EQ(entries.registry.find(2), 1U);
    EXPECT_EQ(entries.registry.find(7), 2U);
    EXPECT_EQ(entries.registry.find(1), nowhere);
    EXPECT_EQ(entries.registry.find(0xffffffff), nowhere);
}

TYPED_TEST(AnyParserRegistry, NothingIsFoundInAnEmptyOne) {
    Entries<TypeParam> entries({});
    EXPECT_TRUE(entries.registry.is_empty());
    EXPECT_EQ(entries.registry.find(1), nowhere);
    EXPECT_EQ(entries.registry.reuse(), nowhere);
}

TYPED_TEST(AnyParserRegistry, LastEntryFillsTheGap) {
    Entries<TypeParam> entries({1, 2, 3});
    entries.registry.remove(0);
    EXPECT_EQ(entries.slots(), (Slots{3, 2}));
    entries.registry.remove(1);
    EXPECT_EQ(entries.slots(), (Slots{3}));
    entries.registry.remove(0);
    EXPECT_TRUE(entries.registry.is_empty());
    EXPECT_EQ(entries.registry.append(), 0U);
}

TYPED_TEST(AnyParserRegistry, EntryInUseIsNotReused) {
    Entries<TypeParam> entries({1, 2});
    EXPECT_EQ(entries.registry.reuse(), nowhere);
}

TYPED_TEST(AnyParserRegistry, NewEntriesAreFreeHoweverManyThereAre) {
    Entries<TypeParam> entries({});
    for (std::size_t i = 0; i < 1000; ++i) {
        ASSERT_EQ(entries.registry.append(), i);
        EXPECT_TRUE(entries.registry[i].is_free());
    }
    EXPECT_EQ(entries.registry.count(), 1000U);
}

TEST(PlainParserRegistry, SearchesFromTheFirstEntry) {
    Entries<PlainPolicy> entries({5, 0, 2, 0, 2});
    EXPECT_EQ(entries.registry.find(2), 2U);
    EXPECT_EQ(entries.registry.reuse(), 1U);
    EXPECT_EQ(entries.registry.reuse(), 1U);
}

TEST(EfficientParserRegistry, LooksWhereTheEntryWasMadeFirst) {
    Entries<EfficientPolicy> entries({2, 2, 7});
    EXPECT_EQ(entries.registry.find(2), 1U);
    EXPECT_EQ(entries.registry.find(7), 2U);
}

TEST(EfficientParserRegistry, SearchesFromTheEntryTakenLast) {
    Entries<EfficientPolicy> entries({0, 0, 3});
    EXPECT_EQ(entries.registry.reuse(), nowhere);  // the last one was taken last
    entries.registry.remove(2);
    EXPECT_EQ(entries.registry.reuse(), 1U);
    EXPECT_EQ(entries.registry.reuse(), 1U);
}

TEST(EfficientParserRegistry, SearchesFromTheFirstEntryIfTheOneTakenLastIsGone) {
    Entries<EfficientPolicy> entries({0, 0, 3, 4});
    entries.registry.clear();
    EXPECT_EQ(entries.registry.append(), 0U);
    EXPECT_EQ(entries.registry.reuse(), 0U);
}
