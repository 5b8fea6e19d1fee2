#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <orvix/gsl/regular_expressions.h>
#include <support/regexp_program_model.h>
#include <support/regexp_random.h>
#include <support/regexp_record.h>

#include <string>
#include <string_view>
#include <vector>

using namespace orvix::test::regexp;
using namespace std::string_view_literals;

namespace {

// What the compiler says beside the program.
struct Hints {
    char start_byte;
    bool is_anchored;
    std::string required;
    bool operator==(const Hints&) const = default;
};

Hints hints(const char* pattern) {
    const Record record(pattern);
    return {record->regstart, record->reganch != 0, record.required()};
}

std::string program(const char* pattern) { return Record(pattern).program(); }

ProgramModel compiled(const std::string& pattern) {
    const Record record(pattern);
    return {record.program(), record->regstart, record->reganch != 0, record.required()};
}

std::vector<std::string> combined(const std::vector<std::string>& atoms, const std::vector<std::string>& frames) {
    std::vector<std::string> patterns;
    for (const std::string& atom : atoms) {
        for (std::string frame : frames) {
            for (std::size_t at = frame.find('@'); at != std::string::npos; at = frame.find('@', at + atom.size())) {
                frame.replace(at, 1, atom);
            }
            patterns.push_back(frame);
        }
    }
    return patterns;
}

}  // namespace

// ---------------------------------------------------------------------------------------------------------------------
// Programs worked out by hand

TEST(Gsl_regcomp, EmptyPatternIsABranchWithNothing) { EXPECT_EQ(program(""), "\x9c\6\0\6\11\0\3\0\0\0"sv); }

TEST(Gsl_regcomp, LiteralsMakeOneNode) { EXPECT_EQ(program("abc"), "\x9c\6\0\12\10\0\7abc\0\0\0\0"sv); }

TEST(Gsl_regcomp, AlternativesAreLinkedAndEndAtTheSamePlace) {
    EXPECT_EQ(program("ab|c"), "\x9c\6\0\11\10\0\16ab\0\6\0\10\10\0\5c\0\0\0\0"sv);
}

TEST(Gsl_regcomp, AnEmptyAlternativeHoldsNothing) {
    EXPECT_EQ(program("a|"), "\x9c\6\0\10\10\0\13a\0\6\0\6\11\0\3\0\0\0"sv);
}

TEST(Gsl_regcomp, AnchorsAndAnyByteHaveNoOperand) {
    EXPECT_EQ(program("^.$"), "\x9c\6\0\14\1\0\3\3\0\3\2\0\3\0\0\0"sv);
}

TEST(Gsl_regcomp, SimpleRepeatsStandBeforeAnOperandWithoutNextNode) {
    EXPECT_EQ(program("a*"), "\x9c\6\0\13\12\0\10\10\0\0a\0\0\0\0"sv);
    EXPECT_EQ(program(".+"), "\x9c\6\0\11\13\0\6\3\0\0\0\0\0"sv);
}

TEST(Gsl_regcomp, ARepeatTakesTheLastLiteralAlone) {
    EXPECT_EQ(program("abc+"), "\x9c\6\0\21\10\0\6ab\0\13\0\10\10\0\0c\0\0\0\0"sv);
}

TEST(Gsl_regcomp, AnOptionIsABranchBesideAnEmptyOne) {
    // 1 branch -> 18; 4 branch -> 12; 7 "a" -> 15; 12 branch -> 15; 15 nothing -> 18
    EXPECT_EQ(program("a?"), "\x9c\6\0\21\6\0\10\10\0\10a\0\6\0\3\11\0\3\0\0\0"sv);
}

TEST(Gsl_regcomp, SetsListTheirMembers) {
    EXPECT_EQ(program("[a-cx]"), "\x9c\6\0\13\4\0\10abcx\0\0\0\0"sv);
    EXPECT_EQ(program("[^]-]"), "\x9c\6\0\11\5\0\6]-\0\0\0\0"sv);
}

TEST(Gsl_regcomp, AGroupIsEnclosedByItsMarks) {
    // 1 branch -> 18; 4 open 1 -> 7; 7 branch -> 15; 10 "a" -> 15; 15 close 1 -> 18
    EXPECT_EQ(program("(a)"), "\x9c\6\0\21\25\0\3\6\0\10\10\0\5a\0\37\0\3\0\0\0"sv);
}

TEST(Gsl_regcomp, ARepeatedGroupLoopsBackToItsBranch) {
    // 1 branch -> 30; 4 branch -> 24; 7 open 1 -> 10; 10 branch -> 18; 13 "a" -> 18; 18 close 1 -> 21;
    // 21 back -> 4; 24 branch -> 27; 27 nothing -> 30
    EXPECT_EQ(program("(a)*"), "\x9c\6\0\35\6\0\24\25\0\3\6\0\10\10\0\5a\0\37\0\3\7\0\21\6\0\3\11\0\3\0\0\0"sv);
}

TEST(Gsl_regcomp, AGroupRepeatedOnceOrMoreLoopsBackToItsMark) {
    // 1 branch -> 30; 4 open 1 -> 7; 7 branch -> 15; 10 "a" -> 15; 15 close 1 -> 18; 18 branch -> 24;
    // 21 back -> 4; 24 branch -> 27; 27 nothing -> 30
    EXPECT_EQ(program("(a)+"), "\x9c\6\0\35\25\0\3\6\0\10\10\0\5a\0\37\0\3\6\0\6\7\0\21\6\0\3\11\0\3\0\0\0"sv);
}

TEST(Gsl_regcomp, ABackslashMakesAnyByteLiteral) {
    EXPECT_EQ(program("\\n\\1"), "\x9c\6\0\15\10\0\5n\0\10\0\5\61\0\0\0\0"sv);
}

