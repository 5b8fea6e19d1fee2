#include "posix/opening.h"

#include "common/open_mode.h"
#include "posix/descriptor.h"
#include "posix/host_name.h"

#include <orvix/core/files.h>
#include <orvix/core/path.h>

#include <fcntl.h>
#include <sys/stat.h>

namespace orvix {

namespace core {

int open_path(const Name& name, int flags, int permission) {
    const auto opening_with = [permission](int all_flags) {
        return [=](const char* host) { return ::open(host, all_flags | O_CLOEXEC, permission); };
    };
    if ((flags & O_CREAT) == 0) return call_on_existing(name, opening_with(flags));
    if (!name.ignores_case() || (flags & O_EXCL) != 0) return call_to_create(name, opening_with(flags));

    // An existing file is opened without a look at its directory; that is the usual case.
    HostName host;
    if (!translate(name, &host)) return -1;
    const int existing = uninterrupted([&] { return opening_with(flags & ~O_CREAT)(host.text.c_str()); });
    if (existing != -1 || errno != ENOENT) return existing;
    return call_to_create(&host, true, Missing::surely, opening_with(flags));
}

namespace {

bool is_directory(int descriptor) {
    struct stat status;
    return fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode);
}

constexpr int any_user_may_read_and_write = 0666;  // before the process's mask

}  // namespace

}  // namespace core

std::FILE* Path::fopen(const char* mode) const {
    const std::optional<int> flags = core::flags_of_mode(mode != nullptr ? mode : "");
    if (!flags) {
        errno = EINVAL;
        return nullptr;
    }
    core::Descriptor file(core::open_path(*this, *flags, core::any_user_may_read_and_write));
    if (!file.valid()) return nullptr;
    if ((*flags & O_ACCMODE) == O_RDONLY && core::is_directory(file.number())) {
        errno = EISDIR;
        return nullptr;
    }
    std::FILE* stream = fdopen(file.number(), core::stream_mode(mode).c_str());
    if (stream != nullptr) file.release();
    return stream;
}

int open_utf8(const std::string& name, int flags, int permission) { return core::open_path(name, flags, permission); }

}  // namespace orvix
