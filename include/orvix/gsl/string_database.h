/// @file
/// A map from strings to opaque values. Keys are copied in; letter case may be ignored.
///
/// The record carries its operations, each of which takes the record first:
///
///     HXstringDB* colours = HXstringDB_new(free_colour, false);
///     colours->add(colours, "red", make_colour(255, 0, 0));
///     if (void** red = colours->find(colours, "red")) paint(*red);
///     colours->destroy(colours);
///
/// Adding, finding and removing take a number of steps that grows with the logarithm of the number of keys. One thread
/// at a time may use string databases, all of them together: the callback that releases values at the moment is kept
/// for the whole process.
///
/// A callback that releases a value may use any string database, the one that is at work included: a key that is being
/// removed or replaced is gone already, and one that is being destroyed is empty, takes nothing more and is destroyed
/// only once. Visitors and printers may use other databases and may not add to or remove from their own. No callback
/// may throw.
#pragma once

#include <orvix/gsl/export.h>

struct tree_s;

/// A key and its value.
struct HXstringDBItem {
    char* key;    ///< the database's copy; not to be changed
    void* value;  ///< the caller's value; may be changed in place
};

/// A string database. Callers read nothing but the operations.
struct HXstringDB {
    bool ignore_case;  ///< whether keys compare without regard to the case of ASCII letters
    tree_s* root;      ///< the items by key

    /// Looks for a key and copies nothing.
    ///
    /// @param key  zero-ended; null is never found
    /// @return the address of the value, good until the key is removed or added again; null if there is no such key
    void** (*find)(HXstringDB* db, const char* key);

    /// Stores a copy of `key` with `value`. A key that is there already is replaced along with its value, so that with
    /// letter case ignored it takes the new spelling.
    ///
    /// The replaced value is **not** given to this record's `release_value`. It goes to the callback of the `remove` or
    /// `destroy` that is in progress when one of them, in any database, has called the caller, and else to none: look
    /// it up before if it must be released.
    ///
    /// @param key    zero-ended; null is refused. It may be the database's own copy.
    /// @param value  stays the caller's until it is stored; may be null
    /// @return true if stored; false if `key` is null or there is no memory for the item
    /// @throws std::bad_alloc without memory for the copy of the key; nothing is stored
    bool (*add)(HXstringDB* db, const char* key, void* value);

    /// Takes a key out and releases its value.
    ///
    /// @param key  zero-ended; may be the database's own copy
    /// @return true unless `key` is null, also when there was no such key
    bool (*remove)(HXstringDB* db, const char* key);

    /// Visits all items in the order of their keys, until the visitor has had enough.
    ///
    /// @param visit  called with each item and `user`; returns true to go on and false to stop
    /// @return true if the visitor never said false
    bool (*foreach)(HXstringDB* db, bool (*visit)(HXstringDBItem* item, void* user), void* user);

    /// Releases all values and frees the record. A null record is harmless.
    void (*destroy)(HXstringDB* db);

    /// @return the levels of the tree of items: 0 if empty, 1 for a lone item
    int (*height)(HXstringDB* db);

    /// Hands all items to `printer` in the order of their keys, each with its level in the tree; the root has level 1.
    ///
    /// @param context  handed to `printer`
    void (*print)(HXstringDB* db, void* context,
                  void (*printer)(void* context, const char* key, int level, void* value));

    /// @return true if nothing is stored
    bool (*is_empty)(HXstringDB* db);

    void (*release_value)(void* value);  ///< receives values that go, unless they are null; may be null
};

/// Makes an empty string database.
///
/// Keys compare byte by byte as unsigned numbers, or, with letter case ignored, by those of their ASCII lower case.
///
/// @param release_value  receives the value of a key that is removed, and of each key when the record is destroyed, but
///                       no null values; null leaves values alone
/// @param ignore_case    whether `Abc` and `aBC` are one key
/// @return the record, to be given back with its `destroy`
/// @throws std::bad_alloc without memory
ORVIX_GSL_API HXstringDB* HXstringDB_new(void (*release_value)(void*), bool ignore_case);
