#include "text/regexp_compiler.h"

#include "text/regexp_emitter.h"
#include "text/regexp_parser.h"
#include "text/regexp_plan.h"
#include "text/regexp_program.h"

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>

namespace orvix::gsl::text::regexp {

namespace {

// As one piece this would be cleared by an instruction that takes longer than the rest of a short compilation.
void set_out(__gsl_regexp* record) {
    std::memset(record->startp, 0, sizeof record->startp);
    std::memset(record->endp, 0, sizeof record->endp);
    record->regstart = '\0';
    record->reganch = '\0';
    record->regmust = nullptr;
    record->regmlen = 0;
}

// The longest text among the nodes of the only alternative, the last of several; what lies inside their operands need
// not be part of a match.
void find_required_text(__gsl_regexp* record) {
    const unsigned char* const program = record->program;
    std::size_t longest = 0;
    for (Node node = 1 + node_bytes; node != 0; node = next_of(program, node)) {
        if (program[node] != rx_exactly) continue;
        const auto* const text = reinterpret_cast<const char*>(program + node + node_bytes);
        const std::size_t length = std::strlen(text);
        if (length < longest) continue;
        record->regmust = text;
        longest = length;
    }
    record->regmlen = static_cast<std::int32_t>(longest);
}

// What lets a search do without most tries. Where there are several alternatives, nothing does.
void find_hints(__gsl_regexp* record, unsigned flags) {
    const unsigned char* const program = record->program;
    constexpr Node first = 1;
    if (program[next_of(program, first)] != rx_end) return;
    const Node operand = first + node_bytes;
    if (program[operand] == rx_exactly) record->regstart = static_cast<char>(program[operand + node_bytes]);
    if (program[operand] == rx_bol) record->reganch = 1;
    if (flags & starts_with_repeat) find_required_text(record);
}

// Makes a record with room for a program, without one. Null if there is no memory.
__gsl_regexp* new_record(std::size_t program_bytes, std::size_t nodes) {
    void* const block = std::malloc(bytes_with_plan(program_bytes, nodes));
    if (block == nullptr) return nullptr;
    auto* const record = new (block) __gsl_regexp;
    set_out(record);
    return record;
}

Compilation finished(__gsl_regexp* record, std::size_t program_bytes, unsigned flags) {
    find_hints(record, flags);
    add_plan(record, program_bytes);
    return {record, nullptr};
}

// A bound to the size of a pattern's program. What takes most for its length is a range, and then a group's "*" or "+".
std::size_t longest_program(const char* pattern, std::size_t limit) {
    constexpr std::size_t empty_program = 10;
    constexpr std::size_t bytes_for_a_byte = 12;
    constexpr std::size_t bytes_for_a_range = 256;
    std::size_t size = empty_program;
    for (; *pattern != '\0' && size < limit; ++pattern) size += *pattern == '-' ? bytes_for_a_range : bytes_for_a_byte;
    return size;
}

// Most patterns are short, and one run that writes to the stack does.
Compilation compile_short(const char* pattern, unsigned char* room) {
    Writer writer(room);
    Parser<Writer> parser(pattern, writer);
    const unsigned flags = parser.parse();
    if (parser.error() != nullptr) return {nullptr, parser.error()};
    __gsl_regexp* const record = new_record(writer.size(), writer.nodes());
    if (record == nullptr) return {nullptr, "out of space"};
    std::memcpy(record->program, room, writer.size());
    return finished(record, writer.size(), flags);
}

// For any other pattern, a first run finds out the size.
Compilation compile_any(const char* pattern) {
    Counter counter;
    Parser<Counter> measuring(pattern, counter);
    measuring.parse();
    if (measuring.error() != nullptr) return {nullptr, measuring.error()};
    if (counter.size() >= program_limit) return {nullptr, "regexp too big"};
    __gsl_regexp* const record = new_record(counter.size(), counter.nodes());
    if (record == nullptr) return {nullptr, "out of space"};
    Writer writer(record->program);
    return finished(record, counter.size(), Parser<Writer>(pattern, writer).parse());
}

}  // namespace

Compilation compile(const char* pattern) {
    if (pattern == nullptr) return {nullptr, "NULL argument"};
    unsigned char room[2048];
    return longest_program(pattern, sizeof room) < sizeof room ? compile_short(pattern, room) : compile_any(pattern);
}

}  // namespace orvix::gsl::text::regexp

__gsl_regexp* gsl_regcomp(const char* pattern) {
    const auto [record, error] = orvix::gsl::text::regexp::compile(pattern);
    if (error != nullptr) gsl_regerror(error);
    return record;
}
