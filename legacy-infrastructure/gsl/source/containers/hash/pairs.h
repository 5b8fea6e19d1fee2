// Pairs of a bucket.
#pragma once

#include "containers/hash/big_pair.h"

namespace orvix::gsl::hash {

enum class Action : std::uint8_t { get, put, put_new, remove };

// The one routine behind looking up, storing and removing.
// @param stored  the value to be put, else null
// @param found   receives the value that is looked up, else null
// @return 0; 1 for an absent key, or with `put_new` for one that is there; -1 on failure with `errno` set
int access(htab* table, Action action, const DBT& key, const DBT* stored, DBT* found);

// The bucket of a hash.
inline std::uint32_t bucket_of(const htab* table, std::uint32_t hash) {
    const std::uint32_t bucket = hash & table->mask_high;
    return bucket > table->top_bucket ? bucket & table->mask_low : bucket;
}

inline std::uint32_t hash_of(const htab* table, std::string_view key) {
    return table->hash == default_hash ? default_hash(key.data(), key.size()) : table->hash(key.data(), key.size());
}

// Adds a bucket if the table has more pairs for each than it wants. Squeezed pairs are not counted, so that the number
// of pairs may have fallen below zero: it then asks for no growth.
int grow_if_full(htab* table);

}  // namespace orvix::gsl::hash
