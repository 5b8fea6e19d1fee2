#include "support/drives.h"

#include "support/windows/wine.h"

#include <cwctype>
#include <stdexcept>
#include <string>

#include <windows.h>

namespace orvix::test {

const bool drives_are_variables = false;

struct MappedDrive::OfTheSystem {
    OfTheSystem(char letter, const std::filesystem::path& directory)
        : name{static_cast<wchar_t>(letter), L':'},
          mutex(CreateMutexW(nullptr, FALSE, (L"orvix_test_drive_" + name.substr(0, 1)).c_str())),
          target(std::filesystem::absolute(directory).make_preferred().wstring()) {
        WaitForSingleObject(mutex, INFINITE);
        if (is_wine()) {
            run_on_host(L"ln", {L"-sfn", host_name(target), host_link()});
        } else if (DefineDosDeviceW(0, name.c_str(), target.c_str()) == 0) {
            throw std::runtime_error("no drive can be made");
        }
    }
    ~OfTheSystem() {
        if (is_wine()) {
            run_on_host(L"rm", {L"-f", host_link()});
        } else {
            DefineDosDeviceW(DDD_REMOVE_DEFINITION, name.c_str(), target.c_str());
        }
        ReleaseMutex(mutex);
        CloseHandle(mutex);
    }
    OfTheSystem(const OfTheSystem&) = delete;
    OfTheSystem& operator=(const OfTheSystem&) = delete;

    // Wine's drives are links in its prefix.
    std::wstring host_link() const {
        return host_prefix() + L"/dosdevices/" + static_cast<wchar_t>(std::towlower(name[0])) + L':';
    }

    std::wstring name;
    HANDLE mutex;
    std::wstring target;
};

MappedDrive::MappedDrive(char letter, const std::filesystem::path& directory)
    : drive_(new OfTheSystem(letter, directory)) {}

MappedDrive::~MappedDrive() { delete drive_; }

}  // namespace orvix::test
