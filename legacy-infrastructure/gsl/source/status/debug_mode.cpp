#include <orvix/gsl/getenv.h>
#include <orvix/gsl/status.h>

#include <cstdarg>

bool is_debug_mode_active_for(const char* variable, ...) {
    const char* value = gsl_getenv(variable);
    if (value == nullptr) return false;

    std::va_list modes;
    va_start(modes, variable);
    bool active = false;
    while (const char* mode = va_arg(modes, const char*)) {
        active = gsl_strcmp(mode, value) == 0;
        if (active) break;
    }
    va_end(modes);
    return active;
}
