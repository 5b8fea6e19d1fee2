#include <orvix/core/path.h>
#include <orvix/gsl/file_names.h>

#include <cstdlib>
#include <cstring>
#include <string>

namespace {

bool is_separator(char c) { return c == '/' || c == '\\'; }

bool is_letter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

}  // namespace

bool HX_path_is_absolute(const char* name) { return is_separator(name[0]) || (is_letter(name[0]) && name[1] == ':'); }

bool gfile_hasfullpath(const char* name) { return name != nullptr && HX_path_is_absolute(name); }

char* gfile_abs_path(const char* name) {
    const std::string full = orvix::Path(name).complete_path().native();
    auto* copy = static_cast<char*>(std::malloc(full.size() + 1));
    if (copy != nullptr) std::memcpy(copy, full.c_str(), full.size() + 1);
    return copy;
}
