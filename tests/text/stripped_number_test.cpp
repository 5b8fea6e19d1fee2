#include "support/host.h"
#include "text/stripped_number_model.h"

#include <gtest/gtest.h>
#include <orvix/gsl/number_text.h>
#include <orvix/gsl/status.h>
#include <support/random_text.h>

#include <clocale>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

// A buffer that belongs to the function if it fails.
char* out_buffer() {
    constexpr std::size_t least_bytes = 33;
    char* const out = gmem_ee_malloc(least_bytes, 1);
    std::memcpy(out, "before", sizeof "before");
    return out;
}

// What a conversion gives: the text that lies in the buffer that it was given, "none" on failure.
template <class Convert>
std::string into_buffer(Convert convert) {
    char* const out = out_buffer();
    const char* const result = convert(out);
    if (result == nullptr) return "none";
    EXPECT_EQ(result, out);
    const std::string text = out;
    gmem_ee_free(out);
    return text;
}

std::string text_or_none(const char* text) { return text != nullptr ? text : "none"; }

std::string stripped(double value, int min_decimals, int max_digits) {
    const std::string given = into_buffer(
        [&](char* out) { return gparse_cnvt_double_string_stripped(out, value, min_decimals, max_digits); });
    const std::string kept = text_or_none(gparse_cnvt_double_string_stripped(nullptr, value, min_decimals, max_digits));
    EXPECT_EQ(given, kept);
    return kept;
}

std::string without_zeros(std::string number) {
    const std::string given =
        into_buffer([&](char* out) { return gparse_cnvt_string_stripped_zeros(out, number.data()); });
    EXPECT_EQ(given, gparse_cnvt_string_stripped_zeros(nullptr, number.data()));
    return given;
}

std::string with_decimals(std::string number, int min_decimals, int max_digits) {
    return into_buffer(
        [&](char* out) { return gparse_cnvt_string_string_stripped(out, number.data(), min_decimals, max_digits); });
}

}  // namespace

// ---------------------------------------------------------------------------------------------------------------------
// gparse_cnvt_double_e_format

namespace {

void expect_split(double value, double mantissa, double exponent) {
    SCOPED_TRACE(value);
    double found_mantissa = 0;
    double found_exponent = 0;
    gparse_cnvt_double_e_format(value, &found_mantissa, &found_exponent);
    EXPECT_NEAR(found_mantissa, mantissa, 1e-12);
    EXPECT_EQ(found_exponent, exponent);
}

}  // namespace

TEST(GparseCnvtDoubleEFormat, SplitsIntoMantissaAndPowerOfTen) {
    expect_split(1000.0, 1, 3);
    expect_split(1250.0, 1.25, 3);
    expect_split(-1250.0, -1.25, 3);
    expect_split(1, 1, 0);
    expect_split(9.5, 9.5, 0);
    expect_split(0.001, 1, -3);
    expect_split(0.00125, 1.25, -3);
    expect_split(-0.5, -5, -1);
    expect_split(1e300, 1, 300);
}

TEST(GparseCnvtDoubleEFormat, WhatIsNextToNothingHasAMantissaOfTen) {
    expect_split(0.0, 10, -99);
    expect_split(-0.0, 10, -99);
    expect_split(1e-100, 10, -99);
    expect_split(-1e-100, -10, -99);
    expect_split(1e-99, 10, -99);
    expect_split(2e-99, 2, -99);
}

// ---------------------------------------------------------------------------------------------------------------------
// gparse_cnvt_double_string_stripped

TEST(GparseCnvtDoubleStringStripped, DropsZerosButTheFirstDecimal) {
    EXPECT_EQ(stripped(1.5, 0, 10), "1.5");
    EXPECT_EQ(stripped(2.0, 0, 10), "2.0");
    EXPECT_EQ(stripped(-2.0, 0, 10), "-2.0");
    EXPECT_EQ(stripped(100, 0, 10), "100.0");
    EXPECT_EQ(stripped(0, 0, 10), "0.0");
    EXPECT_EQ(stripped(0.00025, 0, 10), "0.00025");
}

TEST(GparseCnvtDoubleStringStripped, KeepsTheLeastDecimals) {
    EXPECT_EQ(stripped(1.5, 3, 10), "1.500");
    EXPECT_EQ(stripped(1.25, 1, 10), "1.25");
    EXPECT_EQ(stripped(0, 4, 10), "0.0000");
    EXPECT_EQ(stripped(1.5, 20, 10), "1.50000000000000000000");
    EXPECT_EQ(stripped(1.5, -5, 10), "1.5");
}

