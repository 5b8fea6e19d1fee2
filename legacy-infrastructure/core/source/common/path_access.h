// What the sources of this library know of a path beyond its public face.
#pragma once

#include <orvix/core/path.h>

#include <string>
#include <utility>

namespace orvix::core {

struct PathAccess {
    using Spelling = Path::Spelling;

    static const std::string& text(const Path& path) { return path.text_; }
    static Spelling spelling(const Path& path) { return path.spelling_; }
    static bool ignores_case(const Path& path) { return path.spelling_ == Spelling::typed; }
    static Path make(std::string text, Spelling spelling) { return Path(std::move(text), spelling); }
};

}  // namespace orvix::core
