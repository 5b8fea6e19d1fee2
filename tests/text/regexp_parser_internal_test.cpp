#include "text/regexp_compiler.h"

#include <gtest/gtest.h>
#include <support/regexp_program_model.h>
#include <support/regexp_random.h>
#include <support/regexp_record.h>

#include <string>

using namespace orvix::test::regexp;

namespace {

// The program that the library makes of a pattern, or its error.
std::string outcome(const std::string& pattern) {
    const auto compilation = orvix::gsl::text::regexp::compile(pattern.c_str());
    if (compilation.error != nullptr) return compilation.error;
    return Record(compilation.record).program();
}

std::string outcome_of_model(const std::string& pattern) {
    try {
        return compiled_model(pattern).program;
    } catch (const PatternError& error) {
        return error.what();
    }
}

}  // namespace

TEST(RegexpCompile, FindsTheSameErrorsAsTheModelInJumbledPatterns) {
    RandomPattern source(2);
    for (int i = 0; i < 50000; ++i) {
        const std::string pattern = source.jumble();
        SCOPED_TRACE(pattern);
        ASSERT_EQ(outcome(pattern), outcome_of_model(pattern));
    }
}

TEST(RegexpCompile, FindsTheSameErrorsAsTheModelInRandomPatterns) {
    RandomPattern source(3);
    for (int i = 0; i < 5000; ++i) {
        const std::string pattern = source.pattern(12);
        SCOPED_TRACE(pattern);
        ASSERT_EQ(outcome(pattern), outcome_of_model(pattern));
    }
}

// Long patterns are compiled in another way than short ones.
TEST(RegexpCompile, FindsTheSameInPatternsBehindALongText) {
    RandomPattern source(8);
    const std::string text(300, 'x');
    for (int i = 0; i < 5000; ++i) {
        const std::string pattern = text + (source.random().coin() ? source.pattern() : source.jumble());
        SCOPED_TRACE(pattern);
        ASSERT_EQ(outcome(pattern), outcome_of_model(pattern));
    }
}

TEST(RegexpCompile, MakesTheLargestProgramsForTheirLengthInPlace) {
    for (const std::string pattern : {"[\1-\377]", "(a)*", "(a)+", "()|()?", "[a-z][a-z][a-z][a-z][a-z][a-z][a-z]"}) {
        std::string repeated;
        for (std::size_t length = 0; length < 300; length += pattern.size()) {
            SCOPED_TRACE(repeated);
            ASSERT_EQ(outcome(repeated), outcome_of_model(repeated));
            repeated += pattern;
        }
    }
}
