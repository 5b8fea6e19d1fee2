// Regular expressions beside PCRE2, with its compiler to machine code and without, RE2 and std::regex.

#include "ratio.h"

#include <orvix/gsl/regular_expressions.h>

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <random>
#include <regex>
#include <string>
#include <vector>

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

// The header of RE2 is not clean under the warnings of this project.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wpedantic"
#pragma GCC diagnostic ignored "-Wsign-conversion"
#pragma GCC diagnostic ignored "-Wconversion"
#include <re2/re2.h>
#pragma GCC diagnostic pop

namespace {

// ---------------------------------------------------------------------------------------------------------------------
// The engines. Each compiles a pattern and finds the next match in a text: its end, or null.

class Ours {
public:
    explicit Ours(const std::string& pattern) : record_(gsl_regcomp(pattern.c_str())) {}
    ~Ours() { std::free(record_); }
    Ours(const Ours&) = delete;
    Ours& operator=(const Ours&) = delete;

    const char* find(const char* from, const char*) const {
        return gsl_regexec(record_, from) != 0 ? record_->endp[0] : nullptr;
    }

private:
    __gsl_regexp* record_;
};

template <bool with_jit>
class Pcre2 {
public:
    explicit Pcre2(const std::string& pattern) {
        int error = 0;
        PCRE2_SIZE offset = 0;
        code_ = pcre2_compile(reinterpret_cast<PCRE2_SPTR>(pattern.data()), pattern.size(), PCRE2_DOTALL, &error,
                              &offset, nullptr);
        if (with_jit) pcre2_jit_compile(code_, PCRE2_JIT_COMPLETE);
    }
    ~Pcre2() {
        pcre2_match_data_free(match_);
        pcre2_code_free(code_);
    }
    Pcre2(const Pcre2&) = delete;
    Pcre2& operator=(const Pcre2&) = delete;

    const char* find(const char* from, const char* end) {
        if (match_ == nullptr) match_ = pcre2_match_data_create_from_pattern(code_, nullptr);
        const auto* const text = reinterpret_cast<PCRE2_SPTR>(from);
        const auto length = static_cast<std::size_t>(end - from);
        const int count = with_jit ? pcre2_jit_match(code_, text, length, 0, 0, match_, nullptr)
                                   : pcre2_match(code_, text, length, 0, 0, match_, nullptr);
        return count < 0 ? nullptr : from + pcre2_get_ovector_pointer(match_)[1];
    }

private:
    pcre2_code* code_ = nullptr;
    pcre2_match_data* match_ = nullptr;
};

class Re2 {
public:
    explicit Re2(const std::string& pattern) : regexp_(pattern, options()) {
        groups_.resize(static_cast<std::size_t>(regexp_.NumberOfCapturingGroups()) + 1);
    }

    const char* find(const char* from, const char* end) {
        const re2::StringPiece text(from, static_cast<std::size_t>(end - from));
        return regexp_.Match(text, 0, text.size(), RE2::UNANCHORED, groups_.data(), static_cast<int>(groups_.size()))
                   ? groups_[0].data() + groups_[0].size()
                   : nullptr;
    }

private:
    static RE2::Options options() {
        RE2::Options options(RE2::Latin1);
        options.set_dot_nl(true);
        return options;
    }

    RE2 regexp_;
    std::vector<re2::StringPiece> groups_;
};

class StdRegex {
public:
    explicit StdRegex(const std::string& pattern) : regexp_(pattern) {}

    const char* find(const char* from, const char* end) {
        return std::regex_search(from, end, match_, regexp_) ? match_[0].second : nullptr;
    }

private:
    std::regex regexp_;
    std::cmatch match_;
};

// ---------------------------------------------------------------------------------------------------------------------
// What is measured

template <class Engine>
void compile(benchmark::State& state, const std::string& pattern) {
    for (auto _ : state) {
        Engine engine(pattern);
        benchmark::DoNotOptimize(engine);
    }
}

// One search.
template <class Engine>
void search(benchmark::State& state, const std::string& pattern, const std::string& text) {
    Engine engine(pattern);
    for (auto _ : state) benchmark::DoNotOptimize(engine.find(text.c_str(), text.c_str() + text.size()));
}

// All matches, one behind the other.
template <class Engine>
void find_all(benchmark::State& state, const std::string& pattern, const std::string& text) {
    Engine engine(pattern);
    const char* const end = text.c_str() + text.size();
    std::size_t count = 0;
    for (auto _ : state) {
        count = 0;
        for (const char* at = text.c_str(); (at = engine.find(at, end)) != nullptr;) ++count;
    }
    state.counters["matches"] = static_cast<double>(count);
}

// One search in each line.
template <class Engine>
void search_lines(benchmark::State& state, const std::string& pattern, const std::vector<std::string>& lines) {
    Engine engine(pattern);
    std::size_t count = 0;
    for (auto _ : state) {
        count = 0;
        for (const std::string& line : lines)
            count += engine.find(line.c_str(), line.c_str() + line.size()) != nullptr ? 1U : 0U;
    }
    state.counters["matches"] = static_cast<double>(count);
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(lines.size()));
}

