// Name rules beside what does comparable jobs on bytes: searches for a byte of a set, and GLib's replacements.

#include "ratio.h"

#include <orvix/gsl/name_rules.h>
#include <orvix/gsl/string_utilities.h>

#include <benchmark/benchmark.h>
#include <glib.h>

#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace {

const bool glib =
    orvix::bench::peer_version("GLib", std::to_string(GLIB_MAJOR_VERSION) + '.' + std::to_string(GLIB_MINOR_VERSION));

constexpr char illegal_in_components[] = "~*()[]{}/\\<>?,:\" \t|';.";
constexpr char special[] = "~*()[]{}/\\<>?,:\" \t|';+-=^$%.`@#&!";

bool by_strpbrk(const char* name) { return std::strpbrk(name, illegal_in_components) == nullptr; }

bool by_find_first_of(const char* name) {
    return std::string_view(name).find_first_of(illegal_in_components) == std::string_view::npos;
}

bool ours(const char* name) { return astr_qds_valid_name(name, 0, false) == nullptr; }

// What the name is made of is hidden from the compiler.
template <auto test>
void on_name(benchmark::State& state, const std::string& name) {
    const char* text = name.c_str();
    for (auto _ : state) {
        benchmark::DoNotOptimize(text);
        benchmark::DoNotOptimize(test(text));
    }
}

// A repair in a buffer: each round copies the name and changes the copy.
template <auto change>
void on_copy(benchmark::State& state, const std::string& name) {
    std::vector<char> in(name.c_str(), name.c_str() + name.size() + 1);
    std::vector<char> out(in.size());
    for (auto _ : state) {
        char* text = in.data();
        benchmark::DoNotOptimize(text);
        change(text, out.data());
        benchmark::ClobberMemory();
    }
}

void repair(char* name, char* out) { astr_qds_get_valid_name(name, 0, true, '_', out); }

void repair_by_strdelimit(char* name, char* out) { g_strdelimit(std::strcpy(out, name), illegal_in_components, '_'); }

void translate(char* name, char*) {
    char* const result = astr_translate_qds_dataset_name(name);
    benchmark::DoNotOptimize(result);
    astr_free_string(result);
}

void translate_by_strdelimit(char* name, char*) {
    char* const result = g_strdelimit(g_strdup(name), special, '_');
    benchmark::DoNotOptimize(result);
    g_free(result);
}

template <class Function>
void measure(const std::string& name, Function function, const std::string& text) {
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) { function(state, text); });
}

bool cases(const std::string& size, const std::string& name) {
    measure("valid/" + size + "/ours", on_name<ours>, name);
    measure("valid/" + size + "/strpbrk", on_name<by_strpbrk>, name);
    measure("valid/" + size + "/find_first_of", on_name<by_find_first_of>, name);
    measure("special/" + size + "/ours", on_name<[](const char* s) { return astr_qds_spl_name(s, false); }>, name);
    measure("special/" + size + "/strpbrk", on_name<[](const char* s) { return std::strpbrk(s, special); }>, name);
    std::string faulty = name;
    for (std::size_t i = 5; i < faulty.size(); i += 7) faulty[i] = ' ';
    measure("repair/" + size + "/ours", on_copy<repair>, faulty);
    measure("repair/" + size + "/GLib", on_copy<repair_by_strdelimit>, faulty);
    measure("dataset/" + size + "/ours", on_copy<translate>, faulty);
    measure("dataset/" + size + "/GLib", on_copy<translate_by_strdelimit>, faulty);
    return true;
}

const bool registered = cases("name_11", "OutputStage") &&
                        cases("name_42", "amplifier_output_stage_net_0815_upper_left") &&
                        cases("text_4096", std::string(4096, 'n'));

}  // namespace
