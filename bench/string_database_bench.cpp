// The string database beside GLib's balanced tree and the standard library's map, all with keys of their own.

#include "ratio.h"

#include <orvix/gsl/string_database.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <glib.h>
#include <malloc.h>

namespace {

using orvix::bench::bar;

const bool bars = bar("add/100000", "GTree", 0.90) && bar("add/100000", "std_map", 0.90) &&
                  bar("find/100000", "GTree", 0.90) && bar("find/100000", "std_map", 0.90) &&
                  bar("add_paths/100000", "GTree", 0.90) && bar("add_paths/100000", "std_map", 0.90) &&
                  bar("find_paths/100000", "GTree", 0.90) && bar("find_paths/100000", "std_map", 0.90);

const std::string version = std::to_string(GLIB_MAJOR_VERSION) + "." + std::to_string(GLIB_MINOR_VERSION) + "." +
                            std::to_string(GLIB_MICRO_VERSION);
const bool versions = orvix::bench::peer_version("GTree", version);

constexpr std::size_t key_count = 100000;

// Keys in random order and the same keys in the order of the look-ups, other strings at other addresses.
struct Keys {
    explicit Keys(std::string (*key)(std::size_t)) {
        for (std::size_t i = 0; i < key_count; ++i) stored.push_back(key(i));
        std::mt19937_64 random(key_count);
        std::shuffle(stored.begin(), stored.end(), random);
        for (int times = 0; times < 2; ++times) sought.insert(sought.end(), stored.begin(), stored.end());
        std::shuffle(sought.begin(), sought.end(), random);
    }
    std::vector<std::string> stored;
    std::vector<std::string> sought;
};

// "NET_004711_WIDTH": the names of settings.
const Keys& names() {
    static const Keys keys([](std::size_t i) {
        const std::string number = std::to_string(i);
        return "NET_" + std::string(6 - number.size(), '0') + number + "_WIDTH";
    });
    return keys;
}

// "C:\projects\board_47\layout\cell_11": directories, which begin alike.
const Keys& paths() {
    static const Keys keys([](std::size_t i) {
        return "C:\\projects\\board_" + std::to_string(i / 100) + "\\layout\\cell_" + std::to_string(i % 100);
    });
    return keys;
}

class Database {
public:
    Database() : db_(HXstringDB_new(nullptr, false)) {}
    ~Database() { db_->destroy(db_); }
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    void add(const std::string& key, void* value) { db_->add(db_, key.c_str(), value); }
    void* find(const std::string& key) { return *db_->find(db_, key.c_str()); }

private:
    HXstringDB* db_;
};

class GLibTree {
public:
    GLibTree() : tree_(g_tree_new_full(compare, nullptr, g_free, nullptr)) {}
    ~GLibTree() { g_tree_destroy(tree_); }
    GLibTree(const GLibTree&) = delete;
    GLibTree& operator=(const GLibTree&) = delete;

    void add(const std::string& key, void* value) { g_tree_insert(tree_, g_strdup(key.c_str()), value); }
    void* find(const std::string& key) { return g_tree_lookup(tree_, key.c_str()); }

private:
    static int compare(const void* a, const void* b, void*) {
        return std::strcmp(static_cast<const char*>(a), static_cast<const char*>(b));
    }
    GTree* tree_;
};

class Map {
public:
    void add(const std::string& key, void* value) { map_.insert_or_assign(key, value); }
    void* find(const std::string& key) { return map_.find(key)->second; }

private:
    std::map<std::string, void*> map_;
};

template <class Container>
void fill(Container* container, const Keys& keys) {
    for (const std::string& key : keys.stored) container->add(key, container);
}

// Gives the heap back, so that nobody is measured on the scattered pieces that an earlier run left.
void clean_heap() { malloc_trim(0); }

template <class Container>
void add(benchmark::State& state, const Keys& (*keys)()) {
    const Keys& from = keys();
    clean_heap();
    for (auto _ : state) {
        auto container = std::make_unique<Container>();
        fill(container.get(), from);
        state.PauseTiming();
        container.reset();
        state.ResumeTiming();
    }
}

template <class Container>
void find(benchmark::State& state, const Keys& (*keys)()) {
    const Keys& from = keys();
    clean_heap();
    Container container;
    fill(&container, from);
    for (auto _ : state) {
        for (const std::string& key : from.sought) benchmark::DoNotOptimize(container.find(key));
    }
}

bool register_all() {
    const auto add_case = [](const std::string& name, const Keys& (*keys)(), auto ours, auto glib, auto standard) {
        const std::string prefix = name + "/" + std::to_string(key_count) + "/";
        benchmark::RegisterBenchmark((prefix + "ours").c_str(), ours, keys);
        benchmark::RegisterBenchmark((prefix + "GTree").c_str(), glib, keys);
        benchmark::RegisterBenchmark((prefix + "std_map").c_str(), standard, keys);
    };
    add_case("add", names, add<Database>, add<GLibTree>, add<Map>);
    add_case("find", names, find<Database>, find<GLibTree>, find<Map>);
    add_case("add_paths", paths, add<Database>, add<GLibTree>, add<Map>);
    add_case("find_paths", paths, find<Database>, find<GLibTree>, find<Map>);
    return true;
}

const bool registered = register_all();

}  // namespace
