#include "support/temporary_place.h"

namespace fs = std::filesystem;

namespace orvix::test {

const char* const temporary_place = "TMPDIR";

fs::path fast_place() { return fs::is_directory("/dev/shm") ? "/dev/shm" : fs::temp_directory_path(); }

NoTemporaryPlace::NoTemporaryPlace()
    : first_("TMPDIR", "/no/such/directory"),
      second_("TMP", "/no/such/directory"),
      third_("TEMP", "/no/such/directory") {}

fs::path last_temporary_place() { return "/tmp"; }

// No drive holds any directory for temporary files.
struct NoTemporaryName::State {
    TemporaryDirectory only_drive;
    ScopedVariable drive{"ORVIX_DRIVE_C", only_drive.path()};
};

NoTemporaryName::NoTemporaryName() : state_(new State) {}

NoTemporaryName::~NoTemporaryName() { delete state_; }

}  // namespace orvix::test
