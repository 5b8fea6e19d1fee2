#include "support/host.h"
#include "text/exact_decimal.h"

#include <gtest/gtest.h>
#include <orvix/gsl/number_text.h>
#include <support/random_text.h>

#include <bit>
#include <cerrno>
#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <limits>
#include <ostream>
#include <string>

using namespace orvix::test;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

std::uint64_t bits(double value) { return std::bit_cast<std::uint64_t>(value); }
std::uint32_t bits(float value) { return std::bit_cast<std::uint32_t>(value); }

// What a reader gives and stores. The place holds 99 before.
template <class Number>
struct Outcome {
    bool result;
    Number stored;
    bool operator==(const Outcome&) const = default;
};

template <class Number>
std::ostream& operator<<(std::ostream& to, const Outcome<Number>& outcome) {
    return to << (outcome.result ? "true, " : "false, ") << outcome.stored;
}

template <class Number>
Outcome<Number> outcome(bool (*read)(const char*, Number*), const char* text) {
    Number stored = 99;
    const bool result = read(text, &stored);
    return {result, stored};
}

using Real = Outcome<double>;
using Single = Outcome<float>;
using Whole = Outcome<int>;

}  // namespace

// ---------------------------------------------------------------------------------------------------------------------
// gparse_astodbl

TEST(GparseAstodbl, ReadsNumbersInAllTheirSpellings) {
    EXPECT_EQ(outcome(gparse_astodbl, "12"), (Real{true, 12}));
    EXPECT_EQ(outcome(gparse_astodbl, "+7"), (Real{true, 7}));
    EXPECT_EQ(outcome(gparse_astodbl, "-0.5"), (Real{true, -0.5}));
    EXPECT_EQ(outcome(gparse_astodbl, ".5"), (Real{true, 0.5}));
    EXPECT_EQ(outcome(gparse_astodbl, "12."), (Real{true, 12}));
    EXPECT_EQ(outcome(gparse_astodbl, "1e3"), (Real{true, 1000}));
    EXPECT_EQ(outcome(gparse_astodbl, "1.5E-03"), (Real{true, 0.0015}));
    EXPECT_EQ(outcome(gparse_astodbl, "0x10"), (Real{true, 16}));
    EXPECT_EQ(outcome(gparse_astodbl, "0x1p4"), (Real{true, 16}));
}

