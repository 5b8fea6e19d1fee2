/// @file
/// A store of keys and values, in memory or in one file. Both are counted strings of any bytes, empty ones too.
///
///     __db* nets = hash_open("C:\\boards\\nets.db", O_RDWR | O_CREAT, 0644, nullptr);
///     DBT key{name.data(), name.size()};
///     DBT value{};
///     if (nets->get(nets, &key, &value, 0) == 0) use(value.data, value.size);
///     nets->close(nets);
///
/// The record carries its operations, each of which takes the record first. They return 0 for done, 1 for an absent key
/// or the end of a scan, and -1 for a failure with the reason in `errno`: `EINVAL` for flags that an operation does not
/// take, for a text too long to be stored and for a damaged file, `EPERM` for a change to a store that was not opened
/// for writing, `EFBIG` where the store would outgrow its file format, `ENOMEM`, or what the system says of the file.
/// After `EFBIG` and after a failed write of the file a pair may or may not have been stored; no other pair is lost,
/// and the store can be read on.
///
/// A key or a value has at most 2,147,483,647 bytes. Pairs are found by hashing and have no order. One thread at a time
/// may use a store. Nothing keeps two processes or two handles from changing one file at the same time, which damages
/// it.
///
/// **Two kinds of pair may get lost.** The programs that share this file format agree on its page rules to the letter,
/// and two of these rules do not keep every pair:
///
/// - A pair that replaces another on a page which has an overflow page behind it may be squeezed into the room that is
///   left on a later page of the chain. That page is not marked as modified and the pair is not counted. Unless
///   something else marks the page, the pair is gone once the page leaves the cache or the store is closed.
/// - A pair that goes to a page from which a pair too large for a page was just removed is stored one byte off. It is
///   not found any more; instead a key one byte longer stands in the store. Replacing such a large value by a small one
///   meets this rule.
///
/// `orvix::gsl::hash_keep_every_pair` in `<orvix/gsl/hash_careful.h>` switches both off for a handle. The files stay
/// the same for all readers and writers; use it wherever no other program depends on the losses.
///
/// docs/store-format.md describes the file.
#pragma once

#include <orvix/gsl/export.h>

#include <cstddef>
#include <cstdint>

/// A counted string of bytes.
struct DBT {
    void* data;        ///< the first byte; may be null if there are none
    std::size_t size;  ///< how many bytes there are
};

/// What a caller may ask of a store. Zero and null stand for the default. A store that exists already takes nothing but
/// `cache_bytes` and `hash`, and has the rest from its file.
struct HASHINFO {
    /// Bytes of a page, rounded up to a power of two from 64 to 65536; by default 1024 in a file and 4096 in memory.
    /// Large pages suit large values and cost more where a page is read for one pair. On pages of 65536 bytes every
    /// pair takes a page of its own: they work, but no faster than that.
    std::uint32_t page_size;
    /// Pairs for each bucket above which the table grows. By default the first full page decides. A page should hold
    /// about so many pairs: the page size by key, value and 4 bytes more.
    std::uint32_t fill_factor;
    /// Pairs that are expected. A table made for them need not grow, which makes filling it three times as fast.
    std::uint32_t expected_count;
    /// Bytes of pages that are kept in memory, by default 65536. At least six pages are kept. A pair too large for a
    /// page may extend them, and they shrink with `close` alone.
    std::uint32_t cache_bytes;
    /// Hash of so many bytes; must give the same for a file at all times. An existing file that was made with another
    /// one is refused.
    std::uint32_t (*hash)(const void* bytes, std::size_t length);
    /// Byte order of the pages, 1234 (the default) or 4321. Any host reads and writes both.
    std::int32_t byte_order;
};

/// A store. Callers read nothing but the operations.
struct __db {
    std::uint32_t type;  ///< kind of store, always 1

    /// Writes what the file lacks, if there is one, and frees the store.
    ///
    /// @return 0; -1 if `db` is null, or with `errno` set if not everything could be written. The store is freed even
    ///         then; its file holds what the last successful `sync` left there, as far as no page had to leave the
    ///         cache since.
    int (*close)(__db* db);

