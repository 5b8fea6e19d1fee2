/// @file
/// Hash stores that lose no pair.
#pragma once

#include <orvix/gsl/export.h>

struct __db;

namespace orvix::gsl {

/// Switches the two losses off or on again that `<orvix/gsl/hash_store.h>` tells of. With every pair kept, a pair that
/// is squeezed onto a page marks the page as modified and is counted, and a page from which a large pair was removed
/// takes the next pair where readers look for it. Files are the same either way, and a store may be switched at any
/// time; pairs that were lost before stay lost.
///
///     __db* nets = hash_open("nets.db", O_RDWR | O_CREAT, 0644, nullptr);
///     if (nets != nullptr) orvix::gsl::hash_keep_every_pair(nets, true);
///
/// @param db  open store; null is ignored
/// @param on  true to keep every pair, false for the page rules to the letter, which a store has when it is opened
/// @return what was switched before; false for null
ORVIX_GSL_API bool hash_keep_every_pair(__db* db, bool on);

}  // namespace orvix::gsl
