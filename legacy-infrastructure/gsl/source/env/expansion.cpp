#include "env/expansion.h"

#include "env/chain.h"
#include "env/process_variable.h"
#include "env/table.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <new>

// A text is rewritten in passes until a pass meets no reference; that is how references inside values are replaced.
// Each pass is one scan from left to right. Nothing is ever parsed into a tree, because a pass may put a reference
// together from the pieces that the pass before left side by side.

namespace orvix::gsl::env {

namespace {

// Further bounds of an expansion that ends.
constexpr std::size_t most_growth_bytes = std::size_t{64} << 20;
constexpr std::uint64_t most_passes = 20'000;  // and one for each setting in sight, since a chain may lead through all

// A byte is rewritten in about a nanosecond. A lookup takes some 30, and another for every 16 settings searched.
constexpr std::uint64_t lookup_work = 32;
constexpr std::uint64_t settings_a_byte = 16;

// Texts are remembered from this pass on to recognise a circle; most expansions have ended by then.
constexpr std::uint64_t first_remembered_pass = 8;

// What a character may be, one bit each.
enum Class : std::uint8_t { begins_variable = 1, begins_any = 2, in_name = 4 };

constexpr std::array<std::uint8_t, 256> classes = [] {
    std::array<std::uint8_t, 256> table{};
    for (const char c : std::string_view("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_"))
        table[static_cast<unsigned char>(c)] = in_name;
    table['$'] = table['{'] = begins_variable | begins_any;
    table['%'] = begins_any;
    return table;
}();

constexpr bool is_in(char c, std::uint8_t classes_asked) {
    return (classes[static_cast<unsigned char>(c)] & classes_asked) != 0;
}

struct Reference {
    bool is_variable;       // `$`, not `%`
    bool is_cut_off;        // in braces, but without the closing one
    std::string_view name;  // at most 63 bytes
    std::size_t end;        // position behind the reference
};

class Expansion {
public:
    explicit Expansion(const Sources& sources)
        : sources_(sources),
          beginnings_(sources.variables_only ? begins_variable : begins_any),
          work_left_(sources.work_left != nullptr ? sources.work_left : &own_work_) {}
    Expansion(const Expansion&) = delete;
    Expansion& operator=(const Expansion&) = delete;

    bool run(std::string_view source, std::string* text);

private:
    bool is_reference(std::string_view text, std::size_t at) const;
    std::size_t find_candidate(std::string_view text, std::size_t from) const;
    std::size_t find_reference(std::string_view text, std::size_t from) const;
    Reference parse(std::string_view text, std::size_t at) const;
    std::string_view value_of_reference(const Reference& reference) const;
    std::string_view setting(const FoldedName& name) const;
    bool spend(std::uint64_t work);
    bool rewrite(std::string_view text, std::size_t from);
    bool goes_round(const std::string& text);
    std::uint64_t settings_in_sight() const;

