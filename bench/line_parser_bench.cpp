// The line parsers beside strtok_r with strtod, and with from_chars, on lines as the suite reads them. All find the
// same clumps but one kind: bytes that are clumps on their own are only separators to strtok_r. The peers keep their
// tokens in a table, as the parser does whose record holds one; "on_heap" is the parser that allocates for each line.

#include "ratio.h"

#include <orvix/gsl/line_parser.h>
#include <orvix/gsl/memory_parser.h>

#include <benchmark/benchmark.h>

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

struct Sample {
    const char* name;
    const char* delims;
    const char* singles;
    char comment;
    double bar;  // against strtod
    std::vector<std::string> lines;
};

// One engine for all, so that every run sees the same lines.
class Random {
public:
    int number(int from, int to) { return std::uniform_int_distribution<int>(from, to)(engine_); }
    double real(double from, double to) { return std::uniform_real_distribution<double>(from, to)(engine_); }

    template <std::size_t count>
    std::string one_of(const char* const (&words)[count]) {
        return words[number(0, static_cast<int>(count) - 1)];
    }

private:
    std::mt19937 engine_{1};
};

std::string fixed(double value, int decimals) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

constexpr int line_count = 1000;

// A frequency and the magnitudes and angles of four parameters.
std::string touchstone_line(Random& random, int i) {
    std::string line = fixed(0.1 + 0.05 * i, 6);
    for (int parameter = 0; parameter < 4; ++parameter) {
        line += ' ' + fixed(random.real(0, 1), 8) + "  " + fixed(random.real(-180, 180), 6);
    }
    return line;
}

std::string netlist_line(Random& random, int i) {
    const char* const nodes[] = {"0", "vdd", "n12", "out", "gate_1", "net045"};
    const char* const values[] = {"4.7k", "100", "2.2u", "1e-12", "50", "0.35u"};
    const char* const models[] = {"nmos_lv", "pmos_lv", "npn_rf"};
    const std::string number = std::to_string(i + 1);
    switch (random.number(0, 2)) {
        case 0:
            return "R" + number + ' ' + random.one_of(nodes) + ' ' + random.one_of(nodes) + ' ' + random.one_of(values);
        case 1:
            return "C" + number + ' ' + random.one_of(nodes) + ' ' + random.one_of(nodes) + ' ' +
                   random.one_of(values) + " ic=" + random.one_of(values);
        default:
            return "M" + number + ' ' + random.one_of(nodes) + ' ' + random.one_of(nodes) + ' ' + random.one_of(nodes) +
                   " 0 " + random.one_of(models) + " w=" + random.one_of(values) + " l=" + random.one_of(values) +
                   " m=" + std::to_string(random.number(1, 8));
    }
}

std::string board_line(Random& random, int i) {
    const char* const layers[] = {"top", "bottom", "inner_1", "inner_2"};
    const char* const shapes[] = {"circle", "rect", "oblong", "thermal"};
    return "pad \"U" + std::to_string(i % 90) + '.' + std::to_string(random.number(1, 64)) + "\" (" +
           random.one_of(shapes) + ", " + fixed(random.real(-120, 120), 4) + ", " + fixed(random.real(-80, 80), 4) +
           ", " + std::to_string(random.number(10, 400)) + ") layer " + random.one_of(layers) + " net \"N" +
           std::to_string(random.number(1, 900)) + '"';
}

std::string zone_line(Random& random, int) {
    const char* const zones[] = {"Europe/Berlin", "Asia/Tokyo", "America/Denver", "Etc/UTC"};
    const char* const months[] = {"Jan", "Mar", "Jun", "Sep", "Oct"};
    const char* const rules[] = {"EU", "US", "-", "1:00"};
    return random.one_of(zones) + '\t' + std::to_string(random.number(0, 12)) + ":00\t" + random.one_of(rules) +
           "\tCE%sT\t" + std::to_string(random.number(1900, 2030)) + ' ' + random.one_of(months) + ' ' +
           std::to_string(random.number(1, 31)) + ' ' + std::to_string(random.number(0, 23)) + ":00";
}

std::string prose_line(Random& random, int) {
    const char* const words[] = {"the",  "amplifier", "of",   "stage",     "a",       "measured", "is",
                                 "gain", "at",        "with", "frequency", "matched", "to",       "load"};
    std::string line = random.one_of(words);
    for (int i = random.number(7, 13); i > 0; --i) line += ' ' + random.one_of(words);
    return line + '.';
}

