// Reads the entries of an open directory in place: the system fills a buffer with records of varying length, which
// spares a call and a copy for each entry.
#pragma once

#include <cstddef>
#include <memory>

namespace orvix::core {

class EntryReader {
public:
    // One entry. The name is good until the next call on the reader.
    struct Record {
        const char* name;
        unsigned char type;  // DT_REG and so on; DT_UNKNOWN where the file system does not tell
    };

    // False if there is no memory.
    bool prepare();

    // Steps to the next entry; false at the end and on failure.
    bool next(int directory, Record* record);

    // Takes what is left into memory, so that the directory can be closed: from then on next() needs no descriptor.
    void read_rest(int directory);

    // True once the system refused to go on.
    bool failed() const { return failed_; }

private:
    bool fill(int directory);

    std::unique_ptr<char[]> buffer_;
    std::size_t position_ = 0;
    std::size_t filled_ = 0;
    bool at_end_ = false;
    bool failed_ = false;
};

}  // namespace orvix::core
