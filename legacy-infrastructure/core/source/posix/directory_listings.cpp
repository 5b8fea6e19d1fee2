#include "posix/directory_listings.h"

#include "common/name_text.h"

#include <memory>
#include <utility>

#include <dirent.h>
#include <time.h>

namespace orvix::core {

namespace {

constexpr std::int64_t settling = 20'000'000;        // nanoseconds; times of files move in steps of 1 to 10 ms
constexpr std::size_t kept_directories = 16;         // more than a search path of usual length
constexpr std::size_t kept_name_bytes = 32U << 20U;  // over all listings; the newest is kept whatever its size

std::int64_t nanoseconds(const timespec& time) {
    return static_cast<std::int64_t>(time.tv_sec) * 1'000'000'000 + time.tv_nsec;
}

std::int64_t now_ns() {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    return nanoseconds(now);
}

struct CloseDirectory {
    void operator()(DIR* stream) const { closedir(stream); }
};

// FNV-1a over the folded bytes.
std::size_t folded_hash(std::string_view name) {
    std::uint64_t hash = 0xcbf29ce484222325U;
    for (const char c : name) hash = (hash ^ static_cast<unsigned char>(to_lower(c))) * 0x100000001b3U;
    return hash;
}

}  // namespace

DirectoryListings::Stamp::Stamp(const struct stat& status)
    : device(status.st_dev),
      inode(status.st_ino),
      modified_ns(nanoseconds(status.st_mtim)),
      changed_ns(nanoseconds(status.st_ctim)),
      bytes(status.st_size) {}

void DirectoryListings::Listing::add(std::string name) {
    bytes += name.size();
    names.emplace(folded_hash(name), std::move(name));
}

std::optional<std::string> DirectoryListings::Listing::find(std::string_view component) const {
    const auto [begin, end] = names.equal_range(folded_hash(component));
    const std::string* match = nullptr;
    for (auto candidate = begin; candidate != end; ++candidate) {
        if (!equal_ignoring_case(candidate->second, component)) continue;
        if (match != nullptr) return std::nullopt;
        match = &candidate->second;
    }
    if (match == nullptr) return std::nullopt;
    return *match;
}

std::list<DirectoryListings::Listing>::iterator DirectoryListings::of_directory(const Stamp& stamp) {
    auto listing = recent_.begin();
    while (listing != recent_.end() && !listing->stamp.same_directory(stamp)) ++listing;
    return listing;
}

// The listing of a directory if it is still good, moved to the front; otherwise it is dropped.
DirectoryListings::Listing* DirectoryListings::usable(const Stamp& stamp) {
    const auto listing = of_directory(stamp);
    if (listing == recent_.end()) return nullptr;
    const bool unchanged = listing->stamp == stamp;
    const bool quiet = now_ns() - stamp.modified_ns > settling;
    if (unchanged && (listing->settled || (listing->added_to && !quiet))) {
        recent_.splice(recent_.begin(), recent_, listing);
        return &recent_.front();
    }
    recent_.erase(listing);
    return nullptr;
}

bool DirectoryListings::read(const std::string& directory, Listing* listing) {
    listing->settled = now_ns() - listing->stamp.modified_ns > settling;
    const std::unique_ptr<DIR, CloseDirectory> stream(opendir(directory.c_str()));
    if (stream == nullptr) return false;
    ++walks_;
    while (const struct dirent* entry = readdir(stream.get())) listing->add(entry->d_name);
    struct stat status;
    if (stat(directory.c_str(), &status) != 0 || Stamp(status) != listing->stamp) listing->settled = false;
    return true;
}

void DirectoryListings::keep(Listing listing) {
    recent_.push_front(std::move(listing));
    std::size_t bytes = 0;
    std::size_t count = 0;
    for (auto kept = recent_.begin(); kept != recent_.end();) {
        bytes += kept->bytes;
        ++count;
        const bool room = count == 1 || (count <= kept_directories && bytes <= kept_name_bytes);
        kept = room ? std::next(kept) : recent_.erase(kept);
    }
}

std::optional<std::string> DirectoryListings::find(const std::string& directory, const struct stat& status,
                                                   std::string_view component) {
    if (!S_ISDIR(status.st_mode)) return std::nullopt;
    const std::lock_guard lock(mutex_);
    const Stamp stamp(status);
    if (const Listing* listing = usable(stamp)) return listing->find(component);

    Listing listing;
    listing.stamp = stamp;
    if (!read(directory, &listing)) return std::nullopt;
    std::optional<std::string> stored = listing.find(component);
    keep(std::move(listing));
    return stored;
}

void DirectoryListings::add_created(const struct stat& status, const std::string& name) {
    const std::lock_guard lock(mutex_);
    const Stamp stamp(status);
    const auto listing = of_directory(stamp);
    if (listing == recent_.end()) return;
    listing->add(name);
    listing->stamp = stamp;
    listing->settled = false;
    listing->added_to = true;
}

std::size_t DirectoryListings::walks() const {
    const std::lock_guard lock(mutex_);
    return walks_;
}

DirectoryListings& listings() {
    // Never destroyed: objects that outlive this one may still open files while the process ends.
    static DirectoryListings& instance = *new DirectoryListings;
    return instance;
}

}  // namespace orvix::core
