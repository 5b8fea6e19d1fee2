// Last station: a project made, recognised, copied, searched and removed.
#include "text_file.h"
#include "tour.h"

#include <orvix/gsl/canonical_names.h>
#include <orvix/gsl/file_trees.h>
#include <orvix/gsl/files.h>
#include <orvix/gsl/projects.h>
#include <orvix/gsl/status.h>

#include <memory>

namespace workbench {

namespace {

constexpr const char* original = "radio";
constexpr const char* copy = "radio_backup";

std::string below(const std::string& directory, const char* name) { return directory + "\\" + name; }

std::string yes_or_no(bool condition) { return condition ? "yes" : "no"; }

bool make_directory(std::string name) { return gfile_mkdir(name.data(), true, 0); }

// Reports each step and what it made of the directory.
class Steps {
public:
    void took(const char* text, bool succeeded, const char* directory) {
        all_succeeded_ = all_succeeded_ && succeeded;
        report_.add({text, succeeded ? "done" : "failed", yes_or_no(gprj_is_project(directory, nullptr))});
    }
    bool all_succeeded() const { return all_succeeded_; }
    void print() const { report_.print(2); }

private:
    Table report_{{"step", "result", "a project?"}};
    bool all_succeeded_ = true;
};

std::string found_along(const std::string& directories, const char* name) {
    const std::unique_ptr<char, decltype(&gmem_ee_free)> found(HX_find_file(name, directories.c_str(), false),
                                                               gmem_ee_free);
    return found ? found.get() : "";
}

}  // namespace

bool show_project() {
    print_heading("8. A project: made, copied, searched, removed");
    gprj_init("workbench_project");
    Steps steps;
    steps.took("make radio\\data", make_directory(below(original, "data")), original);
    steps.took("make radio\\networks", make_directory(below(original, "networks")), original);
    steps.took("write radio\\workbench_project.cfg",
               gfile_append_line_to_file(below(original, "workbench_project.cfg").c_str(), "PROJECT_VERSION=1000"),
               original);
    steps.took("copy amplifier.net into radio\\networks",
               gfile_cp("amplifier.net", below(original, "networks").c_str(), false), original);
    steps.took("copy radio to radio_backup", gfile_cp(original, copy, true), copy);

    const std::string directories = below(copy, "data") + ";" + below(copy, "networks");
    const std::string found = found_along(directories, "amplifier.net");
    const bool is_whole = !found.empty() && lines_of(found) == lines_of("amplifier.net");

    steps.took("remove radio", gprj_delete(original), original);
    steps.took("remove radio_backup", gfile_rm(copy, true), copy);
    steps.print();
    print_indented("\nBefore, amplifier.net was looked for along " + directories + ":", 2);
    print_indented(is_whole ? found + ", the same as the original." : "not found as it was copied.", 4);
    gprj_init(nullptr);
    return steps.all_succeeded() && is_whole && !gfile_exists(original) && !gfile_exists(copy);
}

}  // namespace workbench
