// gsl_qsort beside the C library's sort and the C++ library's, on 100,000 elements. All three reach the same comparison
// through the same pointer.

#include "ratio.h"

#include <orvix/gsl/sort.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include <gnu/libc-version.h>

namespace {

using orvix::bench::bar;

const bool bars = bar("sort/8_bytes/random", "glibc_qsort", 1.0) && bar("sort/16_bytes/random", "glibc_qsort", 0.65) &&
                  bar("sort/8_bytes/random", "std_sort", 1.22) && bar("sort/8_bytes/sorted", "std_sort", 0.60) &&
                  bar("sort/8_bytes/reversed", "std_sort", 0.95) && bar("sort/8_bytes/all_equal", "std_sort", 0.25) &&
                  bar("sort/8_bytes/ten_values", "std_sort", 0.80);

const bool versions = orvix::bench::peer_version("glibc_qsort", gnu_get_libc_version()) &&
                      orvix::bench::peer_version("std_sort", "(libstdc++ " + std::to_string(_GLIBCXX_RELEASE) + ")");

constexpr std::size_t element_count = 100'000;

struct Eight {
    std::int64_t key;
};

struct Sixteen {
    std::int64_t key;
    std::int64_t payload;
};

// A record whose key lies elsewhere.
struct Named {
    const char* key;
    std::int64_t payload;
};

int order_of(std::int64_t left, std::int64_t right) { return (left > right) - (left < right); }

int order_of(const char* left, const char* right) { return std::strcmp(left, right); }

template <class Element>
int compare_keys(const void* a, const void* b) {
    return order_of(static_cast<const Element*>(a)->key, static_cast<const Element*>(b)->key);
}

using Comparison = int (*)(const void*, const void*);

// Read afresh, so that no compiler can see which function it is.
template <class Element>
Comparison comparison() {
    static Comparison volatile pointer = compare_keys<Element>;
    return pointer;
}

template <class Element>
struct Ours {
    static void sort(std::vector<Element>& elements) {
        const auto untyped = reinterpret_cast<void (*)()>(comparison<Element>());
        gsl_qsort(reinterpret_cast<char*>(elements.data()), elements.size(), sizeof(Element),
                  reinterpret_cast<int (*)()>(untyped));
    }
};

template <class Element>
struct GlibcQsort {
    static void sort(std::vector<Element>& elements) {
        std::qsort(elements.data(), elements.size(), sizeof(Element), comparison<Element>());
    }
};

template <class Element>
struct StdSort {
    static void sort(std::vector<Element>& elements) {
        const Comparison compare = comparison<Element>();
        std::sort(elements.begin(), elements.end(),
                  [compare](const Element& a, const Element& b) { return compare(&a, &b) < 0; });
    }
};

std::vector<std::int64_t> random_keys() {
    std::mt19937_64 random(1);
    std::vector<std::int64_t> keys(element_count);
    std::generate(keys.begin(), keys.end(), [&] { return static_cast<std::int64_t>(random()); });
    return keys;
}

std::vector<std::int64_t> sorted_keys() {
    std::vector<std::int64_t> keys(element_count);
    std::iota(keys.begin(), keys.end(), 0);
    return keys;
}

std::vector<std::int64_t> reversed_keys() {
    std::vector<std::int64_t> keys = sorted_keys();
    std::reverse(keys.begin(), keys.end());
    return keys;
}

std::vector<std::int64_t> equal_keys() { return std::vector<std::int64_t>(element_count, 7); }

std::vector<std::int64_t> ten_values() {
    std::mt19937_64 random(1);
    std::vector<std::int64_t> keys(element_count);
    std::generate(keys.begin(), keys.end(), [&] { return static_cast<std::int64_t>(random() % 10); });
    return keys;
}

std::vector<const char*> names() {
    static const std::vector<std::string> texts = [] {
        std::mt19937_64 random(1);
        std::vector<std::string> all(element_count);
        std::generate(all.begin(), all.end(), [&] { return "net_" + std::to_string(random() % 1'000'000); });
        return all;
    }();
    std::vector<const char*> keys;
    for (const std::string& text : texts) keys.push_back(text.c_str());
    return keys;
}

template <class Element, class Sort, class Key>
void measure(benchmark::State& state, std::vector<Key> (*make_keys)()) {
    std::vector<Element> unsorted(element_count);
    const std::vector<Key> keys = make_keys();
    for (std::size_t i = 0; i < element_count; ++i) unsorted[i].key = keys[i];
    std::vector<Element> elements(element_count);
    for (auto _ : state) {
        state.PauseTiming();
        elements = unsorted;
        state.ResumeTiming();
        Sort::sort(elements);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(element_count) * state.iterations());
}

template <class Element, class Key>
void add_case(const std::string& name, std::vector<Key> (*make_keys)()) {
    benchmark::RegisterBenchmark((name + "/ours").c_str(), measure<Element, Ours<Element>, Key>, make_keys);
    benchmark::RegisterBenchmark((name + "/glibc_qsort").c_str(), measure<Element, GlibcQsort<Element>, Key>,
                                 make_keys);
    benchmark::RegisterBenchmark((name + "/std_sort").c_str(), measure<Element, StdSort<Element>, Key>, make_keys);
}

const bool cases = [] {
    add_case<Eight>("sort/8_bytes/random", random_keys);
    add_case<Eight>("sort/8_bytes/sorted", sorted_keys);
    add_case<Eight>("sort/8_bytes/reversed", reversed_keys);
    add_case<Eight>("sort/8_bytes/all_equal", equal_keys);
    add_case<Eight>("sort/8_bytes/ten_values", ten_values);
    add_case<Sixteen>("sort/16_bytes/random", random_keys);
    add_case<Named>("sort/16_bytes/names", names);
    return true;
}();

}  // namespace
