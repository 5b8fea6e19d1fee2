// The host below Wine, for what Wine's own calls do not do.
#pragma once

#include <filesystem>
#include <initializer_list>
#include <string>

namespace orvix::test {

bool is_wine();

// Runs a program of the host's /bin and waits for it. Names are given as the host knows them.
void run_on_host(const std::wstring& program, std::initializer_list<std::wstring> arguments);

// True once a program of the host has made something that Wine does not show, or shows as what it leads to.
bool holds_what_only_the_host_sees();

// The host's name of a file whose directory exists; relative names stay as they are.
std::wstring host_name(const std::filesystem::path& path);

// The host's directory of the prefix, without a slash at its end.
std::wstring host_prefix();

}  // namespace orvix::test
