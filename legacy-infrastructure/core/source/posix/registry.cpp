#include <orvix/core/registry.h>

namespace orvix::core {

bool machine_registry_text(const std::string&, const std::string&, std::string*) { return false; }

bool registry_variable(const std::string&, std::string*) { return false; }

}  // namespace orvix::core
