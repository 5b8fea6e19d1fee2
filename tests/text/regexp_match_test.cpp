#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <orvix/gsl/regular_expressions.h>
#include <support/buffer.h>
#include <support/regexp_match_model.h>
#include <support/regexp_random_searches.h>
#include <support/regexp_record.h>
#include <support/small_stack.h>

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

using namespace orvix::test;
using namespace orvix::test::regexp;

namespace {

using Place = std::pair<std::size_t, std::size_t>;

// The match and its groups, written "0-3 0-1 - 2-3" without the groups behind the last one that took part; "none".
std::string search(const std::string& pattern, const std::string& subject) {
    const auto places = Record(pattern).search(Buffer(subject));
    if (!places) return "none";
    std::string text;
    std::string skipped;
    for (const auto& place : *places) {
        if (!place) {
            skipped += "- ";
            continue;
        }
        text += skipped + std::to_string(place->first) + '-' + std::to_string(place->second) + ' ';
        skipped.clear();
    }
    text.pop_back();
    return text;
}

}  // namespace

// ---------------------------------------------------------------------------------------------------------------------
// What matches

TEST(Gsl_regexec, TheEmptyPatternMatchesAtTheStartOfAnySubject) {
    EXPECT_EQ(search("", ""), "0-0");
    EXPECT_EQ(search("", "abc"), "0-0");
}

TEST(Gsl_regexec, FindsTheLeftmostMatch) {
    EXPECT_EQ(search("abc", "xabcabc"), "1-4");
    EXPECT_EQ(search("b|a", "ab"), "0-1");
    EXPECT_EQ(search("abc", "ab"), "none");
}

TEST(Gsl_regexec, EarlierAlternativesArePreferredToLongerOnes) {
    EXPECT_EQ(search("a|ab", "ab"), "0-1");
    EXPECT_EQ(search("(a|ab)c", "abc"), "0-3 0-2");
    EXPECT_EQ(search("|a", "a"), "0-0");
}

TEST(Gsl_regexec, RepeatsAreGreedy) {
    EXPECT_EQ(search(".*", "abc"), "0-3");
    EXPECT_EQ(search("a+", "baaa"), "1-4");
    EXPECT_EQ(search("a?", "aa"), "0-1");
    EXPECT_EQ(search("(a|b)*", "abab"), "0-4 3-4");
}

TEST(Gsl_regexec, AStarMatchesTheEmptyStringWhereItStands) {
    EXPECT_EQ(search("a*", "baaa"), "0-0");
    EXPECT_EQ(search("a*", ""), "0-0");
}

TEST(Gsl_regexec, RepeatsGiveBackWhatTheRestNeeds) {
    EXPECT_EQ(search("a*ab", "aaab"), "0-4");
    EXPECT_EQ(search(".*b.c", "abxcbbbcb"), "0-8");
    EXPECT_EQ(search("[ab]+[bc]+", "abab"), "0-4");
    EXPECT_EQ(search("a+aaa", "aaa"), "none");
    EXPECT_EQ(search("(ab|a)*b", "aab"), "0-3 1-2");
}

TEST(Gsl_regexec, TheStartIsThatOfTheSubject) {
    EXPECT_EQ(search("^a", "ba"), "none");
    EXPECT_EQ(search("^a", "aa"), "0-1");
    EXPECT_EQ(search("a^", "aa"), "none");
    EXPECT_EQ(search("(^a|b)", "cb"), "1-2 1-2");
    EXPECT_EQ(search("^", ""), "0-0");
    EXPECT_EQ(search("b|^a", "aab"), "0-1");
}

TEST(Gsl_regexec, TheEndIsThatOfTheSubject) {
    EXPECT_EQ(search("a$", "aab"), "none");
    EXPECT_EQ(search("a$", "aa"), "1-2");
    EXPECT_EQ(search("$", "ab"), "2-2");
    EXPECT_EQ(search("$a", "a"), "none");
    EXPECT_EQ(search("a$|b", "ab"), "1-2");
}

TEST(Gsl_regexec, ALineFeedIsAByteLikeAnyOther) {
    EXPECT_EQ(search("^b", "a\nb"), "none");
    EXPECT_EQ(search("a$", "a\nb"), "none");
    EXPECT_EQ(search("a.b", "a\nb"), "0-3");
    EXPECT_EQ(search("[^a]", "a\n"), "1-2");
}

