// Lines under delimiters, singles and comments of all kinds; the models must agree.
//
// Input: delimiters, singles, the comment and the line, each up to a zero byte.

#include "../tests/text/line_parser_models.h"

#include <orvix/gsl/line_parser.h>

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

std::string take_text(std::string* input) {
    const std::string text = input->c_str();
    input->erase(0, text.size() + 1);
    return text;
}

void check_general(const std::string& line, const std::string& delims, const std::string& singles, char comment) {
    parserec record;
    const bool result = gparse_parline(line.c_str(), delims.c_str(), singles.c_str(), comment, &record);
    const auto expected = model::parsed(line, delims, singles, comment);
    require(result == expected.has_value());
    require(record.nclumps == (expected ? expected->size() : 0));
    for (std::size_t i = 0; i < record.nclumps; ++i) {
        const parserec_clump& clump = record.clumps[i];
        const model::ModelClump& model = (*expected)[i];
        require(clump.start == static_cast<std::int32_t>(model.start));
        require(clump.end == static_cast<std::int32_t>(model.end));
        require(clump.is_int == model.is_int && clump.int_value == model.int_value);
        require(clump.is_real == model.is_real && clump.real_value == model.real_value);

        std::vector<char> text(model.end - model.start + 2);
        require(gparse_getclump(&record, i, text.data()));
        require(text.data() == line.substr(model.start, model.end - model.start + 1));
    }
}

void check_fixed(const std::string& line, const std::string& delims, bool three_fields) {
    static model::FixedLines model;  // its table begins as that of the process does
    std::string bytes = line;
    std::string listed = delims;
    parserecStruct1 record;
    if (three_fields) {
        require(gparse_parline2(bytes.data(), listed.data(), &record) == model.parse2(line, delims));
    } else {
        require(gparse_parline3(bytes.data(), listed.data(), &record) == model.parse3(line, delims));
    }
    require(record.nclumps == model.closed);
    std::vector<char> text(line.size() + 2);
    for (std::size_t i = 0; i < 3; ++i) {
        require(gparse_getclump2(&record, i, text.data()) && text.data() == model.clump2(i));
    }
    for (std::size_t i = 0; i < 4; ++i) {
        require(gparse_getclump3(&record, i, text.data()) && text.data() == model.clump3(i));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string input(data, data + size);
    const std::string delims = take_text(&input);
    const std::string singles = take_text(&input);
    const std::string comment = take_text(&input);
    const std::string line = take_text(&input);

    check_general(line, delims, singles, comment.c_str()[0]);
    check_fixed(line, delims, singles.empty());
    return 0;
}
