// Finds where a match may start, so that most positions of a subject cost next to nothing.
#pragma once

#include "text/regexp_blocks.h"
#include "text/regexp_finder.h"

#include <array>

namespace orvix::gsl::text::regexp {

// One search, from left to right.
class Starts {
public:
    explicit Starts(const Finder& finder) : finder_(finder) {}

    // The first position from `at` on where a match may start; null if there is none.
    const char* find(const char* at);

private:
    using Kind = Finder::Kind;
    class SampleTest;
    class RangeTest;

    const char* find_in_front(const char* at) const;
    const char* find_run(const char* at) const;
    const char* find_sample(const char* at);
    const char* find_range(const char* at);
    const char* find_member(const char* at) const;
    bool settle_near(const char** at);
    void prepare_samples();
    void prepare_ranges();

    const Finder& finder_;
    bool is_far_ = false;  // behind the first few positions
    bool is_prepared_ = false;
    std::array<Block, 3 * Finder::most_samples> blocks_;  // bytes of samples or ends of ranges, each sixteen times
};

}  // namespace orvix::gsl::text::regexp
