// References in texts.

#include "support/host.h"
#include "support/temp_site.h"

#include <orvix/gsl/environment.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <utility>
#include <vector>

using orvix::test::ScopedVariable;
using orvix::test::TempSite;

namespace {

const std::string nothing = "-1";

class Expansion : public testing::Test {
protected:
    void put(const char* name, const char* value) { gui_env_put(env, name, value, ENVLOC_ANY); }

    // The text that comes out, or the result as a number if that is not 0.
    std::string expanded(const std::string& text, eeEnv* first) {
        std::string dest(10'000, '#');
        const long long result = gui_env_expand_str(dest.data(), text.c_str(), dest.size(), first, nullptr);
        return result == 0 ? dest.c_str() : std::to_string(result);
    }
    std::string expanded(const std::string& text) { return expanded(text, env); }

    TempSite site;
    eeEnv* env = gui_env_open("demo", ENVLOC_ANY);
};

using ExpansionSizes = Expansion;
using ExpansionEnd = Expansion;
using ExpansionSources = Expansion;
using SystemOnly = Expansion;
using GetAndExpand = Expansion;

}  // namespace

TEST_F(Expansion, PlainTextComesOutAsItIs) {
    EXPECT_EQ(expanded("plain text"), "plain text");
    EXPECT_EQ(expanded("\xc3\xa4 \x01 \xff"), "\xc3\xa4 \x01 \xff");
}

TEST_F(Expansion, EmptyAndNullTextsGiveNothing) {
    char dest[8] = "before";
    EXPECT_EQ(gui_env_expand_str(dest, "", sizeof dest, env, nullptr), -1);
    EXPECT_STREQ(dest, "");
    char other[8] = "before";
    EXPECT_EQ(gui_env_expand_str(other, nullptr, sizeof other, env, nullptr), -1);
    EXPECT_STREQ(other, "");
}

TEST_F(Expansion, OneColonAtTheEndIsCut) {
    EXPECT_EQ(expanded("a:"), "a");
    EXPECT_EQ(expanded(":"), "");
    EXPECT_EQ(expanded("a::"), "a:");
    EXPECT_EQ(expanded("a;"), "a;");
}

TEST_F(Expansion, EveryPassCutsAColon) {
    put("V", "v");
    // One goes after the pass that replaces V, one after the pass that finds nothing to replace.
    EXPECT_EQ(expanded("%V:::"), "v:");
}

TEST_F(Expansion, ReferencesGetTheirValues) {
    const ScopedVariable variable("ORVIX_TEST_VARIABLE", "variable");
    put("SETTING", "setting");
    EXPECT_EQ(expanded("%SETTING/x"), "setting/x");
    EXPECT_EQ(expanded("{%SETTING}x"), "settingx");
    EXPECT_EQ(expanded("$ORVIX_TEST_VARIABLE/x"), "variable/x");
    EXPECT_EQ(expanded("{$ORVIX_TEST_VARIABLE}x"), "variablex");
}

TEST_F(Expansion, NamesCountAsUpperCase) {
    const ScopedVariable variable("ORVIX_TEST_VARIABLE", "variable");
    put("SETTING", "setting");
    EXPECT_EQ(expanded("%setting {%Setting} $orvix_test_Variable {$orvix_test_variable}"),
              "setting setting variable variable");
}

TEST_F(Expansion, VariablesInLowerCaseAreOutOfReach) {
    const ScopedVariable variable("orvix_test_lower", "value");
    EXPECT_EQ(expanded("[$orvix_test_lower."), orvix::test::variables_fold_letter_case ? "[value." : "[");
}

TEST_F(Expansion, ReferenceWithoutValueSwallowsThePlainCharacterBehindIt) {
    EXPECT_EQ(expanded("%U/x"), "x");
    EXPECT_EQ(expanded("[%U]"), "[");
    EXPECT_EQ(expanded("$ORVIX_TEST_UNSET/x"), "x");
}

TEST_F(Expansion, FurtherReferencesDoNotEndTheSwallowing) {
    put("V", "v");
    EXPECT_EQ(expanded("%U%U/x"), "x");
    EXPECT_EQ(expanded("%U%V/x"), "vx");
}

TEST_F(Expansion, VanishedElementTakesItsSeparatorAlong) {
    put("B", "b");
    EXPECT_EQ(expanded("%A:%B"), "b");
    EXPECT_EQ(expanded("%B:%A"), "b");
    EXPECT_EQ(expanded("%B:%A:%B"), "b:b");
}

TEST_F(Expansion, EmptyValueCountsAsNone) {
    const ScopedVariable variable("ORVIX_TEST_EMPTY", "");
    put("E", "");
    put("N", "v");
    put("N", nullptr);
    EXPECT_EQ(expanded("%E/x"), "x");
    EXPECT_EQ(expanded("%N/x"), "x");
    EXPECT_EQ(expanded("$ORVIX_TEST_EMPTY/x"), "x");
}

TEST_F(Expansion, SignWithoutNameYieldsNothing) {
    EXPECT_EQ(expanded("100%"), "100");
    EXPECT_EQ(expanded("5$"), "5");
    EXPECT_EQ(expanded("5 % 3"), "5 3");
    EXPECT_EQ(expanded("$"), nothing);
    EXPECT_EQ(expanded("%"), nothing);
}

TEST_F(Expansion, InstallationHasALiteralInReserve) {
    const ScopedVariable unset("HXORVIX_DIR", nullptr);
    EXPECT_EQ(expanded("$HXORVIX_DIR"), "\\hxorvix");
    EXPECT_EQ(expanded("{$hxorvix_dir}\\config"), "\\hxorvix\\config");
    EXPECT_EQ(expanded("%HXORVIX_DIR/x"), "x");
}

TEST_F(Expansion, InstallationSetToNothingIsNothing) {
    const ScopedVariable empty("HXORVIX_DIR", "");
    EXPECT_EQ(expanded("$HXORVIX_DIR/x"), "x");
}

TEST_F(Expansion, DollarBeforeABraceHasNoName) {
    const ScopedVariable variable("NAME", "value");
    EXPECT_EQ(expanded("${NAME}"), "NAME}");
}

TEST_F(Expansion, NamesInBracesHoldAnyCharacter) {
    put("A B", "with blank");
    put("A", "a");
    put("X%Y", "signs");
    EXPECT_EQ(expanded("{%a b}"), "with blank");
    EXPECT_EQ(expanded("%a b"), "a b");
    EXPECT_EQ(expanded("{%x%y}"), "signs");
}

TEST_F(Expansion, BracesWithoutSignArePlainText) {
    EXPECT_EQ(expanded("{x}"), "{x}");
    EXPECT_EQ(expanded("a}b"), "a}b");
    EXPECT_EQ(expanded("{"), "{");
    EXPECT_EQ(expanded("{{"), "{{");
    EXPECT_EQ(expanded("%U{x}"), "x}");
}

TEST_F(Expansion, EmptyBracesYieldNothing) {
    EXPECT_EQ(expanded("{%}/x"), "x");
    EXPECT_EQ(expanded("{$}/x"), "x");
}

TEST_F(Expansion, UnclosedBraceStopsAtTheEndOfTheText) {
    put("A", "value");
    EXPECT_EQ(expanded("x{%A"), "xvalue");
    EXPECT_EQ(expanded("x{%UNKNOWN"), "x");
    EXPECT_EQ(expanded("x{%"), "x");
    EXPECT_EQ(expanded("{$"), nothing);
}

TEST_F(Expansion, ReferencesInsideValuesAreExpandedLater) {
    put("A", "%B");
    put("B", "c");
    EXPECT_EQ(expanded("%A"), "c");
}

TEST_F(Expansion, PassesAssembleReferences) {
    put("A", "%");
    put("AB", "one name");
    put("B", "two pieces");
    EXPECT_EQ(expanded("%AB"), "one name");
    EXPECT_EQ(expanded("{%A}B"), "two pieces");
}

TEST_F(Expansion, BraceBeforeAReferenceMayBecomePartOfTheNextOne) {
    put("A", "%B}");
    put("B", "value");
    EXPECT_EQ(expanded("x{{%A}"), "xvalue");
}

TEST_F(Expansion, NameOfSeventyLettersConsumesTheRestOfTheText) {
    const std::string name(70, 'n');
    put(name.c_str(), "value");
    EXPECT_EQ(expanded("[%" + name + "/x %U]"), "[value");
    EXPECT_EQ(expanded("[{%" + name + "}/x]"), "[value");
}

TEST_F(Expansion, NameOfSixtyThreeLettersConsumesTheRestToo) {
    put(std::string(63, 'n').c_str(), "value");
    put(std::string(62, 'n').c_str(), "short");
    EXPECT_EQ(expanded("[%" + std::string(63, 'n') + "/x"), "[value");
    EXPECT_EQ(expanded("[{%" + std::string(63, 'n') + "}/x"), "[value");
    EXPECT_EQ(expanded("[%" + std::string(62, 'n') + "/x"), "[short/x");
}

TEST_F(Expansion, DestinationMayBeTheSource) {
    put("A", "a longer value than its name");
    char text[100] = "%A and more";
    EXPECT_EQ(gui_env_expand_str(text, text, sizeof text, env, nullptr), 0);
    EXPECT_STREQ(text, "a longer value than its name and more");
}

TEST_F(ExpansionSizes, TextOfThreeNeedsFour) {
    char dest[8] = "before";
    EXPECT_EQ(gui_env_expand_str(dest, "abc", 3, env, nullptr), 4);
    EXPECT_STREQ(dest, "");
    EXPECT_EQ(gui_env_expand_str(dest, "abc", 4, env, nullptr), 0);
    EXPECT_STREQ(dest, "abc");
}

TEST_F(ExpansionSizes, ExpandedTextCounts) {
    put("A", "12345");
    char dest[8];
    EXPECT_EQ(gui_env_expand_str(dest, "%A", 5, env, nullptr), 6);
    EXPECT_EQ(gui_env_expand_str(dest, "%A", 6, env, nullptr), 0);
    EXPECT_STREQ(dest, "12345");
}

TEST_F(ExpansionSizes, SizeZeroTouchesNothing) {
    char dest[8] = "before";
    EXPECT_EQ(gui_env_expand_str(dest, "abc", 0, env, nullptr), 4);
    EXPECT_EQ(gui_env_expand_str(dest, "", 0, env, nullptr), -1);
    EXPECT_STREQ(dest, "before");
}

TEST_F(ExpansionSizes, WithoutDestinationOnlyTheResultComes) {
    EXPECT_EQ(gui_env_expand_str(nullptr, "abc", 3, env, nullptr), 4);
    EXPECT_EQ(gui_env_expand_str(nullptr, "abc", 4, env, nullptr), 0);
    EXPECT_EQ(gui_env_expand_str(nullptr, "$", 4, env, nullptr), -1);
}

TEST_F(ExpansionSizes, LongValuesComeOutWhole) {
    const std::string value(5000, 'v');
    put("A", value.c_str());
    EXPECT_EQ(expanded("[%A]"), "[" + value + "]");
}

TEST_F(ExpansionEnd, DeadReferenceAloneEndsWithNothing) {
    put("A", "%UNDEFINED");
    EXPECT_EQ(expanded("%A"), nothing);
    EXPECT_EQ(expanded("%A/x"), "x");
}

TEST_F(ExpansionEnd, DeadReferenceLosesItsColonsAndThenEnds) {
    put("A", "%UNDEFINED:");
    EXPECT_EQ(expanded("%A"), nothing);
    // Here the first pass leaves two colons: one is swallowed, one is cut, and nothing is left to repeat.
    put("A", "%UNDEFINED:::");
    EXPECT_EQ(expanded("%A"), "");
}

TEST_F(ExpansionEnd, ValueThatNamesItselfEnds) {
    put("X", "%X");
    EXPECT_EQ(expanded("%X"), nothing);
    EXPECT_EQ(expanded("a%X/b"), nothing);
}

TEST_F(ExpansionEnd, CircleOfManyEnds) {
    for (int i = 0; i < 100; ++i) {
        put(("C" + std::to_string(i)).c_str(), ("%C" + std::to_string((i + 1) % 100)).c_str());
    }
    EXPECT_EQ(expanded("%C0"), nothing);
    EXPECT_EQ(expanded("a/%C50"), nothing);
}

TEST_F(ExpansionEnd, ValueThatGrowsByLittleEnds) {
    put("X", "%X/a");
    EXPECT_EQ(expanded("%X"), nothing);
}

TEST_F(ExpansionEnd, ValueThatGrowsInFrontEnds) {
    put("X", "a/%X");
    EXPECT_EQ(expanded("%X"), nothing);
}

TEST_F(ExpansionEnd, ValueThatDoublesEnds) {
    put("X", "%X%X");
    EXPECT_EQ(expanded("%X"), nothing);
}

TEST_F(ExpansionEnd, ReferenceThatSwallowsTheTextBitByBitComesToItsEnd) {
    put("X", "%X");
    EXPECT_EQ(expanded("{%X}{%UNDEFINED}abc"), nothing);
    put("D", "{%UNDEFINED}");
    EXPECT_EQ(expanded("{%D}abc"), "bc");
}

TEST_F(ExpansionEnd, ChainThroughThousandsOfSettingsIsFollowed) {
    const int links = 30'000;
    for (int i = 0; i < links; ++i) {
        put(("L" + std::to_string(i)).c_str(), ("%L" + std::to_string(i + 1)).c_str());
    }
    put(("L" + std::to_string(links)).c_str(), "the end");
    EXPECT_EQ(expanded("%L0"), "the end");
    EXPECT_EQ(expanded(std::string(5000, 'p') + "/%L0"), std::string(5000, 'p') + "/the end");
}

TEST_F(ExpansionEnd, LongTextsWithoutCircleComeOut) {
    const std::string value(40'000'000, 'v');
    put("A", value.c_str());
    std::string dest(100'000'000, '\0');
    EXPECT_EQ(gui_env_expand_str(dest.data(), "%A", dest.size(), env, nullptr), 0);
    EXPECT_TRUE(dest.c_str() == value);
    const std::string source(80'000'000, 's');
    EXPECT_EQ(gui_env_expand_str(dest.data(), source.c_str(), dest.size(), env, nullptr), 0);
    EXPECT_TRUE(dest.c_str() == source);
}

TEST_F(ExpansionSources, NearestEnvironmentAnswers) {
    eeEnv* second = gui_env_open("second", ENVLOC_ANY);
    eeEnv* third = gui_env_open("third", ENVLOC_ANY);
    gui_env_put_ee("A", "master", ENVLOC_ANY);
    gui_env_put(third, "A", "third", ENVLOC_ANY);
    char dest[20];
    gui_env_expand_str(dest, "%A", sizeof dest, env, second, third, nullptr);
    EXPECT_STREQ(dest, "third");
    gui_env_put(second, "A", "second", ENVLOC_ANY);
    gui_env_expand_str(dest, "%A", sizeof dest, env, second, third, nullptr);
    EXPECT_STREQ(dest, "second");
    put("A", "first");
    gui_env_expand_str(dest, "%A", sizeof dest, env, second, third, nullptr);
    EXPECT_STREQ(dest, "first");
}

TEST_F(ExpansionSources, MasterAnswersLast) {
    gui_env_put_ee("A", "master", ENVLOC_ANY);
    EXPECT_EQ(expanded("%A"), "master");
    EXPECT_EQ(expanded("%A", nullptr), "master");
}

TEST_F(ExpansionSources, NullEnvironmentHidesTheFurtherOnes) {
    put("A", "hidden");
    char dest[20];
    EXPECT_EQ(gui_env_expand_str(dest, "%A", sizeof dest, nullptr, env, nullptr), -1);
}

TEST_F(ExpansionSources, EmptyValueIsAnAnswer) {
    put("A", "");
    gui_env_put_ee("A", "master", ENVLOC_ANY);
    EXPECT_EQ(expanded("[%A."), "[");
}

TEST_F(ExpansionSources, RemovedSettingIsNone) {
    put("A", "first");
    gui_env_rm(env, "A", ENVLOC_ANY);
    gui_env_put_ee("A", "master", ENVLOC_ANY);
    EXPECT_EQ(expanded("%A"), "master");
}

TEST_F(ExpansionSources, AllLevelsAreAsked) {
    gui_env_put(env, "A", "system", ENVLOC_SYSTEM);
    EXPECT_EQ(expanded("%A"), "system");
}

TEST(ExpansionMaster, IsBroughtUpByALookup) {
    const TempSite site;
    site.write("work/hxorvix.cfg", "A=from file\n");
    char dest[20];
    EXPECT_EQ(gui_env_expand_str(dest, "%A", sizeof dest, nullptr, nullptr), 0);
    EXPECT_STREQ(dest, "from file");
}

TEST_F(SystemOnly, PercentIsPlainText) {
    const ScopedVariable variable("ORVIX_TEST_VARIABLE", "value");
    put("A", "setting");
    char dest[100];
    EXPECT_EQ(gui_env_expand_str_system_only(dest, "%A {%A} {$ORVIX_TEST_VARIABLE} 100%", sizeof dest, env, nullptr),
              0);
    EXPECT_STREQ(dest, "%A {%A} value 100%");
}

TEST_F(SystemOnly, ReferencesInsideVariablesAreExpanded) {
    const ScopedVariable outer("ORVIX_TEST_OUTER", "$ORVIX_TEST_INNER/%A");
    const ScopedVariable inner("ORVIX_TEST_INNER", "inner");
    char dest[100];
    EXPECT_EQ(gui_env_expand_str_system_only(dest, "$ORVIX_TEST_OUTER", sizeof dest, nullptr), 0);
    EXPECT_STREQ(dest, "inner/%A");
}

TEST_F(SystemOnly, ResultsAreThoseOfTheFullExpansion) {
    char dest[8] = "before";
    EXPECT_EQ(gui_env_expand_str_system_only(dest, "abc", 3, nullptr, nullptr), 4);
    EXPECT_STREQ(dest, "");
    EXPECT_EQ(gui_env_expand_str_system_only(dest, "$ORVIX_TEST_UNSET", sizeof dest, nullptr, nullptr), -1);
    EXPECT_EQ(gui_env_expand_str_system_only(dest, nullptr, sizeof dest, nullptr, nullptr), -1);
    EXPECT_EQ(gui_env_expand_str_system_only(dest, "a:", sizeof dest, nullptr, nullptr), 0);
    EXPECT_STREQ(dest, "a");
}

TEST_F(GetAndExpand, ExpandsTheValue) {
    put("A", "%B/x");
    put("B", "b");
    int marker = 0;
    env->cwd.entries[0].aux = &marker;
    char buffer[20];
    void* aux = nullptr;
    EXPECT_EQ(gui_env_get_and_expand(env, "A", buffer, &aux, sizeof buffer, ENVLOC_ANY), 0);
    EXPECT_STREQ(buffer, "b/x");
    EXPECT_EQ(aux, &marker);
}

TEST_F(GetAndExpand, ResultOfAFailedReadStands) {
    put("A", "12345");
    char buffer[8] = "before";
    EXPECT_EQ(gui_env_get_and_expand(env, "MISSING", buffer, nullptr, sizeof buffer, ENVLOC_ANY), -1);
    EXPECT_EQ(gui_env_get_and_expand(env, "A", buffer, nullptr, 5, ENVLOC_ANY), 6);
    EXPECT_STREQ(buffer, "before");
}

TEST_F(GetAndExpand, ExpandedValueMayNeedMoreRoomThanTheRawOne) {
    put("A", "%B");
    put("B", "longer value");
    char buffer[20];
    EXPECT_EQ(gui_env_get_and_expand(env, "A", buffer, nullptr, 5, ENVLOC_ANY), 13);
    EXPECT_STREQ(buffer, "");
}

TEST_F(GetAndExpand, ValueThatExpandsToNothingReadsAsMissing) {
    put("A", "%UNDEFINED");
    put("E", "");
    char buffer[20] = "before";
    EXPECT_EQ(gui_env_get_and_expand(env, "A", buffer, nullptr, sizeof buffer, ENVLOC_ANY), -1);
    EXPECT_EQ(gui_env_get_and_expand(env, "E", buffer, nullptr, sizeof buffer, ENVLOC_ANY), -1);
    EXPECT_STREQ(buffer, "");
}

TEST_F(GetAndExpand, WithoutBufferThereIsNothingToExpand) {
    put("A", "value");
    EXPECT_EQ(gui_env_get_and_expand(env, "A", nullptr, nullptr, 20, ENVLOC_ANY), -1);
}

TEST_F(GetAndExpand, MasterIsBroughtUp) {
    gui_env_deinit(false);
    site.write("work/hxorvix.cfg", "A=%B/x\nB=b\n");
    char buffer[20];
    EXPECT_EQ(gui_env_get_ee_and_expand("A", buffer, nullptr, sizeof buffer, ENVLOC_ANY), 0);
    EXPECT_STREQ(buffer, "b/x");
}
