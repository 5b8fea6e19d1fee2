#include "support/letter_case.h"

#include "support/temporary_directory.h"

namespace orvix::test {

const bool letter_case_counts = true;

void write_beside(const std::filesystem::path& file, std::string_view bytes) {
    std::filesystem::create_directories(std::filesystem::absolute(file).parent_path());
    write_file(file, bytes);
}

}  // namespace orvix::test
