// Tables of settings: slots, and the search for a name.
#pragma once

#include "env/folded_name.h"

#include <orvix/gsl/environment.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace orvix::gsl::env {

// Whether a search sees entries that the program removed.
enum class Removed { hidden, included };

// The entry of `name` in the tables that `loc` means, nearest level first; null if there is none. The empty name is
// never found.
EnvEntry* find(eeEnv& env, const FoldedName& name, EnvlocE loc, Removed removed);

// The entry of `name` in one table, removed or not; null if there is none. The search starts at slot `*hint` and goes
// round, and leaves the slot behind the match there: names asked for in the order of their slots are found at once.
EnvEntry* find_from(EnvTable& table, const FoldedName& name, std::size_t* hint);

// The table that receives new settings of `loc`.
EnvTable& table_of_new(eeEnv& env, EnvlocE loc);

// Takes the lowest free slot for a name, growing the table if there is none. Sets the key alone; `value` and `aux` are
// null. Null without memory.
EnvEntry* take_slot(EnvTable& table, const FoldedName& name);

// The value of an entry; empty also where a put without a value took it away.
inline std::string_view value_of(const EnvEntry& entry) {
    return entry.value != nullptr ? std::string_view(entry.value) : std::string_view();
}

// The first `used` slots, as far as there is memory behind them.
std::span<EnvEntry> used_slots(EnvTable& table);

// Frees all entries and their values. The path stays.
void clear(EnvTable& table);

// A copy on the heap of the library's allocator; null without memory.
char* copy_text(std::string_view text);

// Notes that a value changes: an included entry stays included, and a removed one comes back without its user pointer.
void mark_changed(EnvEntry* entry);

// Stores a value; `mod` is the state of a new entry. False without memory, or if `name` is empty.
bool put(eeEnv& env, const FoldedName& name, std::string_view value, EnvlocE loc, EnvModE mod);

}  // namespace orvix::gsl::env
