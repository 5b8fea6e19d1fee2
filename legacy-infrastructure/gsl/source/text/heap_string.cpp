#include "text/bytes.h"

#include <orvix/gsl/status.h>
#include <orvix/gsl/string_utilities.h>

#include <cstring>

using namespace orvix::gsl::text;

char* astr_new_string(const char* s) {
    if (s == nullptr) return nullptr;
    const std::size_t length = std::strlen(s);
    char* copy = new_text(length);
    move_text(copy, s, length);
    return copy;
}

void astr_free_string(const char* s) { gmem_ee_free(const_cast<char*>(s)); }
