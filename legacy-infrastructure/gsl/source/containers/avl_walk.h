// The walks over a whole tree: in order, and to its end.
#pragma once

#include "containers/avl_path.h"

namespace orvix::gsl::avl {

// Fetches the nodes two levels below a right child that waits for its turn, the left ones first.
inline void fetch_below(const tree_s* right) {
    if (right == nullptr) return;
    prefetch(right->right);
    const tree_s* const first = right->left != nullptr ? right->left : right;
    prefetch(first->left);
    prefetch(first->right);
}

inline bool is_leaf(const tree_s* node) { return node->left == nullptr && node->right == nullptr; }

// Calls `visit(item)` for each item in order until it answers false, and then gives false.
//
// Half of all nodes are leaves. They are visited from their parents, so that only every fourth node has to wait; when
// one begins to, the one that waits above it is near enough to its turn for fetching what comes after.
template <class Visit>
bool walk(const tree_s* node, Visit visit) {
    if (node == nullptr) return true;
    std::array<const tree_s*, max_height> waiting;  // nodes whose left side is being visited
    std::size_t count = 0;
    for (;;) {
        if (const tree_s* const left = node->left) {
            prefetch(node->right);
            if (!is_leaf(left)) {
                if (count > 0) fetch_below(waiting[count - 1]->right);
                assert(count < max_height);
                waiting[count++] = node;
                node = left;
                continue;
            }
            if (!visit(left->item)) return false;
        }
        for (;;) {  // the left side of `node` is done
            const tree_s* const right = node->right;
            if (!visit(node->item)) return false;
            if (right != nullptr) {
                if (!is_leaf(right)) {
                    node = right;
                    break;
                }
                if (!visit(right->item)) return false;
            }
            if (count == 0) return true;
            node = waiting[--count];
        }
    }
}

// Calls `free_node(node)` for each node, after those below it; the node's links are of no use by then. As deep as the
// tree is high.
template <class FreeNode>
void dismantle(tree_s* node, FreeNode free_node) {
    if (node == nullptr) return;
    prefetch(node->right);
    dismantle(node->left, free_node);
    dismantle(node->right, free_node);
    free_node(node);
}

}  // namespace orvix::gsl::avl
