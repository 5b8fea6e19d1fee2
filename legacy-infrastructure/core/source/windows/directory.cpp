#include <orvix/core/directory.h>

#include "common/held_directories.h"
#include "windows/attributes.h"
#include "windows/entry_opening.h"
#include "windows/entry_reader.h"
#include "windows/file_opening.h"
#include "windows/last_error.h"
#include "windows/removal.h"
#include "windows/wide_name.h"

#include <cerrno>
#include <string_view>

#include <sys/stat.h>

namespace orvix::core {

namespace {

DWORD access_for(Directory::Use use) {
    return FILE_TRAVERSE | FILE_READ_ATTRIBUTES | SYNCHRONIZE |
           (use == Directory::Use::scan ? FILE_LIST_DIRECTORY : 0U);
}

bool link_itself(Directory::Links links) { return links == Directory::Links::refused; }

bool fail() {
    fail_with_last_error();
    return false;
}

}  // namespace

struct Directory::State {
    Handle handle;
    EntryReader entries;
    FileIdentity identity;

    static std::unique_ptr<State> of(Handle handle, Use use) {
        BY_HANDLE_FILE_INFORMATION told;
        if (!handle.valid()) return nullptr;
        if (!is_plain_directory(handle.get())) {
            errno = ENOTDIR;
            return nullptr;
        }
        if (GetFileInformationByHandle(handle.get(), &told) == 0) {
            fail_with_last_error();
            return nullptr;
        }
        auto state = std::make_unique<State>();
        state->identity = FileIdentity(told);
        if (use == Use::scan && !state->entries.prepare()) {
            errno = ENOMEM;
            return nullptr;
        }
        state->handle = std::move(handle);
        return state;
    }
};

// All of them: millions may be open, and what is open nobody renames. Names of 1024 bytes are no deeper than this.
const std::size_t held_directories = 1024;

Directory::Directory() = default;
Directory::~Directory() = default;
Directory::Directory(Directory&& other) noexcept = default;
Directory& Directory::operator=(Directory&& other) noexcept = default;

bool Directory::open(const Path& name, Use use, Links links) {
    WideName wide;
    state_.reset();
    if (!translate(name, &wide)) return false;
    Handle handle = links == Links::refused ? open_itself(wide.c_str(), access_for(use))
                                            : open_existing(wide.c_str(), access_for(use));
    if (!handle.valid()) return fail();
    state_ = State::of(std::move(handle), use);
    return state_ != nullptr;
}

bool Directory::open(const Directory& parent, const char* entry, Use use, Links links) {
    const HANDLE above = parent.state_->handle.get();
    // The system has no entry of that name: a directory knows what it is called, and so what it lies in.
    if (std::string_view(entry) == "..") return open(Path(final_name(above)).parent_path(), use, links);
    state_ = State::of(open_entry(above, entry, {.access = access_for(use), .link_itself = link_itself(links)}), use);
    return state_ != nullptr;
}

bool Directory::next(Entry* entry) { return state_->entries.next(state_->handle.get(), &entry->name, &entry->kind); }

bool Directory::is_complete() const { return !state_->entries.failed(); }

int Directory::status(const char* entry, FileStatus* status) const {
    const Handle file = open_entry(state_->handle.get(), entry, {});
    if (!file.valid()) return -1;
    return fill_status(file.get(), widen(entry), status) ? 0 : fail_with_last_error();
}

File Directory::open_to_read(const char* entry) const {
    Handle file = open_entry(state_->handle.get(), entry, {.access = GENERIC_READ});
    return file.valid() ? FileOpening::to_read(std::move(file)) : File();
}

File Directory::open_to_write(const char* entry) const {
    bool made = false;
    Handle file =
        open_entry(state_->handle.get(), entry,
                   {.access = GENERIC_READ | GENERIC_WRITE, .disposition = Disposition::open_or_create}, &made);
    return file.valid() ? FileOpening::to_write(std::move(file), made) : File();
}

bool Directory::make_directory(const char* entry) const {
    return open_entry(state_->handle.get(), entry, {.disposition = Disposition::create, .directory_alone = true})
        .valid();
}

bool Directory::remove_file(const char* entry) const {
    const Handle file = open_entry(state_->handle.get(), entry, {.access = removal_access, .link_itself = true});
    if (!file.valid()) return false;
    if (is_plain_directory(file.get())) {
        errno = EISDIR;
        return false;
    }
    return remove_open(file.get()) || fail();
}

bool Directory::remove_directory(const char* entry) const {
    const Handle file = open_entry(state_->handle.get(), entry, {.access = removal_access, .link_itself = true});
    if (!file.valid()) return false;
    if (!is_plain_directory(file.get())) {
        errno = ENOTDIR;
        return false;
    }
    return remove_open(file.get()) || fail();
}

bool Directory::change_mode(const char* entry, int mode) const {
    const Handle file = open_entry(state_->handle.get(), entry, {.access = FILE_WRITE_ATTRIBUTES});
    if (!file.valid()) return false;
    return set_writable(file.get(), (mode & S_IWUSR) != 0) || fail();
}

bool Directory::is_same_directory(const Directory& other) const { return state_->identity == other.state_->identity; }

bool Directory::lies_within(const Directory& other) const {
    if (is_same_directory(other)) return true;
    Path up = Path(final_name(state_->handle.get()));
    for (Path above = up.parent_path(); above.string().size() < up.string().size(); above = up.parent_path()) {
        Directory directory;
        if (!directory.open(above, Use::place, Links::followed)) return false;
        if (directory.is_same_directory(other)) return true;
        up = above;
    }
    return false;
}

void Directory::let_go() {
    if (!is_held()) return;
    state_->entries.read_rest(state_->handle.get());
    state_->handle = Handle();
}

bool Directory::is_held() const { return state_->handle.valid(); }

bool Directory::take_hold(Directory same) {
    if (!is_same_directory(same)) {
        errno = ENOENT;
        return false;
    }
    state_->handle = std::move(same.state_->handle);
    return true;
}

}  // namespace orvix::core
