// The modes of `fopen` as flags of `open`.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <fcntl.h>

namespace orvix::core {

// None for text that is no mode.
inline std::optional<int> flags_of_mode(std::string_view mode) {
    if (mode.empty()) return std::nullopt;
    const bool update = mode.find('+') != std::string_view::npos;
    const int access = update ? O_RDWR : O_WRONLY;
    const int exclusive = mode.find('x') != std::string_view::npos ? O_EXCL : 0;
    switch (mode[0]) {
        case 'r':
            return update ? O_RDWR : O_RDONLY;
        case 'w':
            return access | O_CREAT | O_TRUNC | exclusive;
        case 'a':
            return access | O_CREAT | O_APPEND | exclusive;
        default:
            return std::nullopt;
    }
}

// What `fdopen` takes of a mode: neither exclusive creation nor a foreign letter is its business.
inline std::string stream_mode(std::string_view mode) {
    std::string plain(1, mode[0]);
    if (mode.find('+') != std::string_view::npos) plain += '+';
    return plain;
}

}  // namespace orvix::core
