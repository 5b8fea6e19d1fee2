// Expansion of references as plainly as it can be written: one character after the other, every text kept.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace orvix::test {

class ExpansionModel {
public:
    using Values = std::map<std::string, std::string>;

    Values variables;              // of the process, by name in upper case
    std::vector<Values> settings;  // of the environments in the order in which they are asked
    bool variables_only = false;
    struct Result {
        std::optional<std::string> text;  // none where the library gives -1
        bool gave_up = false;             // the text grows and grows; nothing is known
    };

    Result expand(std::string text) const {
        std::set<std::string> seen;
        bool any_output = false;
        for (;;) {
            const Pass pass = run(text);
            any_output = any_output || !pass.output.empty();
            if (!any_output) return {};
            if (!pass.output.empty()) text = pass.output;  // else the old text stands
            if (text.ends_with(':')) text.pop_back();
            if (!pass.saw_reference) return {text};
            if (text.size() > longest || seen.size() > most_passes) return {std::nullopt, true};
            if (!seen.insert(text).second) return {};
        }
    }

    static constexpr std::size_t longest = 20'000;
    static constexpr std::size_t most_passes = 500;

private:
    struct Pass {
        std::string output;
        bool saw_reference = false;
    };

    Pass run(const std::string& text) const {
        Pass pass;
        bool copy_next = true;
        for (std::size_t at = 0; at < text.size();) {
            const bool braces = text[at] == '{' && at + 1 < text.size() && is_sign(text[at + 1]);
            if (!braces && !is_sign(text[at])) {
                if (copy_next) pass.output += text[at];
                copy_next = true;
                ++at;
                continue;
            }
            pass.saw_reference = true;
            const char sign = text[braces ? at + 1 : at];
            at += braces ? 2 : 1;
            std::string name;
            while (at < text.size() && name.size() < 63 && (braces ? text[at] != '}' : is_name(text[at]))) {
                const char c = text[at++];
                name += c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
            }
            if (name.size() == 63) at = text.size();
            const std::string value = value_of(sign, name);
            pass.output += value;
            if (value.empty()) copy_next = false;
            if (braces) {
                if (at == text.size())
                    copy_next = false;
                else
                    ++at;
            }
        }
        return pass;
    }

    std::string value_of(char sign, const std::string& name) const {
        if (sign == '%') {
            for (const Values& environment : settings) {
                if (environment.contains(name)) return environment.at(name);
            }
            return "";
        }
        if (variables.contains(name)) return variables.at(name);
        return name == "HXORVIX_DIR" ? "\\hxorvix" : "";
    }

    bool is_sign(char c) const { return c == '$' || (c == '%' && !variables_only); }

    static bool is_name(char c) {
        return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
    }
};

}  // namespace orvix::test
