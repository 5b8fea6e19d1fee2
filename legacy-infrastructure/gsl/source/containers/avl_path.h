// The way from the root of a tree down to a node, and the changes that are made at its end.
#pragma once

#include "containers/prefetch.h"

#include <orvix/gsl/avl_tree.h>

#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>

namespace orvix::gsl::avl {

// A balanced tree of one level more holds over 4e13 nodes, more than a petabyte of them.
constexpr std::size_t max_height = 64;

enum class Side : bool { left, right };

// The link of a node on one side.
inline tree_s*& child(tree_s* node, Side side) { return side == Side::left ? node->left : node->right; }

// The nodes that were passed, the root first, and the side on which each was left.
class Path {
public:
    bool empty() const { return size_ == 0; }
    std::size_t size() const { return size_; }

    void push(tree_s* node, Side side) {
        assert(size_ < max_height);
        nodes_[size_++] = node;
        sides_ = sides_ << 1 | static_cast<std::uint64_t>(side);
    }
    void pop() {
        --size_;
        sides_ >>= 1;
    }

    // The last node, and the side on which it was left.
    tree_s* node() const { return nodes_[size_ - 1]; }
    Side side() const { return static_cast<Side>(sides_ & 1); }

    // The link that the path ends at; `root` is the tree's pointer.
    tree_s*& link(tree_s*& root) const { return link_after(root, size_); }

    // Puts a node in the place of the i-th, and on the link that leads there.
    void replace(tree_s*& root, std::size_t i, tree_s* node) {
        link_after(root, i) = node;
        nodes_[i] = node;
    }

private:
    // The link on which the first `count` nodes are left.
    tree_s*& link_after(tree_s*& root, std::size_t count) const {
        if (count == 0) return root;
        return child(nodes_[count - 1], static_cast<Side>(sides_ >> (size_ - count) & 1));
    }

    std::array<tree_s*, max_height> nodes_;  // not cleared: a tree is rarely as high
    std::uint64_t sides_ = 0;                // the last node's side in bit 0
    std::size_t size_ = 0;
};

// Gives the first node on the way down that is equal to what is looked for, or null. `order(node)` answers a negative
// number if that comes before the node, zero if they are equal, a positive number if it comes after; it is called once
// for each node on the way. `pass(node, way)` hears of each node with that answer.
//
// Which child is next cannot be foreseen. Both are fetched while the comparison runs, at the bytes that lie `offsets`
// behind their starts, and the choice is written so that it becomes a conditional move, since a jump would be
// mispredicted every other time.
template <std::size_t... offsets, class Order, class Pass>
tree_s* descend(tree_s* node, Order order, Pass pass) {
    tree_s* last = nullptr;
    int way = 1;
    while (way != 0 && node != nullptr) {
        tree_s* const left = node->left;
        tree_s* const right = node->right;
        (prefetch(left, offsets), ...);
        (prefetch(right, offsets), ...);
        way = order(node);
        pass(node, way);
        last = node;
        node = way < 0 ? left : right;
    }
    return way == 0 ? last : nullptr;
}

template <std::size_t... offsets, class Order>
tree_s* find(tree_s* root, Order order) {
    return descend<offsets...>(root, order, [](tree_s*, int) {});
}

// The same with the path. It ends at the null link where an equal node belongs; or with the equal node, left side.
template <std::size_t... offsets, class Order>
tree_s* find(tree_s* root, Order order, Path* path) {
    return descend<offsets...>(root, order,
                               [=](tree_s* node, int way) { path->push(node, way > 0 ? Side::right : Side::left); });
}

// Hangs a node on the null link that the path ends at.
void attach(tree_s*& root, Path* path, tree_s* node);

// What takes the place of an item with two children that goes: the item before it, moved over to the same node, or the
// node of the item before it.
enum class Heir { item, node };

// Takes the item of the path's last node, which was left on the left side, out of the tree. Gives the node that holds
// it afterwards, which is the caller's to free.
tree_s* detach(tree_s*& root, Path* path, Heir heir);

}  // namespace orvix::gsl::avl
