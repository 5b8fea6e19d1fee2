#include "support/program_run.h"

#include <filesystem>

#include <process.h>

namespace orvix::test {

namespace {

// Backslashes before a quote are doubled, and a quote gets one of its own.
std::string quoted(const std::string& word) {
    std::string text = "\"";
    std::size_t backslashes = 0;
    for (const char c : word) {
        if (c == '"') text.append(backslashes + 1, '\\');
        backslashes = c == '\\' ? backslashes + 1 : 0;
        text += c;
    }
    return text.append(backslashes, '\\') + "\"";
}

}  // namespace

int run_program(const std::vector<std::string>& words) {
    std::string command;
    for (const std::string& word : words) command += quoted(word) + " ";
    command = "\"" + command + "<input >output 2>error\"";  // the command processor takes the outer quotes away
    return _wsystem(std::filesystem::path(std::u8string(command.begin(), command.end())).c_str());
}

}  // namespace orvix::test
