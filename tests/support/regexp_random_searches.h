// Random searches, each held against the model of matching.
#pragma once

#include "support/regexp_match_model.h"
#include "support/regexp_random.h"
#include "support/regexp_record.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace orvix::test::regexp {

struct SearchCounts {
    int searches = 0;
    int matches = 0;
};

// Searches some subjects for each of 6000 patterns, up to the first difference. `search` takes a record and a subject,
// and gives the places of the match, if there is one.
template <class Search>
SearchCounts compare_random_searches(unsigned seed, int subjects_of_a_pattern, Search search) {
    RandomPattern source(seed);
    SearchCounts counts;
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
        for (int j = 0; j < subjects_of_a_pattern; ++j) {
            const std::string subject = source.subject();
            SCOPED_TRACE(subject);
            std::optional<Places> expected;
            try {
                expected = MatchModel(choice, subject).search();
            } catch (const TooLong&) {
                continue;
            }
            const std::optional<Places> found = search(record, subject);
            EXPECT_EQ(found, expected);
            if (found != expected) return counts;
            ++counts.searches;
            counts.matches += expected.has_value() ? 1 : 0;
        }
    }
    return counts;
}

}  // namespace orvix::test::regexp
