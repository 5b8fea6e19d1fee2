/// @file
/// Which bytes may stand in the names of components, nodes, designs, workspaces and datasets: tests that explain a
/// refusal in words, and repairs.
///
/// Names are zero-ended bytes. ASCII letters, digits and "_" are legal everywhere, whatever the locale, and so are
/// control characters but the tab, and all bytes from 0x80 on. The others are special, and fall into six classes:
///
/// 1. ``~*)[]{}/\<>?,:"|';``, blank and tab are illegal.
/// 2. `+-=^$%` are legal but in identifiers and workspace names.
/// 3. `.` is legal if a separate argument says so.
/// 4. `` `@#& `` are legal but in identifiers and workspace names.
/// 5. `(` is illegal, but it may begin the index list of an identifier.
/// 6. `!` is legal if no flag but `node_name` is set, flags without a meaning included.
///
/// Tests of node and design names let some bytes of classes 1, 3 and 5 pass as well.
///
/// None of these functions touches `GuiErrno`.
#pragma once

#include <orvix/gsl/export.h>

namespace orvix::gsl {

/// Kinds of names, to be or-ed together. Bits without a meaning have no effect but the one on "!".
enum name_flags : unsigned int {
    identifier_name = 0x01,  ///< begins with no digit; classes 2 and 4 are illegal
    node_name = 0x02,        ///< "." and ":" pass the test
    design_name = 0x40,      ///< the bytes "|(){};?." pass the test
    /// As `identifier_name`, and an index list may end the name, as in "bus(1,2)": "(", digits and commas with a digit
    /// before each comma, and a ")" behind a digit as the name's last byte. A list that nothing closes passes too.
    indexed_identifier_name = 0x80,
    workspace_name = 0x100,  ///< classes 2 and 4 are illegal
};

}  // namespace orvix::gsl

/// Tests a name.
///
///     astr_qds_valid_name("1R", orvix::gsl::identifier_name, false)
///         ->  "`1' illegal: valid characters are alphanumeric or _ with non-numeric first character"
///
/// @param name       name to test; null and the empty name are valid
/// @param flags      kind of name, a sum of `orvix::gsl::name_flags`; 0 for a component
/// @param allow_dot  whether "." is legal; under `node_name` and `design_name` it always is
/// @return null if the name is valid; else a message that names the first illegal byte and tells the legal ones, in one
///         buffer of the process, good until the next refusal. The list of legal bytes is that of the general case: it
///         shows ".:" for components as well. One thread at a time.
ORVIX_GSL_API char* astr_qds_valid_name(const char* name, unsigned int flags, bool allow_dot);

/// Copies a name with its illegal bytes replaced.
///
/// What `node_name` and `design_name` allow in a test is not spared here: ":" is replaced under any flags. A name with
/// a digit where the flags bar it, in first place, is copied as it is. Within an index list the byte that breaks it
/// stays, and the repair goes on behind it.
///
///     astr_qds_get_valid_name("a b", 0, true, '_', out)                              ->  "a_b"
///     astr_qds_get_valid_name("1 b", orvix::gsl::identifier_name, true, '_', out)    ->  "1 b"
///
/// @param name         name to copy
/// @param flags        kind of name, as in `astr_qds_valid_name`
/// @param replace_dot  whether "." is replaced: **the opposite** of `allow_dot` in `astr_qds_valid_name`
/// @param replacement  byte to put in; not tested itself, and a zero byte ends the copy there
/// @param out          receives the copy; must hold `strlen(name) + 1` bytes, and may be `name`. Null asks for the
///                     result alone.
/// @return true unless `name` is null
ORVIX_GSL_API bool astr_qds_get_valid_name(char* name, unsigned int flags, bool replace_dot, char replacement,
                                           char* out);

/// Finds the first special byte of a name. A digit in first place counts as special.
///
/// @param name       name to search; null gives null
/// @param allow_dot  whether "." is passed over
/// @return the byte's place in `name`; null if there is none
ORVIX_GSL_API const char* astr_qds_spl_name(const char* name, bool allow_dot);

/// Makes the name of a dataset out of any name: all special bytes become "_", but dots stay; a digit in first place
/// gets a "_" before it.
///
///     astr_translate_qds_dataset_name("1a-b")  ->  "_1a_b"
///
/// @param name  name to translate; null gives null
/// @return a new string, to free with `astr_free_string`; exhausted memory ends in `aerr_memory_error`
ORVIX_GSL_API char* astr_translate_qds_dataset_name(const char* const name);
