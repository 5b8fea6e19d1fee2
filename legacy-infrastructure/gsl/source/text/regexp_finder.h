// What is known of the place where a match may start.
#pragma once

#include "text/regexp_byte_set.h"
#include "text/regexp_needle.h"
#include "text/regexp_step.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace orvix::gsl::text::regexp {

// As it is made, nothing is known. Must not be moved once it has learnt something.
class Finder {
public:
    // A match starts with a byte.
    void learn(char c);

    // A match goes through these steps.
    void learn(const Step* entry);

    // A text that is part of every match, if that is what is looked for; else an empty one.
    const Needle& needle() const { return needle_; }
    bool begins_with_text() const { return kind_ == Kind::text; }

private:
    friend class Starts;

    enum class Kind : unsigned char {
        everywhere,
        text,      // at a text
        in_front,  // so many bytes in front of a text
        run,       // at the start of a run that leads to a text
        texts,     // where one of several texts stands, by a sample of each
        ranges,    // at a byte of a few ranges
        members,   // at a byte of a set
    };

    // Two or three neighbours in a text, at a distance from its start.
    struct Sample {
        std::array<char, 3> bytes;
        unsigned char distance;
        bool operator==(const Sample&) const = default;
    };

    struct Range {
        unsigned char low;
        unsigned char span;
    };

    static constexpr std::size_t most_samples = 16;
    static constexpr std::size_t most_ranges = 3;
    static constexpr std::size_t longest_text = 24;

    using Alternatives = std::array<const Step*, most_samples>;

    std::size_t copy_text(const Step* step);
    bool learn_text(const Step* entry);
    bool learn_run(const Step* run);
    bool learn_texts(const Step* choice);
    bool learn_common_text(const Alternatives& alternatives, std::size_t count);
    void learn_samples(const Alternatives& alternatives, std::size_t count, std::size_t shortest);
    void learn_samples_of(unsigned char bytes, const Alternatives& alternatives, std::size_t count,
                          std::size_t shortest);
    void learn_first_bytes(const Step* entry);
    void learn_set(const Step* entry);

    // Whether the first two bytes fit; only if the first one does is there a second.
    bool begins_at(const char* at) const { return first_.has(*at) && second_.has(at[1]); }

    Kind kind_ = Kind::everywhere;
    unsigned char in_front_ = 0;      // bytes of a match in front of the text; the least number of them in a run
    unsigned char count_ = 0;         // of samples or ranges
    unsigned char sample_bytes_ = 0;  // 2 or 3
    unsigned char reach_ = 1;         // bytes from a position on that samples or ranges look at
    std::array<char, longest_text> text_{};
    Needle needle_;
    ByteSet first_;   // bytes of the run; else what may be the first byte of a match,
    ByteSet second_;  // and what the second
    std::array<Sample, most_samples> samples_;
    std::array<Range, most_ranges> ranges_;
};

}  // namespace orvix::gsl::text::regexp
