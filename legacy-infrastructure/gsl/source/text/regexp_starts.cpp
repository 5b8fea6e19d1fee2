#include "text/regexp_starts.h"

#include <algorithm>
#include <cstddef>

namespace orvix::gsl::text::regexp {

class Starts::SampleTest {
public:
    explicit SampleTest(const Starts& starts) : finder_(starts.finder_), blocks_(starts.blocks_.data()) {}

    Hits operator()(const char* at) const {
        Hits hits{};
        const Block* block = blocks_;
        for (std::size_t i = 0; i < finder_.count_; ++i) {
            const char* const place = at + finder_.samples_[i].distance;
            Hits match = (load(place) == block[0]) & (load(place + 1) == block[1]);
            if (finder_.sample_bytes_ == 3) match &= load(place + 2) == block[2];
            hits |= match;
            block += finder_.sample_bytes_;
        }
        return hits;
    }
    bool is_hit(const char* at) const { return finder_.begins_at(at); }

private:
    const Finder& finder_;
    const Block* blocks_;
};

class Starts::RangeTest {
public:
    explicit RangeTest(const Starts& starts) : finder_(starts.finder_), blocks_(starts.blocks_.data()) {}

    Hits operator()(const char* at) const {
        const Block bytes = load(at);
        Hits hits{};
        for (std::size_t i = 0; i < finder_.count_; ++i) hits |= bytes - blocks_[2 * i] <= blocks_[2 * i + 1];
        return hits;
    }
    bool is_hit(const char* at) const { return finder_.first_.has(*at); }

private:
    const Finder& finder_;
    const Block* blocks_;
};

const char* Starts::find(const char* at) {
    switch (finder_.kind_) {
        case Kind::text:
            return finder_.needle_.find(at);
        case Kind::in_front:
            return find_in_front(at);
        case Kind::run:
            return find_run(at);
        case Kind::texts:
            return find_sample(at);
        case Kind::ranges:
            return find_range(at);
        case Kind::members:
            return find_member(at);
        default:
            return at;
    }
}

const char* Starts::find_in_front(const char* at) const {
    const std::ptrdiff_t distance = finder_.in_front_;
    const char* hit = finder_.needle_.find(at);
    while (hit != nullptr && hit - at < distance) hit = finder_.needle_.find(hit + 1);
    return hit != nullptr ? hit - distance : nullptr;
}

// The run that ends at the first text begins as far in front of it as its bytes go.
const char* Starts::find_run(const char* at) const {
    for (const char* hit = at; (hit = finder_.needle_.find(hit)) != nullptr; ++hit) {
        const char* start = hit;
        while (start > at && finder_.first_.has(start[-1])) --start;
        if (hit - start >= finder_.in_front_) return start;
    }
    return nullptr;
}

const char* Starts::find_sample(const char* at) {
    if (settle_near(&at)) return at;
    if (!is_prepared_) prepare_samples();
    return find_in_blocks(at, finder_.reach_, SampleTest(*this));
}

const char* Starts::find_range(const char* at) {
    if (settle_near(&at)) return at;
    if (!is_prepared_) prepare_ranges();
    while ((at = find_in_blocks(at, finder_.reach_, RangeTest(*this))) != nullptr && !finder_.begins_at(at)) ++at;
    return at;
}

const char* Starts::find_member(const char* at) const {
    for (; !finder_.begins_at(at); ++at) {
        if (*at == '\0') return nullptr;
    }
    return at;
}

// At the start of a search, looks at a few positions one by one: a match is often near, and blocks want some
// preparation. True if that settles it, with the position in `at`, or null there.
bool Starts::settle_near(const char** at) {
    if (is_far_) return false;
    is_far_ = true;
    constexpr int few = 16;
    for (int i = 0; i < few; ++i, ++*at) {
        if (finder_.begins_at(*at)) return true;
        if (**at != '\0') continue;
        *at = nullptr;
        return true;
    }
    return false;
}

void Starts::prepare_samples() {
    Block* block = blocks_.data();
    for (std::size_t i = 0; i < finder_.count_; ++i) {
        for (std::size_t j = 0; j < finder_.sample_bytes_; ++j)
            *block++ = filled_with(static_cast<unsigned char>(finder_.samples_[i].bytes[j]));
    }
    is_prepared_ = true;
}

void Starts::prepare_ranges() {
    Block* block = blocks_.data();
    for (std::size_t i = 0; i < finder_.count_; ++i) {
        *block++ = filled_with(finder_.ranges_[i].low);
        *block++ = filled_with(finder_.ranges_[i].span);
    }
    is_prepared_ = true;
}

}  // namespace orvix::gsl::text::regexp
