// Lines of positions to try a reader with, ordinary ones and all kinds of broken ones, the same in every run. For the tests of
// this folder only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <random>
#include <string>

class RandomXyzText {
 public:
  explicit RandomXyzText(unsigned int seed) : m_random(seed) {}

  // One line with its end.
  std::string Line() {
    if (Below(30) == 0) return OneOf({"", "  ", "# a comment", "x y z", ",", ";;", "1 2", "\t\t", "#1 2 3", "nan nan nan"}) + End();
    std::string line = OneOf({"", "", "", " ", "\t", "\v"});
    const std::string separator = OneOf({" ", " ", "\t", ",", ";", "  ", " , ", "; "});
    const std::size_t columns = Below(8) == 0 ? Below(6) : 3 + Below(2);
    for (std::size_t i = 0; i < columns; ++i) {
      if (i > 0) line += Below(20) == 0 ? OneOf({",,", " ;", "\r", " "}) : separator;
      line += i == 3 ? Time() : Number();
    }
    if (Below(15) == 0) line += OneOf({",", " ", ",,", " # said so", "#", "\f"});
    return line + End();
  }

  std::string Number() {
    if (Below(60) == 0)
      return OneOf({"", ".", "-", "+", "e5", "1e", "1.2.3", "--1", "+-1", "0x10", "inf", "-nan", "1e999", "1,5", "5a", "'1'"});
    std::string text = OneOf({"", "", "-", "-", "+"});
    text += Digits(Below(25) == 0 ? Below(25) : Below(9));
    if (Below(4) != 0) text += "." + Digits(Below(25) == 0 ? Below(25) : Below(12));
    if (Below(25) == 0) text += OneOf({"e", "E"}) + OneOf({"", "-", "+"}) + Digits(Below(4));
    return text;
  }

  std::string Time() {
    if (Below(2) == 0) return Number();
    std::string text = Digits(4) + "-" + TwoDigits(15) + "-" + TwoDigits(33);
    if (Below(10) == 0) return text;
    text += OneOf({"T", "T", "t"}) + TwoDigits(25) + ":" + TwoDigits(61);
    if (Below(5) != 0) text += ":" + TwoDigits(61);
    if (Below(2) == 0) text += "." + Digits(Below(20));
    return text + OneOf({"", "Z", "z", "+01:00", "-0530", "+11", "+1", "X", "+99:99"});
  }

 private:
  std::size_t Below(std::size_t bound) { return m_random() % bound; }
  std::string OneOf(std::initializer_list<const char*> texts) { return *(texts.begin() + Below(texts.size())); }
  std::string End() { return Below(10) == 0 ? "\r\n" : "\n"; }
  std::string Digits(std::size_t count) {
    std::string text;
    while (text.size() < count) text += static_cast<char>('0' + Below(10));
    return text;
  }
  std::string TwoDigits(std::size_t bound) {
    const std::size_t number = Below(bound);
    return {static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
  }

  std::mt19937 m_random;
};
