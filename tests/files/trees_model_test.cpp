// Random calls on random trees do what the plain form of the operations does, call by call.

#include "files/trees_model.h"
#include "files/trees.h"
#include "support/buffer.h"
#include "support/host.h"
#include "support/random_text.h"
#include "support/temporary_directory.h"

#include <orvix/gsl/file_trees.h>
#include <orvix/gsl/status.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace fs = std::filesystem;
using orvix::test::Buffer;
using orvix::test::RandomText;
using orvix::test::read_file;
using orvix::test::ScopedVariable;
using orvix::test::TreeSite;
using orvix::test::TreesModel;

namespace {

const char* const name_with_colon = orvix::test::may_stand_in_names(':') ? "ab:c" : "ab_c";

// All that a tree holds: kinds, permissions and bytes by name.
std::map<std::string, std::string> contents_of(const fs::path& directory) {
    std::map<std::string, std::string> contents;
    for (const auto& entry : fs::recursive_directory_iterator(directory)) {
        const auto mode = static_cast<unsigned>(entry.status().permissions());
        std::string& text = contents[entry.path().lexically_relative(directory).string()];
        text = std::to_string(mode) + (entry.is_directory() ? " directory" : " file " + read_file(entry.path()));
    }
    return contents;
}

// A name that can lead nowhere but into the current directory or the root of the drive D.
std::string random_name(RandomText& random) {
    static const char* const parts[] = {"a", "b", "ab", "ba.c", "x y", name_with_colon, ".", "", "d"};
    std::string name;
    if (random.number(7) == 0) name = random.coin() ? "d:" : "d:\\";
    for (std::size_t left = random.number(3) + 1; left > 0; --left) {
        name += parts[random.number(std::size(parts) - 1)];
        if (left > 1) name += random.number(4) == 0 ? '/' : '\\';
    }
    // From the root of the current drive: nothing for a test that removes.
    if (name.starts_with('\\') || name.starts_with('/')) name.insert(0, 1, '.');
    while (name.ends_with('\\') || name.ends_with('/')) name.pop_back();
    return random.number(5) == 0 ? name + (random.coin() ? "\\" : "/") : name;
}

std::string random_wildcard(RandomText& random) {
    static const char* const patterns[] = {"*", "a*", "?", "*b", "a*c", "??*", "*?"};
    return random_name(random) + (random.number(5) == 0 ? "/" : "\\") +
           patterns[random.number(std::size(patterns) - 1)];
}

std::string random_name_or_wildcard(RandomText& random) {
    return random.number(3) == 0 ? random_wildcard(random) : random_name(random);
}

// Parts of directories to make: variables among them, and roots.
std::string random_directory(RandomText& random) {
    static const char* const parts[] = {"a",       "b",       "new", "$PLACE", "%PLACE%", "$DEEP",
                                        "$NOSUCH", "%EMPTY%", "$",   "%",      ""};
    static const char* const roots[] = {"", "", "", "d:\\", "d:", "\\", "/", "\\x"};
    std::string name = roots[random.number(std::size(roots) - 1)];
    for (std::size_t left = random.number(3) + 1; left > 0; --left) {
        // Parts that cannot be expanded end most walks: only now and then.
        name += parts[random.number(random.number(3) == 0 ? std::size(parts) - 1 : 5)];
        if (left > 1 || random.number(5) == 0) name += random.number(4) == 0 ? "\\\\" : "\\";
    }
    return name;
}

// One call with its arguments, for the library and for the model.
struct Call {
    enum Operation { copy, remove, change_mode, make_directory, is_makeable };

    Operation operation;
    std::string name;
    std::string target;
    bool flag;
    int mode;

    static Call random(RandomText& random) {
        static const int modes[] = {0700, 0711, 0755, 0750};
        const auto operation = static_cast<Operation>(random.number(4));
        const bool makes = operation == make_directory || operation == is_makeable;
        return {operation, makes ? random_directory(random) : random_name_or_wildcard(random), random_name(random),
                random.coin(), modes[random.number(3)]};
    }

    bool by_library() const {
        Buffer buffer(name);
        switch (operation) {
            case copy:
                return gfile_cp(name.c_str(), target.c_str(), flag);
            case remove:
                return gfile_rm(name.c_str(), flag);
            case change_mode:
                return gfile_chmod(name.c_str(), mode);
            case make_directory:
                return gfile_mkdir(buffer, flag, 0);
            default:
                return gfile_makebledir(buffer, flag);
        }
    }

    bool by_model() const {
        switch (operation) {
            case copy:
                return TreesModel::copy(name, target, flag);
            case remove:
                return TreesModel::remove(name, flag);
            case change_mode:
                return TreesModel::change_mode(name, mode);
            case make_directory:
                return TreesModel::make_directory(name, flag);
            default:
                return TreesModel::is_makeable(name, flag);
        }
    }

    std::string text() const {
        static const char* const names[] = {"copy ", "remove ", "change_mode ", "make_directory ", "is_makeable "};
        return names[operation] + name + (operation == copy ? " to " + target : "") + (flag ? ", true" : ", false");
    }
};

void grow(const fs::path& directory, RandomText random) {
    static const char* const names[] = {"a", "b", "ab", "ba.c", "x y", name_with_colon, "d"};
    std::vector<fs::path> directories{directory};
    for (std::size_t left = random.number(12) + 3; left > 0; --left) {
        const fs::path path =
            directories[random.number(directories.size() - 1)] / names[random.number(std::size(names) - 1)];
        if (fs::exists(path)) continue;
        if (random.coin()) {
            fs::create_directory(path);
            directories.push_back(path);
        } else {
            orvix::test::write_file(path, random.text("xyz", 20));
        }
    }
}

// A directory that is the root of the drive D as well.
class Site {
public:
    explicit Site(const RandomText& random) { grow(path(), random); }

    template <class Work>
    bool run(Work work) const {
        const ScopedVariable drive("ORVIX_DRIVE_D", path());
        fs::current_path(path());
        testing::internal::CaptureStderr();
        GuiErrno = GUI_ERR_NONE;
        const bool result = work();
        testing::internal::GetCapturedStderr();
        return result;
    }

    const fs::path& path() const { return site_.directory().path(); }

private:
    TreeSite site_;
};

}  // namespace

TEST(TreesModel, AgreesWithTheLibraryCallByCall) {
    const ScopedVariable place("PLACE", "b");
    const ScopedVariable deep("DEEP", "a\\deep");
    const ScopedVariable empty("EMPTY", "");
    const ScopedVariable unset("NOSUCH", nullptr);
    int successes = 0;
    for (unsigned seed = 0; seed < 400; ++seed) {
        RandomText random(seed);
        const Site library(random);
        const Site model(random);
        std::string history = "seed " + std::to_string(seed);
        for (int calls = 0; calls < 8; ++calls) {
            const Call call = Call::random(random);
            history += "\n" + call.text();
            SCOPED_TRACE(history);
            const bool expected = model.run([&] { return call.by_model(); });
            const GuiError expected_error = GuiErrno;
            ASSERT_EQ(library.run([&] { return call.by_library(); }), expected);
            ASSERT_EQ(GuiErrno, expected_error);
            ASSERT_EQ(fs::exists(library.path()), fs::exists(model.path()));
            if (!fs::exists(model.path())) break;  // the drive itself was removed
            ASSERT_EQ(contents_of(library.path()), contents_of(model.path()));
            successes += expected ? 1 : 0;
        }
    }
    EXPECT_GT(successes, 500) << "the calls are too wild to tell anything";
}
