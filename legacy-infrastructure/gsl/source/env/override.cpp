#include <orvix/gsl/application_environment.h>

#include "env/current_environment.h"
#include "env/override_list.h"

#include <orvix/gsl/status.h>

#include <cstring>
#include <vector>

namespace {

using orvix::gsl::env::current;
using Override = ASTR_ApplicationEnvironmentOverride;

std::vector<Override*>& overrides() {
    static auto& list = *new std::vector<Override*>;  // never destroyed: overrides may be static objects
    return list;
}

std::shared_ptr<const char[]> copy_of(const char* text) {
    if (text == nullptr) return nullptr;
    const std::size_t bytes = std::strlen(text) + 1;
    std::shared_ptr<char[]> copy = std::make_shared<char[]>(bytes);
    std::memcpy(copy.get(), text, bytes);
    return copy;
}

}  // namespace

Override* orvix::gsl::env::registered_override(const char* name) {
    for (Override* override : overrides()) {
        if (gsl_strcmp(override->get_env_name(), name) == 0) return override;
    }
    return nullptr;
}

ASTR_ApplicationEnvironmentOverride::ASTR_ApplicationEnvironmentOverride(const char* name) : env_name(copy_of(name)) {}

ASTR_ApplicationEnvironmentOverride::ASTR_ApplicationEnvironmentOverride(const Override&) = default;

Override& ASTR_ApplicationEnvironmentOverride::operator=(const Override&) = default;

ASTR_ApplicationEnvironmentOverride::~ASTR_ApplicationEnvironmentOverride() {
    current.drop(this);
    std::erase(overrides(), this);
}

const char* ASTR_ApplicationEnvironmentOverride::get_env_name() const { return env_name.get(); }

void ASTR_ApplicationEnvironmentOverride::register_override(Override* override) {
    if (override != nullptr) overrides().push_back(override);
}
