#include <orvix/gsl/file_names.h>
#include <orvix/gsl/status.h>

#include <cstddef>
#include <cstring>
#include <functional>
#include <string>

namespace {

std::size_t capacity = 0;
char* buffer = nullptr;

bool reserve(std::size_t bytes) {
    if (capacity == 0 || buffer == nullptr) {
        capacity = bytes;
        buffer = gmem_ee_malloc(bytes, 1);
        return buffer != nullptr;
    }
    if (bytes <= capacity) return true;
    char* grown = gmem_ee_realloc(buffer, bytes, 1);
    if (grown == nullptr) return false;
    buffer = grown;
    capacity = bytes;
    return true;
}

bool lies_in_buffer(const char* text) {
    return buffer != nullptr && !std::less<>()(text, buffer) && std::less<>()(text, buffer + capacity);
}

}  // namespace

char* HX_quote_argument(const char* argument) {
    // Quoting a quoted text again is natural enough, and would write over what it still has to read.
    if (lies_in_buffer(argument)) return HX_quote_argument(std::string(argument).c_str());

    if (!reserve(2 * std::strlen(argument) + 3)) return nullptr;
    char* to = buffer;
    *to++ = '"';
    for (; *argument != '\0'; ++argument) {
        if (*argument == '"' || *argument == '\\') *to++ = '\\';
        *to++ = *argument;
    }
    *to++ = '"';
    *to = '\0';
    return buffer;
}
