#include "settings.h"

#include <new>
#include <vector>

namespace workbench {

namespace {

// Runs a call of the kind that answers 0 for done, the bytes that it needs, or -1, with a buffer that grows as told.
template <class Call>
std::optional<std::string> fetch(Call call) {
    std::vector<char> buffer(256);
    for (;;) {
        const long long result = call(buffer.data(), buffer.size());
        if (result < 0) return std::nullopt;
        if (result == 0) return std::string(buffer.data());
        buffer.resize(static_cast<std::size_t>(result));
    }
}

}  // namespace

Environment open_environment(const char* name) {
    Environment env(gui_env_open(name, ENVLOC_ANY));
    if (!env) throw std::bad_alloc();
    return env;
}

std::optional<std::string> value_of(eeEnv* env, const std::string& name, EnvlocE level) {
    return fetch(
        [&](char* buffer, std::size_t size) { return gui_env_get(env, name.c_str(), buffer, nullptr, size, level); });
}

std::optional<std::string> value_in_sight(eeEnv* env, const std::string& name) {
    if (auto own = value_of(env, name)) return own;
    return fetch([&](char* buffer, std::size_t size) {
        return gui_env_get_ee(name.c_str(), buffer, nullptr, size, ENVLOC_ANY);
    });
}

std::optional<std::string> expanded(eeEnv* env, const std::string& text) {
    return fetch(
        [&](char* buffer, std::size_t size) { return gui_env_expand_str(buffer, text.c_str(), size, env, nullptr); });
}

}  // namespace workbench
