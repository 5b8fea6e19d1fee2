#include "text/regexp_lockstep.h"

#include "text/regexp_backtracker.h"
#include "text/regexp_plan.h"

#include <gtest/gtest.h>
#include <support/regexp_match_model.h>
#include <support/regexp_random_searches.h>
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
    const SearchCounts counts = compare_random_searches(5, 4, search_in_lockstep);
    EXPECT_GT(counts.matches, 2500);
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
