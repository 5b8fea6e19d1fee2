#include "text/name_rules_model.h"

#include <gtest/gtest.h>
#include <orvix/gsl/name_rules.h>
#include <orvix/gsl/string_utilities.h>
#include <support/buffer.h>
#include <support/random_text.h>

#include <string>
#include <vector>

using namespace orvix::gsl;
using namespace orvix::test;

namespace {

constexpr unsigned component_name = 0;

// The message, or "" for a valid name.
std::string refusal(const std::string& name, unsigned flags, bool allow_dot = false) {
    const char* message = astr_qds_valid_name(name.c_str(), flags, allow_dot);
    return message == nullptr ? "" : message;
}

bool valid(const std::string& name, unsigned flags, bool allow_dot = false) {
    return astr_qds_valid_name(name.c_str(), flags, allow_dot) == nullptr;
}

// The byte that the message shows; "" for a valid name.
std::string offender(const std::string& name, unsigned flags, bool allow_dot = false) {
    return refusal(name, flags, allow_dot).substr(0, 3);
}

std::string repaired(const std::string& name, unsigned flags, bool replace_dot = true, char replacement = '_') {
    Buffer in(name);
    Buffer out = room_for(name.size() + 1);
    EXPECT_TRUE(astr_qds_get_valid_name(in, flags, replace_dot, replacement, out));
    EXPECT_EQ(in.text(), name);
    return out.text();
}

std::string translated(const std::string& name) {
    char* result = astr_translate_qds_dataset_name(name.c_str());
    const std::string copy = result;
    astr_free_string(result);
    return copy;
}

// The special bytes that are legal behind a letter.
std::string legal_special_bytes(unsigned flags, bool allow_dot) {
    std::string legal;
    for (const char byte : std::string("~*()[]{}/\\<>?,:\" \t|';+-=^$%.`@#&!")) {
        if (valid(std::string("a") + byte, flags, allow_dot)) legal += byte;
    }
    return legal;
}

// All flags with a meaning in all combinations, and some without.
std::vector<unsigned> all_flags() {
    std::vector<unsigned> flags;
    for (unsigned i = 0; i < 0x200; ++i) flags.push_back(i);
    flags.push_back(0x200);
    flags.push_back(0x80000000U);
    flags.push_back(0x80000002U);
    flags.push_back(~0U);
    return flags;
}

}  // namespace

// ---------------------------------------------------------------------------------------------------------------------
// Test

TEST(QdsValidName, LettersAndDigitsAreValidForAComponent) { EXPECT_TRUE(valid("R1", component_name)); }

TEST(QdsValidName, DigitInFirstPlaceIsRefusedForAnIdentifier) {
    EXPECT_EQ(refusal("1R", identifier_name),
              "`1' illegal: valid characters are alphanumeric or _ with non-numeric first character");
    EXPECT_EQ(refusal("1R", indexed_identifier_name),
              "`1' illegal: valid characters are alphanumeric or _ with non-numeric first character");
}

TEST(QdsValidName, DigitInFirstPlaceIsValidForAComponent) { EXPECT_TRUE(valid("1R", component_name)); }

TEST(QdsValidName, DigitInFirstPlaceIsValidForAWorkspace) { EXPECT_TRUE(valid("1R", workspace_name)); }

TEST(QdsValidName, PlusIsValidForAComponentAndRefusedForAnIdentifier) {
    EXPECT_TRUE(valid("a+b", component_name));
    EXPECT_EQ(offender("a+b", identifier_name), "`+'");
}

TEST(QdsValidName, BlankIsRefusedUnderEveryFlag) {
    for (const unsigned flags : all_flags()) {
        SCOPED_TRACE(flags);
        EXPECT_EQ(offender("a b", flags, true), "` '");
    }
}

TEST(QdsValidName, DotInAComponentDependsOnTheArgument) {
    EXPECT_TRUE(valid("a.b", component_name, true));
    EXPECT_EQ(offender("a.b", component_name, false), "`.'");
}

