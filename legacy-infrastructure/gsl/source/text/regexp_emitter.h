// Where the parser of patterns sends its nodes: into a program, or to a count of the bytes that one would take. Both
// emitters have the same members, so that one parser serves both.
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
    void link_later(Node, Node) {}
    void link_all(Node, Node) {}

    std::size_t size() const { return size_; }
    std::size_t nodes() const { return nodes_; }

private:
    std::size_t size_ = 1;  // the check byte
    std::size_t nodes_ = 0;
};

// Writes to a program that has room for all that comes.
class Writer {
public:
    explicit Writer(unsigned char* program) : program_(program), end_(1) { program_[0] = check_byte; }

    Node add(unsigned opcode) {
        const Node node = end_;
        put_node(node, opcode);
        return node;
    }

    // Puts a node in front of its operand, which is all that was written last, and moves up for it.
    void insert(unsigned opcode, Node operand) {
        std::memmove(program_ + operand + node_bytes, program_ + operand, end_ - operand);
        put_node(operand, opcode);
    }

    void add_byte(char c) { program_[end_++] = static_cast<unsigned char>(c); }

    void add_bytes(const char* bytes, std::size_t count) {
        if (count == 1) return add_byte(*bytes);  // most often
        std::memcpy(program_ + end_, bytes, count);
        end_ += count;
    }

    // `last` is at least `first` - 1.
    void add_range(unsigned first, unsigned last) {
        unsigned char* const bytes = program_ + end_;
        const std::size_t count = last + std::size_t{1} - first;
        for (std::size_t i = 0; i < count; ++i) bytes[i] = static_cast<unsigned char>(first + i);
        end_ += count;
    }

    // Links a node that has no next one yet.
    void link(Node node, Node target) { put_distance(node, program_[node] == rx_back ? node - target : target - node); }

    // Keeps a node for link_all. It tells of the one kept before, 0 for none, where its link will be.
    void link_later(Node node, Node before) { put_distance(node, before); }

    // Links the node that was kept last, and all before it.
    void link_all(Node last, Node target) {
        for (Node node = last; node != 0;) {
            const Node before = distance_at(program_ + node);
            link(node, target);
            node = before;
        }
    }

    std::size_t size() const { return end_; }
    std::size_t nodes() const { return nodes_; }

private:
    void put_node(Node node, unsigned opcode) {
        program_[node] = static_cast<unsigned char>(opcode);
        put_distance(node, 0);
        end_ += node_bytes;
        ++nodes_;
    }

    void put_distance(Node node, std::size_t distance) {
        program_[node + 1] = static_cast<unsigned char>(distance >> 8);
        program_[node + 2] = static_cast<unsigned char>(distance & 0xff);
    }

    unsigned char* program_;
    std::size_t end_;
    std::size_t nodes_ = 0;
};

}  // namespace orvix::gsl::text::regexp
