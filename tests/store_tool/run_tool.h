// Runs gslstore as a user does.
#pragma once

#include "support/program_run.h"
#include "support/temporary_directory.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvix::test {

struct ToolRun {
    int status;
    std::string output;
    std::string error;
};

// Stands in a directory of its own, in which the files of a test are.
class ToolPlace {
public:
    // @param input  what the program reads from its standard input
    ToolRun run(const std::vector<std::string>& arguments, std::string_view input = "") const {
        directory_.write("input", input);
        std::vector<std::string> words{GSLSTORE};
        words.insert(words.end(), arguments.begin(), arguments.end());
        const int status = run_program(words);
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
