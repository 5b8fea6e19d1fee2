#include "system/project_directories.h"

#include "system/directory_text.h"

#include <orvix/gsl/line_parser.h>

#include <string_view>

namespace orvix::gsl::system {

namespace {

constexpr std::size_t most_directories = 10;
constexpr std::size_t longest_name = 255;

struct UsualDirectory {
    const char* name;
    bool required;
};

constexpr UsualDirectory usual_directories[] = {
    {"data", true},
    {"networks", true},
    {"synthesis", false},
    {"verification", false},
};

}  // namespace

bool gprj_list_directories(const std::string& directory, const char* list, Directories usual,
                           std::vector<std::string>* names) {
    names->clear();
    if (list == nullptr || list[0] == '\0') {
        for (const UsualDirectory& entry : usual_directories) {
            if (entry.required || usual == Directories::all) names->push_back(directory + '\\' + entry.name);
        }
    } else {
        parserec parsed;
        if (!gparse_parline(list, ";", "", '!', &parsed)) return false;
        if (parsed.nclumps > most_directories) return false;
        for (std::size_t i = 0; i < parsed.nclumps; ++i) {
            const parserec_clump& clump = parsed.clumps[i];
            const std::string name(list + clump.start, list + clump.end + 1);
            names->push_back(directory + '\\' + without_separator(name));
        }
    }
    for (const std::string& name : *names) {
        if (name.size() > longest_name) return false;
    }
    return true;
}

}  // namespace orvix::gsl::system
