/// @file
/// The way of a walk down a tree of directories.
#pragma once

#include <orvix/core/directory.h>
#include <orvix/core/export.h>
#include <orvix/core/path.h>

#include <cstddef>
#include <string>
#include <vector>

namespace orvix::core {

/// The directories from the top of a tree down to the one that a walk is in, each an entry of the one before. However
/// deep the tree, only some are held open: directories further up are let go, and found again on the way back.
/// Belongs to one thread at a time.
class ORVIX_CORE_API DirectoryChain {
public:
    /// A chain without directories.
    /// @param use    what its directories are opened for
    /// @param links  what becomes of links below the top
    DirectoryChain(Directory::Use use, Directory::Links links) : use_(use), links_(links) {}

    /// Opens the top. Called once, before all else.
    /// @param top    name of the directory
    /// @param links  what becomes of it if it is a link
    /// @return false with `errno` set if it cannot be opened
    bool start(const Path& top, Directory::Links links);

    /// Goes down to a directory that is an entry of the current one.
    /// @return false with `errno` set if it cannot be opened; `ELOOP` if the entry leads back to one of the chain
    bool enter(const char* entry);

    /// Goes back up. Called only if the depth is above 1.
    /// @return false with `errno` set if the directory above is not where it was: then the chain cannot be used any
    ///         more
    bool leave();

    /// The directory that the walk is in.
    Directory& current() { return levels_.back().directory; }
    /// The directory that the walk is in.
    const Directory& current() const { return levels_.back().directory; }

    /// The name under which the current directory was entered; empty at the top.
    const std::string& current_name() const { return levels_.back().name; }

    /// Directories in the chain, the top counted; 0 before `start`.
    std::size_t depth() const { return levels_.size(); }

    /// True if the directory is one of the chain.
    bool holds(const Directory& directory) const;

private:
    struct Level {
        Directory directory;
        std::string name;
    };

    bool find_current_from_top();

    std::vector<Level> levels_;
    Directory::Use use_;
    Directory::Links links_;
};

}  // namespace orvix::core
