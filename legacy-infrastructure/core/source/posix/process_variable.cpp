#include "common/process_variable.h"

#include <cstdlib>

namespace orvix::core {

bool process_variable(const std::string& name, std::string* value) {
    const char* text = std::getenv(name.c_str());
    if (text == nullptr) return false;
    *value = text;
    return true;
}

}  // namespace orvix::core
