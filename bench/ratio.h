// What every benchmark program shares: a main that runs all cases several times in random order, and a closing table of
// ratios between the library and its peers.
//
// A benchmark is named "case/ours" or "case/PEER", e.g. "get/1000/ours" beside "get/1000/GKeyFile". The table compares
// medians of processor time, ours over the peer's: below 1 the library is the faster one. The figures are ratios of one
// run in one process; the times themselves depend on the machine.
#pragma once

#include <string>

namespace orvix::bench {

// Sets the ratio that a case is to stay below, shown beside it in the table. The result serves as an initialiser:
//     const bool bars = bar("get/1000", "GKeyFile", 1.0) && bar("get/50", "GKeyFile", 0.5);
bool bar(const std::string& name, const std::string& peer, double limit);

// Sets the version of a peer, shown in the table.
bool peer_version(const std::string& peer, const std::string& version);

}  // namespace orvix::bench
