// The math error flag, as functions with a domain see it.
#pragma once

namespace orvix::gsl::math {

// True once a function has met an argument outside its domain. A plain byte of the process: all threads share it, and
// nothing guards it.
extern constinit bool error_flag;

// What a function returns that meets an argument outside its domain, with the flag set.
template <class Result>
Result error_result(Result result = {}) {
    error_flag = true;
    return result;
}

}  // namespace orvix::gsl::math
