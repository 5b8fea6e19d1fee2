// Nets in the order of their widths.
#include <orvix/gsl/avl_tree.h>

#include <cstdio>

namespace {

struct Net {
    const char* name;
    double width;
};

int by_width(const void* a, const void* b) {
    const double difference = static_cast<const Net*>(a)->width - static_cast<const Net*>(b)->width;
    return (difference > 0) - (difference < 0);
}

bool print(void* item, void*) {
    const auto* net = static_cast<const Net*>(item);
    std::printf("%s %g\n", net->name, net->width);
    return true;
}

}  // namespace

int main() {
    Net nets[] = {{"GND", 1.5}, {"CLK", 0.25}, {"VCC", 1.0}, {"D0", 0.25}};
    tree_s* tree;
    avltree_init(&tree);
    for (Net& net : nets) avltree_insert(&tree, by_width, &net, nullptr);  // D0 takes the place of CLK
    avltree_foreach(&tree, print, nullptr);

    const Net wanted{"", 1.0};
    if (const void* found = avltree_search(&tree, by_width, &wanted)) {
        std::printf("1.0 is the width of %s\n", static_cast<const Net*>(found)->name);
    }
    avltree_free(&tree, nullptr);
}
