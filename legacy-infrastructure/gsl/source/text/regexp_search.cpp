#include "text/regexp_backtracker.h"
#include "text/regexp_changed_program.h"
#include "text/regexp_lockstep.h"
#include "text/regexp_plan.h"
#include "text/regexp_program.h"
#include "text/regexp_starts.h"

#include <orvix/gsl/regular_expressions.h>

#include <cstddef>
#include <cstring>
#include <new>

namespace orvix::gsl::text::regexp {

namespace {

// The fields of a record that tell of a match lie as the matchers number places: those of the whole match and of nine
// groups, first all starts and then all ends.
static_assert(offsetof(__gsl_regexp, endp) == offsetof(__gsl_regexp, startp) + end_places * sizeof(const char*));
static_assert(sizeof(__gsl_regexp::startp) + sizeof(__gsl_regexp::endp) == place_count * sizeof(const char*));

class Search {
public:
    Search(__gsl_regexp* record, const Plan& plan, const char* subject)
        : record_(record), plan_(plan), entry_(plan.steps.entry), subject_(subject) {}

    int run() {
        if (lacks_required_text()) return fail_without_try();
        if (plan_.is_anchored) return run_at_start();
        if (!plan_.finder.begins_with_text()) return run_from_start();
        // Most searches that fail do it here, and want no more.
        const char* const at = plan_.finder.needle().find(subject_);
        return at != nullptr ? run_from(at) : fail_without_try();
    }

private:
    int run_at_start() {
        clear();
        Backtracker backtracker(subject_, places());
        const Outcome outcome = backtracker.match(entry_, subject_);
        if (outcome == Outcome::match) return note_match(subject_, backtracker.end());
        if (outcome == Outcome::given_up) return run_in_lockstep(subject_, true);
        clear();
        return 0;
    }

    int run_from_start() {
        Starts starts(plan_.finder);
        const char* const at = starts.find(subject_);
        return at != nullptr ? try_all(at, starts) : fail_without_try();
    }

    // A match may start there.
    int run_from(const char* at) {
        Starts starts(plan_.finder);
        return try_all(at, starts);
    }

    int try_all(const char* at, Starts& starts) {
        clear();
        Backtracker backtracker(subject_, places());
        do {
            const Outcome outcome = backtracker.match(entry_, at);
            if (outcome == Outcome::match) return note_match(at, backtracker.end());
            if (outcome == Outcome::given_up) return run_in_lockstep(at, false);
            if (plan_.steps.groups > 0) clear();
            at = next_start(at, starts);
        } while (at != nullptr);
        return 0;
    }

    // The finder may look for that text anyway.
    bool lacks_required_text() const {
        const Needle& required = plan_.required;
        return !required.is_empty() && required.text() != plan_.finder.needle().text() &&
               required.find(subject_) == nullptr;
    }

    // Nothing was worth a try. The record keeps its places if its own hints say so, and else is cleared: they leave
    // more to be tried than was looked at.
    int fail_without_try() {
        if (record_->regmust != nullptr) {
            if (plan_.required.find(subject_) == nullptr) return 0;
        } else if (record_->regstart != '\0') {
            if (plan_.finder.needle().text().size() == 1 || !has_places()) return 0;
            if (std::strchr(subject_, record_->regstart) == nullptr) return 0;
        }
        clear();
        return 0;
    }

    // Where to try next, once a match at `at` has failed.
    const char* next_start(const char* at, Starts& starts) const {
        // What follows a run at the start has failed behind each of its bytes: the rest of the run can be left out.
        if (entry_->op == Op::run) {
            while (entry_->operand->first.has(*at)) ++at;
        }
        return *at != '\0' ? starts.find(at + 1) : nullptr;
    }

    int run_in_lockstep(const char* from, bool is_anchored) try {
        clear();
        Lockstep lockstep(plan_.steps, subject_);
        if (!lockstep.search(from, is_anchored)) return 0;
        for (unsigned group = 1; group <= plan_.steps.groups; ++group) {
            record_->startp[group] = lockstep.place(group);
            record_->endp[group] = lockstep.place(group + end_places);
        }
        return note_match(lockstep.start(), lockstep.end());
    } catch (const std::bad_alloc&) {
        gsl_regerror("out of space");
    }

    int note_match(const char* start, const char* end) {
        record_->startp[0] = start;
        record_->endp[0] = end;
        return 1;
    }

    void clear() {
        std::memset(record_->startp, 0, sizeof record_->startp);
        std::memset(record_->endp, 0, sizeof record_->endp);
    }
    // Others are never set without these.
    bool has_places() const { return record_->startp[0] != nullptr || record_->endp[0] != nullptr; }

    const char** places() { return record_->startp; }

    __gsl_regexp* record_;
    const Plan& plan_;
    const Step* entry_;
    const char* subject_;
};

int search_with_changed_program(__gsl_regexp* record, const char* subject) try {
    const ChangedProgram program(record);
    return Search(record, program.plan(), subject).run();
} catch (const std::bad_alloc&) {
    gsl_regerror("out of space");
}

}  // namespace

}  // namespace orvix::gsl::text::regexp

int gsl_regexec(__gsl_regexp* re, const char* subject) {
    using namespace orvix::gsl::text::regexp;
    if (re == nullptr || subject == nullptr) gsl_regerror("NULL parameter");
    if (re->program[0] != check_byte) gsl_regerror("corrupted program");
    const Plan* const plan = plan_of(re);
    return plan != nullptr ? Search(re, *plan, subject).run() : search_with_changed_program(re, subject);
}