TEST(Gsl_regexec, SetsHoldTheirMembers) {
    EXPECT_EQ(search("[]a]+", "xa]a"), "1-4");
    EXPECT_EQ(search("[a-]+", "b-a-"), "1-4");
    EXPECT_EQ(search("[-a]+", "b-a-"), "1-4");
    EXPECT_EQ(search("[^]a]+", "]ab-"), "2-4");
    EXPECT_EQ(search("[a-c-e]+", "fabcde"), "1-6");
    EXPECT_EQ(search("[\\n]+", "an\\"), "1-3");
    EXPECT_EQ(search("[--0]+", ",-./01"), "1-5");
}

TEST(Gsl_regexec, BytesCompareUnsigned) {
    EXPECT_EQ(search("[a-\xff]+", "A\x80\xfe\xff"), "1-4");
    EXPECT_EQ(search(".", "\xff"), "0-1");
    EXPECT_EQ(search("[^a]", "\x80"), "0-1");
    EXPECT_EQ(search("\xe4*\xfc", "x\xe4\xe4\xfc"), "1-4");
}

TEST(Gsl_regexec, ABackslashTakesTheNextByteAsItIs) {
    EXPECT_EQ(search("\\n", "\nn"), "1-2");
    EXPECT_EQ(search("(a)\\1", "aa1"), "1-3 1-2");
    EXPECT_EQ(search("\\.\\*\\\\", ".*\\"), "0-3");
    EXPECT_EQ(search("a{2}]", "a{2}]"), "0-5");
}

// ---------------------------------------------------------------------------------------------------------------------
// Groups

TEST(Gsl_regexec, GroupsAreNumberedByTheirOpeningParentheses) {
    EXPECT_EQ(search("((a)(b))(c)", "abc"), "0-3 0-2 0-1 1-2 2-3");
    EXPECT_EQ(search("(((((((((a)))))))))", "a"), "0-1 0-1 0-1 0-1 0-1 0-1 0-1 0-1 0-1 0-1");
}

TEST(Gsl_regexec, AGroupThatTookNoPartHasNoPlace) {
    EXPECT_EQ(search("(a)|b", "b"), "0-1");
    EXPECT_EQ(search("(a)?(b)", "b"), "0-1 - 0-1");
    EXPECT_EQ(search("(a)*b", "b"), "0-1");
}

TEST(Gsl_regexec, ARepeatedGroupHoldsItsLastPart) {
    EXPECT_EQ(search("(a|b)*", "ab"), "0-2 1-2");
    EXPECT_EQ(search("((a)|(b))*", "ab"), "0-2 1-2 0-1 1-2");
    EXPECT_EQ(search("(ab|c)+", "abcab"), "0-5 3-5");
    EXPECT_EQ(search("(([a-z]+)[0-9]?)*", "ab1cd"), "0-5 3-5 3-5");
}

TEST(Gsl_regexec, GroupsOfAttemptsThatFailedLeaveNoTrace) {
    EXPECT_EQ(search("(a)b|a(c)", "ac"), "0-2 - 1-2");
    EXPECT_EQ(search("((a)|ab)c", "abc"), "0-3 0-2");
    EXPECT_EQ(search("(a(b)?)+c|(ab)", "abab"), "0-2 - - 0-2");
    EXPECT_EQ(search("(a*)(ab)*(b*)", "abb"), "0-3 0-1 - 1-3");
}

TEST(Gsl_regexec, AnEmptyGroupHasAPlace) {
    EXPECT_EQ(search("a()b", "ab"), "0-2 1-1");
    EXPECT_EQ(search("(a*)b", "b"), "0-1 0-0");
}

// ---------------------------------------------------------------------------------------------------------------------
// What a search leaves in the record

TEST(Gsl_regexec, AnswersOneOrZero) {
    const Record record("b");
    EXPECT_EQ(gsl_regexec(record.get(), "abc"), 1);
    EXPECT_EQ(gsl_regexec(record.get(), "acd"), 0);
}

TEST(Gsl_regexec, PlacesPointIntoTheSubject) {
    const Record record("b(c)");
    const char* const subject = "abcd";
    ASSERT_EQ(gsl_regexec(record.get(), subject), 1);
    EXPECT_EQ(record->startp[0], subject + 1);
    EXPECT_EQ(record->endp[0], subject + 3);
    EXPECT_EQ(record->startp[1], subject + 2);
    EXPECT_EQ(record->endp[1], subject + 3);
    EXPECT_EQ(record->startp[2], nullptr);
    EXPECT_EQ(record->endp[2], nullptr);
}