// The bars against PCRE2, PCRE2 with machine code and RE2; 0 for none.
struct Bars {
    double pcre2;
    double jit;
    double re2;
};

// ---------------------------------------------------------------------------------------------------------------------
// Texts. One engine of random numbers for each, so that every run sees the same.

std::string prose(std::size_t bytes) {
    const char* const common[] = {"the", "of",  "and",  "a",   "to",   "in",   "is", "that", "it",   "for", "as",
                                  "was", "be",  "with", "on",  "this", "are",  "by", "at",   "from", "or",  "which",
                                  "an",  "has", "not",  "can", "its",  "when", "no", "if",   "will", "each"};
    const char* const other[] = {
        "amplifier", "stage",   "measured", "gain",       "frequency",  "matched",   "load",      "source",
        "noise",     "figure",  "power",    "output",     "input",      "circuit",   "design",    "layout",
        "board",     "signal",  "return",   "loss",       "bandwidth",  "impedance", "resistor",  "capacitor",
        "inductor",  "line",    "length",   "width",      "thickness",  "material",  "substrate", "between",
        "above",     "below",   "through",  "without",    "simulation", "result",    "value",     "table",
        "file",      "model",   "device",   "transistor", "bias",       "current",   "voltage",   "supply",
        "ground",    "plane",   "coupling", "filter",     "response",   "phase",     "using",     "tuning",
        "matching",  "running", "during",   "following",  "setting",    "string",    "spring",    "change",
        "engine",    "single",  "large",    "general",    "begin",      "against",   "program",   "guide"};
    std::mt19937 engine(1);
    const auto number = [&](std::size_t below) {
        return std::uniform_int_distribution<std::size_t>(0, below - 1)(engine);
    };
    std::string text;
    std::size_t line_start = 0;
    bool is_start = true;
    while (text.size() < bytes) {
        std::string word = number(2) == 0 ? common[number(std::size(common))] : other[number(std::size(other))];
        if (is_start) word[0] = static_cast<char>(word[0] - 'a' + 'A');
        is_start = number(14) == 0;
        if (number(120) == 0) word += ' ' + std::to_string(number(3000));
        text += word + (is_start ? "." : number(12) == 0 ? "," : "");
        const bool ends_line = text.size() - line_start > 70;
        text += ends_line ? '\n' : ' ';
        if (ends_line) line_start = text.size();
    }
    return text;
}

const std::string& book() {
    static const std::string text = prose(900000);
    return text;
}

const std::vector<std::string>& board() {
    static const std::vector<std::string> lines = [] {
        std::mt19937 engine(2);
        const auto number = [&](int from, int to) {
            return std::to_string(std::uniform_int_distribution<int>(from, to)(engine));
        };
        const auto place = [&] {
            return number(10, 180) + '.' + number(10, 99) + ' ' + number(10, 120) + '.' + number(10, 99);
        };
        const std::string layers[] = {"F.Cu", "B.Cu", "In1.Cu", "F.SilkS"};
        std::vector<std::string> all;
        for (int i = 0; i < 2000; ++i) {
            const std::string& layer = layers[static_cast<std::size_t>(engine() % 4)];
            switch (engine() % 5) {
                case 0:
                    all.push_back("  (net " + number(1, 400) + " \"/analog/N" + number(1, 400) + "\")");
                    break;
                case 1:
                    all.push_back("    (pad " + number(1, 64) + " smd rect (at " + place() +
                                  ") (size 1.2 0.9) (layers " + layer + " F.Paste F.Mask) (net " + number(1, 400) +
                                  " GND))");
                    break;
                case 2:
                    all.push_back("  (via (at " + place() + ") (size 0.8) (drill 0.4) (layers F.Cu B.Cu) (net " +
                                  number(1, 400) + "))");
                    break;
                case 3:
                    all.push_back("    (fp_text reference R" + number(1, 300) + " (at " + place() + ") (layer " +
                                  layer + ")");
                    break;
                default:
                    all.push_back("  (segment (start " + place() + ") (end " + place() + ") (width 0.25) (layer " +
                                  layer + ") (net " + number(1, 400) + "))");
            }
        }
        return all;
    }();
    return lines;
}

// ---------------------------------------------------------------------------------------------------------------------
// Cases

template <class Type>
struct Kind {
    using Engine = Type;
};

