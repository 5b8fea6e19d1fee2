// A tree of the library and its model, driven alike. After each step the two have the same nodes, have made the same
// comparisons with the same arguments in the same order, and have released the same items in the same order.
#pragma once

#include "avl_tree_model.h"

#include <orvix/gsl/avl_tree.h>

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orvix::test {

class AvlTreePair {
public:
    struct Item {
        int key;
        bool stored = false;
    };

    AvlTreePair() : model_(compare_and_note) {
        avltree_init(&root_);
        notes_.clear();
    }
    ~AvlTreePair() { avltree_free(&root_, nullptr); }
    AvlTreePair(const AvlTreePair&) = delete;
    AvlTreePair& operator=(const AvlTreePair&) = delete;

    std::size_t size() const { return expected_.size(); }

    void insert(int key, bool with_release) {
        Item* const item = new_item(key);
        start();
        avltree_insert(&root_, compare_and_note, item, with_release ? note_release : nullptr);
        turn_over();
        model_.insert(item, releaser(with_release));
        expected_[key] = item;
    }

    void erase(int key, bool with_release) {
        const Item wanted{key};
        start();
        const bool erased =
            avltree_delete(&root_, compare_and_note, &wanted, with_release ? note_release : nullptr) != 0;
        turn_over();
        const bool expected = model_.erase(&wanted, releaser(with_release));
        if (erased != expected || erased != (expected_.erase(key) == 1)) fault_ = "a wrong result of deletion";
    }

    void search(int key) {
        const Item wanted{key};
        start();
        const void* const found = avltree_search(&root_, compare_and_note, &wanted);
        turn_over();
        const auto expected = expected_.find(key);
        if (found != model_.search(&wanted) || found != (expected == expected_.end() ? nullptr : expected->second))
            fault_ = "a wrong result of search";
    }

    // Visits `limit` items and then stops.
    void visit(std::size_t limit) {
        Walk walk{limit, {}};
        const bool all = avltree_foreach(&root_, Walk::visit, &walk);
        std::vector<void*> expected;
        for (const auto& [key, item] : expected_) {
            if (expected.size() < limit) expected.push_back(item);
        }
        if (walk.seen != expected || all != (expected_.empty() || limit > expected_.size())) fault_ = "a wrong walk";
    }

    void clear(bool with_release) {
        start();
        avltree_free(&root_, with_release ? note_release : nullptr);
        turn_over();
        model_.clear(releaser(with_release));
        expected_.clear();
    }

    // What is wrong after the last step, or "".
    std::string fault() const {
        if (!fault_.empty()) return fault_;
        if (notes_ != notes_before_) return "other comparisons or releases than the model's";
        if (!agree(root_, model_.root(), [](const void* a, const void* b) { return a == b; }))
            return "other nodes than the model's";
        return test::fault(root_, compare);
    }

private:
    struct Walk {
        std::size_t left;
        std::vector<void*> seen;
        static bool visit(void* item, void* user) {
            auto* const walk = static_cast<Walk*>(user);
            if (walk->left == 0) return false;
            walk->seen.push_back(item);
            return --walk->left > 0;
        }
    };

    // A comparison with its arguments, or a released item and null.
    using Notes = std::vector<std::pair<const void*, const void*>>;

    static int compare(const void* a, const void* b) {
        const int x = static_cast<const Item*>(a)->key;
        const int y = static_cast<const Item*>(b)->key;
        return x < y ? -7 : x > y ? 7 : 0;
    }
    static int compare_and_note(const void* a, const void* b) {
        notes_.emplace_back(a, b);
        return compare(a, b);
    }
    static void note_release(void* item) { notes_.emplace_back(item, nullptr); }
    static AvlTreeModel::Release releaser(bool noting) {
        if (noting) return note_release;
        return [](void*) {};
    }

    Item* new_item(int key) {
        items_.push_back(std::make_unique<Item>(Item{key}));
        return items_.back().get();
    }
    void start() { notes_.clear(); }
    void turn_over() { notes_before_ = std::exchange(notes_, {}); }

    static inline Notes notes_;
    Notes notes_before_;
    std::string fault_;
    tree_s* root_ = nullptr;
    AvlTreeModel model_;
    std::map<int, Item*> expected_;
    std::vector<std::unique_ptr<Item>> items_;
};

}  // namespace orvix::test
