/// @file
/// Allocation without knowledge of the strategy behind it: a controller is bound to a table of methods, for the plain
/// heap (`orvixMem`) or for a pool (`poolMem`), and callers go through the controller.
///
///     MEMC memory;
///     initialize_MemCntl(&memory, poolMem);
///     auto* points = static_cast<Point*>(alloc_Mem(&memory, sizeof(Point), 100));
///     free_Mem(&memory, points);
///
/// The pool keeps blocks that are released, and hands them out again to requests that fit. It suits work that asks for
/// blocks of few sizes over and over. What it takes from the heap it never gives back, and it takes much: each block
/// that no released one serves costs an arena of 8 KiB, or of twice its size if that is more. A released block that
/// serves a smaller request stays that small. Looking for a released block passes all newer arenas, those in use
/// included, so that a request costs the more the more blocks are in use.
///
/// Controllers are not synchronised: each belongs to one thread at a time. No function here touches `GuiErrno`.
#pragma once

#include <orvix/gsl/export.h>

#include <cstdint>

/// The methods of a strategy. Each takes the address of the controller's state word, a word of the strategy's own.
/// Applications may bring tables of their own, with every method set.
struct MEMH {
    /// Allocates `count` elements of `size` bytes. Gives the block, or null.
    void* (*alloc)(void** state, std::uint32_t size, std::int32_t count);
    /// Resizes a block to `count` elements of `size` bytes. Gives the block, possibly moved, or null with the old block
    /// as it was.
    void* (*realloc)(void** state, void* block, std::uint32_t size, std::int32_t count);
    /// Releases a block. Gives false if it takes it for none that is in use; null is such a one.
    bool (*free)(void** state, void* block);
    /// Tells whether the strategy's records are sound. The heap's always are.
    bool (*check)(void** state);
    /// Makes the state word ready, whatever it holds. Gives false if that fails, which it does not for the library's.
    bool (*init)(void** state);
    /// Sets a property of the strategy. The library's have none, and give false.
    bool (*set)(void** state, int value);
};

/// A controller. The caller provides the storage; one that is zeroed gives nothing.
struct MEMC {
    const MEMH* methods;  ///< null until `initialize_MemCntl`
    void* state;          ///< the strategy's; callers leave it alone
};

/// The plain heap, by `gmem_ee_malloc`, `gmem_ee_realloc` and `gmem_ee_free`. A request of no bytes gives null.
ORVIX_GSL_API extern const MEMH* const orvixMem;

/// A pool of the controller's own. A request of no bytes gives an empty block. One of more than 524,264 bytes, the most
/// that its records can tell, gives null.
ORVIX_GSL_API extern const MEMH* const poolMem;

/// Binds a controller to a strategy. One that was bound before forgets what it held; the blocks stay allocated.
///
/// @param memory   controller; not null
/// @param methods  `orvixMem`, `poolMem` or a table of the caller's, which must outlive the controller. Null unbinds.
/// @return what the strategy's `init` says; false for null
ORVIX_GSL_API bool initialize_MemCntl(MEMC* memory, const MEMH* methods);

/// Allocates memory, uninitialised, to be given back with `free_Mem` and the same controller.
///
/// @param memory  controller; not null
/// @param size    bytes of an element
/// @param count   elements; a negative number gives null
/// @return the block, from the library's strategies aligned to 16 bytes; null without memory and from a controller that
///         is bound to nothing
ORVIX_GSL_API void* alloc_Mem(MEMC* memory, std::uint32_t size, std::int32_t count);

/// Resizes a block. Its contents stay, as far as the smaller size goes.
///
/// @param memory  controller that the block came from; not null
/// @param block   block to resize. Null gives null: nothing is allocated.
/// @param size    bytes of an element
/// @param count   elements; a negative number gives null
/// @return the block, possibly moved; null without memory, and where `alloc_Mem` gives null for the same size, and then
///         `block` stays as it was; null, too, for a block of the pool that is not in use, and from a controller that
///         is bound to nothing
ORVIX_GSL_API void* realloc_Mem(MEMC* memory, void* block, std::uint32_t size, std::int32_t count);

/// Gives back a block.
///
/// @param memory  controller that the block came from; not null
/// @param block   block to give back
/// @return true if it was taken; false for null, from a controller that is bound to nothing, and from the pool for a
///         block that is not in use, as one that was given back before
ORVIX_GSL_API bool free_Mem(MEMC* memory, void* block);

/// Sets a property of the controller's strategy.
///
/// @param memory  controller; not null
/// @param value   handed to the strategy
/// @return what the strategy says: false from those of the library, which have nothing to set, and from a controller
///         that is bound to nothing
ORVIX_GSL_API bool set_MemCntl(MEMC* memory, int value);
