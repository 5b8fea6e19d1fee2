// An owner of open streams.
#pragma once

#include <cstdio>
#include <memory>

namespace orvix::gsl::env {

struct CloseStream {
    void operator()(std::FILE* stream) const { std::fclose(stream); }
};

using Stream = std::unique_ptr<std::FILE, CloseStream>;

}  // namespace orvix::gsl::env
