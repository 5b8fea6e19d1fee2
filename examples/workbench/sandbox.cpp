#include "sandbox.h"

#include <orvix/core/path.h>
#include <orvix/gsl/file_trees.h>

#include <cstdint>
#include <cstdlib>
#include <random>
#include <stdexcept>

namespace workbench {

namespace fs = std::filesystem;

namespace {

void set_variable(const char* name, const std::string& value) {
#ifdef _WIN32
    _putenv_s(name, value.c_str());
#else
    setenv(name, value.c_str(), 1);
#endif
}

// Creation is exclusive, so a name that somebody guessed is passed over.
fs::path fresh_directory() {
    std::random_device random;
    for (int attempt = 0; attempt < 100; ++attempt) {
        const std::uint64_t number = (std::uint64_t{random()} << 32) | random();
        fs::path candidate = fs::temp_directory_path() / ("workbench_" + std::to_string(number));
        if (fs::create_directory(candidate)) {
            fs::permissions(candidate, fs::perms::owner_all);
            return fs::canonical(candidate);
        }
    }
    throw std::runtime_error("no temporary directory to be had");
}

// What was installed read-only has to become writable, or neither a save nor the removal of the copy would work.
void copy_writable(const fs::path& from, const fs::path& to) {
    const auto name = [](const fs::path& path) { return orvix::Path::from_fs_path(path).native(); };
    if (!gfile_cp(name(from).c_str(), name(to).c_str(), true)) throw std::runtime_error("cannot copy " + name(from));
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(to)) {
        fs::permissions(entry, fs::perms::owner_write, fs::perm_options::add);
    }
}

}  // namespace

TemporaryTree::TemporaryTree() : path_(fresh_directory()) {}

TemporaryTree::~TemporaryTree() {
    std::error_code ignored;  // a destructor has nobody to tell
    fs::remove_all(path_, ignored);
}

Sandbox::Sandbox(const fs::path& installation) {
    if (!fs::is_directory(installation / "root" / "config")) {
        throw NoInstallation("no installation in \"" + installation.string() + "\": it has no root/config");
    }
    copy_writable(installation, tree_.path());
    for (const char* part : {"root", "site", "home", "project"}) {
        fs::create_directory(tree_.path() / part);
        names_.add(directory(part), "<" + std::string(part) + ">");
    }
    set_variable("HXORVIX_DIR", directory("root"));
    set_variable("QDS_CUSTOM_DIR", directory("site"));
    set_variable("HOME", directory("home"));
    if (!way_back_.change_dir(directory("project"))) throw std::runtime_error("cannot enter " + directory("project"));
}

std::string Sandbox::directory(const char* part) const {
    return orvix::Path::from_fs_path(tree_.path() / part).native();
}

}  // namespace workbench
