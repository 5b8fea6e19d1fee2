// The program that a pattern is compiled to: a check byte, then nodes that are linked to each other.
//
// The program of "ab|c" in hexadecimal, with the offsets from its start:
//
//   0   9c                  check byte
//   1   06 00 09            rx_branch, the next node is 9 bytes ahead: the second alternative
//   4   08 00 0e 61 62 00   rx_exactly "ab", next: the end
//   10  06 00 08            rx_branch, next: the end
//   13  08 00 05 63 00      rx_exactly "c", next: the end
//   18  00 00 00            rx_end, no next node
//
// A node is its opcode, the distance to the next node with the high byte first, and its operand. Distances count from
// node to node; they lead forward, except that rx_back leads backward. 0 is no next node.
#pragma once

#include <cstddef>
#include <cstdint>

namespace orvix::gsl::text::regexp {

enum Opcode : unsigned char {
    rx_end = 0,      // success
    rx_bol = 1,      // the start of the subject
    rx_eol = 2,      // the end of the subject
    rx_any = 3,      // any byte
    rx_anyof = 4,    // a byte of the zero-ended set that follows
    rx_anybut = 5,   // a byte that is not in it
    rx_branch = 6,   // one alternative: its nodes follow; next: the next alternative, or what comes behind all of them
    rx_back = 7,     // nothing; leads back to the start of a loop
    rx_exactly = 8,  // the zero-ended text that follows
    rx_nothing = 9,  // nothing
    rx_star = 10,    // the simple node that follows, as often as possible
    rx_plus = 11,    // the same, at least once
    rx_open = 20,    // + 1 to 9: the start of that group
    rx_close = 30,   // + 1 to 9: its end
};

using Node = std::size_t;  // offset of a node in the program

constexpr unsigned char check_byte = 156;
constexpr std::size_t node_bytes = 3;
constexpr std::size_t program_limit = 32767;  // a program is shorter, so that distances stay within 15 bits
constexpr unsigned group_limit = 10;          // groups are numbered below

// Distance from a node to the next one, 0 if there is none.
constexpr std::size_t distance_at(const unsigned char* node) { return node[1] * std::size_t{256} + node[2]; }

// Offset of the next node; 0 if there is none.
constexpr Node next_of(const unsigned char* program, Node node) {
    const std::size_t distance = distance_at(program + node);
    if (distance == 0) return 0;
    return program[node] == rx_back ? node - distance : node + distance;
}

}  // namespace orvix::gsl::text::regexp
