// Where the parser of patterns sends its nodes: to a count of bytes first, and then into the program. Both emitters
// have the same members, so that one parser serves both runs.
#pragma once

#include "text/regexp_program.h"

#include <cstddef>
#include <cstring>

namespace orvix::gsl::text::regexp {

// Only counts. All nodes are the same to it, and linking them does nothing.
class Counter {
public:
    Node add(unsigned) {
        size_ += node_bytes;
        ++nodes_;
        return 0;
    }
    void insert(unsigned opcode, Node) { add(opcode); }
    void add_byte(char) { ++size_; }
    void add_bytes(const char*, std::size_t count) { size_ += count; }
    void add_range(unsigned first, unsigned last) { size_ += last + 1 - first; }
    void link(Node, Node) {}
    void link_operand(Node, Node) {}
    void link_operands(Node, Node) {}

    std::size_t size() const { return size_; }
    std::size_t nodes() const { return nodes_; }

private:
    std::size_t size_ = 1;  // the check byte
    std::size_t nodes_ = 0;
};

// Writes to a program of the size that the counter found.
class Writer {
public:
    explicit Writer(unsigned char* program) : program_(program), end_(1) { program_[0] = check_byte; }

    Node add(unsigned opcode) {
        const Node node = end_;
        put_node(node, opcode);
        end_ += node_bytes;
        return node;
    }

    // Puts a node in front of its operand, which is all that was written last, and moves up for it.
    void insert(unsigned opcode, Node operand) {
        std::memmove(program_ + operand + node_bytes, program_ + operand, end_ - operand);
        put_node(operand, opcode);
        end_ += node_bytes;
    }

    void add_byte(char c) { program_[end_++] = static_cast<unsigned char>(c); }

    void add_bytes(const char* bytes, std::size_t count) {
        std::memcpy(program_ + end_, bytes, count);
        end_ += count;
    }

    // `last` is at least `first` - 1.
    void add_range(unsigned first, unsigned last) {
        for (unsigned c = first; c <= last; ++c) program_[end_++] = static_cast<unsigned char>(c);
    }

    // Links the last node of the chain that begins at `node` to `target`.
    void link(Node node, Node target) {
        for (Node next = next_of(program_, node); next != 0; next = next_of(program_, node)) node = next;
        const std::size_t distance = program_[node] == rx_back ? node - target : target - node;
        program_[node + 1] = static_cast<unsigned char>(distance >> 8);
        program_[node + 2] = static_cast<unsigned char>(distance & 0xff);
    }

    // The same for the nodes of an alternative; other nodes have none.
    void link_operand(Node node, Node target) {
        if (program_[node] == rx_branch) link(node + node_bytes, target);
    }

    // The same for all alternatives of a chain.
    void link_operands(Node first, Node target) {
        for (Node node = first; node != 0; node = next_of(program_, node)) link_operand(node, target);
    }

private:
    void put_node(Node node, unsigned opcode) {
        program_[node] = static_cast<unsigned char>(opcode);
        program_[node + 1] = 0;
        program_[node + 2] = 0;
    }

    unsigned char* program_;
    std::size_t end_;
};

}  // namespace orvix::gsl::text::regexp
