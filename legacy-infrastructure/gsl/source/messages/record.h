// A record: a head of 8 bytes, then the bytes that were stored. Records are known by the address of their bytes; null
// is the empty record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace orvix::gsl {

// A copy of the bytes. Null without memory.
char* new_record(std::span<const char> bytes);

// Gives back a record; null is harmless.
void free_record(char* record);

// The bytes of a record; none for null.
std::span<const char> record_bytes(const char* record);

// The bytes before the first zero byte, or all.
std::span<const char> record_text(const char* record);

// Makes many small records in few allocations. A batch is given back when its last record is, in whatever order.
//
//   +-------+------+-------+------+-------+--------------+
//   | users | head | bytes | head | bytes |    unused    |      each part at a multiple of 8 bytes
//   +-------+------+-------+------+-------+--------------+
class RecordBatch {
public:
    RecordBatch() = default;
    ~RecordBatch() { leave(); }
    RecordBatch(const RecordBatch&) = delete;
    RecordBatch& operator=(const RecordBatch&) = delete;

    // A record of the text, which holds no zero byte and is a line at most (1023 bytes), with a zero byte behind it.
    // Null without memory.
    char* new_record(std::span<const char> text);

private:
    void leave();

    char* batch_ = nullptr;
    std::size_t used_bytes_ = 0;
};

}  // namespace orvix::gsl
