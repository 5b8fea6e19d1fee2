// A text file loaded into a record list and read back line by line, beside a vector of strings filled by std::getline.

#include "ratio.h"

#include <orvix/gsl/record_list.h>

#include <benchmark/benchmark.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

const bool bars = orvix::bench::bar("load_and_read/10000", "vector_string", 0.90);

constexpr int line_count = 10'000;

// Lines of a message file, 0 to 100 bytes, most about 40, in memory; gone at the end of the program.
class SampleFile {
public:
    SampleFile() : path_(fs::path("/dev/shm") / ("orvix_list_bench_" + std::to_string(std::random_device()()))) {
        std::mt19937 random(1);
        std::binomial_distribution<> length(100, 0.4);
        std::ofstream stream(path_);
        for (int i = 0; i < line_count; ++i) {
            for (int left = length(random); left > 0; --left) stream << static_cast<char>(' ' + random() % 95);
            stream << '\n';
        }
    }
    ~SampleFile() { fs::remove(path_); }
    SampleFile(const SampleFile&) = delete;
    SampleFile& operator=(const SampleFile&) = delete;

    const fs::path& host() const { return path_; }
    std::string name() const { return "C:" + path_.string(); }

private:
    fs::path path_;
};

const SampleFile& sample() {
    static const SampleFile file;
    return file;
}

void load_and_read_ours(benchmark::State& state) {
    std::string name = sample().name();
    char buffer[1024];
    char message[1024];
    for (auto _ : state) {
        void* list = nullptr;
        int lines = 0;
        if (!glist_create(&list, 0, nullptr, nullptr) || !glist_load(list, name.data(), message) ||
            !glist_query(list, 20, &lines) || lines != line_count) {
            state.SkipWithError("load failed");
        }
        for (unsigned i = 0; i < static_cast<unsigned>(lines); ++i) {
            glist_getstr(list, i, buffer);
            benchmark::ClobberMemory();
        }
        glist_close(list);
    }
}
BENCHMARK(load_and_read_ours)->Name("load_and_read/10000/ours");

void load_and_read_peer(benchmark::State& state) {
    char buffer[1024];
    for (auto _ : state) {
        std::vector<std::string> lines;
        std::ifstream stream(sample().host());
        for (std::string line; std::getline(stream, line);) lines.push_back(line);
        if (lines.size() != line_count) state.SkipWithError("load failed");
        for (const std::string& line : lines) {
            std::memcpy(buffer, line.c_str(), line.size() + 1);
            benchmark::ClobberMemory();
        }
    }
}
BENCHMARK(load_and_read_peer)->Name("load_and_read/10000/vector_string");

}  // namespace
