#include <orvix/gsl/projects.h>

namespace {

constexpr const char* number_and_tag = "591.zelta";
constexpr const char* build_date = ORVIX_BUILD_DATE;  // "Mmm dd yyyy", set by the build so that builds are reproducible

// Never destroyed: objects that outlive this library's may still hold the text while the process ends.
std::string& last_text() {
    static std::string& text = *new std::string;
    return text;
}

}  // namespace

char* qds_version_str(const char* prefix) {
    // The prefix may lie in the text of an earlier call, which stays until the new one is made.
    last_text() = qds_version_str_with_date(prefix != nullptr ? prefix : "", build_date);
    return last_text().data();
}

std::string qds_version_str_with_date(const std::string& prefix, const std::string& date) {
    const std::string version = std::string(number_and_tag) + " " + date;
    return prefix.empty() ? version : prefix + " (*) " + version;  // the mark tells that a prefix stands in front
}
