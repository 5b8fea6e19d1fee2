#include "common/name_text.h"
#include "common/path_access.h"

#include <orvix/core/files.h>
#include <orvix/core/path.h>

namespace orvix {

using core::is_separator;

namespace {

// Length of what a name keeps when all its parts are gone: "c:\" of "c:\a", "c:" of "c:a", "\" of "\a".
std::size_t root_length(std::string_view text) {
    const std::size_t drive = core::has_drive(text) ? 2 : 0;
    return drive + (text.size() > drive && is_separator(text[drive]) ? 1 : 0);
}

// Steps through a name as comparisons see it: lower case, one backslash for a run of separators, but two in front.
class ComparedName {
public:
    explicit ComparedName(std::string_view text) : text_(text) {
        if (core::is_network_name(text)) position_ = 1;
        leading_ = position_ == 1;
    }

    // The next byte, or -1 at the end.
    int next() {
        if (leading_) {
            leading_ = false;
            return '\\';
        }
        if (position_ == text_.size()) return -1;
        const char c = text_[position_++];
        if (!is_separator(c)) return static_cast<unsigned char>(core::to_lower(c));
        while (position_ < text_.size() && is_separator(text_[position_])) ++position_;
        return '\\';
    }

private:
    std::string_view text_;
    std::size_t position_ = 0;
    bool leading_ = false;
};

}  // namespace

Path::Path(const char* text) : text_(text != nullptr ? text : "") {}

Path::Path(const std::string& text) : text_(text) {}

Path Path::exact(const std::string& text) { return Path(text, Spelling::exact); }

Path Path::current_path() { return Path(getcwd_utf8()); }

std::string Path::native() const { return spelling_ == Spelling::host ? text_ : core::with_backslashes(text_); }

Path Path::parent_path() const {
    const std::size_t root = root_length(text_);
    std::size_t end = text_.size();
    while (end > root && !is_separator(text_[end - 1])) --end;
    while (end > root && is_separator(text_[end - 1])) --end;
    return Path(text_.substr(0, end), spelling_);
}

Path& Path::append(const Path& part) {
    // An entry of a directory is below it whatever its name looks like.
    const bool is_entry = part.spelling_ == Spelling::exact;
    if (text_.empty() || (core::is_rooted(part.text_) && !is_entry)) {
        *this = part;
        return *this;
    }
    const char separator = spelling_ == Spelling::host ? '/' : '\\';
    // "c:" joined with "a" stays on the drive's current directory.
    const bool bare_drive = text_.size() == 2 && core::has_drive(text_);
    if (!is_separator(text_.back()) && !bare_drive) text_ += separator;
    text_ += part.text_;
    return *this;
}

int Path::compare_filenames(const Path& a, const Path& b) {
    ComparedName first(a.text_);
    ComparedName second(b.text_);
    for (;;) {
        const int x = first.next();
        const int y = second.next();
        if (x != y) return x < y ? -1 : 1;
        if (x == -1) return 0;
    }
}

std::string fixFilenameSlashes(const std::string& name) { return core::with_backslashes(name); }

}  // namespace orvix
