#include "text/regexp_plan.h"

#include "text/regexp_decoder.h"
#include "text/regexp_foresight.h"
#include "text/regexp_program.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <string_view>
#include <type_traits>

namespace orvix::gsl::text::regexp {

namespace {

// The caller frees the block as it is.
static_assert(std::is_trivially_destructible_v<Plan> && std::is_trivially_destructible_v<Step>);
static_assert(alignof(Plan) <= 8 && alignof(Step) <= 8);

// Links pass over nodes that do nothing.
struct ShortLinks {
    const Program& program;
    const std::uint16_t* numbers;
    const Step* steps;

    const Step* operator()(Node node) const {
        while (node != 0) {
            const unsigned char opcode = program.bytes[node];
            if (opcode == rx_nothing || opcode == rx_back) {
                node = program.next(node);
            } else if (opcode == rx_branch && !program.is_choice(node)) {
                node += node_bytes;
            } else {
                return steps + numbers[node];
            }
        }
        return steps;
    }
    const Step* operand(Node node) const { return steps + numbers[node]; }
};

// A node of a program as the compiler makes it is followed by the next one.
Node node_behind(const Program& program, Node node) {
    return node + node_bytes + (program.has_operand_bytes(node) ? program.operand_length(node) + 1 : 0);
}

void decode_all(const Program& program, const RecordBlock& block, Steps* result) {
    std::uint16_t* const numbers = block.numbers();
    std::uint16_t count = 1;
    for (Node node = 1; node < program.size; node = node_behind(program, node)) numbers[node] = count++;

    Step* const steps = block.steps();
    const ShortLinks links{program, numbers, steps};
    const Decoder<ShortLinks> decoder(program, links);
    new (steps) Step;
    Step* step = steps + 1;
    unsigned groups = 0;
    bool has_loops = false;
    for (Node node = 1; node < program.size; node = node_behind(program, node), ++step) {
        new (step) Step(decoder.decode(node));
        groups = std::max(groups, step->place % end_places);
        if (program.bytes[node] != rx_back) continue;
        steps[numbers[program.next(node)]].is_loop = true;
        has_loops = true;
    }
    look_ahead(steps, count, has_loops);
    *result = {links(1), program.bytes, program.size, groups};
}

// The longest text among the nodes that every match comes by; empty if there is none. More than the record tells: it
// looks into groups, whatever the pattern starts with.
std::string_view required_text(const Program& program) {
    std::string_view longest;
    bool is_alternative = program.is_choice(1);
    for (Node node = 1; node != 0;) {
        if (program.bytes[node] == rx_exactly && program.operand_length(node) > longest.size())
            longest = {reinterpret_cast<const char*>(program.operand(node)), program.operand_length(node)};
        // An only branch is come by; several lead on to the same place.
        const bool is_only = program.bytes[node] == rx_branch && !program.is_choice(node) && !is_alternative;
        is_alternative = program.is_choice(node);
        node = is_only ? node + node_bytes : program.next(node);
    }
    return longest;
}

void learn_where_to_look(const __gsl_regexp* record, const Program& program, Plan* plan) {
    const Step*& entry = plan->steps.entry;
    if (record->regmust != nullptr)
        plan->required = Needle({record->regmust, static_cast<std::size_t>(record->regmlen)});
    plan->is_anchored = entry->is_anchored;
    if (plan->is_anchored) {
        if (entry->op == Op::start && entry->place == 0) entry = entry->next;  // it will be tried nowhere else
        return;
    }
    plan->finder.learn(entry);
    if (plan->required.is_empty() && plan->finder.needle().is_empty()) {
        const std::string_view text = required_text(program);
        if (!text.empty()) plan->required = Needle(text);
    }
}

}  // namespace

void add_plan(__gsl_regexp* record, std::size_t program_bytes) {
    const RecordBlock block(record, program_bytes);
    new (block.plan()) Plan;
    std::memset(record->program + program_bytes, 0, block.padded_bytes() - program_bytes);
    std::memcpy(block.copy(), record->program, block.padded_bytes());
    Reserved::write(record, program_bytes);
}

void fill_plan(const __gsl_regexp* record, const RecordBlock& block, std::size_t program_bytes) {
    Plan* const plan = block.plan();
    const Program program{record->program, program_bytes};
    decode_all(program, block, &plan->steps);
    learn_where_to_look(record, program, plan);
    plan->is_filled = true;
}

}  // namespace orvix::gsl::text::regexp
