#include "paths/block.h"
#include "paths/completion.h"
#include "paths/last_mark.h"

#include <orvix/core/path.h>
#include <orvix/gsl/canonical_names.h>

#include <cstring>
#include <optional>
#include <string>
#include <string_view>

using namespace orvix::gsl::paths;

namespace {

std::size_t length_to_last_separator(std::string_view name) { return length_to_last<'/', '\\'>(name); }

}  // namespace

char* HX_canonical_path_force(const char* name, char* out) {
    if (name == nullptr) return nullptr;
    std::optional<std::string> directory = completed(name);
    const std::size_t front = directory ? length_to_last_separator(*directory) : 0;
    if (front == 0) return nullptr;  // nothing left of the name, or "c:x", which has no directory to ask for
    const std::string last_part = directory->substr(front);
    directory->resize(front - 1);

    const Block known(HX_get_canonical_directory_name(directory->data()));
    const std::string whole = joined(known != nullptr ? known.get() : *directory, last_part);
    std::memcpy(out, whole.c_str(), whole.size() + 1);
    HX_fixup_path(out);
    return out;
}

std::string HX_canonical_path_force_new(const std::string& name) {
    const std::optional<std::string> whole = completed(name);
    if (!whole) return "";
    // "c:x" has the empty directory, which cannot be entered and stays empty.
    const std::size_t front = length_to_last_separator(*whole);
    const std::string directory = whole->substr(0, front != 0 ? front - 1 : 0);
    const std::string known = HX_get_canonical_directory_name_new(orvix::Path(directory));
    return HX_fixup_path_new(joined(known, whole->substr(front)));
}
