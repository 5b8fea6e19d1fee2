#include "gfile_copy.h"
#include "gfile_names.h"
#include "gfile_wildcard.h"

#include <orvix/core/directory_chain.h>
#include <orvix/core/file_status.h>
#include <orvix/core/path.h>
#include <orvix/gsl/file_names.h>
#include <orvix/gsl/file_trees.h>
#include <orvix/gsl/files.h>

#include <optional>
#include <string>
#include <string_view>

using orvix::Path;
using orvix::core::Directory;
using orvix::core::DirectoryChain;
using orvix::core::FileKind;

namespace {

using namespace orvix::gsl;

constexpr auto followed = Directory::Links::followed;
constexpr auto refused = Directory::Links::refused;

// One walk down a source and, in step with it, down a target.
class TreeCopy {
public:
    bool start(const std::string& directory, const std::string& target) {
        source_bytes_ = bytes_before_entry(directory);
        target_bytes_ = bytes_before_entry(target);
        return source_.start(directory_path(directory), followed) && target_.start(directory_path(target), followed);
    }

    // The pattern chooses from the top; of what lies below all is copied.
    bool run(std::string_view pattern, bool recursive) {
        for (;;) {
            Directory::Entry entry;
            while (source_.current().next(&entry)) {
                if (is_self_or_parent(entry.name)) continue;
                if (!gfile_match_wildcard(entry.name, source_.depth() == 1 ? pattern : "*")) continue;
                if (!copy(entry, recursive)) return false;
            }
            if (!source_.current().is_complete()) return false;
            if (source_.depth() == 1) return true;
            if (!leave()) return false;
        }
    }

private:
    bool copy(const Directory::Entry& entry, bool recursive) {
        const std::size_t bytes = std::string_view(entry.name).size();
        if (source_bytes_ + bytes > longest_name || target_bytes_ + bytes > longest_name) return false;
        const std::optional<bool> directory = leads_to_directory(entry);
        if (!directory) return false;
        if (!*directory) return copy_entry(source_.current(), target_.current(), entry.name);
        return !recursive || (target_.current().make_directory(entry.name) && enter(entry.name));
    }

    // None if the entry cannot be read. The scan tells most kinds by itself.
    std::optional<bool> leads_to_directory(const Directory::Entry& entry) const {
        if (entry.kind == FileKind::regular) return false;
        if (entry.kind == FileKind::directory) return true;
        orvix::core::FileStatus status;
        if (source_.current().status(entry.name, &status) != 0) return std::nullopt;
        return orvix::core::is_directory(status);
    }

    // From here on current() is the entry. A link may lead back to what is being copied, or to what is being written:
    // neither would come to an end.
    bool enter(const char* entry) {
        if (!source_.enter(entry) || target_.holds(source_.current()) || !target_.enter(entry)) return false;
        source_bytes_ += source_.current_name().size() + 1;
        target_bytes_ += source_.current_name().size() + 1;
        return true;
    }

    bool leave() {
        source_bytes_ -= source_.current_name().size() + 1;
        target_bytes_ -= source_.current_name().size() + 1;
        return source_.leave() && target_.leave();
    }

    DirectoryChain source_{Directory::Use::scan, followed};
    DirectoryChain target_{Directory::Use::place, refused};
    std::size_t source_bytes_ = 0;  // of the current directory's name in front of an entry's
    std::size_t target_bytes_ = 0;
};

bool gfile_cp_matching(const std::string& directory, std::string_view pattern, const std::string& target,
                       bool recursive) {
    TreeCopy copy;
    return copy.start(directory, target) && copy.run(pattern, recursive);
}

bool lies_within(const std::string& directory, const std::string& other) {
    Directory inner;
    Directory outer;
    return inner.open(directory_path(directory), Directory::Use::place, followed) &&
           outer.open(directory_path(other), Directory::Use::place, followed) && inner.lies_within(outer);
}

bool copy_wildcard(const std::string& from, const std::string& to) {
    const std::optional<WildcardName> source = split_wildcard(from);
    if (!source || type_word(to) != directory_type) return false;
    return gfile_cp_matching(source->directory, source->pattern, to, false);
}

bool copy_directory(const std::string& from, const std::string& to) {
    const int target = type_word(to);
    if (target != 0 && target != directory_type) return false;
    const bool made = target == 0;
    if (made && !Path(to).create_directory()) return false;
    if (lies_within(to, from)) {
        if (made) Path(to).delete_file_or_directory();
        return false;
    }
    return gfile_cp_matching(from, "*", to, true);
}

bool copy_single_file(const std::string& from, std::string to) {
    if (type_word(to) != directory_type) return gfile_copy(from.c_str(), to.c_str());
    if (to.ends_with('/')) to.back() = '\\';
    if (!to.ends_with('\\')) to += '\\';
    to += behind_prefix(from);
    return !is_too_long(to) && gfile_copy(from.c_str(), to.c_str());
}

}  // namespace

bool gfile_cp(const char* from, const char* to, bool recursive) {
    if (is_too_long(text_of(from)) || is_too_long(text_of(to))) return false;
    const std::string source = without_separator(text_of(from));
    const std::string target = without_separator(text_of(to));
    if (has_wildcard(source)) return copy_wildcard(source, target);
    const int type = type_word(source);
    if (type == 0) return false;
    if (type == directory_type) return recursive && copy_directory(source, target);
    return copy_single_file(source, target);
}
