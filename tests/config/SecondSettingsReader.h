// A second reader of settings texts, for tests and fuzzing only. It knows nothing of the library.
#pragma once

#include <map>
#include <string>
#include <vector>

// The rules of the format once more, slow and plain: a second reader to judge the store.
struct SecondSettingsReader {
  std::map<std::string, std::map<std::string, std::string>> sections;
  std::vector<std::string> extra;
  bool headSeen = false;
  std::string current;

  static bool White(char c) { return std::string(" \t\n\v\f\r").find(c) != std::string::npos; }
  static std::string Left(std::string s) {
    while (!s.empty() && White(s[0])) s.erase(0, 1);
    return s;
  }
  static std::string Both(std::string s) {
    s = Left(s);
    while (!s.empty() && White(s[s.size() - 1])) s.erase(s.size() - 1);
    return s;
  }

  explicit SecondSettingsReader(const std::string& text) {
    std::string line;
    for (std::size_t i = 0; i <= text.size(); ++i) {
      const bool last = i == text.size();
      if (last && line.empty()) break;
      if (!last && text[i] != '\n') {
        line += text[i];
        continue;
      }
      if (!last && !line.empty() && line[line.size() - 1] == '\r') line.erase(line.size() - 1);
      Take(line);
      line.clear();
    }
  }

  void Take(const std::string& line) {
    std::string c = line;
    if (!c.empty() && c[0] == ';') c = "";
    if (c.find("//") != std::string::npos) c = c.substr(0, c.find("//"));
    c = Left(c);
    if (!c.empty() && c[0] == '[') {
      const std::size_t end = c.rfind(']');
      current = end == std::string::npos ? "" : Both(c.substr(1, end - 1));
      sections[current];
      headSeen = true;
      return;
    }
    if (!headSeen) {
      extra.push_back(line);
      return;
    }
    const std::size_t equals = c.find('=');
    if (equals == std::string::npos || equals == 0) return;
    sections[current][Both(c.substr(0, equals))] = Both(c.substr(equals + 1));
  }
};
