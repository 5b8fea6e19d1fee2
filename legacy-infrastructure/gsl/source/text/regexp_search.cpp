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

// The fields of a record that tell of a match lie as the matchers number places: those of the whole match and of nine
// groups, first all starts and then all ends.
static_assert(offsetof(__gsl_regexp, endp) == offsetof(__gsl_regexp, startp) + end_places * sizeof(const char*));
static_assert(sizeof(__gsl_regexp::startp) + sizeof(__gsl_regexp::endp) == place_count * sizeof(const char*));

class Search {
public:
    Search(__gsl_regexp* record, const Plan& plan, const char* subject)
        : record_(record), steps_(plan.steps), subject_(subject) {}

    int run() {
        if (record_->regmust != nullptr && !holds_required_text()) return 0;
        if (record_->regstart != '\0' && std::strchr(subject_, record_->regstart) == nullptr) return 0;
        clear();
        Backtracker backtracker(subject_, places());
        const bool is_anchored = record_->reganch != '\0' || steps_.entry->is_anchored;
        for (const char* at = subject_; (at = next_start(at)) != nullptr; ++at) {
            if (is_anchored && at != subject_) break;
            const Outcome outcome = backtracker.match(steps_.entry, at);
            if (outcome == Outcome::match) return note_match(at, backtracker.end());
            if (outcome == Outcome::given_up) return run_in_lockstep(at, is_anchored);
            if (steps_.groups > 0) clear();
            if (*at == '\0') break;
        }
        return 0;
    }

private:
    bool holds_required_text() const {
        const char* const text = record_->regmust;
        for (const char* at = subject_; (at = std::strchr(at, *text)) != nullptr; ++at) {
            if (std::strncmp(at, text, static_cast<std::size_t>(record_->regmlen)) == 0) return true;
        }
        return false;
    }

    // The first position from `at` on where a match may start; null if there is none.
    const char* next_start(const char* at) const {
        if (record_->regstart != '\0') return std::strchr(at, record_->regstart);
        for (;; ++at) {
            if (steps_.entry->first.has(*at)) return at;
            if (*at == '\0') return nullptr;
        }
    }

    int run_in_lockstep(const char* from, bool is_anchored) {
        clear();
        Lockstep lockstep(steps_, subject_);
        if (!lockstep.search(from, is_anchored)) return 0;
        for (unsigned group = 1; group <= steps_.groups; ++group) {
            record_->startp[group] = lockstep.place(group);
            record_->endp[group] = lockstep.place(group + end_places);
        }
        return note_match(lockstep.start(), lockstep.end());
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
    const char** places() { return record_->startp; }

    __gsl_regexp* record_;
    const Steps& steps_;
    const char* subject_;
};

}  // namespace

}  // namespace orvix::gsl::text::regexp

int gsl_regexec(__gsl_regexp* re, const char* subject) {
    using namespace orvix::gsl::text::regexp;
    if (re == nullptr || subject == nullptr) gsl_regerror("NULL parameter");
    if (re->program[0] != check_byte) gsl_regerror("corrupted program");
    try {
        const Plan* const plan = plan_of(re);
        return plan != nullptr ? Search(re, *plan, subject).run()
                               : Search(re, ChangedProgram(re).plan(), subject).run();
    } catch (const std::bad_alloc&) {
        gsl_regerror("out of space");
    }
}
