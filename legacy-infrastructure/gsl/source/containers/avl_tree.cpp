#include <orvix/gsl/avl_tree.h>

#include "containers/avl_path.h"

#include <cstdlib>
#include <utility>

namespace avl = orvix::gsl::avl;

void avltree_init(tree_s** root) { *root = nullptr; }

void avltree_insert(tree_s** root, int (*compare)(const void*, const void*), void* item, void (*release)(void*)) {
    avl::Path path;
    tree_s* const same = avl::find(
        *root, [=](const tree_s* node) { return compare(item, node->item); }, &path);
    if (same != nullptr) {
        void* const old = std::exchange(same->item, item);
        if (release != nullptr) release(old);
        return;
    }
    auto* const node = static_cast<tree_s*>(std::malloc(sizeof(tree_s)));
    if (node == nullptr) return;
    node->item = item;
    avl::attach(*root, &path, node);
}

void* avltree_search(tree_s** root, int (*compare)(const void*, const void*), const void* key) {
    const tree_s* const same = avl::find(*root, [=](const tree_s* node) { return compare(key, node->item); });
    return same == nullptr ? nullptr : same->item;
}

int avltree_delete(tree_s** root, int (*compare)(const void*, const void*), const void* key, void (*release)(void*)) {
    const auto order = [=](const tree_s* node) {
        const int way_back = compare(node->item, key);
        return (way_back < 0) - (way_back > 0);
    };
    avl::Path path;
    if (avl::find(*root, order, &path) == nullptr) return 0;
    tree_s* const node = avl::detach(*root, &path, avl::Heir::item);
    void* const item = node->item;
    std::free(node);
    if (release != nullptr) release(item);
    return 1;
}
