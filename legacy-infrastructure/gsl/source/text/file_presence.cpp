#include <orvix/core/path.h>
#include <orvix/gsl/string_utilities.h>

#include <cstdio>
#include <exception>

bool astr_file_exists(const char* const path) {
    try {
        return path != nullptr && orvix::Path(path).exists();
    } catch (const std::exception&) {
        return false;
    }
}

void astr_clear_file(const char* path) {
    if (path == nullptr) return;
    if (std::FILE* file = orvix::Path(path).fopen("w")) std::fclose(file);
}
