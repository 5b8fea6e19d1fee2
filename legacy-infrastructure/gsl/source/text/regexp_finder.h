// Finds where a match may start, so that most positions of a subject cost next to nothing.
#pragma once

#include "text/regexp_blocks.h"
#include "text/regexp_byte_set.h"
#include "text/regexp_needle.h"
#include "text/regexp_step.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace orvix::gsl::text::regexp {

// As it is made, it finds every position.
class Finder {
public:
    // Finds the places of a byte.
    void learn(char c);

    // Finds the positions where the steps may succeed. The finder must not be moved any more.
    void learn(const Step* entry);

    // The first position from `at` on where a match may start; null if there is none.
    const char* find(const char* at) const { return kind_ == Kind::text ? needle_.find(at) : find(at, true); }

    // The same, behind a position where no match started after all.
    const char* find_next(const char* at) const { return find(at, kind_ != Kind::pairs); }

    // A text that is part of every match, if that is what it looks for.
    std::string_view text() const { return needle_.text(); }

    bool is_choosy() const { return kind_ != Kind::everywhere && kind_ != Kind::members && kind_ != Kind::ranges; }

private:
    enum class Kind : unsigned char {
        everywhere,
        text,      // at a text
        in_front,  // so many bytes in front of a text
        run,       // at the start of a run that leads to a text
        pairs,     // where one of a few pairs of bytes stands
        ranges,    // at a byte of a few ranges
        members,   // at a byte of a set
    };

    // Two neighbours, at a distance from where a match may start.
    struct Pair {
        Repeated first;
        Repeated second;
        std::size_t distance;
    };

    struct Range {
        Repeated low;
        Repeated span;
    };

    static constexpr std::size_t most_pairs = 8;
    static constexpr std::size_t most_ranges = 3;
    static constexpr std::size_t longest_text = 24;

    class PairTest;
    class RangeTest;

    static Pair rarest_pair(std::string_view text);
    std::size_t copy_text(const Step* step);
    bool learn_text(const Step* entry);
    bool learn_run(const Step* run);
    bool learn_pairs(const Step* choice);
    void learn_first_bytes(const Step* entry);
    void learn_set(const Step* entry);

    // Whether the first two bytes fit; only if the first one does is there a second.
    bool begins_at(const char* at) const { return first_.has(*at) && second_.has(at[1]); }

    bool settle_near(const char** at) const;
    const char* find(const char* at, bool is_near) const;
    const char* find_in_front(const char* at) const;
    const char* find_run(const char* at) const;
    const char* find_range(const char* at) const;
    const char* find_member(const char* at) const;

    Kind kind_ = Kind::everywhere;
    unsigned char in_front_ = 0;  // bytes of a match in front of the text; the least number of them in a run
    unsigned char count_ = 0;     // of pairs or ranges
    unsigned char reach_ = 1;     // of what pairs or ranges look at
    std::array<char, longest_text> text_{};
    Needle needle_;
    ByteSet first_;   // bytes of the run; else what may be the first byte of a match,
    ByteSet second_;  // and what the second
    std::array<Pair, most_pairs> pairs_;
    std::array<Range, most_ranges> ranges_;
};

}  // namespace orvix::gsl::text::regexp
