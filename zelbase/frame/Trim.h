// Takes one given character off the ends of a text, in place. Neighbour: CZelString, which trims its elements of white space.
#pragma once

#include <string>

#include "zelbase/platform/ZelBaseApi.h"

// Each removes the character `c`, and no other, from the left, from the right or from both sides, however often it stands
// there. The character 0 removes nothing. Not white space in general: a tab before a blank stops the trimming of blanks.

// On a zero-terminated array, which is also the result. Null stays null.
ZELBASE_API char* trimleft(char* text, char c);
ZELBASE_API char* trimright(char* text, char c);
ZELBASE_API char* trim(char* text, char c);

// On a string, which is also the result.
ZELBASE_API std::string& trimleft(std::string& text, char c);
ZELBASE_API std::string& trimright(std::string& text, char c);
ZELBASE_API std::string& trim(std::string& text, char c);
