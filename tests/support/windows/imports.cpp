#include "support/windows/imports.h"

#include <cstring>

namespace orvix::test {

namespace {

void write_slot(void** place, void* value) {
    DWORD before = 0;
    VirtualProtect(place, sizeof *place, PAGE_READWRITE, &before);
    *place = value;
    VirtualProtect(place, sizeof *place, before, &before);
}

template <class Record>
Record* at(HMODULE module, DWORD offset) {
    return reinterpret_cast<Record*>(reinterpret_cast<char*>(module) + offset);
}

}  // namespace

ImportReplacement::~ImportReplacement() {
    for (const Slot& slot : slots_) write_slot(slot.place, slot.original);
}

void ImportReplacement::replace(const char* function, void* replacement) {
    for (const wchar_t* name :
         {static_cast<const wchar_t*>(nullptr), L"orvixcore.dll", L"orvixgsl.dll", L"libstdc++-6.dll"}) {
        if (const HMODULE module = GetModuleHandleW(name)) replace_in(module, function, replacement);
    }
}

void ImportReplacement::replace_in(HMODULE module, const char* function, void* replacement) {
    const auto* headers = at<IMAGE_NT_HEADERS>(module, static_cast<DWORD>(at<IMAGE_DOS_HEADER>(module, 0)->e_lfanew));
    const IMAGE_DATA_DIRECTORY& imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    if (imports.Size == 0) return;
    for (auto* library = at<IMAGE_IMPORT_DESCRIPTOR>(module, imports.VirtualAddress); library->Name != 0; ++library) {
        const auto* name = at<IMAGE_THUNK_DATA>(module, library->OriginalFirstThunk);
        auto* place = at<void*>(module, library->FirstThunk);
        for (; name->u1.AddressOfData != 0; ++name, ++place) {
            if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
            const auto* import = at<IMAGE_IMPORT_BY_NAME>(module, static_cast<DWORD>(name->u1.AddressOfData));
            if (std::strcmp(reinterpret_cast<const char*>(import->Name), function) != 0) continue;
            slots_.push_back({place, *place});
            write_slot(place, replacement);
        }
    }
}

}  // namespace orvix::test
