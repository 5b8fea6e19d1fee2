#include "text/regexp_lockstep.h"

#include "text/regexp_damage.h"

#include <algorithm>
#include <utility>

namespace orvix::gsl::text::regexp {

Lockstep::Lockstep(const Steps& steps, const char* subject)
    : steps_(steps),
      subject_(subject),
      slot_count_(1 + 2 * std::size_t{steps.groups}),
      slots_(slot_count_),
      best_(slot_count_),
      entered_(steps.program_bytes) {}

bool Lockstep::search(const char* from, bool is_anchored) {
    for (const char* at = from;; ++at) {
        const bool may_start = end_ == nullptr && (at == from || !is_anchored);
        if (may_start && steps_.entry->first.has(*at)) {
            std::fill(slots_.begin(), slots_.end(), nullptr);
            slots_[0] = at;
            follow(steps_.entry, at, &now_);
        }
        ++round_;
        advance(at);
        const bool may_start_later = end_ == nullptr && !is_anchored;
        if (*at == '\0' || (next_.states.empty() && !may_start_later)) return end_ != nullptr;
        std::swap(now_, next_);
        next_.states.clear();
        next_.slots.clear();
    }
}

// Moves all ways over a byte, up to the first one that has come to its end: those behind it are of lower rank.
void Lockstep::advance(const char* at) {
    for (std::size_t i = 0; i < now_.states.size(); ++i) {
        const State state = now_.states[i];
        const bool is_match = state.step->op == Op::match;
        const auto slots = now_.slots.begin() + static_cast<std::ptrdiff_t>(i * slot_count_);
        std::copy_n(slots, slot_count_, is_match ? best_.begin() : slots_.begin());
        if (is_match) {
            end_ = at;
            return;
        }
        advance_one(state, at);
    }
}

void Lockstep::advance_one(State state, const char* at) {
    const Step& step = *state.step;
    switch (step.op) {
        case Op::text:
            if (*at != step.text()[state.taken]) return;
            if (++state.taken == step.length) break;
            if (enter(state)) add(state, &next_);
            return;
        case Op::run:
            if (!step.operand->first.has(*at)) return;
            state.taken = step.detail;
            if (enter(state) && follow_run(state, at + 1, &next_) != nullptr) break;
            return;
        default:
            if (!step.first.has(*at)) return;
    }
    follow(step.next, at + 1, &next_);
}

// False if the state was entered at this byte before.
bool Lockstep::enter(State state) { return std::exchange(entered_[state.step->state + state.taken], round_) != round_; }

// Enters a step and all that are reached from it without taking a byte. The first one entered is of the highest rank.
void Lockstep::follow(const Step* step, const char* at, Ways* ways) {
    follow_one(step, at, ways);
    while (!branches_.empty()) {
        const Branch branch = branches_.back();
        branches_.pop_back();
        if (branch.step != nullptr) {
            follow_one(branch.step, at, ways);
        } else {
            slots_[branch.slot] = branch.at;
        }
    }
}

// Goes on to where a byte is taken; other ways are left in `branches_`.
void Lockstep::follow_one(const Step* step, const char* at, Ways* ways) {
    while (step != nullptr && enter({step, 0})) {
        if (step->place != 0) note(step->place, at);
        switch (step->op) {
            case Op::match:
            case Op::byte:
            case Op::text:
            case Op::set:
                return add({step, 0}, ways);
            case Op::start:
                if (at != subject_) return;
                step = step->next;
                break;
            case Op::end:
                if (*at != '\0') return;
                step = step->next;
                break;
            case Op::pass:
                step = step->next;
                break;
            case Op::choice:
                if (!step->operand->first.has(*at)) {
                    step = step->next;
                } else {
                    if (step->next->first.has(*at)) branches_.push_back({step->next, 0, nullptr});
                    step = step->operand;
                }
                break;
            case Op::run:
                step = follow_run({step, 0}, at, ways);
                break;
            default:
                report_damage(step->op);
        }
    }
}

// The step that goes on without another byte of the run; null if it may not.
const Step* Lockstep::follow_run(State run, const char* at, Ways* ways) {
    const Step& step = *run.step;
    if (step.operand->first.has(*at)) add(run, ways);
    return run.taken >= step.detail && step.next->first.has(*at) ? step.next : nullptr;
}

void Lockstep::add(State state, Ways* ways) {
    ways->states.push_back(state);
    ways->slots.insert(ways->slots.end(), slots_.begin(), slots_.end());
}

void Lockstep::note(unsigned place, const char* at) {
    const std::size_t slot = slot_of(place);
    branches_.push_back({nullptr, slot, slots_[slot]});
    slots_[slot] = at;
}

}  // namespace orvix::gsl::text::regexp