    /// Removes a key with its value. Pages are not given back to the system.
    ///
    /// @param flags  0 or 1, which mean the same
    /// @return 0; 1 if there is no such key; -1 on failure
    int (*del)(__db* db, const DBT* key, std::uint32_t flags);

    /// Looks for a key.
    ///
    /// @param value  receives the value, which stays the store's: good until the next operation on the store, and not
    ///               to be changed. Untouched unless the key is found.
    /// @param flags  0
    /// @return 0; 1 if there is no such key; -1 on failure
    int (*get)(__db* db, const DBT* key, DBT* value, std::uint32_t flags);

    /// Stores copies of a key and its value. A key that is there gets the new value. Key and value must not be what an
    /// operation of the same store gave. Should the new pair of a replacement find no room, the old one is gone.
    ///
    /// @param flags  0, or `orvix::gsl::hash_keep_existing` to leave a key that is there as it is
    /// @return 0; 1 if the key was to be kept and is there; -1 on failure
    int (*put)(__db* db, const DBT* key, const DBT* value, std::uint32_t flags);

    /// Gives the pairs one by one, in no order that means anything. A scan sees each pair once if the store is not
    /// changed in between; if it is, pairs may come twice or not at all. Looking for keys in between does no harm.
    ///
    /// @param key    receives the key, which stays the store's as a value of `get` does
    /// @param value  receives the value, likewise
    /// @param flags  `orvix::gsl::hash_first` for the first pair; 0 or `orvix::gsl::hash_next` for the next one, which
    ///               is the first of a handle that has not begun, or has come to the end
    /// @return 0; 1 if there are no more pairs; -1 on failure
    int (*seq)(__db* db, DBT* key, DBT* value, std::uint32_t flags);

    /// Writes what the file lacks to it. The system may keep it in memory for a while. Does nothing for a store in
    /// memory or one that was opened to be read.
    ///
    /// @param flags  0
    /// @return 0, or -1 on failure
    int (*sync)(__db* db, std::uint32_t flags);

    void* internal;  ///< the table, an `htab` (see `<orvix/gsl/hash_table.h>`)

    /// @return the store's open file, which stays the store's: a caller may lock it, say. -1 with `ENOENT` if there is
    ///         none, and for a null record.
    int (*fd)(__db* db);
};

/// Opens a store.
///
///     hash_open(nullptr, O_RDWR, 0, nullptr)                        ->  an empty store in memory
///     hash_open("nets.db", O_RDWR | O_CREAT | O_TRUNC, 0644, info)  ->  an empty store in a file
///     hash_open("nets.db", O_RDONLY, 0, nullptr)                    ->  an existing store
///
/// A store in memory that outgrows its cache moves pages to a file of its own in the current directory, which bears no
/// name and goes with the store.
///
/// @param file   name in UTF-8; null for a store in memory
/// @param flags  of the system's flags for opening a file, those to read and write, create, truncate and fail if the
///               file is there. Others are ignored; a store cannot be opened for writing alone, and is then opened to
///               be read. A store in memory too needs the flag for reading and writing to take pairs.
/// @param mode   permission bits of a file that is made
/// @param info   what to ask for; may be null
/// @return the store, to be given back with its `close`; null with `errno` set: `EINVAL` for a file that is no store,
///         is damaged or was made with another hash, and for a page size or byte order that cannot be had; `ENOMEM`; or
///         that of the failed opening or reading. A file that is refused stays as it is.
ORVIX_GSL_API __db* hash_open(const char* file, int flags, int mode, const HASHINFO* info);

namespace orvix::gsl {

/// Flags of the operations of a store.
enum HashFlag : std::uint32_t {
    hash_first = 3,          ///< `seq`: start with the first pair
    hash_next = 7,           ///< `seq`: go on with the next pair
    hash_keep_existing = 8,  ///< `put`: leave a key that is there as it is
};

}  // namespace orvix::gsl
