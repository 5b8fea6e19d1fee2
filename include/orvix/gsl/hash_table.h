/// @file
/// Records and steps of the hash store, for tools that look into a store and for tests. Applications use
/// `<orvix/gsl/hash_store.h>`.
///
/// A store is a table of buckets. The hash of a key selects its bucket; each bucket is a page, from which a chain of
/// overflow pages may go on. Pages are in memory while a buffer of the pool holds them. docs/store-format.md describes
/// pages and header byte by byte.
///
/// The steps work on a table that `hash_open` made, on buffers that `__get_buf` gave since then, and on buckets and
/// addresses that the table has. A buffer keeps its page until a later step needs the room, unless it is pinned. Steps
/// that give 0 or -1 set `errno` on failure: `EINVAL` for a damaged page, `ENOMEM`, `EFBIG` for a page that would lie
/// behind the last place of a file, `ENOSPC` if there are no more overflow pages, or what the system says of the file.
#pragma once

#include <orvix/gsl/export.h>
#include <orvix/gsl/hash_store.h>

#include <cstddef>
#include <cstdint>

/// What the second word of an entry means when it is no offset of a value.
enum HashMark : std::uint16_t {
    MARK_OVERFLOW = 0,      ///< the first word is the overflow address of the chain's next page
    MARK_KEY_PART = 1,      ///< a part of a big key stands here, and more of it on the next page
    MARK_KEY_END = 2,       ///< the big key ends here, and its value starts on the next page; or a part of a big value
    MARK_KEY_END_DATA = 3,  ///< the big key ends and its value starts here; or the last part of a big value
    MARK_PAIR_MIN = 4       ///< the least value offset
};

/// States of a buffer.
enum BufferFlag : std::uint8_t {
    BUFFER_DIRTY = 1,    ///< modified since it was read
    BUFFER_ON_DISK = 2,  ///< the page has been written; kept in the slot of a bucket, not here
    BUFFER_BUCKET = 4,   ///< the first page of a bucket and not an overflow page
    BUFFER_PINNED = 8    ///< must stay in the pool
};

/// A page in memory. One with `addr` 0 that is no bucket is blank: it holds no page.
struct _bufhead {
    _bufhead* prev;      ///< the buffer used more recently
    _bufhead* next;      ///< the buffer used less recently; of the list's head, the most recently used one
    _bufhead* ovfl;      ///< buffer of the chain's next page; null or another page's if it is not in memory
    std::uint32_t addr;  ///< number of the bucket, or overflow address
    char* page;          ///< the page's bytes
    std::uint8_t flags;  ///< `BufferFlag` values
};

/// The header of a store file as it stands in memory.
struct HashHeader {
    std::int32_t magic;              ///< 398689
    std::int32_t version;            ///< 2, or 1 in an old file that was not written yet
    std::int32_t byte_order;         ///< of the pages, 1234 or 4321
    std::uint32_t page_size;         ///< bytes of a page, a power of two
    std::uint32_t page_shift;        ///< its logarithm to base 2
    std::uint32_t dir_size;          ///< size of the directory when it last grew, in bytes after the first growth
    std::uint32_t seg_size;          ///< buckets of a segment, a power of two
    std::uint32_t seg_shift;         ///< its logarithm to base 2
    std::uint32_t spare_point;       ///< split point at which overflow pages are allocated
    std::uint32_t free_hint;         ///< lowest overflow bit that may be free
    std::uint32_t top_bucket;        ///< the last bucket
    std::uint32_t mask_high;         ///< covers the hashes of the table as if it were full
    std::uint32_t mask_low;          ///< covers those of its lower half
    std::uint32_t fill_factor;       ///< pairs for each bucket above which the table grows; 65536 until that is known
    std::int32_t key_count;          ///< pairs that were counted, which may be too few and even negative
    std::uint32_t header_pages;      ///< pages that the header takes
    std::uint32_t check_hash;        ///< hash of an agreed text, which tells the hash function
    std::uint32_t spare_counts[32];  ///< overflow pages allocated up to and including each split point
    std::uint16_t bitmap_addrs[32];  ///< overflow addresses of the bitmaps, 0 for none
};

/// Finds out a chain of pages that closes on itself: one page in ever longer intervals is remembered, and met again.
struct HashCycleGuard {
    std::uint32_t mark;   ///< overflow address of the page that is remembered, 0 at first
    std::uint32_t steps;  ///< pages since then
    std::uint32_t limit;  ///< pages after which another one is remembered
};

/// The first page of a bucket: a `_bufhead` pointer with flags in its two low bits. 2 tells that the file has the page.
using HashSlot = std::uintptr_t;

