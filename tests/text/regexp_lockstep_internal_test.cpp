#include "text/regexp_lockstep.h"

#include "text/regexp_backtracker.h"
#include "text/regexp_plan.h"

#include <gtest/gtest.h>
#include <support/regexp_match_model.h>
#include <support/regexp_random.h>
#include <support/regexp_record.h>

#include <cstddef>
#include <optional>
#include <string>

using namespace orvix::test::regexp;
namespace regexp = orvix::gsl::text::regexp;

namespace {

std::optional<Places> search_in_lockstep(const Record& record, const std::string& subject) {
    const regexp::Plan& plan = *regexp::plan_of(record.get());
    const regexp::Steps& steps = plan.steps;
    regexp::Lockstep lockstep(steps, subject.c_str());
    if (!lockstep.search(subject.c_str(), plan.is_anchored)) return std::nullopt;
    const auto offset = [&](const char* at) { return static_cast<std::size_t>(at - subject.c_str()); };
    Places places;
    places.at(0) = {offset(lockstep.start()), offset(lockstep.end())};
    for (unsigned group = 1; group <= steps.groups; ++group) {
        if (lockstep.place(group) != nullptr)
            places.at(group) = {offset(lockstep.place(group)), offset(lockstep.place(group + regexp::end_places))};
    }
    return places;
}

const regexp::Step* entry_of(const Record& record) { return regexp::plan_of(record.get())->steps.entry; }

}  // namespace

TEST(RegexpLockstep, FindsWhatTheModelFindsOnRandomPatternsAndSubjects) {
    RandomPattern source(5);
    int matches = 0;
    for (int i = 0; i < 6000; ++i) {
        const std::string pattern = source.pattern();
        SCOPED_TRACE(pattern);
        Choice choice;
        try {
            choice = PatternReader(pattern).read();
        } catch (const PatternError&) {
            continue;
        }
        const Record record(pattern);
        for (int j = 0; j < 4; ++j) {
            const std::string subject = source.subject();
            SCOPED_TRACE(subject);
            std::optional<Places> expected;
            try {
                expected = MatchModel(choice, subject).search();
            } catch (const TooLong&) {
                continue;
            }
            ASSERT_EQ(search_in_lockstep(record, subject), expected);
            matches += expected.has_value() ? 1 : 0;
        }
    }
    EXPECT_GT(matches, 2500);
}

TEST(RegexpBacktracker, GivesUpWhereChoicesMultiply) {
    const Record record("(a|a)*[bc]");
    const std::string subject(30, 'a');
    const char* places[regexp::place_count];
    regexp::Backtracker backtracker(subject.c_str(), places);
    EXPECT_EQ(backtracker.match(entry_of(record), subject.c_str()), regexp::Outcome::given_up);
}

TEST(RegexpBacktracker, DoesNotGiveUpOnLongSubjectsWhereNothingIsToBeChosen) {
    const Record record("(ab|c)*");
    std::string subject;
    for (int i = 0; i < 300000; ++i) subject += i % 3 == 0 ? "c" : "ab";
    const char* places[regexp::place_count];
    regexp::Backtracker backtracker(subject.c_str(), places);
    ASSERT_EQ(backtracker.match(entry_of(record), subject.c_str()), regexp::Outcome::match);
    EXPECT_EQ(backtracker.end(), subject.c_str() + subject.size());
}
