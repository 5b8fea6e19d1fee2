/// @file
/// One table of strings for the whole process, in memory.
///
///     using namespace orvix::gsl;
///     hcreate(1000);
///     hsearch({name, text}, ENTER);
///     if (const entry* found = hsearch({name, nullptr}, FIND)) std::puts(found->data);
///     hdestroy();
///
/// The table copies what is entered. It keeps the page rules of `<orvix/gsl/hash_store.h>`, where it never meets the
/// losses that are told there: nothing is replaced or removed. Strings may have any length. Not synchronised: the table
/// belongs to one thread at a time.
#pragma once

#include <orvix/gsl/export.h>

#include <cstdint>

namespace orvix::gsl {

/// A key and what belongs to it, both zero-ended.
struct entry {
    char* key;   ///< the key
    char* data;  ///< its text
};

/// What `hsearch` does.
enum ACTIONSEARCH : std::int32_t {
    FIND = 0,  ///< looks for the key
    ENTER = 1  ///< enters the key and its text
};

/// Makes an empty table. One that is there already is neither closed nor freed: call `hdestroy` before.
///
/// @param expected_count  strings that are expected; more may come
/// @return the table's store as a number, 0 on failure with `errno` set. It stands for a `__db*`.
ORVIX_GSL_API std::int64_t hcreate(std::uint32_t expected_count);

/// Looks for a key, or enters one.
///
/// @param item    the key to look for or to enter, and with `ENTER` its text; null ones are refused
/// @param action  `ENTER` to enter the key unless it is there; anything else to look for it
/// @return an entry of the library that each successful call overwrites: the caller's key, with the caller's text after
///         `ENTER`, and after `FIND` the table's own, which lasts until the next call on the table. Null if there is no
///         table, no such key, or with `ENTER` no room (see `errno`) or a key that is there already: it keeps its text.
ORVIX_GSL_API entry* hsearch(entry item, ACTIONSEARCH action);

/// Frees the table with all strings. Without a table it does nothing.
ORVIX_GSL_API void hdestroy();

}  // namespace orvix::gsl
