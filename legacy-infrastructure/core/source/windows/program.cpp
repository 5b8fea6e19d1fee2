#include <orvix/core/program.h>

#include <orvix/core/text.h>

#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>
#include <stdio.h>

namespace orvix::core {

// `main` gets what is left of the arguments in the process's code page.
std::vector<std::string> program_arguments(int argc, char** argv) {
    int count = 0;
    wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    if (wide == nullptr) return {argv, argv + argc};
    std::vector<std::string> arguments;
    for (int i = 0; i < count; ++i) {
        const std::wstring_view argument = wide[i];
        arguments.push_back(toStdString(std::u16string(argument.begin(), argument.end())));
    }
    LocalFree(wide);
    return arguments;
}

void pass_bytes_untranslated(std::FILE* stream) { _setmode(_fileno(stream), _O_BINARY); }

}  // namespace orvix::core
