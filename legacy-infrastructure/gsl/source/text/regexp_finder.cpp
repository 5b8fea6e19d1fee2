#include "text/regexp_finder.h"

#include "text/regexp_rarity.h"

#include <algorithm>

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

// Where the so many neighbours in a text begin that are the rarest together.
std::size_t rarest_neighbours(std::string_view text, std::size_t count) {
    const auto frequency_at = [text, count](std::size_t i) {
        unsigned product = 1;
        for (const char c : text.substr(i, count)) product *= frequency_of(c);
        return product;
    };
    std::size_t best = 0;
    for (std::size_t i = 1; i + count <= text.size(); ++i) {
        if (frequency_at(i) < frequency_at(best)) best = i;
    }
    return best;
}

// What the second byte of a success may be, or more; the zero byte if it may be of one byte alone. Looks at no more
// than so many choices and runs that may be empty behind each other.
ByteSet second_bytes(const Step* step, int choices) {
    step = behind_passes(step);
    switch (step->op) {
        case Op::byte:
        case Op::set:
            return step->next->first;
        case Op::text:
            return ByteSet::of(step->text()[1]);
        case Op::choice:
            if (choices == 0) return ByteSet::all();
            return second_bytes(step->operand, choices - 1) | second_bytes(step->next, choices - 1);
        case Op::run: {
            const ByteSet behind_one = step->operand->first | step->next->first;
            if (step->detail > 0) return behind_one;
            return choices == 0 ? ByteSet::all() : behind_one | second_bytes(step->next, choices - 1);
        }
        default:
            return ByteSet::all();
    }
}

}  // namespace

void Finder::learn(char c) {
    kind_ = Kind::text;
    text_[0] = c;
    needle_ = Needle({text_.data(), 1});
}

void Finder::learn(const Step* entry) {
    const Step* const step = behind_passes(entry);
    if (learn_text(step)) return;
    if (step->op == Op::run && learn_run(step)) return;
    if (step->op == Op::choice && learn_texts(step)) return;
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

// Alternatives that all begin with two bytes of text at least.
bool Finder::learn_texts(const Step* choice) {
    Alternatives alternatives{choice};
    std::size_t count = 1;
    std::size_t shortest = longest_text;
    for (std::size_t i = 0; i < count;) {
        const Step* const step = behind_passes(alternatives[i]);
        if (step->op == Op::choice && !step->is_loop && count < most_samples) {
            alternatives[i] = step->operand;
            alternatives[count++] = step->next;
            continue;
        }
        shortest = std::min(shortest, copy_text(step));
        if (shortest < 2) return false;
        ++i;
    }
    if (!learn_common_text(alternatives, count)) {
        learn_samples(alternatives, count, shortest);
        learn_first_bytes(choice);
    }
    return true;
}

// What all begin with, if that is two bytes or more.
bool Finder::learn_common_text(const Alternatives& alternatives, std::size_t count) {
    std::size_t size = copy_text(alternatives[0]);
    const auto common = text_;
    for (std::size_t i = 1; i < count; ++i) {
        const std::string_view text(text_.data(), copy_text(alternatives[i]));
        size = std::min(size, text.size());
        const auto end = common.begin() + static_cast<std::ptrdiff_t>(size);
        size = static_cast<std::size_t>(std::mismatch(common.begin(), end, text.begin()).first - common.begin());
    }
    if (size < 2) return false;
    kind_ = Kind::text;
    text_ = common;
    needle_ = Needle({text_.data(), size});
    return true;
}

// A sample is no further from the start than the shortest text goes, so that all are looked for at the same positions.
// Three bytes are worth their time where two of them would be found too often.
void Finder::learn_samples(const Alternatives& alternatives, std::size_t count, std::size_t shortest) {
    kind_ = Kind::texts;
    reach_ = static_cast<unsigned char>(shortest);
    learn_samples_of(2, alternatives, count, shortest);
    unsigned often = 0;  // in a million bytes
    for (std::size_t i = 0; i < count_; ++i)
        often += frequency_of(samples_[i].bytes[0]) * frequency_of(samples_[i].bytes[1]);
    constexpr unsigned too_often = 500;
    if (often > too_often && shortest > 2) learn_samples_of(3, alternatives, count, shortest);
}

void Finder::learn_samples_of(unsigned char bytes, const Alternatives& alternatives, std::size_t count,
                              std::size_t shortest) {
    sample_bytes_ = bytes;
    count_ = 0;
    for (std::size_t i = 0; i < count; ++i) {
        copy_text(alternatives[i]);
        const std::size_t distance = rarest_neighbours({text_.data(), shortest}, bytes);
        Sample sample{{}, static_cast<unsigned char>(distance)};
        std::copy_n(text_.data() + distance, bytes, sample.bytes.begin());
        const auto end = samples_.begin() + count_;
        if (std::find(samples_.begin(), end, sample) == end) samples_[count_++] = sample;
    }
}

void Finder::learn_first_bytes(const Step* entry) {
    constexpr int few_choices = 6;
    first_ = entry->first;
    second_ = second_bytes(entry, few_choices);
}

// The first byte; in ranges if those are few and their bytes not too common.
void Finder::learn_set(const Step* entry) {
    constexpr unsigned common = 150;
    if (entry->first.has('\0')) return;
    kind_ = Kind::members;
    learn_first_bytes(entry);
    if (frequency_of(first_) > common) return;
    bool is_too_many = false;
    first_.for_each([&](char c) {
        const auto byte = static_cast<unsigned char>(c);
        if (first_.has(static_cast<char>(byte - 1))) {
            ++ranges_[count_ - std::size_t{1}].span;
        } else if (count_ < most_ranges && !is_too_many) {
            ranges_[count_++] = {byte, 0};
        } else {
            is_too_many = true;
        }
    });
    if (!is_too_many) kind_ = Kind::ranges;
}

}  // namespace orvix::gsl::text::regexp
