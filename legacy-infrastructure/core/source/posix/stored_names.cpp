#include <orvix/core/stored_names.h>

#include "common/name_text.h"
#include "posix/drives.h"
#include "posix/host_name.h"

#include <orvix/core/file_status.h>

namespace orvix::core {

namespace {

std::string_view last_part_of(std::string_view text) {
    std::size_t end = text.size();
    while (end > 0 && is_separator(text[end - 1])) --end;
    std::size_t begin = end;
    while (begin > 0 && !is_separator(text[begin - 1])) --begin;
    return text.substr(begin, end - begin);
}

}  // namespace

char current_drive() {
    const std::optional<Drive> drive = current_drive_and_root();
    return drive ? drive->letter : '\0';
}

bool stored_last_part(const Path& name, std::string* last_part) {
    if (kind_of_name(name) == FileKind::missing) return false;
    *last_part = last_part_of(name.host());
    return true;
}

// Only letter case can differ between the two, so the stored spelling takes the typed one's place from the end on.
std::string long_name(const Path& name) {
    if (kind_of_name(name) == FileKind::missing) return "";
    HostName typed;
    if (!translate(name, &typed)) return "";
    const std::string stored = name.host();
    std::string spelled = name.native();
    if (stored == typed.text.view()) return spelled;

    std::size_t from = stored.size();
    for (std::size_t to = spelled.size(); to > 0 && from > 0; --to, --from) {
        const bool separator = spelled[to - 1] == '\\';
        if (separator != (stored[from - 1] == '/')) break;
        if (!separator) spelled[to - 1] = stored[from - 1];
        // A run of separators in the name is one slash on the host.
        while (separator && to > 1 && spelled[to - 2] == '\\') --to;
        if (from <= typed.root_bytes) break;
    }
    return spelled;
}

std::string short_name(const Path& name) { return name.exists() ? name.native() : ""; }

}  // namespace orvix::core
