#include "posix/entry_reader.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>
#include <vector>

#include <dirent.h>

namespace orvix::core {

namespace {

constexpr std::size_t buffer_bytes = 32768;  // as the system's own scan; some 1000 entries of usual length

// Fills a buffer with whole records; 0 at the end, -1 on failure.
ssize_t read_entries(int directory, char* buffer) {
    ssize_t bytes;
    do {
        bytes = getdents64(directory, buffer, buffer_bytes);
    } while (bytes == -1 && errno == EINTR);
    return bytes;
}

}  // namespace

bool EntryReader::prepare() {
    buffer_.reset(new (std::nothrow) char[buffer_bytes]);
    return buffer_ != nullptr;
}

bool EntryReader::fill(int directory) {
    if (at_end_) return false;
    const ssize_t bytes = read_entries(directory, buffer_.get());
    position_ = 0;
    filled_ = bytes > 0 ? static_cast<std::size_t>(bytes) : 0;
    at_end_ = filled_ == 0;
    failed_ = bytes == -1;
    return !at_end_;
}

bool EntryReader::next(int directory, Record* record) {
    if (position_ == filled_ && !fill(directory)) return false;
    const char* entry = buffer_.get() + position_;
    unsigned short record_bytes;
    std::memcpy(&record_bytes, entry + offsetof(dirent64, d_reclen), sizeof record_bytes);
    std::memcpy(&record->type, entry + offsetof(dirent64, d_type), sizeof record->type);
    record->name = entry + offsetof(dirent64, d_name);
    position_ += record_bytes;
    return true;
}

void EntryReader::read_rest(int directory) {
    if (buffer_ == nullptr) return;
    std::vector<char> rest(buffer_.get() + position_, buffer_.get() + filled_);
    while (fill(directory)) rest.insert(rest.end(), buffer_.get(), buffer_.get() + filled_);
    buffer_ = std::make_unique_for_overwrite<char[]>(rest.size());
    std::copy(rest.begin(), rest.end(), buffer_.get());
    position_ = 0;
    filled_ = rest.size();
}

}  // namespace orvix::core
