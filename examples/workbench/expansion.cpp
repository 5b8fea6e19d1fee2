// Third station: references inside values, and path lists.
#include "expansion_pass.h"
#include "tour.h"

namespace workbench {

namespace {

constexpr int most_passes_shown = 20;  // a value that leads to itself would be shown for ever

// Rows for the passes as far as they lead. Gives the last text.
std::string add_passes(eeEnv* env, const std::string& value, const ShortNames& names, Table* report,
                       std::vector<Vanished>* vanished) {
    std::string text = value;
    for (int number = 1; number <= most_passes_shown; ++number) {
        const Pass pass = expansion_pass(env, text);
        text = pass.text;
        if (!pass.saw_reference) break;
        report->add({"pass " + std::to_string(number), names.shorten(text)});
        vanished->insert(vanished->end(), pass.vanished.begin(), pass.vanished.end());
    }
    return text;
}

// False if the library comes to another text than the passes.
bool show_value(eeEnv* env, const std::string& setting, const ShortNames& names) {
    const std::string value = value_of(env, setting).value_or("");
    Table report({setting, ""});
    report.add({"as stored", names.shorten(value)});
    std::vector<Vanished> vanished;
    const std::string shown = add_passes(env, value, names, &report, &vanished);
    const std::string result = expanded(env, value).value_or("");
    report.add({"library", names.shorten(result)});
    print("\n");
    report.print(2);
    for (const Vanished& gone : vanished) {
        const std::string also = gone.character.empty() ? "" : ", and the '" + gone.character + "' behind it too";
        print_indented(gone.reference + " is defined nowhere: it vanishes" + also + ".", 2);
    }
    if (result == shown) return true;
    print_indented("The passes above do not lead there.", 2);
    return false;
}

void show_elements(eeEnv* env, const std::string& setting, const ShortNames& names) {
    print_line("\n  Elements of " + setting + ":");
    std::string list = expanded(env, value_of(env, setting).value_or("")).value_or("");
    int number = 0;
    for (const char* element = gui_env_get_tok(list.data()); element != nullptr; element = gui_env_get_tok(nullptr)) {
        print_indented(std::to_string(++number) + "  " + names.shorten(element), 4);
    }
}

}  // namespace

bool show_expansion(eeEnv* env, const ShortNames& names) {
    print_heading("3. Expansion: passes until no reference is left");
    print_indented("Passes are retraced with gui_env_get; the last row is what gui_env_expand_str answers.", 2);
    const bool titles_agree = show_value(env, "WINDOW_TITLE", names);
    const bool paths_agree = show_value(env, "LIBRARY_PATH", names);
    show_elements(env, "LIBRARY_PATH", names);
    const bool add_ons_agree = show_value(env, "THERMAL_MODELS", names);
    print_indented("This one stands in an add-on file, whose references are replaced once, while it is read.", 2);
    return titles_agree && paths_agree && add_ons_agree;
}

}  // namespace workbench
