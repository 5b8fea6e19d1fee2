// Long random runs of lists beside simple models.
#include "containers/list_pair.h"

#include <gtest/gtest.h>

#include <random>

using orvix::test::ListPair;

class LinkedListRandomRuns : public testing::TestWithParam<unsigned> {};

TEST_P(LinkedListRandomRuns, AgreeWithTheModels) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const auto below = [&](unsigned limit) { return static_cast<unsigned>(random() % limit); };
        ListPair pair(GetParam());
        for (int step = 0; step < 500; ++step) {
            const unsigned one = below(ListPair::list_count);
            const unsigned other = (one + 1 + below(ListPair::list_count - 1)) % ListPair::list_count;
            switch (below(12)) {
                case 0:
                    pair.allocate(one, static_cast<int>(below(8)) - 1, other);
                    break;
                case 1:
                    pair.extend(one, below(6), other);
                    break;
                case 2:
                    pair.insert(one, other);
                    break;
                case 3:
                    pair.erase(one, below(5), other);
                    break;
                case 4:
                    pair.free(one, other);
                    break;
                case 5:
                    pair.tail(one);
                    break;
                case 6:
                case 7:
                    pair.prev(one);
                    break;
                case 8:
                case 9:
                    pair.next(one);
                    break;
                default:
                    pair.head(one);
            }
            ASSERT_EQ(pair.fault(), "") << "step " << step;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(ItemSizes, LinkedListRandomRuns, testing::Values(0U, 1U, 8U, 13U));
