// A name and a search path given to everything that asks the system: the model must agree, what is forced must be made
// of the directory's own name, and the current directory must stay.
//
// Input: the name up to a zero byte, then the search path. A byte below 32 stands for a piece of a name that may lead
// somewhere, any other for itself.

#include "../tests/paths/directory_model.h"

#include "empty_place.h"

#include <orvix/core/path.h>
#include <orvix/gsl/canonical_names.h>
#include <orvix/gsl/environment.h>
#include <orvix/gsl/status.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace model = orvix::test::model;
using orvix::fuzz::expect;

namespace {

// The place stays as it is, so each name has one answer, however many inputs came before and filled the caches.
const model::Directories& directories() {
    static const orvix::fuzz::EmptyPlace place;
    static const model::Directories all(place.path());
    return all;
}

std::string text_of(std::string_view bytes) {
    std::string text;
    for (const char c : bytes) {
        const auto number = static_cast<unsigned char>(c);
        text += number < 32 ? directories().piece((number - 1) % model::Directories::piece_count) : std::string(1, c);
    }
    return text;
}

std::optional<std::string> taken(char* text) {
    const std::unique_ptr<char, void (*)(char*)> owned(text, gmem_ee_free);
    return text != nullptr ? std::optional<std::string>(text) : std::nullopt;
}

void check_directory(const std::string& name) {
    std::string argument = name;
    expect(taken(HX_get_canonical_directory_name(argument.data())) == directories().canonical_directory(name));

    const std::string known = HX_get_canonical_directory_name_new(name);
    if (const auto entered = directories().entered(name)) {
        expect(known == model::lowered(*entered));
    } else {
        // Another spelling of the same name may have been remembered.
        expect(orvix::Path::compare_filenames(known, name) == 0);
        expect(known == model::lowered(known) && known.find('/') == std::string::npos);
    }
}

void check_forced(const std::string& name) {
    const std::optional<std::string> expected = directories().canonical(name);
    const std::string whole = model::completed(name, directories().name());
    const std::size_t front = whole.find_last_of("/\\") + 1;
    const std::string directory = front != 0 ? whole.substr(0, front - 1) : "";
    const std::string last_part = whole.substr(front);

    std::vector<char> out(directories().canonical_directory(directory).size() + last_part.size() + 2, '#');
    const char* const result = HX_canonical_path_force(name.c_str(), out.data());
    expect((result != nullptr) == expected.has_value());
    expect(result != nullptr ? result == *expected : out[0] == '#');

    const std::string known = HX_get_canonical_directory_name_new(directory);
    expect(HX_canonical_path_force_new(name) == (whole.empty() ? "" : model::fixed_up(known + '/' + last_part, false)));
}

// The tokeniser has tests of its own.
std::optional<std::string> found_by_model(const std::string& name, std::string list, bool accept_directories) {
    if (model::is_absolute(name)) {
        const std::string spelled = model::fixed_up(name, true);
        return directories().is_found(spelled, accept_directories) ? std::optional(spelled) : std::nullopt;
    }
    for (const char* element = gui_env_get_tok(list.data()); element != nullptr; element = gui_env_get_tok(nullptr)) {
        const std::string candidate = model::fixed_up(element, true) + '\\' + name;
        if (directories().is_found(candidate, accept_directories)) return candidate;
    }
    return std::nullopt;
}

void check_search(const std::string& name, const std::string& list) {
    for (const bool accept_directories : {false, true}) {
        const auto expected = name.empty() ? std::nullopt : found_by_model(name, list, accept_directories);
        expect(taken(HX_find_file(name.c_str(), list.c_str(), accept_directories)) == expected);
        expect(HX_find_file_new(name, list, accept_directories) == expected.value_or(""));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::string_view name_bytes = input.substr(0, input.find('\0'));
    const std::string_view rest = input.substr(std::min(size, name_bytes.size() + 1));
    const std::string name = text_of(name_bytes);
    const std::string list = text_of(rest.substr(0, rest.find('\0')));

    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(directories().host());
    setenv("ORVIX_DRIVE_D", directories().drive().c_str(), 1);
    check_directory(name);
    check_forced(name);
    check_search(name, list);
    expect(std::filesystem::current_path() == directories().host());
    std::filesystem::current_path(before);
    return 0;
}
