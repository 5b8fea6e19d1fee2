#include "support/host.h"
#include "text/number_text_model.h"

#include <gtest/gtest.h>
#include <orvix/gsl/number_text.h>
#include <support/buffer.h>
#include <support/random_text.h>

#include <algorithm>
#include <bit>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

using namespace orvix::test;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double no_number = std::numeric_limits<double>::quiet_NaN();
constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();

// The text that a writer leaves, or "none" for a false result, which has to come with the empty text.
std::string shown(bool result, Buffer& dst) {
    if (result) return dst.text();
    EXPECT_EQ(dst.text(), "");
    return "none";
}

// As many bytes as the header tells.
Buffer room_for_field(int width, int decimals) {
    return Buffer("before", static_cast<std::size_t>(std::max({width, decimals + 3, 6}) + 2));
}

std::string fitted(double value, int width, int decimals) {
    Buffer dst = room_for_field(width, decimals);
    return shown(gparse_dbltoas(value, width, decimals, dst), dst);
}

std::string strict(double value, int width, int decimals) {
    Buffer dst = room_for_field(width, decimals);
    return shown(gparse_dblxxas(value, width, decimals, dst), dst);
}

std::string widest(double value, int width) {
    Buffer dst = room_for_field(width, 0);
    return shown(gparse_dblmxas(value, width, dst), dst);
}

std::string whole(std::int32_t value, int width) {
    Buffer dst("before", static_cast<std::size_t>(std::clamp(width, 6, 11) + 1));
    return shown(gparse_lngtoas(value, width, dst), dst);
}

}  // namespace

// ---------------------------------------------------------------------------------------------------------------------
// The fitted format

TEST(GparseDbltoas, WritesTheFixedFormWithoutBlanks) {
    EXPECT_EQ(fitted(1.5, 10, 3), "1.500");
    EXPECT_EQ(fitted(-1.5, 10, 3), "-1.500");
    EXPECT_EQ(fitted(12, 10, 0), "12.");
    EXPECT_EQ(fitted(0.05, 10, 3), "0.050");
    EXPECT_EQ(fitted(0.001, 10, 3), "0.001");
    EXPECT_EQ(fitted(1234.5678, 10, 4), "1234.5678");
}

TEST(GparseDbltoas, ZeroWithoutDecimalsIsASingleDigit) {
    EXPECT_EQ(fitted(0.0, 10, 0), "0");
    EXPECT_EQ(fitted(-0.0, 10, 0), "0");
    EXPECT_EQ(fitted(0.0, 1, 0), "0");
}

TEST(GparseDbltoas, ZeroWithDecimalsIsFilledUpToOneByteLessThanTheField) {
    EXPECT_EQ(fitted(0.0, 10, 3), "    0.000");
    EXPECT_EQ(fitted(-0.0, 10, 3), "    0.000");
    EXPECT_EQ(fitted(0.0, 6, 3), "0.000");
    EXPECT_EQ(fitted(0.0, 5, 3), "0.000");
    EXPECT_EQ(fitted(0.0, 2, 3), "0.000");
}

TEST(GparseDbltoas, ZeroInAFieldOfNoWidthHasNoText) {
    EXPECT_EQ(fitted(0.0, 0, 0), "none");
    EXPECT_EQ(fitted(0.0, -5, 0), "none");
    EXPECT_EQ(fitted(0.0, 1, 3), "none");
}

TEST(GparseDbltoas, WhatWouldShowAsZerosTakesTheExponentForm) {
    EXPECT_EQ(fitted(0.04, 12, 1), "4.0000e-002");
    EXPECT_EQ(fitted(1e-10, 12, 3), "1.0000e-010");
    EXPECT_EQ(fitted(-1e-10, 12, 3), "-1.0000e-010");
    EXPECT_EQ(fitted(0.0009999, 10, 3), "1.00e-003");
    EXPECT_EQ(fitted(0.5, 10, 0), "5.00e-001");
}

TEST(GparseDbltoas, ValuesUpToTheNoiseAreZero) {
    EXPECT_EQ(fitted(1e-30, 10, 3), "    0.000");
    EXPECT_EQ(fitted(1e-23, 10, 3), "    0.000");
    EXPECT_EQ(fitted(-1e-23, 10, 3), "    0.000");
    EXPECT_EQ(fitted(1.1e-23, 12, 3), "1.1000e-023");
}

