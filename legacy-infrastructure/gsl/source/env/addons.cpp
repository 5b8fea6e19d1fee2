#include "env/loading.h"

#include <orvix/core/path.h>
#include <orvix/core/variables.h>
#include <orvix/gsl/directory_scan.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace orvix::gsl::env {

namespace {

struct CloseScan {
    void operator()(_dirdesc* scan) const { closedir(scan); }
};

// The files in the order of the scan. Whatever exists is listed, whether it can be read or not.
std::vector<std::string> addon_files(const char* name) {
    std::vector<std::string> files;
    // The variable alone: neither the root directory of the program nor the default place has add-on files.
    Path directory(getenv_check_registry_stdstring("HXORVIX_DIR"));
    directory.append("config").append("addons_cfgs").append(name);
    if (!directory.is_directory()) return files;

    const std::string native = directory.native();
    const std::unique_ptr<_dirdesc, CloseScan> scan(opendir(native.c_str()));
    if (scan == nullptr) {
        std::fprintf(stderr, "gfile: %s is not a directory \n", native.c_str());
        return files;
    }
    while (const dirent* entry = readdir(scan.get())) {
        const std::string entry_name = entry->d_name;
        if (entry_name == "." || entry_name == "..") continue;
        Path file = directory;
        file.append(Path::exact(entry_name));
        if (file.exists()) files.push_back(file.native());
    }
    return files;
}

}  // namespace

void env_scan_addons(Load& load, const char* name, bool verbatim, bool included) {
    // A level keeps the name of the file that it read last, add-on files not excepted.
    for (const std::string& file : addon_files(name)) {
        if (file.size() >= sizeof EnvTable::path) continue;
        if (included && !load.may_include()) return;
        env_read_file(load, ENVLOC_SYSTEM, verbatim, included, file.c_str(), &load.env->system, true);
    }
}

}  // namespace orvix::gsl::env