/// A table. It begins with its header.
struct htab : HashHeader {
    std::int32_t seg_count;   ///< segments in use
    std::int32_t extra_segs;  ///< segments among them that were allocated one by one behind the first block
    std::uint32_t (*hash)(const void* bytes, std::size_t length);  ///< the hash function in force
    std::int32_t flags;                                            ///< the flags that the store was opened with
    std::int32_t fp;                                               ///< descriptor of the file, -1 while there is none
    char* big_value;                  ///< the last value that was put together from several pages
    char* big_key;                    ///< the last key that was put together from several pages
    _bufhead* scan_page;              ///< page at which the scan stands, null if it begins a bucket
    std::int32_t scan_bucket;         ///< bucket at which it stands, negative while there is no scan
    std::int32_t scan_index;          ///< entry at which it stands
    std::int32_t error;               ///< the last number that a check of arguments or a short write of the header gave
    std::int32_t created;             ///< 1 if this handle made the table and nobody synchronised it since
    std::int32_t writable_file;       ///< 1 if header and pages go to a named file
    std::uint32_t* bitmap_pages[32];  ///< overflow bitmaps in memory
    std::int32_t bitmap_count;        ///< how many bitmaps there are
    std::int32_t buffer_budget;       ///< buffers that may still be allocated
    _bufhead bufhead;                 ///< head of the circular list of buffers
    HashSlot** dir;                   ///< the segments, each of `seg_size` slots

    std::uint32_t dir_capacity;     ///< segments that `dir` has room for
    std::uint32_t big_value_bytes;  ///< size of the block at `big_value`
    std::uint32_t big_key_bytes;    ///< size of the block at `big_key`
    std::uint32_t scan_address;     ///< overflow address of the page at which the scan stands, 0 for the bucket's own
    HashCycleGuard scan_guard;      ///< over the chain in which the scan stands
    bool may_change;                ///< whether the store was opened to be changed
    bool keep_every_pair;           ///< see `orvix::gsl::hash_keep_every_pair`
    void* slabs;                    ///< blocks of memory that hold the buffers
    char* spare_buffers;            ///< memory of the newest block that no buffer has taken yet
    std::uint32_t spare_count;      ///< how many buffers it holds
    _bufhead* left_pinned;          ///< a bucket that a failed operation left pinned
};

/// What `__big_split` gives.
struct SPLIT_RETURN {
    _bufhead* old_buffer;        ///< last page of the old bucket's chain
    _bufhead* new_buffer;        ///< last page of the new bucket's chain
    _bufhead* next_buffer;       ///< page behind the big pair, null if there is none
    std::uint16_t next_address;  ///< its address, 0 if there is none
};

/// @name Buckets
/// @{

/// @return the bucket of a key
ORVIX_GSL_API std::uint32_t __call_hash(htab* table, const char* key, std::size_t length);

/// @return the smallest `i` with `1 << i` not below `value`; 0 for 0 and 1
ORVIX_GSL_API std::uint32_t __log2_uint(std::uint32_t value);

/// Adds a bucket and splits the one whose pairs may belong there. If it fails, the table is as it was.
/// @return 0 or -1
ORVIX_GSL_API int __expand_table(htab* table);

/// Moves the pairs of `old_bucket` that belong to `new_bucket` there. If it fails, both are as they were.
///
/// @param new_bucket  the last bucket, whose page is emptied first
/// @return 0 or -1
ORVIX_GSL_API int __split_page(htab* table, std::uint32_t old_bucket, std::uint32_t new_bucket);

/// Adds a pair to a bucket, without a look whether its key is there already, and counts it.
///
/// @param buffer  page of the bucket's chain to begin at
/// @param key     of that bucket
/// @return 0; -1 if it has no room, or if it was stored but the table could not grow
ORVIX_GSL_API int __addel(htab* table, _bufhead* buffer, const DBT* key, const DBT* value);

/// Removes a pair.
///
/// @param buffer  its page, the first one of a big pair
/// @param index   index of its first word
/// @return 0 or -1
ORVIX_GSL_API int __delpair(htab* table, _bufhead* buffer, std::int32_t index);

/// @}
/// @name Buffers
/// @{

/// Sets up the pool of a table that has none.
/// @param bytes  bytes of pages that it may hold; at least six pages are held
ORVIX_GSL_API void __buf_init(htab* table, std::uint32_t bytes);

/// Writes or frees all buffers.
///
/// @param do_free   whether the buffers are freed
/// @param to_disk   whether those that are modified are written; they stay marked
/// @return 0; -1 if one could not be written: those that follow are neither written nor freed
ORVIX_GSL_API int __buf_free(htab* table, bool do_free, bool to_disk);

/// Gives a page, which becomes the most recently used one.
///
/// @param address   overflow address, or number of a bucket
/// @param previous  buffer of the page before it in the chain; null for a bucket
/// @param new_page  whether it is a new overflow page, which nobody reads from the file
/// @return its buffer; null on failure
ORVIX_GSL_API _bufhead* __get_buf(htab* table, std::uint32_t address, _bufhead* previous, bool new_page);

