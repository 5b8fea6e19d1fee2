/// @file
/// File names as values, and the questions and changes that need nothing but a name.
///
/// The library speaks one name form on every system: UTF-8, with drive letters and backslashes; a slash is taken for a
/// backslash. This layer alone turns such a name into what the host takes. Where the host's names look otherwise:
///
/// - a drive letter stands for a host directory: `C:` for `/`, and any letter for what the process variable
///   `ORVIX_DRIVE_<letter>` holds. A letter that stands for nothing, and a network name (two separators in front), name
///   nothing: calls fail with `ENOENT`;
/// - a rooted name without a drive lies on the current drive, the one with the longest root that holds the current
///   directory; `d:x` lies in the root of drive `d:`, or in the current directory if `d:` is the current drive;
/// - a name is tried as it is spelled. Only where that does not exist, each missing component is matched with its
///   directory ignoring ASCII letter case, and taken if exactly one entry matches.
#pragma once

#include <orvix/core/export.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <utility>

namespace orvix::core {
struct PathAccess;
}

namespace orvix {

/// A file name. Copies and compares as a value does; nothing is looked up before a member asks the system.
///
/// Failing members leave the reason in `errno`; none but the allocating ones throws, and these throw
/// `std::bad_alloc` alone.
class ORVIX_CORE_API Path {
public:
    /// The empty path, which names nothing.
    Path() = default;

    /// A path from UTF-8 text as a user typed it. Null counts as the empty text.
    Path(const char* text);
    /// A path from UTF-8 text as a user typed it.
    Path(const std::string& text);

    /// Copies and moves as any value does.
    /// @{
    Path(const Path&) = default;
    Path(Path&&) noexcept = default;
    Path& operator=(const Path&) = default;
    Path& operator=(Path&&) noexcept = default;
    ~Path() = default;
    /// @}

    /// A path whose spelling came from a directory scan: it means that entry and no other, so letter case is never
    /// ignored. What is appended to it is as exact.
    static Path exact(const std::string& text);

    /// A path from a standard one. An absolute host name is given its drive, the one with the longest root that holds
    /// it.
    static Path from_fs_path(const std::filesystem::path& path);

    /// The current directory, absolute, in the library's form; empty if it cannot be told or no drive holds it.
    static Path current_path();

    /// The path as UTF-8 text, as it was given.
    operator std::string() const { return text_; }

    /// The path as UTF-8 text, as it was given.
    std::string string() const { return text_; }

    /// The path as UTF-8 text in the library's form: every slash is a backslash. Nothing else changes.
    std::string native() const;

    /// The path as wide text: UTF-16 where the system's wide calls take that, else one element a character.
    std::wstring wstring() const;

    /// The host's spelling, for calls that leave the library: drives replaced, letter case as stored if the name
    /// exists only under other letter case.
    /// @return empty, with `errno` `ENOENT`, if the name can stand for nothing on this host
    std::string host() const;

    /// Opens the file as `std::fopen` does. A directory is refused with `EISDIR`. The descriptor is not inherited by
    /// child processes.
    /// @param mode  "r", "w" or "a", with "+", "b" and "x" as usual
    /// @return the stream, which the caller closes; null on failure with `errno` set
    std::FILE* fopen(const char* mode) const;

    /// True if the name exists; a link counts for what it leads to.
    bool exists() const;

    /// True if the name is a directory, links followed; false if it is missing.
    bool is_directory() const;

    /// True if the name is a regular file, links followed.
    bool is_regular_file() const;

    /// Makes one directory level.
    /// @return true only if it was made: false if it was there, or the level above is missing
    bool create_directory() const;

    /// Makes all missing directory levels.
    /// @return true only if something was made and the name is a directory now
    bool create_directories() const;

    /// Removes a file, a link (never what it leads to) or an empty directory.
    /// @return true if it is gone
    bool delete_file_or_directory() const;

    /// The path without its last part: `a\b` of `a\b\c`, `c:\` of `c:\a` and of `c:\`, empty of `a`.
    Path parent_path() const;

    /// The absolute form against the current directory, in the library's form. No `.` or `..` is resolved and nothing
    /// need exist. The empty path gives the current directory.
    Path complete_path() const;

    /// Adds a further part, with a separator in between if there is none. A part with a drive or a root of its own
    /// replaces the path, unless it is exact: then it is an entry's name, which may look like anything.
    Path& append(const Path& part);

    /// Three-way comparison in which two spellings of one name are equal: ASCII letter case, the kind of separators and
    /// their number play no part (but two in front, a network name, differ from one).
    /// @return negative, zero or positive
    static int compare_filenames(const Path& a, const Path& b);

private:
    friend struct core::PathAccess;

    // How far letter case may be ignored, and whose name form `text_` is.
    enum class Spelling : unsigned char { typed, exact, host };

    Path(std::string text, Spelling spelling) : text_(std::move(text)), spelling_(spelling) {}

    std::string text_;
    Spelling spelling_ = Spelling::typed;
};

}  // namespace orvix
