#include "windows/attributes.h"
#include "windows/file_opening.h"
#include "windows/last_error.h"
#include "windows/wide_name.h"

#include <orvix/core/files.h>
#include <orvix/core/temporary_file.h>
#include <orvix/core/temporary_names.h>

#include <cerrno>
#include <cstdlib>

namespace orvix {

namespace {

constexpr int attempts = 100;  // each with 60 fresh random bits

// The user's directory for temporary files, with a backslash at its end.
std::string named_directory() {
    std::wstring name;
    DWORD size = GetTempPathW(0, nullptr);
    while (size > name.size()) {
        name.resize(size);
        size = GetTempPathW(size, name.data());
    }
    return core::library_name(std::wstring_view(name).substr(0, size));
}

// The system's own, which is always there.
std::string last_resort() {
    wchar_t name[MAX_PATH];
    const UINT size = GetSystemWindowsDirectoryW(name, MAX_PATH);
    return core::library_name({name, size < MAX_PATH ? size : 0}) + "\\Temp\\";
}

std::string temporary_directory() {
    std::string directory = named_directory();
    return Path(directory).is_directory() ? directory : last_resort();
}

// Twelve characters that nobody can guess; none if the system has no random bytes to give.
std::string random_letters() {
    constexpr std::string_view alphabet = "abcdefghijklmnopqrstuvwxyz234567";
    constexpr int letters_in_a_word = 6;  // of 5 bits each
    std::string letters;
    for (int word = 0; word < 2; ++word) {
        unsigned bits = 0;
        if (rand_s(&bits) != 0) return "";
        for (int i = 0; i < letters_in_a_word; ++i, bits >>= 5U) letters += alphabet[bits % alphabet.size()];
    }
    return letters;
}

std::string with_separator(std::string directory) {
    if (!directory.empty() && directory.back() != '\\' && directory.back() != '/') directory += '\\';
    return directory;
}

}  // namespace

TemporaryFile::TemporaryFile(const std::string& prefix, const std::string& extension) {
    const bool placed = prefix.find_last_of("\\/") != std::string::npos;
    const std::string beginning = placed ? prefix : temporary_directory() + prefix;
    const std::string ending = extension.empty() || extension.starts_with('.') ? extension : "." + extension;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const std::string letters = random_letters();
        if (letters.empty()) return;
        const Path candidate = Path(beginning + '_' + letters + ending);
        core::WideName wide;
        if (!core::translate(candidate, &wide)) return;
        core::Handle file(CreateFileW(wide.c_str(), GENERIC_READ | GENERIC_WRITE, core::share_all, nullptr, CREATE_NEW,
                                      FILE_ATTRIBUTE_TEMPORARY, nullptr));
        if (!file.valid() && GetLastError() == ERROR_FILE_EXISTS) continue;
        file_ = core::FileOpening::to_write(std::move(file), true);
        // The current directory may be another one at the end of the scope.
        if (file_.is_open()) path_ = candidate.complete_path();
        return;
    }
}

namespace core {

std::string temporary_name(const char* directory, const char* prefix) {
    std::string place = directory != nullptr ? fixFilenameSlashes(directory) : "";
    if (!Path(place).is_directory()) place = temporary_directory();
    const std::string beginning = with_separator(place) + (prefix != nullptr ? prefix : "");
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const std::string letters = random_letters();
        if (letters.empty()) return "";
        std::string name = beginning + letters;
        if (kind_of_name(Path(name)) == FileKind::missing) return name;
    }
    return "";
}

}  // namespace core

}  // namespace orvix
