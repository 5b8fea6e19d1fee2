// One pass of the expansion, retraced for display with the library's public lookups.
#pragma once

#include "settings.h"

#include <string>
#include <string_view>
#include <vector>

namespace workbench {

// A reference that yielded nothing, and the plain character behind it that went with it, if one stood there.
struct Vanished {
    std::string reference;
    std::string character;
};

struct Pass {
    std::string text;            // what the pass makes of its input
    bool saw_reference = false;  // false: the text is final
    std::vector<Vanished> vanished;
};

// Names of up to 63 characters and closed braces are retraced exactly; the library alone decides what a value is.
Pass expansion_pass(eeEnv* env, std::string_view text);

}  // namespace workbench
