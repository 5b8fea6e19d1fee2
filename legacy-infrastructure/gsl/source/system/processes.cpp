#include <orvix/gsl/processes.h>

#include <orvix/core/clock.h>
#include <orvix/core/processes.h>

std::FILE* gsl_popen(const char* command, const char* mode) { return orvix::core::open_pipe(command, mode); }

int gsl_pclose(std::FILE* pipe) { return orvix::core::close_pipe(pipe); }

unsigned int gsl_sleep(unsigned int seconds) {
    orvix::core::sleep_seconds(seconds);
    return 0;
}
