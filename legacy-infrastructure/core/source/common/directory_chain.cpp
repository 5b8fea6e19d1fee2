#include <orvix/core/directory_chain.h>

#include "common/held_directories.h"

#include <cerrno>
#include <utility>

namespace orvix::core {

bool DirectoryChain::start(const Path& top, Directory::Links links) {
    Level level;
    if (!level.directory.open(top, use_, links)) return false;
    levels_.push_back(std::move(level));
    return true;
}

bool DirectoryChain::enter(const char* entry) {
    Level level{{}, entry};
    if (!level.directory.open(current(), entry, use_, links_)) return false;
    if (holds(level.directory)) {
        errno = ELOOP;
        return false;
    }
    levels_.push_back(std::move(level));
    if (depth() > held_directories + 1) levels_[depth() - 1 - held_directories].directory.let_go();
    return true;
}

bool DirectoryChain::leave() {
    const Directory below = std::move(levels_.back().directory);
    levels_.pop_back();
    if (current().is_held()) return true;
    // The directory above is where it always was, unless the way down was by a link, or somebody has moved it.
    Directory above;
    if (above.open(below, "..", Directory::Use::place, Directory::Links::refused) &&
        current().take_hold(std::move(above))) {
        return true;
    }
    return find_current_from_top();
}

bool DirectoryChain::holds(const Directory& directory) const {
    for (const Level& level : levels_) {
        if (level.directory.is_same_directory(directory)) return true;
    }
    return false;
}

// From the top, which is always held, down by the names of the way: a whole path could lead through a link that has
// taken a directory's place. Nothing is to be scanned again: let_go has read all names there are.
bool DirectoryChain::find_current_from_top() {
    Directory found;
    const Directory* parent = &levels_.front().directory;
    for (std::size_t i = 1; i < depth(); ++i) {
        Directory next;
        if (!next.open(*parent, levels_[i].name.c_str(), Directory::Use::place, links_)) return false;
        found = std::move(next);
        parent = &found;
    }
    return current().take_hold(std::move(found));
}

}  // namespace orvix::core
