#include "gfile_copy.h"

#include "gfile_copy_buffer.h"
#include "gfile_report.h"

#include <orvix/core/file.h>
#include <orvix/core/memory.h>
#include <orvix/core/path.h>
#include <orvix/gsl/directory_scan.h>
#include <orvix/gsl/files.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>

using orvix::core::Directory;
using orvix::core::File;
using orvix::gsl::CopyBuffer;
using orvix::gsl::report_failure;

namespace {

// An existing target that is no longer than its new contents is written over where it stands, which takes half the time
// of emptying and filling it. Only up to this size: one write is one step to whoever looks on, and a process that dies
// in between never leaves old bytes behind new ones.
constexpr std::uint64_t written_in_one_step = 65536;

// A file by its name.
struct NamedFile {
    const char* name;

    bool exists() const {
        orvix::core::FileStatus status;
        return gsl_stat_64(name, &status) == 0;
    }
    File open_to_read() const { return File::open_to_read(name); }
    File open_to_write() const { return File::open_to_write(name); }
};

// A file as an entry of an open directory.
struct Entry {
    const Directory& directory;
    const char* name;

    bool exists() const {
        orvix::core::FileStatus status;
        return directory.status(name, &status) == 0;
    }
    File open_to_read() const { return directory.open_to_read(name); }
    File open_to_write() const { return directory.open_to_write(name); }
};

// Keeps errno, which the caller is to report.
void cut_after_failure(File& target, std::uint64_t written) {
    const int reason = errno;
    target.shorten(written);
    errno = reason;
}

bool copy_contents(File& source, File& target, const CopyBuffer& buffer) {
    const auto bytes = static_cast<std::uint64_t>(source.status().st_size);
    const bool covered = static_cast<std::uint64_t>(target.status().st_size) <= bytes && bytes <= written_in_one_step;
    if (!covered && !target.shorten(0)) return report_failure(GUI_ERR_FILE_OPEN, __LINE__);

    for (std::uint64_t written = 0; written < bytes;) {
        const auto chunk = static_cast<std::size_t>(std::min<std::uint64_t>(buffer.bytes(), bytes - written));
        if (source.read(buffer.data(), chunk) != chunk) {
            cut_after_failure(target, written);
            return report_failure(GUI_ERR_FILE_READ, __LINE__);
        }
        const std::size_t taken = target.write(buffer.data(), chunk);
        written += taken;
        if (taken != chunk) {
            cut_after_failure(target, written);
            return report_failure(GUI_ERR_FILE_WRITE, __LINE__);
        }
    }
    target.set_times(source.status());
    return target.close() || report_failure(GUI_ERR_FILE_WRITE, __LINE__);
}

template <class Place>
bool copy_file(const Place& from, const Place& to) {
    File source = from.open_to_read();
    if (!source.is_open()) {
        const int reason = errno;
        if (!from.exists()) return report_failure(GUI_ERR_FILE_NOT_FOUND, __LINE__);
        errno = reason;
        return report_failure(GUI_ERR_FILE_OPEN, __LINE__);
    }
    const CopyBuffer buffer(static_cast<std::uint64_t>(source.status().st_size));
    if (buffer.data() == nullptr) return report_failure(GUI_ERR_FILE_COPY_ALLOC, __LINE__);
    orvix::core::expect_to_be_filled(buffer.data(), buffer.bytes());
    File target = to.open_to_write();
    if (!target.is_open()) return report_failure(GUI_ERR_FILE_OPEN, __LINE__);
    if (target.is_same_file(source)) {
        // Emptied as a target it could not be read any more.
        errno = EINVAL;
        return report_failure(GUI_ERR_FILE_READ, __LINE__);
    }
    return copy_contents(source, target, buffer);
}

}  // namespace

bool orvix::gsl::copy_entry(const Directory& from, const Directory& to, const char* entry) {
    return copy_file(Entry{from, entry}, Entry{to, entry});
}

bool gfile_copy(const char* from, const char* to) { return copy_file(NamedFile{from}, NamedFile{to}); }

bool gfile_move(const char* from, const char* to) { return gfile_copy(from, to) && gfile_erasefil(from); }

bool gfile_erasefil(const char* const name) {
    return orvix::Path(name).delete_file_or_directory() || report_failure(GUI_ERR_FILE_DELETE, __LINE__);
}
