// A slow reader of coordinates, for tests that compare StringToGeo with it.
#pragma once

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

#include "zelbase/frame/CZelString.h"

// The definition word by word, with the list that it names.
inline bool ReadByList(std::string text, double& value) {
  value = 0;
  char hemisphere = 'x';
  const auto letter = text.find_first_of("eEnNsSwW");
  if (letter != std::string::npos) {
    hemisphere = text[letter];
    text.erase(letter);
  }
  const char* const kSpace = "\t\n\v\f\r ";
  text.erase(0, std::min(text.find_first_not_of(kSpace), text.size()));
  text.erase(text.find_last_not_of(kSpace) + 1);
  for (char& c : text) {
    if (std::string_view("0123456789.").find(c) == std::string_view::npos) c = ' ';
  }
  CZelString list(text, ',', true);
  list.SetSeparator(' ');
  double degrees = 0;
  double minutes = 0;
  double seconds = 0;
  if (!list.GetItem(0, degrees)) return false;
  if (list.GetItem(1, minutes)) list.GetItem(2, seconds);
  value = std::fabs(minutes) / 60 + std::fabs(degrees) + std::fabs(seconds) / 3600;
  if (std::string_view("sSwW").find(hemisphere) != std::string_view::npos) value = -value;
  return true;
}
