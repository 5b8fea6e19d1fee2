// The message catalogues of the sample installation: sound as files, and read whole by the library.
#include "support/temporary_directory.h"

#include <orvix/gsl/messages.h>
#include <orvix/gsl/status.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <regex>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr const char* sets[] = {"netlist", "simulator", "layout"};

struct Language {
    const char* name;
    const char* extension;
};
constexpr Language languages[] = {{"ENGLISH", "eng"}, {"GERMAN", "ger"}, {"JAPANESE", "jpn"}};

using Lines = std::vector<std::string>;

Lines split(const std::string& text) {
    Lines lines;
    std::size_t begin = 0;
    for (std::size_t end; (end = text.find('\n', begin)) != std::string::npos; begin = end + 1) {
        lines.push_back(text.substr(begin, end - begin));
    }
    if (begin != text.size()) lines.push_back(text.substr(begin));
    return lines;
}

fs::path catalogue(const std::string& set, const Language& language) {
    return fs::path(ORVIX_SAMPLE_INSTALLATION) / "root" / "messages" / (set + "." + language.extension);
}

Lines lines_of(const std::string& set, const Language& language) {
    return split(orvix::test::read_file(catalogue(set, language)));
}

// Calls `check(lines, where)` for every catalogue.
template <class Check>
void for_each_catalogue(Check check) {
    for (const char* set : sets) {
        for (const Language& language : languages) {
            SCOPED_TRACE(std::string(set) + "." + language.extension);
            check(lines_of(set, language));
        }
    }
}

// Bytes of the character that begins with `lead`, and the least code that needs so many; none: it begins no character.
struct Form {
    std::size_t bytes;
    char32_t least;
};
Form form_of(unsigned char lead) {
    if (lead < 0x80) return {1, 0};
    if (lead >= 0xC0 && lead < 0xE0) return {2, 0x80};
    if (lead >= 0xE0 && lead < 0xF0) return {3, 0x800};
    if (lead >= 0xF0 && lead < 0xF8) return {4, 0x10000};
    return {0, 0};
}

bool is_utf8(std::string_view text) {
    while (!text.empty()) {
        const auto lead = static_cast<unsigned char>(text.front());
        const auto [bytes, least] = form_of(lead);
        if (bytes == 0 || bytes > text.size()) return false;
        char32_t code = bytes == 1 ? lead : lead & (0xFFu >> (bytes + 1));
        for (std::size_t i = 1; i < bytes; ++i) {
            const auto next = static_cast<unsigned char>(text[i]);
            if ((next & 0xC0u) != 0x80u) return false;
            code = (code << 6) | (next & 0x3Fu);
        }
        if (code < least || code > 0x10FFFF || (code >= 0xD800 && code < 0xE000)) return false;
        text.remove_prefix(bytes);
    }
    return true;
}

std::multiset<std::string> places_in(const std::string& line) {
    static const std::regex place("\\{[1-9]\\}");
    return {std::sregex_token_iterator(line.begin(), line.end(), place), std::sregex_token_iterator()};
}

}  // namespace

TEST(Catalogues, EverySetHasFortyLinesOrMoreInEachLanguage) {
    for_each_catalogue([](const Lines& lines) { EXPECT_GE(lines.size(), 40u); });
}

TEST(Catalogues, EverySetHasAsManyLinesInEachLanguage) {
    for_each_catalogue([](const Lines& lines) { EXPECT_EQ(lines.size(), 44u); });
}

TEST(Catalogues, NoLineIsEmptyOrLongerThanASetKeeps) {
    for_each_catalogue([](const Lines& lines) {
        for (const std::string& line : lines) {
            EXPECT_GT(line.size(), 0u);
            EXPECT_LE(line.size(), 1023u) << line;
        }
    });
}

TEST(Catalogues, TheSeparatorIsTheOnlyControlCharacter) {
    for_each_catalogue([](const Lines& lines) {
        for (const std::string& line : lines) {
            for (const char c : line) EXPECT_FALSE((c >= 0 && c < 0x20 && c != 0x0E) || c == 0x7F) << line;
        }
    });
}

TEST(Catalogues, EveryLineIsUtf8) {
    for_each_catalogue([](const Lines& lines) {
        for (const std::string& line : lines) EXPECT_TRUE(is_utf8(line)) << line;
    });
}

TEST(Catalogues, EverySetHasMessagesWithALineBreak) {
    for_each_catalogue([](const Lines& lines) {
        EXPECT_TRUE(std::any_of(lines.begin(), lines.end(),
                                [](const std::string& line) { return line.find('\x0E') != std::string::npos; }));
    });
}

TEST(Catalogues, NoMessageStandsTwiceInASet) {
    for_each_catalogue(
        [](const Lines& lines) { EXPECT_EQ(std::set<std::string>(lines.begin(), lines.end()).size(), lines.size()); });
}

TEST(Catalogues, PlacesAndLineBreaksOfALineAreThoseOfTheEnglishOne) {
    for (const char* set : sets) {
        const Lines english = lines_of(set, languages[0]);
        for (const Language& language : languages) {
            const Lines lines = lines_of(set, language);
            ASSERT_EQ(lines.size(), english.size());
            for (std::size_t i = 0; i < lines.size(); ++i) {
                SCOPED_TRACE(english[i] + " / " + lines[i]);
                EXPECT_EQ(places_in(lines[i]), places_in(english[i]));
                EXPECT_EQ(std::count(lines[i].begin(), lines[i].end(), '\x0E'),
                          std::count(english[i].begin(), english[i].end(), '\x0E'));
            }
        }
    }
}

TEST(Catalogues, TheLibraryReadsEveryLineAsTheFileHoldsItWithLineBreaks) {
    const fs::path installation = ORVIX_SAMPLE_INSTALLATION;
    using orvix::test::library_name;
    const orvix::test::ScopedVariable root("HXORVIX_DIR", library_name(installation / "root").c_str());
    const orvix::test::ScopedVariable site("QDS_CUSTOM_DIR", library_name(installation / "site").c_str());
    const orvix::test::ScopedVariable home("HOME", library_name(installation / "home").c_str());
    for (const Language& language : languages) {
        GmsgHandleS* const handle = gmsg_open("hxorvixsess", "workbench", language.name);
        ASSERT_NE(handle, nullptr) << gerror_get_error_message();
        EXPECT_EQ(gerror_get_error(), GUI_ERR_NONE);
        for (const char* set : sets) {
            Lines expected = lines_of(set, language);
            for (std::string& line : expected) std::replace(line.begin(), line.end(), '\x0E', '\n');
            Lines actual;
            char text[1024];
            for (int line = 1; gmsg_retrieve_message(handle, set, line, text); ++line) actual.emplace_back(text);
            EXPECT_EQ(gerror_get_error(), GUI_ERR_MSG_BAD_LINE_NUMBER);
            EXPECT_EQ(actual, expected);
        }
        EXPECT_TRUE(gmsg_close(handle));
    }
}
