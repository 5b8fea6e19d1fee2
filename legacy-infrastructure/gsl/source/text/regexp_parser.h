// The parser of patterns: recursive descent over pattern, branch, piece and atom, which emits nodes as it goes. It
// recurses at a group only, and a pattern has at most nine of these.
#pragma once

#include "text/regexp_emitter.h"
#include "text/regexp_program.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace orvix::gsl::text::regexp {

// What is known of a part of a pattern.
enum Flag : unsigned {
    has_width = 1,           // cannot match the empty string
    simple = 2,              // matches exactly one byte: what rx_star and rx_plus can repeat
    starts_with_repeat = 4,  // the first byte of a match cannot be predicted
};

// Bytes that end a run of literals: those that mean something at the start of an atom, and the pattern's end.
inline constexpr std::array<bool, 256> ends_literal = [] {
    std::array<bool, 256> table{};
    for (const char c : std::string_view("^$.[()|?+*\\\0", 12)) table[static_cast<unsigned char>(c)] = true;
    return table;
}();

constexpr bool is_repeat(char c) { return c == '*' || c == '+' || c == '?'; }

// A part of the pattern as it was emitted: a chain of nodes, each linked to the next one. The last has no next one yet.
struct Part {
    Node first = 0;
    Node last = 0;
    unsigned flags = 0;
};

template <class Emitter>
class Parser {
public:
    Parser(const char* pattern, Emitter& emitter) : at_(pattern), emitter_(emitter) {}

    // Parses the whole pattern; gives the flags of it.
    unsigned parse() { return pattern(false).flags; }

    // The first error in the pattern; null if there is none.
    const char* error() const { return error_; }

private:
    // Notes the error and leaves nothing more to parse, so that everybody comes to an end.
    Part fail(const char* message) {
        if (error_ == nullptr) error_ = message;
        at_ = "";
        return {};
    }

    // Alternatives, in parentheses (the opening one is read) or up to the end.
    Part pattern(bool is_group) {
        Part part;
        part.flags = has_width;
        unsigned number = 0;
        if (is_group) {
            if (groups_ == group_limit) return fail("too many ()");
            number = groups_++;
            part.first = part.last = emitter_.add(rx_open + number);
        }
        Node end_of_alternative = 0;  // of the last one; it leads to those before
        for (bool is_first = true; is_first || *at_ == '|'; is_first = false) {
            if (!is_first) ++at_;
            const Node alternative = emitter_.add(rx_branch);
            if (is_first && !is_group) {
                part.first = alternative;
            } else {
                emitter_.link(part.last, alternative);
            }
            part.last = alternative;
            const Part nodes = branch();
            emitter_.link_later(nodes.last, end_of_alternative);
            end_of_alternative = nodes.last;
            if (!(nodes.flags & has_width)) part.flags &= ~unsigned{has_width};
            part.flags |= nodes.flags & starts_with_repeat;
        }
        const Node end = emitter_.add(is_group ? rx_close + number : unsigned{rx_end});
        emitter_.link(part.last, end);
        emitter_.link_all(end_of_alternative, end);
        part.last = end;
        return end_pattern(is_group) ? part : fail(*at_ == ')' || is_group ? "unmatched ()" : "junk on end");
    }

    // Takes the closing parenthesis of a group; at the top, the pattern must be at its end.
    bool end_pattern(bool is_group) {
        if (!is_group) return *at_ == '\0';
        if (*at_ != ')') return false;
        ++at_;
        return true;
    }

    // The pieces of an alternative.
    Part branch() {
        Part part;
        bool is_empty = true;
        while (*at_ != '\0' && *at_ != '|' && *at_ != ')') {
            const Part next = piece();
            part.flags |= next.flags & (is_empty ? has_width | starts_with_repeat : unsigned{has_width});
            if (is_empty) {
                part.first = next.first;
            } else {
                emitter_.link(part.last, next.first);
            }
            part.last = next.last;
            is_empty = false;
        }
        if (is_empty) part.first = part.last = emitter_.add(rx_nothing);
        return part;
    }

