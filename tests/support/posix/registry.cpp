#include "support/registry.h"

namespace orvix::test {

const bool has_registry = false;

RegistryValue::RegistryValue(Branch, const std::string&, const std::string&, const std::string&, Kind) {}

RegistryValue::~RegistryValue() = default;

}  // namespace orvix::test
