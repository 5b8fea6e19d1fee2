#include "env/path_list.h"

#include "env/expansion.h"

#include <orvix/gsl/environment.h>
#include <orvix/gsl/status.h>

#include <cstdio>
#include <cstring>

namespace orvix::gsl::env {

namespace {

constexpr const char* separators = ";:";

// The head of an element as in "C:\a": only then is a colon no separator.
bool begins_with_drive(const char* list) {
    const bool letter = (list[0] >= 'A' && list[0] <= 'Z') || (list[0] >= 'a' && list[0] <= 'z');
    return letter && list[1] == ':' && (list[2] == '/' || list[2] == '\\');
}

}  // namespace

std::size_t element_length(const char* list) {
    const std::size_t drive = begins_with_drive(list) ? 2 : 0;
    return drive + std::strcspn(list + drive, separators);
}

namespace {

// The walk of gui_env_extract_path over its copy of a list.
struct ListWalk {
    char* list;         // the copy; separators passed by are overwritten by zero bytes
    std::size_t bytes;  // size of its block
    char* current;      // element last stood on; null before the first list
    char* next;         // element to come, or null
    bool stays;         // the element did not fit, and is to be delivered again
};

// The walk of gui_env_get_tok over its caller's list.
struct TokenWalk {
    char* position;     // what is left of the list, or null
    char* element;      // the element handed out last
    std::size_t bytes;  // size of its block
};

constinit ListWalk list_walk{};
constinit TokenWalk token_walk{};

bool grow(char** block, std::size_t* block_bytes, std::size_t bytes) {
    if (bytes <= *block_bytes) return true;
    char* grown = gmem_ee_malloc(bytes, 1);
    gmem_ee_free(*block);
    *block = grown;
    *block_bytes = grown != nullptr ? bytes : 0;
    return grown != nullptr;
}

// Makes `element` the current one, and cuts it off from what follows.
void stand_on(ListWalk& walk, char* element) {
    walk.current = element;
    char* end = element + element_length(element);
    walk.next = *end != '\0' ? end + 1 : nullptr;
    *end = '\0';
}

bool start(ListWalk& walk, const char* list) {
    const std::size_t bytes = std::strlen(list) + 1;
    if (!grow(&walk.list, &walk.bytes, bytes)) {
        walk = {};
        return false;
    }
    std::memcpy(walk.list, list, bytes);
    stand_on(walk, walk.list);
    return true;
}

long long deliver(char* dest, const char* element, std::size_t size) {
    const std::size_t length = std::strlen(element);
    if (length >= size) return static_cast<long long>(length) + 1;
    std::memcpy(dest, element, length + 1);
    return 0;
}

}  // namespace

}  // namespace orvix::gsl::env

using namespace orvix::gsl::env;

long long gui_env_extract_path(char* dest, char* src, bool expand, std::size_t size, eeEnv* env, ...) {
    if (dest == nullptr) return -1;
    ListWalk& walk = list_walk;
    if (src != nullptr) {
        if (!start(walk, src)) return -1;
    } else if (!walk.stays) {
        if (walk.next == nullptr) return -2;
        stand_on(walk, walk.next);
    }
    if (!expand) {
        const long long result = deliver(dest, walk.current, size);
        walk.stays = result > 0;
        return result;
    }
    std::va_list arguments;
    va_start(arguments, env);
    const std::vector<eeEnv*> further = further_environments(env, arguments);
    va_end(arguments);
    const long long result = expand_into(dest, walk.current, size, {.first = env, .further = further});
    walk.stays = result > 0;
    return result;
}

char* gui_env_get_tok(char* text) {
    TokenWalk& walk = token_walk;
    if (text != nullptr) walk.position = text;
    if (walk.position == nullptr) return nullptr;
    const std::size_t length = element_length(walk.position);
    if (!grow(&walk.element, &walk.bytes, length + 1)) {
        std::fputs("\nout of memory", stderr);
        return nullptr;
    }
    std::memcpy(walk.element, walk.position, length);
    walk.element[length] = '\0';
    walk.position = walk.position[length] != '\0' ? walk.position + length + 1 : nullptr;
    return walk.element;
}
