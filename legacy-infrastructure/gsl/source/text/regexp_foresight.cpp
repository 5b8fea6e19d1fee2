#include "text/regexp_foresight.h"

namespace orvix::gsl::text::regexp {

namespace {

class Foresight {
public:
    Foresight(Step* steps, ByteSet* first) : steps_(steps), first_(first) {}

    // Looks at one step, whose next ones are known if they stand behind it. True if that brought something new.
    bool look(std::size_t index) {
        const Step& step = steps_[index];
        const Step& next = steps_[step.next];
        const Step& operand = steps_[step.operand];
        const ByteSet& behind = first_[step.next];
        const ByteSet& inside = first_[step.operand];
        switch (step.op) {
            case Op::match:
                return note(index, ByteSet::all(), true, false);
            case Op::start:
                return note(index, behind, false, true);
            case Op::end:
                return note(index, ByteSet::of('\0'), false, false);
            case Op::mark:
                return note(index, behind, next.is_sure, next.is_anchored);
            case Op::choice:
                return note(index, inside | behind, operand.is_sure || next.is_sure,
                            operand.is_anchored && next.is_anchored);
            case Op::run:
                return step.detail == 0 ? note(index, inside | behind, next.is_sure, false)
                                        : note(index, inside, false, false);
            default:
                return false;
        }
    }

private:
    bool note(std::size_t index, const ByteSet& first, bool is_sure, bool is_anchored) {
        Step& step = steps_[index];
        if (first_[index] == first && step.is_sure == is_sure && step.is_anchored == is_anchored) return false;
        first_[index] = first;
        step.is_sure = is_sure;
        step.is_anchored = is_anchored;
        return true;
    }

    Step* steps_;
    ByteSet* first_;
};

}  // namespace

void look_ahead(Step* steps, ByteSet* first, std::size_t count, bool has_loops) {
    Foresight foresight(steps, first);
    // Steps lead forward except at the end of a loop. As its body takes at least a byte, what the loop may begin with
    // does not depend on what it comes back to; each round settles one level of nested loops.
    for (bool is_new = true; is_new;) {
        is_new = false;
        for (std::size_t index = count; index-- > 1;) is_new |= foresight.look(index);
        is_new = is_new && has_loops;
    }
    for (std::size_t index = 1; index < count; ++index) {
        Step& step = steps[index];
        if (step.op == Op::run) step.is_exclusive = !first[step.operand].meets(first[step.next]);
    }
}

}  // namespace orvix::gsl::text::regexp
