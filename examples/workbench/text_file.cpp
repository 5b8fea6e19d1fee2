#include "text_file.h"

#include <orvix/core/path.h>

#include <cstdio>
#include <memory>

namespace workbench {

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

}  // namespace

std::optional<std::vector<std::string>> lines_of(const std::string& name) {
    const std::unique_ptr<std::FILE, CloseFile> file(orvix::Path(name).fopen("r"));
    if (!file) return std::nullopt;
    std::vector<std::string> lines;
    bool at_line_start = true;
    for (int c = std::fgetc(file.get()); c != EOF; c = std::fgetc(file.get())) {
        if (at_line_start) lines.emplace_back();
        at_line_start = c == '\n';
        if (!at_line_start) lines.back() += static_cast<char>(c);
    }
    if (std::ferror(file.get()) != 0) return std::nullopt;
    return lines;
}

}  // namespace workbench
