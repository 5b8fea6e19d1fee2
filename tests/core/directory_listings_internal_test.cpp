// Names under other letter case, and what finding them costs where the library looks for them itself.

#include "core/directory_walks.h"
#include "support/temporary_directory.h"

#include <orvix/core/path.h>

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

using orvix::Path;
using orvix::test::directory_walks;
using orvix::test::TemporaryDirectory;

namespace {

// Longer than the times of files take to settle.
void let_settle() { std::this_thread::sleep_for(std::chrono::milliseconds(40)); }

void make(const std::string& name) {
    std::FILE* stream = Path(name).fopen("w");
    ASSERT_NE(stream, nullptr);
    std::fclose(stream);
}

}  // namespace

TEST(DirectoryListings, AnExistingNameCostsNoListing) {
    const TemporaryDirectory site(TemporaryDirectory::Enter::yes);
    site.write("there", "");
    const std::size_t before = directory_walks();
    EXPECT_TRUE(Path("there").exists());
    EXPECT_EQ(directory_walks(), before);
}

TEST(DirectoryListings, MissingNamesCostOneListingTogether) {
    const TemporaryDirectory site(TemporaryDirectory::Enter::yes);
    site.write("there", "");
    let_settle();
    const std::size_t before = directory_walks();
    for (int i = 0; i < 1000; ++i) EXPECT_FALSE(Path("missing" + std::to_string(i)).exists());
    EXPECT_LE(directory_walks(), before + 1);
}

TEST(DirectoryListings, MakingManyFilesDoesNotListTheirDirectoryForEach) {
    const TemporaryDirectory site(TemporaryDirectory::Enter::yes);
    let_settle();
    const std::size_t before = directory_walks();
    for (int i = 0; i < 2000; ++i) make("f" + std::to_string(i));
    // One at first, and one after each pause in which the directory settles; a busy machine pauses now and then.
    EXPECT_LT(directory_walks(), before + 200);
}

TEST(DirectoryListings, WhatThisLibraryMadeIsFoundUnderOtherLetterCaseAtOnce) {
    const TemporaryDirectory site(TemporaryDirectory::Enter::yes);
    EXPECT_FALSE(Path("new").exists());
    make("New");
    EXPECT_TRUE(Path("nEW").exists());
    make("NEW2");
    EXPECT_TRUE(Path("new2").exists());
}

TEST(DirectoryListings, ADirectoryInPlaceOfAnotherIsListedAnew) {
    const TemporaryDirectory site(TemporaryDirectory::Enter::yes);
    site.write("d/One", "");
    let_settle();
    EXPECT_TRUE(Path("d/one").exists());
    std::filesystem::remove_all(site.path() / "d");
    site.write("d/Two", "");
    EXPECT_FALSE(Path("d/one").exists());
    EXPECT_TRUE(Path("d/two").exists());
}

TEST(DirectoryListings, ManyDirectoriesAreHeldInBoundedNumber) {
    const TemporaryDirectory site(TemporaryDirectory::Enter::yes);
    for (int i = 0; i < 100; ++i) site.write("d" + std::to_string(i) + "/Name", "");
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 100; ++i) EXPECT_TRUE(Path("d" + std::to_string(i) + "/name").exists());
    }
}
