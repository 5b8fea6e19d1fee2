// Random trees, links in them, copied, compared by the system's own program, changed in mode and removed.

#include "files/trees.h"
#include "support/links.h"
#include "support/permissions.h"
#include "support/random_text.h"
#include "support/temporary_directory.h"

#include <orvix/gsl/file_trees.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace fs = std::filesystem;
using orvix::test::entries_below;
using orvix::test::grow_random_tree;
using orvix::test::kept_directory_mode;
using orvix::test::kept_mode;
using orvix::test::make_directory_link;
using orvix::test::make_link;
using orvix::test::RandomText;
using orvix::test::same_trees;
using orvix::test::TemporaryDirectory;
using orvix::test::TreeSite;

namespace {

// All directories of a tree, itself included.
std::vector<fs::path> directories_of(const fs::path& tree) {
    std::vector<fs::path> directories{tree};
    for (const auto& entry : fs::recursive_directory_iterator(tree)) {
        if (entry.is_directory() && !entry.is_symlink()) directories.push_back(entry.path());
    }
    return directories;
}

// Hangs links to a file and to a directory outside into a tree, one each into some of its directories.
// Where links are not seen nothing that may be one is ever removed, so there are none.
void add_links(const fs::path& tree, const fs::path& outside, RandomText& random) {
    if (!orvix::test::links_are_seen()) return;
    for (const fs::path& directory : directories_of(tree)) {
        if (random.coin()) make_link(fs::absolute(outside / "file"), directory / "link to a file");
        if (random.coin()) make_directory_link(fs::absolute(outside / "dir"), directory / "link to a directory");
    }
}

// Changes the mode of all below a directory with a wildcard for each directory. Those with a backslash in their name
// are entries that match but cannot be named themselves.
void change_modes(const fs::path& tree, int mode) {
    for (const fs::path& directory : directories_of(tree)) {
        if (directory.string().find('\\') != std::string::npos) continue;
        ASSERT_TRUE(gfile_chmod((directory.string() + "\\*").c_str(), mode)) << directory;
        for (const auto& entry : fs::directory_iterator(directory)) {
            const auto given = static_cast<unsigned>(mode);
            ASSERT_EQ(orvix::test::mode_of(entry), entry.is_directory() ? kept_directory_mode(given) : kept_mode(given))
                << entry.path();
        }
    }
}

class RandomTrees : public testing::TestWithParam<unsigned> {
protected:
    TreeSite place;
    const TemporaryDirectory& site = place.directory();
};

TEST_P(RandomTrees, AreCopiedChangedInModeAndRemovedAndWhatTheirLinksLeadToStays) {
    RandomText random(GetParam());
    site.write("outside/file", "a file outside");
    site.write("outside/dir/below", "and one below");
    grow_random_tree("source", random, 60);
    add_links("source", "outside", random);

    ASSERT_TRUE(gfile_cp("source", "target", true));
    EXPECT_TRUE(same_trees("source", "target"));
    for (const auto& entry : fs::recursive_directory_iterator("target")) EXPECT_FALSE(entry.is_symlink());

    for (const int mode : {0700, 0751}) change_modes("target", mode);

    EXPECT_TRUE(gfile_rm("source", true));
    EXPECT_TRUE(gfile_rm("target/", true));
    EXPECT_EQ(entries_below("."),
              (std::set<std::string>{"outside", "outside/dir", "outside/dir/below", "outside/file"}));
    EXPECT_EQ(site.read("outside/file"), "a file outside");
    EXPECT_EQ(site.read("outside/dir/below"), "and one below");
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomTrees, testing::Range(0U, 40U));

}  // namespace
