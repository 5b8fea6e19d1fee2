// Lines of `.cfg` files.

#include "support/temp_site.h"

#include <orvix/gsl/environment.h>

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

using orvix::test::entry_of;
using orvix::test::setting;
using orvix::test::TempSite;

namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

// The settings of a table in slot order.
Pairs pairs_of(const EnvTable& table) {
    Pairs pairs;
    for (std::int32_t i = 0; i < table.used; ++i) pairs.emplace_back(table.entries[i].key, table.entries[i].value);
    return pairs;
}

// What a file with these bytes sets.
Pairs settings_in(std::string_view bytes) {
    const TempSite site;
    return pairs_of(site.open("format", bytes)->cwd);
}

}  // namespace

TEST(ConfigLine, BlanksAroundKeyEndAndValueAreCut) {
    EXPECT_EQ(settings_in("KEY = a = b  \n"), (Pairs{{"KEY", "a = b"}}));
}

TEST(ConfigLine, WhiteSpaceIsTheBlankAndTheBytesNineToThirteen) {
    EXPECT_EQ(settings_in("KEY\t\v\f\r =\f\v\t\r value\t\v\f\r \n"), (Pairs{{"KEY", "value"}}));
    EXPECT_EQ(settings_in("KEY=\xa0value\xa0\n"), (Pairs{{"KEY", "\xa0value\xa0"}}));
}

TEST(ConfigLine, EmptyValueIsStored) { EXPECT_EQ(settings_in("key=\n"), (Pairs{{"KEY", ""}})); }

TEST(ConfigLine, EmptyKeyStoresNothing) {
    EXPECT_EQ(settings_in("=x\n"), Pairs{});
    EXPECT_EQ(settings_in("  =x\n"), Pairs{});
}

TEST(ConfigLine, OneCharacterIsTooShortAndTwoAreNot) {
    EXPECT_EQ(settings_in("x\n"), Pairs{});
    EXPECT_EQ(settings_in("=\n"), Pairs{});
    EXPECT_EQ(settings_in("x=\n"), (Pairs{{"X", ""}}));
}

TEST(ConfigLine, IndentedKeyKeepsItsBlanks) {
    const TempSite site;
    eeEnv* env = site.open("demo", "  key=1\n");
    EXPECT_EQ(setting(env, "KEY"), std::nullopt);
    EXPECT_EQ(setting(env, "  KEY"), "1");
}

TEST(ConfigLine, NoCommentBehindAValue) {
    EXPECT_EQ(settings_in("VALUE=a # b\n"), (Pairs{{"VALUE", "a # b"}}));
    EXPECT_EQ(settings_in("URL=http://host\n"), (Pairs{{"URL", "http://host"}}));
}

TEST(ConfigLine, HashAndTwoSlashesBeginAComment) { EXPECT_EQ(settings_in("#a=1\n//b=2\n# c=3\n// d=4\n"), Pairs{}); }

TEST(ConfigLine, IndentedCommentIsAKey) {
    EXPECT_EQ(settings_in(" #a=1\n"), (Pairs{{" #A", "1"}}));
    EXPECT_EQ(settings_in(" //a=1\n"), (Pairs{{" //A", "1"}}));
}

TEST(ConfigLine, SingleSlashMeansNothing) { EXPECT_EQ(settings_in("/a=1\n"), (Pairs{{"/A", "1"}})); }

TEST(ConfigLine, LineWithoutEqualsIsIgnored) { EXPECT_EQ(settings_in("just words\nA=1\n"), (Pairs{{"A", "1"}})); }

TEST(ConfigLine, QuotesBackslashesAndReferencesStayAsTheyAre) {
    EXPECT_EQ(settings_in("A=\"quoted\"\nB=ends in \\\nC=%A/$HOME\n"),
              (Pairs{{"A", "\"quoted\""}, {"B", "ends in \\"}, {"C", "%A/$HOME"}}));
}

TEST(ConfigLine, LineOfFiveThousandCharactersStoresItsWholeValue) {
    const std::string value(5000, 'v');
    EXPECT_EQ(settings_in("LONG=" + value + "\nNEXT=1\n"), (Pairs{{"LONG", value}, {"NEXT", "1"}}));
}

TEST(ConfigLine, LongKeyIsCutToSixtyThree) {
    EXPECT_EQ(settings_in(std::string(70, 'k') + "=1\n"), (Pairs{{std::string(63, 'K'), "1"}}));
}

TEST(ConfigLine, CarriageReturnsAreWhiteSpace) {
    EXPECT_EQ(settings_in("A=1\r\nB=2\r\n"), (Pairs{{"A", "1"}, {"B", "2"}}));
}

TEST(ConfigLine, LastLineNeedsNoNewline) { EXPECT_EQ(settings_in("A=1\nB=2"), (Pairs{{"A", "1"}, {"B", "2"}})); }

TEST(ConfigLine, TextEndsAtANul) {
    EXPECT_EQ(settings_in(std::string("A=1") + '\0' + "23\nB=2\n"), (Pairs{{"A", "1"}, {"B", "2"}}));
}

TEST(ConfigFile, EntriesKeepTheOrderOfTheLinesAndAreClean) {
    const TempSite site;
    eeEnv* env = site.open("demo", "C=1\nA=2\nB=3\n");
    EXPECT_EQ(pairs_of(env->cwd), (Pairs{{"C", "1"}, {"A", "2"}, {"B", "3"}}));
    for (const char* key : {"A", "B", "C"}) EXPECT_EQ(entry_of(env->cwd, key)->mod, ENVMOD_CLEAN);
}

TEST(ConfigFile, LaterLineOfAKeyWinsAndCountsAsChanged) {
    const TempSite site;
    eeEnv* env = site.open("demo", "A=1\nB=2\nA=3\n");
    EXPECT_EQ(pairs_of(env->cwd), (Pairs{{"A", "3"}, {"B", "2"}}));
    EXPECT_EQ(entry_of(env->cwd, "A")->mod, ENVMOD_CHANGED);
    EXPECT_EQ(entry_of(env->cwd, "B")->mod, ENVMOD_CLEAN);
}

TEST(ConfigFile, ByteOrderMarkIsPartOfTheFirstKey) {
    EXPECT_EQ(settings_in("\xef\xbb\xbf"
                          "a=1\n"),
              (Pairs{{"\xef\xbb\xbf"
                      "A",
                      "1"}}));
}
