#include <orvix/gsl/application_environment.h>

#include "env/current_environment.h"
#include "env/heap_text.h"

#include <cstddef>
#include <cstring>

using namespace orvix::gsl::env;

namespace {

// The value as it is stored, or with its references replaced.
using Get = long long (*)(eeEnv* env, const char* name, char* buffer, void** aux, std::size_t size, EnvlocE loc);

char* value_in_files(const char* name, Get get) {
    eeEnv* const store = current.store();
    return fetch([&](char* buffer, std::size_t bytes) { return get(store, name, buffer, nullptr, bytes, ENVLOC_ANY); })
        .release();
}

}  // namespace

void astr_set_environment(const char* name) {
    current.close();
    if (name == nullptr || name[0] == '\0') {
        current.set_name(nullptr);
        return;
    }
    if (!current.is_named(name)) current.set_name(name);
    current.open();
}

const char* astr_get_environment(void) { return current.name(); }

void astr_close_environment(void) { current.close(); }

char* astr_environment_value(const char* name) {
    if (current.override() != nullptr) return current.override()->get_value(name, ASTR_ENVLOC_ANY);
    return value_in_files(name, gui_env_get_and_expand);
}

char* astr_environment_value_not_expanded(const char* name) {
    if (current.override() != nullptr) return current.override()->get_value_not_expanded(name);
    return value_in_files(name, gui_env_get);
}

bool astr_environment_string(const char* name, char* buffer, int size) {
    const std::size_t bytes = size > 0 ? static_cast<std::size_t>(size) : 0;
    if (current.override() == nullptr) {
        return gui_env_get_and_expand(current.store(), name, buffer, nullptr, bytes, ENVLOC_ANY) == 0;
    }
    const char* const value = current.override()->get_value(name, ASTR_ENVLOC_ANY);
    if (value == nullptr) return false;
    if (buffer == nullptr) return true;
    const std::size_t length = std::strlen(value);
    if (length >= bytes) return false;
    std::memcpy(buffer, value, length + 1);
    return true;
}
