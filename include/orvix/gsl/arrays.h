/// @file
/// Arrays that grow by doubling, and helpers for plain strings and arrays of them.
///
/// An array is a pointer, the number of elements that it has room for, and for some the number in use, all kept by the
/// caller, who starts with null and 0 and frees the array with `gmem_ee_free`. Elements are bytes that may be moved;
/// those not yet used are zero. Growing may move the array, so that pointers into it do not last.
///
///     void* nets = nullptr;
///     long long used = 0;
///     long long capacity = 0;
///     const long long i = HX_alloc_array_sequentially(&nets, &used, &capacity, sizeof(Net), 100);
///     static_cast<Net*>(nets)[i].width = 0.25;
///
/// An array holds less than 4 GiB; to ask for more fails as an exhausted memory does. The three ways to grow tell
/// failure in three ways: -1, an exception, and false. In all of them everything is then as it was.
///
/// Not synchronised: an array belongs to its caller. No function here touches `GuiErrno`.
#pragma once

#include <orvix/gsl/export.h>

#include <cstddef>

/// Finds a free element, by asking the caller about each from the first on. If none is free the array doubles, and the
/// first new element is the one. It is not marked: the caller makes it one that is not free.
///
/// @param array             address of the array; a null array is made first
/// @param capacity          elements that the array has room for; with 0 the array is made first, whatever it holds
/// @param is_free           called with the array and an index; returns true for a free element, as zeroed ones should
///                          be
/// @param element_size      bytes of an element, above 0
/// @param initial_capacity  elements of an array that is made; 5 if below 1
/// @return the index of the element; -1 without memory
ORVIX_GSL_API long long HX_alloc_array(void** array, long long* capacity,
                                       bool (*is_free)(const void* array, long long index), std::size_t element_size,
                                       long long initial_capacity);

/// Takes the element behind those in use into use. If there is none the array grows to twice those.
///
/// @param array             address of the array; a null array is made first
/// @param used              elements in use, which rises by one; set to 0 if the array is made
/// @param capacity          elements that the array has room for; with 0 the array is made first, whatever it holds
/// @param element_size      bytes of an element, above 0
/// @param initial_capacity  elements of an array that is made; 5 if below 1
/// @return the index of the element
/// @throws std::bad_alloc without memory
ORVIX_GSL_API long long HX_alloc_array_sequentially(void** array, long long* used, long long* capacity,
                                                    std::size_t element_size, long long initial_capacity);

/// Makes sure that an array has room for a number of elements. One that is too small grows to twice that number; one
/// that has to be made has room for exactly that number, and at least 10.
///
/// @param array         address of the array; a null array is made
/// @param capacity      elements that the array has room for; with 0 the array is made, whatever it holds
/// @param element_size  bytes of an element, above 0
/// @param wanted        elements that there is to be room for
/// @return true if there is; false without memory
ORVIX_GSL_API bool HX_alloc_fixed_array(void** array, long long* capacity, std::size_t element_size, long long wanted);

/// Frees an array of strings, each with `gmem_ee_free`, and then the array itself.
///
/// @param array  strings of the `gmem_ee_` family or of `malloc`, null ones among them; null does nothing
/// @param count  how many; with 0 and below the array alone is freed
ORVIX_GSL_API void HX_free_character_array(char** array, long long count);

/// @param s  text to copy; null counts as the empty text
/// @return a copy, to free with `gmem_ee_free`
/// @throws std::bad_alloc without memory
ORVIX_GSL_API char* HX_stringcopy(const char* s);

/// Turns "A" to "Z" into lower case; all other bytes stay, whatever the locale.
///
/// @param s  text to change in place; null gives null
/// @return `s`
ORVIX_GSL_API char* HX_strlwr(char* s);

/// Reads a whole number: white space as in the C locale, a sign or none, and decimal digits up to the first other byte.
///
/// @param s  text to read; null gives 0
/// @return the number; 0 without digits; the nearest that 64 bits hold for one beyond them
ORVIX_GSL_API long long HX_atoll(const char* s);
