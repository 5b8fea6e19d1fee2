// The chain of open environments, in the order in which they were opened. The first is the master.
#pragma once

#include <orvix/gsl/environment.h>

namespace orvix::gsl::env {

struct Chain {
    eeEnv* master;
    eeEnv* last;
};

extern Chain chain;

// The master, brought up if it does not exist; null without memory.
eeEnv* master_brought_up();

bool is_open(const eeEnv* env);

// Takes an open environment that is not the master out of the chain.
void unlink(const eeEnv* env);

}  // namespace orvix::gsl::env
