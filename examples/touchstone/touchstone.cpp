// Prints the attenuation of a filter from a Touchstone file of magnitudes and angles.
#include <orvix/gsl/line_parser.h>
#include <orvix/gsl/number_text.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

int main(int argc, char** argv) {
    std::ifstream file(argc > 1 ? argv[1] : "");
    parserec record;  // room for 300 clumps, 9 KB
    for (std::string line; std::getline(file, line);) {
        gparse_parline(line.c_str(), " \t", "", '!', &record);
        double megahertz = 0;
        double through = 0;  // magnitude of S21, behind the frequency and the two numbers of S11
        if (!gparse_d_relclump(&record, 0, &megahertz) || !gparse_d_relclump(&record, 3, &through)) continue;

        char frequency[16];
        char decibels[16];
        gparse_dbltoas(megahertz, 9, 1, frequency);
        gparse_dbltoas(-20 * std::log10(through), 9, 2, decibels);
        std::printf("%9s MHz %9s dB\n", frequency, decibels);
    }
    return file.eof() ? EXIT_SUCCESS : EXIT_FAILURE;
}
