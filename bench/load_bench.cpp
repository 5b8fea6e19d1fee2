// Loading the library beside loading another general services library. Each load happens in a child process of its own,
// since a library may refuse to be unloaded; the parent has the C++ runtime loaded already, as every application of the
// library has.

#include "ratio.h"

#include <benchmark/benchmark.h>

#include <chrono>

#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

const bool bars = orvix::bench::bar("dlopen", "GLib", 0.9);

// Seconds that dlopen takes in a fresh child; negative on failure.
double load_once(const char* library) {
    int ends[2];
    if (pipe(ends) != 0) return -1;
    const pid_t child = fork();
    if (child == 0) {
        const auto start = std::chrono::steady_clock::now();
        const bool loaded = dlopen(library, RTLD_NOW | RTLD_LOCAL) != nullptr;
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
        const double seconds = loaded ? taken.count() : -1;
        const bool told = write(ends[1], &seconds, sizeof seconds) == sizeof seconds;
        _exit(told ? 0 : 1);
    }
    double seconds = -1;
    if (read(ends[0], &seconds, sizeof seconds) != sizeof seconds) seconds = -1;
    close(ends[0]);
    close(ends[1]);
    waitpid(child, nullptr, 0);
    return seconds;
}

void load(benchmark::State& state, const char* library) {
    for (auto _ : state) {
        const double seconds = load_once(library);
        if (seconds < 0) {
            state.SkipWithError("the library cannot be loaded");
            break;
        }
        state.SetIterationTime(seconds);
    }
}

BENCHMARK_CAPTURE(load, ours, ORVIX_GSL_LIBRARY)->Name("dlopen/ours")->UseManualTime()->Iterations(200);
BENCHMARK_CAPTURE(load, peer, "libglib-2.0.so.0")->Name("dlopen/GLib")->UseManualTime()->Iterations(200);

}  // namespace