// Registers run(state, Kind<Engine>) for the library and its peers.
template <class Run>
void add(const std::string& name, const Bars& bars, Run run) {
    const auto add_one = [&](const char* who, auto kind) {
        benchmark::RegisterBenchmark((name + '/' + who).c_str(),
                                     [run, kind](benchmark::State& state) { run(state, kind); });
    };
    add_one("ours", Kind<Ours>());
    add_one("PCRE2", Kind<Pcre2<false>>());
    add_one("PCRE2_JIT", Kind<Pcre2<true>>());
    add_one("RE2", Kind<Re2>());
    if (name.starts_with("compile") || name.starts_with("short")) add_one("std_regex", Kind<StdRegex>());
    if (bars.pcre2 > 0) orvix::bench::bar(name, "PCRE2", bars.pcre2);
    if (bars.jit > 0) orvix::bench::bar(name, "PCRE2_JIT", bars.jit);
    if (bars.re2 > 0) orvix::bench::bar(name, "RE2", bars.re2);
}

void add_compile(const std::string& name, const std::string& pattern) {
    add("compile/" + name, {0.40, 0, 0.08},
        [pattern](benchmark::State& state, auto kind) { compile<typename decltype(kind)::Engine>(state, pattern); });
}

void add_short(const std::string& name, const std::string& pattern, const std::string& text) {
    add("short/" + name, {0.70, 3, 0.55}, [pattern, text](benchmark::State& state, auto kind) {
        search<typename decltype(kind)::Engine>(state, pattern, text);
    });
}

void add_board(const std::string& name, const std::string& pattern) {
    add("board/" + name, {0.55, 3, 0.60}, [pattern](benchmark::State& state, auto kind) {
        search_lines<typename decltype(kind)::Engine>(state, pattern, board());
    });
}

void add_search(const std::string& name, const Bars& bars, const std::string& pattern, const std::string& text) {
    add(name, bars, [pattern, text](benchmark::State& state, auto kind) {
        search<typename decltype(kind)::Engine>(state, pattern, text);
    });
}

void add_find_all(const std::string& name, const Bars& bars, const std::string& pattern) {
    add(name, bars, [pattern](benchmark::State& state, auto kind) {
        find_all<typename decltype(kind)::Engine>(state, pattern, book());
    });
}

const bool registered = [] {
    orvix::bench::peer_version("PCRE2", "10.42");
    orvix::bench::peer_version("PCRE2_JIT", "10.42");
    orvix::bench::peer_version("RE2", "2022-06");

    add_compile("literal", "segment");
    add_compile("number", "[-+]?[0-9]+\\.?[0-9]*");
    add_compile("setting", "^([A-Za-z_][A-Za-z0-9_]*) *= *(.*)$");
    add_compile("alternatives", "(resistor|capacitor|inductor|diode)s? +[0-9]+");

    add_short("literal", "net", "  (segment (net 3))");
    add_short("number", "[0-9]+\\.[0-9]+", "width 0.25 mm");
    add_short("setting", "^([A-Za-z_][A-Za-z0-9_]*)=(.*)$", "LINE_WIDTH=0.25");
    add_short("alternatives", "(resistor|capacitor|inductor)", "the capacitor C12");
    add_short("no_match", "^[0-9]+$", "12345a");

    add_search("required/missing", {0, 0.04, 0.06}, "[a-z]*[0-9]*quartz", book());
    add_search("literal/rare_byte", {1.0, 0, 0}, "Quartz", book() + "Quartz");
    add_search("literal/common_byte", {0, 0.60, 0}, "enzyme", book());
    add_search("number_at_end", {0.15, 0, 0}, "[0-9]+$", book() + "4711");
    add_search("alternatives/none", {0.25, 0, 0.50}, "quartz|crystal|oscillator|resonator", book());
    add_find_all("alternatives/all", {0.25, 0, 0.50}, "(substrate|transistor|thickness|bandwidth)");
    add_find_all("find_all/words_in_ing", {0, 0, 1.0}, "[A-Za-z]+ing");
    add_find_all("find_all/numbers", {0, 0, 1.0}, "[0-9]+");
    add_find_all("find_all/groups", {0, 0, 1.0}, "([a-z]+) of ([a-z]+)");

    add_board("tag", "^ *\\((pad|via) ");
    add_board("layer", "\\(layer ([A-Za-z0-9]+)\\.Cu\\)");
    add_board("place", "\\(at ([0-9.]+) ([0-9.]+)\\)");
    add_board("name", "\"([^\"]*)\"");
    add_board("net_at_end", "\\(net ([0-9]+)\\)+$");

    add_search("exponential/alternatives", {0, 0, 50}, "(a|a)*b", std::string(5000, 'a') + "cb");
    add_search("exponential/nested", {0, 0, 50}, "((a*)b)*[cd]", std::string(5000, 'a'));
    add_search("exponential/runs", {0, 0, 50}, "(a+a+)+[bc]", std::string(5000, 'a'));
    return true;
}();

}  // namespace
