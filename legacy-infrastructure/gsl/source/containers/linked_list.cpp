#include <orvix/gsl/linked_list.h>
#include <orvix/gsl/status.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>

namespace {

// Nodes of items of odd sizes are not aligned, so links are copied as bytes.
ListNode* next(const ListNode* node) {
    ListNode copy;
    std::memcpy(&copy, static_cast<const void*>(node), sizeof copy);
    return copy.next;
}

void link(ListNode* node, ListNode* to) {
    const ListNode copy{to};
    std::memcpy(static_cast<void*>(node), &copy, sizeof copy);
}

ListNode* node_at(char* place) { return static_cast<ListNode*>(static_cast<void*>(place)); }

// Where a walk has come to, and over how many links.
struct Walk {
    ListNode* end;
    unsigned int links;
};

constexpr unsigned int no_limit = std::numeric_limits<unsigned int>::max();

// Follows up to `most` links from a node, no further than to the last node.
//
// Nodes of a batch lie at one distance from each other. While links agree with that, the next address is a sum, which
// the processor has before the link arrives from memory, and a batch is passed in half the time. Distances are compared
// and not addresses, and the end is looked for last: written otherwise, compilers take the link for the sum. No node
// lies so high that a distance leads from there to address 0, the end.
Walk follow(ListNode* node, unsigned int most) {
    constexpr std::uintptr_t longest_distance = std::numeric_limits<std::uint32_t>::max();
    const auto link_at = [](std::uintptr_t at) {
        return std::bit_cast<std::uintptr_t>(next(std::bit_cast<const ListNode*>(at)));
    };
    auto at = std::bit_cast<std::uintptr_t>(node);
    std::uintptr_t distance = 0;
    unsigned int links = 0;
    for (; links < most; ++links) {
        const std::uintptr_t link = link_at(at);
        if (link - at == distance) [[likely]] {
            at += distance;
        } else if (link != 0) {
            distance = link - at <= longest_distance ? link - at : 0;
            at = link;
        } else {
            break;
        }
    }
    return {std::bit_cast<ListNode*>(at), links};
}

// The node whose link is `node`, which may be null. Null if there is none from `head` on.
ListNode* before(ListNode* head, const ListNode* node) {
    while (head != nullptr && next(head) != node) head = next(head);
    return head;
}

// Nodes that are linked one to the next.
struct Chain {
    ListNode* first;
    ListNode* last;
    unsigned int count;
};

// Cuts up to `most` nodes out of a list, from its cursor on, and moves the cursor behind them. `most` is not 0, and the
// cursor not null. None if the cursor is no node of the list.
Chain cut(ListID* list, unsigned int most) {
    const Walk walk = follow(list->cur, most - 1);
    const Chain chain{list->cur, walk.end, walk.links + 1};
    ListNode* const rest = next(chain.last);
    if (list->cur == list->head) {
        list->head = rest;
    } else if (ListNode* const previous = before(list->head, list->cur)) {
        link(previous, rest);
    } else {
        return {};
    }
    list->cur = rest;
    return chain;
}

// Puts nodes before the cursor's node, or behind the last if the cursor is null, and the cursor on their first.
void insert(ListID* list, ListNode* first, ListNode* last) {
    link(last, list->cur);
    ListNode* const previous = list->cur == list->head ? nullptr : before(list->head, list->cur);
    if (previous != nullptr) {
        link(previous, first);
    } else {
        list->head = first;
    }
    list->cur = first;
}

// The same for a free list, which with a null cursor forgets what it held.
void give(ListID* free_list, ListNode* first, ListNode* last) {
    if (free_list->cur == nullptr) list_null(free_list);
    insert(free_list, first, last);
}

// The last node of a list that is not empty.
ListNode* last_of(const ListID* list) { return follow(list->cur != nullptr ? list->cur : list->head, no_limit).end; }

}  // namespace

void list_null(ListID* list) { *list = {nullptr, nullptr}; }

void list_head(ListID* list) { list->cur = list->head; }

void list_tail(ListID* list) {
    if (list->head != nullptr) list->cur = last_of(list);
}

void list_prev(ListID* list) { list->cur = list->cur == list->head ? nullptr : before(list->head, list->cur); }

void* list_item(ListID* list) {
    if (list == nullptr || list->head == nullptr || list->cur == nullptr) return nullptr;
    return list->cur + 1;
}

void list_alloc(int count, unsigned int item_size, ListID* list, ListID* free_list) {
    list_null(list);
    if (free_list != nullptr && free_list->head != nullptr) {
        list_head(free_list);
        if (count > 0) count -= static_cast<int>(list_ext(free_list, static_cast<unsigned int>(count), list));
        if (count < 1) return;
    }
    const std::size_t nodes = count < 1 ? 0 : static_cast<std::size_t>(count);
    const std::size_t stride = sizeof(ListNode) + item_size;
    char* const block = gmem_ee_malloc(nodes, stride);
    if (block == nullptr) throw std::bad_alloc();
    char* const last = block + (nodes - 1) * stride;
    for (char* node = block; node != last; node += stride) link(node_at(node), node_at(node + stride));
    link(node_at(last), list->head);
    list->head = list->cur = node_at(block);
}

unsigned int list_ext(ListID* source, unsigned int count, ListID* destination) {
    if (source == nullptr || destination == nullptr || count == 0) return 0;
    if (source->head == nullptr || source->cur == nullptr) return 0;
    const Chain chain = cut(source, count);
    if (chain.count == 0) return 0;
    link(chain.last, nullptr);
    if (destination->cur == nullptr) {
        destination->head = chain.first;
    } else {
        link(last_of(destination), chain.first);
    }
    destination->cur = chain.first;
    return chain.count;
}

void list_ins(ListID* destination, ListID* source) {
    if (destination == source) return;
    if (source->head != nullptr) insert(destination, source->head, last_of(source));
    list_null(source);
}

void list_delete(ListID* list, unsigned int count, ListID* free_list) {
    if (count == 0) return;
    if (list->head == nullptr || list->cur == nullptr) {
        list_null(list);
        return;
    }
    const Chain chain = cut(list, count);
    if (chain.count != 0) give(free_list, chain.first, chain.last);
}

void list_free(ListID* list, ListID* free_list) {
    if (list->head == nullptr || list == free_list) return;
    give(free_list, list->head, last_of(list));
    list_null(list);
}
