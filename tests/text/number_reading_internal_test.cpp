#include "text/number_reading.h"

#include "text/line_parser_models.h"

#include <gtest/gtest.h>
#include <support/random_text.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

using namespace orvix::test;
using namespace orvix::gsl::text;

namespace {

std::uint64_t bits(double value) { return std::bit_cast<std::uint64_t>(value); }

// Compares to the last bit; texts over which the conversion does not go as a whole count as no number.
void expect_as_modelled(const std::string& text) {
    SCOPED_TRACE(text);
    const std::optional<double> expected = model::number(text);
    double value = 99;
    ASSERT_EQ(read_number(text, &value), expected.has_value());
    if (expected) {
        EXPECT_EQ(bits(value), bits(*expected)) << value << " is not " << *expected;
    }
}

}  // namespace

TEST(ConvertFront, GivesValueAndSizeOfTheNumberAtTheFront) {
    EXPECT_EQ(convert_front("12.5abc").value, 12.5);
    EXPECT_EQ(convert_front("12.5abc").size, 4U);
    EXPECT_EQ(convert_front("+1e5e").value, 1e5);
    EXPECT_EQ(convert_front("+1e5e").size, 4U);
    EXPECT_EQ(convert_front("1e+").size, 1U);
    EXPECT_EQ(convert_front("0xg").size, 1U);
    EXPECT_EQ(convert_front("0x1.8p1z").value, 3);
    EXPECT_EQ(convert_front("0x1.8p1z").size, 7U);
}

TEST(ConvertFront, GivesNothingWhereNoNumberIs) {
    for (const char* text : {"", "abc", "+", "-", ".", "+-1", "-+1", "- 1", ".e1", "+.", "\xff"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(convert_front(text).size, 0U);
        EXPECT_EQ(bits(convert_front(text).value), bits(0.0));
    }
}

TEST(ConvertFront, SkipsWhiteSpaceInFront) {
    EXPECT_EQ(convert_front(" \t\n 7 ").value, 7);
    EXPECT_EQ(convert_front(" \t\n 7 ").size, 5U);
}

TEST(ConvertFront, KnowsTheNamedValues) {
    EXPECT_EQ(convert_front("-INFinity!").value, -std::numeric_limits<double>::infinity());
    EXPECT_EQ(convert_front("-INFinity!").size, 9U);
    EXPECT_TRUE(std::isnan(convert_front("nan").value));
    EXPECT_EQ(convert_front("nan(12)x").size, 7U);
}

TEST(ConvertFront, ValuesOutOfRangeAreInfiniteOrZero) {
    EXPECT_EQ(convert_front("1e400").value, std::numeric_limits<double>::infinity());
    EXPECT_EQ(convert_front("1e400").size, 5U);
    EXPECT_EQ(bits(convert_front("-1e-400").value), bits(-0.0));
    EXPECT_EQ(convert_front("-1e-400").size, 7U);
    EXPECT_EQ(convert_front("1e99999999999999999999").value, std::numeric_limits<double>::infinity());
    EXPECT_EQ(convert_front("0e99999999999999999999").value, 0);
}

TEST(ReadNumber, RoundsToNearestEven) {
    for (const char* text : {"9007199254740992",
                             "9007199254740993",
                             "9007199254740994",
                             "9007199254740995",
                             "0.1",
                             "0.3",
                             "123456789012345678",
                             "1e22",
                             "1e23",
                             "9007199254740991e22",
                             "9007199254740993e-22",
                             "4.9406564584124654e-324",
                             "2.4703282292062327e-324",
                             "2.4703282292062328e-324",
                             "2.2250738585072011e-308",
                             "1.7976931348623157e308",
                             "1.7976931348623158e308",
                             "1.7976931348623159e308",
                             "0.500000000000000166533453693773481063544750213623046875",
                             "18446744073709551615",
                             "18446744073709551616",
                             "9999999999999999999",
                             "10000000000000000000"}) {
        expect_as_modelled(text);
        expect_as_modelled('-' + std::string(text));
    }
}

TEST(ReadNumber, AgreesWithTheModelOnRandomTexts) {
    for (unsigned seed = 0; seed < 50000; ++seed) expect_as_modelled(RandomText(seed).text("01.+-eExXpP fa", 9));
}

TEST(ReadNumber, AgreesWithTheModelOnRandomNumbers) {
    for (unsigned seed = 0; seed < 50000; ++seed) {
        RandomText random(seed);
        std::string text = random.text("-", 1) + random.text("0123456789", 20) + '.' + random.text("0123456789", 12);
        if (random.coin()) text += 'e' + random.text("-", 1) + std::to_string(random.number(random.coin() ? 30 : 330));
        expect_as_modelled(text);
    }
}

TEST(IsWholeNumber, RangeIsSymmetricAndFractionsAreNone) {
    for (const double value : {0.0, -0.0, 1.0, -1.0, 2147483647.0, -2147483647.0}) EXPECT_TRUE(is_whole_number(value));
    for (const double value : {0.5, 2147483648.0, -2147483648.0, 2147483647.5, 1e300,
                               std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_FALSE(is_whole_number(value)) << value;
    }
}
