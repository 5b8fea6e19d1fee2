#include "env/process_variable.h"

#include <orvix/core/variables.h>
#include <orvix/gsl/getenv.h>

#include <string>
#include <utility>

namespace {

// Never destroyed: objects that outlive this library's may still hold a result while the process ends.
std::string& last_value() {
    static std::string& value = *new std::string;
    return value;
}

}  // namespace

std::optional<std::string_view> orvix::gsl::env::process_variable(std::string_view name) {
    std::string value;
    if (!getenv_check_registry_stdstring_allow_empty(std::string(name), &value)) return std::nullopt;
    return last_value() = std::move(value);
}

char* gsl_getenv(const char* name) {
    if (name == nullptr) return nullptr;
    return orvix::gsl::env::process_variable(name).has_value() ? last_value().data() : nullptr;
}
