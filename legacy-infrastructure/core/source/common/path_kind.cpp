#include <orvix/core/file_status.h>
#include <orvix/core/path.h>

namespace orvix {

bool Path::exists() const { return core::test_existence(*this) == 0; }

bool Path::is_directory() const { return core::kind_of_target(*this) == core::FileKind::directory; }

bool Path::is_regular_file() const { return core::kind_of_target(*this) == core::FileKind::regular; }

}  // namespace orvix
