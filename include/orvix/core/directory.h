/// @file
/// Directories that are held open, and work on their entries under exactly the names that a scan gave.
///
/// Trees are walked over these: the system resolves the name of one entry for each call and not a whole path, and a
/// tree that is renamed meanwhile, or in which a directory is replaced by a link, leads nowhere else.
#pragma once

#include <orvix/core/export.h>
#include <orvix/core/file.h>
#include <orvix/core/file_status.h>
#include <orvix/core/path.h>

#include <memory>

namespace orvix::core {

/// One directory. Entries are named as `next` gave them, without any directory in front. Child processes do not inherit
/// the directory, and a call that a signal interrupts is taken up again. Failing calls leave the reason in `errno`.
/// As long as no `open` has succeeded nothing else may be called. Belongs to one thread at a time.
class ORVIX_CORE_API Directory {
public:
    /// What a directory is opened for.
    enum class Use : bool {
        scan,   ///< to be walked over; takes the right to read it
        place,  ///< to have its entries made and changed under known names
    };

    /// What becomes of a name that is a symbolic link.
    enum class Links : bool {
        refused,   ///< it cannot be opened
        followed,  ///< the directory that it leads to is opened
    };

    /// An entry as the scan gives it.
    struct Entry {
        const char* name;  ///< in UTF-8; good until the next call of `next`
        FileKind kind;     ///< of the entry itself, links not followed; `missing` if it cannot be told
    };

    /// No directory.
    Directory();
    /// Closes the directory, if one is open, and leaves `errno` alone.
    ~Directory();
    /// Takes another's directory over, and leaves that one without.
    Directory(Directory&& other) noexcept;
    /// Takes another's directory over.
    Directory& operator=(Directory&& other) noexcept;

    /// Opens a directory.
    /// @return false if the name is no directory, or the system refuses it
    bool open(const Path& name, Use use, Links links);

    /// Opens a directory that is an entry of another.
    /// @return false if the entry is no directory, or the system refuses it
    bool open(const Directory& parent, const char* entry, Use use, Links links);

    /// Steps to the next entry, in the system's order, "." and ".." included.
    /// @param entry  receives the entry; not null
    /// @return false at the end, and on failure alike
    bool next(Entry* entry);

    /// True unless the system refused to go on with the scan: then `next` ended before all entries were seen.
    bool is_complete() const;

    /// Reads the status of what an entry leads to.
    /// @return 0, or -1
    int status(const char* entry, FileStatus* status) const;

    /// Opens an entry to be read, as `File::open_to_read` does.
    File open_to_read(const char* entry) const;

    /// Opens an entry to be written, as `File::open_to_write` does.
    File open_to_write(const char* entry) const;

    /// Makes a directory, with the system's default mode.
    /// @return true only if it was made
    bool make_directory(const char* entry) const;

    /// Removes an entry that is no directory: a file, or a link but never what it leads to.
    bool remove_file(const char* entry) const;

    /// Removes an entry that is an empty directory.
    bool remove_directory(const char* entry) const;

    /// Changes the permission bits of what an entry leads to.
    bool change_mode(const char* entry, int mode) const;

    /// True if both are one and the same directory, under whatever names.
    bool is_same_directory(const Directory& other) const;

    /// True if this is the other directory, or lies below it at any depth; false also if that cannot be told.
    bool lies_within(const Directory& other) const;

    /// Gives the system's hold on the directory back, as one of the few that a process may have. What is left of the
    /// scan is read into memory first and goes on from there. Nothing else works until `take_hold`.
    void let_go();

    /// False after `let_go`.
    bool is_held() const;

    /// Ends `let_go`, with the same directory opened once more.
    /// @return false, with `errno` `ENOENT`, if it is another one
    bool take_hold(Directory same);

private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace orvix::core
