// The reader of project markers finds in any bytes what a plain model finds.
#include "../tests/support/line_reader_model.h"

#include "system/project_file.h"

#include <orvix/core/temporary_file.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>

namespace {

using orvix::test::LineReaderModel;

constexpr const char* key = "KEY";

void expect(bool condition) {
    if (!condition) std::abort();
}

std::string without_blanks(std::string text) {
    while (text.ends_with(' ')) text.pop_back();
    while (text.starts_with(' ')) text.erase(0, 1);
    return text;
}

std::optional<std::string> value_in_model(const std::string& bytes) {
    LineReaderModel lines(bytes);
    while (auto line = lines.limited_line(1024)) {
        std::string text = without_blanks(*line);
        const char* const name = std::strtok(text.data(), "=");
        if (name == nullptr || without_blanks(name) != key) continue;
        const char* const value = std::strtok(nullptr, "=");
        return value != nullptr ? value : "";
    }
    return std::nullopt;
}

// A file that each input overwrites.
class File {
public:
    void write(const std::string& bytes) const {
        std::FILE* const stream = file_.path().fopen("wb");
        expect(stream != nullptr);
        expect(std::fwrite(bytes.data(), 1, bytes.size(), stream) == bytes.size());
        expect(std::fclose(stream) == 0);
    }

    std::optional<std::string> value() const {
        const std::string name = file_.path().native();
        const std::size_t separator = name.rfind('\\');
        std::string value = "before";
        const bool found =
            orvix::gsl::system::gprj_read_value(name.substr(0, separator), name.substr(separator + 1), key, &value);
        if (found) return value;
        expect(value.empty());
        return std::nullopt;
    }

private:
    orvix::TemporaryFile file_{"project", "cfg"};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const File file;
    const std::string bytes(data, data + size);
    file.write(bytes);
    expect(file.value() == value_in_model(bytes));
    return 0;
}
