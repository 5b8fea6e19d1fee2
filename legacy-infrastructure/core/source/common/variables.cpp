#include <orvix/core/registry.h>
#include <orvix/core/variables.h>

#include <cstdlib>

namespace orvix {

bool getenv_check_registry_stdstring_allow_empty(const std::string& name, std::string* value) {
    std::string text;
    const char* variable = std::getenv(name.c_str());
    if (variable != nullptr) text = variable;
    const bool found = variable != nullptr || core::registry_variable(name, &text);
    if (value != nullptr) *value = std::move(text);
    return found;
}

std::string getenv_check_registry_stdstring(const std::string& name) {
    std::string value;
    getenv_check_registry_stdstring_allow_empty(name, &value);
    return value;
}

}  // namespace orvix
