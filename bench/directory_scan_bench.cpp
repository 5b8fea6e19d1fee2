// Directory scan and stat beside the standard library's directory iterator, over 1,000 small files.

#include "ratio.h"

#include <orvix/gsl/directory_scan.h>

#include <benchmark/benchmark.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

namespace fs = std::filesystem;

namespace {

const bool bars = orvix::bench::bar("scan/names", "std_filesystem", 0.45) &&
                  orvix::bench::bar("scan/names_and_sizes", "std_filesystem", 0.85);

constexpr int file_count = 1000;

// A directory in memory with files of 100 bytes, gone at the end of the program.
class SampleDirectory {
public:
    SampleDirectory() : path_(fs::path("/dev/shm") / ("orvix_scan_bench_" + std::to_string(std::random_device()()))) {
        fs::create_directory(path_);
        for (int i = 0; i < file_count; ++i) {
            std::ofstream(path_ / ("measurement_" + std::to_string(i) + ".s2p")) << std::string(100, 'x');
        }
    }
    ~SampleDirectory() { fs::remove_all(path_); }
    SampleDirectory(const SampleDirectory&) = delete;
    SampleDirectory& operator=(const SampleDirectory&) = delete;

    const fs::path& host() const { return path_; }
    std::string name() const { return "C:" + path_.string(); }

private:
    fs::path path_;
};

const SampleDirectory& sample() {
    static const SampleDirectory directory;
    return directory;
}

void names_ours(benchmark::State& state) {
    const std::string name = sample().name();
    for (auto _ : state) {
        std::size_t bytes = 0;
        orvix::gsl::_dirdesc* scan = orvix::gsl::opendir(name.c_str());
        while (const orvix::gsl::dirent* entry = orvix::gsl::readdir(scan)) bytes += entry->d_namlen;
        orvix::gsl::closedir(scan);
        benchmark::DoNotOptimize(bytes);
    }
}
BENCHMARK(names_ours)->Name("scan/names/ours");

void names_peer(benchmark::State& state) {
    for (auto _ : state) {
        std::size_t bytes = 0;
        for (const auto& entry : fs::directory_iterator(sample().host())) {
            bytes += entry.path().filename().native().size();
        }
        benchmark::DoNotOptimize(bytes);
    }
}
BENCHMARK(names_peer)->Name("scan/names/std_filesystem");

void sizes_ours(benchmark::State& state) {
    const std::string name = sample().name();
    for (auto _ : state) {
        std::int64_t bytes = 0;
        std::string file = name + '\\';
        const std::size_t directory = file.size();
        orvix::gsl::_dirdesc* scan = orvix::gsl::opendir(name.c_str());
        while (const orvix::gsl::dirent* entry = orvix::gsl::readdir(scan)) {
            if (entry->d_name[0] == '.') continue;
            file.resize(directory);
            file.append(entry->d_name, entry->d_namlen);
            orvix::core::FileStatus status;
            if (gsl_stat_64(file.c_str(), &status) == 0) bytes += status.st_size;
        }
        orvix::gsl::closedir(scan);
        benchmark::DoNotOptimize(bytes);
    }
}
BENCHMARK(sizes_ours)->Name("scan/names_and_sizes/ours");

void sizes_peer(benchmark::State& state) {
    for (auto _ : state) {
        std::uintmax_t bytes = 0;
        for (const auto& entry : fs::directory_iterator(sample().host())) bytes += entry.file_size();
        benchmark::DoNotOptimize(bytes);
    }
}
BENCHMARK(sizes_peer)->Name("scan/names_and_sizes/std_filesystem");

}  // namespace
