// Sixth station: a save rewrites the lines that changed and leaves the others where they are.
#include "side_by_side.h"
#include "text_file.h"
#include "tour.h"

namespace workbench {

bool show_saving(const ShortNames& names) {
    print_heading("6. Saving: the user's file, before and after");
    Environment env = open_environment("workbench");
    const std::string file = env->user.path;
    const Lines before = lines_of(file).value_or(Lines());

    print_indented(
        "AUTOSAVE_MINUTES is set to 2, PAN_BUTTON is removed, LAST_BOARD is new; then the environment is closed.", 2);
    const bool was_set = gui_env_put(env.get(), "autosave_minutes", "2", ENVLOC_USER) &&
                         gui_env_put(env.get(), "last_board", "amplifier", ENVLOC_USER);
    if (!gui_env_rm(env.get(), "pan_button", ENVLOC_USER)) print_indented("PAN_BUTTON was not there.", 2);
    const bool was_saved = gui_env_close(env.release(), true) && was_set;
    print_indented(names.shorten(file) + (was_saved ? "" : "  could not be saved") + "\n", 2);
    print_side_by_side(before, lines_of(file).value_or(Lines()));

    const Environment again = open_environment("workbench");
    print_indented("\nComments and order stay. Names come back in upper case, without blanks around the sign.", 2);
    print_indented(
        "Opened again, AUTOSAVE_MINUTES is " + value_of(again.get(), "AUTOSAVE_MINUTES").value_or("gone") + ".", 2);
    return was_saved;
}

}  // namespace workbench
