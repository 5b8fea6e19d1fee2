#include "text/regexp_plan.h"

#include "text/regexp_decoder.h"
#include "text/regexp_foresight.h"
#include "text/regexp_program.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
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

// Where the parts of a block lie.
class Block {
public:
    Block(__gsl_regexp* record, std::size_t program_bytes)
        : start_(reinterpret_cast<char*>(record)), program_bytes_(program_bytes) {}

    std::size_t step_count() const { return ShortLinks::index(program_bytes_) + std::size_t{1}; }

    std::size_t plan_offset() const { return aligned(offsetof(__gsl_regexp, program) + program_bytes_); }
    std::size_t copy_offset() const { return plan_offset() + sizeof(Plan); }
    std::size_t first_offset() const { return aligned(copy_offset() + program_bytes_); }
    std::size_t steps_offset() const { return first_offset() + step_count() * sizeof(ByteSet); }
    std::size_t bytes() const { return steps_offset() + step_count() * sizeof(Step); }

    Plan* plan() const { return at<Plan>(plan_offset()); }
    unsigned char* copy() const { return at<unsigned char>(copy_offset()); }
    ByteSet* first() const { return at<ByteSet>(first_offset()); }
    Step* steps() const { return at<Step>(steps_offset()); }

private:
    template <class Content>
    Content* at(std::size_t offset) const {
        return static_cast<Content*>(static_cast<void*>(start_ + offset));
    }

    static constexpr std::size_t aligned(std::size_t offset) {
        return (offset + alignof(Plan) - 1) / alignof(Plan) * alignof(Plan);
    }

    char* start_;
    std::size_t program_bytes_;
};

// The caller frees the block as it is.
static_assert(std::is_trivially_destructible_v<Plan> && std::is_trivially_destructible_v<ByteSet> &&
              std::is_trivially_destructible_v<Step>);
static_assert(alignof(Plan) >= alignof(ByteSet) && alignof(ByteSet) >= alignof(Step));

// A node of a program as the compiler makes it is followed by the next one.
Node node_behind(const Program& program, Node node) {
    return node + node_bytes + (program.has_operand_bytes(node) ? program.operand_length(node) + 1 : 0);
}

unsigned group_of(const Step& step) { return step.op == Op::mark ? step.detail % end_places : 0U; }

void fill(Plan* plan, const Program& program, const Block& block) {
    Step* const steps = block.steps();
    ByteSet* const first = block.first();
    std::uninitialized_value_construct_n(steps, block.step_count());
    std::uninitialized_value_construct_n(first, block.step_count());
    const Decoder<ShortLinks> decoder(program);
    unsigned groups = 0;
    bool has_loops = false;
    for (Node node = 1; node < program.size; node = node_behind(program, node)) {
        const StepIndex index = ShortLinks::index(node);
        const Step step = decoder.decode(node);
        if (program.bytes[node] == rx_back) {
            steps[ShortLinks::index(program.next(node))].is_loop = true;
            has_loops = true;
        }
        if (step.op == Op::jump) continue;  // links pass over it
        steps[index] = step;
        first[index] = accepted(program, node);
        groups = std::max(groups, group_of(step));
    }
    look_ahead(steps, first, block.step_count(), has_loops);
    plan->steps = {steps, first, program.bytes, program.size, ShortLinks::to(program, 1), groups};
    plan->is_filled = true;
}

}  // namespace

std::size_t bytes_with_plan(std::size_t program_bytes) { return Block(nullptr, program_bytes).bytes(); }

void add_plan(__gsl_regexp* record, std::size_t program_bytes) {
    const Block block(record, program_bytes);
    new (block.plan()) Plan{};
    std::memcpy(block.copy(), record->program, program_bytes);
    write_reserved(record, {static_cast<std::uint16_t>(program_bytes), seal_of(record, program_bytes)});
}

const Plan* plan_of(__gsl_regexp* record) {
    const Reserved reserved = read_reserved(record);
    if (reserved.seal != seal_of(record, reserved.program_bytes)) return nullptr;
    const Block block(record, reserved.program_bytes);
    const unsigned char* const program = record->program;
    if (std::memcmp(program, block.copy(), reserved.program_bytes) != 0) return nullptr;
    Plan* const plan = block.plan();
    if (!plan->is_filled) fill(plan, {program, reserved.program_bytes}, block);
    return plan;
}

// ---------------------------------------------------------------------------------------------------------------------

ChangedProgram::ChangedProgram(const __gsl_regexp* record) {
    const Reserved reserved = read_reserved(record);
    // The size of a program that was made elsewhere is not known; its maker answers for its links.
    const std::size_t bytes =
        reserved.seal == seal_of(record, reserved.program_bytes) ? reserved.program_bytes : program_limit;
    decode(record->program, bytes);
    plan_.steps = {steps_.data(), first_.data(), record->program, bytes, PlainLinks::index(1), group_limit - 1};
    plan_.is_filled = true;
}

void ChangedProgram::decode(const unsigned char* bytes, std::size_t size) {
    const Program program{bytes, size};
    const Decoder<PlainLinks> decoder(program);
    steps_.resize(size);
    first_.resize(size, ByteSet::all());
    std::vector<StepIndex> reached{PlainLinks::index(1)};
    while (!reached.empty()) {
        const StepIndex index = reached.back();
        reached.pop_back();
        if (index == 0 || steps_[index].node != 0) continue;
        const Step step = decoder.decode(index);
        steps_[index] = step;
        if (step.op == Op::byte || step.op == Op::text || step.op == Op::set) first_[index] = accepted(program, index);
        reached.push_back(step.next);
        reached.push_back(step.operand);
    }
}

}  // namespace orvix::gsl::text::regexp
