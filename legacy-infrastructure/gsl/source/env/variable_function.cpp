#include <orvix/gsl/application_environment.h>

#include <cstdlib>
#include <cstring>
#include <string_view>

namespace {

constexpr std::string_view head = "var(\"";
constexpr std::string_view tail = "\")";

// Null without memory.
char* joined(std::string_view a, std::string_view b, std::string_view c) {
    char* const text = static_cast<char*>(std::malloc(a.size() + b.size() + c.size() + 1));
    if (text == nullptr) return nullptr;
    char* end = text;
    for (const std::string_view part : {a, b, c}) end += part.copy(end, part.size());
    *end = '\0';
    return text;
}

}  // namespace

char* astr_add_var_fn(const char* name) { return name != nullptr ? joined(head, name, tail) : nullptr; }

char* astr_delete_var_fn(const char* text) {
    if (text == nullptr) return nullptr;
    std::string_view name = text;
    // One quote cannot both open and close.
    if (name.size() < head.size() + tail.size() || !name.starts_with(head) || !name.ends_with(tail)) return nullptr;
    name.remove_prefix(head.size());
    name.remove_suffix(tail.size());
    return joined(name, {}, {});
}
