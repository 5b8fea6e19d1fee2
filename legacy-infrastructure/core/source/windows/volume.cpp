#include <orvix/core/volume.h>

#include "windows/last_error.h"
#include "windows/wide_name.h"

namespace orvix::core {

bool total_free_bytes(const Path& directory, std::uint64_t* free_bytes) {
    WideName wide;
    if (!translate(directory, &wide)) return false;
    ULARGE_INTEGER total_free;
    if (GetDiskFreeSpaceExW(wide.c_str(), nullptr, nullptr, &total_free) == 0) {
        fail_with_last_error();
        return false;
    }
    *free_bytes = total_free.QuadPart;
    return true;
}

}  // namespace orvix::core
