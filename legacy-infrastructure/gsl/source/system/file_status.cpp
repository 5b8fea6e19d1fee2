#include <orvix/core/path.h>
#include <orvix/gsl/directory_scan.h>

#include <algorithm>
#include <string>

namespace {

constexpr bool is_letter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

// A name as the status calls see it first: backslashes, no separator at the end but that of a root, and the root of a
// drive for the drive alone, whose current directory is not what is asked for.
std::string plain_spelling(const std::string& name) {
    std::string text = name;
    if (text.size() == 2 && is_letter(text[0]) && text[1] == ':') text += '\\';
    std::replace(text.begin(), text.end(), '/', '\\');
    const bool drive_root = text.size() == 3 && text[1] == ':';
    if (text.size() >= 2 && text.back() == '\\' && !drive_root) text.pop_back();
    return text;
}

template <class Record>
int look(const std::string& name, Record* record) {
    return record != nullptr ? orvix::core::read_status(name, record) : orvix::core::test_existence(name);
}

template <class Record>
int status_of(const char* name, Record* record) {
    if (name == nullptr) return -1;
    const std::string given = name;
    const std::string plain = plain_spelling(given);
    const int result = look(plain, record);
    // The plain spelling may have harmed a name that exists only as it was given.
    return result == -1 && plain != given ? look(given, record) : result;
}

constexpr unsigned type_mask = 0xf000;
constexpr unsigned directory_type = 0x4000;

}  // namespace

int gsl_stat(const char* name, _stat64i32* record) { return status_of(name, record); }

int gsl_stat_64(const char* name, _stat64* record) { return status_of(name, record); }

bool gsl_stat_is_dir(const _stat64i32* record) {
    return (static_cast<unsigned>(record->st_mode) & type_mask) == directory_type;
}
