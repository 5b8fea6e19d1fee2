// Configuration: loading, reading, expanding and saving settings, beside GLib's key files and the C library's wordexp.
//
// Files lie in memory (/dev/shm where there is one), so that what is measured is work and not a disk.

#include "ratio.h"

#include <orvix/gsl/environment.h>

#include <benchmark/benchmark.h>
#include <glib.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include <gnu/libc-version.h>
#include <time.h>
#include <wordexp.h>

namespace {

namespace fs = std::filesystem;

const bool bars = orvix::bench::bar("load/50", "GKeyFile", 0.50) && orvix::bench::bar("load/1000", "GKeyFile", 0.70) &&
                  orvix::bench::bar("load/10000", "GKeyFile", 1.5) && orvix::bench::bar("get/50", "GKeyFile", 0.50) &&
                  orvix::bench::bar("get/1000", "GKeyFile", 1.0) && orvix::bench::bar("get/10000", "GKeyFile", 3.0) &&
                  orvix::bench::bar("expand_variables", "wordexp", 0.60) &&
                  orvix::bench::bar("save/50", "GKeyFile", 1.5) && orvix::bench::bar("save/10000", "GKeyFile", 1.3) &&
                  orvix::bench::peer_version(
                      "GKeyFile", std::to_string(glib_major_version) + "." + std::to_string(glib_minor_version)) &&
                  orvix::bench::peer_version("wordexp", std::string("glibc ") + gnu_get_libc_version());

// A directory of our own in memory, gone at the end. Temporary files of saves go there too.
class Workplace {
public:
    Workplace() {
        const fs::path parent = fs::is_directory("/dev/shm") ? "/dev/shm" : fs::temp_directory_path();
        directory_ = parent / ("environment_bench_" + std::to_string(std::random_device()()));
        fs::create_directory(directory_);
        setenv("TMPDIR", directory_.c_str(), 1);
        setenv("HOME", (directory_ / "home").c_str(), 1);
        setenv("HXORVIX_DIR", (directory_ / "install").c_str(), 1);
        fs::current_path(directory_);
    }
    ~Workplace() { fs::remove_all(directory_); }
    Workplace(const Workplace&) = delete;
    Workplace& operator=(const Workplace&) = delete;

    std::string file(const std::string& name) const { return (directory_ / name).string(); }

private:
    fs::path directory_;
};

const Workplace& workplace() {
    static const Workplace instance;
    return instance;
}

// As settings of real sites look: families of names with a common prefix, values of some twenty bytes.
struct Settings {
    explicit Settings(std::int64_t count) {
        static constexpr std::array families{"SIM_OPTION_", "LAYOUT_GRID_", "DE_MENU_", "NETLIST_", "PALETTE_COLOR_"};
        std::mt19937 random(1);
        for (std::int64_t i = 0; i < count; ++i) {
            names.push_back(families[static_cast<std::size_t>(i) % families.size()] + std::to_string(i));
            lines += names.back() + "=value " + std::to_string(random()) + "/lib\n";
        }
        std::shuffle(names.begin(), names.end(), random);
    }

