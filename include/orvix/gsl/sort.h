/// @file
/// A sort whose result and comparisons are the same on every system.
#pragma once

#include <orvix/gsl/export.h>

#include <cstddef>

/// Sorts an array in place. Not stable, but fully determined: the same elements and the same answers of `compare` give
/// the same order, equal elements included, and the same calls of `compare`, in the same order, on every system.
///
/// The method is quicksort with three-way partitioning, which is fast on random, sorted and reversed input and on input
/// with many equal elements. As with every quicksort that does not guess, some orders cost time that grows with the
/// square of `count`.
///
/// `compare` is declared without arguments and called with pointers to two elements of the array, as
/// `int (*)(const void*, const void*)`; the function must be of that type. Its result is negative if the first element
/// comes before the second, positive if it comes after, and 0 if they are equal. Answers that contradict each other
/// give some order of the elements and harm nothing. It may throw or jump away, which leaves all elements in the array
/// in some order.
///
///     int by_weight(const void* a, const void* b);
///     // Through void (*)(), the one function type that compilers let stand for all others without a warning.
///     gsl_qsort(base, count, size, reinterpret_cast<int (*)()>(reinterpret_cast<void (*)()>(by_weight)));
///
/// Re-entrant: nothing is shared between calls. The call stack does not grow with the input, and no memory is allocated
/// before 128 parts of the array wait for their turn, which takes an order made to that end. Should memory then be
/// refused, the result is the same but `compare` is called in another order.
///
/// @param base     first element, of any alignment; only `compare` asks for one. Null is left alone.
/// @param count    number of elements; of 0 or 1 `compare` is not called
/// @param size     bytes an element; 0 leaves the array alone. `count * size` bytes are read and written.
/// @param compare  order of two elements; null leaves the array alone
ORVIX_GSL_API void gsl_qsort(char* base, std::size_t count, std::size_t size, int (*compare)());
