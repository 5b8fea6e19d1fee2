// Numbers out of text as the C library finds them, and text out of numbers as the models do.
//
// Input: the text up to a zero byte, and behind that a double, a width, decimals and digits, a byte each.

#include "../tests/text/stripped_number_model.h"

#include <orvix/gsl/number_text.h>
#include <orvix/gsl/status.h>

#include <bit>
#include <cerrno>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

namespace model = orvix::test::model;

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

bool same(double a, double b) {
    return std::isnan(a) ? std::isnan(b) : std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

// ---------------------------------------------------------------------------------------------------------------------
// Reading

struct Reading {
    double value;
    bool is_whole_text;
    bool is_out_of_range;
    bool is_number;  // under the strict rules
};

// A fuzz target runs in the "C" locale.
Reading read_with_library(const std::string& text) {
    errno = 0;
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    const bool is_whole_text = *end == '\0';
    const bool has_ends = !text.empty() && std::strchr("+-.0123456789", text.front()) != nullptr &&
                          std::strchr(".0123456789", text.back()) != nullptr;
    return {value, is_whole_text, errno != 0, is_whole_text && end != text.c_str() && has_ends};
}

void check_strict_readers(const std::string& text, const Reading& expected) {
    double real = 99;
    require(gparse_astodbl(text.c_str(), &real) == expected.is_number);
    require(same(real, expected.value));

    const bool is_whole =
        expected.is_number && std::trunc(expected.value) == expected.value && std::abs(expected.value) <= 2147483647.0;
    int whole = 99;
    require(gparse_astoint(text.c_str(), &whole) == is_whole);
    require(whole == (is_whole ? static_cast<int>(expected.value) : 0));

    const bool is_single = expected.is_number && std::abs(expected.value) <= 1.701411e+38;
    float single = 99;
    require(gparse_astoflt(text.c_str(), &single) == is_single);
    if (is_single) require(single == static_cast<float>(expected.value));
}

void check_library_readers(const std::string& text, const Reading& expected) {
    double real = 99;
    const bool is_real = expected.is_whole_text && !expected.is_out_of_range;
    require(astr_str_to_double(text.c_str(), &real) == is_real);
    require(same(real, is_real ? expected.value : 99));

    errno = 0;
    char* end = nullptr;
    const long long value = std::strtoll(text.c_str(), &end, 10);
    const bool fits = errno == 0 && value >= std::numeric_limits<std::int32_t>::min() &&
                      value <= std::numeric_limits<std::int32_t>::max();
    std::int32_t whole = 99;
    require(astr_str_to_long(text.c_str(), &whole) == (fits && *end == '\0'));
    require(whole == (fits && *end == '\0' ? value : 99));
}

void check_digits(const std::string& text, std::size_t first, std::size_t last) {
    std::string digits;
    for (std::size_t i = first; i < last && i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) digits += text[i];
    int number = 99;
    const char* const rest = gparse_parse_numeric_and_postnumeric_part(text.c_str(), first, last, &number);
    require(rest == text.c_str() + std::min(first, text.size()) + digits.size());
    digits.erase(0, digits.find_first_not_of('0'));
    const bool is_large = digits.size() > 10 || std::stoll('0' + digits) > 2147483647;
    require(number == (is_large ? 2147483647 : std::stoi('0' + digits)));
}

// ---------------------------------------------------------------------------------------------------------------------
// Writing

void check_writer(bool (*write)(double, int, int, char*), const model::Text& expected, double value, int width,
                  int decimals) {
    std::vector<char> text(static_cast<std::size_t>(std::max({width, decimals + 3, 0}) + 2));
    require(write(value, width, decimals, text.data()) == expected.has_value());
    require(text.data() == expected.value_or(""));
}

void check_writers(double value, int width, int decimals) {
    check_writer(gparse_dbltoas, model::fitted(value, width, decimals), value, width, decimals);
    check_writer(gparse_dblxxas, model::strict(value, width, decimals), value, width, decimals);

    std::vector<char> text(400);
    astr_double_to_str(value, text.data());
    if (std::isfinite(value)) require(text.data() == model::fixed_form(value, 4));

    const auto whole = static_cast<std::int32_t>(std::bit_cast<std::uint64_t>(value));
    const std::string expected = std::to_string(whole);
    const bool fits = static_cast<int>(expected.size()) <= width;
    require(gparse_lngtoas(whole, width, text.data()) == fits);
    require(text.data() == (fits ? expected : ""));
}

// Seventeen digits and the nearest number give the same number back.
void check_round_trip(double value) {
    if (!std::isfinite(value)) return;
    constexpr int width_of_17_digits = 24;
    char text[width_of_17_digits + 2];
    require(gparse_dbltoas(value, width_of_17_digits, -1, text));
    double back = 99;
    require(gparse_astodbl(text, &back));
    require(same(back, value));
}

// ---------------------------------------------------------------------------------------------------------------------
// Stripped text

char* new_buffer() { return gmem_ee_malloc(33, 1); }

void check_stripped(double value, int min_decimals, int max_digits) {
    const model::Stripped expected = model::double_stripped(value, min_decimals, max_digits);
    if (expected.kind == model::Stripped::end_of_process) return;
    char* const out = new_buffer();
    const char* const result = gparse_cnvt_double_string_stripped(out, value, min_decimals, max_digits);
    require((result == nullptr) == (expected.kind == model::Stripped::failure));
    if (result == nullptr) return;
    require(result == out && result == expected.bytes);
    gmem_ee_free(out);
}

void check_stripped_zeros(std::string text) {
    const std::string expected = model::drop_zeros(text);
    if (expected.size() <= 31) require(gparse_cnvt_string_stripped_zeros(nullptr, text.data()) == expected);
}

void check_stripped_string(std::string text, const Reading& reading, int min_decimals, int max_digits) {
    if (!reading.is_number) {
        require(gparse_cnvt_string_string_stripped(new_buffer(), text.data(), min_decimals, max_digits) == nullptr);
        return;
    }
    const model::Stripped expected = model::string_stripped(text, reading.value, min_decimals, max_digits);
    if (expected.kind == model::Stripped::end_of_process) return;
    char* const result = gparse_cnvt_string_string_stripped(nullptr, text.data(), min_decimals, max_digits);
    require((result == text.data()) == (expected.kind == model::Stripped::argument));
    if (result == text.data()) return;
    require(result == expected.bytes);
    if (text.find('.') != std::string::npos) gmem_ee_free(result);
}

void check_from_e(std::string text) {
    char* const out = new_buffer();
    const char* const result = gparse_cnvt_from_e_to_string(out, text.data(), 0);
    if (result == nullptr) return;
    require(std::strchr("+-0123456789", text.front()) != nullptr);
    const bool has_exponent = text.find_first_of("eE") != std::string::npos;
    require(result == (has_exponent ? text.data() : out));
    require(result == text);
    gmem_ee_free(out);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(data, data + size);
    const std::string text = input.c_str();
    std::string rest = input.substr(std::min(text.size() + 1, input.size()));
    rest.resize(sizeof(double) + 3);
    double value = 0;
    std::memcpy(&value, rest.data(), sizeof value);
    const auto number = [&](std::size_t i) { return static_cast<signed char>(rest[sizeof(double) + i]); };

    const Reading reading = read_with_library(text);
    check_strict_readers(text, reading);
    check_library_readers(text, reading);
    check_digits(text, static_cast<unsigned char>(number(0)), static_cast<unsigned char>(number(1)));

    for (const double written : {value, reading.value}) {
        check_writers(written, number(0), number(1));
        check_round_trip(written);
        check_stripped(written, number(1), number(2));
    }
    check_stripped_zeros(text);
    check_stripped_string(text, reading, number(1), number(2));
    check_from_e(text);
    return 0;
}
