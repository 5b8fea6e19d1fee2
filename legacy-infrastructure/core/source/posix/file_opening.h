// How a File comes from a descriptor, the same for a whole name and for an entry of an open directory.
#pragma once

#include "posix/descriptor.h"

#include <orvix/core/file.h>

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>

namespace orvix::core {

struct FileOpening {
    static constexpr mode_t permission = 0666;  // of a file that is made, before the process's mask

    // `open` gives a descriptor for the flags that it is handed, or -1.
    template <class Open>
    static File to_read(Open open) {
        int number = open(O_RDONLY | O_NONBLOCK);
        // Somebody else holds a lease on the file and has to give it back: that is worth waiting for.
        if (number == -1 && errno == EWOULDBLOCK) number = open(O_RDONLY);
        File file = adopt(number);
        if (!file.is_open() || !S_ISDIR(file.status_.st_mode)) return file;
        errno = EISDIR;
        return File();
    }

    template <class Open>
    static File to_write(Open open) {
        return adopt(open(O_RDWR | O_CREAT));
    }

    // The same where the file is likely to be missing: one that is made need not be looked at.
    template <class Open>
    static File to_make_or_write(Open open) {
        File file;
        file.handle_ = open(O_RDWR | O_CREAT | O_EXCL);
        return file.is_open() || errno != EEXIST ? std::move(file) : to_write(open);
    }

    // A file that was just made by other means.
    static File of_new(int number) {
        File file;
        file.handle_ = number;
        return file;
    }

private:
    static File adopt(int number) {
        Descriptor descriptor(number);
        File file;
        if (descriptor.valid() && fstat(number, &file.status_) == 0) file.handle_ = descriptor.release();
        return file;
    }
};

}  // namespace orvix::core
