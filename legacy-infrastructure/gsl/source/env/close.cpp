#include "env/chain.h"
#include "env/saving.h"
#include "env/table.h"

#include <orvix/gsl/environment.h>
#include <orvix/gsl/status.h>

namespace orvix::gsl::env {

namespace {

// Masters that were dropped while other environments were open. Nobody frees them, for programs may hold on to their
// entries; they are kept in reach so that leak checkers see what they are.
eeEnv* dropped_masters = nullptr;

bool save_level(EnvTable& table, const eeEnv& env) {
    if (table.capacity == 0) return true;
    if (&table == &env.user) env_prepare_user_directories(table.path);
    return env_save_table(&table);
}

bool close_tables(eeEnv& env, bool save) {
    bool saved = true;
    for (EnvTable* table : {&env.system, &env.custom, &env.user, &env.cwd}) {
        if (save && !save_level(*table, env)) saved = false;
        clear(*table);
    }
    return saved;
}

void free_environment(eeEnv* env) { gmem_ee_free(reinterpret_cast<char*>(env)); }

void drop_master() {
    chain.master->next = dropped_masters;
    dropped_masters = chain.master;
}

}  // namespace

}  // namespace orvix::gsl::env

using namespace orvix::gsl::env;

bool gui_env_close(eeEnv* env, bool save) {
    if (env == nullptr) return true;
    if (!is_open(env)) return false;
    const bool saved = close_tables(*env, save);
    // The block of the master stays: gui_env_deinit alone ends it.
    if (env != chain.master) {
        unlink(env);
        free_environment(env);
    }
    return saved;
}

bool gui_env_deinit(bool save) {
    if (chain.last == nullptr) return true;
    bool saved = true;
    if (chain.last == chain.master) {
        saved = gui_env_close(chain.master, save);
        free_environment(chain.master);
    } else {
        while (chain.last != chain.master) {
            if (!gui_env_close(chain.last, save)) saved = false;
        }
        drop_master();
    }
    chain = {nullptr, nullptr};
    return saved;
}
