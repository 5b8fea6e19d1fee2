#include "gfile_report.h"

#include <cerrno>

namespace orvix::gsl {

bool report_failure(GuiError error, int line) {
    gerror_set_all_errors(error, errno);
    gerror_display_debug_info("legacy-infrastructure/gsl/source/gfile", line);
    return false;
}

}  // namespace orvix::gsl
