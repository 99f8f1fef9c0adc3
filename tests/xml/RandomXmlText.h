// Random XML texts for tests: sound trees as text, the same with a few bytes changed, and heaps of the pieces on which readers
// trip.
#pragma once

#include <cstddef>
#include <random>
#include <string>
#include <string_view>

class RandomXmlText {
 public:
  explicit RandomXmlText(unsigned int seed) : m_random(seed) {}

  std::size_t Below(std::size_t limit) { return m_random() % limit; }

  std::string Sound() {
    std::string text = Below(2) == 0 ? "<?xml version=\"1.0\"?>\r\n" : "";
    AppendElement(text, 4);
    return text;
  }

  std::string Damaged() {
    std::string text = Sound();
    for (std::size_t changes = 1 + Below(3); changes > 0 && !text.empty(); --changes) {
      const std::size_t at = Below(text.size());
      switch (Below(4)) {
        case 0: text.erase(at, 1 + Below(3)); break;
        case 1: text.insert(at, Piece()); break;
        case 2: text[at] = Piece()[0]; break;
        default: text.insert(at, text.substr(Below(text.size()), Below(20))); break;
      }
    }
    return text;
  }

  std::string Heap() {
    std::string text;
    for (std::size_t pieces = Below(24); pieces > 0; --pieces) text += Piece();
    return text;
  }

 private:
  std::string Piece() {
    static constexpr std::string_view kPieces[] = {"<",
                                                   ">",
                                                   "/",
                                                   "=",
                                                   "\"",
                                                   "'",
                                                   "&",
                                                   ";",
                                                   " ",
                                                   "\n",
                                                   "\t",
                                                   "<a>",
                                                   "</a>",
                                                   "<a/>",
                                                   "<b>",
                                                   "</b>",
                                                   "<a b=\"1\">",
                                                   " c=\"2\"",
                                                   "d=\"3\"",
                                                   " e = \"&lt;\"",
                                                   "=\"\"",
                                                   "&amp;",
                                                   "&lt;",
                                                   "&AMP;",
                                                   "&#65;",
                                                   "x",
                                                   " y ",
                                                   "<!--",
                                                   "-->",
                                                   "--",
                                                   "!",
                                                   "<!-->",
                                                   "<!--->",
                                                   "<!---->",
                                                   "<?x?>",
                                                   "</a x=\"1\">",
                                                   "</a/>",
                                                   "<a b=\"1\"/ >",
                                                   "<>",
                                                   "< a>",
                                                   "\f",
                                                   "\v",
                                                   "\xA0",
                                                   std::string_view("\0", 1),
                                                   "<a b='1' c=\"2\">",
                                                   "<a b=\">\">",
                                                   "<a/b c=\"1\"/>"};
    return std::string(kPieces[Below(std::size(kPieces))]);
  }

  std::string Name() { return std::string(1 + Below(2) * Below(20), static_cast<char>('a' + Below(3))); }

  std::string Text() {
    static constexpr std::string_view kTexts[] = {"x", " ", "\n", "&amp;", "&quot;", "\xB0", "&lt;&gt;", "a longer text without end"};
    std::string text;
    for (std::size_t pieces = Below(4); pieces > 0; --pieces) text += kTexts[Below(std::size(kTexts))];
    return text;
  }

  void AppendElement(std::string& text, std::size_t depth) {
    const std::string name = Name();
    text += '<' + name;
    const std::size_t attributes = Below(8) == 0 ? Below(60) : Below(4);
    for (std::size_t i = 0; i < attributes; ++i) text += (Below(4) == 0 ? "\n " : " ") + Name() + "=\"" + Text() + '"';
    if (Below(4) == 0) {
      text += "/>";
      return;
    }
    text += '>' + Text();
    for (std::size_t children = depth == 0 ? 0 : Below(4); children > 0; --children) {
      AppendElement(text, depth - 1);
      if (Below(3) == 0) text += "<!-- a > b -->";
      text += Text();
    }
    text += "</" + name + '>';
  }

  std::mt19937 m_random;
};
