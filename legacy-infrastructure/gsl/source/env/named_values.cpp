#include <orvix/gsl/application_environment.h>

#include "env/current_environment.h"
#include "env/heap_text.h"
#include "env/named_environment.h"

#include <orvix/gsl/string_utilities.h>

#include <cstddef>

using namespace orvix::gsl::env;

namespace {

bool is_empty(const char* text) { return text == nullptr || text[0] == '\0'; }

bool has_value(ASTR_ApplicationEnvironmentOverride& override, const char* name, AstrEnvlocE loc) {
    return override.get_value(name, loc) != nullptr;
}

bool has_value(eeEnv* store, const char* name, AstrEnvlocE loc) {
    return gui_env_get(store, name, nullptr, nullptr, 0, level_of(loc)) != -1;
}

}  // namespace

char* astr_get_environment_value(const char* env, const char* name, AstrEnvlocE loc) {
    if (is_empty(env)) return nullptr;
    const NamedEnvironment named(env);
    char* value = nullptr;
    if (named.override() != nullptr) {
        value = named.override()->get_value(name, loc);
    } else if (named.store() == nullptr) {
        return nullptr;
    } else {
        value = fetch([&](char* buffer, std::size_t bytes) {
                    return gui_env_get_and_expand(named.store(), name, buffer, nullptr, bytes, level_of(loc));
                }).release();
    }
    return value != nullptr ? value : astr_new_string("");
}

bool astr_set_environment_value(const char* env, const char* name, const char* value, AstrEnvlocE loc, bool save) {
    if (is_empty(env)) return false;
    NamedEnvironment named(env);
    if (named.override() != nullptr) {
        named.override()->set_value(name, value, loc);
        return true;
    }
    const bool stored = gui_env_put(named.store(), name, value, level_of(loc));
    if (save) named.save();
    return stored;
}

bool astr_environment_var_exists(const char* env, const char* name, AstrEnvlocE loc) {
    if (env == nullptr && current.override() != nullptr) return has_value(*current.override(), name, loc);
    if (is_empty(env)) return has_value(current.store(), name, loc);
    const NamedEnvironment named(env);
    if (named.override() != nullptr) return has_value(*named.override(), name, loc);
    return has_value(named.store(), name, loc);
}

char* astr_expand_environment_value(const char* env, const char* text) {
    if (is_empty(env)) return nullptr;
    NamedEnvironment named(env);
    if (named.override() != nullptr) return named.override()->expand_value(text);
    if (named.store() == nullptr) return nullptr;
    named.keep_open();  // unlike in the calls above: it is left to gui_env_deinit
    return fetch([&](char* buffer, std::size_t bytes) {
               return gui_env_expand_str(buffer, text, bytes, named.store(), nullptr);
           })
        .release();
}
