#pragma once
namespace orvix::gsl::text::regexp {
struct Finder {};
}  // namespace orvix::gsl::text::regexp
