/// @file
/// Reading and writing at places of a file that `orvix::open_utf8` opened. A call that a signal interrupts is taken up
/// again.
#pragma once

#include <orvix/core/export.h>

#include <cstddef>
#include <cstdint>
#include <span>

namespace orvix::core {

/// Reads bytes from a place; the descriptor's own position stays where it is.
///
/// @param descriptor  file open for reading
/// @param buffer      receives the bytes; must hold `bytes`
/// @param bytes       how many to read
/// @param offset      place of the first one, from the start of the file
/// @return how many there were, 0 at or behind the end of the file; -1 on failure with `errno` set
ORVIX_CORE_API std::ptrdiff_t read_at(int descriptor, void* buffer, std::size_t bytes, std::uint64_t offset);

/// Writes bytes to a place; the descriptor's own position stays where it is.
///
/// @param descriptor  file open for writing
/// @param buffer      holds the bytes
/// @param bytes       how many to write
/// @param offset      place of the first one, from the start of the file. What lies between the end of the file and
///                    this place becomes zeros.
/// @return how many were written, fewer than asked for where the file may not grow that far; -1 on failure with
///         `errno` set
ORVIX_CORE_API std::ptrdiff_t write_at(int descriptor, const void* buffer, std::size_t bytes, std::uint64_t offset);

/// Bytes to be written behind others.
struct Piece {
    const void* data;   ///< the first byte
    std::size_t bytes;  ///< how many there are
};

/// The most pieces that one call writes.
constexpr std::size_t most_pieces = 64;

/// Writes pieces one behind the other in a single call, as `write_at` does with one.
///
/// @param descriptor  file open for writing
/// @param pieces      what to write, `most_pieces` at most; those beyond are left out
/// @param offset      place of the first byte, from the start of the file
/// @return how many bytes were written of all pieces together; -1 on failure with `errno` set
ORVIX_CORE_API std::ptrdiff_t write_pieces_at(int descriptor, std::span<const Piece> pieces, std::uint64_t offset);

/// @param descriptor  open file
/// @return its size in bytes; -1 on failure with `errno` set
ORVIX_CORE_API std::int64_t size_of_descriptor(int descriptor);

/// Closes a file.
///
/// @param descriptor  open file, which is gone afterwards whatever the result
/// @return 0, or -1 with `errno` set if the system reports a failure: what was written may be lost
ORVIX_CORE_API int close_descriptor(int descriptor);

}  // namespace orvix::core
