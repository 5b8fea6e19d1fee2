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

// What the reserved bytes of a record hold. The seal is made of the record's address, so that neither a record made by
// hand nor a copy is taken for one of the compiler's.
struct Reserved {
    std::uint16_t program_bytes;
    std::uint32_t seal;
};
static_assert(sizeof(Reserved::program_bytes) + sizeof(Reserved::seal) == sizeof(__gsl_regexp::reserved));

std::uint32_t seal_of(const __gsl_regexp* record, std::size_t program_bytes) {
    constexpr std::uint64_t multiplier = 0x9e3779b97f4a7c15;  // spreads all bits over the upper half
    const std::uint64_t place = reinterpret_cast<std::uintptr_t>(record) + (std::uint64_t{program_bytes} << 48);
    return static_cast<std::uint32_t>((place * multiplier) >> 32);
}

void write_reserved(__gsl_regexp* record, Reserved reserved) {
    std::memcpy(record->reserved, &reserved.program_bytes, sizeof reserved.program_bytes);
    std::memcpy(record->reserved + sizeof reserved.program_bytes, &reserved.seal, sizeof reserved.seal);
}

Reserved read_reserved(const __gsl_regexp* record) {
    Reserved reserved;
    std::memcpy(&reserved.program_bytes, record->reserved, sizeof reserved.program_bytes);
    std::memcpy(&reserved.seal, record->reserved + sizeof reserved.program_bytes, sizeof reserved.seal);
    return reserved;
}

bool is_of_compiler(const __gsl_regexp* record, Reserved reserved) {
    return reserved.seal == seal_of(record, reserved.program_bytes);
}

// Where the parts of a block lie.
class RecordBlock {
public:
    RecordBlock(__gsl_regexp* record, std::size_t program_bytes)
        : start_(reinterpret_cast<char*>(record)), program_bytes_(program_bytes) {}

    Plan* plan() const { return at<Plan>(plan_offset()); }
    unsigned char* copy() const { return at<unsigned char>(copy_offset()); }
    std::uint16_t* numbers() const { return at<std::uint16_t>(numbers_offset()); }
    Step* steps() const { return at<Step>(steps_offset()); }

    std::size_t bytes(std::size_t steps) const { return steps_offset() + steps * sizeof(Step); }

private:
    template <class Content>
    Content* at(std::size_t offset) const {
        return static_cast<Content*>(static_cast<void*>(start_ + offset));
    }

    static constexpr std::size_t aligned(std::size_t offset) {
        return (offset + alignof(Plan) - 1) / alignof(Plan) * alignof(Plan);
    }
    std::size_t plan_offset() const { return aligned(offsetof(__gsl_regexp, program) + program_bytes_); }
    std::size_t copy_offset() const { return plan_offset() + sizeof(Plan); }
    std::size_t numbers_offset() const { return aligned(copy_offset() + program_bytes_); }
    std::size_t steps_offset() const { return aligned(numbers_offset() + program_bytes_ * sizeof(std::uint16_t)); }

    char* start_;
    std::size_t program_bytes_;
};

// The caller frees the block as it is.
static_assert(std::is_trivially_destructible_v<Plan> && std::is_trivially_destructible_v<Step>);
static_assert(alignof(Plan) >= alignof(Step));

// Links of a program as the compiler makes it. They pass over nodes that do nothing.
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

void learn_where_to_look(Plan* plan, const __gsl_regexp* record, const Program& program) {
    plan->finder.learn(plan->steps.entry);
    if (record->regmust != nullptr) {
        plan->required = Needle({record->regmust, static_cast<std::size_t>(record->regmlen)});
    } else if (!plan->finder.is_choosy() && !plan->steps.entry->is_anchored) {
        const std::string_view text = required_text(program);
        if (!text.empty()) plan->required = Needle(text);
    }
}

void fill(Plan* plan, const Program& program, const RecordBlock& block) {
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
    plan->steps = {steps, links(1), program.bytes, program.size, groups};
    plan->is_filled = true;
}

}  // namespace

std::size_t bytes_with_plan(std::size_t program_bytes, std::size_t nodes) {
    return RecordBlock(nullptr, program_bytes).bytes(nodes + 1);
}

void add_plan(__gsl_regexp* record, std::size_t program_bytes) {
    const RecordBlock block(record, program_bytes);
    new (block.plan()) Plan;
    std::memcpy(block.copy(), record->program, program_bytes);
    const auto size = static_cast<std::uint16_t>(program_bytes);
    write_reserved(record, {size, seal_of(record, size)});
}

const Plan* plan_of(__gsl_regexp* record) {
    const Reserved reserved = read_reserved(record);
    if (!is_of_compiler(record, reserved)) return nullptr;
    const RecordBlock block(record, reserved.program_bytes);
    if (std::memcmp(record->program, block.copy(), reserved.program_bytes) != 0) return nullptr;
    Plan* const plan = block.plan();
    if (!plan->is_filled) {
        const Program whole{record->program, reserved.program_bytes};
        fill(plan, whole, block);
        learn_where_to_look(plan, record, whole);
    }
    return plan;
}

// ---------------------------------------------------------------------------------------------------------------------

namespace {

// Links of any other program: nodes are where they lead to, and their numbers are their offsets.
struct PlainLinks {
    const Program& program;
    const Step* steps;

    const Step* operator()(Node node) const { return program.holds(node) ? steps + node : steps; }
    const Step* operand(Node node) const { return steps + node; }
};

}  // namespace

ChangedProgram::ChangedProgram(const __gsl_regexp* record) {
    const Reserved reserved = read_reserved(record);
    // The size of a program that was made elsewhere is not known; its maker answers for its links.
    const Program program{record->program, is_of_compiler(record, reserved) ? reserved.program_bytes : program_limit};
    steps_.resize(program.size);
    steps_[0].first = ByteSet::all();
    const PlainLinks links{program, steps_.data()};
    const Decoder<PlainLinks> decoder(program, links);

    const auto is_decoded = [](const Step& step) { return step.state != 0; };
    std::vector<const Step*> reached{links(1)};
    while (!reached.empty()) {
        const Step* const place = reached.back();
        reached.pop_back();
        if (place == nullptr || place == steps_.data() || is_decoded(*place)) continue;
        const auto node = static_cast<std::size_t>(place - steps_.data());
        Step& step = steps_[node];
        step = decoder.decode(node);
        if (!step.takes_byte()) step.first = ByteSet::all();
        reached.push_back(step.next);
        reached.push_back(step.operand);
    }
    plan_.steps = {steps_.data(), links(1), program.bytes, program.size, group_limit - 1};
    if (record->regstart != '\0') plan_.finder.learn(record->regstart);
    if (record->regmust != nullptr && record->regmlen > 0)
        plan_.required = Needle({record->regmust, static_cast<std::size_t>(record->regmlen)});
}

}  // namespace orvix::gsl::text::regexp
