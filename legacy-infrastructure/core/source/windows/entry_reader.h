// Reads the entries of an open directory: the system fills a buffer with records of varying length.
#pragma once

#include <orvix/core/file_status.h>

#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <windows.h>

namespace orvix::core {

class EntryReader {
public:
    // False if there is no memory.
    bool prepare();

    // Steps to the next entry; false at the end and on failure. The name is good until the next call on the reader.
    bool next(HANDLE directory, const char** name, FileKind* kind);

    // Takes what is left into memory, so that the directory can be closed: from then on next() needs no handle.
    void read_rest(HANDLE directory);

    // True once the system refused to go on.
    bool failed() const { return failed_; }

private:
    bool fill(HANDLE directory);
    bool take_record(HANDLE directory, std::string* name, FileKind* kind);

    std::unique_ptr<std::byte[]> buffer_;
    std::size_t position_ = 0;  // of the next record
    bool has_record_ = false;
    bool at_end_ = false;
    bool failed_ = false;
    std::string name_;

    std::vector<std::pair<std::string, FileKind>> rest_;  // the next one last
};

}  // namespace orvix::core
