#include "expansion_pass.h"

#include <orvix/gsl/getenv.h>

#include <algorithm>

namespace workbench {

namespace {

bool is_name_character(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

char to_upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

// A reference at the head of a text: `$NAME`, `%NAME`, `{$NAME}` or `{%NAME}`. No length: there is none.
struct Reference {
    std::size_t length = 0;
    char kind = 0;
    std::string name;
};

Reference reference_at(std::string_view text) {
    const bool braced = text.front() == '{';
    const std::string_view behind = text.substr(braced ? 1 : 0);
    if (behind.empty() || (behind.front() != '$' && behind.front() != '%')) return {};

    const std::string_view rest = behind.substr(1);
    const auto stop = braced ? std::find(rest.begin(), rest.end(), '}')
                             : std::find_if_not(rest.begin(), rest.end(), is_name_character);
    Reference found;
    found.kind = behind.front();
    found.name.assign(rest.begin(), stop);
    std::transform(found.name.begin(), found.name.end(), found.name.begin(), to_upper);
    found.length = (braced ? 2 : 1) + found.name.size();
    if (braced && stop != rest.end()) ++found.length;
    return found;
}

std::string value_of_reference(eeEnv* env, const Reference& reference) {
    if (reference.kind == '%') return value_in_sight(env, reference.name).value_or("");
    const char* const value = gsl_getenv(reference.name.c_str());
    return value != nullptr ? value : "";
}

}  // namespace

Pass expansion_pass(eeEnv* env, std::string_view text) {
    Pass pass;
    bool copy_next = true;  // false: a reference yielded nothing, and the next plain character goes with it
    while (!text.empty()) {
        const Reference reference = reference_at(text);
        if (reference.length != 0) {
            const std::string value = value_of_reference(env, reference);
            pass.saw_reference = true;
            pass.text += value;
            if (value.empty()) {
                copy_next = false;
                pass.vanished.push_back({std::string(text.substr(0, reference.length)), ""});
            }
            text.remove_prefix(reference.length);
            continue;
        }
        if (copy_next) {
            pass.text += text.front();
        } else {
            pass.vanished.back().character = text.front();
            copy_next = true;
        }
        text.remove_prefix(1);
    }
    if (pass.text.ends_with(':')) pass.text.pop_back();
    return pass;
}

}  // namespace workbench
