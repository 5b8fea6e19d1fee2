// Containers that want more memory than there is. POSIX, because the test must take memory away from its process;
// without the address sanitizer, because that reserves more than any limit allows.

#if !defined(_WIN32) && !defined(__SANITIZE_ADDRESS__)
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ORVIX_TEST_MEMORY_CANNOT_BE_LIMITED
#endif
#endif
#else
#define ORVIX_TEST_MEMORY_CANNOT_BE_LIMITED
#endif

#ifndef ORVIX_TEST_MEMORY_CANNOT_BE_LIMITED

#include <orvix/gsl/arrays.h>
#include <orvix/gsl/avl_tree.h>
#include <orvix/gsl/linked_list.h>
#include <orvix/gsl/memory_controller.h>
#include <orvix/gsl/string_database.h>

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <new>
#include <string>

namespace {

void allow_more_bytes(std::size_t bytes) {
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    const rlimit limit{pages * 4096 + bytes, RLIM_INFINITY};
    if (setrlimit(RLIMIT_AS, &limit) != 0) std::_Exit(2);
}

void* volatile taken;  // which keeps the compiler from seeing that nobody uses the blocks

// Takes all memory, and leaves no block of any size at hand.
void take_all_memory() {
    allow_more_bytes(std::size_t{1} << 20);
    for (std::size_t bytes = std::size_t{1} << 20; bytes >= 16; bytes = bytes > 2048 ? bytes / 2 : bytes - 8) {
        do {
            taken = std::malloc(bytes);
        } while (taken != nullptr);
    }
}

void expect(bool condition, int status) {
    if (!condition) std::_Exit(status);
}

int compare(const void* a, const void* b) {
    return std::strcmp(static_cast<const char*>(a), static_cast<const char*>(b));
}

TEST(ExhaustedMemoryDeathTest, TreeStaysAsItWasWithoutMemoryForANode) {
    EXPECT_EXIT(
        {
            char m[] = "m";
            char g[] = "g";
            char t[] = "t";
            tree_s* root;
            avltree_init(&root);
            avltree_insert(&root, compare, m, nullptr);
            avltree_insert(&root, compare, g, nullptr);
            take_all_memory();
            avltree_insert(&root, compare, t, nullptr);
            expect(avltree_search(&root, compare, "t") == nullptr, 3);
            expect(root->item == m && root->balance == -1 && root->right == nullptr, 4);
            char again[] = "m";
            avltree_insert(&root, compare, again, nullptr);  // which needs none
            expect(root->item == again, 5);
            std::_Exit(0);
        },
        testing::ExitedWithCode(0), "");
}

TEST(ExhaustedMemoryDeathTest, AddReturnsFalseWithoutMemoryForAnItem) {
    EXPECT_EXIT(
        {
            HXstringDB* const db = HXstringDB_new(nullptr, false);
            int old_value = 12;
            db->add(db, "width", &old_value);
            take_all_memory();
            expect(!db->add(db, "height", nullptr), 3);
            expect(!db->add(db, "width", nullptr), 4);
            expect(db->find(db, "height") == nullptr && *db->find(db, "width") == &old_value, 5);
            std::_Exit(0);
        },
        testing::ExitedWithCode(0), "");
}

TEST(ExhaustedMemoryDeathTest, AddThrowsWithoutMemoryForTheCopyOfTheKey) {
    EXPECT_EXIT(
        {
            HXstringDB* const db = HXstringDB_new(nullptr, false);
            const std::string large(std::size_t{8} << 20, 'x');
            allow_more_bytes(std::size_t{1} << 20);
            try {
                db->add(db, large.c_str(), nullptr);
                std::_Exit(3);
            } catch (const std::bad_alloc&) {
                expect(db->is_empty(db), 4);
            }
            expect(db->add(db, "x", nullptr), 5);
            std::_Exit(0);
        },
        testing::ExitedWithCode(0), "");
}

TEST(ExhaustedMemoryDeathTest, NewDatabaseThrowsWithoutMemory) {
    EXPECT_EXIT(
        {
            take_all_memory();
            try {
                HXstringDB_new(nullptr, false);
                std::_Exit(3);
            } catch (const std::bad_alloc&) {
                std::_Exit(0);
            }
        },
        testing::ExitedWithCode(0), "");
}

TEST(ExhaustedMemoryDeathTest, PoolGivesNullAndLeavesABlockThatWasToGrow) {
    EXPECT_EXIT(
        {
            MEMC memory;
            initialize_MemCntl(&memory, poolMem);
            auto* const block = static_cast<char*>(alloc_Mem(&memory, 8, 1));
            std::memcpy(block, "contents", 8);
            take_all_memory();
            expect(alloc_Mem(&memory, 8, 1) == nullptr, 3);
            expect(realloc_Mem(&memory, block, 16, 1) == nullptr, 4);
            expect(std::memcmp(block, "contents", 8) == 0, 5);
            expect(free_Mem(&memory, block) && alloc_Mem(&memory, 8, 1) == block, 6);
            std::_Exit(0);
        },
        testing::ExitedWithCode(0), "");
}

TEST(ExhaustedMemoryDeathTest, ArraysFailEachInItsWayAndStayAsTheyWere) {
    EXPECT_EXIT(
        {
            void* array = nullptr;
            long long capacity = 0;
            long long used = 0;
            const auto never_free = [](const void*, long long) { return false; };
            HX_alloc_fixed_array(&array, &capacity, 1, 1 << 20);
            void* const before = array;
            used = capacity;
            take_all_memory();
            expect(HX_alloc_array(&array, &capacity, never_free, 1, 5) == -1, 3);
            expect(!HX_alloc_fixed_array(&array, &capacity, 1, capacity + 1), 4);
            try {
                HX_alloc_array_sequentially(&array, &used, &capacity, 1, 5);
                std::_Exit(5);
            } catch (const std::bad_alloc&) {
                expect(array == before && capacity == 1 << 20 && used == 1 << 20, 6);
            }
            void* fresh = nullptr;
            long long fresh_capacity = 0;
            expect(HX_alloc_array(&fresh, &fresh_capacity, never_free, 8, 5) == -1, 7);
            expect(!HX_alloc_fixed_array(&fresh, &fresh_capacity, 8, 5), 8);
            expect(fresh == nullptr && fresh_capacity == 0, 9);
            std::_Exit(0);
        },
        testing::ExitedWithCode(0), "");
}

TEST(ExhaustedMemoryDeathTest, StringCopyThrows) {
    EXPECT_EXIT(
        {
            take_all_memory();
            try {
                HX_stringcopy("text");
                std::_Exit(3);
            } catch (const std::bad_alloc&) {
                std::_Exit(0);
            }
        },
        testing::ExitedWithCode(0), "");
}

TEST(ExhaustedMemoryDeathTest, ListThrowsAndHoldsWhatTheFreeListSupplied) {
    EXPECT_EXIT(
        {
            ListID spare;
            list_alloc(1, 8, &spare, nullptr);
            ListNode* const node = spare.head;
            ListID list;
            take_all_memory();
            try {
                list_alloc(2, 8, &list, &spare);
                std::_Exit(3);
            } catch (const std::bad_alloc&) {
                expect(list.head == node && node->next == nullptr && spare.head == nullptr, 4);
            }
            std::_Exit(0);
        },
        testing::ExitedWithCode(0), "");
}

}  // namespace

#endif
