// Operations on byte strings beside the C and C++ libraries' and GLib's, on names, lines and long texts.

#include "ratio.h"

#include <orvix/gsl/string_utilities.h>

#include <benchmark/benchmark.h>
#include <glib.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

const bool glib =
    orvix::bench::peer_version("GLib", std::to_string(GLIB_MAJOR_VERSION) + '.' + std::to_string(GLIB_MINOR_VERSION));

// Registers one function under "case/who", with the arguments that follow.
template <class Function, class... Arguments>
bool measure(const std::string& name, Function function, Arguments... arguments) {
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) { function(state, arguments...); });
    return true;
}

std::string upper(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::toupper(c); });
    return text;
}

// Prose-like text without the byte "q".
std::string prose(std::size_t bytes) {
    constexpr std::string_view words[] = {"the ",    "line ",  "of ",    "a ",       "design ", "holds ",
                                          "copper ", "layer ", "under ", "another ", "via ",    "net "};
    std::string text;
    for (std::size_t i = 0; text.size() < bytes; ++i) text += words[(i * i + i / 7) % std::size(words)];
    text.resize(bytes);
    return text;
}

// ---------------------------------------------------------------------------------------------------------------------
// Comparison

template <auto compare>
void order(benchmark::State& state, const std::string& a, const std::string& b) {
    for (auto _ : state) {
        const char* first = a.c_str();
        const char* second = b.c_str();
        benchmark::DoNotOptimize(first);
        benchmark::DoNotOptimize(second);
        benchmark::DoNotOptimize(compare(first, second));
    }
}

bool compare_case(const std::string& name, const std::string& a, const std::string& b) {
    return measure("compare/" + name + "/ours", order<orvix::gsl::strcasecmp>, a, b) &&
           measure("compare/" + name + "/libc", order<::strcasecmp>, a, b) &&
           measure("compare/" + name + "/GLib", order<g_ascii_strcasecmp>, a, b);
}

const std::string path = "C:\\Projects\\Amplifier\\Layouts\\Revision_12\\output_stage_v3.cfg";
const bool comparisons =
    compare_case("differs_at_once", path, "D:\\x") && compare_case("name", "OutputStage", "outputstage") &&
    compare_case("path", path, upper(path)) && compare_case("4096", prose(4096), upper(prose(4096)));

const bool natural =
    measure("natural_order/net_names/ours", order<gparse_alpha_numeric_strcasecmp>, "Amplifier_net12",
            "Amplifier_net112") &&
    measure("natural_order/net_names/strverscmp", order<strverscmp>, "Amplifier_net12", "Amplifier_net112");

// ---------------------------------------------------------------------------------------------------------------------
// Search

template <auto find>
void search(benchmark::State& state, const std::string& hay, const std::string& needle) {
    for (auto _ : state) {
        const char* text = hay.c_str();
        benchmark::DoNotOptimize(text);
        benchmark::DoNotOptimize(find(text, needle.c_str()));
    }
}

const char* rfind(const char* hay, const char* needle) {
    const std::size_t at = std::string_view(hay).rfind(needle);
    return at != std::string_view::npos ? hay + at : nullptr;
}

bool find_caseless_case(const std::string& name, const std::string& hay, const std::string& needle) {
    return measure("find_caseless/" + name + "/ours", search<gsl_strcasestr>, hay, needle) &&
           measure("find_caseless/" + name + "/libc",
                   search<[](const char* h, const char* n) { return strcasestr(h, n); }>, hay, needle);
}

bool find_last_case(const std::string& name, const std::string& hay, const std::string& needle, bool peers = true) {
    measure("find_last/" + name + "/ours", search<strrstr>, hay, needle);
    return !peers || (measure("find_last/" + name + "/string_view", search<rfind>, hay, needle) &&
                      measure("find_last/" + name + "/GLib", search<g_strrstr>, hay, needle));
}

const bool searches = find_caseless_case("line_80_at_start", prose(80), "LINE") &&
                      find_caseless_case("line_80_absent", prose(80), "Quartz") &&
                      find_caseless_case("text_1900_absent", prose(1900), "Layers") &&
                      find_caseless_case("text_64K_absent", prose(65536), "Layers") &&
                      find_caseless_case("text_64K_at_start", prose(65536), "line") &&
                      find_caseless_case("text_64K_long_needle", prose(65536), prose(1500) + 'x') &&
                      find_last_case("line_80_near_end", prose(80), "net") &&
                      find_last_case("line_80_absent", prose(80), "quartz") &&
                      find_last_case("text_64K_absent", prose(65536), "layers") &&
                      find_last_case("text_64K_near_match", std::string(65536, 'a'), 'b' + std::string(1000, 'a'));

// ---------------------------------------------------------------------------------------------------------------------
// Columns and clean-up

template <auto justify>
void column(benchmark::State& state) {
    char source[] = "  12.75 mm";
    char field[32];
    for (auto _ : state) {
        benchmark::DoNotOptimize(justify(source, field));
        benchmark::ClobberMemory();
    }
}

