// A regular expression of another make: PCRE2, whose language holds this one but for a few spellings, and where there
// is no PCRE2 for the host the plain model.
#pragma once

#include "support/regexp_match_model.h"

#include <memory>
#include <optional>
#include <string>

namespace orvix::test::regexp {

class Peer {
public:
    explicit Peer(const std::string& pattern);
    ~Peer();
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    // @throw TooLong
    std::optional<Places> search(const std::string& subject) const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace orvix::test::regexp
