#include "gfile_names.h"

#include <orvix/core/directory_chain.h>
#include <orvix/core/file_status.h>
#include <orvix/core/files.h>
#include <orvix/core/path.h>
#include <orvix/core/volume.h>
#include <orvix/gsl/file_names.h>
#include <orvix/gsl/files.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <string>

using orvix::core::Directory;
using orvix::core::DirectoryChain;
using orvix::gsl::text_of;

namespace {

std::int32_t saturated(std::uint64_t count) {
    return static_cast<std::int32_t>(std::min<std::uint64_t>(count, INT32_MAX));
}

std::int32_t saturated_kilobytes(std::uint64_t bytes) { return saturated(bytes >> 10U); }

void print_no_directory(const std::string& name) {
    std::fprintf(stderr, "gfile: %s is not a directory \n", name.c_str());
}

// The sum over a tree, without those directories that cannot be opened.
std::uint64_t gfile_dirsize_bytes(std::string name) {
    DirectoryChain chain(Directory::Use::scan, Directory::Links::followed);
    if (!chain.start(orvix::gsl::directory_path(name), Directory::Links::followed)) {
        print_no_directory(name);
        return 0;
    }
    std::uint64_t sum = 0;
    for (;;) {
        Directory::Entry entry;
        if (!chain.current().next(&entry)) {
            if (chain.depth() == 1) return sum;
            name.resize(name.size() - chain.current_name().size() - 1);
            if (!chain.leave()) return sum;
            continue;
        }
        orvix::core::FileStatus status;
        if (chain.current().status(entry.name, &status) != 0) continue;
        sum += static_cast<std::uint64_t>(status.st_size);
        if (entry.name[0] == '.' || !orvix::core::is_directory(status)) continue;
        const std::string below = name + '\\' + entry.name;
        if (chain.enter(entry.name)) {
            name = below;
        } else if (errno != ELOOP) {
            print_no_directory(below);
        }
    }
}

}  // namespace

std::int32_t gfile_filesize(const char* name) { return name != nullptr ? saturated(orvix::filesize_utf8(name)) : 0; }

std::int32_t gfile_dirsize(const char* directory) {
    return saturated_kilobytes(gfile_dirsize_bytes(text_of(directory)));
}

std::int32_t gfile_freedir_space(char* directory) {
    convertFileName(directory);
    const orvix::Path path(directory);
    if (!path.is_directory()) {
        std::fprintf(stderr, " The directory %s doesn't exist\n", text_of(directory));
        return 0;
    }
    std::uint64_t free_bytes = 0;
    return orvix::core::total_free_bytes(path, &free_bytes) ? saturated_kilobytes(free_bytes) : 0;
}
