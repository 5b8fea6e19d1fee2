#include <orvix/core/directory.h>

#include "common/held_directories.h"
#include "posix/descriptor.h"
#include "posix/entry_reader.h"
#include "posix/file_kind.h"
#include "posix/file_opening.h"
#include "posix/host_name.h"

#include <string>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvix::core {

namespace {

constexpr mode_t everybody = 0777;  // before the process's mask

int open_flags(Directory::Use use, Directory::Links links) {
    const int access = use == Directory::Use::scan ? O_RDONLY : O_PATH;
    const int at_a_link = links == Directory::Links::refused ? O_NOFOLLOW : 0;
    return access | at_a_link | O_DIRECTORY | O_CLOEXEC;
}

FileKind kind_of_entry(int directory, const EntryReader::Record& record) {
    switch (record.type) {
        case DT_REG:
            return FileKind::regular;
        case DT_DIR:
            return FileKind::directory;
        case DT_LNK:
            return FileKind::link;
        case DT_UNKNOWN:
            break;
        default:
            return FileKind::other;
    }
    struct stat status;
    if (fstatat(directory, record.name, &status, AT_SYMLINK_NOFOLLOW) != 0) return FileKind::missing;
    return kind_of_mode(status.st_mode);
}

// What tells a directory from all others.
struct Identity {
    dev_t device = 0;
    ino_t inode = 0;

    Identity() = default;
    explicit Identity(const struct stat& status) : device(status.st_dev), inode(status.st_ino) {}
    bool operator==(const Identity&) const = default;
};

}  // namespace

struct Directory::State {
    Descriptor descriptor;
    EntryReader entries;
    Identity identity;

    int number() const { return descriptor.number(); }

    static std::unique_ptr<State> of(int number, Use use) {
        Descriptor descriptor(number);
        struct stat status;
        if (!descriptor.valid() || fstat(number, &status) != 0) return nullptr;
        auto state = std::make_unique<State>();
        state->identity = Identity(status);
        if (use == Use::scan && !state->entries.prepare()) {
            errno = ENOMEM;
            return nullptr;
        }
        state->descriptor = std::move(descriptor);
        return state;
    }
};

// Deeper trees are rare, and a process may well be allowed no more than 256 open files.
const std::size_t held_directories = 32;

Directory::Directory() = default;
Directory::~Directory() = default;
Directory::Directory(Directory&& other) noexcept = default;
Directory& Directory::operator=(Directory&& other) noexcept = default;

bool Directory::open(const Path& name, Use use, Links links) {
    const int flags = open_flags(use, links);
    state_ = State::of(call_on_existing(name, [flags](const char* host) { return ::open(host, flags); }), use);
    return state_ != nullptr;
}

bool Directory::open(const Directory& parent, const char* entry, Use use, Links links) {
    const int flags = open_flags(use, links);
    state_ = State::of(uninterrupted([&] { return openat(parent.state_->number(), entry, flags); }), use);
    return state_ != nullptr;
}

bool Directory::next(Entry* entry) {
    EntryReader::Record record;
    if (!state_->entries.next(state_->number(), &record)) return false;
    *entry = {record.name, kind_of_entry(state_->number(), record)};
    return true;
}

bool Directory::is_complete() const { return !state_->entries.failed(); }

int Directory::status(const char* entry, struct stat* status) const {
    return uninterrupted([&] { return fstatat(state_->number(), entry, status, 0); });
}

File Directory::open_to_read(const char* entry) const {
    return FileOpening::to_read(
        [&](int flags) { return uninterrupted([&] { return openat(state_->number(), entry, flags | O_CLOEXEC); }); });
}

File Directory::open_to_write(const char* entry) const {
    return FileOpening::to_make_or_write([&](int flags) {
        return uninterrupted(
            [&] { return openat(state_->number(), entry, flags | O_CLOEXEC, FileOpening::permission); });
    });
}

bool Directory::make_directory(const char* entry) const {
    return uninterrupted([&] { return mkdirat(state_->number(), entry, everybody); }) == 0;
}

bool Directory::remove_file(const char* entry) const {
    return uninterrupted([&] { return unlinkat(state_->number(), entry, 0); }) == 0;
}

bool Directory::remove_directory(const char* entry) const {
    return uninterrupted([&] { return unlinkat(state_->number(), entry, AT_REMOVEDIR); }) == 0;
}

bool Directory::change_mode(const char* entry, int mode) const {
    return uninterrupted([&] { return fchmodat(state_->number(), entry, static_cast<mode_t>(mode), 0); }) == 0;
}

bool Directory::is_same_directory(const Directory& other) const { return state_->identity == other.state_->identity; }

bool Directory::lies_within(const Directory& other) const {
    // Upwards until a directory is its own parent, which the root alone is.
    std::string up;
    Identity below = state_->identity;
    while (below != other.state_->identity) {
        struct stat above;
        up += "../";
        if (fstatat(state_->number(), up.c_str(), &above, 0) != 0 || Identity(above) == below) return false;
        below = Identity(above);
    }
    return true;
}

void Directory::let_go() {
    if (!is_held()) return;
    state_->entries.read_rest(state_->number());
    state_->descriptor = Descriptor();
}

bool Directory::is_held() const { return state_->descriptor.valid(); }

bool Directory::take_hold(Directory same) {
    if (!is_same_directory(same)) {
        errno = ENOENT;
        return false;
    }
    state_->descriptor = std::move(same.state_->descriptor);
    return true;
}

}  // namespace orvix::core
