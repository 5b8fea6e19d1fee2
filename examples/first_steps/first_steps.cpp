// Counts its own runs in demo.cfg, and takes a path list apart whose parts refer to other settings.
#include <orvix/gsl/environment.h>
#include <orvix/gsl/error_handler.h>

#include <cstdio>
#include <cstdlib>
#include <string>

int main() {
    // Reads demo.cfg at four levels: installation, site, home directory, current directory. A missing one is empty.
    eeEnv* env = gui_env_open("demo", ENVLOC_ANY);

    char text[1024] = "0";
    gui_env_get(env, "RUNS", text, nullptr, sizeof text, ENVLOC_ANY);
    const std::string runs = std::to_string(std::atoi(text) + 1);
    std::printf("run %s\n", runs.c_str());

    gui_env_put(env, "RUNS", runs.c_str(), ENVLOC_CWD);
    gui_env_put(env, "ROOT", "D:\\parts", ENVLOC_CWD);
    gui_env_put(env, "PARTS", "%ROOT\\analog;%NOBODY;%ROOT\\digital", ENVLOC_CWD);

    if (gui_env_get_and_expand(env, "PARTS", text, nullptr, sizeof text, ENVLOC_ANY) != 0) {
        report_error("PARTS holds nothing");
    }
    for (const char* part = gui_env_get_tok(text); part != nullptr; part = gui_env_get_tok(nullptr)) {
        std::printf("part library %s\n", part);
    }
    return gui_env_close(env, true) ? EXIT_SUCCESS : EXIT_FAILURE;  // writes ./demo.cfg
}
