// What the sources of this library know of a path beyond its public face.
#pragma once

#include <orvix/core/path.h>

#include <string>
#include <string_view>
#include <utility>

namespace orvix::core {

struct PathAccess {
    using Spelling = Path::Spelling;

    static const std::string& text(const Path& path) { return path.text_; }
    // A name as it is handed to the system, without a copy of its text.
    struct Name {
        std::string_view text;
        Spelling spelling = Spelling::typed;

        Name(std::string_view typed) : text(typed) {}
        Name(const std::string& typed) : text(typed) {}
        Name(const Path& path) : text(path.text_), spelling(path.spelling_) {}
        bool ignores_case() const { return spelling == Spelling::typed; }
    };

    static Path make(std::string text, Spelling spelling) { return Path(std::move(text), spelling); }
};

using Name = PathAccess::Name;

}  // namespace orvix::core
