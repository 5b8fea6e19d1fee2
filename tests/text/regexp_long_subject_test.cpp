// Patterns and subjects on which the plain order of trying takes forever, or a stack as deep as the subject is long.
#include <gtest/gtest.h>
#include <orvix/gsl/regular_expressions.h>
#include <support/regexp_record.h>

#include <cstddef>
#include <optional>
#include <string>
#include <utility>

using namespace orvix::test::regexp;

namespace {

std::string repeated(const std::string& text, std::size_t count) {
    std::string all;
    all.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i) all += text;
    return all;
}

using Place = std::optional<std::pair<std::size_t, std::size_t>>;

Place whole(const std::optional<Places>& places) { return places ? places->at(0) : std::nullopt; }

constexpr std::size_t ten_million = 10000000;

}  // namespace

TEST(LongSubject, AmbiguousAlternativesWithoutTheRequiredText) {
    const Record record("(a|a)*b");
    EXPECT_EQ(record.search(repeated("a", 30000)), std::nullopt);
}

TEST(LongSubject, AmbiguousAlternativesBehindTheRequiredText) {
    const Record record("(a|a)*b");
    const std::string subject = "b" + repeated("a", 30000);
    EXPECT_EQ(whole(record.search(subject)), Place({0, 1}));
    EXPECT_EQ(record.search(subject.c_str() + 1), std::nullopt);
    EXPECT_EQ(record.search(repeated("a", 30000) + "cb").value().at(0), Place({30001, 30002}));
}

TEST(LongSubject, AmbiguousAlternativesThatMatch) {
    const std::string subject = repeated("a", 30000) + "b";
    const auto places = Record("(a|a)*b").search(subject);
    EXPECT_EQ(whole(places), Place({0, 30001}));
    EXPECT_EQ(places->at(1), Place({29999, 30000}));
}

TEST(LongSubject, NestedRepeats) {
    const std::string subject = repeated("a", 30000);
    for (const char* pattern :
         {"((a*)b)*c", "((a*)b)*[cd]", "(a+)+[bc]", "(a+a+)+[bc]", "(a|aa)+$b", "((a|b)+)+$c", "(([ab]*)[ab])*[cd]"}) {
        SCOPED_TRACE(pattern);
        EXPECT_EQ(Record(pattern).search(subject), std::nullopt);
    }
    const std::string mixed = repeated("aab", 10000);
    EXPECT_EQ(whole(Record("((a*)b)*").search(mixed)), Place({0, 30000}));
    EXPECT_EQ(Record("((a*)b)*").search(mixed)->at(2), Place({29997, 29999}));
    EXPECT_EQ(Record("((a*)b)*[cd]").search(mixed), std::nullopt);
}

TEST(LongSubject, RunsFromEachPosition) {
    const std::string subject = repeated("x", 300000);
    EXPECT_EQ(Record("x*[yz]").search(subject), std::nullopt);
    EXPECT_EQ(Record("[^y]*.[yz]").search(subject), std::nullopt);
    EXPECT_EQ(Record(".*.*.*[yz]").search(subject), std::nullopt);
    EXPECT_EQ(Record("x.*[yz]").search(subject), std::nullopt);
    EXPECT_EQ(Record("(x+x)*[yz]").search(subject), std::nullopt);
    EXPECT_EQ(Record("(xx)*[yz]").search(subject), std::nullopt);
    EXPECT_EQ(Record("(x)+[yz]").search(subject), std::nullopt);
}

TEST(LongSubject, TenMillionBytesOfALoop) {
    const std::string subject = repeated("abc", ten_million / 3) + "d";
    const auto places = Record("(ab|c)*").search(subject);
    EXPECT_EQ(whole(places), Place({0, subject.size() - 1}));
    EXPECT_EQ(places->at(1), Place({subject.size() - 2, subject.size() - 1}));
}

TEST(LongSubject, TenMillionBytesOfALoopThatIsThenRefused) {
    const std::string subject = repeated("abc", ten_million / 3);
    EXPECT_EQ(Record("^(ab|c)*d").search(subject), std::nullopt);
    EXPECT_EQ(Record("^(ab|c|a|b)*[de]").search(subject), std::nullopt);
}

TEST(LongSubject, TenMillionBytesOfAmbiguousLoops) {
    const std::string subject = repeated("ab", ten_million / 2) + "c";
    const auto places = Record("(a|b|ab)*[cd]").search(subject);
    EXPECT_EQ(whole(places), Place({0, subject.size()}));
    EXPECT_EQ(places->at(1), Place({subject.size() - 2, subject.size() - 1}));
}

TEST(LongSubject, TenMillionBytesOfRuns) {
    const std::string subject = repeated("a", ten_million);
    EXPECT_EQ(whole(Record("a*").search(subject)), Place({0, ten_million}));
    EXPECT_EQ(whole(Record(".*a").search(subject)), Place({0, ten_million}));
    EXPECT_EQ(Record("a*[bc]").search(subject), std::nullopt);
}

TEST(LongSubject, AsLongAPatternAsThereCanBe) {
    std::string pattern = "a0";
    for (int i = 1; i < 2700; ++i) pattern += "|a" + std::to_string(i);
    const Record record("(" + pattern + ")*[xy]");
    std::string subject;
    for (int i = 0; i < 2000; ++i) subject += "a" + std::to_string(i);
    EXPECT_EQ(record.search(subject), std::nullopt);
    EXPECT_EQ(whole(record.search(subject + "x")), Place({0, subject.size() + 1}));
}
