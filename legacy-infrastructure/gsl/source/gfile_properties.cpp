#include "gfile_names.h"

#include <orvix/core/files.h>
#include <orvix/core/path.h>
#include <orvix/gsl/directory_scan.h>
#include <orvix/gsl/files.h>

#include <string>

using orvix::gsl::text_of;

namespace {

constexpr int may_write = 2;
constexpr int may_read = 4;

bool is_accessible(const char* name, int mode) { return orvix::access_utf8(text_of(name), mode) == 0; }

}  // namespace

bool gfile_exists(const char* name) { return gsl_stat(name, nullptr) == 0; }

bool gfile_is_dir(const char* name) { return orvix::Path(name).is_directory(); }

bool gfile_is_readable(const char* name) { return is_accessible(name, may_read); }

bool gfile_is_executable(const char* name) { return gfile_is_readable(name); }

bool gfile_is_writable(const char* name) { return is_accessible(name, may_write); }

bool gfile_is_file_older(const char* first, const char* second) {
    orvix::core::FileStatus32 of_first;
    orvix::core::FileStatus32 of_second;
    if (gsl_stat(first, &of_first) != 0 || gsl_stat(second, &of_second) != 0) return false;
    return of_first.st_mtime > of_second.st_mtime;
}

int gfile_type(const char* name) {
    const char* text = text_of(name);
    return orvix::gsl::is_too_long(text) ? 0 : orvix::gsl::type_word(orvix::gsl::without_separator(text));
}
