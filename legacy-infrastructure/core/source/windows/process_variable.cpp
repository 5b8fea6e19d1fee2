#include "common/process_variable.h"

#include "windows/wide_name.h"

#include <windows.h>

namespace orvix::core {

// The system's own block of variables, which the C library's copy follows but not the other way round.
bool process_variable(const std::string& name, std::string* value) {
    const std::wstring wide_name = widen(name);
    std::wstring text;
    DWORD size = GetEnvironmentVariableW(wide_name.c_str(), nullptr, 0);
    // Another thread may change the variable between two calls.
    while (size > text.size()) {
        text.resize(size);
        SetLastError(ERROR_SUCCESS);
        size = GetEnvironmentVariableW(wide_name.c_str(), text.data(), size);
    }
    if (text.empty() || (size == 0 && GetLastError() != ERROR_SUCCESS)) return false;
    *value = narrow(std::wstring_view(text).substr(0, size));
    return true;
}

}  // namespace orvix::core
