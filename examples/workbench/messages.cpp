// Fourth station: numbered messages.
#include "catalogue.h"
#include "tour.h"

#include <array>

namespace workbench {

namespace {

struct Example {
    const char* set;
    int line;
    std::array<std::string_view, 4> texts;  // for the places {1} to {4}
};

constexpr Example examples[] = {{"netlist", 7, {"QFN-24", "24", "25"}},
                                {"simulator", 7, {"2.5e-06", "U1:out"}},
                                {"layout", 24, {"CLK", "41.7", "38", "40"}}};

constexpr const char* languages[] = {"ENGLISH", "GERMAN", "JAPANESE"};

void show_languages() {
    Table report({"language", "files end in", "font"});
    for (const char* language : languages) {
        const Catalogue catalogue(language);
        report.add({language, std::string(".") + catalogue.extension(), catalogue.font()});
    }
    report.print(2);
    print_indented(std::string("The boot file of this user asks for ") + Catalogue(nullptr).language() + ".", 2);
}

void show_example(const Example& example) {
    print_line("\n  " + std::string(example.set) + ", line " + std::to_string(example.line));
    for (const char* language : languages) {
        const Catalogue catalogue(language);  // closing it would clear the status
        const auto message = catalogue.text(example.set, example.line);
        const auto& [first, second, third, fourth] = example.texts;
        print_indented(message ? filled_in(*message, {first, second, third, fourth}) : gerror_get_error_message(), 4);
    }
}

void show_failures() {
    print_line("\n  What is not there:");
    Table report({"asked for", "status", "text"});
    const Catalogue catalogue("ENGLISH");
    const auto ask = [&](const char* set, int line) {
        if (catalogue.text(set, line)) return;
        report.add({"set \"" + std::string(set) + "\", line " + std::to_string(line),
                    std::to_string(gerror_get_error()), gerror_get_error_message()});
    };
    ask("thermal", 1);  // in the message directory, but without a file
    ask("router", 1);   // not in the message directory
    ask("netlist", 0);
    ask("netlist", 1000);
    report.print(4);
}

}  // namespace

void show_messages() {
    print_heading("4. Messages: line N is the same message in every language");
    show_languages();
    for (const Example& example : examples) show_example(example);
    show_failures();
}

}  // namespace workbench
