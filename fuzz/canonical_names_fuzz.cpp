// Two names given to everything that works on the text alone: the model must agree, and so must the twins.
//
// Input: the first name up to a zero byte, then the second.

#include "../tests/paths/canonical_models.h"

#include <orvix/core/files.h>
#include <orvix/gsl/canonical_names.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace model = orvix::test::model;

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

std::string current_directory() {
    static const std::string directory = orvix::getcwd_utf8();
    return directory;
}

void check_spelling(const std::string& name) {
    std::vector<char> block(name.c_str(), name.c_str() + name.size() + 1);
    HX_fixup_path(block.data());
    require(block.data() == model::fixed_up(name, true));
    require(HX_fixup_path_new(name) == model::fixed_up(name, false));
}

void check_completion(const std::string& name) {
    const std::string whole = model::completed(name, current_directory());
    std::vector<char> out(whole.size() + 1, '#');
    const char* const result = HX_canonical_path(name.c_str(), out.data());
    require((result == nullptr) == whole.empty());
    require(result == nullptr ? out[0] == '#' : result == model::fixed_up(whole, true));
    require(HX_canonical_path_new(name) == model::fixed_up(whole, false));
}

void check_directory(const std::string& name) {
    std::string value = HX_get_directory_from_file_new(name);
    const bool nothing_to_tell = value.empty();
    std::vector<char> out(current_directory().size() + name.size() + 3, '#');
    require(HX_get_directory_from_file(name.c_str(), out.data()) == out.data());
    while (value.ends_with('\\')) value.pop_back();  // as the text form does
    require(nothing_to_tell ? out[0] == '#' : out.data() == value);
}

void check_comparison(const std::string& a, const std::string& b) {
    require(gdir_compare_paths(a.c_str(), b.c_str()) == (model::compared(a) == model::compared(b)));
    for (const bool cut : {false, true}) {
        require(HX_paths_are_same(a.c_str(), b.c_str(), cut) == model::same(a, b, cut, current_directory()));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(data, data + size);
    const std::string a = input.c_str();
    const std::string b = a.size() < input.size() ? input.c_str() + a.size() + 1 : "";

    check_spelling(a);
    check_completion(a);
    check_directory(a);
    check_comparison(a, b);
    return 0;
}
