/// @file
/// The mark of what liborvixgsl exports.
#pragma once

#if defined(_WIN32)
#if defined(ORVIX_GSL_BUILDING)
#define ORVIX_GSL_API __declspec(dllexport)
#else
#define ORVIX_GSL_API __declspec(dllimport)
#endif
#else
/// Marks a declaration as exported from the library, and as imported by everybody else.
#define ORVIX_GSL_API __attribute__((visibility("default")))
#endif
