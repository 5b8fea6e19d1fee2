// The second of two matchers: follows all ways through the steps at once, a byte of the subject at a time. A way that
// comes to a state where one of higher rank has been at the same byte ends there, as it would fail like that one did.
// So each pair of a state and a byte is looked at once, over all positions where a match may start, and memory depends
// on the program alone.
#pragma once

#include "text/regexp_step.h"

#include <cstddef>
#include <cstdint>
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
    // Where a way stands: at a step, and how far inside it. A text has as many states as bytes. A run has two, in the
    // second of which it may end.
    struct State {
        const Step* step;
        std::size_t inside;
    };

    // Ways in the order of their rank, each with the positions it noted.
    struct Ways {
        std::vector<State> states;
        std::vector<const char*> slots;
    };

    // What is left to do once the way in hand is followed to its end.
    struct Branch {
        State state;       // to follow; without a step, a slot is restored
        std::size_t slot;  // that one
        const char* at;    // to this position
    };

    std::size_t slot_of(unsigned place) const {
        return place > end_places ? steps_.groups + place - end_places : place;
    }
    bool enter(State state);
    void note(unsigned place, const char* at);
    void follow(State state, const char* at, Ways* ways);
    void follow_one(State state, const char* at, Ways* ways);
    void add(State state, Ways* ways);
    void advance(const char* at);

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
    std::size_t round_ = 0;
};

}  // namespace orvix::gsl::text::regexp
