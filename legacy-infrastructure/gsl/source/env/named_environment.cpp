#include "env/named_environment.h"

#include "env/current_environment.h"
#include "env/override_list.h"

namespace orvix::gsl::env {

NamedEnvironment::NamedEnvironment(const char* name) : override_(registered_override(name)) {
    if (override_ != nullptr) return;
    temporary_ = !current.is_named(name);
    store_ = temporary_ ? gui_env_open(name, ENVLOC_ANY) : current.store();
}

NamedEnvironment::~NamedEnvironment() {
    if (temporary_) gui_env_close(store_, false);
}

void NamedEnvironment::save() {
    if (store_ == nullptr) return;
    if (temporary_) {
        gui_env_close(store_, true);
    } else {
        current.reopen_store();
    }
    store_ = nullptr;
}

}  // namespace orvix::gsl::env
