#include <orvix/gsl/status.h>

#include <cstdio>
#include <cstdlib>

namespace {

void (*exit_hook)(void) = nullptr;

char* as_chars(void* block) { return static_cast<char*>(block); }

}  // namespace

char* gmem_ee_malloc(std::size_t count, std::size_t size) {
    const std::size_t bytes = count * size;
    return bytes == 0 ? nullptr : as_chars(std::malloc(bytes));
}

char* gmem_ee_calloc(std::size_t count, std::size_t size) {
    return count * size == 0 ? nullptr : as_chars(std::calloc(size, count));
}

char* gmem_ee_realloc(char* pointer, std::size_t count, std::size_t size) {
    const std::size_t bytes = count * size;
    if (bytes == 0) return nullptr;
    // A first block is bounded to 32 bits; callers that grow from nothing rely on no more.
    if (pointer == nullptr) return as_chars(std::malloc(static_cast<std::uint32_t>(bytes)));
    return as_chars(std::realloc(pointer, bytes));
}

void gmem_ee_free(char* pointer) { std::free(pointer); }

void aerr_memory_error(void) {
    std::fputs("FATAL ERROR: out of memory\n", stderr);
    if (exit_hook != nullptr) exit_hook();
    std::exit(1);
}

void aerr_set_exit_function(void (*hook)(void)) { exit_hook = hook; }
