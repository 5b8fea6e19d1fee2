// The first of two matchers: walks the steps in depth, and goes back to the last choice when it fails. Fast on the
// usual patterns. Where choices multiply it gives up, and leaves the search to the matcher that walks all of them in
// lockstep.
#pragma once

#include "text/regexp_step.h"

#include <array>
#include <cstddef>
#include <limits>
#include <memory>

namespace orvix::gsl::text::regexp {

enum class Outcome { none, match, given_up };

class Backtracker {
public:
    // `subject` is where the steps see the start of the subject.
    Backtracker(const Steps& steps, const char* subject) : steps_(steps), subject_(subject), furthest_(subject) {}

    // Tries to match at one position. Calls go from left to right.
    Outcome match_at(const char* start);

    // Of the last match: its end, and the positions that marks noted; null where none did.
    const char* end() const { return end_; }
    const char* place(std::size_t index) const { return places_[index]; }

private:
    // What to do when the walk fails.
    struct Entry {
        enum Kind : unsigned char { alternative, shorten, restore };

        Kind kind;
        unsigned char place;  // restore: that mark
        StepIndex step;       // go on there
        const char* at;       // from here; restore: the position it had
        const char* least;    // shorten: the leftmost position to go on from
    };

    static constexpr std::size_t small_stack = 64;
    static constexpr std::size_t largest_stack = 65536;

    Outcome walk(StepIndex first, const char* at);
    const char* take_run(const Step& run, const char* at);
    const char* shorten(StepIndex step, const char* from, const char* least);
    const char* go_back(StepIndex* step);
    bool push(const Entry& entry);
    bool grow_stack();
    bool pay(const char* at, std::ptrdiff_t steps);
    void give_up() { credit_ = std::numeric_limits<std::ptrdiff_t>::min() / 2; }  // no byte makes up for that

    const ByteSet& first_of(const Step& step) const { return steps_.first[&step - steps_.steps]; }
    bool may_go_on(StepIndex step, const char* at) const { return steps_.first[step].has(*at); }

    Steps steps_;
    const char* subject_;
    const char* end_ = nullptr;

    // Steps are paid for from a credit that grows with each byte of the subject reached for the first time. So the
    // whole search costs steps in proportion to the subject.
    const char* furthest_;
    std::ptrdiff_t credit_ = 2048;

    std::array<const char*, place_count> places_;
    Entry small_stack_[small_stack];
    std::unique_ptr<Entry[]> large_stack_;
    Entry* bottom_ = small_stack_;
    Entry* top_ = small_stack_;
    Entry* limit_ = small_stack_ + small_stack;
};

}  // namespace orvix::gsl::text::regexp
