/// @file
/// A growable list of records, addressed by an index from 0. A record is a run of bytes, or empty. A list is filled
/// record by record or from a text file with a record a line.
///
/// The handle is an untyped pointer. Every function gives false for a null handle and has no other way to report but
/// its result; `GuiErrno` is not touched. A handle that was closed must not be used again.
///
/// Records belong to the list and never leave it but as copies. Reaching an index takes a walk over blocks of 30
/// records (see option 28); the list remembers where it was last, so that walking up or down by index costs one step
/// each.
///
/// Not synchronised: a list belongs to one thread at a time, and creating and closing any two lists must not overlap.
#pragma once

#include <orvix/gsl/export.h>

#include <cstddef>

/// Makes an empty list.
///
/// @param handle  receives it, to give back with `glist_close`; untouched on failure; null makes no list
/// @param flags   sum of 0x100 for a list that may be searched by key, 0x200 for one in descending order, and 0x001,
///                0x002 and 0x400, which are kept for the caller; other bits are dropped
/// @param tag     at most 8 bytes to keep with the list; null counts as empty
/// @param name    its name, of which 128 bytes are kept; null counts as empty
/// @return true if the list was made; false without memory or `handle`
ORVIX_GSL_API bool glist_create(void** handle, int flags, char* tag, char* name);

/// Gives back a list and all its records.
///
/// @return false for null
ORVIX_GSL_API bool glist_close(void* list);

/// Makes the list longer by empty records, or cuts it and frees what is beyond.
///
/// @param list    list
/// @param length  records that it is to have
/// @return false without memory, with as many records added as there was memory for
ORVIX_GSL_API bool glist_setlength(void* list, unsigned length);

/// Stores a copy of a record. The list grows by empty records if need be, and may not be searched by key any more.
///
/// @param list   list
/// @param index  place of the record; what was there is freed
/// @param data   bytes to copy; null only with a size of 0
/// @param size   how many; 0 makes the record empty
/// @return false without memory, and then the record is empty; also for null `data`, which changes nothing, and for
///         index 4,294,967,295, which no list can have
ORVIX_GSL_API bool glist_putrec(void* list, unsigned index, char* data, std::size_t size);

/// Stores a copy of a text with its zero byte, as `glist_putrec` does. The empty text makes the record empty.
///
/// @param list   list
/// @param index  place of the record
/// @param text   text to copy; not null, also where `list` is
/// @return as `glist_putrec`
ORVIX_GSL_API bool glist_putstr(void* list, unsigned index, char* text);

/// Copies bytes of a record.
///
/// @param list    list
/// @param index   place of the record
/// @param buffer  receives exactly `size` bytes, zero bytes behind the record's end; null copies nothing
/// @param size    bytes wanted
/// @param copied  receives `size`, or 0 if nothing was copied because the record is empty, or `buffer` null; may be
///                null
/// @return false if the list has no such record; true for an empty one
ORVIX_GSL_API bool glist_getrec(void* list, unsigned index, char* buffer, std::size_t size, std::size_t* copied);

/// Copies a record as a text, up to its first zero byte.
///
/// @param list    list
/// @param index   place of the record
/// @param buffer  receives the text and a zero byte, so as many bytes as were stored and one more if these have no zero
///                byte; not null
/// @return false if the list has no such record; true with the empty text for an empty one
ORVIX_GSL_API bool glist_getstr(void* list, unsigned index, char* buffer);

/// Finds a record by its key, with a binary search. Records are compared as texts, up to their first zero byte and by
/// signed bytes. The list must have been created with flag 0x100 and must not have had a store since.
///
/// @param list    list
/// @param index   receives the place of the record
/// @param key     text to look for; receives `size` bytes of the record, as `glist_getrec` gives them. Null finds an
///                empty record.
/// @param size    bytes wanted of the record; `key` must hold as many
/// @param copied  receives how many were copied; may be null
/// @return true if found
ORVIX_GSL_API bool glist_getkeyrec(void* list, unsigned* index, char* key, std::size_t size, std::size_t* copied);

/// Opens or closes a gap. Sets the count of option 20 to the length.
///
/// - `delta` above 0 puts that many empty records in front of the record at `index`. With `index` at or behind the end
///   the list is made `index + delta` long instead, and the count stays.
/// - `delta` below 0 moves the record at `index` to `index + delta`, and after it the records that follow, each to the
///   place behind the one before; what was there is freed. Then the list is cut by `-delta`. The last place of a full
///   block (29, 59, ... by default) is passed over, both where records come from and where they go: it keeps its
///   record. Only at the very start of the move does such a place take or give one. Where that leaves fewer records
///   than places, the places left over become empty; where it leaves more, the cut takes them; and a move by -1 from
///   such a place empties every place behind it.
/// - `delta` 0 only sets the count.
///
/// @param list   list
/// @param index  place of the record
/// @param delta  places to move it by
/// @return false without memory, or if the list has no record at `index` or at `index + delta` (below 0)
ORVIX_GSL_API bool glist_move(void* list, unsigned index, int delta);

/// Loads a text file, a record a line, from index 0 on. Lines are read by `gfile_getline_limited` with 1024 bytes, and
/// tabs become blanks; an empty line makes an empty record. A longer list keeps its tail. Sets the count of option 20
/// to the number of lines.
///
/// @param list     list
/// @param file     name of the file in UTF-8
/// @param message  receives the reason of a failure and is untouched otherwise; holds 1024 bytes, to which the text is
///                 cut. "<GLIST_LOAD> (0) not open: ", "Not found: " or "Load incomplete: ", and then the name. May be
///                 null.
/// @return false if the list is null, the file cannot be opened or memory runs out; lines that were stored stay
ORVIX_GSL_API bool glist_load(void* list, char* file, char* message);

/// Reads a property of the list.
///
/// | Option | Answer |
/// |---|---|
/// | 20 | `*value` receives the count: 0 at first, or what option 20, `glist_load` or `glist_move` set |
/// | 21 | `*value` receives the number of records |
/// | 22 | the name is copied to `value`, taken as a `char*` to 129 bytes |
/// | 23 | true |
/// | 24, 25 | true if flag 0x001, 0x002 was given |
/// | 26 | true if there are further references to the list |
/// | 27 | true if the list may be searched by key |
/// | 28 | `*value` receives the block size in bytes, 256 at first |
/// | 29 | true if option 29 was toggled an odd number of times |
///
/// @param list    list; null stores 0 for 20, 21 and 28, and the empty text for 22
/// @param option  property
/// @param value   receives the answer of 20, 21, 22 and 28, where it must not be null; unused otherwise
/// @return false for other options, which store nothing, and for a null list
ORVIX_GSL_API bool glist_query(void* list, int option, int* value);

/// Writes a property of the list.
///
/// | Option | Effect |
/// |---|---|
/// | 20 | the count becomes `*value` |
/// | 22 | the name becomes the text at `value`, taken as a `char*`, of which 128 bytes are kept |
/// | 28 | blocks made from now on have `*value` bytes: 32 and 8 for each record after the second. Below 32 no block can
/// be made: the list cannot grow over its last block. | | 29 | toggles what option 29 reads; `value` is unused |
///
/// @param list    list
/// @param option  property
/// @param value   what to set
/// @return false for other options and for a null list
ORVIX_GSL_API bool glist_set(void* list, int option, int* value);
