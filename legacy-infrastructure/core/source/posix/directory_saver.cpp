#include <orvix/core/directory_saver.h>

#include "posix/descriptor.h"

#include <orvix/core/files.h>

#include <fcntl.h>

namespace orvix {

// The directory itself and not its name: it is found again also if it was renamed, or cannot be read.
struct DirectorySaver::Remembered {
    core::Descriptor directory{::open(".", O_PATH | O_DIRECTORY | O_CLOEXEC)};
};

DirectorySaver::DirectorySaver() : remembered_(std::make_unique<Remembered>()) {}

DirectorySaver::~DirectorySaver() {
    if (!remembered_->directory.valid()) return;
    const int saved = errno;
    // Nobody is left to tell of a failure; entering a directory that is held open does not fail in practice.
    [[maybe_unused]] const int result = fchdir(remembered_->directory.number());
    errno = saved;
}

bool DirectorySaver::change_dir(const Path& directory) {
    // Without a way back there is no way in.
    return remembered_->directory.valid() && chdir_utf8(directory) == 0;
}

}  // namespace orvix
