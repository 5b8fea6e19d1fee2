// Any name under any flags: test, repair, search and translation agree with slow rules, and what was repaired passes
// the test unless the name is one of those that no repair mends.
//
// Input: two bytes of flags, one for the dot, one to put in for illegal ones, and the name.

#include "../tests/text/name_rules_model.h"

#include <orvix/gsl/name_rules.h>
#include <orvix/gsl/string_utilities.h>

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

std::string text_or_empty(const char* text) { return text == nullptr ? "" : text; }

void check_repair(const std::string& name, unsigned flags, bool dot, char replacement) {
    std::vector<char> in(name.c_str(), name.c_str() + name.size() + 1);
    std::vector<char> out(in.size());
    require(astr_qds_get_valid_name(in.data(), flags, dot, replacement, out.data()));
    const std::string expected = model::repaired(name, flags, dot, replacement);
    require(std::string(out.data()) == expected.c_str());
    const bool has_list = (flags & model::indexed_flag) != 0 && name.find('(') != model::nowhere;
    const bool barred_digit =
        (flags & (model::identifier_flag | model::indexed_flag)) != 0 && !name.empty() && model::is_decimal(name[0]);
    if (!has_list && !barred_digit && replacement == '_')
        require(astr_qds_valid_name(out.data(), flags, !dot) == nullptr);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 4) return 0;
    const unsigned flags = data[0] + 256U * data[1];
    const bool dot = (data[2] & 1) != 0;
    const std::string name(std::string(data + 4, data + size).c_str());

    require(text_or_empty(astr_qds_valid_name(name.c_str(), flags, dot)) == model::refusal(name, flags, dot));
    check_repair(name, flags, dot, static_cast<char>(data[3]));

    const char* const text = name.c_str();
    const std::size_t special = model::special_byte(name, dot);
    require(astr_qds_spl_name(text, dot) == (special == model::nowhere ? nullptr : text + special));

    char* const translated = astr_translate_qds_dataset_name(text);
    require(translated == model::dataset_name(name));
    require(astr_qds_spl_name(translated, true) == nullptr);
    astr_free_string(translated);
    return 0;
}
