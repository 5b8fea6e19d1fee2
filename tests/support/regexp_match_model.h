// A plain matcher: walks the tree of a pattern, trying each choice in turn, and carries the rest of the match along as
// a function. It knows nothing of programs, and its time and its stack grow as they like.
#pragma once

#include "support/regexp_pattern_model.h"

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

namespace orvix::test::regexp {

// Start and end of the whole match (0) and the groups; none for a group that took no part.
using Places = std::array<std::optional<std::pair<std::size_t, std::size_t>>, 10>;

// The model gave up: the subject takes too many steps.
struct TooLong : std::runtime_error {
    TooLong() : runtime_error("too many steps") {}
};

class MatchModel {
public:
    MatchModel(Choice choice, std::string subject, std::size_t patience = 100000)
        : choice_(std::move(choice)), subject_(std::move(subject)), patience_(patience) {}

    // @throw TooLong
    std::optional<Places> search() {
        for (std::size_t start = 0; start <= subject_.size(); ++start) {
            std::optional<Places> found;
            const auto succeed = [&](std::size_t end, const Places& places) {
                found = places;
                found->at(0) = {start, end};
                return true;
            };
            if (match_choice(choice_, start, {}, succeed)) return found;
        }
        return std::nullopt;
    }

private:
    // Matches what comes behind; true ends the search.
    using Rest = std::function<bool(std::size_t, const Places&)>;

    void step() {
        if (patience_-- == 0) throw TooLong();
    }

    bool match_choice(const Choice& choice, std::size_t at, const Places& places, const Rest& rest) {
        for (const Row& row : choice.rows) {
            if (match_row(row, 0, at, places, rest)) return true;
        }
        return false;
    }

    bool match_row(const Row& row, std::size_t index, std::size_t at, const Places& places, const Rest& rest) {
        step();
        if (index == row.size()) return rest(at, places);
        const Piece& piece = row[index];
        const Rest behind = [&, index](std::size_t next, const Places& now) {
            return match_row(row, index + 1, next, now, rest);
        };
        switch (piece.repeat) {
            case '*':
                return match_repeatedly(piece, at, places, behind);
            case '+':
                return match_atom(piece, at, places, [&](std::size_t next, const Places& now) {
                    return match_repeatedly(piece, next, now, behind);
                });
            case '?':
                return match_atom(piece, at, places, behind) || behind(at, places);
            default:
                return match_atom(piece, at, places, behind);
        }
    }

    bool match_repeatedly(const Piece& piece, std::size_t at, const Places& places, const Rest& behind) {
        step();
        const Rest again = [&](std::size_t next, const Places& now) {
            return match_repeatedly(piece, next, now, behind);
        };
        return match_atom(piece, at, places, again) || behind(at, places);
    }

    bool match_atom(const Piece& piece, std::size_t at, const Places& places, const Rest& behind) {
        switch (piece.kind) {
            case Piece::start:
                return at == 0 && behind(at, places);
            case Piece::end:
                return at == subject_.size() && behind(at, places);
            case Piece::any:
            case Piece::set:
                return at < subject_.size() && piece.accepts(subject_[at]) && behind(at + 1, places);
            case Piece::literals:
                return subject_.compare(at, piece.bytes.size(), piece.bytes) == 0 &&
                       behind(at + piece.bytes.size(), places);
            default:
                return match_choice(*piece.choice, at, places, [&](std::size_t end, const Places& now) {
                    Places with_group = now;
                    with_group.at(static_cast<std::size_t>(piece.number)) = {at, end};
                    return behind(end, with_group);
                });
        }
    }

    Choice choice_;
    std::string subject_;
    std::size_t patience_;
};

}  // namespace orvix::test::regexp
