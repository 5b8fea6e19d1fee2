#include <orvix/gsl/arrays.h>
#include <orvix/gsl/status.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <new>

namespace {

constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }

constexpr bool is_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// The number that the digits at `s` make, `limit` at most.
std::uint64_t read_digits(const char* s, std::uint64_t limit) {
    std::uint64_t value = 0;
    for (; is_digit(*s); ++s) {
        const auto digit = static_cast<std::uint64_t>(*s - '0');
        if (value > (limit - digit) / 10) return limit;
        value = 10 * value + digit;
    }
    return value;
}

}  // namespace

void HX_free_character_array(char** array, long long count) {
    if (array == nullptr) return;
    for (long long i = 0; i < count; ++i) gmem_ee_free(array[i]);
    gmem_ee_free(static_cast<char*>(static_cast<void*>(array)));
}

char* HX_stringcopy(const char* s) {
    if (s == nullptr) s = "";
    const std::size_t bytes = std::strlen(s) + 1;
    char* const copy = gmem_ee_malloc(bytes, 1);
    if (copy == nullptr) throw std::bad_alloc();
    std::memcpy(copy, s, bytes);
    return copy;
}

char* HX_strlwr(char* s) {
    if (s == nullptr) return nullptr;
    for (char* p = s; *p != '\0'; ++p) {
        if (*p >= 'A' && *p <= 'Z') *p = static_cast<char>(*p + ('a' - 'A'));
    }
    return s;
}

long long HX_atoll(const char* s) {
    if (s == nullptr) return 0;
    while (is_space(*s)) ++s;
    const bool negative = *s == '-';
    if (negative || *s == '+') ++s;
    constexpr std::uint64_t most = std::numeric_limits<long long>::max();
    const std::uint64_t magnitude = read_digits(s, negative ? most + 1 : most);
    return static_cast<long long>(negative ? 0 - magnitude : magnitude);
}
