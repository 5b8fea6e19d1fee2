// Containers that want more memory than there is.

#include "support/exhausted_memory.h"

#include <orvix/gsl/arrays.h>
#include <orvix/gsl/avl_tree.h>
#include <orvix/gsl/linked_list.h>
#include <orvix/gsl/memory_controller.h>
#include <orvix/gsl/string_database.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <string>

using orvix::test::ExhaustedMemory;
using orvix::test::MemoryLimit;
using orvix::test::throws_bad_alloc;
using orvix::test::without_memory;

namespace {

int compare(const void* a, const void* b) {
    return std::strcmp(static_cast<const char*>(a), static_cast<const char*>(b));
}

}  // namespace

TEST_F(ExhaustedMemory, TreeStaysAsItWasWithoutMemoryForANode) {
    char m[] = "m";
    char g[] = "g";
    char t[] = "t";
    char again[] = "m";
    tree_s* root;
    avltree_init(&root);
    avltree_insert(&root, compare, m, nullptr);
    avltree_insert(&root, compare, g, nullptr);
    without_memory([&] { avltree_insert(&root, compare, t, nullptr); });
    EXPECT_EQ(avltree_search(&root, compare, "t"), nullptr);
    EXPECT_EQ(root->item, m);
    EXPECT_EQ(root->balance, -1);
    EXPECT_EQ(root->right, nullptr);
    without_memory([&] { avltree_insert(&root, compare, again, nullptr); });  // which needs none
    EXPECT_EQ(root->item, again);
}

TEST_F(ExhaustedMemory, AddReturnsFalseWithoutMemoryForAnItem) {
    HXstringDB* const db = HXstringDB_new(nullptr, false);
    int old_value = 12;
    db->add(db, "width", &old_value);
    bool added_new = true;
    bool added_again = true;
    without_memory([&] {
        added_new = db->add(db, "height", nullptr);
        added_again = db->add(db, "width", nullptr);
    });
    EXPECT_FALSE(added_new);
    EXPECT_FALSE(added_again);
    EXPECT_EQ(db->find(db, "height"), nullptr);
    EXPECT_EQ(*db->find(db, "width"), &old_value);
}

TEST_F(ExhaustedMemory, AddThrowsWithoutMemoryForTheCopyOfTheKey) {
    HXstringDB* const db = HXstringDB_new(nullptr, false);
    const std::string large(std::size_t{8} << 20, 'x');
    bool thrown = false;
    {
        const MemoryLimit limit(std::size_t{1} << 20);
        thrown = throws_bad_alloc([&] { db->add(db, large.c_str(), nullptr); });
    }
    EXPECT_TRUE(thrown);
    EXPECT_TRUE(db->is_empty(db));
    EXPECT_TRUE(db->add(db, "x", nullptr));
}

TEST_F(ExhaustedMemory, NewDatabaseThrowsWithoutMemory) {
    bool thrown = false;
    without_memory([&] { thrown = throws_bad_alloc([] { HXstringDB_new(nullptr, false); }); });
    EXPECT_TRUE(thrown);
}

TEST_F(ExhaustedMemory, PoolGivesNullAndLeavesABlockThatWasToGrow) {
    MEMC memory;
    initialize_MemCntl(&memory, poolMem);
    auto* const block = static_cast<char*>(alloc_Mem(&memory, 8, 1));
    std::memcpy(block, "contents", 8);
    void* other = block;
    void* grown = block;
    without_memory([&] {
        other = alloc_Mem(&memory, 8, 1);
        grown = realloc_Mem(&memory, block, 16, 1);
    });
    EXPECT_EQ(other, nullptr);
    EXPECT_EQ(grown, nullptr);
    EXPECT_EQ(std::memcmp(block, "contents", 8), 0);
    EXPECT_TRUE(free_Mem(&memory, block));
    void* again = nullptr;
    without_memory([&] { again = alloc_Mem(&memory, 8, 1); });
    EXPECT_EQ(again, block);
}

TEST_F(ExhaustedMemory, ArraysFailEachInItsWayAndStayAsTheyWere) {
    const auto never_free = [](const void*, long long) { return false; };
    void* array = nullptr;
    long long capacity = 0;
    HX_alloc_fixed_array(&array, &capacity, 1, 1 << 20);
    void* const before = array;
    long long used = capacity;
    long long index = 0;
    bool grown = true;
    bool thrown = false;
    without_memory([&] {
        index = HX_alloc_array(&array, &capacity, never_free, 1, 5);
        grown = HX_alloc_fixed_array(&array, &capacity, 1, capacity + 1);
        thrown = throws_bad_alloc([&] { HX_alloc_array_sequentially(&array, &used, &capacity, 1, 5); });
    });
    EXPECT_EQ(index, -1);
    EXPECT_FALSE(grown);
    EXPECT_TRUE(thrown);
    EXPECT_EQ(array, before);
    EXPECT_EQ(capacity, 1 << 20);
    EXPECT_EQ(used, 1 << 20);
}

TEST_F(ExhaustedMemory, NewArraysStayEmpty) {
    const auto never_free = [](const void*, long long) { return false; };
    void* array = nullptr;
    long long capacity = 0;
    long long index = 0;
    bool made = true;
    without_memory([&] {
        index = HX_alloc_array(&array, &capacity, never_free, 8, 5);
        made = HX_alloc_fixed_array(&array, &capacity, 8, 5);
    });
    EXPECT_EQ(index, -1);
    EXPECT_FALSE(made);
    EXPECT_EQ(array, nullptr);
    EXPECT_EQ(capacity, 0);
}

TEST_F(ExhaustedMemory, StringCopyThrows) {
    bool thrown = false;
    without_memory([&] { thrown = throws_bad_alloc([] { HX_stringcopy("text"); }); });
    EXPECT_TRUE(thrown);
}

TEST_F(ExhaustedMemory, ListThrowsAndHoldsWhatTheFreeListSupplied) {
    ListID spare;
    list_alloc(1, 8, &spare, nullptr);
    ListNode* const node = spare.head;
    ListID list;
    bool thrown = false;
    without_memory([&] { thrown = throws_bad_alloc([&] { list_alloc(2, 8, &list, &spare); }); });
    EXPECT_TRUE(thrown);
    EXPECT_EQ(list.head, node);
    EXPECT_EQ(node->next, nullptr);
    EXPECT_EQ(spare.head, nullptr);
}
