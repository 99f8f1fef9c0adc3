// Compares strings without regard to case, and reads numbers off their front. Neighbour: CZelString, whose elements are
// compared so.
//
// Only the letters A to Z and a to z have a case, in every locale; bytes from 128 up are their own, and come after the
// others.
#pragma once

#include <string>

#include "zelbase/platform/ZelBaseApi.h"

// True for texts of equal length that differ at most in case. With a character pointer both texts end at their first zero
// byte, and null is an empty text.
ZELBASE_API bool icompare(const std::string& a, const std::string& b);
ZELBASE_API bool icompare(const std::string& a, const char* b);
ZELBASE_API bool icompare(const char* a, const std::string& b);
ZELBASE_API bool icompare(const char* a, const char* b);

// Strict order of the texts in lower case: a shorter text comes before one that goes on. Greater(a, b) is true when `a` comes
// after `b`, Smaller(a, b) when it comes before.
ZELBASE_API bool Greater(const std::string& a, const std::string& b);
ZELBASE_API bool Smaller(const std::string& a, const std::string& b);

// The number at the front of `text`, behind white space; what follows it does not matter. 0 when there is none. Decimal, with
// a point, whatever the locale; a whole number beyond an int wraps around.
ZELBASE_API double atof(const std::string& text);
ZELBASE_API int atoi(const std::string& text);
