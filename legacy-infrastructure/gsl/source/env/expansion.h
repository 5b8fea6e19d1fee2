// Replacing references in texts by their values.
#pragma once

#include <orvix/gsl/environment.h>

#include <cstdarg>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvix::gsl::env {

// What an expansion may cost before it counts as endless, in bytes of text rewritten (a reference counts as many as can
// be rewritten in the time that its lookup takes). Texts that end stay far below; 4 GiB take some seconds.
constexpr std::uint64_t most_expansion_work = std::uint64_t{4} << 30;

// Where references get their values: process variables, and unless `variables_only` is set, settings.
struct Sources {
    eeEnv* first = nullptr;                // asked first; null: the master alone is asked
    std::span<eeEnv* const> further = {};  // asked next, before the master
    bool variables_only = false;
    std::uint64_t* work_left = nullptr;  // of several expansions together; null: this one has the whole amount
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
