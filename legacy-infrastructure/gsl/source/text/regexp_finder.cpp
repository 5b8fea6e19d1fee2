#include "text/regexp_finder.h"

#include "text/regexp_blocks.h"
#include "text/regexp_rarity.h"

#include <algorithm>
#include <cstring>

namespace orvix::gsl::text::regexp {

namespace {

const Step* behind_passes(const Step* step) {
    while (step->op == Op::pass) step = step->next;
    return step;
}

bool is_text(const Step* step) { return step->op == Op::byte || step->op == Op::text; }

unsigned least_frequency(std::string_view text) {
    unsigned least = frequency_of(text[0]);
    for (const char c : text) least = std::min(least, frequency_of(c));
    return least;
}

// What the second byte of a success may be, or more; the zero byte if it may be of one byte alone. Looks at no more
// than so many choices behind each other.
ByteSet second_bytes(const Step* step, int choices) {
    switch (step->op) {
        case Op::byte:
        case Op::set:
            return step->next->first;
        case Op::text:
            return ByteSet::of(step->text()[1]);
        case Op::pass:
            return second_bytes(step->next, choices);
        case Op::choice:
            if (choices == 0) return ByteSet::all();
            return second_bytes(step->operand, choices - 1) | second_bytes(step->next, choices - 1);
        case Op::run: {
            const ByteSet behind_one = step->operand->first | step->next->first;
            return step->detail > 0 ? behind_one : behind_one | second_bytes(step->next, choices);
        }
        default:
            return ByteSet::all();
    }
}

}  // namespace

// ---------------------------------------------------------------------------------------------------------------------
// Learning

Finder::Pair Finder::rarest_pair(std::string_view text) {
    const auto frequency_at = [text](std::size_t i) { return frequency_of(text[i]) * frequency_of(text[i + 1]); };
    std::size_t best = 0;
    for (std::size_t i = 1; i + 1 < text.size(); ++i) {
        if (frequency_at(i) < frequency_at(best)) best = i;
    }
    const auto repeated = [text](std::size_t i) { return Repeated(static_cast<unsigned char>(text[i])); };
    return {repeated(best), repeated(best + 1), best};
}

void Finder::learn(char c) {
    kind_ = Kind::text;
    text_[0] = c;
    needle_ = Needle({text_.data(), 1});
}

void Finder::learn(const Step* entry) {
    const Step* const step = behind_passes(entry);
    if (learn_text(step)) return;
    if (step->op == Op::run && learn_run(step)) return;
    if (step->op == Op::choice && learn_pairs(step)) return;
    learn_set(entry);
}

// Copies the text that steps begin with, as far as there is room.
std::size_t Finder::copy_text(const Step* step) {
    std::size_t size = 0;
    for (step = behind_passes(step); is_text(step) && size < text_.size(); step = behind_passes(step->next)) {
        size += step->text().copy(text_.data() + size, text_.size() - size);
    }
    return size;
}

// A text, or a number of sets and a text that is rarer than what the first of them takes.
bool Finder::learn_text(const Step* entry) {
    constexpr unsigned char most_sets = 16;
    const Step* step = entry;
    while (step->op == Op::set && in_front_ < most_sets) {
        step = behind_passes(step->next);
        ++in_front_;
    }
    const std::size_t size = copy_text(step);
    const std::string_view text(text_.data(), size);
    if (size == 0 || (in_front_ > 0 && least_frequency(text) > frequency_of(entry->first))) return false;
    kind_ = in_front_ == 0 ? Kind::text : Kind::in_front;
    needle_ = Needle(text);
    return true;
}

bool Finder::learn_run(const Step* run) {
    const std::size_t size = copy_text(run->next);
    const std::string_view text(text_.data(), size);
    const ByteSet& set = run->operand->first;
    if (size == 0 || (run->detail > 0 && least_frequency(text) > frequency_of(set))) return false;
    kind_ = Kind::run;
    in_front_ = run->detail;
    first_ = set;
    needle_ = Needle(text);
    return true;
}

// Alternatives that all begin with two bytes of text at least: what they have in common, if that is as much; else the
// rarest pair of each stands for it. No pair is further from the start than the shortest text goes, so that all are
// looked for at the same positions.
bool Finder::learn_pairs(const Step* choice) {
    std::array<const Step*, most_pairs> steps{choice};  // alternatives, from `waiting` on
    std::size_t waiting = 0;
    std::size_t count = 1;
    std::array<char, longest_text> common;
    std::size_t common_size = longest_text;
    std::size_t shortest = longest_text;
    while (waiting < count) {
        const Step* const step = behind_passes(steps[waiting]);
        if (step->op == Op::choice && !step->is_loop && count < most_pairs) {
            steps[waiting] = step->operand;
            steps[count++] = step->next;
            continue;
        }
        shortest = std::min(shortest, copy_text(step));
        if (shortest < 2) return false;
        if (waiting++ == 0) common = text_;
        const auto end = common.begin() + static_cast<std::ptrdiff_t>(std::min(common_size, shortest));
        common_size =
            static_cast<std::size_t>(std::mismatch(common.begin(), end, text_.begin()).first - common.begin());
    }
    if (common_size >= 2) {
        text_ = common;
        needle_ = Needle({text_.data(), common_size});
        kind_ = Kind::text;
        return true;
    }
    for (std::size_t i = 0; i < count; ++i) {
        copy_text(steps[i]);
        pairs_[i] = rarest_pair({text_.data(), shortest});
    }
    reach_ = static_cast<unsigned char>(shortest);
    count_ = static_cast<unsigned char>(count);
    learn_first_bytes(choice);
    kind_ = Kind::pairs;
    return true;
}

void Finder::learn_first_bytes(const Step* entry) {
    constexpr int few_choices = 6;
    first_ = entry->first;
    second_ = second_bytes(entry, few_choices);
}

// The first byte, in as many ranges as blocks are worth it; not if such bytes stand everywhere.
void Finder::learn_set(const Step* entry) {
    constexpr unsigned common = 150;
    if (entry->first.has('\0')) return;
    kind_ = Kind::members;
    learn_first_bytes(entry);
    if (frequency_of(first_) > common) return;
    count_ = 0;
    int last = -2;
    bool is_too_many = false;
    first_.for_each([&](char c) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte == last + 1) {
            Range& range = ranges_[count_ - std::size_t{1}];
            range.span = Repeated(static_cast<unsigned char>(byte - range.low.byte()));
        } else if (count_ < most_ranges) {
            ranges_[count_++] = {Repeated(byte), Repeated(0)};
        } else {
            is_too_many = true;
            return;
        }
        last = byte;
    });
    if (!is_too_many) kind_ = Kind::ranges;
}

