// A name and a part to put into it, given to every operation with rules of its own; the models must agree, and what was
// taken apart must come together again.
//
// Input: the name up to a zero byte, then the part.

#include "../tests/paths/models.h"

#include <orvix/gsl/file_names.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace model = orvix::test::model;

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

std::vector<char> block(const std::string& text, std::size_t more = 0) {
    std::vector<char> result(text.c_str(), text.c_str() + text.size() + 1);
    result.resize(result.size() + more);
    return result;
}

void check_prefix(const std::string& name, const std::string& drive) {
    int length = -1;
    const bool found = gfile_hasdrv(name.c_str(), &length);
    require(found == (length > 0) && static_cast<std::size_t>(length) == model::prefix_length(name));
    std::vector<char> bare = block(name);
    gfile_stripdrv(name.c_str(), bare.data());
    require(name.substr(0, static_cast<std::size_t>(length)) + bare.data() == name);

    for (const bool overwrite : {false, true}) {
        std::vector<char> filled = block(name, drive.size() + 1);
        gfile_fildrv(filled.data(), overwrite, drive.c_str());
        require(filled.data() == model::with_prefix(name, overwrite, drive));
    }
}

void check_extension(const std::string& name, const std::string& extension) {
    int position = -1;
    const bool found = gfile_hasext(name.c_str(), &position);
    require(found == (position > 0) && static_cast<std::size_t>(position) == model::dot_position(name));
    std::vector<char> bare = block(name);
    gfile_stripext(name.c_str(), bare.data());
    require(bare.data() == model::without_extension(name));

    for (const bool overwrite : {false, true}) {
        std::vector<char> filled = block(name, extension.size() + 1);
        gfile_filext(filled.data(), overwrite, extension.c_str());
        require(filled.data() == model::with_extension(name, overwrite, extension));
    }
    char* behind = gfile_getext(name.c_str());
    require((behind == nullptr) == name.empty());
    require(behind == nullptr || behind == model::behind_first_dot(name));
    std::free(behind);
}

void check_parts(const std::string& name) {
    std::vector<char> buffer = block(name);
    require(HX_get_basename_from_file(buffer.data()) == model::basename(name));
    require(HX_get_basename_from_file_new(name) == model::basename(name));
    gfile_strip_dir_name(buffer.data());
    require(buffer.data() == model::stripped_directory(name));

    std::vector<char> directory = block(name, 1);
    gfile_prepare_dir_name(directory.data());
    require(name.empty() || std::string(directory.data()).ends_with('\\'));
}

void check_repair_and_quoting(const std::string& name) {
    auto* text = static_cast<char*>(std::malloc(name.size() + 1));
    std::memcpy(text, name.c_str(), name.size() + 1);
    gfile_fix_path(&text);
    require(text == model::fixed(name));
    std::free(text);

    const std::string quoted = HX_quote_argument(name.c_str());
    require(quoted == model::quoted(name) && model::unquoted(quoted) == name);
    require(HX_quote_argument(HX_quote_argument(name.c_str())) == model::quoted(quoted));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(data, data + size);
    const std::string name = input.c_str();
    const std::string part = name.size() < input.size() ? input.c_str() + name.size() + 1 : "";

    check_prefix(name, part);
    check_extension(name, part);
    check_parts(name);
    check_repair_and_quoting(name);
    return 0;
}
