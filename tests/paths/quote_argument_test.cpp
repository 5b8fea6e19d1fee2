#include "paths/models.h"

#include <gtest/gtest.h>
#include <orvix/gsl/file_names.h>
#include <support/random_text.h>

#include <string>

using namespace orvix::test;

TEST(HxQuoteArgument, EmptyTextGivesTwoDoubleQuotes) { EXPECT_STREQ(HX_quote_argument(""), "\"\""); }

TEST(HxQuoteArgument, BackslashIsPutBeforeADoubleQuote) { EXPECT_STREQ(HX_quote_argument("a\"b"), "\"a\\\"b\""); }

TEST(HxQuoteArgument, BackslashIsPutBeforeABackslash) { EXPECT_STREQ(HX_quote_argument("c:\\"), "\"c:\\\\\""); }

TEST(HxQuoteArgument, ResultIsOverwrittenByTheNextCall) {
    const char* first = HX_quote_argument("long enough to hold the next");
    const char* second = HX_quote_argument("b");
    EXPECT_EQ(first, second);
    EXPECT_STREQ(first, "\"b\"");
}

TEST(HxQuoteArgument, TextThatNeedsTheMostRoomFits) {
    EXPECT_EQ(HX_quote_argument(std::string(3000, '"').c_str()), model::quoted(std::string(3000, '"')));
}

TEST(HxQuoteArgument, EarlierResultMayBeQuotedAgain) {
    EXPECT_STREQ(HX_quote_argument(HX_quote_argument("a b")), "\"\\\"a b\\\"\"");
}

TEST(HxQuoteArgument, PartOfAnEarlierResultMayBeQuotedAgain) {
    EXPECT_STREQ(HX_quote_argument(HX_quote_argument("abc") + 3), "\"c\\\"\"");
}

TEST(HxQuoteArgument, AgreesWithTheModelOnRandomTexts) {
    for (unsigned seed = 0; seed < 1000; ++seed) {
        SCOPED_TRACE(seed);
        const std::string text = RandomText(seed).text("a \"\\", 30);
        const std::string result = HX_quote_argument(text.c_str());
        EXPECT_EQ(result, model::quoted(text));
        EXPECT_EQ(model::unquoted(result), text);
    }
}
