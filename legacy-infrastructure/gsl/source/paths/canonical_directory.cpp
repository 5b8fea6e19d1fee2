#include "paths/block.h"
#include "paths/fixup.h"
#include "paths/long_name_walk.h"

#include <orvix/core/directory_saver.h>
#include <orvix/core/files.h>
#include <orvix/core/path.h>
#include <orvix/core/stored_names.h>
#include <orvix/gsl/canonical_names.h>
#include <orvix/gsl/string_database.h>

#include <map>
#include <new>
#include <optional>
#include <string>
#include <utility>

using namespace orvix::gsl::paths;

namespace {

// What callers of the text form see when memory runs out.
class OutOfMemory : public std::bad_alloc {
public:
    const char* what() const noexcept override { return "bad allocation"; }
};

// The name that the system knows a directory by; nothing if it cannot be entered. The current directory is another one
// meanwhile.
std::optional<std::string> name_when_entered(const orvix::Path& directory) {
    orvix::DirectorySaver saver;
    if (!saver.change_dir(directory)) return std::nullopt;
    return orvix::getcwd_utf8();
}

std::string canonical_text(const char* directory) {
    std::string text = long_name_walk(name_when_entered(directory).value_or(""));
    // What cannot be entered gets a name all the same.
    if (text.empty()) text = directory;
    lower(&text);
    return text;
}

orvix::Path canonical_path(const orvix::Path& directory) {
    const std::optional<std::string> entered = name_when_entered(directory);
    const orvix::Path known = entered ? orvix::Path(*entered) : directory;
    const std::string long_name = orvix::core::long_name(known);
    std::string text = long_name.empty() ? known.native() : orvix::Path(long_name).native();
    lower(&text);
    return text;
}

// Both caches only grow: an answer, once given, is the answer for the life of the process.

// Texts as they were given, letter case included, to canonical texts.
char* remembered_or_found(char* directory) {
    static HXstringDB* const cache = HXstringDB_new(nullptr, false);
    if (void** const value = cache->find(cache, directory)) return copy_of(static_cast<const char*>(*value)).release();

    Block value = copy_of(canonical_text(directory));
    Block result = copy_of(value.get());
    if (!cache->add(cache, directory, value.get())) return nullptr;
    static_cast<void>(value.release());  // now the cache's
    return result.release();
}

struct FileNameOrder {
    bool operator()(const orvix::Path& a, const orvix::Path& b) const {
        return orvix::Path::compare_filenames(a, b) < 0;
    }
};

}  // namespace

char* HX_get_canonical_directory_name(char* directory) {
    if (directory == nullptr) return nullptr;  // no key of the cache
    try {
        return remembered_or_found(directory);
    } catch (const std::bad_alloc&) {
        throw OutOfMemory();
    }
}

orvix::Path HX_get_canonical_directory_name_new(const orvix::Path& directory) {
    static std::map<orvix::Path, orvix::Path, FileNameOrder> cache;
    const auto known = cache.find(directory);
    if (known != cache.end()) return known->second;
    return cache.emplace(directory, canonical_path(directory)).first->second;
}
