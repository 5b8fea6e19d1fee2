// A tree of 10,000 small files copied and removed, beside the standard library and the system's own program, all in
// memory.

#include "ratio.h"

#include <orvix/gsl/file_trees.h>

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include <spawn.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

const bool bars = orvix::bench::bar("copy_tree", "std_filesystem", 0.85) &&
                  orvix::bench::bar("copy_tree", "cp", 0.85) &&
                  orvix::bench::bar("remove_tree", "std_filesystem", 1.05);

constexpr int directory_count = 100;
constexpr int files_in_directory = 100;
constexpr int file_bytes = 1000;

// A directory with the tree below it, gone at the end of the program.
class Sample {
public:
    Sample() : path_(fs::path("/dev/shm") / ("orvix_tree_bench_" + std::to_string(std::random_device()()))) {
        const std::string bytes(file_bytes, 'x');
        for (int i = 0; i < directory_count; ++i) {
            const fs::path directory = tree() / ("board_" + std::to_string(i));
            fs::create_directories(directory);
            for (int j = 0; j < files_in_directory; ++j) {
                std::ofstream(directory / ("measurement_" + std::to_string(j) + ".s2p")) << bytes;
            }
        }
    }
    ~Sample() { fs::remove_all(path_); }
    Sample(const Sample&) = delete;
    Sample& operator=(const Sample&) = delete;

    fs::path tree() const { return path_ / "tree"; }
    fs::path copy() const { return path_ / "copy"; }

private:
    fs::path path_;
};

const Sample& sample() {
    static const Sample instance;
    return instance;
}

std::string library_name(const fs::path& host) { return "C:" + host.string(); }

bool copy_ours() {
    return gfile_cp(library_name(sample().tree()).c_str(), library_name(sample().copy()).c_str(), true);
}

bool copy_with_filesystem() {
    fs::copy(sample().tree(), sample().copy(), fs::copy_options::recursive);
    return true;
}

bool copy_with_program() {
    std::string words[] = {"cp", "-r", sample().tree().string(), sample().copy().string()};
    char* arguments[] = {words[0].data(), words[1].data(), words[2].data(), words[3].data(), nullptr};
    pid_t child;
    int status = -1;
    if (posix_spawnp(&child, "cp", nullptr, nullptr, arguments, environ) != 0) return false;
    return waitpid(child, &status, 0) == child && status == 0;
}

bool remove_ours() { return gfile_rm(library_name(sample().copy()).c_str(), true); }

bool remove_with_filesystem() { return fs::remove_all(sample().copy()) > directory_count * files_in_directory; }

// Processor time of this process and of its children that have ended.
double processor_seconds() {
    double seconds = 0;
    for (const auto whose : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
        rusage usage{};
        getrusage(whose, &usage);
        for (const timeval& time : {usage.ru_utime, usage.ru_stime}) {
            seconds += static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
        }
    }
    return seconds;
}

// Copies and removes; the time of one of the two counts.
void copy_and_remove(benchmark::State& state, bool (*copy)(), bool (*remove)(), bool copy_counts) {
    sample();
    for (auto _ : state) {
        const double start = processor_seconds();
        if (!copy()) state.SkipWithError("no copy");
        const double middle = processor_seconds();
        if (!remove()) state.SkipWithError("not removed");
        state.SetIterationTime(copy_counts ? middle - start : processor_seconds() - middle);
    }
    state.SetItemsProcessed(state.iterations() * directory_count * files_in_directory);
}

bool measure(const char* name, bool (*copy)(), bool (*remove)(), bool copy_counts) {
    benchmark::RegisterBenchmark(name, copy_and_remove, copy, remove, copy_counts)
        ->Unit(benchmark::kMillisecond)
        ->UseManualTime();
    return true;
}

const bool registered = measure("copy_tree/ours", copy_ours, remove_with_filesystem, true) &&
                        measure("copy_tree/std_filesystem", copy_with_filesystem, remove_with_filesystem, true) &&
                        measure("copy_tree/cp", copy_with_program, remove_with_filesystem, true) &&
                        measure("remove_tree/ours", copy_ours, remove_ours, false) &&
                        measure("remove_tree/std_filesystem", copy_ours, remove_with_filesystem, false);

}  // namespace
