// Replacing references in texts by their values.
#pragma once

#include <orvix/gsl/environment.h>

#include <cstdarg>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvix::gsl::env {

// Where references get their values: process variables, and unless `variables_only` is set, settings.
struct Sources {
    eeEnv* first = nullptr;                // asked first; null: the master alone is asked
    std::span<eeEnv* const> further = {};  // asked next, before the master
    bool variables_only = false;
};

// The environments behind `first` in an argument list, up to its null pointer. None if `first` is null: that ends the
// list before it begins.
std::vector<eeEnv*> further_environments(const eeEnv* first, std::va_list arguments);

// Expands a text; see gui_env_expand_str. False if nothing came out, if the expansion never ends, or without memory.
bool expand(std::string_view source, const Sources& sources, std::string* text);

// The same with the result copied to `dest`, which is touched only if the text fits in `size` bytes. Gives 0, -1, or
// the bytes that `dest` must hold. A null `source` gives -1; `dest` may be null.
long long expand_into(char* dest, const char* source, std::size_t size, const Sources& sources);

}  // namespace orvix::gsl::env
