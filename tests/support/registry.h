// Values in the system's registry, for the length of a scope.
#pragma once

#include <string>

namespace orvix::test {

extern const bool has_registry;

// A text at a place where the system or its users keep settings. It and the keys made for it go at the end of the
// scope, and what was there before comes back. Other tests wait for the registry meanwhile. Does nothing without a
// registry.
class RegistryValue {
public:
    enum class Branch { machine, user };
    enum class Kind { plain, with_variables };

    RegistryValue(Branch branch, const std::string& key, const std::string& name, const std::string& text,
                  Kind kind = Kind::plain);
    ~RegistryValue();
    RegistryValue(const RegistryValue&) = delete;
    RegistryValue& operator=(const RegistryValue&) = delete;

private:
    struct State;
    State* state_ = nullptr;
};

}  // namespace orvix::test
