// Patterns, subjects and templates: the program, the match by either matcher and the expanded text must be those of the
// models.
//
// Input: the pattern, the subject and the template, each up to a zero byte.

#include <support/regexp_match_model.h>
#include <support/regexp_pattern_model.h>
#include <support/regexp_program_model.h>
#include <support/regexp_record.h>
#include "text/regexp_compiler.h"
#include "text/regexp_lockstep.h"
#include "text/regexp_plan.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace model = orvix::test::regexp;
namespace regexp = orvix::gsl::text::regexp;

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

std::string take_text(std::string* input) {
    const std::string text = input->c_str();
    input->erase(0, text.size() + 1);
    return text;
}

std::optional<model::Places> search_in_lockstep(const regexp::Plan& plan, const char* subject) {
    regexp::Lockstep lockstep(plan.steps, subject);
    if (!lockstep.search(subject, plan.is_anchored)) return std::nullopt;
    const auto place = [&](const char* start, const char* end) {
        return std::pair{static_cast<std::size_t>(start - subject), static_cast<std::size_t>(end - subject)};
    };
    model::Places places;
    places.at(0) = place(lockstep.start(), lockstep.end());
    for (unsigned group = 1; group <= plan.steps.groups; ++group) {
        if (lockstep.place(group) != nullptr)
            places.at(group) = place(lockstep.place(group), lockstep.place(group + regexp::end_places));
    }
    return places;
}

std::string expanded(const std::string& source, const std::string& subject, const model::Places& places) {
    const auto group = [&](std::size_t number) {
        const auto& place = places.at(number);
        return place ? subject.substr(place->first, place->second - place->first) : "";
    };
    std::string text;
    for (std::size_t i = 0; i < source.size(); ++i) {
        const char next = i + 1 < source.size() ? source[i + 1] : '\0';
        if (source[i] == '&') {
            text += group(0);
        } else if (source[i] != '\\') {
            text += source[i];
        } else if (next >= '0' && next <= '9') {
            text += group(static_cast<std::size_t>(next - '0'));
            ++i;
        } else if (next == '&' || next == '\\') {
            text += next;
            ++i;
        } else {
            text += '\\';
        }
    }
    return text;
}

void check_search(const model::Record& record, const model::Choice& choice, const std::string& subject,
                  const std::string& source) {
    const auto found = record.search(subject);
    require(search_in_lockstep(*regexp::plan_of(record.get()), subject.c_str()) == found);
    try {
        require(model::MatchModel(choice, subject, 20000).search() == found);
    } catch (const model::TooLong&) {
        // Then the matchers only agree with each other.
    }
    if (!found) return;
    record.search(subject);
    const std::string expected = expanded(source, subject, *found);
    std::vector<char> dest(expected.size() + 1);
    gsl_regsub(record.get(), source.c_str(), dest.data());
    require(dest.data() == expected);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string input(data, data + size);
    const std::string pattern = take_text(&input);
    const std::string subject = take_text(&input);
    const std::string source = take_text(&input);

    const regexp::Compilation compilation = regexp::compile(pattern.c_str());
    try {
        const model::ProgramModel expected = model::compiled_model(pattern);
        require(compilation.error == nullptr);
        const model::Record record(compilation.record);
        require(record.program() == expected.program && record->regstart == expected.start_byte);
        require((record->reganch != 0) == expected.is_anchored && record.required() == expected.required);
        check_search(record, model::PatternReader(pattern).read(), subject, source);
    } catch (const model::PatternError& error) {
        require(compilation.error != nullptr && compilation.error == std::string(error.what()));
    }
    return 0;
}
