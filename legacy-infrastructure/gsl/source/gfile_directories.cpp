#include <orvix/core/path.h>
#include <orvix/gsl/file_names.h>
#include <orvix/gsl/files.h>

namespace {

orvix::Path directory_to_make(const char* name) { return gfile_strip_dir_name_and_convert_kstring(name); }

}  // namespace

int gsl_mkdir(const char* directory, [[maybe_unused]] int mode) {
    return directory != nullptr && directory_to_make(directory).create_directory() ? 0 : -1;
}

int gsl_forceDirectoryToExist(const char* directory, [[maybe_unused]] int mode) {
    return directory != nullptr && directory_to_make(directory).create_directories() ? 0 : -1;
}
