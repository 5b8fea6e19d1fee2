#include <orvix/gsl/directory_scan.h>
#include <orvix/gsl/file_names.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

namespace {

constexpr bool is_letter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

constexpr bool is_separator(char c) { return c == '\\' || c == '/'; }

// A bare drive: its root is asked for, not its current directory.
constexpr bool is_drive(std::string_view name) { return name.size() == 2 && is_letter(name[0]) && name[1] == ':'; }

// True if the status calls would spell the name in another way first: with backslashes, without a separator at the end
// unless it is that of a root, and a drive as its root.
bool has_plainer_spelling(std::string_view name) {
    return is_drive(name) || (!name.empty() && is_separator(name.back())) || name.find('/') != std::string_view::npos;
}

std::string plain_spelling(std::string_view name) {
    std::string text(name);
    if (is_drive(name)) text += '\\';
    std::replace(text.begin(), text.end(), '/', '\\');
    gfile_strip_dir_name(text.data());
    text.resize(std::strlen(text.c_str()));
    return text;
}

template <class Record>
int look(std::string_view name, Record* record) {
    return record != nullptr ? orvix::core::read_status_utf8(name, record) : orvix::core::test_existence_utf8(name);
}

template <class Record>
int status_of(const char* name, Record* record) {
    if (name == nullptr) return -1;
    const std::string_view given = name;
    if (!has_plainer_spelling(given)) return look(given, record);
    const std::string plain = plain_spelling(given);
    const int result = look(plain, record);
    // The plain spelling may have harmed a name that exists only as it was given.
    return result == -1 && plain != given ? look(given, record) : result;
}

constexpr unsigned type_mask = 0xf000;
constexpr unsigned directory_type = 0x4000;

}  // namespace

int gsl_stat(const char* name, orvix::core::FileStatus32* record) { return status_of(name, record); }

int gsl_stat_64(const char* name, orvix::core::FileStatus* record) { return status_of(name, record); }

bool gsl_stat_is_dir(const orvix::core::FileStatus32* record) {
    return (static_cast<unsigned>(record->st_mode) & type_mask) == directory_type;
}
