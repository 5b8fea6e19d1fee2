// Some lists and models of them, driven alike. After each step the lists have the nodes of the models in their order,
// their cursors agree, and all items hold what was written to them.
#pragma once

#include "lists.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <new>
#include <string>
#include <vector>

namespace orvix::test {

class ListPair {
public:
    static constexpr std::size_t list_count = 4;

    explicit ListPair(unsigned item_size) : item_size_(item_size) {
        for (ListID& list : lists_) list_null(&list);
    }

    void allocate(std::size_t list, int count, std::size_t free_list) {
        Model& spare = models_[free_list];
        Model& model = models_[list];
        model = {};
        spare.cursor = 0;
        const std::size_t wanted = count < 0 ? 0 : static_cast<std::size_t>(count);
        const std::size_t taken = std::min(wanted, spare.nodes.size());
        const bool impossible = wanted == 0 && spare.nodes.empty();
        model.nodes.assign(spare.nodes.begin(), spare.nodes.begin() + static_cast<std::ptrdiff_t>(taken));
        spare.nodes.erase(spare.nodes.begin(), spare.nodes.begin() + static_cast<std::ptrdiff_t>(taken));
        try {
            blocks_.allocate(count, item_size_, &lists_[list], &lists_[free_list]);
            if (impossible) fault_ = "nodes out of nothing";
        } catch (const std::bad_alloc&) {
            if (!impossible) fault_ = "an exception";
            return;
        }
        char* const block = reinterpret_cast<char*>(lists_[list].head);
        for (std::size_t i = 0; i < wanted - taken; ++i) {
            auto* const node = reinterpret_cast<ListNode*>(block + i * (item_size_ + 8));
            model.nodes.insert(model.nodes.begin() + static_cast<std::ptrdiff_t>(i), node);
            write(node);
        }
    }

    void extend(std::size_t source, unsigned count, std::size_t destination) {
        if (source == destination) return;
        const unsigned moved = list_ext(&lists_[source], count, &lists_[destination]);
        const Nodes chain = models_[source].cut(count);
        if (moved != chain.size()) fault_ = "a wrong number of nodes moved";
        if (chain.empty()) return;
        Model& model = models_[destination];
        if (model.past_end()) model.nodes.clear();
        model.cursor = model.nodes.size();
        model.nodes.insert(model.nodes.end(), chain.begin(), chain.end());
    }

    void insert(std::size_t destination, std::size_t source) {
        if (source == destination) return;
        list_ins(&lists_[destination], &lists_[source]);
        models_[destination].insert(models_[source].nodes);
        models_[source] = {};
    }

    void erase(std::size_t list, unsigned count, std::size_t free_list) {
        if (list == free_list) return;
        list_delete(&lists_[list], count, &lists_[free_list]);
        if (count == 0) return;
        Model& model = models_[list];
        if (model.past_end()) {
            model = {};
        } else {
            models_[free_list].give(model.cut(count));
        }
    }

    void free(std::size_t list, std::size_t free_list) {
        if (list == free_list) return;
        list_free(&lists_[list], &lists_[free_list]);
        models_[free_list].give(models_[list].nodes);
        models_[list] = {};
    }

    void head(std::size_t list) {
        list_head(&lists_[list]);
        models_[list].cursor = 0;
    }

    void tail(std::size_t list) {
        list_tail(&lists_[list]);
        Model& model = models_[list];
        model.cursor = model.nodes.empty() ? 0 : model.nodes.size() - 1;
    }

    void prev(std::size_t list) {
        list_prev(&lists_[list]);
        Model& model = models_[list];
        model.cursor = model.cursor == 0 ? model.nodes.size() : model.cursor - 1;
    }

    void next(std::size_t list) {
        if (models_[list].past_end()) return;
        lists_[list].cur = next_node(lists_[list].cur);
        ++models_[list].cursor;
    }

    // What is wrong after the last step, or "".
    std::string fault() {
        if (!fault_.empty()) return fault_;
        for (std::size_t i = 0; i < list_count; ++i) {
            const Model& model = models_[i];
            if (first_nodes(lists_[i].head, model.nodes.size() + 1) != model.nodes)
                return "other nodes than the model's";
            const ListNode* const cursor = model.past_end() ? nullptr : model.nodes[model.cursor];
            if (lists_[i].cur != cursor) return "another cursor than the model's";
            const void* const item = list_item(&lists_[i]);
            if (item != (cursor == nullptr ? nullptr : cursor + 1)) return "another item than the cursor's";
        }
        for (const auto& [node, bytes] : contents_) {
            if (std::string(reinterpret_cast<const char*>(node + 1), item_size_) != bytes) return "changed contents";
        }
        return "";
    }

private:
    using Nodes = std::vector<ListNode*>;

    struct Model {
        Nodes nodes;
        std::size_t cursor = 0;  // the number of nodes if it is past the end

        bool past_end() const { return cursor >= nodes.size(); }

        Nodes cut(unsigned count) {
            const std::size_t end =
                cursor + std::min<std::size_t>(count, nodes.size() - std::min(cursor, nodes.size()));
            const auto from = nodes.begin() + static_cast<std::ptrdiff_t>(cursor);
            const auto to = nodes.begin() + static_cast<std::ptrdiff_t>(end);
            const Nodes chain(from, to);
            nodes.erase(from, to);
            return chain;
        }

        void insert(const Nodes& chain) {
            nodes.insert(nodes.begin() + static_cast<std::ptrdiff_t>(cursor), chain.begin(), chain.end());
        }

        void give(const Nodes& chain) {
            if (chain.empty()) return;
            if (past_end()) *this = {};
            insert(chain);
        }
    };

    // A list that has become a circle ends as well.
    static Nodes first_nodes(ListNode* node, std::size_t limit) {
        Nodes nodes;
        for (; node != nullptr && nodes.size() < limit; node = next_node(node)) nodes.push_back(node);
        return nodes;
    }

    void write(ListNode* node) {
        std::string bytes(item_size_, '\0');
        for (char& c : bytes) c = static_cast<char>(++written_);
        bytes.copy(reinterpret_cast<char*>(node + 1), item_size_);
        contents_[node] = bytes;
    }

    unsigned item_size_;
    std::array<ListID, list_count> lists_;
    std::array<Model, list_count> models_;
    ListBlocks blocks_;
    std::map<ListNode*, std::string> contents_;
    unsigned written_ = 0;
    std::string fault_;
};

}  // namespace orvix::test
