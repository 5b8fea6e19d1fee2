// Second station: one setting at several levels.
#include "tour.h"

#include <algorithm>

namespace workbench {

namespace {

const char* winning_level(eeEnv* env, const std::string& setting) {
    const auto winner = std::find_if(std::begin(levels), std::end(levels), [&](const Level& level) {
        return value_of(env, setting, level.number).has_value();
    });
    return winner == std::end(levels) ? "nobody" : winner->title;
}

}  // namespace

void show_levels(eeEnv* env) {
    print_heading("2. Levels: the nearest one wins");
    std::vector<std::string> titles = {"setting"};
    for (auto level = std::rbegin(levels); level != std::rend(levels); ++level) titles.push_back(level->title);
    titles.insert(titles.end(), {"in force", "said by"});

    Table report(titles);
    for (const char* setting : {"GRID", "ROUTING_LAYERS", "AUTOSAVE_MINUTES", "THEME", "CURSOR", "LENGTH_UNIT",
                                "MIN_TRACK", "THERMAL_AMBIENT", "TEAM_LIBRARY"}) {
        std::vector<std::string> row = {setting};
        for (auto level = std::rbegin(levels); level != std::rend(levels); ++level) {
            row.push_back(value_of(env, setting, level->number).value_or("-"));
        }
        row.push_back(value_of(env, setting).value_or("-"));
        row.push_back(winning_level(env, setting));
        report.add(row);
    }
    report.print(2);
}

}  // namespace workbench
