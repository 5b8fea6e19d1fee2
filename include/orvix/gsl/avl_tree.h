/// @file
/// A height-balanced binary search tree of items that only the caller's comparison understands.
///
/// A tree is a pointer to its root node, null when empty; every call takes the address of that pointer. The tree keeps
/// the item pointers that it is given and never looks behind them. Nothing is owned but the nodes: what a release
/// callback is not given stays the caller's.
///
/// Comparisons take two opaque pointers and answer a negative number, zero or a positive one. Which argument comes
/// first differs between the calls, and each call says so; an antisymmetric comparison that takes items and keys alike
/// serves all three. Comparisons and visitors must not change the tree. Release callbacks may: by the time one runs,
/// the tree is whole again without the item.
///
/// Searching, inserting and deleting take a number of steps that grows with the logarithm of the number of items. Trees
/// are not synchronised.
#pragma once

#include <orvix/gsl/export.h>

#include <cstdint>

/// A node. Callers may read nodes, and write none.
struct tree_s {
    tree_s* left;          ///< items that come before this one; null if there are none
    tree_s* right;         ///< items that come after this one; null if there are none
    std::int16_t balance;  ///< height of the right subtree minus height of the left: -1, 0 or 1
    void* item;            ///< the caller's item
};

/// Makes the tree empty without looking at what the pointer holds. Runs once before a tree is first used.
///
/// @param root  address of the root pointer; not null
ORVIX_GSL_API void avltree_init(tree_s** root);

/// Puts an item into the tree. An item that compares equal is replaced: there is one item of a kind.
///
/// Without memory for a node nothing happens, and the call does not tell; a search does.
///
/// @param root     address of the root pointer; not null
/// @param compare  called with the new item first and an item of the tree second, once for each node on the way down
/// @param item     new item; stays the caller's unless `release` says otherwise
/// @param release  receives the item that was replaced; null leaves it alone
ORVIX_GSL_API void avltree_insert(tree_s** root, int (*compare)(const void*, const void*), void* item,
                                  void (*release)(void*));

/// Looks for an item.
///
/// @param root     address of the root pointer; not null
/// @param compare  called with `key` first and an item of the tree second, once for each node on the way down
/// @param key      what to look for, in whatever form the comparison takes
/// @return the first item on the way down that compares equal; null if there is none
ORVIX_GSL_API void* avltree_search(tree_s** root, int (*compare)(const void*, const void*), const void* key);

/// Takes an item out of the tree.
///
/// @param root     address of the root pointer; not null
/// @param compare  called with an item of the tree first and `key` second, the other way round than elsewhere, once for
///                 each node on the way down
/// @param key      what to look for, in whatever form the comparison takes
/// @param release  receives the item that was taken out; null leaves it alone
/// @return nonzero if an item was taken out; 0 if none compares equal, and then the tree is as it was
ORVIX_GSL_API int avltree_delete(tree_s** root, int (*compare)(const void*, const void*), const void* key,
                                 void (*release)(void*));

/// Visits all items in order, until the visitor has had enough.
///
/// @param root   address of the root pointer; not null
/// @param visit  called with each item and `user`; returns true to go on and false to stop
/// @param user   handed to `visit`
/// @return true if the visitor never said false, as in an empty tree
ORVIX_GSL_API bool avltree_foreach(tree_s** root, bool (*visit)(void*, void*), void* user);

/// Frees all nodes and leaves the tree empty and usable. The tree is empty before the first item is released.
///
/// @param root     address of the root pointer; not null
/// @param release  receives each item, those of both subtrees before that of a node; null leaves the items alone
ORVIX_GSL_API void avltree_free(tree_s** root, void (*release)(void*));
