// Compiled patterns that are given back, and what tests ask of them.
#pragma once

#include <orvix/gsl/regular_expressions.h>

#include <cstddef>
#include <cstdlib>
#include <memory>
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

private:
    std::unique_ptr<__gsl_regexp, Free> record_;
};

}  // namespace orvix::test::regexp
