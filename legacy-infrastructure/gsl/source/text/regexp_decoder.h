// Decodes nodes of a program into steps.
#pragma once

#include "text/bytes.h"
#include "text/regexp_program.h"
#include "text/regexp_step.h"

#include <cstddef>
#include <cstdint>

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

    const unsigned char* operand(Node node) const { return bytes + node + node_bytes; }

    // Length of an operand of bytes; as long as the rest of the program if it does not end.
    std::size_t operand_length(Node node) const {
        return bounded_length(reinterpret_cast<const char*>(operand(node)), size - node - node_bytes);
    }

    // Any operand of bytes ends, and a text is not empty.
    bool has_sound_operand(Node node) const {
        if (!has_operand_bytes(node)) return true;
        const std::size_t length = operand_length(node);
        return node + node_bytes + length < size && (length > 0 || bytes[node] != rx_exactly);
    }

    // The bytes that a node takes one of; the first ones of a text; none for nodes that take no byte.
    ByteSet accepted(Node node) const {
        if (bytes[node] == rx_any) return ByteSet::any();
        ByteSet set;
        if (!has_operand_bytes(node)) return set;
        const unsigned char* byte = operand(node);
        const unsigned char* const end = byte + (bytes[node] == rx_exactly ? 1 : operand_length(node));
        for (; byte != end; ++byte) set.add(static_cast<char>(*byte));
        return bytes[node] == rx_anybut ? (~set).without('\0') : set;
    }
};

// Links are what turns nodes into the steps made of them: links(node) for a node that a link leads to, and
// links.operand(node) for that of a repeat.
template <class Links>
class Decoder {
public:
    Decoder(const Program& program, const Links& links) : program_(program), links_(links) {}

    Step decode(Node node) const {
        Step step;
        step.state = static_cast<std::uint16_t>(node);
        step.next = links_(program_.next(node));
        if (program_.has_sound_operand(node)) {
            decode_opcode(node, &step);
        } else {
            step.op = Op::memory_corruption;
        }
        if (step.takes_byte()) step.first = program_.accepted(node);
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
                decode_branch(node, step);
                break;
            case rx_back:
            case rx_nothing:
                step->op = Op::pass;
                step->is_loop = opcode == rx_back;
                break;
            case rx_exactly:
                step->length = static_cast<std::uint16_t>(program_.operand_length(node));
                step->state = static_cast<std::uint16_t>(node + node_bytes);  // one for each byte
                step->start_of_text = reinterpret_cast<const char*>(program_.operand(node));
                step->detail = *program_.operand(node);
                step->op = step->length == 1 ? Op::byte : Op::text;
                break;
            case rx_star:
            case rx_plus:
                decode_run(node, step);
                break;
            default:
                decode_mark(opcode, step);
        }
    }

    void decode_branch(Node node, Step* step) const {
        const Step* const operand = links_(node + node_bytes);
        if (program_.is_choice(node)) {
            step->op = Op::choice;
            step->operand = operand;
            step->is_loop = program_.is(node + node_bytes, rx_back);
        } else {
            step->op = Op::pass;
            step->next = operand;
        }
    }

    void decode_run(Node node, Step* step) const {
        const Node operand = node + node_bytes;
        const bool is_simple =
            program_.holds(operand) && (program_.bytes[operand] == rx_any || program_.has_operand_bytes(operand));
        if (!is_simple) {
            step->op = Op::internal_foulup;
        } else if (!program_.has_sound_operand(operand)) {
            step->op = Op::memory_corruption;
        } else {
            step->op = Op::run;
            step->operand = links_.operand(operand);
            step->detail = program_.bytes[node] == rx_plus ? 1 : 0;
            step->takes_all = program_.bytes[operand] == rx_any;
        }
    }

    static void decode_mark(unsigned char opcode, Step* step) {
        step->op = Op::pass;
        if (opcode > rx_open && opcode < rx_open + group_limit) {
            step->place = static_cast<unsigned char>(opcode - rx_open);
        } else if (opcode > rx_close && opcode < rx_close + group_limit) {
            step->place = static_cast<unsigned char>(opcode - rx_close + end_places);
        } else {
            step->op = Op::memory_corruption;
        }
    }

    Program program_;
    const Links& links_;
};

}  // namespace orvix::gsl::text::regexp
