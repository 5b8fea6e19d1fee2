/// @file
/// Every family of the library. Programs that use one or two include those headers instead.
#pragma once

#include <orvix/gsl/getenv.h>
#include <orvix/gsl/status.h>
