#include <orvix/gsl/file_names.h>

#include <algorithm>
#include <cstring>

char* convertFileName(char* name) {
    if (name != nullptr) std::replace(name, name + std::strlen(name), '/', '\\');
    return name;
}
