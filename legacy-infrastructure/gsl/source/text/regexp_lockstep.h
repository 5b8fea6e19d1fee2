// The second of two matchers: follows all ways through the steps at once, a byte of the subject at a time. A way that
// comes to a state where one of higher rank has been at the same byte ends there, as it would fail like that one did.
// So each pair of a state and a byte is looked at once, over all positions where a match may start, and memory depends
// on the program alone.
#pragma once

#include "text/regexp_step.h"

#include <cstddef>
#include <vector>

namespace orvix::gsl::text::regexp {

class Lockstep {
public:
    // `subject` is where the steps see the start of the subject.
    Lockstep(const Steps& steps, const char* subject);

    // Finds the leftmost match that starts at a position or behind it; at no other than the first if it is anchored.
    bool search(const char* from, bool is_anchored);

    // Of the match: its start and end, and the positions that were noted; null where none was.
    const char* start() const { return best_[0]; }
    const char* end() const { return end_; }
    const char* place(unsigned place) const { return best_[slot_of(place)]; }

private:
    // Where a way stands: at a step, after so many of its bytes. A text has as many states as bytes. A run has one for
    // each byte that it still must take, and one in which it may end.
    struct State {
        const Step* step;
        std::size_t taken;
    };

    // Ways in the order of their rank, each with the positions it noted.
    struct Ways {
        std::vector<State> states;
        std::vector<const char*> slots;
    };

    // What is left to do once the way in hand is followed to its end.
    struct Branch {
        const Step* step;  // to go on with; null restores a slot
        std::size_t slot;  // that one
        const char* at;    // to this position
    };

    std::size_t slot_of(unsigned place) const {
        return place > end_places ? steps_.groups + place - end_places : place;
    }
    void advance(const char* at);
    void advance_one(State state, const char* at);
    bool enter(State state);
    void follow(const Step* step, const char* at, Ways* ways);
    void follow_one(const Step* step, const char* at, Ways* ways);
    const Step* follow_run(State run, const char* at, Ways* ways);
    void add(State state, Ways* ways);
    void note(unsigned place, const char* at);

    Steps steps_;
    const char* subject_;
    std::size_t slot_count_;  // 0 is the start of the match
    Ways now_;
    Ways next_;
    std::vector<const char*> slots_;  // of the way in hand
    std::vector<const char*> best_;
    const char* end_ = nullptr;
    std::vector<Branch> branches_;
    std::vector<std::size_t> entered_;  // for each state, the round in which it was last entered
    std::size_t round_ = 1;             // goes with the byte that ways come to
};

}  // namespace orvix::gsl::text::regexp
