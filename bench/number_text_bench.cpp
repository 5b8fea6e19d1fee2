// Number text beside the C++ library's charconv, and the C library's printf and strtod, on the same thousand numbers.

#include "ratio.h"

#include <orvix/gsl/number_text.h>

#include <benchmark/benchmark.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr int count = 1000;

using Reals = std::vector<double>;
using Integers = std::vector<std::int32_t>;
using Texts = std::vector<std::string>;

template <class Function>
auto generated(Function function) {
    std::mt19937_64 engine(1);
    std::vector<decltype(function(engine))> all;
    for (int i = 0; i < count; ++i) all.push_back(function(engine));
    return all;
}

double uniform(std::mt19937_64& engine, double from, double to) {
    return std::uniform_real_distribution<double>(from, to)(engine);
}

// Positions on a board, in millimetres.
Reals positions() {
    return generated([](auto& engine) { return uniform(engine, -1000, 1000); });
}

// Values of components, from femto to tera.
Reals components() {
    return generated([](auto& engine) { return std::pow(10, uniform(engine, -15, 12)); });
}

// Settings as people type them.
Reals settings() {
    return generated([](auto& engine) { return std::round(uniform(engine, 0, 1e5)) / 100; });
}

Integers whole_numbers() {
    return generated([](auto& engine) {
        const double magnitude = std::pow(2, uniform(engine, 0, 31));
        return static_cast<std::int32_t>(engine() % 2 == 0 ? magnitude : -magnitude);
    });
}

Texts net_names() {
    const char* const names[] = {"vdd", "n12", "gate_1", "OUT", "in_p", "Net045", "nmos_lv", "bias"};
    return generated([&](auto& engine) { return std::string(names[engine() % std::size(names)]); });
}

template <class Number>
Texts texts_of(const std::vector<Number>& numbers, std::chars_format format, int precision) {
    Texts texts;
    for (const double number : numbers) {
        char text[400];
        const auto end = std::to_chars(text, std::end(text), number, format, precision).ptr;
        texts.emplace_back(text, end);
    }
    return texts;
}

// Registers "name/who": one round gives each item to the function, and counts as so many.
template <class Item, class Function>
void measure(const std::string& name, const std::vector<Item>& items, Function function) {
    benchmark::RegisterBenchmark(name.c_str(), [items, function](benchmark::State& state) {
        for (auto _ : state) {
            for (const Item& item : items) function(item);
        }
        state.SetItemsProcessed(state.iterations() * count);
    });
}

// ---------------------------------------------------------------------------------------------------------------------
// Writing

// A writer puts a text and its zero byte into the buffer.
template <class Item, class Writer>
void measure_writer(const std::string& name, const std::vector<Item>& items, Writer write) {
    measure(name, items, [write](Item item) {
        char text[400];
        write(item, text);
        benchmark::DoNotOptimize(text);
    });
}

template <class... Arguments>
void to_chars(char* to, Arguments... arguments) {
    *std::to_chars(to, to + 399, arguments...).ptr = '\0';
}

void register_fixed(int decimals) {
    const std::string name = "fixed/" + std::to_string(decimals);
    orvix::bench::bar(name, "to_chars", 0.50);
    orvix::bench::bar(name, "snprintf", 0.15);
    measure_writer(name + "/ours", positions(), [=](double v, char* to) { gparse_dbltoas(v, 20, decimals, to); });
    measure_writer(name + "/to_chars", positions(),
                   [=](double v, char* to) { to_chars(to, v, std::chars_format::fixed, decimals); });
    measure_writer(name + "/snprintf", positions(),
                   [=](double v, char* to) { std::snprintf(to, 400, "%.*f", decimals, v); });
}

void register_exponent(int digits) {
    const std::string name = "exponent/" + std::to_string(digits);
    orvix::bench::bar(name, "to_chars", 1.0);
    const int only_exponents = -1;
    measure_writer(name + "/ours", components(),
                   [=](double v, char* to) { gparse_dbltoas(v, digits + 7, only_exponents, to); });
    measure_writer(name + "/to_chars", components(),
                   [=](double v, char* to) { to_chars(to, v, std::chars_format::scientific, digits - 1); });
    measure_writer(name + "/snprintf", components(),
                   [=](double v, char* to) { std::snprintf(to, 400, "%.*e", digits - 1, v); });
}

void register_stripped() {
    constexpr int digits = 10;
    orvix::bench::bar("stripped", "to_chars", 1.3);
    measure_writer("stripped/ours", settings(), [=](double v, char*) {
        benchmark::DoNotOptimize(gparse_cnvt_double_string_stripped(nullptr, v, 0, digits));
    });
    measure_writer("stripped/to_chars", settings(),
                   [=](double v, char* to) { to_chars(to, v, std::chars_format::general, digits); });
    measure_writer("stripped/snprintf", settings(),
                   [=](double v, char* to) { std::snprintf(to, 400, "%.*g", digits, v); });
}

void register_integer() {
    orvix::bench::bar("integer", "to_chars", 1.2);
    measure_writer("integer/ours", whole_numbers(), [](std::int32_t v, char* to) { gparse_lngtoas(v, 12, to); });
    measure_writer("integer/to_chars", whole_numbers(), [](std::int32_t v, char* to) { to_chars(to, v); });
    measure_writer("integer/snprintf", whole_numbers(),
                   [](std::int32_t v, char* to) { std::snprintf(to, 400, "%d", v); });
}

// ---------------------------------------------------------------------------------------------------------------------
// Reading

template <class Number>
void read_with_from_chars(const std::string& text) {
    Number value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    benchmark::DoNotOptimize(result);
    benchmark::DoNotOptimize(value);
}

void read_with_strtod(const std::string& text) {
    char* end = nullptr;
    benchmark::DoNotOptimize(std::strtod(text.c_str(), &end));
    benchmark::DoNotOptimize(end);
}

template <class Number, bool (*read)(const char*, Number*)>
void read_with(const std::string& text) {
    Number value = 0;
    benchmark::DoNotOptimize(read(text.c_str(), &value));
    benchmark::DoNotOptimize(value);
}

template <class Number, bool (*read)(const char*, Number*)>
void register_reading(const std::string& name, double limit, const Texts& texts) {
    orvix::bench::bar(name, "from_chars", limit);
    measure(name + "/ours", texts, read_with<Number, read>);
    measure(name + "/from_chars", texts, read_with_from_chars<double>);
    measure(name + "/strtod", texts, read_with_strtod);
}

const bool registered = [] {
    register_fixed(4);
    register_fixed(9);
    register_exponent(5);
    register_exponent(15);
    register_stripped();
    register_integer();
    register_reading<double, gparse_astodbl>("read/4_decimals", 1.10,
                                             texts_of(positions(), std::chars_format::fixed, 4));
    register_reading<double, gparse_astodbl>("read/17_digits", 1.10,
                                             texts_of(positions(), std::chars_format::general, 17));
    register_reading<double, gparse_astodbl>("read/17_digits_exponent", 1.10,
                                             texts_of(components(), std::chars_format::scientific, 16));
    register_reading<double, gparse_astodbl>("read/words", 0.70, net_names());
    register_reading<int, gparse_astoint>("read/integers", 1.20,
                                          texts_of(whole_numbers(), std::chars_format::fixed, 0));
    return true;
}();

}  // namespace