TEST(QdsValidName, DotInANodeIsAlwaysValid) {
    EXPECT_TRUE(valid("a.b", node_name, true));
    EXPECT_TRUE(valid("a.b", node_name, false));
}

TEST(QdsValidName, IndexListIsValidForAnIndexedIdentifierAndRefusedForAnIdentifier) {
    EXPECT_TRUE(valid("a(1,2)", indexed_identifier_name));
    EXPECT_EQ(offender("a(1,2)", identifier_name), "`('");
}

TEST(QdsValidName, CommaWithoutADigitBeforeItNamesTheByteBefore) {
    EXPECT_EQ(offender("a(,1)", indexed_identifier_name), "`('");
    EXPECT_EQ(offender("a(1,,2)", indexed_identifier_name), "`,'");
}

TEST(QdsValidName, ClosingWithoutADigitBeforeItNamesTheByteBefore) {
    EXPECT_EQ(offender("a()", indexed_identifier_name), "`('");
    EXPECT_EQ(offender("a(1,)", indexed_identifier_name), "`,'");
}

TEST(QdsValidName, TextBehindAnIndexListNamesItsFirstByte) {
    EXPECT_EQ(offender("a(1)b", indexed_identifier_name), "`b'");
    EXPECT_EQ(offender("a(1)(2)", indexed_identifier_name), "`('");
}

TEST(QdsValidName, OtherByteInAnIndexListIsNamed) {
    EXPECT_EQ(offender("a(x)", indexed_identifier_name), "`x'");
    EXPECT_EQ(offender("a(1(2))", indexed_identifier_name), "`('");
    EXPECT_EQ(offender("a(1 ,2)", indexed_identifier_name), "` '");
}

TEST(QdsValidName, OpenIndexListIsValid) {
    EXPECT_TRUE(valid("a(", indexed_identifier_name));
    EXPECT_TRUE(valid("a(1", indexed_identifier_name));
    EXPECT_TRUE(valid("a(1,", indexed_identifier_name));
}

TEST(QdsValidName, IndexListInFirstPlaceIsValid) { EXPECT_TRUE(valid("(1)", indexed_identifier_name)); }

TEST(QdsValidName, ByteBeforeAnIndexListIsRefusedFirst) {
    EXPECT_EQ(offender("a+b(x)", indexed_identifier_name), "`+'");
}

TEST(QdsValidName, DesignTakesAParenthesisForABracketAndNotForAList) {
    EXPECT_TRUE(valid("a(b)(c)", design_name | indexed_identifier_name));
}

TEST(QdsValidName, ExclamationMarkIsValidForComponentsAndNodesAlone) {
    EXPECT_TRUE(valid("a!", component_name));
    EXPECT_TRUE(valid("a!", node_name));
    for (const unsigned flags : {0x01U, 0x40U, 0x80U, 0x100U, 0x200U, 0x03U, 0x80000000U}) {
        SCOPED_TRACE(flags);
        EXPECT_EQ(offender("a!", flags), "`!'");
    }
}

TEST(QdsValidName, EachKindHasItsLegalBytes) {
    EXPECT_EQ(legal_special_bytes(component_name, false), "+-=^$%`@#&!");
    EXPECT_EQ(legal_special_bytes(component_name, true), "+-=^$%.`@#&!");
    EXPECT_EQ(legal_special_bytes(identifier_name, false), "");
    EXPECT_EQ(legal_special_bytes(identifier_name, true), ".");
    EXPECT_EQ(legal_special_bytes(node_name, false), ":+-=^$%.`@#&!");
    EXPECT_EQ(legal_special_bytes(design_name, false), "(){}?|;+-=^$%.`@#&");
    EXPECT_EQ(legal_special_bytes(indexed_identifier_name, false), "(");
    EXPECT_EQ(legal_special_bytes(workspace_name, false), "");
    EXPECT_EQ(legal_special_bytes(identifier_name | node_name | design_name, false), "(){}?:|;.");
}

