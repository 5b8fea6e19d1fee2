#include "support/registry.h"

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <vector>

#include <windows.h>

namespace orvix::test {

namespace {

std::wstring wide(const std::string& utf8) {
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end())).wstring();
}

struct Stored {
    DWORD type;
    std::vector<BYTE> bytes;
};

std::optional<Stored> read(HKEY key, const std::wstring& name) {
    Stored stored{};
    DWORD size = 0;
    if (RegQueryValueExW(key, name.c_str(), nullptr, &stored.type, nullptr, &size) != ERROR_SUCCESS)
        return std::nullopt;
    stored.bytes.resize(size);
    RegQueryValueExW(key, name.c_str(), nullptr, &stored.type, stored.bytes.data(), &size);
    return stored;
}

}  // namespace

const bool has_registry = true;

struct RegistryValue::State {
    HANDLE mutex = CreateMutexW(nullptr, FALSE, L"orvix_test_registry");
    HKEY branch = nullptr;
    std::wstring path;
    std::wstring name;
    HKEY key = nullptr;
    DWORD disposition = 0;
    std::optional<Stored> before;
};

RegistryValue::RegistryValue(Branch branch, const std::string& key, const std::string& name, const std::string& text,
                             Kind kind)
    : state_(new State) {
    WaitForSingleObject(state_->mutex, INFINITE);
    state_->branch = branch == Branch::machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
    state_->path = wide(key);
    state_->name = wide(name);
    if (RegCreateKeyExW(state_->branch, state_->path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &state_->key,
                        &state_->disposition) != ERROR_SUCCESS) {
        throw std::runtime_error("cannot make the key " + key);
    }
    state_->before = read(state_->key, state_->name);
    const std::wstring value = wide(text);
    RegSetValueExW(state_->key, state_->name.c_str(), 0, kind == Kind::plain ? REG_SZ : REG_EXPAND_SZ,
                   reinterpret_cast<const BYTE*>(value.c_str()),
                   static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
}

RegistryValue::~RegistryValue() {
    if (state_->before) {
        RegSetValueExW(state_->key, state_->name.c_str(), 0, state_->before->type, state_->before->bytes.data(),
                       static_cast<DWORD>(state_->before->bytes.size()));
    } else {
        RegDeleteValueW(state_->key, state_->name.c_str());
    }
    RegCloseKey(state_->key);
    if (state_->disposition == REG_CREATED_NEW_KEY) RegDeleteKeyW(state_->branch, state_->path.c_str());
    ReleaseMutex(state_->mutex);
    CloseHandle(state_->mutex);
    delete state_;
}

}  // namespace orvix::test
