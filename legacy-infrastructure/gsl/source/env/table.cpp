#include "env/table.h"

#include <orvix/gsl/status.h>

#include <algorithm>
#include <cstring>
#include <new>

// Tables are searched in slot order, and files are rewritten in that order, so there is no hash table or tree here. But
// a walk over entries of 88 bytes is a walk over cache lines. Beside the entries lies one tag of 16 bits for each slot,
// made of the whole name; the search runs over the tags in blocks, and compares a key only where the tag matches.
//
//   +----------+-------+---------+-------+-------+-----
//   | physical | ready | padding | tag 0 | tag 1 | ...      one block; a free slot has tag 0
//   +----------+-------+---------+-------+-------+-----
struct alignas(16) EnvIndex {
    std::int32_t physical;  // slots that `entries` and the tags have room for, at least `ready`
    std::int32_t ready;     // slots that hold a valid key and value; below `capacity` only where memory ran out

    std::uint16_t* tags() { return reinterpret_cast<std::uint16_t*>(this + 1); }
};

namespace orvix::gsl::env {

namespace {

constexpr std::int32_t slots_a_step = 32;
constexpr std::size_t step_tags = slots_a_step;
constexpr std::size_t block_tags = 128;

std::size_t index_of(std::int32_t slot) { return static_cast<std::size_t>(slot); }

// The constant count and the plain OR let compilers keep a whole block in vector registers.
template <std::size_t count>
bool block_holds(const std::uint16_t* tags, std::uint16_t tag) {
    std::uint16_t any = 0;
    for (std::size_t i = 0; i < count; ++i) any = static_cast<std::uint16_t>(any | (tags[i] == tag ? 0xffff : 0));
    return any != 0;
}

// Slots that a walk may look at; a multiple of a step.
std::size_t walkable_slots(const EnvTable& table) {
    if (table.index == nullptr || table.used < 1 || table.capacity < 1) return 0;
    return index_of(std::min(table.index->ready, table.capacity));
}

bool matches(const EnvEntry& entry, const FoldedName& name, Removed removed) {
    if (std::memcmp(entry.key, name.key().data(), name.key().size() + 1) != 0) return false;
    return removed == Removed::included || entry.mod != ENVMOD_REMOVED;
}

// Searches in slot order, from a slot on.
EnvEntry* find_from_slot(const EnvTable& table, const FoldedName& name, Removed removed, std::size_t slot) {
    const std::size_t slots = walkable_slots(table);
    const std::uint16_t tag = name.tag();
    while (slot < slots) {
        const std::uint16_t* tags = table.index->tags();
        if (slot % block_tags == 0 && slot + block_tags <= slots && !block_holds<block_tags>(tags + slot, tag)) {
            slot += block_tags;
            continue;
        }
        const std::size_t step = slot / step_tags * step_tags;
        const std::size_t end = step + step_tags;
        if (block_holds<step_tags>(tags + step, tag)) {
            for (; slot < end; ++slot) {
                if (tags[slot] == tag && matches(table.entries[slot], name, removed)) return &table.entries[slot];
            }
        }
        slot = end;
    }
    return nullptr;
}

EnvEntry* find_in(const EnvTable& table, const FoldedName& name, Removed removed) {
    return find_from_slot(table, name, removed, 0);
}

// Gives entries and tags room for `slots`, at least doubling what there is. False without memory.
bool reserve(EnvTable& table, std::int32_t slots) {
    const std::int32_t before = table.index != nullptr ? table.index->physical : 0;
    if (slots <= before) return true;
    constexpr std::int32_t least = 2 * slots_a_step;
    constexpr std::int32_t most = INT32_MAX / 2;
    const std::int32_t physical = before < most ? std::max({slots, 2 * before, least}) : slots;

    char* entries = reinterpret_cast<char*>(table.entries);
    char* grown = gmem_ee_realloc(entries, index_of(physical), sizeof(EnvEntry));
    if (grown == nullptr) return false;
    table.entries = reinterpret_cast<EnvEntry*>(grown);

    const std::size_t index_bytes = sizeof(EnvIndex) + index_of(physical) * sizeof(std::uint16_t);
    grown = gmem_ee_realloc(reinterpret_cast<char*>(table.index), index_bytes, 1);
    if (grown == nullptr) return false;
    if (before == 0) new (grown) EnvIndex{0, 0};
    table.index = reinterpret_cast<EnvIndex*>(grown);
    table.index->physical = physical;
    std::fill(table.index->tags() + before, table.index->tags() + physical, std::uint16_t{0});
    return true;
}

// Raises the capacity by one step. When memory runs out the capacity stays raised all the same, and the next step tries
// for both; walks stay within what is ready.
bool grow(EnvTable& table) {
    if (table.capacity > INT32_MAX - slots_a_step) return false;
    table.capacity += slots_a_step;
    if (!reserve(table, table.capacity)) return false;
    std::fill(table.entries + table.index->ready, table.entries + table.capacity, EnvEntry{});
    table.index->ready = table.capacity;
    return true;
}

// The lowest slot without a key. It stands at `used`, unless a caller has edited the table.
EnvEntry* free_slot(EnvTable& table) {
    if (table.index == nullptr || table.capacity <= table.used) return nullptr;
    const auto first = table.entries + std::max(table.used, 0);
    const auto last = table.entries + table.index->ready;
    if (first < last && first->key[0] == '\0') return first;
    const auto slot = std::find_if(table.entries, last, [](const EnvEntry& entry) { return entry.key[0] == '\0'; });
    return slot < last ? slot : nullptr;
}

void set_value(EnvEntry* entry, char* value) {
    gmem_ee_free(entry->value);
    entry->value = value;
}

}  // namespace

EnvEntry* find(eeEnv& env, const FoldedName& name, EnvlocE loc, Removed removed) {
    if (name.empty()) return nullptr;
    switch (loc) {
        case ENVLOC_CWD:
            return find_in(env.cwd, name, removed);
        case ENVLOC_USER:
            return find_in(env.user, name, removed);
        case ENVLOC_CUSTOM:
            return find_in(env.custom, name, removed);
        case ENVLOC_SYSTEM:
            return find_in(env.system, name, removed);
        default:
            for (EnvTable* table : {&env.cwd, &env.user, &env.custom, &env.system}) {
                if (table->used < 1) continue;
                if (EnvEntry* entry = find_in(*table, name, removed)) return entry;
            }
            return nullptr;
    }
}

EnvEntry* find_from(EnvTable& table, const FoldedName& name, std::size_t* hint) {
    if (name.empty()) return nullptr;
    EnvEntry* entry = find_from_slot(table, name, Removed::included, *hint);
    if (entry == nullptr && *hint > 0) entry = find_in(table, name, Removed::included);
    if (entry != nullptr) *hint = static_cast<std::size_t>(entry - table.entries) + 1;
    return entry;
}

EnvTable& table_of_new(eeEnv& env, EnvlocE loc) {
    switch (loc) {
        case ENVLOC_SYSTEM:
            return env.system;
        case ENVLOC_CUSTOM:
            return env.custom;
        case ENVLOC_USER:
            return env.user;
        default:
            return env.cwd;
    }
}

EnvEntry* take_slot(EnvTable& table, const FoldedName& name) {
    EnvEntry* slot = free_slot(table);
    if (slot == nullptr) {
        if (!grow(table)) return nullptr;
        slot = free_slot(table);
    }
    if (slot == nullptr) return nullptr;
    ++table.used;
    std::memcpy(slot->key, name.key().data(), name.key().size() + 1);
    table.index->tags()[slot - table.entries] = name.tag();
    return slot;
}

std::span<EnvEntry> used_slots(EnvTable& table) {
    return {table.entries, std::min(walkable_slots(table), index_of(std::max(table.used, 0)))};
}

void clear(EnvTable& table) {
    if (table.index != nullptr) {
        for (std::int32_t slot = 0; slot < table.index->ready; ++slot) gmem_ee_free(table.entries[slot].value);
        gmem_ee_free(reinterpret_cast<char*>(table.index));
    }
    gmem_ee_free(reinterpret_cast<char*>(table.entries));
    table.entries = nullptr;
    table.index = nullptr;
    table.capacity = 0;
    table.used = 0;
}

char* copy_text(std::string_view text) {
    char* copy = gmem_ee_malloc(text.size() + 1, 1);
    if (copy == nullptr) return nullptr;
    if (!text.empty()) std::memcpy(copy, text.data(), text.size());
    copy[text.size()] = '\0';
    return copy;
}

void mark_changed(EnvEntry* entry) {
    if (entry->mod == ENVMOD_REMOVED) entry->aux = nullptr;
    if (entry->mod != ENVMOD_INCLUDED) entry->mod = ENVMOD_CHANGED;
}

bool put(eeEnv& env, const FoldedName& name, std::string_view value, EnvlocE loc, EnvModE mod) {
    if (name.empty()) return false;
    // Copied first: the text may lie in the value that it replaces.
    char* copy = copy_text(value);
    if (copy == nullptr) return false;

    if (EnvEntry* entry = find(env, name, loc, Removed::included)) {
        mark_changed(entry);
        set_value(entry, copy);
        return true;
    }
    EnvEntry* entry = take_slot(table_of_new(env, loc), name);
    if (entry == nullptr) {
        gmem_ee_free(copy);
        return false;
    }
    entry->mod = mod;
    set_value(entry, copy);
    return true;
}

}  // namespace orvix::gsl::env
