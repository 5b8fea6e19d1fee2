// Lives of records under both forms of the memory-backed parser: they read every line alike, as the model does, and as
// far as it goes as the parser with a table of its own.
//
// Input: delimiters, singles, the comment, each up to a zero byte; then steps, each a byte and a line up to a zero
// byte. The byte's low bits choose the record, and the others what is done with it.

#include "../tests/text/line_parser_models.h"

#include <orvix/gsl/memory_parser.h>
#include <orvix/gsl/status.h>

#include <algorithm>
#include <array>
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

bool alike(const parserec_clump& a, const parserec_clump& b) {
    return a.start == b.start && a.end == b.end && a.is_int == b.is_int && a.int_value == b.int_value &&
           a.is_real == b.is_real && a.real_value == b.real_value;
}

struct Grammar {
    std::string delims;
    std::string singles;
    char comment;
};

void check_clumps(const parserecMem& record, const std::string& line, const Grammar& grammar) {
    static parserec table;
    require(gparse_parline(line.c_str(), grammar.delims.c_str(), grammar.singles.c_str(), grammar.comment, &table));
    require(table.nclumps == record.nclumps || (table.nclumps >= 300 && record.nclumps >= table.nclumps));
    for (std::size_t i = 0; i < table.nclumps; ++i) require(alike(record.clumps[i], table.clumps[i]));

    const std::vector<model::Kind> map = model::map_of(line, grammar.delims, grammar.singles, grammar.comment);
    std::size_t expected = 0;
    for (std::size_t i = 0; i < map.size(); ++i) {
        const bool goes_on = i > 0 && map[i] == model::Kind::text && map[i - 1] == model::Kind::text;
        if (map[i] != model::Kind::separator && !goes_on) ++expected;
    }
    require(record.nclumps == expected);
    require((record.clumps == nullptr) == (expected == 0));
}

// A record in each form.
struct Pair {
    parserecMem plain;
    parserecMem efficient;

    void check() const {
        require(plain.nclumps == efficient.nclumps && plain.line == efficient.line);
        for (std::size_t i = 0; i < plain.nclumps; ++i) require(alike(plain.clumps[i], efficient.clumps[i]));
    }

    void parse(const std::string& line, const Grammar& grammar) {
        const char* const delims = grammar.delims.c_str();
        const char* const singles = grammar.singles.c_str();
        const bool expected = !grammar.delims.empty();
        require(gparse_parline_mem(line.c_str(), delims, singles, grammar.comment, &plain) == expected);
        require(gparse_efficient_parline_mem(line.c_str(), delims, singles, grammar.comment, &efficient) == expected);
        check();
        if (expected && !line.empty()) check_clumps(plain, line, grammar);
    }

    void free() {
        if (plain.slot != 0) require(gparse_parline_free_mem(&plain));
        if (efficient.slot != 0) require(gparse_efficient_parline_free_mem(&efficient));
        check();
    }

    // What a caller does before and after all are dropped.
    void make_ready() {
        gmem_ee_free(reinterpret_cast<char*>(plain.clumps));
        gmem_ee_free(reinterpret_cast<char*>(efficient.clumps));
        gparse_init_parserecMem(&plain);
        gparse_init_parserecMem(&efficient);
    }
};

void drop_all(std::array<Pair, 8>* records) {
    require(gparse_parline_free_all_mem() && gparse_efficient_parline_free_all_mem());
    for (Pair& record : *records) record.make_ready();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string input(data, data + size);
    Grammar grammar;
    grammar.delims = take_text(&input);
    grammar.singles = take_text(&input);
    grammar.comment = take_text(&input).c_str()[0];

    std::array<Pair, 8> records{};
    std::vector<std::string> lines;  // which the records look at
    lines.reserve(input.size());
    while (!input.empty()) {
        const auto step = static_cast<unsigned char>(input[0]);
        input.erase(0, 1);
        Pair& record = records[step % records.size()];
        switch (step / records.size() % 8) {
            case 0:
                record.free();
                break;
            case 1:
                drop_all(&records);
                break;
            default:
                lines.push_back(take_text(&input));
                record.parse(lines.back(), grammar);
        }
    }
    for (Pair& record : records) record.free();
    drop_all(&records);
    return 0;
}
