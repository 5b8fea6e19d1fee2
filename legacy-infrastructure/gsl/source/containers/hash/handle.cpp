#include "containers/hash/pairs.h"
#include "containers/hash/scan.h"
#include "containers/hash/table.h"

#include <orvix/core/open_flags.h>
#include <orvix/gsl/hash_careful.h>

#include <cerrno>
#include <cstdlib>
#include <initializer_list>
#include <new>
#include <utility>

namespace orvix::gsl::hash {

namespace {

constexpr std::uint32_t hash_access_method = 1;  // the one kind of store that there is

htab* table_of(const __db* db) { return static_cast<htab*>(db->internal); }

int fail(const __db* db, int reason) {
    errno = reason;
    if (db != nullptr) table_of(db)->error = reason;
    return -1;
}

bool is_one_of(std::uint32_t flags, std::initializer_list<std::uint32_t> accepted) {
    for (const std::uint32_t flag : accepted) {
        if (flags == flag) return true;
    }
    return false;
}

int remove(__db* db, const DBT* key, std::uint32_t flags) {
    if (db == nullptr || key == nullptr || !is_one_of(flags, {0, 1})) return fail(db, EINVAL);
    if (!table_of(db)->may_change) return fail(db, EPERM);
    return access(table_of(db), Action::remove, *key, nullptr, nullptr);
}

int get(__db* db, const DBT* key, DBT* value, std::uint32_t flags) {
    if (db == nullptr || key == nullptr || value == nullptr || flags != 0) return fail(db, EINVAL);
    return access(table_of(db), Action::get, *key, nullptr, value);
}

int put(__db* db, const DBT* key, const DBT* value, std::uint32_t flags) {
    if (db == nullptr || key == nullptr || value == nullptr || !is_one_of(flags, {0, hash_keep_existing})) {
        return fail(db, EINVAL);
    }
    if (!table_of(db)->may_change) return fail(db, EPERM);
    const Action action = flags == hash_keep_existing ? Action::put_new : Action::put;
    return access(table_of(db), action, *key, value, nullptr);
}

int seq(__db* db, DBT* key, DBT* value, std::uint32_t flags) {
    if (db == nullptr || key == nullptr || value == nullptr || !is_one_of(flags, {0, hash_first, hash_next})) {
        return fail(db, EINVAL);
    }
    return scan(table_of(db), flags == hash_first, key, value);
}

int sync(__db* db, std::uint32_t flags) {
    if (db == nullptr || flags != 0) return fail(db, EINVAL);
    return sync_table(table_of(db)) ? 0 : -1;
}

int fd(__db* db) {
    if (db == nullptr) return -1;
    if (table_of(db)->fp == -1) errno = ENOENT;
    return table_of(db)->fp;
}

int close(__db* db) {
    if (db == nullptr) return -1;
    htab* const table = table_of(db);
    std::free(db);
    return close_table(table) ? 0 : -1;
}

}  // namespace

__db* open_store(const char* file, int flags, int mode, const HASHINFO* info) {
    htab* const table = open_table(file, flags, mode, info);
    if (table == nullptr) return nullptr;
    void* const block = std::malloc(sizeof(__db));
    if (block != nullptr) {
        return new (block) __db{hash_access_method, close, remove, get, put, seq, sync, table, fd};
    }
    table->writable_file = 0;
    close_table(table);
    errno = ENOMEM;
    return nullptr;
}

}  // namespace orvix::gsl::hash

__db* hash_open(const char* file, int flags, int mode, const HASHINFO* info) {
    const orvix::core::OpenFlags system = orvix::core::open_flags();
    const int accepted = system.read_write | system.create | system.truncate | system.exclusive;
    return orvix::gsl::hash::open_store(file, flags & accepted, mode, info);
}

bool orvix::gsl::hash_keep_every_pair(__db* db, bool on) {
    return db != nullptr && std::exchange(static_cast<htab*>(db->internal)->keep_every_pair, on);
}
