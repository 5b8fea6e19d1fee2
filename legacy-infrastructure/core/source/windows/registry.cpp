#include <orvix/core/registry.h>

#include "windows/wide_name.h"

#include <windows.h>

namespace orvix::core {

namespace {

// Where the system keeps what it starts the variables of a new process from.
constexpr const char* user_variables = "Environment";
constexpr const char* machine_variables = R"(SYSTEM\CurrentControlSet\Control\Session Manager\Environment)";

class Key {
public:
    // Paths of keys are plain ASCII here; names and texts of values are not.
    Key(HKEY branch, const char* path) {
        if (RegOpenKeyExA(branch, path, 0, KEY_READ, &key_) != ERROR_SUCCESS) key_ = nullptr;
    }
    ~Key() {
        if (key_ != nullptr) RegCloseKey(key_);
    }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;

    // False if the key or the value is not there, or is no text.
    bool read_text(const wchar_t* name, std::wstring* text) const {
        if (key_ == nullptr) return false;
        DWORD type = REG_NONE;
        DWORD bytes = 0;
        LSTATUS result = RegQueryValueExW(key_, name, nullptr, &type, nullptr, &bytes);
        // Another process may change the value between two calls.
        while (result == ERROR_SUCCESS || result == ERROR_MORE_DATA) {
            text->resize(bytes / sizeof(wchar_t) + 1);
            bytes = static_cast<DWORD>(text->size() * sizeof(wchar_t));
            result = RegQueryValueExW(key_, name, nullptr, &type, reinterpret_cast<BYTE*>(text->data()), &bytes);
            if (result == ERROR_SUCCESS) break;
        }
        if (result != ERROR_SUCCESS || (type != REG_SZ && type != REG_EXPAND_SZ)) return false;
        // Whoever wrote the value may have left the zero at its end out.
        text->resize(bytes / sizeof(wchar_t));
        text->resize(std::wstring_view(*text).find(L'\0') != std::wstring::npos ? text->find(L'\0') : text->size());
        if (type == REG_EXPAND_SZ) *text = expanded(*text);
        return true;
    }

private:
    // Puts in the values of variables that stand between percent signs.
    static std::wstring expanded(const std::wstring& text) {
        std::wstring result;
        DWORD size = ExpandEnvironmentStringsW(text.c_str(), nullptr, 0);
        while (size > result.size()) {
            result.resize(size);
            size = ExpandEnvironmentStringsW(text.c_str(), result.data(), size);
        }
        if (size == 0) return text;
        result.resize(size - 1);
        return result;
    }

    HKEY key_ = nullptr;
};

bool read(HKEY branch, const char* path, const wchar_t* name, std::string* value) {
    std::wstring text;
    if (!Key(branch, path).read_text(name, &text)) return false;
    *value = narrow(text);
    return true;
}

}  // namespace

bool machine_registry_text(const std::string& key, const std::string& name, std::string* value) {
    return read(HKEY_LOCAL_MACHINE, key.c_str(), widen(name).c_str(), value);
}

bool registry_variable(const std::string& name, std::string* value) {
    const std::wstring wide_name = widen(name);
    // The default value of a key is no variable.
    if (wide_name.empty()) return false;
    return read(HKEY_CURRENT_USER, user_variables, wide_name.c_str(), value) ||
           read(HKEY_LOCAL_MACHINE, machine_variables, wide_name.c_str(), value);
}

}  // namespace orvix::core
