#include "text/regexp_foresight.h"

namespace orvix::gsl::text::regexp {

namespace {

bool note(Step* step, const ByteSet& first, bool is_sure, bool is_anchored) {
    if (step->first == first && step->is_sure == is_sure && step->is_anchored == is_anchored) return false;
    step->first = first;
    step->is_sure = is_sure;
    step->is_anchored = is_anchored;
    return true;
}

// Looks at one step, whose next ones are known if they stand behind it. True if that brought something new.
bool look(Step* step) {
    const Step& next = *step->next;
    switch (step->op) {
        case Op::match:
            return note(step, ByteSet::all(), true, false);
        case Op::start:
            return note(step, next.first, false, true);
        case Op::end:
            return note(step, ByteSet::of('\0'), false, false);
        case Op::pass:
            return note(step, next.first, next.is_sure, next.is_anchored);
        case Op::choice: {
            const Step& operand = *step->operand;
            return note(step, operand.first | next.first, operand.is_sure || next.is_sure,
                        operand.is_anchored && next.is_anchored);
        }
        case Op::run: {
            const ByteSet& run = step->operand->first;
            return step->detail == 0 ? note(step, run | next.first, next.is_sure, false)
                                     : note(step, run, false, false);
        }
        default:
            return false;
    }
}

// A mark becomes what it leads to, with a place to note. It is in the same states, as it goes on in the same way.
void join_mark(Step* step) {
    if (step->op != Op::pass || step->place == 0 || step->next->place != 0) return;
    const unsigned char place = step->place;
    *step = *step->next;
    step->place = place;
}

}  // namespace

void look_ahead(Step* steps, std::size_t count, bool has_loops) {
    // Steps lead forward except at the end of a loop. As its body takes at least a byte, what the loop may begin with
    // does not depend on what it comes back to; each round settles one level of nested loops.
    for (bool is_new = true; is_new;) {
        is_new = false;
        for (std::size_t i = count; i-- > 1;) is_new |= look(&steps[i]);
        is_new = is_new && has_loops;
    }
    for (std::size_t i = 1; i < count; ++i) {
        Step& step = steps[i];
        if (step.op == Op::run) step.is_exclusive = !step.operand->first.meets(step.next->first);
    }
    for (std::size_t i = count; i-- > 1;) join_mark(&steps[i]);
}

}  // namespace orvix::gsl::text::regexp
