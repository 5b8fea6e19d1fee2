// A directory of a test's own, gone at its end, and small helpers to fill it and look into it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace orvix::test {

// Makes a fresh directory, and enters it if asked. The destructor goes back and removes the directory with all in it.
class TemporaryDirectory {
public:
    enum class Enter { no, yes };

    explicit TemporaryDirectory(Enter enter = Enter::no);
    ~TemporaryDirectory();
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    const std::filesystem::path& path() const { return path_; }

    // The name of a file below, in the library's form: drive letter and backslashes. The empty name gives the
    // directory.
    std::string name(std::string_view relative = "") const;

    // Writes a file below, making the directories that it needs; gives its name in the library's form.
    std::string write(std::string_view relative, std::string_view bytes) const;

    std::string read(std::string_view relative) const;

private:
    std::filesystem::path path_;
    std::filesystem::path before_;
};

// Sets a process variable, or unsets it with a null value; the destructor restores what it was.
class ScopedVariable {
public:
    ScopedVariable(const char* name, const char* value);
    // Sets it to the name of a file or directory.
    ScopedVariable(const char* name, const std::filesystem::path& value);
    ~ScopedVariable();
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

private:
    std::string name_;
    std::optional<std::string> before_;
};

// A host's path from UTF-8, relative or of the host's own form.
std::filesystem::path host_path(std::string_view utf8);

// A name of the host in the library's form: drive letter and backslashes.
std::string library_name(const std::filesystem::path& host);

// Letters that the host allows in names, those among them that are hard on programs that join and split names.
extern const char* const letters_of_names;

// False for a name of these letters that the host takes for another one.
bool host_takes_name(const std::string& name);

// The same name in a form that the standard library takes however long it is, or however long all names below it are.
std::filesystem::path of_any_length(const std::filesystem::path& host, bool with_all_below = false);

// Gives a file a length without writing its bytes; false if the file system takes none of that size.
bool set_length(const std::filesystem::path& host, std::uintmax_t bytes);

std::string read_file(const std::filesystem::path& host);
void write_file(const std::filesystem::path& host, std::string_view bytes);

}  // namespace orvix::test
