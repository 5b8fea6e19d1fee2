// Copies of one file over an existing target beside the standard library's, all in memory.

#include "ratio.h"

#include <orvix/gsl/files.h>

#include <benchmark/benchmark.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

namespace fs = std::filesystem;

namespace {

// A file of whole pages and a copy of it, gone at the end of the scope.
class Sample {
public:
    explicit Sample(std::int64_t bytes)
        : directory_(fs::path("/dev/shm") / ("orvix_copy_bench_" + std::to_string(std::random_device()()))) {
        fs::create_directory(directory_);
        std::ofstream stream(source(), std::ios::binary);
        const std::string page(4096, 'x');
        for (std::int64_t written = 0; written < bytes; written += 4096) stream << page;
        stream.close();
        fs::copy_file(source(), target());
    }
    ~Sample() { fs::remove_all(directory_); }
    Sample(const Sample&) = delete;
    Sample& operator=(const Sample&) = delete;

    fs::path source() const { return directory_ / "measurement.s2p"; }
    fs::path target() const { return directory_ / "copy.s2p"; }

private:
    fs::path directory_;
};

void copy_ours(benchmark::State& state, std::int64_t bytes) {
    const Sample sample(bytes);
    const std::string source = "C:" + sample.source().string();
    const std::string target = "C:" + sample.target().string();
    for (auto _ : state) {
        if (!gfile_copy(source.c_str(), target.c_str())) state.SkipWithError("no copy");
    }
}

void copy_peer(benchmark::State& state, std::int64_t bytes) {
    const Sample sample(bytes);
    const fs::path source = sample.source();
    const fs::path target = sample.target();
    for (auto _ : state) fs::copy_file(source, target, fs::copy_options::overwrite_existing);
}

bool measure(const std::string& name, std::int64_t bytes, double limit) {
    benchmark::RegisterBenchmark((name + "/ours").c_str(), copy_ours, bytes);
    benchmark::RegisterBenchmark((name + "/std_filesystem").c_str(), copy_peer, bytes);
    return orvix::bench::bar(name, "std_filesystem", limit);
}

// The library reads a file whole before it writes it: for a large one, twice the memory to fill.
const bool sizes =
    measure("copy/4_KB", 4096, 0.85) && measure("copy/1_MB", 1 << 20, 1.2) && measure("copy/256_MB", 256 << 20, 2.2);

}  // namespace
