#include <orvix/core/directory_saver.h>

#include "windows/file_opening.h"

#include <orvix/core/files.h>

#include <cerrno>

namespace orvix {

// The name of the directory, which is held so that nobody renames or removes it meanwhile, as nobody can the current
// one.
struct DirectorySaver::Remembered {
    Path name = Path::current_path();
    core::Handle directory{CreateFileW(L".", FILE_READ_ATTRIBUTES | FILE_TRAVERSE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                       nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr)};
};

DirectorySaver::DirectorySaver() : remembered_(std::make_unique<Remembered>()) {}

DirectorySaver::~DirectorySaver() {
    if (!remembered_->directory.valid()) return;
    const int saved = errno;
    // Nobody is left to tell of a failure; entering a directory that is held does not fail in practice.
    [[maybe_unused]] const int result = chdir_utf8(remembered_->name);
    errno = saved;
}

bool DirectorySaver::change_dir(const Path& directory) {
    // Without a way back there is no way in.
    return remembered_->directory.valid() && chdir_utf8(directory) == 0;
}

}  // namespace orvix