TEST(GparseDbltoas, WhatIsTooWideTakesTheExponentForm) {
    EXPECT_EQ(fitted(123456.0, 10, 3), "1.23e+005");
    EXPECT_EQ(fitted(-123456.0, 10, 3), "-1.23e+005");
    EXPECT_EQ(fitted(99999.999, 10, 3), "99999.999");
    EXPECT_EQ(fitted(-99999.999, 10, 3), "-99999.999");
    EXPECT_EQ(fitted(99999.9995, 10, 3), "1.00e+005");
}

TEST(GparseDbltoas, ExponentFormNeedsAWidthOfNine) {
    EXPECT_EQ(fitted(123456.0, 9, 3), "1.2e+005");
    EXPECT_EQ(fitted(123456.0, 8, 3), "none");
    EXPECT_EQ(fitted(0.04, 8, 1), "none");
    EXPECT_EQ(fitted(1, 8, -1), "none");
    EXPECT_EQ(fitted(1, -8, -1), "none");
}

TEST(GparseDbltoas, DecimalsBelowZeroTakeTheExponentForm) {
    EXPECT_EQ(fitted(1.5, 12, -1), "1.5000e+000");
    EXPECT_EQ(fitted(0.0, 12, -1), "0.0000e+000");
    EXPECT_EQ(fitted(0.15, 12, -7), "1.5000e-001");
    EXPECT_EQ(fitted(0.015, 12, std::numeric_limits<int>::min()), "1.5000e-002");
}

TEST(GparseDbltoas, ExponentHasThreeDigitsOverTheWholeRange) {
    EXPECT_EQ(fitted(1e300, 15, 3), "1.0000000e+300");
    EXPECT_EQ(fitted(1e5, 10, 3), "1.00e+005");
    EXPECT_EQ(fitted(std::numeric_limits<double>::max(), 15, 3), "1.7976931e+308");
    EXPECT_EQ(fitted(5e-324, 15, -1), "4.9406565e-324");
    EXPECT_EQ(fitted(2.2250738585072014e-308, 15, -1), "2.2250739e-308");
}

TEST(GparseDbltoas, RoundingMayRaiseTheExponent) {
    EXPECT_EQ(fitted(9.996e9, 10, 3), "1.00e+010");
    EXPECT_EQ(fitted(9.994e9, 10, 3), "9.99e+009");
    EXPECT_EQ(fitted(0.0009996, 10, 3), "1.00e-003");
    EXPECT_EQ(fitted(999999999.5, 16, -1), "1.00000000e+009");
    EXPECT_EQ(fitted(999999998.5, 16, -1), "9.99999998e+008");
}

TEST(GparseDbltoas, TiesGoToTheEvenDigit) {
    EXPECT_EQ(fitted(0.125, 10, 2), "0.12");
    EXPECT_EQ(fitted(0.375, 10, 2), "0.38");
    EXPECT_EQ(fitted(1.5, 10, 0), "2.");
    EXPECT_EQ(fitted(2.5, 10, 0), "2.");
    EXPECT_EQ(fitted(3.5, 10, 0), "4.");
    EXPECT_EQ(fitted(1.25, 9, -1), "1.2e+000");
    EXPECT_EQ(fitted(1.75, 9, -1), "1.8e+000");
    EXPECT_EQ(fitted(1250, 9, -1), "1.2e+003");
    EXPECT_EQ(fitted(9.5, 10, 0), "10.");
}

TEST(GparseDbltoas, DigitsAreExactHoweverManyAreAskedFor) {
    EXPECT_EQ(fitted(0.1, 70, 60), "0.100000000000000005551115123125782702118158340454101562500000");
    EXPECT_EQ(fitted(1e22, 40, 2), "10000000000000000000000.00");
    EXPECT_EQ(fitted(1e23, 40, 2), "99999999999999991611392.00");
    EXPECT_EQ(fitted(0.1, 70, -1), "1.00000000000000005551115123125782702118158340454101562500000000e-001");
    EXPECT_EQ(fitted(std::ldexp(1, 70), 40, 2), "1180591620717411303424.00");
}

