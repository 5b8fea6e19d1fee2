#include "text/clump_access.h"
#include "text/clump_classifier.h"
#include "text/line_scanner.h"

#include <orvix/gsl/line_parser.h>

#include <cstddef>
#include <type_traits>

using namespace orvix::gsl::text;

namespace {

constexpr std::size_t clump_limit = 300;

// A single byte behind the run of text that is the last clump comes without being asked for.
constexpr std::size_t entry_count = std::extent_v<decltype(parserec::clumps)>;
static_assert(entry_count == clump_limit + 1);

class RecordSink {
public:
    RecordSink(parserec* record, const ByteClasses& classes)
        : classifier_(record->line, classes), begin_(record->clumps), next_(record->clumps) {}

    bool full() const { return count() >= clump_limit; }
    const char* read_ahead(const char* at) { return classifier_.read_ahead(at); }
    void add(Clump run, bool /*closed*/) { classifier_.put_run(run, next_++); }
    void add_single(Clump single) { classifier_.put_single(single, next_++); }

    std::size_t count() const { return static_cast<std::size_t>(next_ - begin_); }

private:
    ClumpClassifier classifier_;
    parserec_clump* begin_;
    parserec_clump* next_;
};

}  // namespace

bool gparse_parline(const char* line, const char* delims, const char* singles, char comment, parserec* rec) {
    rec->line = line;
    rec->nclumps = 0;
    if (*delims == '\0') return false;
    const ByteClasses classes(delims, singles, comment);
    RecordSink sink(rec, classes);
    scan_line(line, classes, sink);
    rec->nclumps = sink.count();
    return true;
}

bool gparse_getclump(parserec* rec, std::size_t index, char* dst) { return copy_clump(*rec, index, dst); }

void gparse_getplinstr(parserec* rec, std::size_t first, std::size_t last, char* dst) {
    copy_between(*rec, first, last, entry_count, dst);
}

bool gparse_intclump(parserec* rec, std::size_t index, int* out) { return get_whole(*rec, index, out); }

bool gparse_d_relclump(parserec* rec, std::size_t index, double* out) { return get_real(*rec, index, out); }

bool gparse_s_relclump(parserec* rec, std::size_t index, float* out) { return get_real(*rec, index, out); }
