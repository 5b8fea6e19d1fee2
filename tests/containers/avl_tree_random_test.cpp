// Long random runs of the tree beside a slow model and the standard library's map.
#include "containers/avl_tree_pair.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using orvix::test::AvlTreePair;

void expect_sound(const AvlTreePair& pair) { ASSERT_EQ(pair.fault(), ""); }

// Steps with keys below `keys`; `erasing` in ten steps erase.
void run(unsigned seed, int steps, int keys, int erasing) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    AvlTreePair pair;
    for (int step = 0; step < steps && !testing::Test::HasFatalFailure(); ++step) {
        const int key = below(keys);
        const bool with_release = below(4) != 0;
        const int choice = below(10);
        if (below(500) == 0) {
            pair.clear(with_release);
        } else if (choice < erasing) {
            pair.erase(key, with_release);
        } else if (choice < 8) {
            pair.insert(key, with_release);
        } else if (choice == 8) {
            pair.search(key);
        } else {
            pair.visit(static_cast<std::size_t>(below(keys + 2)));
        }
        expect_sound(pair);
    }
}

TEST(AvlTreeRandomRuns, FewKeysThatComeAndGo) {
    for (unsigned seed = 1; seed <= 40; ++seed) run(seed, 1000, 12, 4);
}

TEST(AvlTreeRandomRuns, ManyKeysThatGrow) {
    for (unsigned seed = 100; seed <= 104; ++seed) run(seed, 2000, 1000, 1);
}

TEST(AvlTreeRandomRuns, ManyKeysThatDwindle) {
    for (unsigned seed = 200; seed <= 204; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        AvlTreePair pair;
        for (int key = 0; key < 500; ++key) pair.insert(key, true);
        while (pair.size() > 0 && !HasFatalFailure()) {
            pair.erase(static_cast<int>(random() % 500), true);
            expect_sound(pair);
        }
    }
}

TEST(AvlTreeRandomRuns, EachKeyGoesFromEachSmallTree) {
    for (int size = 1; size <= 40; ++size) {
        for (int key = 0; key < size && !HasFatalFailure(); ++key) {
            SCOPED_TRACE(testing::Message() << "key " << key << " of " << size);
            AvlTreePair pair;
            for (int i = 0; i < size; ++i) pair.insert(i * 17 % size, true);
            pair.erase(key, true);
            expect_sound(pair);
        }
    }
}

}  // namespace