TEST(GparseDbltoas, ZerosFollowTheLastDigitThatANumberHas) {
    const std::string text = fitted(5e-324, 3000, 2000);
    EXPECT_EQ(text.size(), 2002U);
    EXPECT_EQ(text.substr(0, 330), "0." + std::string(323, '0') + "49406");
    EXPECT_EQ(text.substr(1066), "3447265625" + std::string(926, '0'));
    const std::string exponent = fitted(5e-324, 3000, -1);
    EXPECT_EQ(exponent.size(), 2999U);
    EXPECT_EQ(exponent.substr(2990), "0000e-324");
}

TEST(GparseDbltoas, SignTakesNoPlaceInFrontOfASingleZero) {
    EXPECT_EQ(fitted(0.5, 5, 3), "0.500");
    EXPECT_EQ(fitted(-0.5, 5, 3), "-0.500");
    EXPECT_EQ(fitted(0.05, 4, 3), "0.050");
    EXPECT_EQ(fitted(0.5, 4, 3), "none");
}

TEST(GparseDbltoas, LimitOfTheFixedFormIsThatOfDoubles) {
    EXPECT_EQ(fitted(1e15, 20, 3), "1000000000000000.000");
    EXPECT_EQ(fitted(-1e15, 20, 3), "-1000000000000000.000");
    EXPECT_EQ(fitted(1e15 + 1, 20, 3), "1.000000000000e+015");
}

