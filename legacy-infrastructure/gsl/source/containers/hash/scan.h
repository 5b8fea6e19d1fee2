// The sequential cursor of a table.
#pragma once

#include "containers/hash/big_pair.h"

namespace orvix::gsl::hash {

// Gives the next pair, the first one if `from_start` or if there is no scan.
// @return 0; 1 at the end; -1 on failure with `errno` set: the scan then goes on with the next bucket
int scan(htab* table, bool from_start, DBT* key, DBT* value);

// Lets the scan go on behind a big pair. False with `errno` set if the page there cannot be read.
bool move_scan_behind(htab* table, const BigPairEnd& end);

}  // namespace orvix::gsl::hash