TEST(GparseCnvtDoubleStringStripped, RoundsToTheMostDigits) {
    EXPECT_EQ(stripped(1.23456789, 0, 5), "1.2346");
    EXPECT_EQ(stripped(123.456789, 0, 5), "123.46");
    EXPECT_EQ(stripped(0.1, 0, 30), "0.10000000000000000555111512313");
    EXPECT_EQ(stripped(0.1, 0, 100), "0.10000000000000000555111512313");
}

TEST(GparseCnvtDoubleStringStripped, StripsInFrontOfTheExponent) {
    EXPECT_EQ(stripped(1.5e20, 0, 10), "1.5e+020");
    EXPECT_EQ(stripped(1e20, 0, 10), "1.0e+020");
    EXPECT_EQ(stripped(1.5e20, 3, 10), "1.500e+020");
    EXPECT_EQ(stripped(-1.5e-20, 0, 10), "-1.5e-020");
}

TEST(GparseCnvtDoubleStringStripped, WholeNumberThatFillsTheDigitsKeepsItsZeros) {
    EXPECT_EQ(stripped(1234560, 0, 7), "1234560.");
    EXPECT_EQ(stripped(1234560, 2, 7), "1234560.00");
}

TEST(GparseCnvtDoubleStringStripped, LoneZeroGetsAPointOnlyForDecimals) {
    EXPECT_EQ(stripped(0, 0, 1), "0");
    EXPECT_EQ(stripped(0, 2, 1), "0.00");
}

TEST(GparseCnvtDoubleStringStripped, NumberThatNoFormFitsIsAFailure) {
    EXPECT_EQ(stripped(1234567, 0, 5), "none");
    EXPECT_EQ(stripped(1.5, 0, 0), "none");
    EXPECT_EQ(stripped(1.5, 0, std::numeric_limits<int>::min()), "none");
    EXPECT_EQ(stripped(infinity, 0, 30), "none");
    EXPECT_EQ(stripped(-std::numeric_limits<double>::quiet_NaN(), 0, 30), "none");
}

TEST(GparseCnvtDoubleStringStripped, SignTakesTheLastPlaceOfTheBuffer) {
    EXPECT_EQ(stripped(-0.5, 0, 30), "-0.5");
    EXPECT_EQ(stripped(-0.5, 28, 30).size(), 31U);
}

TEST(GparseCnvtDoubleStringStripped, ResultStaysUntilTheNextCall) {
    const char* const first = gparse_cnvt_double_string_stripped(nullptr, 1.5, 0, 10);
    char zeros[] = "2.500";
    char number[] = "3";
    gparse_cnvt_string_stripped_zeros(nullptr, zeros);
    gparse_cnvt_string_string_stripped(nullptr, number, 2, 4);
    EXPECT_STREQ(first, "1.5");
}

TEST(GparseCnvtDoubleStringStrippedDeathTest, TextThatIsTooLongEndsTheProcess) {
    EXPECT_EXIT(gparse_cnvt_double_string_stripped(nullptr, 1.5, 30, 10), testing::ExitedWithCode(1),
                "FATAL ERROR: number text longer than 31 bytes\n");
    EXPECT_EXIT(gparse_cnvt_double_string_stripped(out_buffer(), 1.5, 30, 10), testing::ExitedWithCode(1),
                "FATAL ERROR: number text longer than 31 bytes\n");
    EXPECT_EXIT(gparse_cnvt_double_string_stripped(nullptr, -0.1, 0, 30), testing::ExitedWithCode(1),
                "FATAL ERROR: number text longer than 31 bytes\n");
}

// ---------------------------------------------------------------------------------------------------------------------
// gparse_cnvt_string_stripped_zeros

TEST(GparseCnvtStringStrippedZeros, DropsZerosButTheFirstDecimal) {
    EXPECT_EQ(without_zeros("1.500"), "1.5");
    EXPECT_EQ(without_zeros("2.000"), "2.0");
    EXPECT_EQ(without_zeros("2.0"), "2.0");
    EXPECT_EQ(without_zeros("2."), "2.");
    EXPECT_EQ(without_zeros(".50"), ".5");
    EXPECT_EQ(without_zeros(".00"), ".0");
    EXPECT_EQ(without_zeros("-1.050"), "-1.05");
}

TEST(GparseCnvtStringStrippedZeros, ExponentIsGone) {
    EXPECT_EQ(without_zeros("1.500e+003"), "1.5");
    EXPECT_EQ(without_zeros("1e5"), "1");
    EXPECT_EQ(without_zeros("e5"), "");
}

