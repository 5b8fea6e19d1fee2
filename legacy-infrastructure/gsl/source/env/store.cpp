#include <orvix/gsl/environment.h>

#include "env/chain.h"
#include "env/table.h"

#include <orvix/gsl/getenv.h>
#include <orvix/gsl/status.h>

#include <cstring>

using namespace orvix::gsl::env;

long long gui_env_get(eeEnv* env, const char* name, char* buffer, void** aux, std::size_t size, EnvlocE loc) {
    if (env == nullptr) return -1;
    const EnvEntry* entry = find(*env, FoldedName(name), loc, Removed::hidden);
    if (entry == nullptr) return -1;
    if (buffer != nullptr) {
        const std::string_view value = value_of(*entry);
        if (value.size() >= size) return static_cast<long long>(value.size()) + 1;
        value.copy(buffer, value.size());
        buffer[value.size()] = '\0';
    }
    if (aux != nullptr) *aux = entry->aux;
    return 0;
}

long long gui_env_get_ee(const char* name, char* buffer, void** aux, std::size_t size, EnvlocE loc) {
    return gui_env_get(master_brought_up(), name, buffer, aux, size, loc);
}

bool gui_env_exists(eeEnv* env, char* name, EnvlocE loc) {
    return gui_env_get(env, name, nullptr, nullptr, 0, loc) != -1;
}

bool gui_env_put(eeEnv* env, const char* name, const char* value, EnvlocE loc) {
    return gui_env_put_modnew(env, name, value, loc, ENVMOD_CHANGED);
}

bool gui_env_put_ee(const char* name, const char* value, EnvlocE loc) {
    return gui_env_put(master_brought_up(), name, value, loc);
}

bool gui_env_put_modnew(eeEnv* env, const char* name, const char* value, EnvlocE loc, EnvModE mod) {
    if (env == nullptr) return false;
    const FoldedName folded(name);
    if (value != nullptr) return put(*env, folded, value, loc, mod);

    EnvEntry* entry = find(*env, folded, loc, Removed::included);
    if (entry == nullptr) return false;
    mark_changed(entry);
    gmem_ee_free(entry->value);
    entry->value = nullptr;
    return true;
}

bool gui_env_rm(eeEnv* env, const char* name, EnvlocE loc) {
    if (env == nullptr) return false;
    EnvEntry* entry = find(*env, FoldedName(name), loc, Removed::hidden);
    if (entry == nullptr) return false;
    entry->mod = ENVMOD_REMOVED;
    return true;
}

bool gui_env_rm_ee(const char* name, EnvlocE loc) { return gui_env_rm(master_brought_up(), name, loc); }

const char* gui_env_get_sys(const char* name) { return gsl_getenv(name); }

int gui_env_getrlimit(int) { return 1; }

bool gui_env_setrlimit(int, int) { return true; }

bool gui_env_setrlimit_max(int) { return true; }