    std::vector<std::string> names;  // in random order
    std::string lines;
};

std::string write(const std::string& name, const std::string& text) {
    const std::string path = workplace().file(name);
    std::ofstream(path, std::ios::binary) << text;
    return path;
}

std::string our_file(const Settings& settings) { return write("ours.cfg", settings.lines); }
std::string key_file(const Settings& settings) { return write("peer.ini", "[main]\n" + settings.lines); }

GKeyFile* load_key_file(const std::string& path) {
    GKeyFile* keys = g_key_file_new();
    g_key_file_load_from_file(keys, path.c_str(), G_KEY_FILE_KEEP_COMMENTS, nullptr);
    return keys;
}

void load_ours(benchmark::State& state, std::int64_t count) {
    const std::string path = our_file(Settings(count));
    gui_env_init();
    for (auto _ : state) {
        eeEnv* env = gui_env_open(path.c_str(), ENVLOC_FILE);
        if (env->cwd.used != count) std::abort();
        gui_env_close(env, false);
    }
}

void load_gkeyfile(benchmark::State& state, std::int64_t count) {
    const std::string path = key_file(Settings(count));
    for (auto _ : state) g_key_file_free(load_key_file(path));
}

void get_ours(benchmark::State& state, std::int64_t count) {
    const Settings settings(count);
    eeEnv* env = gui_env_open(our_file(settings).c_str(), ENVLOC_FILE);
    char buffer[100];
    std::size_t i = 0;
    for (auto _ : state) {
        if (gui_env_get(env, settings.names[i].c_str(), buffer, nullptr, sizeof buffer, ENVLOC_ANY) != 0) std::abort();
        benchmark::DoNotOptimize(buffer);
        if (++i == settings.names.size()) i = 0;
    }
    gui_env_close(env, false);
}

void get_gkeyfile(benchmark::State& state, std::int64_t count) {
    const Settings settings(count);
    GKeyFile* keys = load_key_file(key_file(settings));
    std::size_t i = 0;
    for (auto _ : state) {
        char* value = g_key_file_get_string(keys, "main", settings.names[i].c_str(), nullptr);
        if (value == nullptr) std::abort();
        benchmark::DoNotOptimize(value);
        g_free(value);
        if (++i == settings.names.size()) i = 0;
    }
    g_key_file_free(keys);
}

constexpr const char* expanded = "/opt/tools/lib:/home/me/lib:/opt/site/models";

void set_expansion_variables() {
    setenv("TOOL_ROOT", "/opt/tools", 1);
    setenv("USER_HOME", "/home/me", 1);
    setenv("SITE_ROOT", "/opt/site", 1);
}

void expand_variables_ours(benchmark::State& state) {
    set_expansion_variables();
    char buffer[200];
    for (auto _ : state) {
        gui_env_expand_str(buffer, "$TOOL_ROOT/lib:$USER_HOME/lib:$SITE_ROOT/models", sizeof buffer, nullptr);
        benchmark::DoNotOptimize(buffer);
    }
    if (std::string(buffer) != expanded) std::abort();
}

void expand_settings_ours(benchmark::State& state) {
    Settings settings(47);
    settings.lines += "TOOL_ROOT=/opt/tools\nUSER_HOME=/home/me\nSITE_ROOT=/opt/site\n";
    eeEnv* env = gui_env_open(our_file(settings).c_str(), ENVLOC_FILE);
    char buffer[200];
    for (auto _ : state) {
        gui_env_expand_str(buffer, "%TOOL_ROOT/lib:%USER_HOME/lib:%SITE_ROOT/models", sizeof buffer, env, nullptr);
        benchmark::DoNotOptimize(buffer);
    }
    if (std::string(buffer) != expanded) std::abort();
    gui_env_close(env, false);
}

void expand_variables_wordexp(benchmark::State& state) {
    set_expansion_variables();
    for (auto _ : state) {
        wordexp_t words;
        if (wordexp("$TOOL_ROOT/lib:$USER_HOME/lib:$SITE_ROOT/models", &words, WRDE_NOCMD) != 0) std::abort();
        benchmark::DoNotOptimize(words.we_wordv[0]);
        wordfree(&words);
    }
}

double processor_seconds() {
    timespec now;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

// Times what stands in a scope, for loops whose other half must not count.
class IterationTimer {
public:
    explicit IterationTimer(benchmark::State& state) : state_(state) {}
    ~IterationTimer() { state_.SetIterationTime(processor_seconds() - start_); }
    IterationTimer(const IterationTimer&) = delete;
    IterationTimer& operator=(const IterationTimer&) = delete;

private:
    benchmark::State& state_;
    double start_ = processor_seconds();
};

// One changed setting in a file of `count`. An environment is saved when it is closed; opening it again is not timed.
void save_ours(benchmark::State& state, std::int64_t count) {
    const Settings settings(count);
    const std::string path = our_file(settings);
    std::int64_t round = 0;
    for (auto _ : state) {
        eeEnv* env = gui_env_open(path.c_str(), ENVLOC_FILE);
        const IterationTimer timer(state);
        gui_env_put(env, settings.names[0].c_str(), std::to_string(++round).c_str(), ENVLOC_ANY);
        if (!gui_env_close(env, true)) std::abort();
    }
}

void save_gkeyfile(benchmark::State& state, std::int64_t count) {
    const Settings settings(count);
    const std::string path = key_file(settings);
    GKeyFile* keys = load_key_file(path);
    std::int64_t round = 0;
    for (auto _ : state) {
        const IterationTimer timer(state);
        g_key_file_set_string(keys, "main", settings.names[0].c_str(), std::to_string(++round).c_str());
        gsize length = 0;
        char* data = g_key_file_to_data(keys, &length, nullptr);
        std::FILE* file = std::fopen(path.c_str(), "w");
        if (std::fwrite(data, 1, length, file) != length || std::fclose(file) != 0) std::abort();
        g_free(data);
    }
    g_key_file_free(keys);
}

using SizedBenchmark = void (*)(benchmark::State&, std::int64_t);

// The ratio table wants the peer at the end of a name, where Google Benchmark would put arguments.
benchmark::internal::Benchmark* add(const std::string& name, std::int64_t size, const std::string& who,
                                    SizedBenchmark run) {
    return benchmark::RegisterBenchmark((name + "/" + std::to_string(size) + "/" + who).c_str(),
                                        [=](benchmark::State& state) { run(state, size); });
}

const bool registered = [] {
    for (const std::int64_t size : {50, 1000, 10000}) {
        add("load", size, "ours", load_ours);
        add("load", size, "GKeyFile", load_gkeyfile);
        add("get", size, "ours", get_ours);
        add("get", size, "GKeyFile", get_gkeyfile);
    }
    for (const std::int64_t size : {50, 10000}) {
        add("save", size, "ours", save_ours)->UseManualTime();
        add("save", size, "GKeyFile", save_gkeyfile)->UseManualTime();
    }
    benchmark::RegisterBenchmark("expand_variables/ours", expand_variables_ours);
    benchmark::RegisterBenchmark("expand_variables/wordexp", expand_variables_wordexp);
    benchmark::RegisterBenchmark("expand_settings/ours", expand_settings_ours);
    benchmark::RegisterBenchmark("expand_settings/wordexp", expand_variables_wordexp);
    return true;
}();

}  // namespace
