#include <orvix/core.h>
#include <orvix/gsl.h>

#include <cstdio>

int main() {
    std::printf("%d %s\n", gsl_strcmp("a", "b"), orvix::Path("a/b").native().c_str());
    return 0;
}
