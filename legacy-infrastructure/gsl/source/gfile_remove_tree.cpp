#include "gfile_names.h"
#include "gfile_wildcard.h"

#include <orvix/core/directory_chain.h>
#include <orvix/core/file_status.h>
#include <orvix/core/path.h>
#include <orvix/gsl/file_trees.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

using orvix::Path;
using orvix::core::Directory;
using orvix::core::DirectoryChain;
using orvix::core::FileKind;

namespace {

using namespace orvix::gsl;

// One walk down a tree that removes what it meets, directories on the way back up.
class TreeRemoval {
public:
    TreeRemoval(std::string_view pattern, bool recursive) : pattern_(pattern), recursive_(recursive) {}

    bool start(const std::string& directory) {
        name_bytes_ = bytes_before_entry(directory);
        // The directory of a wildcard is where the caller sent us. A tree that is to go is never gone into by a link.
        const auto links = recursive_ ? Directory::Links::refused : Directory::Links::followed;
        return chain_.start(directory_path(directory), links);
    }

    bool run() {
        for (;;) {
            Directory::Entry entry;
            if (!levels_.back().stopped && chain_.current().next(&entry)) {
                if (is_self_or_parent(entry.name)) continue;
                if (gfile_match_wildcard(entry.name, chain_.depth() == 1 ? pattern_ : "*")) take(entry);
            } else if (chain_.depth() == 1) {
                return levels_.back().succeeded && chain_.current().is_complete();
            } else if (!leave()) {
                return false;
            }
        }
    }

private:
    // How it went so far in a directory of the chain.
    struct Level {
        bool succeeded = true;
        bool stopped = false;
    };

    void take(const Directory::Entry& entry) {
        const bool too_long = name_bytes_ + std::string_view(entry.name).size() > longest_name;
        if (too_long || entry.kind == FileKind::missing) {
            levels_.back() = {.succeeded = false, .stopped = true};
        } else if (entry.kind != FileKind::directory) {
            note(chain_.current().remove_file(entry.name));
        } else if (recursive_) {
            enter(entry.name);
        }
    }

    void note(bool succeeded) { levels_.back().succeeded = levels_.back().succeeded && succeeded; }

    void enter(const char* entry) {
        if (!chain_.enter(entry)) return note(false);
        levels_.emplace_back();
        name_bytes_ += chain_.current_name().size() + 1;
    }

    // A directory goes only if all below it went. False if the way back up is lost.
    bool leave() {
        const std::string name = chain_.current_name();
        const bool emptied = levels_.back().succeeded;
        levels_.pop_back();
        name_bytes_ -= name.size() + 1;
        if (!chain_.leave()) return false;
        note(emptied && chain_.current().remove_directory(name.c_str()));
        return true;
    }

    DirectoryChain chain_{Directory::Use::scan, Directory::Links::refused};
    std::vector<Level> levels_{1};
    std::string_view pattern_;    // chooses from the top; of what lies below all goes
    std::size_t name_bytes_ = 0;  // of the current directory's name in front of an entry's
    bool recursive_;
};

bool gfile_rm_matching(const std::string& directory, std::string_view pattern, bool recursive) {
    TreeRemoval removal(pattern, recursive);
    return removal.start(directory) && removal.run();
}

// A separator behind a link would have the system look at what the link leads to.
std::string without_any_separator(std::string name) {
    const auto ends_in_separator = [&] { return name.ends_with('\\') || name.ends_with('/'); };
    const auto is_root = [&] { return name.size() == 1 || (name.size() == 3 && name[1] == ':'); };
    while (ends_in_separator() && !is_root()) name.pop_back();
    return name;
}

}  // namespace

bool gfile_rm(const char* name, bool recursive) {
    if (is_too_long(text_of(name))) return false;
    const std::string text = without_separator(text_of(name));
    if (has_wildcard(text)) {
        const std::optional<WildcardName> wildcard = split_wildcard(text);
        return wildcard && gfile_rm_matching(wildcard->directory, wildcard->pattern, false);
    }
    const std::string plain = without_any_separator(text);
    const Path path(plain);
    const FileKind kind = orvix::core::kind_of_name(path);
    if (kind == FileKind::missing) return false;
    if (kind == FileKind::directory && (!recursive || !gfile_rm_matching(plain, "*", true))) return false;
    return path.delete_file_or_directory();
}
