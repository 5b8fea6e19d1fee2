#include <orvix/gsl/file_names.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace {

constexpr std::array<unsigned char, 256> lower_case = [] {
    std::array<unsigned char, 256> table{};
    for (unsigned byte = 0; byte < table.size(); ++byte) {
        const bool upper = byte >= 'A' && byte <= 'Z';
        table[byte] = static_cast<unsigned char>(upper ? byte + ('a' - 'A') : byte);
    }
    return table;
}();

int lowered(char c) { return lower_case[static_cast<unsigned char>(c)]; }

const char* or_empty(const char* name) { return name != nullptr ? name : ""; }

// Compares `count` bytes at most, one of each name at least.
int compare(const char* a, const char* b, std::size_t count) {
    for (std::size_t i = 0;; ++i) {
        if (a[i] != b[i]) {
            const int difference = lowered(a[i]) - lowered(b[i]);
            if (difference != 0) return difference;
        }
        if (a[i] == '\0' || i + 1 >= count) return 0;
    }
}

}  // namespace

int gfile_file_name_strcmp(const char* a, const char* b) { return compare(or_empty(a), or_empty(b), SIZE_MAX); }

int gfile_file_name_strncmp(const char* a, const char* b, int count) {
    if (count == 0) return 0;
    // Below 0 the first bytes are compared and no more.
    return compare(or_empty(a), or_empty(b), count > 0 ? static_cast<std::size_t>(count) : 1);
}