TEST(GparseAstodbl, WordStoresZero) {
    for (const char* text : {"abc", "", "x", "i", "in", "ix", "n", "na", "nb", "e5", "\xff", "_1", "$"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(outcome(gparse_astodbl, text), (Real{false, 0}));
    }
}

TEST(GparseAstodbl, NumberWithARestStoresTheNumber) {
    EXPECT_EQ(outcome(gparse_astodbl, "12mm"), (Real{false, 12}));
    EXPECT_EQ(outcome(gparse_astodbl, "1.5.2"), (Real{false, 1.5}));
    EXPECT_EQ(outcome(gparse_astodbl, "1e"), (Real{false, 1}));
    EXPECT_EQ(outcome(gparse_astodbl, "1e+"), (Real{false, 1}));
    EXPECT_EQ(outcome(gparse_astodbl, "7 "), (Real{false, 7}));
    EXPECT_EQ(outcome(gparse_astodbl, "0x"), (Real{false, 0}));
    EXPECT_EQ(outcome(gparse_astodbl, "0x1f"), (Real{false, 31}));
    EXPECT_EQ(outcome(gparse_astodbl, "1,5"), (Real{false, 1}));
    EXPECT_EQ(outcome(gparse_astodbl, "123456789012345678901234567890 V"),
              (Real{false, 123456789012345678901234567890.0}));
}

TEST(GparseAstodbl, WhiteSpaceInFrontIsNoNumberButSkipped) {
    for (const char* text : {" 7", "\t7", "\n7", "\v7", "\f7", "\r7", " \t 7"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(outcome(gparse_astodbl, text), (Real{false, 7}));
    }
}

TEST(GparseAstodbl, NamesAreNoNumbersButStoreTheirValues) {
    for (const char* text : {"inf", "INF", "+inf", "Infinity", "infx"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(outcome(gparse_astodbl, text), (Real{false, infinity}));
    }
    EXPECT_EQ(outcome(gparse_astodbl, "-inf"), (Real{false, -infinity}));
    for (const char* text : {"nan", "NaN", "-nan", "nan(1)"}) {
        SCOPED_TRACE(text);
        EXPECT_FALSE(outcome(gparse_astodbl, text).result);
        EXPECT_TRUE(std::isnan(outcome(gparse_astodbl, text).stored));
    }
}

TEST(GparseAstodbl, NullIsNoNumberAndLeavesThePlaceAlone) {
    EXPECT_EQ(outcome(gparse_astodbl, nullptr), (Real{false, 99}));
}

TEST(GparseAstodbl, NumberTooLargeIsInfinite) {
    EXPECT_EQ(outcome(gparse_astodbl, "1e999"), (Real{true, infinity}));
    EXPECT_EQ(outcome(gparse_astodbl, "-1e999"), (Real{true, -infinity}));
}

TEST(GparseAstodbl, ZeroKeepsItsSign) {
    EXPECT_EQ(bits(outcome(gparse_astodbl, "-0").stored), bits(-0.0));
    EXPECT_EQ(bits(outcome(gparse_astodbl, "-1e-999").stored), bits(-0.0));
}

// ---------------------------------------------------------------------------------------------------------------------
// Nearest numbers, by exact arithmetic

namespace {

void expect_nearest(const std::string& digits, int power) {
    const std::string text = digits + 'e' + std::to_string(power);
    SCOPED_TRACE(text);
    double value = 99;
    ASSERT_TRUE(gparse_astodbl(text.c_str(), &value));
    EXPECT_TRUE(is_nearest(
        ExactDecimal(digits + std::string(static_cast<std::size_t>(std::max(power, 0)), '0'), std::max(-power, 0)),
        value))
        << value;
}

// All digits of a double.
std::string all_digits(double value) {
    constexpr int decimals_of_all = 1074;
    return exact(value).rounded(decimals_of_all);
}

}  // namespace

TEST(GparseAstodbl, GivesTheNearestNumberForRandomDigits) {
    for (unsigned seed = 0; seed < 20000; ++seed) {
        RandomText random(seed);
        const int power = static_cast<int>(random.number(60)) - 30;
        expect_nearest(random.text("0123456789", 22) + "1", power);
    }
}

TEST(GparseAstodbl, GivesTheNearestNumberOverTheWholeRange) {
    for (unsigned seed = 0; seed < 1500; ++seed) {
        RandomText random(seed);
        const int power = static_cast<int>(random.number(680)) - 360;
        expect_nearest(random.text("0123456789", 30) + "1", power);
    }
}

TEST(GparseAstodbl, TiesGoToTheEvenNumber) {
    for (const char* digits : {"9007199254740993", "9007199254740995", "18014398509481986", "18014398509481990",
                               "36028797018963972", "9223372036854776832", "9223372036854778880"}) {
        expect_nearest(digits, 0);
        expect_nearest(std::string(digits) + "000", -3);
    }
    expect_nearest("450359962737049625", -2);
    expect_nearest("450359962737049675", -2);
    expect_nearest("2251799813685248125", -3);
    expect_nearest("2251799813685248375", -3);
    // Halfway between neighbours, and the last digit to either side of it.
    for (unsigned seed = 0; seed < 2000; ++seed) {
        RandomText random(seed);
        const std::uint64_t mantissa = (std::uint64_t{1} << 52) + random.number((std::uint64_t{1} << 52) - 1);
        const int exponent = static_cast<int>(random.number(110)) - 111;
        const std::string digits = ExactDecimal::binary(2 * mantissa + 1, exponent).rounded(-exponent);
        expect_nearest(digits, exponent);
        expect_nearest(digits + '1', exponent - 1);
        std::string below = digits;
        --below.back();  // which is a 5
        expect_nearest(below + '9', exponent - 1);
    }
}

TEST(GparseAstodbl, GivesTheNearestNumberNextToTies) {
    for (unsigned seed = 0; seed < 20000; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        const std::uint64_t mantissa = (std::uint64_t{1} << 52) + random.number((std::uint64_t{1} << 52) - 1);
        const int exponent = static_cast<int>(random.number(150)) - 130;
        const ExactDecimal tie = ExactDecimal::binary(2 * mantissa + 1, exponent);
        const int decimals = 16 + static_cast<int>(random.number(2)) - tie.exponent();
        expect_nearest(tie.rounded(decimals), -decimals);
    }
}

TEST(GparseAstodbl, GivesTheNearestNumberAtTheEndsOfTheRange) {
    expect_nearest("17976931348623157", 292);
    expect_nearest("17976931348623158", 292);
    expect_nearest("17976931348623159", 292);
    expect_nearest("22250738585072011", -324);
    expect_nearest("22250738585072014", -324);
    expect_nearest("49406564584124654", -340);
    expect_nearest("24703282292062327", -340);
    expect_nearest("24703282292062328", -340);
    expect_nearest(all_digits(2.2250738585072011e-308), -1074);
    expect_nearest(ExactDecimal::binary(1, -1075).rounded(1075), -1075);
    expect_nearest(ExactDecimal::binary(3, -1075).rounded(1075), -1075);
}

TEST(GparseAstodbl, SeventeenDigitsGiveEveryNumberBack) {
    for (unsigned seed = 0; seed < 20000; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        const std::uint64_t pattern = random.number(0x7fefffffffffffff);
        const auto value = std::bit_cast<double>(pattern);
        char text[40];
        *std::to_chars(text, text + 39, value, std::chars_format::scientific, 16).ptr = '\0';
        EXPECT_EQ(bits(outcome(gparse_astodbl, text).stored), pattern) << text;
    }
}

TEST(GparseAstodbl, AMillionDigitsAreRead) {
    const std::string zeros(1000000, '0');
    EXPECT_EQ(outcome(gparse_astodbl, (zeros + "12").c_str()), (Real{true, 12}));
    EXPECT_EQ(outcome(gparse_astodbl, ("1" + zeros + "e-1000000").c_str()), (Real{true, 1}));
    EXPECT_EQ(outcome(gparse_astodbl, ("0x" + zeros + "10").c_str()), (Real{true, 16}));
    EXPECT_EQ(outcome(gparse_astodbl, ("1." + zeros + "e").c_str()), (Real{false, 1}));
}

// ---------------------------------------------------------------------------------------------------------------------
// gparse_astoflt

TEST(GparseAstoflt, ReadsNumbersAndRoundsThem) {
    EXPECT_EQ(outcome(gparse_astoflt, "0.1"), (Single{true, 0.1F}));
    EXPECT_EQ(outcome(gparse_astoflt, "16777217"), (Single{true, 16777216}));
    EXPECT_EQ(outcome(gparse_astoflt, "1.7e38"), (Single{true, 1.7e38F}));
    EXPECT_EQ(outcome(gparse_astoflt, "1.701411e+38"), (Single{true, 1.701411e+38F}));
    EXPECT_EQ(outcome(gparse_astoflt, "1e-50"), (Single{true, 0}));
}

TEST(GparseAstoflt, NumbersBeyondHalfTheRangeStoreTheClamp) {
    for (const char* text : {"1e39", "1.701412e38", "3e38", "1e999"}) {
        SCOPED_TRACE(text);
        EXPECT_FALSE(outcome(gparse_astoflt, text).result);
        EXPECT_EQ(bits(outcome(gparse_astoflt, text).stored), 0x7efffff8U);
    }
    for (const char* text : {"-1e39", "-1.701412e38", "-1e999"}) {
        SCOPED_TRACE(text);
        EXPECT_FALSE(outcome(gparse_astoflt, text).result);
        EXPECT_EQ(bits(outcome(gparse_astoflt, text).stored), 0xfefffff8U);
    }
}

TEST(GparseAstoflt, WhatIsNoNumberStoresZero) {
    for (const char* text : {"", " 7", "7 ", "12mm", "inf", "nan", "1e"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(outcome(gparse_astoflt, text), (Single{false, 0}));
    }
    EXPECT_EQ(outcome(gparse_astoflt, nullptr), (Single{false, 0}));
}

// ---------------------------------------------------------------------------------------------------------------------
// gparse_astoint and gparse_astolng

TEST(GparseAstoint, ReadsWholeNumbersHoweverTheyAreSpelled) {
    EXPECT_EQ(outcome(gparse_astoint, "12."), (Whole{true, 12}));
    EXPECT_EQ(outcome(gparse_astoint, "+7"), (Whole{true, 7}));
    EXPECT_EQ(outcome(gparse_astoint, "1e2"), (Whole{true, 100}));
    EXPECT_EQ(outcome(gparse_astoint, "1e3"), (Whole{true, 1000}));
    EXPECT_EQ(outcome(gparse_astoint, ".0"), (Whole{true, 0}));
    EXPECT_EQ(outcome(gparse_astoint, "-0"), (Whole{true, 0}));
    EXPECT_EQ(outcome(gparse_astoint, "0x10"), (Whole{true, 16}));
    EXPECT_EQ(outcome(gparse_astoint, "2500e-2"), (Whole{true, 25}));
}

TEST(GparseAstoint, RejectsWhatIsNotOneWholeNumberAndStoresZero) {
    for (const char* text : {"", " 7", "7 ", "1e", "0.5", "2.5", "inf", "nan", "12mm", "1e-5", "1e999"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(outcome(gparse_astoint, text), (Whole{false, 0}));
    }
    EXPECT_EQ(outcome(gparse_astoint, nullptr), (Whole{false, 0}));
}

TEST(GparseAstoint, RangeIsSymmetric) {
    EXPECT_EQ(outcome(gparse_astoint, "2147483647"), (Whole{true, 2147483647}));
    EXPECT_EQ(outcome(gparse_astoint, "-2147483647"), (Whole{true, -2147483647}));
    EXPECT_EQ(outcome(gparse_astoint, "2147483648"), (Whole{false, 0}));
    EXPECT_EQ(outcome(gparse_astoint, "-2147483648"), (Whole{false, 0}));
}

TEST(GparseAstolng, DoesTheSame) {
    EXPECT_EQ(outcome(gparse_astolng, "1e3"), (Whole{true, 1000}));
    EXPECT_EQ(outcome(gparse_astolng, "-2147483648"), (Whole{false, 0}));
    EXPECT_EQ(outcome(gparse_astolng, nullptr), (Whole{false, 0}));
}

// ---------------------------------------------------------------------------------------------------------------------
// astr_str_to_double and astr_str_to_long

TEST(AstrStrToDouble, EmptyTextIsZero) { EXPECT_EQ(outcome(astr_str_to_double, ""), (Real{true, 0})); }

TEST(AstrStrToDouble, TakesWhatTheCLibraryTakes) {
    EXPECT_EQ(outcome(astr_str_to_double, " 7"), (Real{true, 7}));
    EXPECT_EQ(outcome(astr_str_to_double, "\t\n-1.5e2"), (Real{true, -150}));
    EXPECT_EQ(outcome(astr_str_to_double, "inf"), (Real{true, infinity}));
    EXPECT_EQ(outcome(astr_str_to_double, "0x1f"), (Real{true, 31}));
    EXPECT_TRUE(outcome(astr_str_to_double, "nan").result);
}

TEST(AstrStrToDouble, RestLeavesThePlaceAlone) {
    for (const char* text : {"1x", "7 ", " ", "1e", "abc", "+", "."}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(outcome(astr_str_to_double, text), (Real{false, 99}));
    }
}

TEST(AstrStrToDouble, NumberOutOfRangeLeavesThePlaceAloneAndSetsErrno) {
    for (const char* text : {"1e999", "-1e999", "1e-999"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(outcome(astr_str_to_double, text), (Real{false, 99}));
        EXPECT_EQ(errno, ERANGE);
    }
}

TEST(AstrStrToDouble, ClearsErrno) {
    for (const char* text : {"1.5", "", "1x", "inf", "123456789012345678901"}) {
        SCOPED_TRACE(text);
        errno = ERANGE;
        double value = 0;
        astr_str_to_double(text, &value);
        EXPECT_EQ(errno, 0);
    }
}

TEST(AstrStrToLong, EmptyTextIsZero) { EXPECT_EQ(outcome(astr_str_to_long, ""), (Whole{true, 0})); }

TEST(AstrStrToLong, ReadsDecimalDigitsBehindWhiteSpaceAndASign) {
    EXPECT_EQ(outcome(astr_str_to_long, "12"), (Whole{true, 12}));
    EXPECT_EQ(outcome(astr_str_to_long, " \t\n\v\f\r+12"), (Whole{true, 12}));
    EXPECT_EQ(outcome(astr_str_to_long, "-007"), (Whole{true, -7}));
    EXPECT_EQ(outcome(astr_str_to_long, "-0"), (Whole{true, 0}));
}

TEST(AstrStrToLong, RangeIsThatOf32Bits) {
    EXPECT_EQ(outcome(astr_str_to_long, "2147483647"), (Whole{true, 2147483647}));
    EXPECT_EQ(outcome(astr_str_to_long, "-2147483648"), (Whole{true, std::numeric_limits<int>::min()}));
    for (const char* text : {"2147483648", "-2147483649", "99999999999999999999", "2147483648x"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(outcome(astr_str_to_long, text), (Whole{false, 99}));
        EXPECT_EQ(errno, ERANGE);
    }
}

TEST(AstrStrToLong, RestLeavesThePlaceAlone) {
    for (const char* text : {"1x", "7 ", " ", "+", "-", "+-1", "-+1", "1.0", "1e3", "0x10", "abc",
                             "\xa0"
                             "1"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(outcome(astr_str_to_long, text), (Whole{false, 99}));
    }
}

TEST(AstrStrToLong, ClearsErrno) {
    errno = ERANGE;
    outcome(astr_str_to_long, "1");
    EXPECT_EQ(errno, 0);
}

// ---------------------------------------------------------------------------------------------------------------------
// gparse_parse_numeric_and_postnumeric_part

namespace {

struct Parts {
    int number;
    std::string rest;
    bool operator==(const Parts&) const = default;
};

Parts parts(const std::string& text, std::size_t first, std::size_t last) {
    int number = 99;
    const char* const rest = gparse_parse_numeric_and_postnumeric_part(text.c_str(), first, last, &number);
    return {number, rest};
}

}  // namespace

TEST(GparseParseNumericAndPostnumericPart, GivesNumberAndWhatFollows) {
    EXPECT_EQ(parts("R12b", 1, 4), (Parts{12, "b"}));
    EXPECT_EQ(parts("12", 0, 2), (Parts{12, ""}));
    EXPECT_EQ(parts("n007_x", 1, 6), (Parts{7, "_x"}));
}

TEST(GparseParseNumericAndPostnumericPart, StopsAtTheLastPosition) {
    EXPECT_EQ(parts("R1234", 1, 3), (Parts{12, "34"}));
}

TEST(GparseParseNumericAndPostnumericPart, NoDigitsGiveZeroAndTheSamePlace) {
    EXPECT_EQ(parts("Rb", 1, 2), (Parts{0, "b"}));
    EXPECT_EQ(parts("R-1", 1, 3), (Parts{0, "-1"}));
    EXPECT_EQ(parts("R+1", 1, 3), (Parts{0, "+1"}));
    EXPECT_EQ(parts("R 1", 1, 3), (Parts{0, " 1"}));
    EXPECT_EQ(parts("R12", 1, 1), (Parts{0, "12"}));
    EXPECT_EQ(parts("R12", 2, 1), (Parts{0, "2"}));
}

TEST(GparseParseNumericAndPostnumericPart, NeverLeavesTheText) {
    EXPECT_EQ(parts("R12", 1, 1000), (Parts{12, ""}));
    EXPECT_EQ(parts("R12", 1000, 2000), (Parts{0, ""}));
    EXPECT_EQ(parts("", 0, static_cast<std::size_t>(-1)), (Parts{0, ""}));
}

TEST(GparseParseNumericAndPostnumericPart, NumberTooLargeIsTheLargest) {
    EXPECT_EQ(parts("2147483647", 0, 10).number, 2147483647);
    EXPECT_EQ(parts("2147483648", 0, 10).number, 2147483647);
    EXPECT_EQ(parts(std::string(100, '9') + "x", 0, 101), (Parts{2147483647, "x"}));
}

// ---------------------------------------------------------------------------------------------------------------------

TEST(NumberReading, LocaleOfTheProcessPlaysNoPart) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    if (std::setlocale(LC_ALL, orvix::test::locale_with_comma) == nullptr)
        GTEST_SKIP() << "no locale with another decimal point";
    const Real point = outcome(gparse_astodbl, "1.5");
    const Real comma = outcome(gparse_astodbl, "1,5");
    const Real runtime_point = outcome(astr_str_to_double, " 1.5");
    const Real runtime_comma = outcome(astr_str_to_double, "1,5");
    const Whole grouped = outcome(astr_str_to_long, "1.000");
    std::setlocale(LC_ALL, before.c_str());
    EXPECT_EQ(point, (Real{true, 1.5}));
    EXPECT_EQ(comma, (Real{false, 1}));
    EXPECT_EQ(runtime_point, (Real{true, 1.5}));
    EXPECT_EQ(runtime_comma, (Real{false, 99}));
    EXPECT_EQ(grouped, (Whole{false, 99}));
}
