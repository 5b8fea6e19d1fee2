#include <orvix/gsl/avl_tree.h>

#include "containers/avl_path.h"

#include <cstddef>
#include <cstdlib>
#include <utility>

namespace avl = orvix::gsl::avl;

namespace {

// A node of the heap may lie across two lines of the cache, with the item on the second one. Where nodes are going to
// be changed it pays to fetch both ahead. Searches lose by it: the processor overlaps one with the next, and can wait
// for so many lines at once and no more.
constexpr std::size_t links = 0;
constexpr std::size_t item_field = offsetof(tree_s, item);

}  // namespace

void avltree_init(tree_s** root) { *root = nullptr; }

void avltree_insert(tree_s** root, int (*compare)(const void*, const void*), void* item, void (*release)(void*)) {
    avl::Path path;
    tree_s* const same = avl::find<links, item_field>(
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
    const tree_s* const same = avl::find<links>(*root, [=](const tree_s* node) { return compare(key, node->item); });
    return same == nullptr ? nullptr : same->item;
}

int avltree_delete(tree_s** root, int (*compare)(const void*, const void*), const void* key, void (*release)(void*)) {
    const auto order = [=](const tree_s* node) {
        const int way_back = compare(node->item, key);
        return (way_back < 0) - (way_back > 0);
    };
    avl::Path path;
    if (avl::find<links, item_field>(*root, order, &path) == nullptr) return 0;
    tree_s* const node = avl::detach(*root, &path, avl::Heir::item);
    void* const item = node->item;
    std::free(node);
    if (release != nullptr) release(item);
    return 1;
}
