#include "env/process_variable.h"

#include <orvix/core/variables.h>
#include <orvix/gsl/getenv.h>

#include <string>
#include <utility>

namespace {

// Takes the value of a variable. False, and `value` untouched, if it is not set.
bool read(std::string_view name, std::string* value) {
    std::string found;
    if (!orvix::getenv_check_registry_stdstring_allow_empty(std::string(name), &found)) return false;
    *value = std::move(found);
    return true;
}

// Never destroyed: objects that outlive this library's may still hold a result while the process ends.
std::string& new_value() { return *new std::string; }

}  // namespace

std::optional<std::string_view> orvix::gsl::env::process_variable(std::string_view name) {
    static std::string& value = new_value();
    if (!read(name, &value)) return std::nullopt;
    return value;
}

char* gsl_getenv(const char* name) {
    static std::string& value = new_value();
    return name != nullptr && read(name, &value) ? value.data() : nullptr;
}
