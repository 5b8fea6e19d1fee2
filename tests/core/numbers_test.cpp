#include <gtest/gtest.h>
#include <orvix/core/numbers.h>

#include <limits>
#include <string>
#include <utility>

namespace {

// The value, and what is left of the text.
std::pair<double, std::string> read(const char* text) {
    const char* end = nullptr;
    const double value = orvix::core::strtod_c(text, &end);
    return {value, end};
}

using Read = std::pair<double, std::string>;

}  // namespace

TEST(StrtodC, DecimalPointIsADotInAnyLocale) {
    EXPECT_EQ(read("1.5,5"), (Read{1.5, ",5"}));
    EXPECT_EQ(read("1,5"), (Read{1, ",5"}));
}

TEST(StrtodC, ReadsWhatStrtodReads) {
    EXPECT_EQ(read(" \t-0x1.8p1z"), (Read{-3, "z"}));
    EXPECT_EQ(read("1e400"), (Read{std::numeric_limits<double>::infinity(), ""}));
    EXPECT_EQ(read("-infinite"), (Read{-std::numeric_limits<double>::infinity(), "inite"}));
}

TEST(StrtodC, TextThatIsNoNumberIsLeftWhole) { EXPECT_EQ(read(" x"), (Read{0, " x"})); }
