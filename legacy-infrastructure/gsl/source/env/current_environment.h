// The environment that the application selected.
#pragma once

#include <orvix/gsl/application_environment.h>
#include <orvix/gsl/environment.h>

namespace orvix::gsl::env {

// Behind the name stand either an override or files, or neither. Without a name there is nothing.
class CurrentEnvironment {
public:
    const char* name() const { return name_; }  // never empty; null if none is selected
    bool is_named(const char* name) const;

    ASTR_ApplicationEnvironmentOverride* override() const { return override_; }

    // The environment open on the files; null if there is none. Also null when all environments have been closed over
    // the application's head.
    eeEnv* store() const;

    void set_name(const char* name);  // copied; null for none

    // Puts the registered override behind the name, or else its files.
    void open();

    // Nothing stands behind the name any more. The files are saved.
    void close();

    // Saves the files and reads them afresh.
    void reopen_store();

    // Forgets an override that dies.
    void drop(const ASTR_ApplicationEnvironmentOverride* override);

private:
    void open_store();

    char* name_ = nullptr;                                     // owned
    ASTR_ApplicationEnvironmentOverride* override_ = nullptr;  // the application's
    eeEnv* opened_ = nullptr;
    const eeEnv* master_ = nullptr;  // the master since `opened_` was opened
};

extern CurrentEnvironment current;

}  // namespace orvix::gsl::env