const bool columns =
    measure("column/left_20/ours", column<[](char* s, char* d) { return gparse_cpystrn(s, 20, d), 0; }>) &&
    measure("column/left_20/snprintf", column<[](char* s, char* d) { return std::snprintf(d, 32, "%-20.20s", s); }>) &&
    measure("column/right_20/ours", column<[](char* s, char* d) { return gparse_szstrrj(s, 20, d), 0; }>) &&
    measure("column/right_20/snprintf", column<[](char* s, char* d) { return std::snprintf(d, 32, "%20.20s", s); }>) &&
    measure("append/30/ours", column<[](char* s, char* d) {
                d[0] = '\0';
                return gparse_strncat(s, 30, d), gparse_strncat(s, 30, d), 0;
            }>) &&
    measure("append/30/libc", column<[](char* s, char* d) {
                d[0] = '\0';
                return strncat(d, s, 30 - std::strlen(d)), strncat(d, s, 30 - std::strlen(d)), 0;
            }>);

template <auto change>
void in_place(benchmark::State& state, const std::string& text) {
    std::vector<char> buffer(text.size() + 1);
    for (auto _ : state) {
        std::memcpy(buffer.data(), text.c_str(), buffer.size());
        change(buffer.data());
        benchmark::ClobberMemory();
    }
}

bool in_place_cases(const std::string& size, const std::string& text) {
    return measure("upper/" + size + "/ours", in_place<gparse_lowtoup>, text) &&
           measure("upper/" + size + "/toupper", in_place<[](char* s) {
                       for (; *s != '\0'; ++s) *s = static_cast<char>(std::toupper(static_cast<unsigned char>(*s)));
                   }>,
                   text) &&
           measure("upper/" + size + "/GLib", in_place<[](char* s) {
                       for (; *s != '\0'; ++s) *s = g_ascii_toupper(*s);
                   }>,
                   text) &&
           measure("tabs/" + size + "/ours", in_place<gparse_strptab>, text) &&
           measure("tabs/" + size + "/GLib", in_place<[](char* s) { g_strdelimit(s, "\t", ' '); }>, text);
}

const bool changes = in_place_cases("name_11", "OutputStage") && in_place_cases("text_4096", prose(4096)) &&
                     measure("strip/line/ours", in_place<[](char* s) { gparse_strpbl(s, s); }>, "   of a line   ") &&
                     measure("strip/line/GLib", in_place<[](char* s) { g_strstrip(s); }>, "   of a line   ") &&
                     measure("similar/names/ours", order<gparse_simstr>, "  Output Stage ", "output stage");

// ---------------------------------------------------------------------------------------------------------------------
// Lines and file names

std::string lines() {
    std::string text = prose(20000);
    for (std::size_t i = 60; i < text.size(); i += 61) text[i] = '\n';
    return text;
}

void lines_ours(benchmark::State& state) {
    std::string text = lines();
    char line[256];
    for (auto _ : state) {
        for (char* rest = text.data(); rest != nullptr;) {
            rest = astr_extract_line_from_multilines(rest, line, 255);
            benchmark::DoNotOptimize(line);
        }
    }
}

void lines_getline(benchmark::State& state) {
    const std::string text = lines();
    std::string line;
    for (auto _ : state) {
        std::istringstream stream(text);
        while (std::getline(stream, line)) benchmark::DoNotOptimize(line);
    }
}

void lines_memccpy(benchmark::State& state) {
    const std::string text = lines();
    char line[256];
    for (auto _ : state) {
        const char* end = text.c_str() + text.size();
        for (const char* rest = text.c_str(); rest != end;) {
            const auto left = std::min<std::size_t>(255, static_cast<std::size_t>(end - rest));
            const auto* stop = static_cast<char*>(memccpy(line, rest, '\n', left));
            const std::size_t taken = stop != nullptr ? static_cast<std::size_t>(stop - line) : left;
            rest += taken;
            benchmark::DoNotOptimize(line);
        }
    }
}

const bool line_cases = measure("lines/20K/ours", lines_ours) && measure("lines/20K/getline", lines_getline) &&
                        measure("lines/20K/memccpy", lines_memccpy);

void add_extent_ours(benchmark::State& state) {
    for (auto _ : state) {
        char* name = astr_add_extent(path.c_str(), ".bak");
        benchmark::DoNotOptimize(name);
        astr_free_string(name);
    }
}

void add_extent_string(benchmark::State& state) {
    for (auto _ : state) {
        std::string name = path.c_str();
        if (!name.ends_with(".bak")) name += ".bak";
        std::replace(name.begin(), name.end(), '/', '\\');
        benchmark::DoNotOptimize(name);
    }
}

const bool extents =
    measure("add_extent/path/ours", add_extent_ours) && measure("add_extent/path/string", add_extent_string);

}  // namespace
