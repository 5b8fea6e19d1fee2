#include "text/regexp_backtracker.h"

#include "text/regexp_damage.h"
#include "text/regexp_needle.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

namespace orvix::gsl::text::regexp {

namespace {

constexpr std::ptrdiff_t steps_for_a_byte = 4;
constexpr std::ptrdiff_t bytes_in_a_step = 16;  // that a run passes over

const char* end_of_run(const Step& run, const char* at) {
    if (run.takes_all) return at + std::strlen(at);
    const ByteSet& set = run.operand->first;
    while (set.has(*at)) ++at;
    return at;
}

// The last position from `least` to `at` where a byte of the set stands; null if there is none.
const char* last_of(const ByteSet& set, const char* least, const char* at) {
    for (; at >= least; --at) {
        if (set.has(*at)) return at;
    }
    return nullptr;
}

}  // namespace

// Takes as many bytes as there are, and notes where to go on with fewer. Null if there is nowhere to go on.
inline const char* Backtracker::take_run(const Step& run, const char* at) {
    const char* const end = end_of_run(run, at);
    pay(end, 1 + (end - at) / bytes_in_a_step);
    const char* const least = at + run.detail;
    if (end < least) return nullptr;
    return run.is_exclusive || run.next->is_sure ? end : shorten(run.next, end, least);
}

// The last position at which the step may go on; leaves a note where there may be more of them.
inline const char* Backtracker::shorten(const Step* step, const char* from, const char* least) {
    const char* const at = last_of(step->first, least, from);
    pay(from, 1 + (from - (at != nullptr ? at : least)) / bytes_in_a_step);
    if (at != nullptr && at > least && !push({step, at - 1, least, 0})) give_up();
    return at;
}

// Undoes steps up to the last one that leaves something to try. Null if there is none.
const char* Backtracker::go_back(const Step** step) {
    while (top_ != bottom_) {
        const Entry entry = *--top_;
        if (entry.step == nullptr) {
            places_[entry.place] = entry.at;
            continue;
        }
        pay(entry.at, 1);
        const char* const at = shorten(entry.step, entry.at, entry.least);
        if (at == nullptr) continue;
        *step = entry.step;
        return at;
    }
    return nullptr;
}

inline bool Backtracker::push(const Entry& entry) {
    if (top_ == limit_ && !grow_stack()) return false;
    *top_++ = entry;
    return true;
}

bool Backtracker::grow_stack() {
    const auto size = static_cast<std::size_t>(limit_ - bottom_);
    if (size == largest_stack) return false;
    std::unique_ptr<Entry[]> larger(new (std::nothrow) Entry[size * 8]);
    if (larger == nullptr) return false;
    std::copy(bottom_, top_, larger.get());
    large_stack_ = std::move(larger);
    bottom_ = large_stack_.get();
    top_ = bottom_ + size;
    limit_ = bottom_ + size * 8;
    return true;
}

// False once the credit is used up.
inline bool Backtracker::pay(const char* at, std::ptrdiff_t steps) {
    if (at > furthest_) {
        credit_ += (at - furthest_) * steps_for_a_byte;
        furthest_ = at;
    }
    credit_ -= steps;
    return credit_ >= 0;
}

Outcome Backtracker::walk(const Step* step, const char* at) {
    while (true) {
        if (step->place != 0) {
            // With nothing to go back to, nobody will ask for the position it had.
            if (top_ != bottom_ && !push({nullptr, places_[step->place], nullptr, step->place}))
                return Outcome::given_up;
            places_[step->place] = at;
        }
        switch (step->op) {
            case Op::match:
                end_ = at;
                return Outcome::match;
            case Op::start:
                if (at != subject_) break;
                step = step->next;
                continue;
            case Op::end:
                if (*at != '\0') break;
                step = step->next;
                continue;
            case Op::byte:
                if (static_cast<unsigned char>(*at) != step->detail) break;
                ++at;
                step = step->next;
                continue;
            case Op::text:
                if (!stands_at(at, step->text())) break;
                at += step->length;
                step = step->next;
                continue;
            case Op::set:
                if (!step->first.has(*at)) break;
                ++at;
                step = step->next;
                continue;
            case Op::pass:
                if (step->is_loop && !pay(at, 1)) return Outcome::given_up;
                step = step->next;
                continue;
            case Op::choice:
                if (step->is_loop && !pay(at, 1)) return Outcome::given_up;
                if (!step->operand->first.has(*at)) {
                    step = step->next;
                    continue;
                }
                if (step->next->first.has(*at)) {
                    // Where the alternative cannot fail, nothing before it will be needed any more.
                    if (step->next->is_sure) top_ = bottom_;
                    if (!push({step->next, at, at, 0})) return Outcome::given_up;
                }
                step = step->operand;
                continue;
            case Op::run:
                at = take_run(*step, at);
                if (at == nullptr) break;
                step = step->next;
                continue;
            default:
                report_damage(step->op);
        }
        if (credit_ < 0) return Outcome::given_up;
        at = go_back(&step);
        if (at == nullptr) return Outcome::none;
    }
}

}  // namespace orvix::gsl::text::regexp