/// Makes a buffer blank, and the first to be used again.
ORVIX_GSL_API void __reclaim_buf(htab* table, _bufhead* buffer);

/// Reads a page and checks it. One that the file does not have, or that is empty there, is made fresh.
///
/// @param page       receives the page; must hold `page_size` bytes
/// @param address    overflow address, or number of a bucket
/// @param is_bucket  whether it is a bucket
/// @param is_disk    false for a page that was never written: it is made fresh
/// @param is_bitmap  whether it is a bitmap, whose words have 32 bits
/// @return 0 or -1
ORVIX_GSL_API int __get_page(htab* table, char* page, std::uint32_t address, bool is_bucket, bool is_disk,
                             bool is_bitmap);

/// Writes a page. A table in memory gets its file first.
///
/// @param page       the page. In a store of the other byte order than the host's it is left swapped.
/// @param address    overflow address, or number of a bucket
/// @param is_bucket  whether it is a bucket
/// @param is_bitmap  whether it is a bitmap, whose words have 32 bits
/// @return 0 or -1
ORVIX_GSL_API int __put_page(htab* table, char* page, std::uint32_t address, bool is_bucket, bool is_bitmap);

/// @}
/// @name Overflow pages
/// @{

/// Allocates an overflow page and links it to the last page of a chain.
///
/// @param buffer  that page; the words of its entry for the link are in reserve
/// @return the buffer of the new page, which is fresh; null on failure
ORVIX_GSL_API _bufhead* __add_ovflpage(htab* table, _bufhead* buffer);

/// Gives an overflow page back to the store, for later chains, and its buffer to the pool. A page whose bitmap cannot
/// be read stays allocated.
ORVIX_GSL_API void __free_ovflpage(htab* table, _bufhead* buffer);

/// Makes an overflow bitmap, which marks its own page as used.
///
/// @param address     overflow address of the bitmap's page
/// @param clear_bits  how many pages it describes for now, its own included
/// @param slot        which bitmap it is
/// @return 0; 1 without memory, and for a slot or a number of bits that no table has
ORVIX_GSL_API int __ibitmap(htab* table, std::uint32_t address, std::int32_t clear_bits, std::int32_t slot);

/// @}
/// @name Big pairs
/// Pairs too large for a page, which have a chain of overflow pages to themselves.
/// @{

/// Stores a pair as a big one. If it fails, the page is as it was.
/// @param buffer  an empty overflow page, at which the pair begins
/// @return 0 or -1
ORVIX_GSL_API int __big_insert(htab* table, _bufhead* buffer, const DBT* key, const DBT* value);

/// Removes a big pair. Its first page stays in the chain, as a link to the page behind the pair if there is one.
/// @param buffer  the pair's first page
/// @return 0 or -1
ORVIX_GSL_API int __big_delete(htab* table, _bufhead* buffer);

/// Compares the key of a big pair.
///
/// @param buffer  the pair's first page
/// @param index   index of its entry, 1
/// @return the index of the entry with which the key ends; -2 if it is another key, -3 if a page cannot be read
ORVIX_GSL_API std::int32_t __find_bigpair(htab* table, _bufhead* buffer, std::int32_t index, const char* key,
                                          std::int32_t size);

/// Goes to the last page of a big pair.
/// @param buffer  a page of the pair; receives its last one
/// @return address of the page behind the pair; 0 if there is none or a page cannot be read
ORVIX_GSL_API std::uint16_t __find_last_page(htab* table, _bufhead** buffer);

/// Puts the value of a big pair together.
///
/// @param buffer       a page of the pair that holds a part of its key
/// @param index        index of that part's entry
/// @param value        receives the value: in the page if it stands there whole, else in `big_value`
/// @param set_current  whether the scan goes on behind the pair
/// @return 0 or -1
ORVIX_GSL_API int __big_return(htab* table, _bufhead* buffer, std::int32_t index, DBT* value, bool set_current);

/// Puts key and value of a big pair together.
///
/// @param buffer       the pair's first page
/// @param key          receives the key, in `big_key`
/// @param value        receives the value as `__big_return` gives it
/// @param set_current  whether the scan goes on behind the pair
/// @return 0 or -1
ORVIX_GSL_API int __big_keydata(htab* table, _bufhead* buffer, DBT* key, DBT* value, bool set_current);

/// Hands a big pair of a bucket that is being split to the old or the new bucket's chain.
///
/// @param old_buffer  last page of the old bucket's chain so far
/// @param new_buffer  last page of the new bucket's chain so far
/// @param big         the pair's first page
/// @param address     its address
/// @param old_bucket  number of the old bucket
/// @param result      receives the last pages of both chains, and the page behind the pair
/// @return 0 or -1
ORVIX_GSL_API int __big_split(htab* table, _bufhead* old_buffer, _bufhead* new_buffer, _bufhead* big,
                              std::uint32_t address, std::uint32_t old_bucket, SPLIT_RETURN* result);

/// @}
