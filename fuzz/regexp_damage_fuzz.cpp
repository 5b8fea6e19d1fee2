// Programs with some bytes changed. A search in one may find something, fail or end the process as the library does; no
// other end will do. It runs in a process of its own.
//
// Input: the pattern and the subject, each up to a zero byte, and then pairs of an offset in the program and a byte.

#include <support/regexp_record.h>
#include "text/regexp_compiler.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace model = orvix::test::regexp;

namespace {

std::string take_text(std::string* input) {
    const std::string text = input->c_str();
    input->erase(0, text.size() + 1);
    return text;
}

void search_damaged(const model::Record& record, const std::string& subject, const std::string& damage) {
    const std::size_t size = record.program().size();
    for (std::size_t i = 0; i + 1 < damage.size(); i += 2) {
        const std::size_t offset = static_cast<unsigned char>(damage[i]) % size;
        record->program[offset] = static_cast<unsigned char>(damage[i + 1]);
    }
    gsl_regexec(record.get(), subject.c_str());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string input(data, data + size);
    const std::string pattern = take_text(&input);
    const std::string subject = take_text(&input);
    const auto compilation = orvix::gsl::text::regexp::compile(pattern.c_str());
    if (compilation.error != nullptr) return 0;
    const model::Record record(compilation.record);
    gsl_regexec(record.get(), "");

    const pid_t child = fork();
    if (child == 0) {
        std::signal(SIGABRT, SIG_DFL);  // not the fuzzer's business
        std::fclose(stderr);
        alarm(10);
        search_damaged(record, subject, input);
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    const bool is_fine = WIFEXITED(status) ? WEXITSTATUS(status) == 0 : WTERMSIG(status) == SIGABRT;
    if (!is_fine) std::abort();
    return 0;
}
