#include <orvix/gsl/arrays.h>
#include <orvix/gsl/status.h>

#include <gtest/gtest.h>
#include <support/buffer.h>
#include <support/random_text.h>

#include <cstdlib>
#include <string>

using orvix::test::Buffer;

namespace {

char** array_of_strings(long long count) {
    auto** const array = static_cast<char**>(static_cast<void*>(gmem_ee_calloc(static_cast<std::size_t>(count), 8)));
    for (long long i = 0; i < count; ++i) array[i] = HX_stringcopy("text");
    return array;
}

constexpr long long largest = 9223372036854775807;
constexpr long long smallest = -largest - 1;

}  // namespace

// What is freed twice or not at all is seen by the address sanitizer.

TEST(HxFreeCharacterArray, FreesTheStringsAndTheArray) { HX_free_character_array(array_of_strings(3), 3); }

TEST(HxFreeCharacterArray, PassesOverNullStrings) {
    char** const array = array_of_strings(3);
    gmem_ee_free(array[1]);
    array[1] = nullptr;
    HX_free_character_array(array, 3);
}

TEST(HxFreeCharacterArray, CountBelowOneFreesTheArrayAlone) {
    for (const long long count : {0, -2}) {
        char** const array = array_of_strings(1);
        char* const string = array[0];
        HX_free_character_array(array, count);
        EXPECT_STREQ(string, "text");
        gmem_ee_free(string);
    }
}

TEST(HxFreeCharacterArray, NullArrayDoesNothing) { HX_free_character_array(nullptr, 3); }

TEST(HxStringcopy, CopiesTheText) {
    char original[] = "abc";
    char* const copy = HX_stringcopy(original);
    original[0] = 'x';
    EXPECT_STREQ(copy, "abc");
    gmem_ee_free(copy);
}

TEST(HxStringcopy, NullGivesANewEmptyString) {
    char* const copy = HX_stringcopy(nullptr);
    ASSERT_NE(copy, nullptr);
    EXPECT_STREQ(copy, "");
    gmem_ee_free(copy);
}

TEST(HxStrlwr, LowersAsciiCapitalsAlone) {
    std::string expected;
    std::string bytes;
    for (int byte = 1; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
        expected += static_cast<char>(byte >= 65 && byte <= 90 ? byte + 32 : byte);
    }
    Buffer text(bytes);
    EXPECT_EQ(HX_strlwr(text), text.get());
    EXPECT_EQ(text.text(), expected);
}

TEST(HxStrlwr, NullGivesNull) { EXPECT_EQ(HX_strlwr(nullptr), nullptr); }

TEST(HxAtoll, ReadsDigitsUpToTheFirstOtherByte) {
    EXPECT_EQ(HX_atoll("42"), 42);
    EXPECT_EQ(HX_atoll("42.9"), 42);
    EXPECT_EQ(HX_atoll("12ab"), 12);
    EXPECT_EQ(HX_atoll("007"), 7);
}

TEST(HxAtoll, TakesASign) {
    EXPECT_EQ(HX_atoll("-42"), -42);
    EXPECT_EQ(HX_atoll("+42"), 42);
}

TEST(HxAtoll, LeadingSpaceIsPassedOver) { EXPECT_EQ(HX_atoll(" \t\n\v\f\r-1"), -1); }

TEST(HxAtoll, GivesZeroWithoutDigits) {
    for (const char* text : {"", "   ", "abc", "-", "- 5", "+-5", "--5", ".5"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(HX_atoll(text), 0);
    }
    EXPECT_EQ(HX_atoll(nullptr), 0);
}

TEST(HxAtoll, ReadsWhatSixtyFourBitsHold) {
    EXPECT_EQ(HX_atoll("9223372036854775807"), largest);
    EXPECT_EQ(HX_atoll("-9223372036854775808"), smallest);
    EXPECT_EQ(HX_atoll("-9223372036854775807"), smallest + 1);
}

TEST(HxAtoll, LargerNumbersGiveTheNearest) {
    EXPECT_EQ(HX_atoll("9223372036854775808"), largest);
    EXPECT_EQ(HX_atoll("-9223372036854775809"), smallest);
    EXPECT_EQ(HX_atoll("99999999999999999999999999"), largest);
    EXPECT_EQ(HX_atoll("-18446744073709551617"), smallest);
}

TEST(HxAtoll, AgreesWithStrtollOnRandomTexts) {
    for (unsigned seed = 0; seed < 2000; ++seed) {
        SCOPED_TRACE(seed);
        const std::string text = orvix::test::RandomText(seed).text("0123456789 +-x", seed % 3 == 0 ? 25 : 5);
        EXPECT_EQ(HX_atoll(text.c_str()), std::strtoll(text.c_str(), nullptr, 10)) << text;
    }
}
