#include "paths/block.h"
#include "paths/fixup.h"

#include <orvix/core/file_status.h>
#include <orvix/core/path.h>
#include <orvix/gsl/canonical_names.h>
#include <orvix/gsl/environment.h>
#include <orvix/gsl/file_names.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <string>
#include <string_view>
#include <utility>

using namespace orvix::gsl::paths;
using orvix::core::FileKind;

namespace {

// A link to a file is never found; one to a directory is, where directories are accepted.
bool is_found(const char* candidate, bool accept_directories) {
    const orvix::Path path(candidate);
    const FileKind kind = orvix::core::kind_of_target(path);
    if (kind == FileKind::regular) return !orvix::core::is_symbolic_link(path);
    return accept_directories && kind == FileKind::directory;
}

// A working copy of a search path, walked with the library's one tokeniser of path lists.
class SearchPath {
public:
    explicit SearchPath(const char* text) : text_(copy_of(text)), start_(text_.get()) {}
    ~SearchPath() {
        // The walk may stop early, and the tokeniser must not go on in a copy that is gone.
        static char nothing_left[] = "";
        gui_env_get_tok(nothing_left);
    }
    SearchPath(const SearchPath&) = delete;
    SearchPath& operator=(const SearchPath&) = delete;

    // The next directory, in a buffer of the tokeniser; null at the end.
    char* next() { return gui_env_get_tok(std::exchange(start_, nullptr)); }

private:
    Block text_;
    char* start_;
};

// Directory, backslash and name, in one block that serves directory after directory.
class Candidate {
public:
    // False without memory.
    bool set(std::string_view directory, std::string_view name) {
        if (!make_room(directory.size() + name.size() + 2)) return false;
        char* const text = text_.get();
        std::memcpy(text, directory.data(), directory.size());
        text[directory.size()] = '\\';
        std::memcpy(text + directory.size() + 1, name.data(), name.size());
        text[directory.size() + 1 + name.size()] = '\0';
        return true;
    }

    const char* text() const { return text_.get(); }
    char* release() { return text_.release(); }

private:
    bool make_room(std::size_t needed) {
        if (needed <= room_) return true;
        const std::size_t room = std::max<std::size_t>(2 * needed, 100);
        char* const moved = gmem_ee_realloc(text_.get(), room, 1);
        if (moved == nullptr) return false;
        static_cast<void>(text_.release());  // given back by the call above
        text_.reset(moved);
        room_ = room;
        return true;
    }

    Block text_;
    std::size_t room_ = 0;
};

char* find_along(SearchPath* search_path, const char* name, bool accept_directories) {
    try {
        Candidate candidate;
        while (char* const directory = search_path->next()) {
            const std::size_t size = fix_up(directory, std::strlen(directory), Trailing::cut);
            if (!candidate.set({directory, size}, name)) return nullptr;
            if (is_found(candidate.text(), accept_directories)) return candidate.release();
        }
    } catch (const std::bad_alloc&) {
        // Not found, as for a candidate that there is no room for.
    }
    return nullptr;
}

}  // namespace

char* HX_find_file(const char* name, const char* search_path, bool accept_directories) {
    if (name == nullptr || name[0] == '\0') return nullptr;
    if (HX_path_is_absolute(name)) {
        Block copy = copy_of(name);
        HX_fixup_path(copy.get());
        return is_found(copy.get(), accept_directories) ? copy.release() : nullptr;
    }
    const Block copy = copy_of(name);  // which may stand in the tokeniser's buffer
    SearchPath directories(search_path != nullptr ? search_path : ".");
    return find_along(&directories, copy.get(), accept_directories);
}

std::string HX_find_file_new(const std::string& name, const std::string& search_path, bool accept_directories) {
    const Block found(HX_find_file(name.c_str(), search_path.c_str(), accept_directories));
    return found != nullptr ? found.get() : "";
}