TEST(GparseCnvtStringStrippedZeros, CapitalExponentMarkIsAByteLikeAnyOther) {
    EXPECT_EQ(without_zeros("1.500E+003"), "1.500E+003");
    EXPECT_EQ(without_zeros("1.500E+100"), "1.500E+1");
}

TEST(GparseCnvtStringStrippedZeros, TextWithoutPointLosesZerosOfItsWholePart) {
    EXPECT_EQ(without_zeros("1500"), "15");
    EXPECT_EQ(without_zeros("-10"), "-1");
}

TEST(GparseCnvtStringStrippedZeros, FirstByteStays) {
    EXPECT_EQ(without_zeros("0"), "0");
    EXPECT_EQ(without_zeros("000"), "0");
    EXPECT_EQ(without_zeros(""), "");
}

TEST(GparseCnvtStringStrippedZeros, TakesItsOwnResult) {
    char number[] = "2.500";
    char* const once = gparse_cnvt_string_stripped_zeros(nullptr, number);
    EXPECT_STREQ(gparse_cnvt_string_stripped_zeros(nullptr, once), "2.5");
}

TEST(GparseCnvtStringStrippedZeros, BufferMayBeTheTextItself) {
    char* const number = out_buffer();
    std::strcpy(number, "2.500");
    EXPECT_EQ(gparse_cnvt_string_stripped_zeros(number, number), number);
    EXPECT_STREQ(number, "2.5");
    gmem_ee_free(number);
}

TEST(GparseCnvtStringStrippedZeros, ThirtyOneBytesFit) {
    EXPECT_EQ(without_zeros("1234567890123456789012345678.250"), "1234567890123456789012345678.25");
}

TEST(GparseCnvtStringStrippedZerosDeathTest, TextThatIsTooLongEndsTheProcess) {
    char number[] = "12345678901234567890123456789.250";
    EXPECT_EXIT(gparse_cnvt_string_stripped_zeros(nullptr, number), testing::ExitedWithCode(1),
                "FATAL ERROR: number text longer than 31 bytes\n");
}

// ---------------------------------------------------------------------------------------------------------------------
// gparse_cnvt_string_string_stripped

TEST(GparseCnvtStringStringStripped, WholeNumberGetsAPointAndDecimals) {
    EXPECT_EQ(with_decimals("123", 2, 4), "123.00");
    EXPECT_EQ(with_decimals("123", 0, 4), "123.");
    EXPECT_EQ(with_decimals("123", -1, 4), "123.");
    EXPECT_EQ(with_decimals("-7", 3, 0), "-7.000");
}

TEST(GparseCnvtStringStringStripped, WholeNumberLiesInTheLibrarysBufferWithoutOne) {
    char number[] = "123";
    char* const kept = gparse_cnvt_string_string_stripped(nullptr, number, 2, 4);
    EXPECT_STREQ(kept, "123.00");
    EXPECT_NE(kept, number);
    char other[] = "5";
    EXPECT_EQ(gparse_cnvt_string_string_stripped(nullptr, other, 1, 4), kept);
    EXPECT_STREQ(kept, "5.0");
}

TEST(GparseCnvtStringStringStripped, ExponentGivesTheArgumentBack) {
    for (const char* text : {"1.5e3", "1E5", "0x1E1"}) {
        SCOPED_TRACE(text);
        std::string number = text;
        char* const out = out_buffer();
        EXPECT_EQ(gparse_cnvt_string_string_stripped(out, number.data(), 2, 4), number.data());
        EXPECT_STREQ(out, "before");
        gmem_ee_free(out);
    }
}

TEST(GparseCnvtStringStringStripped, DecimalsAreFilledUpOrCut) {
    EXPECT_EQ(with_decimals("1.5", 2, 4), "1.50");
    EXPECT_EQ(with_decimals("1.23456", 2, 4), "1.23");
    EXPECT_EQ(with_decimals("-1.23456", 2, 4), "-1.23");
    EXPECT_EQ(with_decimals("99.999", 2, 4), "99.99");
    EXPECT_EQ(with_decimals("1.5", 2, 30), "1.50");
    EXPECT_EQ(with_decimals("0.00", 2, 4), "0.00");
}

TEST(GparseCnvtStringStringStripped, NoMoreDigitsThanDecimalsShowTheValueTwice) {
    EXPECT_EQ(with_decimals("5.25", 2, 2), "5.25e5.25");
    EXPECT_EQ(with_decimals("123.45", 2, 2), "123.45e1.23");
    EXPECT_EQ(with_decimals("0.00", 2, 2), "   0.00e0.0");
}

