#include "paths/completion.h"
#include "paths/fixup.h"

#include <orvix/gsl/canonical_names.h>
#include <orvix/gsl/file_names.h>

#include <cstring>
#include <optional>
#include <string>
#include <string_view>

using namespace orvix::gsl::paths;

// Called for every name that is compared or stored, so the text is put together where it is to stand.
char* HX_canonical_path(const char* name, char* out) {
    if (name == nullptr) return nullptr;
    std::string_view rest = name;
    std::size_t size = 0;
    if (!HX_path_is_absolute(name)) {
        rest = without_dot_prefixes(rest);
        if (rest.empty()) return nullptr;
        size = orvix::core::put_current_directory(out);
        out[size++] = '/';
    }
    std::memmove(out + size, rest.data(), rest.size());
    size += rest.size();
    out[fix_up(out, size, Trailing::cut)] = '\0';
    return out;
}

std::string HX_canonical_path_new(const std::string& name) {
    const std::optional<std::string> whole = completed(name);
    return whole ? HX_fixup_path_new(*whole) : "";
}
