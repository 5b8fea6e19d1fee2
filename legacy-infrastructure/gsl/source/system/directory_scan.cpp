#include <orvix/gsl/directory_scan.h>

#include <orvix/core/directory_scan.h>
#include <orvix/core/variables.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <string_view>

namespace orvix::gsl {

struct SearchRecord {
    core::DirectoryScan walk;
};

namespace {

// The handle and the two records it points at, in one block.
struct Scan {
    _dirdesc handle{0, nullptr, nullptr};
    SearchRecord search;
    dirent entry{0, ""};
};
static_assert(offsetof(Scan, handle) == 0);

// No supported system has longer names; one that did would be cut rather than let out of the record.
void store(std::string_view name, dirent* entry) {
    entry->d_namlen = std::min(name.size(), sizeof entry->d_name - 1);
    std::memcpy(entry->d_name, name.data(), entry->d_namlen);
    entry->d_name[entry->d_namlen] = '\0';
}

bool step(_dirdesc* scan) {
    std::string_view name;
    if (!scan->search->walk.next(&name)) return false;
    store(name, scan->current);
    return true;
}

std::string home_directory() {
    std::string home = getenv_check_registry_stdstring("HOME");
    return home.empty() ? getenv_check_registry_stdstring("HOMEPATH") : home;
}

}  // namespace

_dirdesc* opendir(const char* name) {
    if (name == nullptr || name[0] == '\0') return nullptr;
    std::string directory = name;
    if (directory.back() == '*') return nullptr;
    // The last character decides, not the first: every name that ends in a tilde means home.
    if (directory.back() == '~') directory = home_directory();
    if (directory.empty()) return nullptr;

    std::unique_ptr<Scan> scan(new (std::nothrow) Scan);
    if (scan == nullptr) return nullptr;
    scan->handle.current = &scan->entry;
    scan->handle.search = &scan->search;
    if (!scan->search.walk.open(directory) || !step(&scan->handle)) return nullptr;
    return &scan.release()->handle;
}

_dirdesc* opendir_utf8(const char* name) { return opendir(name); }

dirent* readdir(_dirdesc* scan) {
    if (scan == nullptr) return nullptr;
    // The first entry was read when the scan was opened.
    if (scan->count != 0 && !step(scan)) return nullptr;
    ++scan->count;
    return scan->current;
}

int closedir(_dirdesc* scan) {
    if (scan == nullptr) return 0;
    const bool closed = scan->search->walk.close();
    delete reinterpret_cast<Scan*>(scan);
    return closed ? 0 : -1;
}

}  // namespace orvix::gsl
