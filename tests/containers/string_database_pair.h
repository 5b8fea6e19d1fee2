// A string database and a model of it, driven alike. After each step the two hold the same items in nodes of the same
// shape, and have released the same values in the same order.
#pragma once

#include "avl_tree_model.h"

#include <orvix/gsl/string_database.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace orvix::test {

class StringDatabasePair {
public:
    StringDatabasePair(bool ignore_case, bool with_release)
        : with_release_(with_release),
          db_(HXstringDB_new(with_release ? note_release : nullptr, ignore_case)),
          model_(
              [=](const void* a, const void* b) { return compare(folded(a, ignore_case), folded(b, ignore_case)); }) {
        releases_.clear();
        add_on_release_ = nullptr;
    }
    ~StringDatabasePair() {
        if (db_ != nullptr) db_->destroy(db_);
    }
    StringDatabasePair(const StringDatabasePair&) = delete;
    StringDatabasePair& operator=(const StringDatabasePair&) = delete;

    // Every fourth value is null.
    void add(const std::string& key) {
        void* const value = new_value();
        if (!db_->add(db_, key.c_str(), value)) fault_ = "a refused key";
        model_add(key, value);
    }

    void remove(const std::string& key) {
        if (!db_->remove(db_, key.c_str())) fault_ = "a wrong result of removal";
        model_remove(key);
    }

    // Removes `key`; if its value is released, the callback adds `added` to the same database.
    void remove_and_add(const std::string& key, const std::string& added) {
        void* const value = new_value();
        bool done = false;
        add_on_release_ = [&] {
            done = true;
            db_->add(db_, added.c_str(), value);
        };
        db_->remove(db_, key.c_str());
        add_on_release_ = nullptr;
        model_remove(key);
        if (!done) return;
        if (void* const replaced = model_add(added, value)) expected_releases_.push_back(replaced);
    }

    void find(const std::string& key) {
        void** const value = db_->find(db_, key.c_str());
        const Item wanted{key, nullptr};
        const auto* const expected = static_cast<const Item*>(model_.search(&wanted));
        if ((value == nullptr) != (expected == nullptr) || (value != nullptr && *value != expected->value))
            fault_ = "a wrong result of find";
    }

    // Visits `limit` items and then stops; `limit` is above 0.
    void visit(std::size_t limit) {
        std::pair<std::size_t, Items> walk(limit, {});
        const bool all = db_->foreach (
            db_,
            [](HXstringDBItem* item, void* user) {
                auto* const state = static_cast<std::pair<std::size_t, Items>*>(user);
                state->second.emplace_back(item->key, 0, item->value);
                return state->second.size() < state->first;
            },
            &walk);
        Items expected = model_items();
        const bool expected_all = expected.size() < limit;
        expected.resize(std::min(limit, expected.size()));
        for (auto& item : expected) std::get<int>(item) = 0;
        if (walk.second != expected || all != expected_all) fault_ = "a wrong walk";
    }

    // After this there is nothing left but fault().
    void destroy() {
        db_->destroy(std::exchange(db_, nullptr));
        for (void* const item : model_.items_from_below()) expect_release(static_cast<Item*>(item)->value);
        model_.clear([](void*) {});
    }

    // What is wrong after the last step, or "".
    std::string fault() const {
        if (!fault_.empty()) return fault_;
        if (releases_ != expected_releases_) return "other releases than the model's";
        if (db_ == nullptr) return "";
        const Items items = database_items();
        if (items != model_items()) return "other items or levels than the model's";
        int height = 0;
        for (const auto& item : items) height = std::max(height, std::get<int>(item));
        if (db_->height(db_) != height) return "a wrong height";
        if (db_->is_empty(db_) != items.empty()) return "a wrong answer to whether it is empty";
        return "";
    }

private:
    struct Item {
        std::string key;
        void* value;
    };
    using Items = std::vector<std::tuple<std::string, int, void*>>;  // key, level, value

    static std::string folded(const void* item, bool ignore_case) {
        std::string key = static_cast<const Item*>(item)->key;
        if (ignore_case)
            std::transform(key.begin(), key.end(), key.begin(),
                           [](char c) { return 'A' <= c && c <= 'Z' ? static_cast<char>(c | 0x20) : c; });
        return key;
    }
    static int compare(const std::string& a, const std::string& b) { return a.compare(b); }

    static void note_release(void* value) {
        releases_.push_back(value);
        if (const auto add = std::exchange(add_on_release_, nullptr)) add();
    }
    void expect_release(void* value) {
        if (value != nullptr && with_release_) expected_releases_.push_back(value);
    }

    void* new_value() {
        values_.push_back(std::make_unique<char>());
        return values_.size() % 4 == 0 ? nullptr : values_.back().get();
    }

    // Gives the value that was replaced, or null.
    void* model_add(const std::string& key, void* value) {
        void* replaced = nullptr;
        items_.push_back(std::make_unique<Item>(Item{key, value}));
        model_.insert(items_.back().get(), [&](void* item) { replaced = static_cast<Item*>(item)->value; });
        return replaced;
    }
    void model_remove(const std::string& key) {
        const Item wanted{key, nullptr};
        model_.erase(&wanted, [&](void* item) { expect_release(static_cast<Item*>(item)->value); });
    }

    Items database_items() const {
        Items items;
        db_->print(db_, &items, [](void* context, const char* key, int level, void* value) {
            static_cast<Items*>(context)->emplace_back(key, level, value);
        });
        return items;
    }
    Items model_items() const {
        Items items;
        collect(model_.root(), 1, items);
        return items;
    }
    static void collect(const AvlTreeModel::Node* node, int level, Items& items) {
        if (node == nullptr) return;
        collect(node->left.get(), level + 1, items);
        const auto* const item = static_cast<const Item*>(node->item);
        items.emplace_back(item->key, level, item->value);
        collect(node->right.get(), level + 1, items);
    }

    static inline std::vector<void*> releases_;
    static inline std::function<void()> add_on_release_;
    std::vector<void*> expected_releases_;
    std::string fault_;
    bool with_release_;
    HXstringDB* db_;
    AvlTreeModel model_;
    std::vector<std::unique_ptr<Item>> items_;
    std::vector<std::unique_ptr<char>> values_;
};

}  // namespace orvix::test
