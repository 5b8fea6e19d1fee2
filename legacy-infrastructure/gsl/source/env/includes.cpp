#include "env/config_line.h"
#include "env/loading.h"

namespace orvix::gsl::env {

bool expand_at_load(Load& load, std::string_view text, std::string* result) {
    constexpr std::size_t buffer_bytes = 1024;
    const Sources sources{.first = load.env, .work_left = &load.expansion_work_left};
    return expand(text, sources, result) && result->size() < buffer_bytes;
}

void env_read_include(Load& load, std::string_view argument, EnvlocE level, bool verbatim) {
    const std::string_view text = argument.substr(0, argument.find('#'));
    const std::string_view name = without_leading_white_space(without_trailing_white_space(text));
    if (name.empty() || name[0] == '!' || name[0] == '+' || name[0] == '=') return;

    std::string expanded;
    if (!load.may_include() || !expand_at_load(load, name, &expanded)) return;
    ++load.depth;
    env_load_level(load, expanded.c_str(), verbatim ? ENVLOC_CWD : level, false, true);
    --load.depth;
}

}  // namespace orvix::gsl::env
