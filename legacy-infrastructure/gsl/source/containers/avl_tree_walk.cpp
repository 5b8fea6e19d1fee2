#include <orvix/gsl/avl_tree.h>

#include "containers/avl_walk.h"

#include <cstdlib>
#include <utility>

namespace avl = orvix::gsl::avl;

bool avltree_foreach(tree_s** root, bool (*visit)(void*, void*), void* user) {
    return avl::walk(*root, [=](void* item) { return visit(item, user); });
}

void avltree_free(tree_s** root, void (*release)(void*)) {
    avl::dismantle(std::exchange(*root, nullptr), [=](tree_s* node) {
        void* const item = node->item;
        std::free(node);
        if (release != nullptr) release(item);
    });
}
