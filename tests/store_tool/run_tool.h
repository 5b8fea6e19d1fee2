// Runs gslstore as a user does.
#pragma once

#include "support/temporary_directory.h"

#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace orvix::test {

struct ToolRun {
    int status;
    std::string output;
    std::string error;
};

// One word of a command line.
inline std::string quoted(const std::string& word) {
#ifdef _WIN32
    return "\"" + word + "\"";
#else
    std::string text = "'";
    for (const char c : word) {
        if (c == '\'') {
            text += "'\\''";
        } else {
            text.push_back(c);
        }
    }
    return text + "'";
#endif
}

// Stands in a directory of its own, in which the files of a test are.
class ToolPlace {
public:
    // @param input  what the program reads from its standard input
    ToolRun run(const std::vector<std::string>& arguments, std::string_view input = "") const {
        directory_.write("input", input);
        std::string command = quoted(GSLSTORE);
        for (const std::string& argument : arguments) command += " " + quoted(argument);
        command += " <input >output 2>error";
#ifdef _WIN32
        command = "\"" + command + "\"";  // whose quotes the command processor takes away
        const int status = std::system(command.c_str());
#else
        const int status = std::system(command.c_str()) >> 8;
#endif
        return {status, directory_.read("output"), directory_.read("error")};
    }
    // The status alone.
    int status(const std::vector<std::string>& arguments, std::string_view input = "") const {
        return run(arguments, input).status;
    }
    // What it prints if all goes well; else its complaints.
    std::string output(const std::vector<std::string>& arguments, std::string_view input = "") const {
        const ToolRun result = run(arguments, input);
        return result.status == 0 && result.error.empty() ? result.output : "failed: " + result.error;
    }

    std::string read(std::string_view file) const { return directory_.read(file); }
    void write(std::string_view file, std::string_view bytes) const { directory_.write(file, bytes); }

private:
    const TemporaryDirectory directory_{TemporaryDirectory::Enter::yes};
};

// Four pairs; on pages of 64 bytes they make the store that docs/store-format.md shows.
inline std::string four_nets() {
    return "GND\t0 V\n"
           "VCC\t3.3 V, from regulator U2\n"
           "RST\treset, active low,\\nfrom supervisor U7 and the debugger\n"
           "CLK\tclock, 25 MHz\n";
}

}  // namespace orvix::test