TEST(GparseCnvtStringStringStripped, ValueIsShownOnceIfOneOfTheTwoDoesNotFit) {
    EXPECT_EQ(with_decimals("12.345", 1, 1), "12.345");
    EXPECT_EQ(with_decimals("0.001", 2, 2), "0.001");
}

TEST(GparseCnvtStringStringStripped, ValueBelowTheDecimalsIsShownTwice) {
    EXPECT_EQ(with_decimals("0000000.0001234", 2, 8), "1.23e0");
    EXPECT_EQ(with_decimals("0.00000000012345", 9, 10), "1.000e1");
}

TEST(GparseCnvtStringStringStripped, NarrowNumberIsTriedAgainWithNineDecimals) {
    EXPECT_EQ(with_decimals("0.0001", 2, 4), "0.000100000");
    EXPECT_EQ(with_decimals("99.99999", 2, 4), "99.999990000");
    EXPECT_EQ(with_decimals(".5", 0, 1), "5.00e0");
    EXPECT_EQ(with_decimals("1.5", -3, 4), "1.500000000");
}

TEST(GparseCnvtStringStringStripped, NumberThatNoFormFitsIsGivenOnAsItIs) {
    std::string infinite = std::string(400, '9') + ".5";
    EXPECT_EQ(gparse_cnvt_string_string_stripped(nullptr, infinite.data(), 2, 4), infinite.data());
    EXPECT_EQ(with_decimals(infinite, 2, 4), "none");  // too long for the buffer
}

TEST(GparseCnvtStringStringStripped, ResultBelongsToTheCallerWithoutABuffer) {
    std::string number = "1.23456";
    char* const result = gparse_cnvt_string_string_stripped(nullptr, number.data(), 2, 4);
    EXPECT_STREQ(result, "1.23");
    std::memset(result, 'x', 33);
    gmem_ee_free(result);
}

TEST(GparseCnvtStringStringStripped, LongResultNeedsABlockOfItsOwn) {
    std::string number = "1234567890.123456789";
    char* const result = gparse_cnvt_string_string_stripped(nullptr, number.data(), 9, 9);
    EXPECT_STREQ(result, "1234567890.123456717e1.2345678901234567");
    gmem_ee_free(result);
    EXPECT_EQ(with_decimals(number, 9, 9), "none");
}

TEST(GparseCnvtStringStringStripped, WhatIsNoNumberIsAFailure) {
    for (const char* text : {"", "abc", " 7", "7 ", "1x", "inf", "."}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(with_decimals(text, 2, 4), "none");
        std::string number = text;
        EXPECT_EQ(gparse_cnvt_string_string_stripped(nullptr, number.data(), 2, 4), nullptr);
    }
    EXPECT_EQ(gparse_cnvt_string_string_stripped(out_buffer(), nullptr, 2, 4), nullptr);
    EXPECT_EQ(gparse_cnvt_string_string_stripped(nullptr, nullptr, 2, 4), nullptr);
}

TEST(GparseCnvtStringStringStripped, TakesResultsOfItsOwn) {
    char number[] = "123";
    char* const once = gparse_cnvt_string_string_stripped(nullptr, number, 2, 4);
    char* const twice = gparse_cnvt_string_string_stripped(nullptr, once, 3, 4);
    EXPECT_STREQ(twice, "123.000");
    gmem_ee_free(twice);
}

TEST(GparseCnvtStringStringStripped, HundredThousandDigitsAreRead) {
    const std::string zeros(100000, '0');
    EXPECT_EQ(with_decimals(zeros + "1.5", 2, 4), "1.50");
    std::string tiny = "0." + zeros + "1";
    char* const result = gparse_cnvt_string_string_stripped(nullptr, tiny.data(), 2, 4);
    EXPECT_STREQ(result, "0.00");
    gmem_ee_free(result);
}

TEST(GparseCnvtStringStringStrippedDeathTest, WholeNumberThatIsTooLongEndsTheProcess) {
    std::string number = "1234567890123456789012345678901";
    EXPECT_EXIT(gparse_cnvt_string_string_stripped(nullptr, number.data(), 0, 4), testing::ExitedWithCode(1),
                "FATAL ERROR: number text longer than 31 bytes\n");
}

// ---------------------------------------------------------------------------------------------------------------------
// gparse_cnvt_from_e_to_string

