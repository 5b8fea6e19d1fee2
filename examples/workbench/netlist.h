// The netlist of a board: a file of lines `net NAME PIN...`, a star behind each pin that drives its net.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace workbench {

struct Net {
    std::string name;
    std::vector<std::string> pins;  // "U1.6" or "U1.6*"
    std::size_t line;               // of the file, from 1

    bool has_driver() const;
};

struct Netlist {
    std::vector<Net> nets;

    std::size_t pin_count() const;
    std::size_t component_count() const;  // what stands before the dot of a pin, each counted once
};

// None if the file cannot be read. Lines of other kinds are passed over. The name is in the library's form.
std::optional<Netlist> read_netlist(const std::string& file);

}  // namespace workbench