// ---------------------------------------------------------------------------------------------------------------------
// Finding

class Finder::PairTest {
public:
    explicit PairTest(const Finder& finder) : finder_(finder) {}

    Hits operator()(const char* at) const {
        Hits hits{};
        for (std::size_t i = 0; i < finder_.count_; ++i) {
            const Pair& pair = finder_.pairs_[i];
            const char* const place = at + pair.distance;
            hits |= (load(place) == pair.first.block()) & (load(place + 1) == pair.second.block());
        }
        return hits;
    }
    bool is_hit(const char* at) const { return finder_.first_.has(*at); }

private:
    const Finder& finder_;
};

class Finder::RangeTest {
public:
    explicit RangeTest(const Finder& finder) : finder_(finder) {}

    Hits operator()(const char* at) const {
        const Block block = load(at);
        Hits hits{};
        for (std::size_t i = 0; i < finder_.count_; ++i) {
            const Range& range = finder_.ranges_[i];
            hits |= block - range.low.block() <= range.span.block();
        }
        return hits;
    }
    bool is_hit(const char* at) const { return finder_.first_.has(*at); }

private:
    const Finder& finder_;
};

const char* Finder::find(const char* at, bool is_near) const {
    switch (kind_) {
        case Kind::text:
            return needle_.find(at);
        case Kind::in_front:
            return find_in_front(at);
        case Kind::run:
            return find_run(at);
        case Kind::pairs:
            return is_near && settle_near(&at) ? at : find_in_blocks(at, reach_, PairTest(*this));
        case Kind::ranges:
            return find_range(at);
        case Kind::members:
            return find_member(at);
        default:
            return at;
    }
}

const char* Finder::find_in_front(const char* at) const {
    const char* hit = needle_.find(at);
    while (hit != nullptr && hit - at < in_front_) hit = needle_.find(hit + 1);
    return hit != nullptr ? hit - in_front_ : nullptr;
}

// The run that ends at the first text begins as far in front of it as its bytes go.
const char* Finder::find_run(const char* at) const {
    for (const char* hit = at; (hit = needle_.find(hit)) != nullptr; ++hit) {
        const char* start = hit;
        while (start > at && first_.has(start[-1])) --start;
        if (hit - start >= in_front_) return start;
    }
    return nullptr;
}

// Looks at a few positions one by one: the next match is often near, and blocks want some preparation. True if that
// settles it, with the position in `at`, or null there.
bool Finder::settle_near(const char** at) const {
    constexpr int few = 16;
    for (int i = 0; i < few; ++i, ++*at) {
        if (begins_at(*at)) return true;
        if (**at != '\0') continue;
        *at = nullptr;
        return true;
    }
    return false;
}

const char* Finder::find_range(const char* at) const {
    if (settle_near(&at)) return at;
    while ((at = find_in_blocks(at, 1, RangeTest(*this))) != nullptr && !begins_at(at)) ++at;
    return at;
}

const char* Finder::find_member(const char* at) const {
    for (; !begins_at(at); ++at) {
        if (*at == '\0') return nullptr;
    }
    return at;
}

}  // namespace orvix::gsl::text::regexp
