#include "text/regexp_peer.h"

#include "support/regexp_pattern_model.h"

namespace orvix::test::regexp {

struct Peer::State {
    Choice choice;
};

Peer::Peer(const std::string& pattern) : state_(new State{PatternReader(pattern).read()}) {}

Peer::~Peer() = default;

std::optional<Places> Peer::search(const std::string& subject) const {
    return MatchModel(state_->choice, subject).search();
}

}  // namespace orvix::test::regexp
