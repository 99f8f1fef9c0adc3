// A second reader and writer of XML text, for tests and fuzzing: character by character after the rules alone, slow and plain,
// with a tree of its own. Nothing of the library goes into it but the element it is compared with.
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <utility>
#include <vector>

#include "zelbase/xml/XmlElement.h"

struct LiteralXml {
  std::string name;
  std::string text;
  std::vector<std::pair<std::string, std::string>> attributes;
  std::vector<LiteralXml> elements;
};

inline bool IsSame(const XmlElement& element, const LiteralXml& literal) {
  if (element.Name() != literal.name || element.Text() != literal.text) return false;
  if (element.AttributeCount() != literal.attributes.size() || element.ElementCount() != literal.elements.size()) return false;
  for (std::size_t i = 0; i < literal.attributes.size(); ++i) {
    std::string name, value;
    element.GetAttributeByIndex(static_cast<unsigned int>(i), name, value);
    if (name != literal.attributes[i].first || value != literal.attributes[i].second) return false;
  }
  for (std::size_t i = 0; i < literal.elements.size(); ++i) {
    if (!IsSame(element.GetElementByIndex(static_cast<unsigned int>(i)), literal.elements[i])) return false;
  }
  return true;
}

class LiteralXmlReader {
 public:
  // The answer of the reading; `root` becomes what it leaves.
  static bool Read(const std::string& data, LiteralXml& root) {
    root = LiteralXml{};
    LiteralXmlReader reader(data, root);
    std::string tag;
    while (reader.FindNextTag(tag)) {
      if (reader.ParseTag(tag)) continue;
      root = LiteralXml{};
      return false;
    }
    return true;
  }

  static bool ReplaceEntityRefs(std::string& text) {
    std::string replaced;
    for (std::size_t i = 0; i < text.size();) {
      if (text[i] != '&') {
        replaced += text[i++];
        continue;
      }
      std::string name;
      std::size_t end = i + 1;
      while (end < text.size() && text[end] != ';') name += text[end++];
      if (end == text.size()) return false;
      if (name == "quot") {
        replaced += '"';
      } else if (name == "amp") {
        replaced += '&';
      } else if (name == "apos") {
        replaced += '\'';
      } else if (name == "lt") {
        replaced += '<';
      } else if (name == "gt") {
        replaced += '>';
      } else {
        return false;
      }
      i = end + 1;
    }
    text = replaced;
    return true;
  }

 private:
  LiteralXmlReader(const std::string& data, LiteralXml& root) : m_data(data), m_root(root) {}

  static bool IsWhite(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

  bool GetNextChar(char& c) {
    if (m_cursor == m_data.size()) return false;
    c = m_data[m_cursor++];
    return true;
  }

  bool FindNextTag(std::string& tag) {
    std::string text;
    char c = 0;
    for (;;) {
      if (!GetNextChar(c)) return false;
      if (c == '<') break;
      text += c;
    }
    if (!ReplaceEntityRefs(text)) return false;
    bool onlyWhite = true;
    for (const char each : text) onlyWhite = onlyWhite && IsWhite(each);
    if (!m_stack.empty() && !onlyWhite) {
      LiteralXml& top = *m_stack.back();
      if (top.text.empty() && top.elements.empty()) {
        top.text = text;
      } else {
        LiteralXml child;
        child.text = text;
        top.elements.push_back(child);
      }
    }
    tag.clear();
    for (;;) {
      if (!GetNextChar(c)) return false;
      if (c != '>') {
        tag += c;
        continue;
      }
      const bool comment = tag.substr(0, 3) == "!--";
      if (!comment || (tag.size() >= 5 && tag.substr(tag.size() - 2) == "--")) return true;
      tag += c;
    }
  }

  bool ParseTag(const std::string& tag) {
    if (tag.empty()) return false;
    if (tag[0] == '?' || tag[0] == '!') return true;
    std::string name;
    for (std::size_t i = tag[0] == '/' ? 1 : 0; i < tag.size() && tag[i] != '/' && !IsWhite(tag[i]); ++i) name += tag[i];
    if (name.empty()) return false;
    if (tag[0] == '/') {
      if (m_stack.empty() || m_stack.back()->name != name) return false;
      m_stack.pop_back();
      return true;
    }
    LiteralXml* element = &m_root;
    if (!m_stack.empty()) {
      m_stack.back()->elements.push_back(LiteralXml{});
      element = &m_stack.back()->elements.back();
    } else if (!m_root.name.empty()) {
      return false;
    }
    element->name = name;
    m_stack.push_back(element);
    if (!ParseAttributes(tag, *element)) return false;
    if (tag[tag.size() - 1] == '/') m_stack.pop_back();
    return true;
  }

  static bool ParseAttributes(const std::string& tag, LiteralXml& element) {
    std::size_t total = 0;
    std::size_t equals = tag.find('=');
    while (equals != std::string::npos) {
      const std::size_t last = equals == 0 ? std::string::npos : tag.find_last_not_of(" \t\r\n", equals - 1);
      if (last == std::string::npos) return false;
      const std::size_t white = last == 0 ? std::string::npos : tag.find_last_of(" \t\r\n", last - 1);
      if (white == std::string::npos) return false;
      const std::string name = tag.substr(white + 1, last - white);
      total += name.size();
      if (total > 64u * 1024 * 1024) return false;
      const std::size_t first = tag.find('"', equals + 1);
      if (first == std::string::npos) return false;
      const std::size_t second = tag.find('"', first + 1);
      if (second == std::string::npos) return false;
      std::string value = tag.substr(first + 1, second - first - 1);
      if (!ReplaceEntityRefs(value)) return false;
      bool replaced = false;
      for (auto& attribute : element.attributes) {
        if (attribute.first != name || replaced) continue;
        attribute.second = value;
        replaced = true;
      }
      if (!replaced) element.attributes.emplace_back(name, value);
      equals = tag.find('=', second + 1);
    }
    return true;
  }

  const std::string& m_data;
  LiteralXml& m_root;
  std::deque<LiteralXml*> m_stack;
  std::size_t m_cursor = 0;
};

class LiteralXmlWriter {
 public:
  // What is written for a root with a name.
  static std::string Write(const LiteralXml& root) { return "<?xml version=\"1.0\"?>" + Element(root, 1) + "\r\n"; }

 private:
  static std::string References(const std::string& text) {
    std::string out;
    for (const char c : text) {
      switch (c) {
        case '"': out += "&quot;"; break;
        case '&': out += "&amp;"; break;
        case '\'': out += "&apos;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        default: out += c;
      }
    }
    return out;
  }

  static std::string Element(const LiteralXml& element, std::size_t level) {
    std::string out;
    if (level != 0) out += "\r\n" + std::string(level - 1, '\t');
    out += "<" + element.name;
    for (const auto& [name, value] : element.attributes) out += " " + name + "=\"" + References(value) + "\"";
    if (element.text.empty() && element.elements.empty()) return out + "/>";
    out += ">";
    bool pretty = level != 0 && element.text.empty();
    for (const LiteralXml& child : element.elements) pretty = pretty && !child.name.empty();
    out += References(element.text);
    for (const LiteralXml& child : element.elements) {
      out += child.name.empty() ? References(child.text) : Element(child, pretty ? level + 1 : 0);
    }
    if (pretty) out += "\r\n" + std::string(level - 1, '\t');
    return out + "</" + element.name + ">";
  }
};
