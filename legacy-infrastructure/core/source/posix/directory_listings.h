// Remembered listings of directories, so that a name that is missing as it is spelled does not cost a walk over its
// directory each time.
//
// A listing is good while the identity, the times and the size of its directory stand. Times of files move in steps of
// some milliseconds, so a directory may change twice under one time: a listing made within `settling` of the last
// change is used for one answer and then made anew. Listings that only this library added to since are kept all the
// same, or creating many files in a row would list their directory for each of them; they are made anew once the
// directory has settled. What another process adds to a directory in the same step of time as this one may thus go
// unseen for the length of `settling`: the name asked for then stands as it was typed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include <sys/stat.h>

namespace orvix::core {

class DirectoryListings {
public:
    // The one entry of a directory that equals `component` ignoring ASCII letter case; none if there is no such entry,
    // or several, or the directory cannot be read. `status` is that of the directory, just read.
    std::optional<std::string> find(const std::string& directory, const struct stat& status,
                                    std::string_view component);

    // Adds an entry that this process made right after `find` had answered for its directory. `status` is that of the
    // directory after the change.
    void add_created(const struct stat& status, const std::string& name);

    // How many times directories were read, for tests.
    std::size_t walks() const;

private:
    // Identity and last change of a directory.
    struct Stamp {
        std::uint64_t device = 0;
        std::uint64_t inode = 0;
        std::int64_t modified_ns = 0;
        std::int64_t changed_ns = 0;
        std::int64_t bytes = 0;

        explicit Stamp(const struct stat& status);
        Stamp() = default;
        bool same_directory(const Stamp& other) const { return device == other.device && inode == other.inode; }
        bool operator==(const Stamp&) const = default;
    };

    struct Listing {
        Stamp stamp;
        bool settled = false;   // read when the last change lay more than `settling` back
        bool added_to = false;  // changed by this library alone since it was read
        std::size_t bytes = 0;  // of all names together
        std::unordered_multimap<std::size_t, std::string> names;  // by the hash of the folded name

        void add(std::string name);
        std::optional<std::string> find(std::string_view component) const;
    };

    Listing* usable(const Stamp& stamp);
    bool read(const std::string& directory, Listing* listing);
    void keep(Listing listing);
    std::list<Listing>::iterator of_directory(const Stamp& stamp);

    mutable std::mutex mutex_;
    std::list<Listing> recent_;  // newest first
    std::size_t walks_ = 0;
};

DirectoryListings& listings();

}  // namespace orvix::core
