#include <orvix/gsl/temporary_names.h>

#include <orvix/core/temporary_names.h>
#include <orvix/gsl/environment.h>

#include <cstdlib>
#include <cstring>
#include <ctime>
#include <optional>
#include <utility>

namespace {

using OptionalText = std::optional<std::string>;

// None before a prefix has been set, which is not the same as an empty one: that fixes the length as well.
OptionalText& default_prefix() {
    static OptionalText prefix;
    return prefix;
}

OptionalText& last_name() {
    static OptionalText name;
    return name;
}

void store(const std::string& text, char* buffer) { std::memcpy(buffer, text.c_str(), text.size() + 1); }

// Weak on purpose: the sequence of random numbers that programs have come to expect.
int random_number_of_this_second() {
    std::srand(static_cast<unsigned int>(std::time(nullptr)));  // NOLINT(cert-msc32-c,cert-msc51-cpp)
    return std::rand();                                         // NOLINT(cert-msc30-c,cert-msc50-cpp)
}

}  // namespace

std::string gsl_tempnam(const char* directory, const char* prefix) {
    return orvix::core::temporary_name(directory, prefix);
}

char* gsl_tmpnam(char* buffer) {
    last_name().reset();
    const OptionalText& prefix = default_prefix();
    std::string name = orvix::core::temporary_name(gui_env_get_sys("HOME"), prefix ? prefix->c_str() : nullptr);
    if (name.empty()) {
        if (buffer != nullptr) store("", buffer);
        return nullptr;
    }
    // Where a name has room for an extension, one without may end in the bare dot.
    if (name.back() == '.') name.pop_back();
    if (buffer != nullptr) store(name + std::to_string(random_number_of_this_second()), buffer);
    return last_name().emplace(std::move(name)).data();
}

void tmpnam_set_default_prefix(char* prefix) {
    if (prefix == nullptr) return;
    OptionalText& stored = default_prefix();
    if (!stored || stored->size() == std::strlen(prefix)) stored = prefix;
}
