#include <orvix/gsl/record_list.h>

#include "messages/record.h"
#include "messages/record_list.h"
#include "messages/text_lines.h"

#include <orvix/core/path.h>
#include <orvix/gsl/streams.h>

#include <cstdint>
#include <cstdio>
#include <memory>

using namespace orvix::gsl;

namespace {

constexpr std::size_t message_bytes = 1024;

bool fail(char* message, const char* reason, const char* file) {
    if (message != nullptr) std::snprintf(message, message_bytes, "%s%s", reason, file);
    return false;
}

// As glist_putstr does: an empty line makes an empty record.
bool store(glist_header& list, std::uint32_t index, std::span<const char> line, RecordBatch* batch) {
    char** slot = empty_slot(list, index);
    if (slot == nullptr || line.empty()) return slot != nullptr;
    *slot = batch->new_record(line);
    return *slot != nullptr;
}

}  // namespace

bool glist_load(void* handle, char* file, char* message) {
    const char* name = file != nullptr ? file : "";
    glist_header* list = as_list(handle);
    if (list == nullptr) return fail(message, "<GLIST_LOAD> (0) not open: ", name);
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(orvix::Path(name).fopen("r"), gsl_fclose);
    if (stream == nullptr) return fail(message, "Not found: ", name);

    TextLines lines(stream.get());
    RecordBatch batch;
    std::uint32_t count = 0;
    for (std::span<char> line; lines.next(&line); ++count) {
        if (!store(*list, count, line, &batch)) return fail(message, "Load incomplete: ", name);
    }
    list->mark = count;
    return true;
}
