// Reading the files of an environment.
#pragma once

#include "env/expansion.h"

#include <orvix/gsl/environment.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace orvix::gsl::env {

// One load: a call that opens an environment, or reads a level of it again. Files may include one another in circles,
// and more than once: what one load does for included files is bounded in depth, in files and in bytes, and what it
// does for references, all together, as one expansion is bounded elsewhere.
struct Load {
    static constexpr int most_depth = 200;
    static constexpr int most_files = 10'000;
    static constexpr std::uint64_t most_bytes = std::uint64_t{1} << 30;

    explicit Load(eeEnv* environment) : env(environment) {}

    bool may_include() const { return depth < most_depth && files < most_files && bytes < most_bytes; }

    eeEnv* env;
    int depth = 0;            // includes that are being read, one inside the other
    int files = 0;            // included files opened
    std::uint64_t bytes = 0;  // size of the included files read to their end
    std::uint64_t expansion_work_left = most_expansion_work;
};

// Finds the file of a level and reads it, and at level 4 the add-on files of the name. Other numbers do nothing.
//
// `verbatim`: the name is the file's whole name, for level 1. `included`: the name stands in an include line, and may
// be complete.
void env_load_level(Load& load, const char* name, EnvlocE level, bool verbatim, bool included);

// Reads one file, and notes its name in `table` unless it is included. A file that cannot be read is passed over.
// `path` is shorter than EnvTable::path. `expand_values`: references are replaced now.
void env_read_file(Load& load, EnvlocE level, bool verbatim, bool included, const char* path, EnvTable* table,
                   bool expand_values);

// Reads what an include line names; `argument` is the line behind its `+`.
void env_read_include(Load& load, std::string_view argument, EnvlocE level, bool verbatim);

// Reads the add-on files of a base name into level 4.
void env_scan_addons(Load& load, const char* name, bool verbatim, bool included);

// Expands a text against the environment that is being loaded, in a buffer of 1024 bytes.
bool expand_at_load(Load& load, std::string_view text, std::string* result);

}  // namespace orvix::gsl::env