TEST(QdsValidName, WorkspaceMessage) {
    EXPECT_EQ(refusal("a-b", workspace_name), "`-' illegal: valid characters in workspace names are alphanumeric or _");
}

TEST(QdsValidName, DesignMessageListsItsBytes) {
    EXPECT_EQ(refusal("a/b", design_name),
              "`/' illegal: valid characters in design names are alphanumeric or _`@#&+-=^$%|(){};?.");
}

TEST(QdsValidName, NodeMessageListsItsBytes) {
    EXPECT_EQ(refusal("a/b", node_name),
              "`/' illegal: valid characters in node names are alphanumeric or _`@#&+-=^$%!.:");
}

TEST(QdsValidName, ComponentMessageShowsDotAndColonThoughTheyAreIllegal) {
    EXPECT_EQ(refusal("a:b", component_name),
              "`:' illegal: valid characters in component names are alphanumeric or _`@#&+-=^$%.:");
}

TEST(QdsValidName, IdentifierMessageComesBeforeThatOfAWorkspaceAndThatBeforeADesign) {
    EXPECT_EQ(refusal("a b", identifier_name | workspace_name | design_name | node_name),
              "` ' illegal: valid characters are alphanumeric or _ with non-numeric first character");
    EXPECT_EQ(refusal("a b", workspace_name | design_name | node_name),
              "` ' illegal: valid characters in workspace names are alphanumeric or _");
    EXPECT_EQ(refusal("a b", design_name | node_name),
              "` ' illegal: valid characters in design names are alphanumeric or _`@#&+-=^$%|(){};?.");
}

TEST(QdsValidName, NullAndEmptyNamesAreValid) {
    for (const unsigned flags : all_flags()) {
        SCOPED_TRACE(flags);
        EXPECT_EQ(astr_qds_valid_name(nullptr, flags, false), nullptr);
        EXPECT_TRUE(valid("", flags));
    }
}

TEST(QdsValidName, BytesBeyondAsciiAreValid) {
    EXPECT_TRUE(
        valid("gr\xc3\xb6\xc3\x9f"
              "e\xff",
              identifier_name));
}

TEST(QdsValidName, MessageStaysUntilTheNextRefusal) {
    const char* const first = astr_qds_valid_name("a b", workspace_name, false);
    EXPECT_TRUE(valid("ab", workspace_name));
    EXPECT_STREQ(first, "` ' illegal: valid characters in workspace names are alphanumeric or _");
    EXPECT_EQ(astr_qds_valid_name("a/b", workspace_name, false), first);
    EXPECT_STREQ(first, "`/' illegal: valid characters in workspace names are alphanumeric or _");
}

