// The hash store beside other stores and maps. Keys of 8 to 16 bytes and values of 32 to 100, if not said otherwise;
// files lie in memory, and the system's cache holds all of them.
//
// Ours "tuned" is told how many pairs to expect, with 8 for each bucket of 1024 bytes, or 17 of 2048 for a million.

#include "ratio.h"
#include "stores.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>
#include <numeric>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <malloc.h>

namespace {

using namespace orvix::bench;
namespace fs = std::filesystem;

const bool bars =
    name_versions() && bar("memory_put_tuned", "Tiny", 0.80) && bar("memory_put_default", "Stash", 1.05) &&
    bar("memory_get_tuned", "Tiny", 0.52) && bar("memory_get_tuned", "unordered_map", 0.30) &&
    bar("memory_get_default", "Tiny", 0.95) && bar("file_put", "Kyoto", 0.50) && bar("file_put", "LMDB", 0.30) &&
    bar("file_get", "GDBM", 0.40) && bar("file_miss", "GDBM", 0.65) && bar("file_replace", "Kyoto", 0.55) &&
    bar("file_delete", "Kyoto", 0.45) && bar("file_put_1e6", "Kyoto", 0.70) && bar("file_get_1e6", "TDB", 0.65) &&
    bar("small_cache_put", "SQLite", 0.60) && bar("small_cache_get", "SQLite", 0.42) && bar("scan", "LMDB", 0.90) &&
    bar("reopen", "TDB", 0.40) && bar("put_4_KiB", "LMDB", 1.0) && bar("get_4_KiB", "Kyoto", 0.35) &&
    bar("put_64_KiB", "Kyoto", 0.70) && bar("get_64_KiB", "Kyoto", 0.80);

struct Shape {
    std::size_t count;
    std::size_t least_value;
    std::size_t most_value;
};

// Texts that lie one behind the other in the order in which they are used, so that nobody waits for them.
class Texts {
public:
    void add(const std::string& text) {
        ends_.push_back(ends_.back() + text.size());
        bytes_ += text;
    }
    std::size_t size() const { return ends_.size() - 1; }
    std::string_view operator[](std::size_t i) const {
        return std::string_view(bytes_).substr(ends_[i], ends_[i + 1] - ends_[i]);
    }

private:
    std::string bytes_;
    std::vector<std::size_t> ends_{0};
};

// Pairs in random order, the same keys in another one, and keys that nobody stores. Values are pieces of one random
// text: they are hot in the processor's cache as those of an application are that has just made them.
struct Workload {
    explicit Workload(const Shape& shape) {
        std::mt19937_64 random(shape.count + shape.most_value);
        constexpr std::size_t text_bytes = std::size_t{64} << 10;
        for (std::size_t i = 0; i < text_bytes + shape.most_value; ++i) text.push_back(letter(&random));
        std::vector<std::size_t> numbers(shape.count);
        std::iota(numbers.begin(), numbers.end(), 0);
        std::vector<std::string> all;
        for (const std::size_t number : numbers) all.push_back(key(&random, "net", number));
        std::shuffle(all.begin(), all.end(), random);
        for (const std::string& key : all) {
            keys.add(key);
            const std::size_t bytes = shape.least_value + random() % (shape.most_value - shape.least_value + 1);
            values.push_back(std::string_view(text).substr(random() % text_bytes, bytes));
        }
        std::shuffle(all.begin(), all.end(), random);
        for (const std::string& key : all) sought.add(key);
        for (const std::size_t number : numbers) absent.add(key(&random, "no!", number));
    }

    std::string text;
    Texts keys;
    std::vector<std::string_view> values;
    Texts sought;
    Texts absent;

private:
    static char letter(std::mt19937_64* random) { return static_cast<char>('a' + (*random)() % 26); }
    static std::string key(std::mt19937_64* random, const std::string& start, std::size_t number) {
        std::string text = start + std::to_string(number);
        const std::size_t bytes = 8 + (*random)() % 9;
        while (text.size() < bytes) text += letter(random);
        return text;
    }
};

const Workload& workload(const Shape& shape) {
    static std::map<std::pair<std::size_t, std::size_t>, Workload> all;
    return all.try_emplace({shape.count, shape.most_value}, shape).first->second;
}

// A directory in memory, gone with the program.
const fs::path& place() {
    static const struct Place {
        Place() { fs::create_directory(path); }
        ~Place() { fs::remove_all(path); }
        fs::path path = fs::path("/dev/shm") / ("orvix_store_bench_" + std::to_string(std::random_device()()));
    } place;
    return place.path;
}

using Open = std::function<Opened(const std::string& path, bool is_new)>;

bool fill(KeyValueStore* store, const Workload& work) {
    for (std::size_t i = 0; i < work.keys.size(); ++i) {
        if (!store->put(work.keys[i], work.values[i])) return false;
    }
    return true;
}

// The values of all keys, so that nothing is measured that finds nothing.
std::int64_t get_all(KeyValueStore* store, const Texts& keys) {
    std::int64_t sum = 0;
    for (std::size_t i = 0; i < keys.size(); ++i) sum += store->get(keys[i]);
    return sum;
}

// One store under measurement: how it is opened, and once it is filled, the store itself.
class Candidate {
public:
    Candidate(std::string name, Open open) : name_(std::move(name)), open_(std::move(open)) {}

