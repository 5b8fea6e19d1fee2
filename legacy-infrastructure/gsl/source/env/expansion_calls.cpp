#include "env/chain.h"
#include "env/expansion.h"

#include <orvix/gsl/environment.h>

using namespace orvix::gsl::env;

namespace {

// `dest` may be `source`. What does not come out whole leaves `dest` empty.
long long expand_or_empty(char* dest, const char* source, std::size_t size, const Sources& sources) {
    const long long result = expand_into(dest, source, size, sources);
    if (result != 0 && dest != nullptr && size > 0) dest[0] = '\0';
    return result;
}

}  // namespace

long long gui_env_expand_str(char* dest, const char* src, std::size_t size, eeEnv* env, ...) {
    std::va_list arguments;
    va_start(arguments, env);
    const std::vector<eeEnv*> further = further_environments(env, arguments);
    va_end(arguments);
    return expand_or_empty(dest, src, size, {.first = env, .further = further});
}

long long gui_env_expand_str_system_only(char* dest, const char* src, std::size_t size, eeEnv*, ...) {
    return expand_or_empty(dest, src, size, {.variables_only = true});
}

long long gui_env_get_and_expand(eeEnv* env, const char* name, char* buffer, void** aux, std::size_t size,
                                 EnvlocE loc) {
    const long long result = gui_env_get(env, name, buffer, aux, size, loc);
    return result != 0 ? result : expand_or_empty(buffer, buffer, size, {.first = env});
}

long long gui_env_get_ee_and_expand(const char* name, char* buffer, void** aux, std::size_t size, EnvlocE loc) {
    return gui_env_get_and_expand(master_brought_up(), name, buffer, aux, size, loc);
}