TEST(QdsValidName, EveryByteUnderAllFlagsAgreesWithTheModel) {
    for (const unsigned flags : all_flags()) {
        for (const bool allow_dot : {false, true}) {
            for (int value = 1; value < 256; ++value) {
                const auto byte = static_cast<char>(value);
                for (const std::string& name :
                     {std::string{byte}, std::string{'a', byte}, std::string{'a', byte, '1'}}) {
                    ASSERT_EQ(refusal(name, flags, allow_dot), model::refusal(name, flags, allow_dot))
                        << "byte " << value << ", flags " << flags << ", dot " << allow_dot;
                }
            }
        }
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// Repair

TEST(QdsGetValidName, BlankIsReplaced) { EXPECT_EQ(repaired("a b", component_name), "a_b"); }

TEST(QdsGetValidName, NameWithABarredDigitIsGivenBackUnchanged) {
    EXPECT_EQ(repaired("1 b", identifier_name), "1 b");
    EXPECT_EQ(repaired("1 b", indexed_identifier_name), "1 b");
}

TEST(QdsGetValidName, NameWithADigitThatIsNotBarredIsRepaired) { EXPECT_EQ(repaired("1 b", workspace_name), "1_b"); }

TEST(QdsGetValidName, DotIsReplacedIfTheArgumentSaysSo) {
    EXPECT_EQ(repaired("a.b", component_name, true), "a_b");
    EXPECT_EQ(repaired("a.b", component_name, false), "a.b");
}

TEST(QdsGetValidName, OperatorsAreReplacedForStrictKindsAlone) {
    EXPECT_EQ(repaired("a+b@c", component_name), "a+b@c");
    for (const unsigned flags : {0x01U, 0x80U, 0x100U}) {
        SCOPED_TRACE(flags);
        EXPECT_EQ(repaired("a+b@c", flags), "a_b_c");
    }
}

TEST(QdsGetValidName, BytesThatNodesAndDesignsMayHaveAreReplaced) {
    EXPECT_EQ(repaired("a:b.c", node_name), "a_b_c");
    EXPECT_EQ(repaired("a|(b){c};?.", design_name), "a__b__c____");
}

TEST(QdsGetValidName, ExclamationMarkStaysForComponentsAndNodesAlone) {
    EXPECT_EQ(repaired("a!", component_name), "a!");
    EXPECT_EQ(repaired("a!", node_name), "a!");
    EXPECT_EQ(repaired("a!", design_name), "a_");
    EXPECT_EQ(repaired("a!", 0x200), "a_");
}

TEST(QdsGetValidName, IndexListStays) {
    EXPECT_EQ(repaired("a b(1,2)", indexed_identifier_name), "a_b(1,2)");
    EXPECT_EQ(repaired("a(1,2)", identifier_name), "a_1_2_");
}

TEST(QdsGetValidName, OpenIndexListStays) {
    EXPECT_EQ(repaired("a(", indexed_identifier_name), "a(");
    EXPECT_EQ(repaired("a(1,", indexed_identifier_name), "a(1,");
}

TEST(QdsGetValidName, ByteThatBreaksAnIndexListStaysAndTheRestIsRepaired) {
    EXPECT_EQ(repaired("a(1+2)", indexed_identifier_name), "a(1+2_");
    EXPECT_EQ(repaired("a(1) b", indexed_identifier_name), "a(1) b");
    EXPECT_EQ(repaired("a(1)b c", indexed_identifier_name), "a(1)b_c");
    EXPECT_EQ(repaired("a(,1)", indexed_identifier_name), "a(_1_");
    EXPECT_EQ(repaired("a(1,,2)", indexed_identifier_name), "a(1,_2_");
    EXPECT_EQ(repaired("a()", indexed_identifier_name), "a(_");
    EXPECT_EQ(repaired("a((1)", indexed_identifier_name), "a((1_");
}

TEST(QdsGetValidName, ReplacementIsNotTested) { EXPECT_EQ(repaired("a b", component_name, true, '*'), "a*b"); }

TEST(QdsGetValidName, ZeroByteAsReplacementEndsTheCopy) {
    EXPECT_EQ(repaired("a b c ", component_name, true, '\0'), "a");
}

TEST(QdsGetValidName, WorksInPlace) {
    Buffer name("a b");
    EXPECT_TRUE(astr_qds_get_valid_name(name, component_name, true, '_', name));
    EXPECT_EQ(name.text(), "a_b");
}

TEST(QdsGetValidName, NullNameIsTheOnlyFailure) {
    Buffer out("old");
    EXPECT_FALSE(astr_qds_get_valid_name(nullptr, component_name, true, '_', out));
    EXPECT_EQ(out.text(), "old");
    Buffer name("a b");
    EXPECT_TRUE(astr_qds_get_valid_name(name, component_name, true, '_', nullptr));
    EXPECT_EQ(name.text(), "a b");
}

TEST(QdsGetValidName, EveryByteUnderAllFlagsAgreesWithTheModel) {
    char out[4];
    for (const unsigned flags : all_flags()) {
        for (const bool replace_dot : {false, true}) {
            for (int value = 1; value < 256; ++value) {
                char name[] = {'a', static_cast<char>(value), 'b', '\0'};
                astr_qds_get_valid_name(name, flags, replace_dot, '_', out);
                ASSERT_EQ(out, model::repaired(name, flags, replace_dot, '_'))
                    << "byte " << value << ", flags " << flags << ", dot " << replace_dot;
            }
        }
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// Special bytes

TEST(QdsSplName, DigitInFirstPlaceIsSpecial) {
    const char name[] = "9ab";
    EXPECT_EQ(astr_qds_spl_name(name, true), name);
}

TEST(QdsSplName, DigitElsewhereIsNot) { EXPECT_EQ(astr_qds_spl_name("a9", false), nullptr); }

TEST(QdsSplName, PlainNameHasNone) { EXPECT_EQ(astr_qds_spl_name("ab", false), nullptr); }

TEST(QdsSplName, FirstSpecialByteIsFound) {
    const char name[] = "ab+c d";
    EXPECT_EQ(astr_qds_spl_name(name, false), name + 2);
}

TEST(QdsSplName, DotIsSpecialUnlessAllowed) {
    const char name[] = "a.b!";
    EXPECT_EQ(astr_qds_spl_name(name, false), name + 1);
    EXPECT_EQ(astr_qds_spl_name(name, true), name + 3);
}

TEST(QdsSplName, NullAndEmptyNamesHaveNone) {
    EXPECT_EQ(astr_qds_spl_name(nullptr, false), nullptr);
    EXPECT_EQ(astr_qds_spl_name("", false), nullptr);
}

TEST(QdsSplName, SpecialBytesAreThese) {
    std::string special;
    for (int value = 1; value < 256; ++value) {
        const char name[] = {'a', static_cast<char>(value), '\0'};
        const char* const found = astr_qds_spl_name(name, false);
        if (found == nullptr) continue;
        EXPECT_EQ(found, name + 1);
        special += *found;
    }
    EXPECT_EQ(special, "\t !\"#$%&'()*+,-./:;<=>?@[\\]^`{|}~");
}

// ---------------------------------------------------------------------------------------------------------------------
// Dataset names

TEST(TranslateQdsDatasetName, DigitGetsAPrefixAndSpecialBytesAreReplaced) { EXPECT_EQ(translated("1a-b"), "_1a_b"); }

TEST(TranslateQdsDatasetName, DotStays) { EXPECT_EQ(translated("a.b"), "a.b"); }

TEST(TranslateQdsDatasetName, EveryOtherSpecialByteBecomesAnUnderscore) {
    EXPECT_EQ(translated("~*()[]{}/\\<>?,:\" \t|';+-=^$%`@#&!"), std::string(32, '_'));
}

TEST(TranslateQdsDatasetName, EmptyNameStaysEmpty) { EXPECT_EQ(translated(""), ""); }

TEST(TranslateQdsDatasetName, NullGivesNull) { EXPECT_EQ(astr_translate_qds_dataset_name(nullptr), nullptr); }

// ---------------------------------------------------------------------------------------------------------------------

TEST(NameRules, AgreeWithTheModelOnRandomNames) {
    const std::vector<unsigned> flags = all_flags();
    for (unsigned seed = 0; seed < 20000 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        RandomText random(seed);
        const std::string name = random.text("ab119((())),,,.:!+@| \xe4", 9);
        const unsigned kind = flags[random.number(flags.size() - 1)];
        const bool dot = random.coin();
        EXPECT_EQ(refusal(name, kind, dot), model::refusal(name, kind, dot));
        EXPECT_EQ(repaired(name, kind, dot), model::repaired(name, kind, dot, '_'));
        EXPECT_EQ(translated(name), model::dataset_name(name));
        const char* const text = name.c_str();
        const std::size_t special = model::special_byte(name, dot);
        EXPECT_EQ(astr_qds_spl_name(text, dot), special == model::nowhere ? nullptr : text + special);
    }
}
