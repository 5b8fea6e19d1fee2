// A plain model of compiled programs: lists the nodes of a pattern's tree with the place that each one leads to, then
// lays them out and works out the distances.
#pragma once

#include "support/regexp_pattern_model.h"

#include <cstddef>
#include <string>
#include <vector>

namespace orvix::test::regexp {

// What a compiled record holds.
struct ProgramModel {
    std::string program;
    char start_byte = '\0';
    bool is_anchored = false;
    std::string required;
    bool operator==(const ProgramModel&) const = default;
};

class ProgramLayout {
public:
    // @throw PatternError  "regexp too big"
    std::string lay_out(const Choice& choice) {
        const Label end = new_label();
        add_rows(choice, end);
        bind(end);
        add(0, nowhere);
        return bytes();
    }

private:
    using Label = std::size_t;
    static constexpr Label nowhere = 0;

    struct Item {
        int opcode;
        std::string operand;
        Label target;
    };

    Label new_label() {
        places_.push_back(0);
        return places_.size() - 1;
    }
    void bind(Label label) { places_[label] = items_.size(); }
    Label here() {
        const Label label = new_label();
        bind(label);
        return label;
    }
    void add(int opcode, Label target, const std::string& operand = "") { items_.push_back({opcode, operand, target}); }

    // Each branch leads to the next one, the last to where all lead.
    void add_rows(const Choice& choice, Label behind) {
        for (std::size_t i = 0; i < choice.rows.size(); ++i) {
            const bool is_last = i + 1 == choice.rows.size();
            const Label next = is_last ? behind : new_label();
            add(6, next);
            add_row(choice.rows[i], behind);
            if (!is_last) bind(next);
        }
    }

    void add_row(const Row& row, Label behind) {
        if (row.empty()) add(9, behind);
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (i + 1 == row.size()) {
                add_piece(row[i], behind);
            } else {
                const Label next = new_label();
                add_piece(row[i], next);
                bind(next);
            }
        }
    }

    void add_piece(const Piece& piece, Label behind) {
        const bool one_byte = piece.takes_one_byte();
        switch (piece.repeat) {
            case '*':
                one_byte ? add_simple_repeat(10, piece, behind) : add_loop(piece, behind);
                break;
            case '+':
                one_byte ? add_simple_repeat(11, piece, behind) : add_loop_at_end(piece, behind);
                break;
            case '?':
                add_option(piece, behind);
                break;
            default:
                add_atom(piece, behind);
        }
    }

    void add_simple_repeat(int opcode, const Piece& piece, Label behind) {
        add(opcode, behind);
        add_atom(piece, nowhere);
    }

    void add_loop(const Piece& piece, Label behind) {
        const Label start = here();
        const Label out = new_label();
        const Label back = new_label();
        add(6, out);
        add_atom(piece, back);
        bind(back);
        add(7, start);
        add_way_out(out, behind);
    }

    void add_loop_at_end(const Piece& piece, Label behind) {
        const Label start = here();
        const Label again = new_label();
        const Label out = new_label();
        add_atom(piece, again);
        bind(again);
        add(6, out);
        add(7, start);
        add_way_out(out, behind);
    }

    void add_option(const Piece& piece, Label behind) {
        const Label out = new_label();
        const Label nothing = new_label();
        add(6, out);
        add_atom(piece, nothing);
        bind(out);
        add(6, nothing);
        bind(nothing);
        add(9, behind);
    }

    void add_way_out(Label out, Label behind) {
        const Label nothing = new_label();
        bind(out);
        add(6, nothing);
        bind(nothing);
        add(9, behind);
    }

    void add_atom(const Piece& piece, Label behind) {
        switch (piece.kind) {
            case Piece::start:
                return add(1, behind);
            case Piece::end:
                return add(2, behind);
            case Piece::any:
                return add(3, behind);
            case Piece::set:
                return add(piece.is_negated ? 5 : 4, behind, piece.bytes + '\0');
            case Piece::literals:
                return add(8, behind, piece.bytes + '\0');
            case Piece::group: {
                const Label first = new_label();
                const Label end = new_label();
                add(20 + piece.number, first);
                bind(first);
                add_rows(*piece.choice, end);
                bind(end);
                add(30 + piece.number, behind);
            }
        }
    }

    std::string bytes() const {
        std::vector<std::size_t> offsets;
        std::size_t size = 1;
        for (const Item& item : items_) {
            offsets.push_back(size);
            size += 3 + item.operand.size();
        }
        if (size >= 32767) throw PatternError("regexp too big");
        std::string bytes = "\x9c";
        for (std::size_t i = 0; i < items_.size(); ++i) {
            const Item& item = items_[i];
            std::size_t distance = 0;
            if (item.target != nowhere) {
                const std::size_t target = offsets.at(places_[item.target]);
                distance = target > offsets[i] ? target - offsets[i] : offsets[i] - target;
            }
            bytes += static_cast<char>(item.opcode);
            bytes += static_cast<char>(distance / 256);
            bytes += static_cast<char>(distance % 256);
            bytes += item.operand;
        }
        return bytes;
    }

    std::vector<Item> items_;
    std::vector<std::size_t> places_{0};  // the item that a label stands in front of
};

// @throw PatternError
inline ProgramModel compiled_model(const std::string& pattern) {
    const Choice choice = PatternReader(pattern).read();
    ProgramModel model;
    model.program = ProgramLayout().lay_out(choice);
    if (choice.rows.size() > 1 || choice.rows[0].empty()) return model;
    const Piece& first = choice.rows[0][0];
    if (first.repeat == '\0' && first.kind == Piece::literals) model.start_byte = first.bytes[0];
    model.is_anchored = first.repeat == '\0' && first.kind == Piece::start;
    if (!starts_with_repeat(choice)) return model;
    for (const Piece& piece : choice.rows[0]) {
        if (piece.kind != Piece::literals || piece.repeat != '\0') continue;
        if (piece.bytes.size() >= model.required.size()) model.required = piece.bytes;
    }
    return model;
}

}  // namespace orvix::test::regexp
