// Two texts and a width, given to every operation with rules of its own; the models must agree.
//
// Input: a byte for the width, the first text up to a zero byte, the second text up to the next or the end.

#include "../tests/text/models.h"

#include <orvix/gsl/string_utilities.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace model = orvix::test::model;

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

// A writable copy in exactly the room that it takes, or in as many bytes as asked for.
std::vector<char> block(const std::string& text, std::size_t bytes = 0) {
    std::vector<char> result(text.c_str(), text.c_str() + text.size() + 1);
    if (bytes > result.size()) result.resize(bytes);
    return result;
}

void check_columns(const std::string& a, const std::string& b, std::size_t width) {
    std::vector<char> source = block(a);
    std::vector<char> second = block(b);
    std::vector<char> field(width + 1);
    gparse_cpystrn(source.data(), width, field.data());
    require(field.data() == model::column(a, width));
    gparse_szstrlj(source.data(), width, field.data());
    require(field.data() == model::left_justified(a, width));
    gparse_szstrrj(source.data(), width, field.data());
    require(field.data() == model::right_justified(a, width));
    gparse_addstrn(source.data(), second.data(), width, field.data());
    require(field.data() == model::column(a + b, width));
    require(source == block(a) && second == block(b));

    std::vector<char> justified = block(a, width + 1);
    gparse_szstrlj(justified.data(), width, justified.data());
    require(justified.data() == model::left_justified(a, width));
    std::vector<char> stripped = block(a);
    gparse_strpbl(stripped.data(), stripped.data());
    require(stripped.data() == model::stripped(a));
    std::vector<char> joined = block(a, a.size() + b.size() + 1);
    gparse_addstr(joined.data(), b.c_str(), joined.data());
    require(joined.data() == a + b);
}

void check_comparisons(const std::string& a, const std::string& b, std::size_t width) {
    const int difference = model::caseless_difference(a, b);
    require(orvix::gsl::strcasecmp(a.c_str(), b.c_str()) == difference);
    require(orvix::gsl::strncasecmp(a.c_str(), b.c_str(), static_cast<int>(width)) ==
            model::caseless_difference(a.substr(0, width), b.substr(0, width)));
    require(astr_strings_equal(a.c_str(), b.c_str()) == (difference == 0));
    require(gparse_simstr(a.c_str(), b.c_str()) ==
            (model::caseless_difference(model::stripped(a), model::stripped(b)) == 0));
    require(gparse_alpha_numeric_strcasecmp(a.c_str(), b.c_str()) == model::natural_order(a, b));
}

std::size_t position(const std::string& hay, const char* found) {
    return found != nullptr ? static_cast<std::size_t>(found - hay.c_str()) : std::string::npos;
}

void check_searches(const std::string& hay, const std::string& needle) {
    require(astr_str_matches_at_tail(hay.c_str(), needle.c_str()) == hay.ends_with(needle));
    if (hay.empty() || needle.empty()) return;
    require(position(hay, strrstr(hay.c_str(), needle.c_str())) == hay.rfind(needle));
    require(position(hay, gsl_strcasestr(hay.c_str(), needle.c_str())) == model::find_caseless(hay, needle));
}

void check_lines(const std::string& text, std::size_t most) {
    std::vector<char> buffer = block(text);
    std::vector<char> line(most + 1);
    std::string left = text;
    char* rest = buffer.data();
    while (rest != nullptr) {
        const model::Line expected = model::first_line(left, most);
        char* next = astr_extract_line_from_multilines(rest, line.data(), static_cast<int>(most));
        require(line.data() == expected.line);
        require(next == (expected.rest == std::string::npos ? nullptr : rest + expected.rest));
        if (next != nullptr) left.erase(0, expected.rest);
        rest = next;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::size_t width = data[0];
    const std::string texts(data + 1, data + size);
    const std::string a = texts.c_str();
    const std::string b = a.size() < texts.size() ? texts.c_str() + a.size() + 1 : "";

    check_columns(a, b, width);
    check_comparisons(a, b, width);
    check_searches(a, b);
    check_searches(a + a + a, b);  // texts that repeat themselves, up to where the fixed buffers end
    check_lines(a, width);
    return 0;
}