TEST(GparseCnvtFromEToString, ExponentGivesTheArgumentBack) {
    for (const char* text : {"1.5e3", "+1E5", "-1e", "0e"}) {
        SCOPED_TRACE(text);
        std::string number = text;
        char* const out = out_buffer();
        EXPECT_EQ(gparse_cnvt_from_e_to_string(out, number.data(), 3), number.data());
        EXPECT_STREQ(out, "before");
        EXPECT_EQ(number, text);
        gmem_ee_free(out);
    }
}

TEST(GparseCnvtFromEToString, TextWithoutExponentIsCopied) {
    std::string number = "1.50";
    EXPECT_EQ(into_buffer([&](char* out) { return gparse_cnvt_from_e_to_string(out, number.data(), 0); }), "1.50");
    EXPECT_EQ(gparse_cnvt_from_e_to_string(nullptr, number.data(), 0), number.data());
}

TEST(GparseCnvtFromEToString, WhatDoesNotBeginAsANumberIsAFailure) {
    for (const char* text : {"", ".5", " 1", "e5", "abc"}) {
        SCOPED_TRACE(text);
        std::string number = text;
        EXPECT_EQ(gparse_cnvt_from_e_to_string(out_buffer(), number.data(), 0), nullptr);
        EXPECT_EQ(gparse_cnvt_from_e_to_string(nullptr, number.data(), 0), nullptr);
    }
}

TEST(GparseCnvtFromEToString, ThirtyTwoBytesFitTheBufferAndNoMore) {
    std::string number(32, '7');
    EXPECT_EQ(into_buffer([&](char* out) { return gparse_cnvt_from_e_to_string(out, number.data(), 0); }), number);
    number += '7';
    EXPECT_EQ(into_buffer([&](char* out) { return gparse_cnvt_from_e_to_string(out, number.data(), 0); }), "none");
    EXPECT_EQ(gparse_cnvt_from_e_to_string(nullptr, number.data(), 0), number.data());
}

// ---------------------------------------------------------------------------------------------------------------------
// Against the model

namespace {

namespace model = orvix::test::model;
using orvix::test::RandomText;

// Few digits of a moderate size, as in a display.
std::string plain_number(RandomText& random) {
    return random.text("-", 1) + random.text("012345", 6) + '.' + random.text("0000123456789", 12) + '0';
}

}  // namespace

TEST(StrippedNumbers, DoublesAgreeWithTheModel) {
    for (unsigned seed = 0; seed < 20000; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        const double power = std::pow(10, static_cast<double>(random.number(60)) - 30);
        const double value = model::read_back(plain_number(random)) * (random.coin() ? 1 : power);
        const int min_decimals = static_cast<int>(random.number(12)) - 2;
        const int max_digits = static_cast<int>(random.number(35)) - 2;
        const model::Stripped expected = model::double_stripped(value, min_decimals, max_digits);
        if (expected.kind == model::Stripped::end_of_process) continue;
        EXPECT_EQ(stripped(value, min_decimals, max_digits),
                  expected.kind == model::Stripped::failure ? "none" : expected.bytes);
    }
}

TEST(StrippedNumbers, TextsAgreeWithTheModel) {
    for (unsigned seed = 0; seed < 20000; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        std::string number = plain_number(random);
        const int min_decimals = static_cast<int>(random.number(14)) - 2;
        const int max_digits = static_cast<int>(random.number(34)) - 2;
        const double value = model::read_back(number);
        const model::Stripped expected = model::string_stripped(number, value, min_decimals, max_digits);
        if (expected.kind == model::Stripped::end_of_process) continue;
        SCOPED_TRACE(number + ' ' + std::to_string(min_decimals) + ' ' + std::to_string(max_digits));
        char* const result = gparse_cnvt_string_string_stripped(nullptr, number.data(), min_decimals, max_digits);
        EXPECT_EQ(result, expected.kind == model::Stripped::argument ? number : expected.bytes);
        if (result != number.data()) gmem_ee_free(result);
        if (expected.kind == model::Stripped::text && expected.bytes.size() <= 32) {
            EXPECT_EQ(with_decimals(number, min_decimals, max_digits), expected.bytes);
        }
    }
}

TEST(StrippedNumbers, LocaleOfTheProcessPlaysNoPart) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    if (std::setlocale(LC_ALL, orvix::test::locale_with_comma) == nullptr)
        GTEST_SKIP() << "no locale with another decimal point";
    const std::string number = stripped(1.5, 3, 10);
    const std::string text = with_decimals("1.23456", 2, 4);
    std::setlocale(LC_ALL, before.c_str());
    EXPECT_EQ(number, "1.500");
    EXPECT_EQ(text, "1.23");
}