Sample make(const char* name, const char* delims, const char* singles, char comment, double bar,
            std::string (*line)(Random&, int)) {
    Sample sample{name, delims, singles, comment, bar, {}};
    Random random;
    for (int i = 0; i < line_count; ++i) sample.lines.push_back(line(random, i));
    return sample;
}

const std::vector<Sample>& samples() {
    static const std::vector<Sample> all{
        make("touchstone", " \t", "", '!', 0.30, touchstone_line),  //
        make("netlist", " \t", "=", '*', 0.36, netlist_line),       //
        make("board", " ,\"\t", "()", '#', 0.42, board_line),       //
        make("zones", " \t", "", '#', 0.42, zone_line),             //
        make("prose", " \t", "", '\0', 0.70, prose_line),
    };
    return all;
}

void parse_ours(const Sample& sample) {
    static parserec record;
    for (const std::string& line : sample.lines) {
        gparse_parline(line.c_str(), sample.delims, sample.singles, sample.comment, &record);
        benchmark::DoNotOptimize(record);
    }
}

void parse_on_heap(const Sample& sample) {
    parserecMem record{};
    for (const std::string& line : sample.lines) {
        if (!gparse_efficient_parline_mem(line.c_str(), sample.delims, sample.singles, sample.comment, &record)) {
            std::abort();
        }
        benchmark::DoNotOptimize(record);
    }
    gparse_efficient_parline_free_mem(&record);
}

struct Token {
    const char* text;
    double value;
    bool is_number;
};

bool read_with_strtod(const char* token, double* value) {
    char* end = nullptr;
    *value = std::strtod(token, &end);
    return *end == '\0';
}

bool read_with_from_chars(const char* token, double* value) {
    const char* const end = token + std::strlen(token);
    return std::from_chars(token, end, *value).ptr == end;
}

// The line is copied, because strtok_r writes to it.
template <bool (*read)(const char*, double*)>
void parse_with_strtok(const Sample& sample) {
    static Token tokens[300];
    static char copy[1024];
    const std::string separators = std::string(sample.delims) + sample.singles;
    for (const std::string& line : sample.lines) {
        std::memcpy(copy, line.c_str(), line.size() + 1);
        if (char* const comment = std::strchr(copy, sample.comment)) *comment = '\0';
        std::size_t count = 0;
        char* rest = nullptr;
        for (char* token = strtok_r(copy, separators.c_str(), &rest); token != nullptr;
             token = strtok_r(nullptr, separators.c_str(), &rest)) {
            Token& entry = tokens[count++];
            entry.text = token;
            entry.is_number = read(token, &entry.value);
        }
        benchmark::DoNotOptimize(tokens);
    }
}

void measure(const Sample& sample, const std::string& name, void (*parse)(const Sample&)) {
    benchmark::RegisterBenchmark(name.c_str(), [&sample, parse](benchmark::State& state) {
        for (auto _ : state) parse(sample);
        state.SetItemsProcessed(state.iterations() * line_count);
    });
}

// All records live, and are parsed again one after the other.
template <auto parse, auto release>
void measure_records(const std::string& name, std::size_t record_count) {
    benchmark::RegisterBenchmark(name.c_str(), [record_count](benchmark::State& state) {
        std::vector<parserecMem> records(record_count);
        const std::string& line = samples()[0].lines[0];
        for (auto _ : state) {
            for (parserecMem& record : records) {
                if (!parse(line.c_str(), " ", "", '\0', &record)) std::abort();
            }
        }
        for (parserecMem& record : records) release(&record);
        state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(record_count));
    });
}

const bool registered = [] {
    for (const Sample& sample : samples()) {
        const std::string name = sample.name;
        orvix::bench::bar(name, "strtok_strtod", sample.bar);
        orvix::bench::bar(name, "strtok_from_chars", 0.75);
        measure(sample, name + "/ours", parse_ours);
        measure(sample, name + "/strtok_strtod", parse_with_strtok<read_with_strtod>);
        measure(sample, name + "/strtok_from_chars", parse_with_strtok<read_with_from_chars>);
        measure(sample, name + "/on_heap/ours", parse_on_heap);
        measure(sample, name + "/on_heap/strtok_strtod", parse_with_strtok<read_with_strtod>);
    }
    for (const std::size_t count : {10U, 1000U}) {
        const std::string name = "live_records/" + std::to_string(count);
        measure_records<gparse_efficient_parline_mem, gparse_efficient_parline_free_mem>(name + "/ours", count);
        measure_records<gparse_parline_mem, gparse_parline_free_mem>(name + "/plain_form", count);
    }
    return true;
}();

}  // namespace