TEST(Gsl_regexec, AFailedSearchThatTriedAPlaceClearsTheRecord) {
    for (const char* pattern : {"(a)", "a[bc]*d?$", "^(a)$", "x*(a)$", "(a)|b"}) {
        SCOPED_TRACE(pattern);
        const Record record(pattern);
        ASSERT_EQ(gsl_regexec(record.get(), "a"), 1);
        EXPECT_EQ(gsl_regexec(record.get(), pattern[0] == '(' ? "zz" : "az"), 0);
        EXPECT_EQ(record->startp[0], nullptr);
        EXPECT_EQ(record->endp[0], nullptr);
        EXPECT_EQ(record->startp[1], nullptr);
        EXPECT_EQ(record->endp[1], nullptr);
    }
}

TEST(Gsl_regexec, AFailedSearchWithoutTheStartByteLeavesTheRecordAlone) {
    const Record record("ab");
    const char* const subject = "ab";
    ASSERT_EQ(gsl_regexec(record.get(), subject), 1);
    EXPECT_EQ(gsl_regexec(record.get(), "xxb"), 0);
    EXPECT_EQ(record->startp[0], subject);
    EXPECT_EQ(record->endp[0], subject + 2);
}

TEST(Gsl_regexec, AFailedSearchWithTheStartByteAloneClearsTheRecord) {
    const Record record("ab");
    ASSERT_EQ(gsl_regexec(record.get(), "ab"), 1);
    EXPECT_EQ(gsl_regexec(record.get(), "xxa"), 0);
    EXPECT_EQ(record->startp[0], nullptr);
}

TEST(Gsl_regexec, AFailedSearchWithoutTheRequiredTextLeavesTheRecordAlone) {
    const Record record("x*ab");
    const char* const subject = "xab";
    ASSERT_EQ(gsl_regexec(record.get(), subject), 1);
    EXPECT_EQ(gsl_regexec(record.get(), "xxa"), 0);
    EXPECT_EQ(record->startp[0], subject);
    EXPECT_EQ(record->endp[0], subject + 3);
}

TEST(Gsl_regexec, AFailedSearchWithoutTheRequiredTextOfAnAnchoredPatternLeavesTheRecordAlone) {
    const Record record("(^a)?^ab");  // not anchored for the compiler
    const char* const subject = "ab";
    ASSERT_EQ(record->reganch, 0);
    ASSERT_EQ(gsl_regexec(record.get(), subject), 1);
    EXPECT_EQ(gsl_regexec(record.get(), "xxa"), 0);
    EXPECT_EQ(record->startp[0], subject);
    EXPECT_EQ(gsl_regexec(record.get(), "xab"), 0);
    EXPECT_EQ(record->startp[0], nullptr);
}

TEST(Gsl_regexec, ALongChainOfRepeatsThatMayBeEmptyIsSearchedWithLittleStack) {
    std::string pattern;
    for (int i = 0; i < 4000; ++i) pattern += "x*";
    const Record record((pattern + "[yz]").c_str());
    EXPECT_TRUE(holds_on_small_stack([&] { return gsl_regexec(record.get(), "abxxxz") == 1; }));
    EXPECT_EQ(record->startp[0][0], 'x');
}

TEST(Gsl_regexec, ARecordCanBeCopiedToKeepItsPlaces) {
    const Record record("(b)");
    ASSERT_EQ(gsl_regexec(record.get(), "abc"), 1);
    __gsl_regexp kept = *record.get();
    ASSERT_EQ(gsl_regexec(record.get(), "xyz"), 0);
    char text[8];
    gsl_regsub(&kept, "<\\1>", text);
    EXPECT_STREQ(text, "<b>");
}

// ---------------------------------------------------------------------------------------------------------------------
// By the model

TEST(Gsl_regexec, FindsWhatTheModelFindsOnRandomPatternsAndSubjects) {
    const SearchCounts counts = compare_random_searches(
        4, 8, [](const Record& record, const std::string& subject) { return record.search(Buffer(subject)); });
    EXPECT_GT(counts.searches, 15000);
    EXPECT_GT(counts.matches, 5000);
}