// ---------------------------------------------------------------------------------------------------------------------
// Programs by the model

TEST(Gsl_regcomp, AtomsInAllSurroundings) {
    const auto patterns = combined(
        {"a",    "ab",    "xyz",    ".", "[a-f]", "[^a-f0]", "[]a]", "[a-]", "\\*",      "(a)",       "(ab|c)",
         "(a|)", "(a*b)", "((a)b)", "^", "$",     "(^a|b$)", "{",    "]",    "\xe4\xff", "([a-c]|.)", "(x?)"},
        {"@", "@?", "@@", "x@y", "x@?y", "@|b", "b|@", "|@|", "(@)", "(@)?", "(@|@)", "(x@|y)*z", "(x@)+@", "x*@"});
    ASSERT_GT(patterns.size(), 200U);
    for (const std::string& pattern : patterns) {
        SCOPED_TRACE(pattern);
        EXPECT_EQ(compiled(pattern), compiled_model(pattern));
    }
}

TEST(Gsl_regcomp, AtomsWithWidthUnderRepeats) {
    const auto patterns = combined({"a", "ab", ".", "[a-f]", "\\+", "(a)", "(ab|c)", "(a*b)", "(a|(b)+)", "((a)*b)"},
                                   {"@*", "@+", "x@*", "@*x", "@+x", "x@+y", "(@*x)+", "(@+|x)*", "a*@+abc", "@*|@+"});
    for (const std::string& pattern : patterns) {
        SCOPED_TRACE(pattern);
        EXPECT_EQ(compiled(pattern), compiled_model(pattern));
    }
}

TEST(Gsl_regcomp, RandomPatterns) {
    RandomPattern source(1);
    int compiled_patterns = 0;
    for (int i = 0; i < 5000; ++i) {
        const std::string pattern = source.pattern();
        SCOPED_TRACE(pattern);
        ProgramModel expected;
        try {
            expected = compiled_model(pattern);
        } catch (const PatternError&) {
            continue;
        }
        ASSERT_EQ(compiled(pattern), expected);
        ++compiled_patterns;
    }
    EXPECT_GT(compiled_patterns, 2000);
}

TEST(Gsl_regcomp, ThousandsOfAlternatives) {
    std::string pattern = "a0";
    for (int i = 1; i < 2500; ++i) pattern += "|a" + std::to_string(i % 10);
    EXPECT_EQ(compiled(pattern), compiled_model(pattern));
}

// ---------------------------------------------------------------------------------------------------------------------
// Hints

TEST(Gsl_regcomp, OneBranchThatStartsWithALiteralHasAStartByte) {
    EXPECT_EQ(hints("abc"), (Hints{'a', false, ""}));
    EXPECT_EQ(hints("a|b"), (Hints{'\0', false, ""}));
    EXPECT_EQ(hints("(a)"), (Hints{'\0', false, ""}));
    EXPECT_EQ(hints("a+b"), (Hints{'\0', false, ""}));
    EXPECT_EQ(hints("\xfcx"), (Hints{'\xfc', false, ""}));
}

TEST(Gsl_regcomp, OneBranchThatStartsWithTheStartIsAnchored) {
    EXPECT_EQ(hints("^a"), (Hints{'\0', true, ""}));
    EXPECT_EQ(hints("^a|^b"), (Hints{'\0', false, ""}));
    EXPECT_EQ(hints("(^a)"), (Hints{'\0', false, ""}));
    EXPECT_EQ(hints("^?a"), (Hints{'\0', false, "a"}));
}

TEST(Gsl_regcomp, ALiteralIsRequiredBehindARepeatAtTheStart) {
    EXPECT_EQ(hints("x*abc"), (Hints{'\0', false, "abc"}));
    EXPECT_EQ(hints("(x?y)abc"), (Hints{'\0', false, "abc"}));
    EXPECT_EQ(hints("x+abc"), (Hints{'\0', false, ""}));
    EXPECT_EQ(hints("x*abc|d"), (Hints{'\0', false, ""}));
}

TEST(Gsl_regcomp, TheLongestLiteralIsRequiredAndTheLastOfSeveral) {
    EXPECT_EQ(hints("x*ab.cde.f").required, "cde");
    EXPECT_EQ(hints("x*ab.cd").required, "cd");
    EXPECT_EQ(hints("x*ab(cdef)g(hij)*").required, "ab");
    EXPECT_EQ(hints("x*[ab]").required, "");
}

TEST(Gsl_regcomp, TheRequiredTextPointsIntoTheProgram) {
    const Record record("x*abc");
    EXPECT_EQ(record->regmust, reinterpret_cast<const char*>(record->program) + 15);
    EXPECT_EQ(record->regmlen, 3);
}

TEST(Gsl_regcomp, PlacesAreNullBeforeTheFirstSearch) {
    const Record record("a");
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(record->startp[i], nullptr);
        EXPECT_EQ(record->endp[i], nullptr);
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// Limits

TEST(Gsl_regcomp, TheLongestProgramHas32766Bytes) {
    // The check byte, a branch, a literal with its zero byte, and the end.
    const std::string longest(32766 - 1 - 3 - 4 - 3, 'a');
    EXPECT_EQ(Record(longest).program().size(), 32766U);
    EXPECT_DEATH(gsl_regcomp((longest + 'a').c_str()), "regexp too big");
}

TEST(Gsl_regcomp, NineGroupsCompile) {
    EXPECT_EQ(compiled("(((((((((a)))))))))"), compiled_model("(((((((((a)))))))))"));
    EXPECT_EQ(compiled("()()()()()()()()()"), compiled_model("()()()()()()()()()"));
}
