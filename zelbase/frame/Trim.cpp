#include "zelbase/frame/Trim.h"

#include <cstring>

#include "zelbase/platform/detail/IntendedWraps.h"

char* trimleft(char* text, char c) {
  if (text == nullptr || c == '\0') return text;
  const char* first = text;
  while (*first == c) ++first;
  if (first != text) std::memmove(text, first, std::strlen(first) + 1);
  return text;
}

char* trimright(char* text, char c) {
  if (text == nullptr || c == '\0') return text;
  char* end = text + std::strlen(text);
  while (end != text && end[-1] == c) --end;
  *end = '\0';
  return text;
}

char* trim(char* text, char c) { return trimleft(trimright(text, c), c); }

std::string& trimleft(std::string& text, char c) {
  if (c != '\0') text.erase(0, text.find_first_not_of(c));
  return text;
}

ZELBASE_WRAPS std::string& trimright(std::string& text, char c) {
  if (c != '\0') text.erase(text.find_last_not_of(c) + 1);
  return text;
}

std::string& trim(std::string& text, char c) { return trimleft(trimright(text, c), c); }
