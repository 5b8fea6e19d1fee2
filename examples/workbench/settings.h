// Environments as values of C++: an owner that closes, and strings of any length.
#pragma once

#include <orvix/gsl/environment.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace workbench {

struct CloseWithoutSaving {
    void operator()(eeEnv* env) const { gui_env_close(env, false); }
};
using Environment = std::unique_ptr<eeEnv, CloseWithoutSaving>;

// Opens the environment `name` with all its levels. Throws if memory is exhausted.
Environment open_environment(const char* name);

// A level as the report calls it, nearest first.
struct Level {
    EnvlocE number;
    const char* title;
    EnvTable eeEnv::*table;
};
inline constexpr Level levels[] = {{ENVLOC_CWD, "project", &eeEnv::cwd},
                                   {ENVLOC_USER, "user", &eeEnv::user},
                                   {ENVLOC_CUSTOM, "site", &eeEnv::custom},
                                   {ENVLOC_SYSTEM, "system", &eeEnv::system}};

// The value as it is stored.
std::optional<std::string> value_of(eeEnv* env, const std::string& name, EnvlocE level = ENVLOC_ANY);

// The value that a `%` reference gets: from `env` or, failing that, from the master environment.
std::optional<std::string> value_in_sight(eeEnv* env, const std::string& name);

// The text with every reference replaced. None if nothing is left of it.
std::optional<std::string> expanded(eeEnv* env, const std::string& text);

}  // namespace workbench
