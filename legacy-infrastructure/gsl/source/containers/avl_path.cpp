#include "containers/avl_path.h"

#include <utility>

namespace orvix::gsl::avl {

namespace {

// Mends node `n`, which leans two levels to its heavy side; gives the node that takes its place. `w` is 1 if the right
// side is the heavy one, else -1. Balances are those of the case w == 1, which is drawn here; the other is its mirror.
//
//   the heavy child h leans the same way, or not at all      h leans the other way
//
//       n               h                                        n                 m
//      / \             / \                                      / \              /   \ .
//     A   h    =>     n   C                                    A   h     =>     n     h
//        / \         / \                                          / \          / \   / \ .
//       B   C       A   B                                        m   D        A   B C   D
//                                                               / \ .
//                                                              B   C
template <tree_s* tree_s::*light, tree_s* tree_s::*heavy, int w>
tree_s* rotate(tree_s* n) {
    tree_s* const h = n->*heavy;
    if (h->balance != -w) {
        n->*heavy = h->*light;
        h->*light = n;
        n->balance = static_cast<std::int16_t>(w - h->balance);
        h->balance = static_cast<std::int16_t>(-n->balance);
        return h;
    }
    tree_s* const m = h->*light;
    h->*light = m->*heavy;
    m->*heavy = h;
    n->*heavy = m->*light;
    m->*light = n;
    n->balance = m->balance == w ? -w : 0;
    h->balance = m->balance == -w ? w : 0;
    m->balance = 0;
    return m;
}

// Makes the path's last node lean by `change` levels more to the right. The path loses that node and then ends at the
// link that it hangs on. Gives the node that hangs there now.
tree_s* lean(tree_s*& root, Path* path, int change) {
    tree_s* const node = path->node();
    path->pop();
    const int balance = node->balance + change;
    if (balance == 2) return path->link(root) = rotate<&tree_s::left, &tree_s::right, 1>(node);
    if (balance == -2) return path->link(root) = rotate<&tree_s::right, &tree_s::left, -1>(node);
    node->balance = static_cast<std::int16_t>(balance);
    return node;
}

}  // namespace

void attach(tree_s*& root, Path* path, tree_s* node) {
    node->left = node->right = nullptr;
    node->balance = 0;
    path->link(root) = node;
    // A subtree that has grown leans, unless it is the new node.
    while (!path->empty()) {
        const tree_s* const top = lean(root, path, path->side() == Side::right ? 1 : -1);
        if (top->balance == 0) break;
    }
}

tree_s* detach(tree_s*& root, Path* path, Heir heir) {
    tree_s* const home = path->node();
    tree_s* spare = home;
    const std::size_t place = path->size() - 1;
    if (home->left == nullptr || home->right == nullptr) {
        path->pop();
    } else {
        for (spare = home->left; spare->right != nullptr; spare = spare->right) path->push(spare, Side::right);
    }
    path->link(root) = spare->left != nullptr ? spare->left : spare->right;
    if (spare != home && heir == Heir::item) {
        std::swap(home->item, spare->item);
    } else if (spare != home) {
        *spare = {home->left, home->right, home->balance, spare->item};
        path->replace(root, place, spare);
        spare = home;
    }
    // A subtree that has lost a level does not lean.
    while (!path->empty()) {
        const tree_s* const top = lean(root, path, path->side() == Side::right ? -1 : 1);
        if (top->balance != 0) break;
    }
    return spare;
}

}  // namespace orvix::gsl::avl
