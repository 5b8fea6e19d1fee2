// Lists whose nodes are given back when the test is over, which the library leaves to the end of the process.
#pragma once

#include <orvix/gsl/linked_list.h>
#include <orvix/gsl/status.h>

#include <cstddef>
#include <cstring>
#include <vector>

namespace orvix::test {

// Nodes of odd item sizes lie at odd addresses.
inline ListNode* next_node(const ListNode* node) {
    ListNode* next;
    std::memcpy(&next, static_cast<const void*>(node), sizeof next);
    return next;
}

inline std::vector<ListNode*> nodes_of(const ListID& list) {
    std::vector<ListNode*> nodes;
    for (ListNode* node = list.head; node != nullptr; node = next_node(node)) nodes.push_back(node);
    return nodes;
}

// Allocates lists, and frees their blocks at the end.
class ListBlocks {
public:
    ListBlocks() = default;
    ~ListBlocks() {
        for (void* const block : blocks_) gmem_ee_free(static_cast<char*>(block));
    }
    ListBlocks(const ListBlocks&) = delete;
    ListBlocks& operator=(const ListBlocks&) = delete;

    // Gives the number of nodes that came from the heap.
    std::size_t allocate(int count, unsigned item_size, ListID* list, ListID* free_list) {
        const std::size_t at_hand = free_list == nullptr ? 0 : nodes_of(*free_list).size();
        list_alloc(count, item_size, list, free_list);
        const std::size_t wanted = count < 0 ? 0 : static_cast<std::size_t>(count);
        if (wanted <= at_hand) return 0;
        blocks_.push_back(list->head);
        return wanted - at_hand;
    }

    std::size_t count() const { return blocks_.size(); }

private:
    std::vector<void*> blocks_;
};

}  // namespace orvix::test
