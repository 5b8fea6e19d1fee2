#include <orvix/core/variables.h>

#include "common/process_variable.h"

#include <orvix/core/registry.h>

namespace orvix {

bool getenv_check_registry_stdstring_allow_empty(const std::string& name, std::string* value) {
    std::string text;
    const bool found = core::process_variable(name, &text) || core::registry_variable(name, &text);
    if (value != nullptr) *value = std::move(text);
    return found;
}

std::string getenv_check_registry_stdstring(const std::string& name) {
    std::string value;
    getenv_check_registry_stdstring_allow_empty(name, &value);
    return value;
}

}  // namespace orvix
