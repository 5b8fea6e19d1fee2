#include <orvix/core/text.h>

#include <gtest/gtest.h>

#include <random>
#include <string>

using orvix::toStdString;
using orvix::toUtf16;

TEST(ToUtf16, EncodesEveryPlane) {
    EXPECT_EQ(toUtf16(""), u"");
    EXPECT_EQ(toUtf16("a\xc3\xa4\xe6\x97\xa5"), u"a\u00e4\u65e5");
    EXPECT_EQ(toUtf16("\xf0\x9f\x94\xa7"), u"\U0001f527");
    EXPECT_EQ(toUtf16(std::string("a\0b", 3)), std::u16string(u"a\0b", 3));
}

TEST(ToUtf16, ReplacesEachByteThatBeginsNoCharacter) {
    EXPECT_EQ(toUtf16("a\xff\xfe"), u"a\ufffd\ufffd");
    EXPECT_EQ(toUtf16("\xc0\x80"), u"\ufffd\ufffd");                      // an overlong zero
    EXPECT_EQ(toUtf16("\xe6\x97"), u"\ufffd\ufffd");                      // cut short
    EXPECT_EQ(toUtf16("\xf4\x90\x80\x80"), u"\ufffd\ufffd\ufffd\ufffd");  // beyond the last plane
    EXPECT_EQ(toUtf16("\xe0\x80\xaf"
                      "x"),
              u"\ufffd\ufffd\ufffdx");
}

TEST(ToStdString, EncodesEveryPlane) {
    EXPECT_EQ(toStdString(u"a\u00e4\u65e5\U0001f527"), "a\xc3\xa4\xe6\x97\xa5\xf0\x9f\x94\xa7");
}

TEST(ToStdString, LoneSurrogatesMakeTheRoundTrip) {
    const std::u16string name{u'a', 0xd800, u'b', 0xdc00, 0xdfff};
    EXPECT_EQ(toStdString(name),
              "a\xed\xa0\x80"
              "b\xed\xb0\x80\xed\xbf\xbf");
    EXPECT_EQ(toUtf16(toStdString(name)), name);
}

TEST(ToStdString, RandomSixteenBitTextMakesTheRoundTrip) {
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        std::u16string text;
        for (int i = static_cast<int>(random() % 20); i > 0; --i) {
            const bool surrogate = random() % 3 == 0;
            text += static_cast<char16_t>(surrogate ? 0xd800 + random() % 0x800 : random() % 0x10000);
        }
        EXPECT_EQ(toUtf16(toStdString(text)), text);
    }
}