    const Sources& sources_;
    std::uint8_t beginnings_;  // class of the characters that may begin a reference
    std::string rewritten_;    // what a pass makes of the text from its first reference on
    std::string remembered_;
    std::size_t most_bytes_ = 0;
    std::uint64_t passes_ = 0;
    std::uint64_t reference_work_ = lookup_work;
    std::uint64_t own_work_ = most_expansion_work;
    std::uint64_t* work_left_;
};

// A brace counts only before the sign of a reference.
bool Expansion::is_reference(std::string_view text, std::size_t at) const {
    if (!is_in(text[at], beginnings_)) return false;
    if (text[at] != '{') return true;
    return at + 1 < text.size() && text[at + 1] != '{' && is_in(text[at + 1], beginnings_);
}

// The next character that may begin a reference, or the end.
std::size_t Expansion::find_candidate(std::string_view text, std::size_t from) const {
    while (from < text.size() && !is_in(text[from], beginnings_)) ++from;
    return from;
}

std::size_t Expansion::find_reference(std::string_view text, std::size_t from) const {
    for (;; ++from) {
        from = find_candidate(text, from);
        if (from == text.size() || is_reference(text, from)) return from;
    }
}

// A name takes 63 bytes, and then all the rest of the text goes with it unseen.
Reference Expansion::parse(std::string_view text, std::size_t at) const {
    const bool in_braces = text[at] == '{';
    if (in_braces) ++at;
    const std::size_t begin = at + 1;
    const std::size_t longest = std::min(text.size(), begin + longest_name);
    std::size_t end = begin;
    while (end < longest && (in_braces ? text[end] != '}' : is_in(text[end], in_name))) ++end;

    Reference reference{text[at] == '$', false, text.substr(begin, end - begin), end};
    if (reference.name.size() == longest_name) reference.end = text.size();
    if (in_braces) {
        reference.is_cut_off = reference.end == text.size();
        if (!reference.is_cut_off) ++reference.end;
    }
    return reference;
}

std::string_view Expansion::setting(const FoldedName& name) const {
    const auto found_in = [&name](eeEnv* env) {
        return env != nullptr ? find(*env, name, ENVLOC_ANY, Removed::hidden) : nullptr;
    };
    const EnvEntry* entry = found_in(sources_.first);
    for (eeEnv* env : sources_.further) {
        if (entry != nullptr) break;
        entry = found_in(env);
    }
    if (entry == nullptr) entry = found_in(master_brought_up());
    return entry != nullptr ? value_of(*entry) : std::string_view();
}

// Good until the next reference is looked at.
std::string_view Expansion::value_of_reference(const Reference& reference) const {
    const FoldedName name(reference.name);
    if (!reference.is_variable) return setting(name);
    if (const auto value = process_variable(name.key())) return *value;
    return name.key() == "HXORVIX_DIR" ? "\\hxorvix" : "";
}

bool Expansion::spend(std::uint64_t work) {
    if (work > *work_left_) return false;
    *work_left_ -= work;
    return true;
}

// One pass over the text from its first reference on. A reference without value swallows the one plain character behind
// it, also across further references: the separator of a path that is not there goes with it. False if the text grows
// too long, or has cost too much.
bool Expansion::rewrite(std::string_view text, std::size_t from) {
    if (!spend(text.size() - from)) return false;
    rewritten_.clear();
    bool copy_next = true;
    std::size_t at = from;
    while (at < text.size()) {
        if (is_reference(text, at)) {
            if (!spend(reference_work_)) return false;
            const Reference reference = parse(text, at);
            const std::string_view value = value_of_reference(reference);
            if (value.size() > most_bytes_ || from + rewritten_.size() > most_bytes_ - value.size()) return false;
            rewritten_ += value;
            if (value.empty() || reference.is_cut_off) copy_next = false;
            at = reference.end;
        } else if (copy_next) {
            const std::size_t end = find_candidate(text, at + 1);
            rewritten_ += text.substr(at, end - at);
            at = end;
        } else {
            copy_next = true;
            ++at;
        }
    }
    return true;
}

std::uint64_t Expansion::settings_in_sight() const {
    const auto count = [](const eeEnv* env) -> std::uint64_t {
        if (env == nullptr) return 0;
        std::uint64_t settings = 0;
        for (const EnvTable* table : {&env->cwd, &env->user, &env->custom, &env->system})
            settings += static_cast<std::uint64_t>(std::max(table->used, 0));
        return settings;
    };
    std::uint64_t settings = count(sources_.first) + count(chain.master);
    for (const eeEnv* env : sources_.further) settings += count(env);
    return settings;
}

// Asked after each pass with the text that it made. A pass depends on nothing but the text before it, so one text met
// twice means that the expansion never ends. One text is kept, that of the last pass whose number is a power of two
// (Brent's way to find a cycle): sooner or later it lies in the circle and is met again.
bool Expansion::goes_round(const std::string& text) {
    ++passes_;
    if (passes_ > most_passes && passes_ > most_passes + settings_in_sight()) return true;
    if (passes_ < first_remembered_pass) return false;
    if (passes_ == first_remembered_pass) reference_work_ += settings_in_sight() / settings_a_byte;
    if (passes_ > first_remembered_pass && text == remembered_) return true;
    if (std::has_single_bit(passes_)) remembered_ = text;
    return false;
}

bool Expansion::run(std::string_view source, std::string* text) {
    static_assert(std::has_single_bit(first_remembered_pass));
    constexpr std::size_t usual_bytes = 240;
    most_bytes_ = source.size() + most_growth_bytes;
    text->reserve(usual_bytes);
    *text = source;
    bool any_output = false;
    // No reference stands before this position, so no pass changes anything there.
    std::size_t settled = 0;
    for (;;) {
        settled = find_reference(*text, settled);
        const bool saw_reference = settled < text->size();
        if (saw_reference) {
            if (rewritten_.capacity() < usual_bytes) rewritten_.reserve(usual_bytes);
            if (!rewrite(*text, settled)) return false;
            // A pass that appends nothing at all leaves the old text where it was.
            if (settled > 0 || !rewritten_.empty()) text->replace(settled, std::string::npos, rewritten_);
        }
        any_output = any_output || settled > 0 || !rewritten_.empty();
        if (!any_output) return false;
        if (text->ends_with(':')) text->pop_back();
        settled = std::min(settled, text->size());
        // A brace becomes part of a reference when a value puts a sign behind it.
        if (settled > 0 && (*text)[settled - 1] == '{') --settled;
        if (!saw_reference) return true;
        if (goes_round(*text)) return false;
    }
}

}  // namespace

std::vector<eeEnv*> further_environments(const eeEnv* first, std::va_list arguments) {
    std::vector<eeEnv*> environments;
    if (first == nullptr) return environments;
    while (eeEnv* env = va_arg(arguments, eeEnv*)) environments.push_back(env);
    return environments;
}

bool expand(std::string_view source, const Sources& sources, std::string* text) {
    try {
        return Expansion(sources).run(source, text);
    } catch (const std::bad_alloc&) {
        return false;
    }
}

long long expand_into(char* dest, const char* source, std::size_t size, const Sources& sources) {
    std::string text;
    if (source == nullptr || !expand(source, sources, &text)) return -1;
    if (text.size() >= size) return static_cast<long long>(text.size()) + 1;
    if (dest != nullptr) std::copy_n(text.c_str(), text.size() + 1, dest);
    return 0;
}

}  // namespace orvix::gsl::env
