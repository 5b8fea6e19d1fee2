// Writes the accuracy tables of docs/mathematics.md to standard output. Arguments are random but always the same ones.

#include "tables.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace orvix::accuracy {

namespace {

// Two digits: "0.5", "12", "3e5".
std::string text(double units, int bits) {
    if (!(units < std::ldexp(1.0, bits - 1))) return "lost";
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, units < 9.95 ? "%.1f" : units < 99.5 ? "%.0f" : "%.0e", units);
    std::string shown = buffer;
    const std::size_t exponent = shown.find("e+");
    if (exponent != std::string::npos) shown.erase(exponent + 1, shown[exponent + 2] == '0' ? 2 : 1);
    return shown;
}

}  // namespace

std::string cell(std::vector<double> errors, int bits) {
    if (errors.empty()) return "";
    std::sort(errors.begin(), errors.end());
    return text(errors[errors.size() / 2], bits) + " / " + text(errors.back(), bits);
}

void print_row(const std::vector<std::string>& cells) {
    for (const std::string& each : cells) std::printf("| %s ", each.c_str());
    std::puts("|");
}

void print_head(const std::vector<std::string>& cells) {
    print_row(cells);
    print_row(std::vector<std::string>(cells.size(), "---"));
}

}  // namespace orvix::accuracy

int main() {
    orvix::accuracy::print_real_tables();
    orvix::accuracy::print_complex_tables();
}
