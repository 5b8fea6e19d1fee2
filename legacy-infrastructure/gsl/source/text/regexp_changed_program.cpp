#include "text/regexp_changed_program.h"

#include "text/regexp_decoder.h"
#include "text/regexp_program.h"

#include <cstddef>

namespace orvix::gsl::text::regexp {

namespace {

// Nodes are where links lead to, and their steps are numbered by their offsets.
struct PlainLinks {
    const Program& program;
    const Step* steps;

    const Step* operator()(Node node) const { return program.holds(node) ? steps + node : steps; }
    const Step* operand(Node node) const { return steps + node; }
};

bool is_decoded(const Step& step) { return step.state != 0; }

}  // namespace

ChangedProgram::ChangedProgram(const __gsl_regexp* record) {
    const Reserved reserved = Reserved::read(record);
    // The size of a program that was made elsewhere is not known; its maker answers for its links.
    const std::size_t size = reserved.is_of_compiler(record) ? reserved.program_bytes() : program_limit;
    const Program program{record->program, size};
    steps_.resize(size);
    steps_[0].first = ByteSet::all();
    const PlainLinks links{program, steps_.data()};
    const Decoder<PlainLinks> decoder(program, links);

    std::vector<const Step*> reached{links(1)};
    while (!reached.empty()) {
        const Step* const place = reached.back();
        reached.pop_back();
        if (place == nullptr || place == steps_.data() || is_decoded(*place)) continue;
        const auto node = static_cast<Node>(place - steps_.data());
        Step& step = steps_[node];
        step = decoder.decode(node);
        if (!step.takes_byte()) step.first = ByteSet::all();
        reached.push_back(step.next);
        reached.push_back(step.operand);
    }

    plan_.is_filled = true;
    plan_.is_anchored = record->reganch != '\0';
    plan_.steps = {links(1), program.bytes, program.size, group_limit - 1};
    if (record->regstart != '\0') plan_.finder.learn(record->regstart);
    if (record->regmust != nullptr && record->regmlen > 0)
        plan_.required = Needle({record->regmust, static_cast<std::size_t>(record->regmlen)});
}

}  // namespace orvix::gsl::text::regexp
