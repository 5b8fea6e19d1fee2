// The stations of the tour. Each prints one section of the report.
#pragma once

#include "sandbox.h"
#include "settings.h"

namespace workbench {

// Which files each environment was read from, and how many settings came of it.
void show_files(const ShortNames& names);

// What a few settings are at each level, and what is in force.
void show_levels(eeEnv* env);

// Two values, pass by pass, and a path list taken apart. False if the passes shown do not lead to the library's text.
bool show_expansion(eeEnv* env, const ShortNames& names);

// Messages in three languages, and what the library says to those who ask for what is not there.
void show_messages();

// An error on its way from the code that met it to the user.
void show_error();

// Personal settings changed and saved, the old file beside the new one. False if the library could not save them.
bool show_saving(const ShortNames& names);

// One environment selected, read and changed in short calls, and one that an object answers for. False if a change did
// not reach the file.
bool show_short_calls(const ShortNames& names);

// A project directory made, recognised, copied, searched and removed. False if a step failed.
bool show_project();

}  // namespace workbench
