// Seventh station: one environment for the whole program, read and changed in short calls.
#include "tour.h"

#include <orvix/gsl/application_environment.h>
#include <orvix/gsl/string_utilities.h>

#include <memory>

namespace workbench {

namespace {

constexpr const char* environment = "workbench";

// A string of the library, or what is printed in its place.
std::string taken(char* text) {
    const std::unique_ptr<char, decltype(&astr_free_string)> owner(text, astr_free_string);
    return text != nullptr ? std::string("\"") + text + "\"" : "null";
}

// Answers for an environment that has no files: here the values of a measurement that runs.
class Measurement final : public ASTR_ApplicationEnvironmentOverride {
public:
    Measurement() : ASTR_ApplicationEnvironmentOverride("measurement") { register_override(this); }

    char* get_value(const char* name, AstrEnvlocE) override { return get_value_not_expanded(name); }
    char* get_value_not_expanded(const char* name) override {
        return astr_strings_equal(name, "BIAS_CURRENT") ? astr_new_string(current_.c_str()) : nullptr;
    }
    void set_value(const char* name, const char* value, AstrEnvlocE) override {
        if (astr_strings_equal(name, "BIAS_CURRENT")) current_ = value;
    }
    char* expand_value(const char* text) override { return astr_new_string(text); }

private:
    std::string current_ = "1.25 mA";
};

std::string autosave() { return taken(astr_environment_value("AUTOSAVE_MINUTES")); }

}  // namespace

bool show_short_calls(const ShortNames& names) {
    print_heading("7. Short calls: one environment selected");
    astr_set_environment(environment);
    Table reads({"call", "answer"});
    reads.add({"astr_get_environment()", astr_get_environment()});
    reads.add({"astr_environment_value(\"GRID\")", taken(astr_environment_value("GRID"))});
    reads.add(
        {"astr_environment_value(\"LIBRARY_PATH\")", names.shorten(taken(astr_environment_value("LIBRARY_PATH")))});
    reads.add({"astr_environment_value_not_expanded(\"LIBRARY_PATH\")",
               taken(astr_environment_value_not_expanded("LIBRARY_PATH"))});
    reads.add({"astr_environment_value(\"MISSING\")", taken(astr_environment_value("MISSING"))});
    reads.add({"astr_get_environment_value(\"workbench\", \"MISSING\", ...)",
               taken(astr_get_environment_value(environment, "MISSING", ASTR_ENVLOC_ANY))});
    reads.print(2);

    print_indented("\nAUTOSAVE_MINUTES is " + autosave() + ". It is stored as 10 without saving, and 20 with:", 2);
    const bool was_stored =
        astr_set_environment_value(environment, "AUTOSAVE_MINUTES", "10", ASTR_ENVLOC_USER, false) &&
        autosave() == "\"10\"" &&
        astr_set_environment_value(environment, "AUTOSAVE_MINUTES", "20", ASTR_ENVLOC_USER, true);
    astr_close_environment();
    print_indented(
        "closed, the name is still \"" + std::string(astr_get_environment()) + "\", and the value " + autosave() + ";",
        4);
    astr_set_environment(environment);
    print_indented("selected again, the file says " + autosave() + ".", 4);
    const bool was_saved = was_stored && autosave() == "\"20\"";

    const Measurement measurement;
    print_indented("\nAn object of the program answers for \"measurement\", which has no files:", 2);
    print_indented(
        "BIAS_CURRENT is " + taken(astr_get_environment_value("measurement", "BIAS_CURRENT", ASTR_ENVLOC_ANY)) + ".",
        4);
    astr_set_environment(nullptr);
    return was_saved;
}

}  // namespace workbench
