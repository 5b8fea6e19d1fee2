#include "env/current_environment.h"

#include "env/chain.h"
#include "env/override_list.h"

#include <orvix/gsl/status.h>
#include <orvix/gsl/string_utilities.h>

namespace orvix::gsl::env {

constinit CurrentEnvironment current;

bool CurrentEnvironment::is_named(const char* name) const { return name_ != nullptr && gsl_strcmp(name, name_) == 0; }

// Whoever closes all environments drops the master too, which is never freed while others are open: another
// environment may come to lie where this one lay, but then the master is another one.
eeEnv* CurrentEnvironment::store() const {
    return opened_ != nullptr && chain.master == master_ && is_open(opened_) ? opened_ : nullptr;
}

void CurrentEnvironment::set_name(const char* name) {
    char* copy = astr_new_string(name);
    astr_free_string(name_);
    name_ = copy;
}

void CurrentEnvironment::open() {
    override_ = registered_override(name_);
    if (override_ == nullptr) open_store();
}

void CurrentEnvironment::close() {
    override_ = nullptr;
    gui_env_close(store(), true);
    opened_ = nullptr;
}

void CurrentEnvironment::reopen_store() {
    gui_env_close(store(), true);
    open_store();
}

void CurrentEnvironment::drop(const ASTR_ApplicationEnvironmentOverride* override) {
    if (override_ == override) override_ = nullptr;
}

void CurrentEnvironment::open_store() {
    opened_ = gui_env_open(name_, ENVLOC_ANY);
    master_ = chain.master;
}

}  // namespace orvix::gsl::env
