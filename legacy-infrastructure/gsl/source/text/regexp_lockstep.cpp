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
            follow({steps_.entry, 0}, at, &now_);
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

namespace {

// Takes one byte; the state becomes the one behind it.
template <class State>
bool take(State* state, const char* at) {
    const Step& step = *state->step;
    switch (step.op) {
        case Op::text:
            if (static_cast<unsigned char>(*at) != step.text[state->inside]) return false;
            if (++state->inside < step.length) return true;
            break;
        case Op::run:
            state->inside = 1;
            return step.operand->first.has(*at);
        default:
            if (!step.first.has(*at)) return false;
    }
    *state = {step.next, 0};
    return true;
}

}  // namespace

// Moves each way over the byte, up to the first one that has come to its end: those behind it are of lower rank.
void Lockstep::advance(const char* at) {
    for (std::size_t i = 0; i < now_.states.size(); ++i) {
        State state = now_.states[i];
        const auto slots = now_.slots.begin() + static_cast<std::ptrdiff_t>(i * slot_count_);
        if (state.step->op == Op::match) {
            std::copy_n(slots, slot_count_, best_.begin());
            end_ = at;
            return;
        }
        if (!take(&state, at)) continue;
        std::copy_n(slots, slot_count_, slots_.begin());
        follow(state, at + 1, &next_);
    }
}

// Enters a state and all that are reached from it without taking a byte. The first one entered is of the highest rank.
void Lockstep::follow(State state, const char* at, Ways* ways) {
    follow_one(state, at, ways);
    while (!branches_.empty()) {
        const Branch branch = branches_.back();
        branches_.pop_back();
        if (branch.state.step != nullptr) {
            follow_one(branch.state, at, ways);
        } else {
            slots_[branch.slot] = branch.at;
        }
    }
}

// Goes on to where a byte is taken; other ways are left in `branches_`.
void Lockstep::follow_one(State state, const char* at, Ways* ways) {
    while (enter(state)) {
        const Step& step = *state.step;
        if (step.place != 0 && state.inside == 0) note(step.place, at);
        switch (step.op) {
            case Op::match:
            case Op::byte:
            case Op::text:
            case Op::set:
                return add(state, ways);
            case Op::start:
                if (at != subject_) return;
                break;
            case Op::end:
                if (*at != '\0') return;
                break;
            case Op::pass:
                break;
            case Op::choice:
                if (!step.operand->first.has(*at)) break;
                if (step.next->first.has(*at)) branches_.push_back({{step.next, 0}, 0, nullptr});
                state = {step.operand, 0};
                continue;
            case Op::run:
                if (step.operand->first.has(*at)) add(state, ways);
                if (state.inside < step.detail || !step.next->first.has(*at)) return;
                break;
            default:
                report_damage(step.op);
        }
        state = {step.next, 0};
    }
}

// False if the state was entered at this byte before.
bool Lockstep::enter(State state) {
    const Step& step = *state.step;
    if (step.op == Op::corrupted_pointers) report_damage(step.op);
    const std::size_t number = step.op == Op::text ? static_cast<std::size_t>(step.text - steps_.program) : step.node;
    return std::exchange(entered_[number + state.inside], round_ + 1) != round_ + 1;
}

void Lockstep::note(unsigned place, const char* at) {
    const std::size_t slot = slot_of(place);
    branches_.push_back({{nullptr, 0}, slot, slots_[slot]});
    slots_[slot] = at;
}

void Lockstep::add(State state, Ways* ways) {
    ways->states.push_back(state);
    ways->slots.insert(ways->slots.end(), slots_.begin(), slots_.end());
}

}  // namespace orvix::gsl::text::regexp
