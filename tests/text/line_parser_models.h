// Slow, obvious models of the line parsers: they make a map of the line, one class a byte, and walk over it. The tests
// compare the library with them on random lines, the fuzz target on whatever it finds.
#pragma once

#include <clocale>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

namespace orvix::test::model {

// strtod in the "C" locale; nothing if it leaves bytes over.
inline std::optional<double> converted(const std::string& text) {
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    std::setlocale(LC_NUMERIC, "C");
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    std::setlocale(LC_NUMERIC, before.c_str());
    return end != text.c_str() && end == text.c_str() + text.size() ? std::optional(value) : std::nullopt;
}

inline std::optional<double> number(const std::string& text) {
    const std::string digits = "0123456789";
    if (text.empty() || (digits + "+-.").find(text.front()) == std::string::npos) return std::nullopt;
    if ((digits + ".").find(text.back()) == std::string::npos) return std::nullopt;
    return converted(text);
}

struct ModelClump {
    std::size_t start;
    std::size_t end;
    bool is_int = false;
    std::int32_t int_value = 0;
    bool is_real = false;
    double real_value = 0;
};

inline void classify(const std::string& line, ModelClump* clump) {
    const std::optional<double> value = number(line.substr(clump->start, clump->end - clump->start + 1));
    if (!value) return;
    clump->is_real = true;
    clump->real_value = *value;
    double whole = 0;
    if (std::modf(*value, &whole) != 0 || !(whole >= -2147483647.0 && whole <= 2147483647.0)) return;
    clump->is_int = true;
    clump->int_value = static_cast<std::int32_t>(whole);
    clump->real_value = clump->int_value;
}

enum class Kind { text, separator, single };

inline std::vector<Kind> map_of(const std::string& line, const std::string& delims, const std::string& singles,
                                char comment) {
    std::vector<Kind> map;
    for (const char c : line) {
        if (comment != '\0' && c == comment) break;
        if (singles.find(c) != std::string::npos) {
            map.push_back(Kind::single);
        } else if (delims.find(c) != std::string::npos) {
            map.push_back(Kind::separator);
        } else {
            map.push_back(Kind::text);
        }
    }
    return map;
}

// Nothing where the parser refuses.
inline std::optional<std::vector<ModelClump>> parsed(const std::string& line, const std::string& delims,
                                                     const std::string& singles, char comment) {
    if (delims.empty()) return std::nullopt;
    const std::vector<Kind> map = map_of(line, delims, singles, comment);
    std::vector<ModelClump> table(302);
    std::size_t slot = 0;
    bool in_clump = false;
    for (std::size_t i = 0; i < map.size() && slot < 300; ++i) {
        switch (map[i]) {
            case Kind::text:
                if (!in_clump) table[slot].start = i;
                in_clump = true;
                table[slot].end = i;
                break;
            case Kind::single:
                if (in_clump) ++slot;
                in_clump = false;
                table[slot].start = table[slot].end = i;
                ++slot;
                break;
            case Kind::separator:
                if (in_clump) ++slot;
                in_clump = false;
                break;
        }
    }
    table.resize(slot + (in_clump ? 1 : 0));
    for (ModelClump& clump : table) classify(line, &clump);
    return table;
}

// The parsers of lines of fixed shape, with the table that they share.
class FixedLines {
public:
    bool parse2(const std::string& line, const std::string& delims) {
        line_ = line;
        closed = 0;
        if (delims.empty() || line.empty()) return false;
        const bool open = walk(delims, 2);
        if (open) slots_[2] = last_;
        return slots_[0].end != line.size();
    }

    bool parse3(const std::string& line, const std::string& delims) {
        line_ = line;
        closed = 0;
        if (delims.empty() || line.empty()) return false;
        if (!walk(delims, 3)) return true;
        if (closed == 2) slots_[2] = slots_[3] = last_;
        if (closed == 3) slots_[3] = last_;
        return true;
    }

    std::string clump2(std::size_t index) const {
        return stripped(index, index == 2 ? slots_[index].end : slots_[index].end + 1);
    }
    std::string clump3(std::size_t index) const { return stripped(index, slots_[index].end + 1); }

    std::size_t closed = 0;

private:
    struct Slot {
        std::size_t start = 0;
        std::size_t end = 0;
    };

    // True if the line ends in a clump, which is the last one then.
    bool walk(const std::string& delims, std::size_t slots_for_closed) {
        bool in_clump = false;
        for (std::size_t i = 0; i < line_.size(); ++i) {
            if (delims.find(line_[i]) == std::string::npos) {
                if (!in_clump) last_.start = i;
                in_clump = true;
                last_.end = i;
            } else if (in_clump) {
                in_clump = false;
                if (closed < slots_for_closed) slots_[closed] = last_;
                ++closed;
            }
        }
        if (in_clump && last_.start == last_.end) ++last_.end;
        return in_clump;
    }

    // Up to, not including, the end; nothing beyond the line.
    std::string stripped(std::size_t index, std::size_t end) const {
        const std::size_t start = slots_[index].start;
        if (start >= line_.size() || end <= start) return "";
        std::string text = line_.substr(start, end - start);
        while (text.starts_with(' ')) text.erase(0, 1);
        while (text.ends_with(' ')) text.pop_back();
        return text;
    }

    std::string line_;
    Slot slots_[4];
    Slot last_;
};

}  // namespace orvix::test::model
