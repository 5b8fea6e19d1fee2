// A slow, obvious AVL tree to hold the library's against: recursive, with flags that travel back up. It calls the
// comparison in the order that callers of the library rely on, and hands released items to a callback of its own.
#pragma once

#include <orvix/gsl/avl_tree.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orvix::test {

class AvlTreeModel {
public:
    using Compare = std::function<int(const void*, const void*)>;
    using Release = std::function<void(void*)>;

    struct Node {
        std::unique_ptr<Node> left;
        std::unique_ptr<Node> right;
        int balance = 0;
        void* item = nullptr;
    };

    explicit AvlTreeModel(Compare compare) : compare_(std::move(compare)) {}

    const Node* root() const { return root_.get(); }

    void insert(void* item, const Release& release) {
        bool increased = false;
        insert_below(root_, item, release, increased);
    }

    void* search(const void* key) const {
        const Node* node = root_.get();
        while (node != nullptr) {
            const int order = compare_(key, node->item);
            if (order == 0) return node->item;
            node = order < 0 ? node->left.get() : node->right.get();
        }
        return nullptr;
    }

    bool erase(const void* key, const Release& release) {
        bool decreased = false;
        return erase_below(root_, key, release, decreased);
    }

    void clear(const Release& release) { clear_below(root_, release); }

    // All items, those below a node before its own.
    std::vector<void*> items_from_below() const {
        std::vector<void*> items;
        collect(root_.get(), items);
        return items;
    }

private:
    using Link = std::unique_ptr<Node>;

    void insert_below(Link& link, void* item, const Release& release, bool& increased) {
        if (link == nullptr) {
            link = std::make_unique<Node>();
            link->item = item;
            increased = true;
            return;
        }
        const int order = compare_(item, link->item);
        if (order == 0) {
            release(link->item);
            link->item = item;
            increased = false;
        } else if (order < 0) {
            insert_below(link->left, item, release, increased);
            if (increased) grown_left(link, increased);
        } else {
            insert_below(link->right, item, release, increased);
            if (increased) grown_right(link, increased);
        }
    }

    static void grown_left(Link& link, bool& increased) {
        if (link->balance == 1) {
            link->balance = 0;
            increased = false;
        } else if (link->balance == 0) {
            link->balance = -1;
        } else {
            if (link->left->balance == -1) {
                turn_right(link);
                link->balance = link->right->balance = 0;
            } else {
                double_turn_right(link);
            }
            increased = false;
        }
    }

    static void grown_right(Link& link, bool& increased) {
        if (link->balance == -1) {
            link->balance = 0;
            increased = false;
        } else if (link->balance == 0) {
            link->balance = 1;
        } else {
            if (link->right->balance == 1) {
                turn_left(link);
                link->balance = link->left->balance = 0;
            } else {
                double_turn_left(link);
            }
            increased = false;
        }
    }

    static void shrunken_left(Link& link, bool& decreased) {
        if (link->balance == -1) {
            link->balance = 0;
        } else if (link->balance == 0) {
            link->balance = 1;
            decreased = false;
        } else if (link->right->balance == 0) {
            turn_left(link);
            link->left->balance = 1;
            link->balance = -1;
            decreased = false;
        } else if (link->right->balance == 1) {
            turn_left(link);
            link->left->balance = link->balance = 0;
        } else {
            double_turn_left(link);
        }
    }

    static void shrunken_right(Link& link, bool& decreased) {
        if (link->balance == 1) {
            link->balance = 0;
        } else if (link->balance == 0) {
            link->balance = -1;
            decreased = false;
        } else if (link->left->balance == 0) {
            turn_right(link);
            link->right->balance = -1;
            link->balance = 1;
            decreased = false;
        } else if (link->left->balance == -1) {
            turn_right(link);
            link->right->balance = link->balance = 0;
        } else {
            double_turn_right(link);
        }
    }

    static void turn_right(Link& link) {
        Link left = std::move(link->left);
        link->left = std::move(left->right);
        left->right = std::move(link);
        link = std::move(left);
    }

