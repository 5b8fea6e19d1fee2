#include "common/name_text.h"

#include <orvix/core/path.h>

namespace orvix {

bool Path::create_directories() const {
    if (is_directory()) return false;
    // From the top down, because the letter case of a lower level is looked up in the level above.
    bool made = false;
    for (std::size_t end = 0; end < text_.size(); ++end) {
        const bool part_ends = core::is_separator(text_[end]) && end > 0 && !core::is_separator(text_[end - 1]);
        if (!part_ends) continue;
        const Path level(text_.substr(0, end), spelling_);
        if (level.text_.size() == 2 && core::has_drive(level.text_)) continue;
        if (!level.is_directory()) made = level.create_directory() || made;
    }
    made = create_directory() || made;
    return made && is_directory();
}

}  // namespace orvix
