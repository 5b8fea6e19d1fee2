#include <orvix/gsl/record_list.h>

#include "messages/record.h"
#include "messages/record_list.h"

#include <numeric>

namespace orvix::gsl {

// The order of the key against the record, though the record comes first.
int compare_record(const char* record, const char* key) {
    if (record == nullptr) return key != nullptr ? 1 : 0;
    if (key == nullptr) return -1;
    const std::span<const char> text = record_text(record);
    for (std::size_t i = 0;; ++i) {
        const auto ours = static_cast<signed char>(i < text.size() ? text[i] : '\0');
        const auto theirs = static_cast<signed char>(key[i]);
        if (ours != theirs || i == text.size()) return theirs - ours;
    }
}

}  // namespace orvix::gsl

using namespace orvix::gsl;

bool glist_getkeyrec(void* handle, unsigned* index, char* key, std::size_t size, std::size_t* copied) {
    glist_header* list = as_list(handle);
    if (list == nullptr) return false;
    if (is_taken_over(list, ListOperation::get_by_key, index != nullptr ? *index : 0)) return true;
    if ((list->flags & flag_sorted) == 0) return false;

    const bool descending = (list->flags & flag_descending) != 0;
    std::uint32_t low = 0;
    std::uint32_t high = list->length;
    while (high > low) {
        const std::uint32_t middle = std::midpoint(low, high);
        const char* record = find_place(*list, middle).record();
        const int order = list->compare(record, key);
        if (order == 0) {
            const std::size_t bytes = list->copy_out(record, key, size);
            if (index != nullptr) *index = middle;
            if (copied != nullptr) *copied = bytes;
            return true;
        }
        if ((order < 0) != descending) {
            high = middle;
        } else {
            low = middle + 1;
        }
    }
    return false;
}
