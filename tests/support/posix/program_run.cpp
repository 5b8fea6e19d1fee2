#include "support/program_run.h"

#include <cstdlib>

#include <sys/wait.h>

namespace orvix::test {

int run_program(const std::vector<std::string>& words) {
    std::string command;
    for (const std::string& word : words) {
        command += '\'';
        for (const char c : word) command += c == '\'' ? std::string("'\\''") : std::string(1, c);
        command += "' ";
    }
    const int status = std::system((command + "<input >output 2>error").c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace orvix::test
