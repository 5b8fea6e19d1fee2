// Tells which clumps of a line are numbers.
#pragma once

#include "text/line_scanner.h"
#include "text/number_reading.h"

#include <orvix/gsl/line_parser.h>

#include <cstdint>
#include <string_view>

namespace orvix::gsl::text {

// Numbers are read while the scanner finds their ends, as one pass over the bytes, unless one of the bytes that they
// are made of is a delimiter.
class ClumpClassifier {
public:
    ClumpClassifier(const char* line, const ByteClasses& classes)
        : line_(line), reads_ahead_(classes.numbers_are_text()) {}

    // A run of text begins here. Gives the place that was read to.
    const char* read_ahead(const char* at) {
        if (!reads_ahead_) return at;
        front_ = read_decimal_front(at, nullptr);
        return front_.end;
    }

    // Fills the entry of the run that was read ahead last.
    void put_run(Clump run, parserec_clump* entry) const {
        double value = 0;
        const bool is_number = reads_ahead_ ? read_number(text(run), front_, &value) : read_number(text(run), &value);
        put(run, is_number, value, entry);
    }

    void put_single(Clump single, parserec_clump* entry) const {
        double value = 0;
        const bool is_number = read_number(text(single), &value);
        put(single, is_number, value, entry);
    }

private:
    std::string_view text(Clump clump) const {
        return {line_ + clump.start, static_cast<std::size_t>(clump.end - clump.start) + 1};
    }

    static void put(Clump clump, bool is_number, double value, parserec_clump* entry) {
        entry->start = clump.start;
        entry->end = clump.end;
        entry->is_real = is_number;
        entry->is_int = is_number && is_whole_number(value);
        entry->int_value = entry->is_int ? static_cast<std::int32_t>(value) : 0;
        entry->real_value = entry->is_int ? entry->int_value : is_number ? value : 0;  // never the zero below zero
    }

    const char* line_;
    bool reads_ahead_;
    DecimalFront front_{};
};

}  // namespace orvix::gsl::text
