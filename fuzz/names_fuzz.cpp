// Names of any bytes: conversions keep what they must, comparison is an order, and translation to the host never leaves
// a name that the host could misread.

#include "common/path_access.h"
#include "posix/host_name.h"

#include <orvix/core/files.h>
#include <orvix/core/path.h>
#include <orvix/core/text.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

using orvix::Path;

namespace {

void require(bool condition) {
    if (!condition) std::abort();
}

int sign(int number) { return (number > 0) - (number < 0); }

void check_text(const std::string& text) {
    const std::u16string wide = orvix::toUtf16(text);
    // The first conversion may replace bytes; from then on nothing changes any more.
    require(orvix::toUtf16(orvix::toStdString(wide)) == wide);
    require(orvix::fixFilenameSlashes(text).find('/') == std::string::npos);
}

void check_order(const std::string& a, const std::string& b, const std::string& c) {
    const auto compare = [](const std::string& x, const std::string& y) { return sign(Path::compare_filenames(x, y)); };
    require(compare(a, a) == 0);
    require(compare(a, b) == -compare(b, a));
    if (compare(a, b) <= 0 && compare(b, c) <= 0) require(compare(a, c) <= 0);
}

void check_translation(const std::string& name) {
    orvix::core::HostName host;
    if (!orvix::core::translate(Path(name), &host)) return;
    const std::string_view text = host.text.view();
    require(!text.empty());
    require(text.find('\0') == std::string_view::npos);
    require(text.find('\\') == std::string_view::npos);
    require(text.find("//") == std::string_view::npos);
    const Path parent = Path(name).parent_path();
    require(parent.string().size() <= name.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    check_text(text);
    check_translation(text);
    const std::size_t third = size / 3;
    check_order(text.substr(0, third), text.substr(third, third), text.substr(2 * third));
    return 0;
}
