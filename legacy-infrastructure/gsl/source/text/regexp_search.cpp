#include "text/regexp_backtracker.h"
#include "text/regexp_lockstep.h"
#include "text/regexp_plan.h"
#include "text/regexp_program.h"

#include <orvix/gsl/regular_expressions.h>

#include <cstddef>
#include <cstring>
#include <new>

namespace orvix::gsl::text::regexp {

namespace {

bool holds_text(const char* subject, const char* text, std::size_t length) {
    for (const char* at = std::strchr(subject, *text); at != nullptr; at = std::strchr(at + 1, *text)) {
        if (std::strncmp(at, text, length) == 0) return true;
    }
    return false;
}

template <class Matcher>
int note_match(__gsl_regexp* record, const Matcher& matcher, const char* start, unsigned groups) {
    record->startp[0] = start;
    record->endp[0] = matcher.end();
    for (unsigned group = 1; group < group_limit; ++group) {
        record->startp[group] = group <= groups ? matcher.place(group) : nullptr;
        record->endp[group] = group <= groups ? matcher.place(group + end_places) : nullptr;
    }
    return 1;
}

int note_failure(__gsl_regexp* record) {
    for (unsigned group = 0; group < group_limit; ++group) {
        record->startp[group] = nullptr;
        record->endp[group] = nullptr;
    }
    return 0;
}

// The first place from `at` on where a match may start; null if there is none.
const char* next_start(const __gsl_regexp* record, const Steps& steps, const char* at) {
    if (record->regstart != '\0') return std::strchr(at, record->regstart);
    const ByteSet& first = steps.first[steps.entry];
    for (;; ++at) {
        if (first.has(*at)) return at;
        if (*at == '\0') return nullptr;
    }
}

int search(__gsl_regexp* record, const Plan& plan, const char* subject) {
    if (record->regmust != nullptr && !holds_text(subject, record->regmust, static_cast<std::size_t>(record->regmlen)))
        return 0;
    if (record->regstart != '\0' && std::strchr(subject, record->regstart) == nullptr) return 0;

    const Steps& steps = plan.steps;
    const bool is_anchored = record->reganch != '\0' || steps.steps[steps.entry].is_anchored;
    Backtracker backtracker(steps, subject);
    for (const char* at = subject; (at = next_start(record, steps, at)) != nullptr; ++at) {
        if (is_anchored && at != subject) break;
        const Outcome outcome = backtracker.match_at(at);
        if (outcome == Outcome::match) return note_match(record, backtracker, at, steps.groups);
        if (outcome == Outcome::given_up) {
            Lockstep lockstep(steps, subject);
            return lockstep.search(at, is_anchored) ? note_match(record, lockstep, lockstep.start(), steps.groups)
                                                    : note_failure(record);
        }
        if (*at == '\0') break;
    }
    return note_failure(record);
}

}  // namespace

}  // namespace orvix::gsl::text::regexp

int gsl_regexec(__gsl_regexp* re, const char* subject) {
    using namespace orvix::gsl::text::regexp;
    if (re == nullptr || subject == nullptr) gsl_regerror("NULL parameter");
    if (re->program[0] != check_byte) gsl_regerror("corrupted program");
    try {
        const Plan* const plan = plan_of(re);
        return plan != nullptr ? search(re, *plan, subject) : search(re, ChangedProgram(re).plan(), subject);
    } catch (const std::bad_alloc&) {
        gsl_regerror("out of space");
    }
}
