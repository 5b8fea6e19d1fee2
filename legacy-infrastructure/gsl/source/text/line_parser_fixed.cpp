#include "text/bytes.h"
#include "text/clump_access.h"
#include "text/line_scanner.h"

#include <orvix/gsl/line_parser.h>
#include <orvix/gsl/string_utilities.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>

using namespace orvix::gsl::text;

namespace {

// Where the clumps of the last line stand. A parse writes what it reaches, and never clears the rest.
constinit Clump fixed_clump_slots[4] = {};

// Closed clumps go to the first slots, as many as there are for them, and are counted. An open one is kept aside.
class SlotSink {
public:
    explicit SlotSink(std::size_t slots_for_closed) : slots_for_closed_(slots_for_closed) {}

    static bool full() { return false; }
    static const char* read_ahead(const char* at) { return at; }
    void add(Clump run, bool closed) {
        if (!closed) {
            open_ = run;
            return;
        }
        if (count_ < slots_for_closed_) fixed_clump_slots[count_] = run;
        ++count_;
    }
    void add_single(Clump) {}

    std::size_t count() const { return count_; }

    // The end of an open clump of one byte is told one too far. gparse_getclump2 takes one off the end of every last
    // clump, which is the line feed of most, and so gives that byte whole.
    std::optional<Clump> open() const {
        std::optional<Clump> clump = open_;
        if (clump && clump->start == clump->end) ++clump->end;
        return clump;
    }

private:
    std::size_t slots_for_closed_;
    std::size_t count_ = 0;
    std::optional<Clump> open_;
};

// Nothing if there is nothing to parse.
std::optional<SlotSink> parse(char* line, const char* delims, std::size_t slots_for_closed, parserecStruct1* record) {
    record->line = line;
    record->nclumps = 0;
    if (*delims == '\0' || *line == '\0') return std::nullopt;
    SlotSink sink(slots_for_closed);
    scan_line(line, ByteClasses(delims, "", '\0'), sink);
    record->nclumps = sink.count();
    return sink;
}

}  // namespace

bool gparse_parline2(char* line, char* delims, parserecStruct1* rec) {
    const std::optional<SlotSink> clumps = parse(line, delims, 2, rec);
    if (!clumps) return false;
    if (clumps->open()) fixed_clump_slots[2] = *clumps->open();
    // Only a clump that a longer line left behind can end there.
    return static_cast<std::size_t>(fixed_clump_slots[0].end) != std::strlen(line);
}

bool gparse_parline3(char* line, char* delims, parserecStruct1* rec) {
    const std::optional<SlotSink> clumps = parse(line, delims, 3, rec);
    if (!clumps) return false;
    const std::optional<Clump> open = clumps->open();
    if (open && rec->nclumps == 2) fixed_clump_slots[2] = *open;
    if (open && (rec->nclumps == 2 || rec->nclumps == 3)) fixed_clump_slots[3] = *open;
    return true;
}

bool gparse_getclump2(parserecStruct1* rec, std::size_t index, char* dst) {
    if (index > 2) return false;
    const Clump slot = fixed_clump_slots[index];
    copy_stretch(rec->line, slot.start, index == 2 ? slot.end - 1 : slot.end, dst);
    gparse_strpbl(dst, dst);
    return true;
}

bool gparse_getclump3(parserecStruct1* rec, std::size_t index, char* dst) {
    if (index > 3) return false;
    const Clump slot = fixed_clump_slots[index];
    copy_stretch(rec->line, slot.start, slot.end, dst);
    gparse_strpbl(dst, dst);
    dst[std::strlen(dst) + 1] = '\0';
    return true;
}
