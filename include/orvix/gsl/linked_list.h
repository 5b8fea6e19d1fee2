/// @file
/// A singly linked list of items of one size, with a cursor; and free lists, which keep the nodes of items that are
/// dropped for those that come.
///
/// A list is a handle of two words that the caller keeps: the first node, and the cursor's. A node is a link to the
/// next one, followed by the item, whose bytes are the caller's affair. Nodes are allocated in batches and **never
/// freed**: they pass from list to list, and a caller that has finished with a list moves its nodes to a free list, a
/// list of its own with nodes of the same size. With one at hand, adding and dropping items seldom touches the heap.
///
///     ListID spare;
///     list_null(&spare);
///     ListID points;
///     list_alloc(100, sizeof(Point), &points, &spare);
///     for (; points.cur != nullptr; points.cur = points.cur->next) use(static_cast<Point*>(list_item(&points)));
///     list_free(&points, &spare);
///
/// The cursor is null in an empty list, and past the end of any other. What that means to a call, the call says.
///
/// Pointers to handles are not null but where a call says so, and the cursor of a handle is one of the list's own nodes
/// or null. Nodes are not to be in two lists at a time. Not synchronised: lists belong to one thread at a time. No
/// function here touches `GuiErrno`.
#pragma once

#include <orvix/gsl/export.h>

/// What a node begins with. The item follows.
///
/// A node takes the item size and 8 bytes, no more. With an item size that is no multiple of 8, nodes and items of a
/// batch lie at odd addresses: read `next` with `memcpy` then.
struct ListNode {
    ListNode* next;  ///< the following node; null in the last
};

/// A list. Callers may move the cursor on, by setting it to the next node.
struct ListID {
    ListNode* head;  ///< the first node; null if the list is empty
    ListNode* cur;   ///< the cursor's node; null past the end
};

/// Makes a handle that of an empty list, whatever it holds. Nodes that it held are lost.
ORVIX_GSL_API void list_null(ListID* list);

/// Moves the cursor to the first node.
ORVIX_GSL_API void list_head(ListID* list);

/// Moves the cursor to the last node, by a walk from where it is, or from the first node if it is null. An empty list
/// stays as it is.
ORVIX_GSL_API void list_tail(ListID* list);

/// Moves the cursor one node back, by a walk from the first node. From the first node it goes past the end, and from
/// past the end to the last node.
ORVIX_GSL_API void list_prev(ListID* list);

/// @param list  list; may be null
/// @return the cursor's item; null if there is none
ORVIX_GSL_API void* list_item(ListID* list);

/// Makes a list of `count` nodes with the cursor on the first. They come from the free list as far as it goes. The
/// others are allocated in one block, and come before those. Items are not initialised.
///
/// @param count      nodes; of 0 and below none is taken
/// @param item_size  bytes of an item, the same for all nodes that ever meet in a list
/// @param list       handle to fill, whatever it holds
/// @param free_list  where nodes come from, beginning with its first; its cursor ends on its first node. Null and empty
///                   supply nothing.
/// @throws std::bad_alloc without memory, and then `list` holds what the free list supplied; also for a `count` below 1
///         if the free list supplies nothing
ORVIX_GSL_API void list_alloc(int count, unsigned int item_size, ListID* list, ListID* free_list);

/// Moves nodes from the cursor of a list on to the end of another.
///
/// @param source       list to take from; its cursor goes to the node behind those taken, null if there is none. May be
///                     null.
/// @param count        most nodes to move
/// @param destination  list to append to, not `source`; its cursor goes to the first of the nodes. **If its cursor is
///                     null, the nodes it held are lost** and those moved are all that it holds. May be null.
/// @return the number of nodes moved; 0 for null pointers, a `count` of 0, an empty source and a null cursor in it
ORVIX_GSL_API unsigned int list_ext(ListID* source, unsigned int count, ListID* destination);

/// Moves all nodes of a list into another, before the cursor's node, or to the end if the cursor is null. The cursor
/// goes to the first of them.
///
/// @param destination  list to insert into
/// @param source       list to empty, another one. Its cursor, or the first node if that is null, is where the search
///                     for its end begins.
ORVIX_GSL_API void list_ins(ListID* destination, ListID* source);

/// Moves nodes from the cursor of a list on into a free list, before the node of that one's cursor.
///
/// @param list       list to take from; its cursor goes to the node behind those taken, null if there is none. **If its
///                   cursor is null, the nodes it holds are lost**, and the list is empty.
/// @param count      most nodes to move; 0 does nothing
/// @param free_list  list to insert into, another one; its cursor goes to the first of the nodes. **If its cursor is
///                   null, the nodes it held are lost.**
ORVIX_GSL_API void list_delete(ListID* list, unsigned int count, ListID* free_list);

/// Moves all nodes of a list into a free list, before the node of that one's cursor, and leaves the list empty. An
/// empty list changes nothing.
///
/// @param list       list to empty
/// @param free_list  as in `list_delete`
ORVIX_GSL_API void list_free(ListID* list, ListID* free_list);
