// The tree beside the standard library's map, both ordered by one comparison function over opaque items.

#include "ratio.h"

#include <orvix/gsl/avl_tree.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <malloc.h>

namespace {

using orvix::bench::bar;

const bool bars = bar("insert/1000", "std_map", 0.95) && bar("insert/100000", "std_map", 0.82) &&
                  bar("insert/1000000", "std_map", 0.85) && bar("search/1000", "std_map", 0.62) &&
                  bar("search/100000", "std_map", 0.50) && bar("search/1000000", "std_map", 0.62) &&
                  bar("walk/1000", "std_map", 0.35) && bar("walk/100000", "std_map", 0.35) &&
                  bar("walk/1000000", "std_map", 0.35);

struct Item {
    std::uint64_t key;
    std::uint64_t payload;
};

int compare_items(const void* a, const void* b) {
    const std::uint64_t x = static_cast<const Item*>(a)->key;
    const std::uint64_t y = static_cast<const Item*>(b)->key;
    return (x > y) - (x < y);
}

using Comparison = int (*)(const void*, const void*);
using Visitor = bool (*)(void*, void*);

// Items in random order of their keys, and enough work on them that no processor learns the order of the comparisons
// by heart: trees of few items are built several times in different orders, and looked into in a long random order.
struct Sample {
    explicit Sample(std::size_t count) : items(count) {
        for (std::size_t i = 0; i < count; ++i) items[i] = {i, i};
        std::mt19937_64 random(count);
        std::shuffle(items.begin(), items.end(), random);
        std::vector<Item*> order;
        for (Item& item : items) order.push_back(&item);
        for (std::size_t filled = 0; filled < 100000; filled += count) {
            std::shuffle(order.begin(), order.end(), random);
            orders.push_back(order);
        }
        while (lookups.size() < 200000) lookups.push_back(&items[random() % count]);
    }
    std::vector<Item> items;
    std::vector<std::vector<Item*>> orders;
    std::vector<const Item*> lookups;
};

Sample& sample(std::size_t count) {
    static std::map<std::size_t, Sample> samples;
    return samples.try_emplace(count, count).first->second;
}

// A loaded pointer, so that neither side sees through the call.
Comparison comparison() {
    static Comparison volatile compare = compare_items;
    return compare;
}

class Tree {
public:
    Tree() { avltree_init(&root_); }
    ~Tree() { avltree_free(&root_, nullptr); }
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;

    void fill(const std::vector<Item*>& order) {
        const Comparison compare = comparison();
        for (Item* const item : order) avltree_insert(&root_, compare, item, nullptr);
    }
    void* search(const Item* key) { return avltree_search(&root_, compare_, key); }
    void walk(Visitor visit, void* user) { avltree_foreach(&root_, visit, user); }

private:
    tree_s* root_;
    Comparison compare_ = comparison();
};

class Map {
public:
    void fill(const std::vector<Item*>& order) {
        for (Item* const item : order) map_.insert_or_assign(item, item);
    }
    void* search(const Item* key) { return map_.find(key)->second; }
    void walk(Visitor visit, void* user) {
        for (const auto& [key, item] : map_) {
            if (!visit(item, user)) return;
        }
    }

private:
    struct Before {
        Comparison compare;
        bool operator()(const void* a, const void* b) const { return compare(a, b) < 0; }
    };
    std::map<const void*, void*, Before> map_{Before{comparison()}};
};

// Gives the heap back, so that nobody is measured on the scattered pieces that an earlier run left.
void clean_heap() { malloc_trim(0); }

template <class Container>
void insert(benchmark::State& state, std::size_t count) {
    const Sample& from = sample(count);
    clean_heap();
    for (auto _ : state) {
        std::vector<std::unique_ptr<Container>> all;
        for (const auto& order : from.orders) {
            all.push_back(std::make_unique<Container>());
            all.back()->fill(order);
        }
        state.PauseTiming();
        all.clear();
        state.ResumeTiming();
    }
}

template <class Container>
void search(benchmark::State& state, std::size_t count) {
    const Sample& from = sample(count);
    clean_heap();
    Container container;
    container.fill(from.orders.front());
    for (auto _ : state) {
        for (const Item* const key : from.lookups) benchmark::DoNotOptimize(container.search(key));
    }
}

bool add_key(void* item, void* sum) {
    *static_cast<std::uint64_t*>(sum) += static_cast<const Item*>(item)->key;
    return true;
}

template <class Container>
void walk(benchmark::State& state, std::size_t count) {
    static Visitor volatile visit = add_key;
    const Sample& from = sample(count);
    clean_heap();
    Container container;
    container.fill(from.orders.front());
    for (auto _ : state) {
        std::uint64_t sum = 0;
        container.walk(visit, &sum);
        benchmark::DoNotOptimize(sum);
    }
}

bool register_all() {
    for (const std::size_t count : {1000U, 100000U, 1000000U}) {
        const auto add = [&](const std::string& operation, auto ours, auto peer) {
            const std::string name = operation + "/" + std::to_string(count) + "/";
            benchmark::RegisterBenchmark((name + "ours").c_str(), ours, count);
            benchmark::RegisterBenchmark((name + "std_map").c_str(), peer, count);
        };
        add("insert", insert<Tree>, insert<Map>);
        add("search", search<Tree>, search<Map>);
        add("walk", walk<Tree>, walk<Map>);
    }
    return true;
}

const bool registered = register_all();

}  // namespace
