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

#include <orvix/gsl/avl_tree.h>
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

}  // namespace

#endif