    Part piece() {
        Part part = atom();
        const char repeat = *at_;
        if (!is_repeat(repeat)) return part;
        if (!(part.flags & has_width) && repeat != '?') return fail("*+ operand could be empty");
        if (repeat == '?') {
            make_optional(&part);
        } else if (part.flags & simple) {
            emitter_.insert(repeat == '*' ? rx_star : rx_plus, part.first);
        } else if (repeat == '*') {
            repeat_any_times(&part);
        } else {
            repeat_at_least_once(&part);
        }
        part.flags = repeat == '+' ? unsigned{has_width} : unsigned{starts_with_repeat};
        ++at_;
        return is_repeat(*at_) ? fail("nested *?+") : part;
    }

    // x* becomes (x&|), where & leads back to the whole.
    void repeat_any_times(Part* part) {
        emitter_.insert(rx_branch, part->first);
        const Node back = emitter_.add(rx_back);
        emitter_.link(part->last + node_bytes, back);
        emitter_.link(back, part->first);
        add_way_out(part->first, part);
    }

    // x+ becomes x(&|), where & leads back to x.
    void repeat_at_least_once(Part* part) {
        const Node again = emitter_.add(rx_branch);
        emitter_.link(part->last, again);
        emitter_.link(emitter_.add(rx_back), part->first);
        add_way_out(again, part);
    }

    // x? becomes (x|).
    void make_optional(Part* part) {
        emitter_.insert(rx_branch, part->first);
        const Node end_of_operand = part->last + node_bytes;
        add_way_out(part->first, part);
        emitter_.link(end_of_operand, part->last);
    }

    // An empty alternative to a branch, which ends the part.
    void add_way_out(Node branch, Part* part) {
        const Node out = emitter_.add(rx_branch);
        emitter_.link(branch, out);
        part->last = emitter_.add(rx_nothing);
        emitter_.link(out, part->last);
    }

    Part atom() {
        switch (*at_++) {
            case '^':
                return one_node(rx_bol, 0);
            case '$':
                return one_node(rx_eol, 0);
            case '.':
                return one_node(rx_any, has_width | simple);
            case '[':
                return set();
            case '(': {
                Part group = pattern(true);
                group.flags &= has_width | starts_with_repeat;
                return group;
            }
            case '?':
            case '+':
            case '*':
                return fail("?+* follows nothing");
            case '\\':
                return *at_ != '\0' ? literal(at_, 1) : fail("trailing \\");
            case '\0':
            case '|':
            case ')':
                return fail("internal urp");
            default:
                return literals();
        }
    }

    Part one_node(unsigned opcode, unsigned flags) {
        const Node node = emitter_.add(opcode);
        return {node, node, flags};
    }

    // Bytes up to the next one with a meaning. A repeat belongs to the last of them alone.
    Part literals() {
        const char* const start = at_ - 1;
        const char* end = start;
        while (!ends_literal[static_cast<unsigned char>(*end)]) ++end;
        auto count = static_cast<std::size_t>(end - start);
        if (count == 0) return fail("internal disaster");
        if (count > 1 && is_repeat(*end)) --count;
        return literal(start, count);
    }

    Part literal(const char* bytes, std::size_t count) {
        at_ = bytes + count;
        const Part part = one_node(rx_exactly, count == 1 ? has_width | simple : unsigned{has_width});
        emitter_.add_bytes(bytes, count);
        emitter_.add_byte('\0');
        return part;
    }

    Part set() {
        const bool is_negated = *at_ == '^';
        if (is_negated) ++at_;
        const Part part = one_node(is_negated ? rx_anybut : rx_anyof, has_width | simple);
        if (*at_ == ']' || *at_ == '-') emitter_.add_byte(*at_++);
        while (*at_ != '\0' && *at_ != ']') {
            if (*at_ != '-') {
                emitter_.add_byte(*at_++);
            } else if (!range()) {
                return fail("invalid [] range");
            }
        }
        emitter_.add_byte('\0');
        if (*at_ != ']') return fail("unmatched []");
        ++at_;
        return part;
    }

    // The low end of a range is the byte before its "-", and a member already.
    bool range() {
        const auto low = static_cast<unsigned char>(at_[-1]);
        ++at_;
        if (*at_ == ']' || *at_ == '\0') {
            emitter_.add_byte('-');
            return true;
        }
        const auto high = static_cast<unsigned char>(*at_++);
        if (low > high) return false;
        emitter_.add_range(low + 1U, high);
        return true;
    }

    const char* at_;
    Emitter& emitter_;
    const char* error_ = nullptr;
    unsigned groups_ = 1;  // the number of the next one
};

}  // namespace orvix::gsl::text::regexp
