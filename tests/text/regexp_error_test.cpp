#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <orvix/gsl/regular_expressions.h>
#include <support/abort.h>
#include <support/regexp_random.h>
#include <support/regexp_record.h>

#include <string>

using namespace orvix::test::regexp;
using orvix::test::ended_by_abort;

// A call that must end the process with the message and nothing else.
#define EXPECT_FATAL(call, message) \
    EXPECT_EXIT(call, ended_by_abort, testing::Eq(std::string("\nFATAL ERROR: regexp(3): ") + (message)))

TEST(Gsl_regerror, ReportsAndAborts) { EXPECT_FATAL(gsl_regerror("no such luck"), "no such luck"); }

TEST(Gsl_regerror, PercentSignsAreText) { EXPECT_FATAL(gsl_regerror("100%s"), "100%s"); }

TEST(Gsl_regcompError, NullPattern) { EXPECT_FATAL(gsl_regcomp(nullptr), "NULL argument"); }

TEST(Gsl_regcompError, TenGroups) {
    EXPECT_FATAL(gsl_regcomp("(((((((((())))))))))"), "too many ()");
    EXPECT_FATAL(gsl_regcomp("()()()()()()()()()()"), "too many ()");
}

TEST(Gsl_regcompError, MissingOrSurplusParenthesis) {
    for (const char* pattern : {"(", "(a", "a(b|c", ")", "a)", "(a))", "a|)"}) {
        SCOPED_TRACE(pattern);
        EXPECT_FATAL(gsl_regcomp(pattern), "unmatched ()");
    }
}

TEST(Gsl_regcompError, RepeatOfWhatMayBeEmpty) {
    for (const char* pattern : {"(a*)*", "(a?)+", "()*", "^*", "$+", "(a|)*", "(a|b*)+", "(^)*"}) {
        SCOPED_TRACE(pattern);
        EXPECT_FATAL(gsl_regcomp(pattern), "*+ operand could be empty");
    }
}

TEST(Gsl_regcompError, RepeatOfARepeat) {
    for (const char* pattern : {"a**", "a+?", "a?*", "(a)++", "[ab]*+"}) {
        SCOPED_TRACE(pattern);
        EXPECT_FATAL(gsl_regcomp(pattern), "nested *?+");
    }
}

TEST(Gsl_regcompError, RepeatOfNothing) {
    for (const char* pattern : {"*", "+a", "a|?", "(*a)", "|+"}) {
        SCOPED_TRACE(pattern);
        EXPECT_FATAL(gsl_regcomp(pattern), "?+* follows nothing");
    }
}

TEST(Gsl_regcompError, RangeWithItsEndsReversed) {
    for (const char* pattern : {"[z-a]", "[b-a", "[\xff-\xfe]", "[a-c-b]"}) {
        SCOPED_TRACE(pattern);
        EXPECT_FATAL(gsl_regcomp(pattern), "invalid [] range");
    }
}

TEST(Gsl_regcompError, UnterminatedSet) {
    for (const char* pattern : {"[", "[a", "[]", "[^]", "[^", "[a-", "[-"}) {
        SCOPED_TRACE(pattern);
        EXPECT_FATAL(gsl_regcomp(pattern), "unmatched []");
    }
}

TEST(Gsl_regcompError, BackslashAtTheEnd) { EXPECT_FATAL(gsl_regcomp("a\\"), "trailing \\"); }

TEST(Gsl_regcompError, TheFirstErrorIsReported) {
    EXPECT_FATAL(gsl_regcomp("a**("), "nested *?+");
    EXPECT_FATAL(gsl_regcomp("(a**"), "nested *?+");
    EXPECT_FATAL(gsl_regcomp((std::string(40000, 'a') + '(').c_str()), "unmatched ()");
}

TEST(Gsl_regcompError, ALongProgramIsTooBig) {
    EXPECT_FATAL(gsl_regcomp(std::string(32756, 'a').c_str()), "regexp too big");
    EXPECT_FATAL(gsl_regcomp(std::string(1000000, '|').c_str()), "regexp too big");
}

TEST(Gsl_regexecError, NullArguments) {
    const Record record("a");
    EXPECT_FATAL(gsl_regexec(nullptr, "a"), "NULL parameter");
    EXPECT_FATAL(gsl_regexec(record.get(), nullptr), "NULL parameter");
}

TEST(Gsl_regsubError, NullArguments) {
    const Record record("a");
    char dest[4];
    EXPECT_FATAL(gsl_regsub(nullptr, "&", dest), "NULL parm to regsub");
    EXPECT_FATAL(gsl_regsub(record.get(), nullptr, dest), "NULL parm to regsub");
    EXPECT_FATAL(gsl_regsub(record.get(), "&", nullptr), "NULL parm to regsub");
}

TEST(Gsl_regsubError, WrongCheckByte) {
    const Record record("a");
    record->program[0] = 155;
    char dest[4];
    EXPECT_FATAL(gsl_regsub(record.get(), "&", dest), "damaged regexp fed to regsub");
}
