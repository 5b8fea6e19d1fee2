#include "gfile_names.h"
#include "gfile_wildcard.h"

#include <orvix/core/directory.h>
#include <orvix/core/files.h>
#include <orvix/core/path.h>
#include <orvix/gsl/file_names.h>
#include <orvix/gsl/file_trees.h>
#include <orvix/gsl/files.h>

#include <string>
#include <string_view>

using orvix::core::Directory;

namespace {

using namespace orvix::gsl;

constexpr int all_for_owner = 0700;

bool gfile_chmod_matching(const std::string& directory, std::string_view pattern, int mode) {
    Directory scan;
    const orvix::Path path = directory_path(gfile_strip_dir_name_and_convert_kstring(directory));
    if (!scan.open(path, Directory::Use::scan, Directory::Links::followed)) return false;
    Directory::Entry entry;
    while (scan.next(&entry)) {
        if (is_self_or_parent(entry.name) || !gfile_match_wildcard(entry.name, pattern)) continue;
        if (!scan.change_mode(entry.name, mode)) return false;
    }
    return scan.is_complete();
}

}  // namespace

bool gfile_chmod(const char* name, int mode) {
    const std::string text = gfile_strip_dir_name_and_convert_kstring(text_of(name));
    if (has_wildcard(text)) {
        return gfile_chmod_matching(orvix::Path(text).parent_path(), behind_prefix(text), mode);
    }
    return gfile_type(text.c_str()) != 0 && orvix::chmod_utf8(text, mode) == 0;
}

bool gfile_chmod_give_all_permissions(const char* name) { return gfile_chmod(name, all_for_owner); }
