// A plain model of the language of patterns: reads a pattern into a tree, or finds the first error in it.
#pragma once

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace orvix::test::regexp {

struct Choice;

// An atom and its repeat.
struct Piece {
    enum Kind { start, end, any, set, literals, group };

    Kind kind = any;
    char repeat = '\0';              // '*', '+', '?' or none
    std::string bytes;               // literals in their order, members of a set as they are listed
    bool is_negated = false;         // the set
    int number = 0;                  // of the group
    std::shared_ptr<Choice> choice;  // inside the group

    bool takes_one_byte() const { return kind == any || kind == set || (kind == literals && bytes.size() == 1); }
    bool accepts(char c) const {
        if (c == '\0') return false;
        if (kind == any) return true;
        return (bytes.find(c) != std::string::npos) != is_negated;
    }
};

using Row = std::vector<Piece>;

struct Choice {
    std::vector<Row> rows;
};

// What a pattern is found wrong for, with the message that reports it.
struct PatternError : std::runtime_error {
    using runtime_error::runtime_error;
};

bool has_width(const Choice& choice);
bool starts_with_repeat(const Choice& choice);

inline bool has_width(const Piece& piece) {
    if (piece.repeat != '\0') return piece.repeat == '+';
    if (piece.kind == Piece::group) return has_width(*piece.choice);
    return piece.kind != Piece::start && piece.kind != Piece::end;
}

inline bool has_width(const Choice& choice) {
    for (const Row& row : choice.rows) {
        bool any = false;
        for (const Piece& piece : row) any = any || has_width(piece);
        if (!any) return false;
    }
    return true;
}

inline bool starts_with_repeat(const Choice& choice) {
    for (const Row& row : choice.rows) {
        if (row.empty()) continue;
        const Piece& first = row.front();
        if (first.repeat == '*' || first.repeat == '?') return true;
        if (first.repeat == '\0' && first.kind == Piece::group && starts_with_repeat(*first.choice)) return true;
    }
    return false;
}

class PatternReader {
public:
    explicit PatternReader(std::string pattern) : text_(std::move(pattern)) {}

    // @throw PatternError
    Choice read() {
        Choice choice = read_choice();
        if (!at_end()) throw PatternError(peek() == ')' ? "unmatched ()" : "junk on end");
        return choice;
    }

private:
    bool at_end() const { return at_ == text_.size(); }
    char peek() const { return at_end() ? '\0' : text_[at_]; }
    static bool is_one_of(char c, const char* set) {
        return c != '\0' && std::string(set).find(c) != std::string::npos;
    }

    Choice read_choice() {
        Choice choice;
        choice.rows.push_back(read_row());
        while (peek() == '|') {
            ++at_;
            choice.rows.push_back(read_row());
        }
        return choice;
    }

    Row read_row() {
        Row row;
        while (!at_end() && peek() != '|' && peek() != ')') row.push_back(read_piece());
        return row;
    }

    Piece read_piece() {
        Piece piece = read_atom();
        if (!is_one_of(peek(), "*+?")) return piece;
        if (peek() != '?' && !has_width(piece)) throw PatternError("*+ operand could be empty");
        piece.repeat = text_[at_++];
        if (is_one_of(peek(), "*+?")) throw PatternError("nested *?+");
        return piece;
    }

    Piece read_atom() {
        const char c = text_[at_];
        if (is_one_of(c, "*+?")) throw PatternError("?+* follows nothing");
        if (!is_one_of(c, "^$.[(\\")) return read_literals();
        ++at_;
        if (c == '[') return read_set();
        if (c == '(') return read_group();
        Piece piece;
        piece.kind = c == '^' ? Piece::start : c == '$' ? Piece::end : Piece::any;
        if (c == '\\') {
            if (at_end()) throw PatternError("trailing \\");
            piece.kind = Piece::literals;
            piece.bytes = text_[at_++];
        }
        return piece;
    }

    Piece read_literals() {
        Piece piece;
        piece.kind = Piece::literals;
        while (!at_end() && !is_one_of(peek(), "^$.[()|?+*\\")) piece.bytes += text_[at_++];
        if (piece.bytes.size() > 1 && is_one_of(peek(), "*+?")) {
            piece.bytes.pop_back();
            --at_;
        }
        return piece;
    }

    Piece read_group() {
        if (groups_ == 9) throw PatternError("too many ()");
        Piece piece;
        piece.kind = Piece::group;
        piece.number = ++groups_;
        piece.choice = std::make_shared<Choice>(read_choice());
        if (peek() != ')') throw PatternError("unmatched ()");
        ++at_;
        return piece;
    }

    Piece read_set() {
        Piece piece;
        piece.kind = Piece::set;
        piece.is_negated = peek() == '^';
        if (piece.is_negated) ++at_;
        const std::size_t first = at_;
        while (!at_end() && (peek() != ']' || at_ == first)) {
            const bool is_range = peek() == '-' && at_ != first && at_ + 1 < text_.size() && text_[at_ + 1] != ']';
            if (is_range) {
                const int low = static_cast<unsigned char>(text_[at_ - 1]);
                const int high = static_cast<unsigned char>(text_[at_ + 1]);
                if (low > high) throw PatternError("invalid [] range");
                for (int member = low + 1; member <= high; ++member) piece.bytes += static_cast<char>(member);
                at_ += 2;
            } else {
                piece.bytes += text_[at_++];
            }
        }
        if (at_end()) throw PatternError("unmatched []");
        ++at_;
        return piece;
    }

    std::string text_;
    std::size_t at_ = 0;
    int groups_ = 0;
};

}  // namespace orvix::test::regexp
