// A copy of an installation in a temporary directory, and a process that believes to live in it.
#pragma once

#include "report.h"

#include <orvix/core/directory_saver.h>

#include <filesystem>
#include <stdexcept>
#include <string>

namespace workbench {

// The directory that was named holds no installation.
class NoInstallation : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// A directory of this process's own, removed at the end with all in it.
class TemporaryTree {
public:
    TemporaryTree();
    ~TemporaryTree();
    TemporaryTree(const TemporaryTree&) = delete;
    TemporaryTree& operator=(const TemporaryTree&) = delete;

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

// Points HXORVIX_DIR, QDS_CUSTOM_DIR and HOME into the copy and enters its project. To be made before the first call on
// an environment: the custom directory is read once for the life of the process.
class Sandbox {
public:
    // Throws NoInstallation, and what the file system throws.
    explicit Sandbox(const std::filesystem::path& installation);

    // Names of files as the report prints them.
    const ShortNames& names() const { return names_; }

    // One of `root`, `site`, `home` and `project`, in the library's form.
    std::string directory(const char* part) const;

private:
    TemporaryTree tree_;
    orvix::DirectorySaver way_back_;  // goes back before the tree is removed
    ShortNames names_;
};

}  // namespace workbench
