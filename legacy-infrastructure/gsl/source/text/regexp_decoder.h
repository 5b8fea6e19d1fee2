// Decodes nodes of a program into steps.
#pragma once

#include "text/bytes.h"
#include "text/regexp_program.h"
#include "text/regexp_step.h"

#include <cstddef>

namespace orvix::gsl::text::regexp {

// A program of known size whose bytes may be anything: what lies outside does not exist.
struct Program {
    const unsigned char* bytes;
    std::size_t size;

    bool holds(Node node) const { return node != 0 && node < size && size - node >= node_bytes; }
    bool is(Node node, Opcode opcode) const { return holds(node) && bytes[node] == opcode; }

    // The next node; 0 if there is none.
    Node next(Node node) const {
        const std::size_t distance = distance_at(bytes + node);
        if (distance == 0) return 0;
        const Node next = bytes[node] == rx_back ? node - distance : node + distance;  // wraps around below 0
        return holds(next) ? next : 0;
    }

    // A branch that is the last of its chain, or the only one, leaves no choice.
    bool is_choice(Node node) const { return bytes[node] == rx_branch && is(next(node), rx_branch); }

    bool has_operand_bytes(Node node) const {
        return bytes[node] == rx_exactly || bytes[node] == rx_anyof || bytes[node] == rx_anybut;
    }

    const char* operand(Node node) const { return reinterpret_cast<const char*>(bytes + node + node_bytes); }

    // Length of an operand of bytes; as long as the rest of the program if it does not end.
    std::size_t operand_length(Node node) const { return bounded_length(operand(node), size - node - node_bytes); }

    // Any operand of bytes ends, and a text is not empty.
    bool has_sound_operand(Node node) const {
        if (!has_operand_bytes(node)) return true;
        const std::size_t length = operand_length(node);
        return node + node_bytes + length < size && (length > 0 || bytes[node] != rx_exactly);
    }
};

// How links between nodes become indexes of steps. A program of the compiler has its nodes in a row, each of three
// bytes or more, so that a third of the offset tells them apart; links pass over nodes that do nothing.
struct ShortLinks {
    static StepIndex to(const Program& program, Node node) {
        while (true) {
            const unsigned char opcode = program.bytes[node];
            if (opcode == rx_nothing || opcode == rx_back) {
                node = program.next(node);
            } else if (opcode == rx_branch && !program.is_choice(node)) {
                node += node_bytes;
            } else {
                return index(node);
            }
        }
    }
    static StepIndex index(Node node) { return static_cast<StepIndex>((node + 2) / 3); }
};

// In any other program, nodes are where links lead to.
struct PlainLinks {
    static StepIndex to(const Program& program, Node node) { return program.holds(node) ? index(node) : StepIndex{0}; }
    static StepIndex index(Node node) { return static_cast<StepIndex>(node); }
};

// What a byte of the subject must be for a node that takes one; nothing for other nodes.
inline ByteSet accepted(const Program& program, Node node) {
    const unsigned char opcode = program.bytes[node];
    if (opcode == rx_any) return ByteSet::any();
    ByteSet set;
    if (!program.has_operand_bytes(node)) return set;
    const char* const bytes = program.operand(node);
    const std::size_t length = opcode == rx_exactly ? 1 : program.operand_length(node);
    for (std::size_t i = 0; i < length; ++i) set.add(bytes[i]);
    return opcode == rx_anybut ? (~set).without('\0') : set;
}

template <class Links>
class Decoder {
public:
    explicit Decoder(const Program& program) : program_(program) {}

    Step decode(Node node) const {
        Step step;
        step.node = static_cast<std::uint16_t>(node);
        step.next = Links::to(program_, program_.next(node));
        if (program_.has_sound_operand(node)) {
            decode_opcode(node, &step);
        } else {
            step.op = Op::memory_corruption;
        }
        return step;
    }

private:
    void decode_opcode(Node node, Step* step) const {
        switch (const unsigned char opcode = program_.bytes[node]) {
            case rx_end:
                step->op = Op::match;
                break;
            case rx_bol:
                step->op = Op::start;
                break;
            case rx_eol:
                step->op = Op::end;
                break;
            case rx_any:
            case rx_anyof:
            case rx_anybut:
                step->op = Op::set;
                break;
            case rx_branch:
                step->op = program_.is_choice(node) ? Op::choice : Op::jump;
                step->operand = Links::to(program_, node + node_bytes);
                step->is_loop = program_.is(node + node_bytes, rx_back);
                if (step->op == Op::jump) step->next = step->operand;
                break;
            case rx_back:
            case rx_nothing:
                step->op = Op::jump;
                step->is_loop = opcode == rx_back;
                break;
            case rx_exactly:
                decode_text(node, step);
                break;
            case rx_star:
            case rx_plus:
                decode_run(node, step);
                break;
            default:
                decode_mark(opcode, step);
        }
    }

    void decode_text(Node node, Step* step) const {
        step->length = static_cast<std::uint16_t>(program_.operand_length(node));
        step->text = static_cast<std::uint16_t>(node + node_bytes);
        step->detail = program_.bytes[step->text];
        step->op = step->length == 1 ? Op::byte : Op::text;
    }

    void decode_run(Node node, Step* step) const {
        const Node operand = node + node_bytes;
        const bool is_simple =
            program_.holds(operand) && (program_.bytes[operand] == rx_any || program_.has_operand_bytes(operand));
        step->op = !is_simple                            ? Op::internal_foulup
                   : program_.has_sound_operand(operand) ? Op::run
                                                         : Op::memory_corruption;
        if (step->op == Op::run) step->operand = Links::index(operand);
        step->detail = program_.bytes[node] == rx_plus ? 1 : 0;
    }

    static void decode_mark(unsigned char opcode, Step* step) {
        step->op = Op::mark;
        if (opcode > rx_open && opcode < rx_open + group_limit) {
            step->detail = static_cast<unsigned char>(opcode - rx_open);
        } else if (opcode > rx_close && opcode < rx_close + group_limit) {
            step->detail = static_cast<unsigned char>(opcode - rx_close + end_places);
        } else {
            step->op = Op::memory_corruption;
        }
    }

    Program program_;
};

}  // namespace orvix::gsl::text::regexp
