#include "env/chain.h"

#include "env/level_files.h"
#include "env/loading.h"

#include <orvix/gsl/status.h>

#include <initializer_list>
#include <new>

namespace orvix::gsl::env {

Chain chain{nullptr, nullptr};

namespace {

eeEnv* new_environment() {
    char* block = gmem_ee_malloc(1, sizeof(eeEnv));
    return block != nullptr ? new (block) eeEnv{} : nullptr;
}

// The farthest level first, so that what is loaded later may refer to it.
void load_levels(eeEnv* env, const char* name, std::initializer_list<EnvlocE> levels) {
    Load load(env);
    for (const EnvlocE level : levels) env_load_level(load, name, level, false, false);
}

constexpr std::initializer_list<EnvlocE> all_levels = {ENVLOC_SYSTEM, ENVLOC_CUSTOM, ENVLOC_USER, ENVLOC_CWD};

}  // namespace

eeEnv* master_brought_up() {
    if (chain.last == nullptr || chain.master == nullptr) gui_env_init();
    return chain.master;
}

bool is_open(const eeEnv* env) {
    for (const eeEnv* open = chain.master; open != nullptr; open = open->next) {
        if (open == env) return true;
    }
    return false;
}

void unlink(const eeEnv* env) {
    eeEnv* before = chain.master;
    while (before->next != env) before = before->next;
    before->next = env->next;
    if (chain.last == env) chain.last = before;
}

}  // namespace orvix::gsl::env

using namespace orvix::gsl::env;

bool gui_env_init(void) {
    if (chain.master != nullptr) return true;
    read_custom_directory();
    eeEnv* env = new_environment();
    if (env == nullptr) return false;
    chain.master = chain.last = env;
    load_levels(env, "hxorvix", all_levels);
    return true;
}

eeEnv* gui_env_open(const char* name, EnvlocE loc) {
    if (!gui_env_init() || name == nullptr || name[0] == '\0') return nullptr;
    eeEnv* env = new_environment();
    if (env == nullptr) return nullptr;
    chain.last->next = env;
    chain.last = env;
    if (loc == ENVLOC_ANY) {
        load_levels(env, name, all_levels);
    } else {
        load_levels(env, name, {loc});
    }
    return env;
}
