// Long random runs of the pool beside a simple model.
#include "containers/pool_pair.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>

using orvix::test::PoolPair;

TEST(PoolRandomRuns, AgreeWithTheModel) {
    for (unsigned seed = 1; seed <= 30 && !testing::Test::HasFatalFailure(); ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const auto below = [&](std::size_t limit) { return static_cast<std::uint32_t>(random() % limit); };
        const auto bytes = [&] {
            const std::uint32_t kind = below(20);
            return kind == 0 ? 4060 + below(60) : kind == 1 ? below(530000) : below(seed % 2 == 0 ? 40 : 200);
        };
        PoolPair pair;
        for (int step = 0; step < 1000; ++step) {
            const std::size_t used = pair.used_blocks();
            switch (below(10)) {
                case 0:
                    pair.allocate(bytes(), below(10) == 0 ? -1 : static_cast<std::int32_t>(below(3)));
                    break;
                case 1:
                    pair.release_again(below(1000));
                    break;
                case 2:
                case 3:
                case 4:
                    if (used > 0) pair.reallocate(below(used), std::min(bytes(), 524264U));
                    break;
                case 5:
                case 6:
                    if (used > 0) pair.release(below(used));
                    break;
                default:
                    if (used < 40) {
                        pair.allocate(bytes(), 1);
                    } else {
                        pair.release(below(used));
                    }
            }
            ASSERT_EQ(pair.fault(), "") << "step " << step;
        }
    }
}
