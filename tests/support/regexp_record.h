// Compiled patterns that are given back, and what tests ask of them.
#pragma once

#include "support/regexp_match_model.h"

#include <orvix/gsl/regular_expressions.h>

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

namespace orvix::test::regexp {

struct Free {
    void operator()(void* block) const { std::free(block); }
};

class Record {
public:
    explicit Record(const std::string& pattern) : record_(gsl_regcomp(pattern.c_str())) {}
    explicit Record(__gsl_regexp* record) : record_(record) {}

    __gsl_regexp* get() const { return record_.get(); }
    __gsl_regexp* operator->() const { return record_.get(); }

    // As long as its chain of alternatives and the end tell.
    std::string program() const {
        const unsigned char* node = record_->program + 1;
        while (*node != 0) node += node[1] * 256 + node[2];
        return {reinterpret_cast<const char*>(record_->program), reinterpret_cast<const char*>(node + 3)};
    }

    std::string required() const {
        return record_->regmust == nullptr ? ""
                                           : std::string(record_->regmust, static_cast<std::size_t>(record_->regmlen));
    }

    std::optional<Places> search(const std::string& subject) const { return search(subject.c_str()); }
    std::optional<Places> search(const char* subject) const {
        if (gsl_regexec(get(), subject) == 0) return std::nullopt;
        Places places;
        for (std::size_t i = 0; i < places.size(); ++i) {
            if (record_->startp[i] == nullptr) continue;
            places.at(i) = {static_cast<std::size_t>(record_->startp[i] - subject),
                            static_cast<std::size_t>(record_->endp[i] - subject)};
        }
        return places;
    }

private:
    std::unique_ptr<__gsl_regexp, Free> record_;
};

}  // namespace orvix::test::regexp
