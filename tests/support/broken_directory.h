// Systems that refuse to tell of a file or a directory.
#pragma once

#include <filesystem>
#include <string>

namespace orvix::test {

// For the length of its scope the system refuses to list a directory that is open and empty.
class BrokenDirectory {
public:
    explicit BrokenDirectory(const std::filesystem::path& directory);
    ~BrokenDirectory();
    BrokenDirectory(const BrokenDirectory&) = delete;
    BrokenDirectory& operator=(const BrokenDirectory&) = delete;

private:
    [[maybe_unused]] void* replacement_ = nullptr;  // where it takes one
};

// A directory that can be opened and not be listed, for the length of its scope.
class UnlistableDirectory {
public:
    UnlistableDirectory();
    ~UnlistableDirectory();
    UnlistableDirectory(const UnlistableDirectory&) = delete;
    UnlistableDirectory& operator=(const UnlistableDirectory&) = delete;

    // False where the system has no such directory.
    bool exists() const;

    // The name of all its entries, in the library's form.
    std::string wildcard() const;

private:
    int process_ = 0;
    [[maybe_unused]] void* replacement_ = nullptr;  // where it takes one
};

// A name that a scan of the directory refuses, for the length of its scope.
class UnscannableDirectory {
public:
    UnscannableDirectory();
    ~UnscannableDirectory();
    UnscannableDirectory(const UnscannableDirectory&) = delete;
    UnscannableDirectory& operator=(const UnscannableDirectory&) = delete;

    std::string text() const;

private:
    [[maybe_unused]] void* replacement_ = nullptr;  // where it takes one
};

// The current directory is as good as gone for the length of its scope: nothing can be made in it any more.
class LostDirectory {
public:
    explicit LostDirectory(const std::filesystem::path& current);
    ~LostDirectory();
    LostDirectory(const LostDirectory&) = delete;
    LostDirectory& operator=(const LostDirectory&) = delete;

private:
    [[maybe_unused]] void* replacement_ = nullptr;  // where it takes one
};

// For the length of its scope the system refuses to tell what a name stands for, without saying that it is missing.
class UnreadableStatus {
public:
    UnreadableStatus();
    ~UnreadableStatus();
    UnreadableStatus(const UnreadableStatus&) = delete;
    UnreadableStatus& operator=(const UnreadableStatus&) = delete;

    std::string name() const;

    // The errno of the refusal.
    int error() const;

private:
    [[maybe_unused]] void* replacement_ = nullptr;  // where it takes one
};

}  // namespace orvix::test