TEST(GparseDbltoas, InfiniteNumbersAndNoNumbersHaveNoText) {
    for (const double value : {infinity, -infinity, no_number, -no_number}) {
        for (const int decimals : {-1, 0, 3}) {
            EXPECT_EQ(fitted(value, 20, decimals), "none");
            EXPECT_EQ(fitted(value, 400, decimals), "none");
        }
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// The strict format

TEST(GparseDblxxas, WritesTheFixedForm) {
    EXPECT_EQ(strict(1.5, 10, 3), "1.500");
    EXPECT_EQ(strict(-1.5, 10, 3), "-1.500");
    EXPECT_EQ(strict(0.001, 10, 3), "0.001");
    EXPECT_EQ(strict(12, 10, 0), "12.");
}

TEST(GparseDblxxas, WhatWouldShowAsZerosIsZero) {
    EXPECT_EQ(strict(1e-10, 10, 3), "    0.000");
    EXPECT_EQ(strict(-0.0009999, 10, 3), "    0.000");
    EXPECT_EQ(strict(0.0, 10, 3), "    0.000");
    EXPECT_EQ(strict(0.5, 10, 0), "       0.");
}

TEST(GparseDblxxas, ZeroWithoutDecimalsIsASingleDigit) {
    EXPECT_EQ(strict(0.0, 10, 0), "0");
    EXPECT_EQ(strict(-0.0, 10, 0), "0");
}

TEST(GparseDblxxas, ZeroInAFieldOfNoWidthKeepsItsPoint) {
    EXPECT_EQ(strict(0.0, 0, 0), "0.");
    EXPECT_EQ(strict(0.0, -5, 2), "0.00");
}

TEST(GparseDblxxas, WhatIsTooWideHasNoText) {
    EXPECT_EQ(strict(123456.0, 11, 3), "123456.000");
    EXPECT_EQ(strict(123456.0, 10, 3), "none");
    EXPECT_EQ(strict(-123456.0, 10, 3), "none");
    EXPECT_EQ(strict(99999.9994, 10, 3), "99999.999");
    EXPECT_EQ(strict(99999.9996, 10, 3), "none");
    EXPECT_EQ(strict(1e300, 10, 3), "none");
}

TEST(GparseDblxxas, SingleZeroInFrontOfThePointCounts) {
    EXPECT_EQ(strict(0.5, 4, 1), "0.5");
    EXPECT_EQ(strict(-0.5, 4, 1), "-0.5");
    EXPECT_EQ(strict(0.5, 3, 1), "none");
}

TEST(GparseDblxxas, DecimalsBelowZeroTakeTheExponentForm) {
    EXPECT_EQ(strict(1.5, 12, -1), "1.5000e+000");
    EXPECT_EQ(strict(1.5, 8, -1), "none");
}

TEST(GparseDblxxas, InfiniteNumbersAndNoNumbersHaveNoText) {
    for (const double value : {infinity, -infinity, no_number}) {
        EXPECT_EQ(strict(value, 400, 3), "none");
        EXPECT_EQ(strict(value, 400, -1), "none");
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// The fitted format with as many decimals as fit

TEST(GparseDblmxas, FillsTheFieldWithDecimals) {
    EXPECT_EQ(widest(123.456, 10), "123.45600");
    EXPECT_EQ(widest(-123.456, 10), "-123.45600");
    EXPECT_EQ(widest(1.5, 10), "1.5000000");
    EXPECT_EQ(widest(0.5, 10), "0.5000000");
    EXPECT_EQ(widest(1000, 10), "1000.0000");
    EXPECT_EQ(widest(999.5, 10), "999.50000");
}

TEST(GparseDblmxas, NumberThatFillsTheFieldHasNoDecimals) {
    EXPECT_EQ(widest(12345678, 10), "12345678.");
    EXPECT_EQ(widest(-12345678, 10), "-12345678.");
    EXPECT_EQ(widest(123456789, 10), "1.23e+008");
}

TEST(GparseDblmxas, SmallNumbersTakeTheExponentForm) {
    EXPECT_EQ(widest(1e-7, 10), "0.0000001");
    EXPECT_EQ(widest(9e-8, 10), "9.00e-008");
    EXPECT_EQ(widest(1e-24, 10), "0.0000000");
    EXPECT_EQ(widest(0, 10), "0.0000000");
}

TEST(GparseDblmxas, NarrowFieldsHaveNoText) {
    EXPECT_EQ(widest(12.5, 3), "none");
    EXPECT_EQ(widest(2, 3), "2.");
    EXPECT_EQ(widest(0, 3), "0");
    EXPECT_EQ(widest(2, 2), "none");
    EXPECT_EQ(widest(2, std::numeric_limits<int>::min()), "none");
}

TEST(GparseDblmxas, InfiniteNumbersAndNoNumbersHaveNoText) {
    for (const double value : {infinity, -infinity, no_number}) EXPECT_EQ(widest(value, 40), "none");
}

// ---------------------------------------------------------------------------------------------------------------------
// Whole numbers

TEST(GparseLngtoas, WidthIsALimitAndNoFieldToFill) {
    EXPECT_EQ(whole(5, 10), "5");
    EXPECT_EQ(whole(-5, 2), "-5");
    EXPECT_EQ(whole(-5, 1), "none");
    EXPECT_EQ(whole(5, 0), "none");
    EXPECT_EQ(whole(5, -1), "none");
    EXPECT_EQ(whole(0, 1), "0");
}

TEST(GparseLngtoas, MostNegativeValueHasAllItsDigits) {
    EXPECT_EQ(whole(least, 11), "-2147483648");
    EXPECT_EQ(whole(least, 10), "none");
    EXPECT_EQ(whole(2147483647, 10), "2147483647");
}

TEST(GparseLngtoas, EveryCountOfDigitsIsRight) {
    for (std::int64_t power = 1; power <= 1000000000; power *= 10) {
        for (const std::int64_t value : {power - 1, power, power + 1, -power, 1 - power}) {
            EXPECT_EQ(whole(static_cast<std::int32_t>(value), 11), std::to_string(value));
        }
    }
}

TEST(GparseLngtoas, PowersOfTwoAreRight) {
    for (int i = 0; i < 31; ++i) {
        const std::int32_t power = std::int32_t{1} << i;
        EXPECT_EQ(whole(power, 11), std::to_string(power));
        EXPECT_EQ(whole(power - 1, 11), std::to_string(power - 1));
    }
}

TEST(GparseInttoas, DoesTheSame) {
    Buffer dst("before", 8);
    EXPECT_TRUE(gparse_inttoas(-42, 3, dst));
    EXPECT_EQ(dst.text(), "-42");
    EXPECT_FALSE(gparse_inttoas(-42, 2, dst));
    EXPECT_EQ(dst.text(), "");
}

// ---------------------------------------------------------------------------------------------------------------------
// Without a field

TEST(AstrDoubleToStr, WritesFourDecimals) {
    const auto text = [](double value) {
        Buffer dst = room_for(315);
        return astr_double_to_str(value, dst) ? dst.text() : "none";
    };
    EXPECT_EQ(text(1.5), "1.5000");
    EXPECT_EQ(text(-1234.56789), "-1234.5679");
    EXPECT_EQ(text(0), "0.0000");
    EXPECT_EQ(text(-0.0), "-0.0000");
    EXPECT_EQ(text(-0.00001), "-0.0000");
    EXPECT_EQ(text(infinity), "inf");
    EXPECT_EQ(text(-infinity), "-inf");
    EXPECT_EQ(text(no_number), "nan");
    EXPECT_EQ(text(std::numeric_limits<double>::max()).size(), 314U);
}

TEST(AstrDoubleToStr, NullIsAFailure) { EXPECT_FALSE(astr_double_to_str(1, nullptr)); }

TEST(AstrLongToStr, WritesAllDigits) {
    const auto text = [](std::int32_t value) {
        Buffer dst = room_for(12);
        return astr_long_to_str(value, dst) ? dst.text() : "none";
    };
    EXPECT_EQ(text(0), "0");
    EXPECT_EQ(text(-12), "-12");
    EXPECT_EQ(text(least), "-2147483648");
}

TEST(AstrLongToStr, NullIsAFailure) { EXPECT_FALSE(astr_long_to_str(1, nullptr)); }

// ---------------------------------------------------------------------------------------------------------------------
// Against the model

namespace {

void expect_as_modelled(double value, int width, int decimals) {
    SCOPED_TRACE(testing::Message() << value << " width " << width << " decimals " << decimals);
    EXPECT_EQ(fitted(value, width, decimals), model::fitted(value, width, decimals).value_or("none"));
    EXPECT_EQ(strict(value, width, decimals), model::strict(value, width, decimals).value_or("none"));
}

// Few digits, so that ties and powers of ten come up.
double plain_number(RandomText& random) {
    const double digits = std::stod("0" + random.text("0123456789", 6)) / 8;
    const double power = std::pow(10, static_cast<double>(random.number(30)) - 15);
    return random.coin() ? digits * power : -digits / power;
}

double any_number(RandomText& random) {
    return std::bit_cast<double>(static_cast<std::uint64_t>(random.number(std::numeric_limits<std::size_t>::max())));
}

}  // namespace

TEST(NumberWriting, AgreesWithTheModelOnPlainNumbers) {
    for (unsigned seed = 0; seed < 20000; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        const double value = plain_number(random);
        expect_as_modelled(value, static_cast<int>(random.number(30)), static_cast<int>(random.number(22)) - 2);
    }
}

TEST(NumberWriting, AgreesWithTheModelOnAnyNumber) {
    for (unsigned seed = 0; seed < 1500; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        const double value = any_number(random);
        expect_as_modelled(value, static_cast<int>(random.number(400)), static_cast<int>(random.number(400)) - 20);
    }
}

TEST(NumberWriting, AgreesWithTheModelOnTies) {
    for (unsigned seed = 0; seed < 5000; ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        const int places = static_cast<int>(random.number(20));
        const double value = std::ldexp(static_cast<double>(random.number(1 << 20)), -places);
        expect_as_modelled(value, 40, places - 1);
        expect_as_modelled(value, 9 + static_cast<int>(random.number(12)), -1);
    }
}

TEST(NumberWriting, AgreesWithTheModelNextToPowersOfTen) {
    for (int power = -30; power <= 30; ++power) {
        const double exact = model::power_of_ten(power);
        for (const double value : {std::nextafter(exact, 0), exact, std::nextafter(exact, infinity)}) {
            for (int width = 1; width <= 24; ++width) {
                expect_as_modelled(value, width, -1);
                expect_as_modelled(value, width, 0);
                expect_as_modelled(value, width, width / 2);
            }
        }
    }
}

TEST(NumberWriting, LocaleOfTheProcessPlaysNoPart) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    if (std::setlocale(LC_ALL, orvix::test::locale_with_comma) == nullptr)
        GTEST_SKIP() << "no locale with another decimal point";
    const std::string fixed = fitted(1234.5, 20, 2);
    const std::string exponent = fitted(1234.5, 12, -1);
    Buffer runtime = room_for(20);
    astr_double_to_str(1234.5, runtime);
    std::setlocale(LC_ALL, before.c_str());
    EXPECT_EQ(fixed, "1234.50");
    EXPECT_EQ(exponent, "1.2345e+003");
    EXPECT_EQ(runtime.text(), "1234.5000");
}
