#include "netlist.h"

#include "text_file.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <sstream>

namespace workbench {

bool Net::has_driver() const {
    return std::any_of(pins.begin(), pins.end(), [](const std::string& pin) { return pin.ends_with('*'); });
}

std::size_t Netlist::pin_count() const {
    std::size_t count = 0;
    for (const Net& net : nets) count += net.pins.size();
    return count;
}

std::size_t Netlist::component_count() const {
    std::set<std::string> components;
    for (const Net& net : nets) {
        for (const std::string& pin : net.pins) components.insert(pin.substr(0, pin.find('.')));
    }
    return components.size();
}

std::optional<Netlist> read_netlist(const std::string& file) {
    const auto lines = lines_of(file);
    if (!lines) return std::nullopt;
    Netlist netlist;
    for (std::size_t i = 0; i < lines->size(); ++i) {
        std::istringstream words((*lines)[i]);
        std::string kind;
        Net net{"", {}, i + 1};
        if (!(words >> kind >> net.name) || kind != "net") continue;
        net.pins.assign(std::istream_iterator<std::string>(words), {});
        netlist.nets.push_back(net);
    }
    return netlist;
}

}  // namespace workbench