    const std::string& name() const { return name_; }
    Opened open(const std::string& file, bool is_new) const {
        return open_((place() / (name_ + file)).string(), is_new);
    }
    void remove(const std::string& file) const {
        fs::remove_all(place() / (name_ + file));
        fs::remove(place() / (name_ + file + "-lock"));
    }

    KeyValueStore& filled(const Shape& shape) {
        Opened& store = filled_[shape.count + shape.most_value];
        if (store == nullptr) {
            const std::string file = "filled" + std::to_string(shape.count + shape.most_value);
            store = open(file, true);
            fill(store.get(), workload(shape));
        }
        return *store;
    }

private:
    std::string name_;
    Open open_;
    std::map<std::size_t, Opened> filled_;
};

using Candidates = std::vector<std::shared_ptr<Candidate>>;

void put(benchmark::State& state, const std::shared_ptr<Candidate>& candidate, Shape shape) {
    const Workload& work = workload(shape);
    malloc_trim(0);
    for (auto _ : state) {
        Opened store = candidate->open("put", true);
        if (!fill(store.get(), work)) return state.SkipWithError("put");
        store.reset();  // files are complete only then
        state.PauseTiming();
        candidate->remove("put");
        state.ResumeTiming();
    }
}

// The same without the time that memory takes to be given back. Each store begins with a heap that has none to spare,
// as the first one of a program does.
void put_in_memory(benchmark::State& state, const std::shared_ptr<Candidate>& candidate, Shape shape) {
    const Workload& work = workload(shape);
    malloc_trim(0);
    for (auto _ : state) {
        Opened store = candidate->open("", true);
        if (!fill(store.get(), work)) return state.SkipWithError("put");
        state.PauseTiming();
        store.reset();
        malloc_trim(0);
        state.ResumeTiming();
    }
}

void get(benchmark::State& state, const std::shared_ptr<Candidate>& candidate, Shape shape) {
    const Workload& work = workload(shape);
    KeyValueStore& store = candidate->filled(shape);
    if (store.get(work.sought[0]) == -1) return state.SkipWithError("get");
    for (auto _ : state) benchmark::DoNotOptimize(get_all(&store, work.sought));
}

void miss(benchmark::State& state, const std::shared_ptr<Candidate>& candidate, Shape shape) {
    const Workload& work = workload(shape);
    KeyValueStore& store = candidate->filled(shape);
    if (store.get(work.absent[0]) != -1) return state.SkipWithError("miss");
    for (auto _ : state) benchmark::DoNotOptimize(get_all(&store, work.absent));
}

void replace(benchmark::State& state, const std::shared_ptr<Candidate>& candidate, Shape shape) {
    const Workload& work = workload(shape);
    KeyValueStore& store = candidate->filled(shape);
    for (auto _ : state) {
        for (std::size_t i = 0; i < work.sought.size(); ++i) store.put(work.sought[i], work.values[i]);
    }
}

void del(benchmark::State& state, const std::shared_ptr<Candidate>& candidate, Shape shape) {
    const Workload& work = workload(shape);
    for (auto _ : state) {
        state.PauseTiming();
        Opened store = candidate->open("del", true);
        fill(store.get(), work);
        store->get(work.sought[0]);
        state.ResumeTiming();
        for (std::size_t i = 0; i < work.sought.size(); ++i) store->del(work.sought[i]);
        state.PauseTiming();
        store.reset();
        candidate->remove("del");
        state.ResumeTiming();
    }
}

void scan(benchmark::State& state, const std::shared_ptr<Candidate>& candidate, Shape shape) {
    KeyValueStore& store = candidate->filled(shape);
    for (auto _ : state) benchmark::DoNotOptimize(store.scan());
}

void reopen(benchmark::State& state, const std::shared_ptr<Candidate>& candidate, Shape shape) {
    const Workload& work = workload(shape);
    {
        Opened store = candidate->open("reopened", true);
        fill(store.get(), work);
    }
    std::size_t i = 0;
    for (auto _ : state) {
        Opened store = candidate->open("reopened", false);
        benchmark::DoNotOptimize(store->get(work.sought[i++ % work.sought.size()]));
    }
    candidate->remove("reopened");
}

Candidates candidates(std::initializer_list<std::pair<const char*, Open>> list) {
    Candidates all;
    for (const auto& [name, open] : list) all.push_back(std::make_shared<Candidate>(name, open));
    return all;
}

Open ours(const Tuning& tuning) {
    return [=](const std::string& path, bool is_new) { return open_ours(path, is_new, tuning); };
}
Open ours_in_memory(const Tuning& tuning) {
    return [=](const std::string&, bool) { return open_ours("", true, tuning); };
}
Open in_memory(Opened (*open)()) {
    return [=](const std::string&, bool) { return open(); };
}
Open peer(Opened (*open)(const std::string&, bool, const Purpose&), const Purpose& purpose) {
    return [=](const std::string& path, bool is_new) { return open(path, is_new, purpose); };
}

template <class Case>
void measure(const char* name, Case run, const Candidates& all, const Shape& shape) {
    for (const auto& candidate : all) {
        benchmark::RegisterBenchmark((std::string(name) + "/" + candidate->name()).c_str(), run, candidate, shape);
    }
}

constexpr std::uint32_t ample = 1U << 30;
constexpr Shape small{100000, 32, 100};
constexpr Shape many{1000000, 32, 100};
constexpr Shape of_4_kib{5000, 4096, 4096};
constexpr Shape of_64_kib{1000, 65536, 65536};
constexpr Tuning tuned{1024, 8, 100000, ample};

void register_memory() {
    const auto all = [](const Tuning& tuning) {
        return candidates({{"ours", ours_in_memory(tuning)},
                           {"Tiny", in_memory(open_tkrzw_tiny)},
                           {"Stash", in_memory(open_kyoto_stash)},
                           {"unordered_map", in_memory(open_unordered_map)},
                           {"flat_hash_map", in_memory(open_flat_hash_map)}});
    };
    const Candidates with_tuned = all(tuned);
    measure("memory_put_tuned", put_in_memory, with_tuned, small);
    measure("memory_get_tuned", get, with_tuned, small);
    const Candidates with_default = all({0, 0, 0, ample});
    measure("memory_put_default", put_in_memory, with_default, small);
    measure("memory_get_default", get, with_default, small);
}

void register_files() {
    const Purpose purpose{100000, 0};
    const Candidates all = candidates({{"ours", ours(tuned)},
                                       {"Kyoto", peer(open_kyoto_hash, purpose)},
                                       {"Kyoto_default", peer(open_kyoto_hash, {})},
                                       {"tkrzw", peer(open_tkrzw_hash, purpose)},
                                       {"GDBM", peer(open_gdbm, purpose)},
                                       {"TDB", peer(open_tdb, purpose)},
                                       {"LMDB", peer(open_lmdb, purpose)},
                                       {"SQLite", peer(open_sqlite, purpose)},
                                       {"LevelDB", peer(open_leveldb, purpose)}});
    measure("file_put", put, all, small);
    measure("file_get", get, all, small);
    measure("file_miss", miss, all, small);
    measure("file_replace", replace, all, small);
    measure("file_delete", del, all, small);
    measure("scan", scan, {all[0], all[6]}, small);
    measure("reopen", reopen, {all[0], all[5]}, small);

    const Purpose for_many{1000000, 0};
    const Candidates with_many = candidates({{"ours", ours({2048, 17, 1000000, ample})},
                                             {"Kyoto", peer(open_kyoto_hash, for_many)},
                                             {"Kyoto_default", peer(open_kyoto_hash, {})},
                                             {"TDB", peer(open_tdb, for_many)},
                                             {"LMDB", peer(open_lmdb, for_many)}});
    measure("file_put_1e6", put, with_many, many);
    measure("file_get_1e6", get, with_many, many);

    const Purpose with_small_cache{100000, 65536};
    const Candidates cached = candidates({{"ours", ours({1024, 8, 100000, 65536})},
                                          {"SQLite", peer(open_sqlite, with_small_cache)},
                                          {"GDBM", peer(open_gdbm, with_small_cache)}});
    measure("small_cache_put", put, cached, small);
    measure("small_cache_get", get, cached, small);
}

void register_large_values() {
    const auto all = [](const Tuning& tuning, std::size_t count) {
        const Purpose purpose{count, 0};
        return candidates(
            {{"ours", ours(tuning)}, {"LMDB", peer(open_lmdb, purpose)}, {"Kyoto", peer(open_kyoto_hash, purpose)}});
    };
    const Candidates for_4_kib = all({16384, 3, 5000, ample}, of_4_kib.count);
    measure("put_4_KiB", put, for_4_kib, of_4_kib);
    measure("get_4_KiB", get, for_4_kib, of_4_kib);
    const Candidates for_64_kib = all({4096, 1, 1000, ample}, of_64_kib.count);
    measure("put_64_KiB", put, for_64_kib, of_64_kib);
    measure("get_64_KiB", get, for_64_kib, of_64_kib);
}

const bool registered = (register_memory(), register_files(), register_large_values(), true);

}  // namespace
