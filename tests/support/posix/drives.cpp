#include "support/drives.h"

namespace orvix::test {

const bool drives_are_variables = true;

MappedDrive::MappedDrive(char letter, const std::filesystem::path& directory) {
    variable_.emplace((std::string("ORVIX_DRIVE_") + letter).c_str(), directory.c_str());
}

MappedDrive::~MappedDrive() = default;

}  // namespace orvix::test
