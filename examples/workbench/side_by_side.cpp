#include "side_by_side.h"

#include "report.h"

#include <algorithm>
#include <cctype>

namespace workbench {

namespace {

// What a line is known by: a setting by its name in upper case, any other line by its text.
std::string identity(const std::string& line) {
    const std::size_t sign = line.find('=');
    if (line.starts_with('#') || sign == std::string::npos) return line;
    std::string name = line.substr(0, sign);
    name.erase(name.find_last_not_of(" \t") + 1);
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return name + "=";
}

Lines identities(const Lines& lines) {
    Lines result(lines.size());
    std::transform(lines.begin(), lines.end(), result.begin(), identity);
    return result;
}

// Lengths of the longest common subsequences: cell (i, j) is that of `a` from i on and `b` from j on.
std::vector<std::vector<std::size_t>> common_lengths(const Lines& a, const Lines& b) {
    std::vector<std::vector<std::size_t>> cell(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = a.size(); i-- > 0;) {
        for (std::size_t j = b.size(); j-- > 0;) {
            cell[i][j] = a[i] == b[j] ? cell[i + 1][j + 1] + 1 : std::max(cell[i + 1][j], cell[i][j + 1]);
        }
    }
    return cell;
}

}  // namespace

void print_side_by_side(const Lines& before, const Lines& after) {
    const Lines a = identities(before);
    const Lines b = identities(after);
    const auto common = common_lengths(a, b);
    Table report({"before", " ", "after"});
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.size() || j < b.size()) {
        if (i < a.size() && j < b.size() && a[i] == b[j]) {
            report.add({before[i], before[i] == after[j] ? " " : "|", after[j]});
            ++i, ++j;
        } else if (j == b.size() || (i < a.size() && common[i + 1][j] >= common[i][j + 1])) {
            report.add({before[i++], "<", ""});
        } else {
            report.add({"", ">", after[j++]});
        }
    }
    report.print(2);
}

}  // namespace workbench
