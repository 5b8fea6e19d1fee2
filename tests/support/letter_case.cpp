#include "support/letter_case.h"

#include <algorithm>

namespace fs = std::filesystem;

namespace orvix::test {

bool is_entry(const fs::path& name) {
    const fs::path directory = name.has_parent_path() ? name.parent_path() : ".";
    return std::any_of(fs::directory_iterator(directory), fs::directory_iterator(),
                       [&](const fs::directory_entry& entry) { return entry.path().filename() == name.filename(); });
}

}  // namespace orvix::test
