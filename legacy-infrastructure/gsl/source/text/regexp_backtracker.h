// The first of two matchers: walks the steps in depth, and goes back to the last choice when it fails. Fast on the
// usual patterns. Where choices multiply it gives up, and leaves the search to the matcher that walks all of them in
// lockstep.
#pragma once

#include "text/regexp_step.h"

#include <cstddef>
#include <limits>
#include <memory>

namespace orvix::gsl::text::regexp {

enum class Outcome { none, match, given_up };

class Backtracker {
public:
    // `subject` is where the steps see the start of the subject. `places` receives the positions that are noted.
    Backtracker(const char* subject, const char** places) : subject_(subject), places_(places), furthest_(subject) {}

    // Tries to match at one position. Calls go from left to right.
    Outcome match(const Step* entry, const char* start) {
        top_ = bottom_;
        return walk(entry, start);
    }

    // The end of the last match.
    const char* end() const { return end_; }

private:
    // What to do when the walk fails.
    struct Entry {
        const Step* step;   // go on there; null restores a place
        const char* at;     // from here; or the position that the place had
        const char* least;  // the leftmost position to go on from
        std::size_t place;
    };

    static constexpr std::size_t small_stack = 48;
    static constexpr std::size_t largest_stack = small_stack * 8 * 8 * 8 * 8;

    Outcome walk(const Step* step, const char* at);
    const char* take_run(const Step& run, const char* at);
    const char* shorten(const Step* step, const char* from, const char* least);
    const char* go_back(const Step** step);
    bool push(const Entry& entry);
    bool grow_stack();
    bool pay(const char* at, std::ptrdiff_t steps);
    void give_up() { credit_ = std::numeric_limits<std::ptrdiff_t>::min() / 2; }  // no byte makes up for that

    const char* subject_;
    const char** places_;
    const char* end_ = nullptr;

    // Steps are paid for from a credit that grows with each byte of the subject reached for the first time. So the
    // whole search costs steps in proportion to the subject.
    const char* furthest_;
    std::ptrdiff_t credit_ = 1024;

    Entry small_stack_[small_stack];
    std::unique_ptr<Entry[]> large_stack_;
    Entry* bottom_ = small_stack_;
    Entry* top_ = small_stack_;
    Entry* limit_ = small_stack_ + small_stack;
};

}  // namespace orvix::gsl::text::regexp
