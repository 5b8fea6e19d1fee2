// Long random runs of the string database beside a slow model.
#include "containers/string_database_pair.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <utility>

namespace {

using orvix::test::StringDatabasePair;

void expect_sound(const StringDatabasePair& pair) { ASSERT_EQ(pair.fault(), ""); }

class StringDatabaseRandomRuns : public testing::TestWithParam<std::pair<bool, bool>> {};

TEST_P(StringDatabaseRandomRuns, AgreeWithTheModel) {
    const auto [ignore_case, with_release] = GetParam();
    for (unsigned seed = 1; seed <= 20 && !HasFatalFailure(); ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const auto below = [&](unsigned limit) { return static_cast<unsigned>(random() % limit); };
        const auto key = [&] {
            std::string text;
            for (unsigned length = below(3 + seed % 3); length > 0; --length) text += "aAbB_\xe4\xff"[below(7)];
            return text;
        };
        StringDatabasePair pair(ignore_case, with_release);
        for (int step = 0; step < 600 && !HasFatalFailure(); ++step) {
            switch (below(8)) {
                case 0:
                case 1:
                    pair.remove(key());
                    break;
                case 2: {
                    const std::string removed = key();
                    pair.remove_and_add(removed, key());
                    break;
                }
                case 3:
                    pair.find(key());
                    break;
                case 4:
                    pair.visit(1 + below(50));
                    break;
                default:
                    pair.add(key());
            }
            expect_sound(pair);
        }
        pair.destroy();
        expect_sound(pair);
    }
}

INSTANTIATE_TEST_SUITE_P(Kinds, StringDatabaseRandomRuns,
                         testing::Values(std::pair(false, true), std::pair(true, true), std::pair(false, false)));

}  // namespace
