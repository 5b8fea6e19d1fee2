// Canonical names beside the C library's realpath and std::filesystem, and the search along a path list beside a loop
// of std::filesystem::is_regular_file, on a small project on the disk.

#include "ratio.h"

#include <orvix/gsl/canonical_names.h>
#include <orvix/gsl/status.h>

#include <benchmark/benchmark.h>

#include <climits>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

const bool bars = orvix::bench::bar("canonical/here", "realpath", 0.40) &&
                  orvix::bench::bar("canonical/below", "realpath", 0.40) &&
                  orvix::bench::bar("canonical/absolute", "realpath", 0.06);

constexpr int library_count = 8;

// A project directory, which is entered, with a layout in it and one below, and eight libraries, of which the last
// holds a part.
class SampleProject {
public:
    SampleProject()
        : before_(fs::current_path()),
          top_(fs::temp_directory_path() / ("orvix_names_bench_" + std::to_string(std::random_device()()))) {
        fs::create_directories(top_ / "layouts");
        std::ofstream(top_ / name_here());
        std::ofstream(top_ / name_below());
        for (const fs::path& library : libraries()) fs::create_directories(library);
        std::ofstream(libraries().back() / part());
        fs::current_path(top_);
    }
    ~SampleProject() {
        fs::current_path(before_);
        fs::remove_all(top_);
    }
    SampleProject(const SampleProject&) = delete;
    SampleProject& operator=(const SampleProject&) = delete;

    static std::string name_here() { return "output_stage.cfg"; }
    static std::string name_below() { return "layouts/output_stage.cfg"; }
    static std::string part() { return "transistor.s2p"; }
    std::string host_name() const { return (top_ / name_below()).string(); }
    std::vector<fs::path> libraries() const {
        std::vector<fs::path> all;
        for (int i = 0; i < library_count; ++i) all.push_back(top_ / ("library_" + std::to_string(i)));
        return all;
    }

private:
    fs::path before_;
    fs::path top_;
};

const SampleProject& sample() {
    static const SampleProject project;
    return project;
}

// Calls `function(name)` over and over.
template <class Function>
void measure(benchmark::State& state, const std::string& name, Function function) {
    for (auto _ : state) {
        const char* text = name.c_str();
        benchmark::DoNotOptimize(text);
        benchmark::DoNotOptimize(function(text));
        benchmark::ClobberMemory();
    }
}

char out[PATH_MAX];

void here_ours(benchmark::State& state) {
    sample();
    measure(state, SampleProject::name_here(), [](const char* name) { return HX_canonical_path(name, out); });
}
BENCHMARK(here_ours)->Name("canonical/here/ours");

void here_peer(benchmark::State& state) {
    sample();
    measure(state, SampleProject::name_here(), [](const char* name) { return realpath(name, out); });
}
BENCHMARK(here_peer)->Name("canonical/here/realpath");

void below_ours(benchmark::State& state) {
    sample();
    measure(state, SampleProject::name_below(), [](const char* name) { return HX_canonical_path(name, out); });
}
BENCHMARK(below_ours)->Name("canonical/below/ours");

void below_peer(benchmark::State& state) {
    sample();
    measure(state, SampleProject::name_below(), [](const char* name) { return realpath(name, out); });
}
BENCHMARK(below_peer)->Name("canonical/below/realpath");

void below_standard(benchmark::State& state) {
    sample();
    measure(state, SampleProject::name_below(),
            [](const char* name) { return fs::absolute(name).lexically_normal().native().size(); });
}
BENCHMARK(below_standard)->Name("canonical/below/std_filesystem");

void absolute_ours(benchmark::State& state) {
    measure(state, "C:" + sample().host_name(), [](const char* name) { return HX_canonical_path(name, out); });
}
BENCHMARK(absolute_ours)->Name("canonical/absolute/ours");

void absolute_peer(benchmark::State& state) {
    measure(state, sample().host_name(), [](const char* name) { return realpath(name, out); });
}
BENCHMARK(absolute_peer)->Name("canonical/absolute/realpath");

void absolute_standard(benchmark::State& state) {
    measure(state, sample().host_name(),
            [](const char* name) { return fs::path(name).lexically_normal().native().size(); });
}
BENCHMARK(absolute_standard)->Name("canonical/absolute/std_filesystem");

void forced_ours(benchmark::State& state) {
    measure(state, "C:" + sample().host_name(), [](const char* name) { return HX_canonical_path_force(name, out); });
}
BENCHMARK(forced_ours)->Name("forced/known_directory/ours");

void forced_peer(benchmark::State& state) {
    measure(state, sample().host_name(), [](const char* name) { return realpath(name, out); });
}
BENCHMARK(forced_peer)->Name("forced/known_directory/realpath");

void find_ours(benchmark::State& state) {
    std::string search_path;
    for (const fs::path& library : sample().libraries()) search_path += "C:" + library.string() + ';';
    search_path.pop_back();
    measure(state, SampleProject::part(), [&](const char* name) {
        char* const found = HX_find_file(name, search_path.c_str(), false);
        const bool result = found != nullptr;
        gmem_ee_free(found);
        return result;
    });
}
BENCHMARK(find_ours)->Name("find/eighth_directory/ours");

void find_peer(benchmark::State& state) {
    const std::vector<fs::path> libraries = sample().libraries();
    measure(state, SampleProject::part(), [&](const char* name) {
        for (const fs::path& library : libraries) {
            if (fs::is_regular_file(library / name)) return true;
        }
        return false;
    });
}
BENCHMARK(find_peer)->Name("find/eighth_directory/std_filesystem");

}  // namespace
