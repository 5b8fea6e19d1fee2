#include "text/clump_access.h"
#include "text/clump_classifier.h"
#include "text/growing_block.h"
#include "text/line_scanner.h"
#include "text/parser_registry.h"

#include <orvix/gsl/memory_parser.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

using namespace orvix::gsl::text;

namespace {

using WorkClumps = GrowingBlock<parserec_clump>;

// Collects the clumps of a line in a table that grows, and is kept from line to line.
class WorkSink {
public:
    WorkSink(const char* line, const ByteClasses& classes, WorkClumps* table)
        : classifier_(line, classes), table_(*table) {}

    bool full() const { return failed_; }
    const char* read_ahead(const char* at) { return classifier_.read_ahead(at); }
    void add(Clump run, bool closed) {
        if (!has_room()) return;
        classifier_.put_run(run, &table_[count_++]);
        ends_open_ = !closed;
    }
    void add_single(Clump single) {
        if (has_room()) classifier_.put_single(single, &table_[count_++]);
    }

    bool failed() const { return failed_; }
    std::size_t count() const { return count_; }
    std::size_t closed() const { return ends_open_ ? count_ - 1 : count_; }

private:
    bool has_room() {
        if (count_ == table_.capacity() && !table_.grow(2 * count_ + 2)) failed_ = true;
        return !failed_;
    }

    ClumpClassifier classifier_;
    WorkClumps& table_;
    std::size_t count_ = 0;
    bool ends_open_ = false;
    bool failed_ = false;
};

// One form of the parser, with its state.
template <class Policy>
class MemoryParser {
public:
    bool parse(const char* line, const char* delims, const char* singles, char comment, parserecMem* rec) {
        if (*delims == '\0') return false;
        if (*line == '\0') {
            drop_line(rec);
            return true;
        }
        rec->nclumps = 0;
        const std::size_t index = enter(rec);
        if (index == Registry::nowhere || !find_clumps(line, ByteClasses(delims, singles, comment), rec)) return false;
        rec->line = line;
        registry_[index] = {rec->line, rec->clumps, rec->slot, true};
        return true;
    }

    bool release(parserecMem* rec) {
        if (registry_.is_empty() || (rec->slot == 0 && !Policy::looks_for_no_slot)) return true;
        const std::size_t index = registry_.find(rec->slot);
        if (index == Registry::nowhere) return false;
        if (rec->slot == 0) return true;
        std::free(rec->clumps);
        gparse_init_parserecMem(rec);
        registry_.remove(index);
        return true;
    }

    bool release_all() {
        registry_.clear();
        return true;
    }

private:
    using Registry = ParserRegistry<Policy>;

    // The record stays in the registry.
    static void drop_line(parserecMem* rec) {
        if (rec->slot != 0) std::free(rec->clumps);
        rec->line = nullptr;
        rec->nclumps = 0;
        rec->clumps = nullptr;
    }

    // Finds the record's entry, or makes one; nowhere for a slot that is not known, and without memory.
    std::size_t enter(parserecMem* rec) {
        if (rec->slot != 0) {
            const std::size_t index = registry_.find(rec->slot);
            if (index == Registry::nowhere) return index;
            std::free(rec->clumps);
            rec->clumps = nullptr;
            return index;
        }
        if (const std::size_t index = registry_.reuse(); index != Registry::nowhere) {
            rec->slot = static_cast<std::uint32_t>(std::max<std::size_t>(index, 1));  // one less than a new entry's
            return index;
        }
        const std::size_t index = registry_.append();
        if (index != Registry::nowhere) rec->slot = static_cast<std::uint32_t>(registry_.count());
        return index;
    }

    bool find_clumps(const char* line, const ByteClasses& classes, parserecMem* rec) {
        WorkSink sink(line, classes, &work_clumps_);
        scan_line(line, classes, sink);
        if (sink.failed()) return false;
        rec->clumps = nullptr;
        if (sink.count() > 0) {
            rec->clumps = static_cast<parserec_clump*>(std::malloc((sink.closed() + 1) * sizeof(parserec_clump)));
            if (rec->clumps == nullptr) return false;
            std::memcpy(rec->clumps, work_clumps_.begin(), sink.count() * sizeof(parserec_clump));
        }
        rec->nclumps = sink.count();
        return true;
    }

    WorkClumps work_clumps_;
    Registry registry_;
};

constinit MemoryParser<PlainPolicy> plain;
constinit MemoryParser<EfficientPolicy> efficient;

}  // namespace

void gparse_init_parserecMem(parserecMem* rec) { *rec = {}; }

bool gparse_parline_mem(const char* line, const char* delims, const char* singles, char comment, parserecMem* rec) {
    return plain.parse(line, delims, singles, comment, rec);
}

bool gparse_efficient_parline_mem(const char* line, const char* delims, const char* singles, char comment,
                                  parserecMem* rec) {
    return efficient.parse(line, delims, singles, comment, rec);
}

bool gparse_parline_free_mem(parserecMem* rec) { return plain.release(rec); }

bool gparse_efficient_parline_free_mem(parserecMem* rec) { return efficient.release(rec); }

bool gparse_parline_free_all_mem(void) { return plain.release_all(); }

bool gparse_efficient_parline_free_all_mem(void) { return efficient.release_all(); }

bool gparse_getclump_mem(parserecMem* rec, std::size_t index, char* dst) { return copy_clump(*rec, index, dst); }

void gparse_getplinstr_mem(parserecMem* rec, std::size_t first, std::size_t last, char* dst) {
    copy_between(*rec, first, last, rec->nclumps, dst);
}

bool gparse_intclump_mem(parserecMem* rec, std::size_t index, int* out) { return get_whole(*rec, index, out); }

bool gparse_d_relclump_mem(parserecMem* rec, std::size_t index, double* out) { return get_real(*rec, index, out); }

bool gparse_s_relclump_mem(parserecMem* rec, std::size_t index, float* out) { return get_real(*rec, index, out); }
