#include <orvix/core/variables.h>
#include <orvix/gsl/getenv.h>

#include <cstdlib>
#include <cstring>

char* gsl_getenv(const char* name) {
    static char* last = nullptr;
    if (name == nullptr) return nullptr;

    std::string value;
    if (!orvix::getenv_check_registry_stdstring_allow_empty(name, &value)) return nullptr;
    auto* copy = static_cast<char*>(std::malloc(value.size() + 1));
    if (copy == nullptr) return nullptr;
    std::memcpy(copy, value.c_str(), value.size() + 1);
    std::free(last);
    last = copy;
    return last;
}
