// What an environment's name means.
#pragma once

#include <orvix/gsl/application_environment.h>
#include <orvix/gsl/environment.h>

namespace orvix::gsl::env {

constexpr EnvlocE level_of(AstrEnvlocE loc) {
    switch (loc) {
        case ASTR_ENVLOC_CWD:
            return ENVLOC_CWD;
        case ASTR_ENVLOC_USER:
            return ENVLOC_USER;
        case ASTR_ENVLOC_SYSTEM:
            return ENVLOC_SYSTEM;
        default:
            return ENVLOC_ANY;
    }
}

// An override, or an open environment, or nothing: the selected environment may have nothing behind it. What had to be
// opened is closed at the end of the scope, without being saved.
class NamedEnvironment {
public:
    explicit NamedEnvironment(const char* name);  // not null, not empty
    ~NamedEnvironment();
    NamedEnvironment(const NamedEnvironment&) = delete;
    NamedEnvironment& operator=(const NamedEnvironment&) = delete;

    ASTR_ApplicationEnvironmentOverride* override() const { return override_; }
    eeEnv* store() const { return store_; }

    // Saves and closes the store. The selected environment is opened again at once.
    void save();

    // Leaves a store that had to be opened open.
    void keep_open() { temporary_ = false; }

private:
    ASTR_ApplicationEnvironmentOverride* override_;
    eeEnv* store_ = nullptr;
    bool temporary_ = false;
};

}  // namespace orvix::gsl::env
