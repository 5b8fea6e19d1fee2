// What happens when memory runs out on the way, allocation by allocation.

#include <gtest/gtest.h>
#include <orvix/core/path.h>
#include <orvix/gsl/canonical_names.h>
#include <orvix/gsl/status.h>
#include <support/allocation_limit.h>
#include <support/buffer.h>
#include <support/temporary_directory.h>

#include <cstdlib>
#include <filesystem>
#include <new>
#include <set>
#include <string>

namespace fs = std::filesystem;
using namespace orvix::test;

namespace {

struct Failures {
    int count = 0;
    std::set<std::string> texts;
};

// Calls `function` with room for no allocation, for one, and so on until it works. After each failure the current
// directory must be what it was.
template <class Function>
Failures failures_before_success(Function function) {
    const fs::path before = fs::current_path();
    Failures failures;
    for (int room = 0; room < 1000; ++room) {
        try {
            const AllocationLimit limit(room);
            function();
            return failures;
        } catch (const std::bad_alloc& exception) {
            ++failures.count;
            failures.texts.insert(exception.what());
        }
        EXPECT_EQ(fs::current_path(), before);
    }
    ADD_FAILURE() << "never works";
    return failures;
}

class MemoryExhausted : public testing::Test {
protected:
    MemoryExhausted() { fs::create_directory("a directory with a name of some length"); }

    const TemporaryDirectory directory_{TemporaryDirectory::Enter::yes};
};

}  // namespace

TEST_F(MemoryExhausted, CanonicalDirectoryThrowsAndRestoresTheCurrentDirectory) {
    Buffer name("a directory with a name of some length");
    char* result = nullptr;
    const Failures failures = failures_before_success([&] { result = HX_get_canonical_directory_name(name); });
    EXPECT_GT(failures.count, 2);
    EXPECT_EQ(failures.texts, std::set<std::string>{"bad allocation"});
    EXPECT_TRUE(std::string(result).ends_with("\\a directory with a name of some length"));
    gmem_ee_free(result);
}

TEST_F(MemoryExhausted, CanonicalDirectoryAsPathThrowsAndRestoresTheCurrentDirectory) {
    const orvix::Path name("a directory with a name of some length");
    orvix::Path result;
    EXPECT_GT(failures_before_success([&] { result = HX_get_canonical_directory_name_new(name); }).count, 2);
    EXPECT_TRUE(result.string().ends_with("\\a directory with a name of some length"));
}

TEST_F(MemoryExhausted, SearchAlongAListFindsNothing) {
    directory_.write("a directory with a name of some length/part", "");
    char* found = nullptr;
    {
        const AllocationLimit limit(0);
        found = HX_find_file("part", "a directory with a name of some length", false);
    }
    EXPECT_EQ(found, nullptr);
}
