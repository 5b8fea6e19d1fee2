// Functions of the system replaced in all that the process has loaded of ours, for the length of a scope.
#pragma once

#include <vector>

#include <windows.h>

namespace orvix::test {

// The program and its libraries call functions of other libraries through tables, and here is the place to step in
// between. One scope at a time.
class ImportReplacement {
public:
    ImportReplacement() = default;
    ~ImportReplacement();
    ImportReplacement(const ImportReplacement&) = delete;
    ImportReplacement& operator=(const ImportReplacement&) = delete;

    // Has the program, our libraries and the C++ runtime call another function in place of the one of that name.
    void replace(const char* function, void* replacement);

private:
    struct Slot {
        void** place;
        void* original;
    };

    void replace_in(HMODULE module, const char* function, void* replacement);

    std::vector<Slot> slots_;
};

}  // namespace orvix::test