    static void turn_left(Link& link) {
        Link right = std::move(link->right);
        link->right = std::move(right->left);
        right->left = std::move(link);
        link = std::move(right);
    }

    static void double_turn_right(Link& link) {
        const int middle = link->left->right->balance;
        turn_left(link->left);
        turn_right(link);
        set_after_double_turn(*link, middle);
    }

    static void double_turn_left(Link& link) {
        const int middle = link->right->left->balance;
        turn_right(link->right);
        turn_left(link);
        set_after_double_turn(*link, middle);
    }

    static void set_after_double_turn(Node& top, int middle) {
        top.balance = 0;
        top.left->balance = middle == 1 ? -1 : 0;
        top.right->balance = middle == -1 ? 1 : 0;
    }

    bool erase_below(Link& link, const void* key, const Release& release, bool& decreased) {
        if (link == nullptr) return false;
        const int order = compare_(link->item, key);
        if (order > 0) {
            if (!erase_below(link->left, key, release, decreased)) return false;
            if (decreased) shrunken_left(link, decreased);
        } else if (order < 0) {
            if (!erase_below(link->right, key, release, decreased)) return false;
            if (decreased) shrunken_right(link, decreased);
        } else {
            release(link->item);
            if (link->right == nullptr) {
                link = Link(std::move(link->left));
                decreased = true;
            } else if (link->left == nullptr) {
                link = Link(std::move(link->right));
                decreased = true;
            } else {
                link->item = take_last(link->left, decreased);
                if (decreased) shrunken_left(link, decreased);
            }
        }
        return true;
    }

    static void* take_last(Link& link, bool& decreased) {
        if (link->right == nullptr) {
            void* const item = link->item;
            link = Link(std::move(link->left));
            decreased = true;
            return item;
        }
        void* const item = take_last(link->right, decreased);
        if (decreased) shrunken_right(link, decreased);
        return item;
    }

    static void clear_below(Link& link, const Release& release) {
        if (link == nullptr) return;
        clear_below(link->left, release);
        clear_below(link->right, release);
        release(link->item);
        link.reset();
    }

    static void collect(const Node* node, std::vector<void*>& items) {
        if (node == nullptr) return;
        collect(node->left.get(), items);
        collect(node->right.get(), items);
        items.push_back(node->item);
    }

    Compare compare_;
    Link root_;
};

// The tree in one line: "(left item right)" for a node, with a sign behind the item for a node that leans, and "." for
// no node. `name` spells an item.
template <class Name>
std::string drawing(const tree_s* node, const Name& name) {
    if (node == nullptr) return ".";
    const char* const sign = node->balance == 0 ? "" : node->balance < 0 ? "-" : "+";
    return "(" + drawing(node->left, name) + " " + name(node->item) + sign + " " + drawing(node->right, name) + ")";
}

// What is wrong with a tree, or "". `compare` takes two items.
template <class Compare>
std::string fault(const tree_s* root, const Compare& compare) {
    std::string found;
    const tree_s* previous = nullptr;
    const auto height = [&](const auto& self, const tree_s* node) -> int {
        if (node == nullptr) return 0;
        const int left = self(self, node->left);
        if (previous != nullptr && compare(previous->item, node->item) >= 0) found = "items out of order";
        previous = node;
        const int right = self(self, node->right);
        if (node->balance != right - left) found = "a balance that is not the difference of the heights";
        if (std::abs(right - left) > 1) found = "heights that differ by more than 1";
        return 1 + std::max(left, right);
    };
    height(height, root);
    return found;
}

// Whether nodes, balances and items are the same, node by node. `same` takes an item of each.
template <class Same>
bool agree(const tree_s* node, const AvlTreeModel::Node* model, const Same& same) {
    if (node == nullptr || model == nullptr) return node == nullptr && model == nullptr;
    return node->balance == model->balance && same(node->item, model->item) &&
           agree(node->left, model->left.get(), same) && agree(node->right, model->right.get(), same);
}

}  // namespace orvix::test
