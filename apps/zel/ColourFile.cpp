#include "ColourFile.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <vector>

#include "ColourText.h"
#include "FieldText.h"
#include "OutputFile.h"
#include "SettingsFile.h"

namespace zel {
namespace {

enum class Form { Suite, Cpt, Gdal };

Form FormOf(const std::string& path) {
  const std::string ending = std::filesystem::path(path).extension().string();
  if (ending == ".cpt") return Form::Cpt;
  return ending == ".txt" ? Form::Gdal : Form::Suite;
}

std::string Number(double value) {
  char buffer[40];
  return std::string(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
}

std::string Channels(COLORREF color) {
  return std::to_string(RedOf(color)) + " " + std::to_string(GreenOf(color)) + " " + std::to_string(BlueOf(color));
}

COLORREF Between(COLORREF low, COLORREF high, double share) {
  const auto channel = [share](int a, int b) { return a + static_cast<int>(std::lround(share * (b - a))); };
  return MakeColour(channel(RedOf(low), RedOf(high)), channel(GreenOf(low), GreenOf(high)), channel(BlueOf(low), BlueOf(high)));
}

// ---- palettes of the Generic Mapping Tools ----

class CptReader {
 public:
  explicit CptReader(int steps) : m_steps(steps) {}

  bool Line(std::string_view line) {
    if (line.find("COLOR_MODEL") != std::string_view::npos) m_hsv = line.find("HSV") != std::string_view::npos;
    line = line.substr(0, line.find(';'));
    if (IsEmpty(line) || line.front() == '#') return true;
    std::string_view rest = line;
    const std::string_view word = TakeWord(rest);
    if (word == "B") return TakeColour(rest, m_below);
    if (word == "F") return TakeColour(rest, m_above);
    if (word == "N") return true;
    return Slice(line);
  }

  void Fill(ColorTable& table) const {
    for (const Entry& entry : m_entries) table.AddEntry(entry.value, entry.color, false, "");
    if (m_entries.empty()) return;
    table.SetLowColor(m_below.value_or(m_entries.front().color));
    if (m_above) table.AddEntry(m_end, *m_above, false, "");
  }

  bool Empty() const { return m_entries.empty(); }

 private:
  struct Entry {
    double value;
    COLORREF color;
  };

  // value colour value colour; an annotation letter behind it does not matter.
  bool Slice(std::string_view rest) {
    double from = 0.0, to = 0.0;
    std::optional<COLORREF> low, high;
    if (!TakeNumber(rest, from) || !TakeColour(rest, low) || !TakeNumber(rest, to) || !TakeColour(rest, high)) return false;
    const int steps = *low == *high ? 1 : m_steps;
    for (int i = 0; i < steps; ++i) m_entries.push_back({from + i * (to - from) / steps, Between(*low, *high, (i + 0.5) / steps)});
    m_end = to;
    return true;
  }

  // One word with separators of its own or a name, or three numbers; one number alone is a grey.
  bool TakeColour(std::string_view& rest, std::optional<COLORREF>& color) {
    std::string_view behind = rest;
    const std::string_view word = TakeWord(behind);
    COLORREF named = 0;
    if (ToColour(word, named)) {
      color = named;
      rest = behind;
      return true;
    }
    if (FromHsvWord(word, color)) {
      rest = behind;
      return true;
    }
    return TakeNumbers(rest, color);
  }

  // "H-S-V".
  static bool FromHsvWord(std::string_view word, std::optional<COLORREF>& color) {
    if (std::count(word.begin(), word.end(), '-') != 2) return false;
    std::string spaced(word);
    std::replace(spaced.begin(), spaced.end(), '-', ' ');
    std::string_view rest = spaced;
    double h = 0.0, s = 0.0, v = 0.0;
    if (!TakeNumber(rest, h) || !TakeNumber(rest, s) || !TakeNumber(rest, v)) return false;
    color = ColorTable::HSVtoRGB(std::fmod(h, 360.0), s, v);
    return true;
  }

  bool TakeNumbers(std::string_view& rest, std::optional<COLORREF>& color) const {
    double a = 0.0, b = 0.0, c = 0.0;
    if (!TakeNumber(rest, a)) return false;
    std::string_view behind = rest;
    if (!TakeNumber(behind, b) || !TakeNumber(behind, c)) {
      color = MakeColour(ToByte(a), ToByte(a), ToByte(a));
      return true;
    }
    rest = behind;
    color = m_hsv ? ColorTable::HSVtoRGB(std::fmod(a, 360.0), b, c) : MakeColour(ToByte(a), ToByte(b), ToByte(c));
    return true;
  }

  static int ToByte(double value) { return static_cast<int>(std::lround(std::clamp(value, 0.0, 255.0))); }

  int m_steps;
  bool m_hsv = false;
  std::vector<Entry> m_entries;
  std::optional<COLORREF> m_below, m_above;
  double m_end = 0.0;
};

std::string CptText(const ColorTable& table) {
  std::ostringstream out;
  out << "# Colour table, a step a slice\n# COLOR_MODEL = RGB\n";
  const int last = table.NumEntries() - 1;
  for (int i = 0; i < last; ++i) {
    const std::string color = Channels(table.EntryColor(i));
    out << Number(table.EntryValue(i)) << '\t' << color << '\t' << Number(table.EntryValue(i + 1)) << '\t' << color << '\n';
  }
  out << "B\t" << Channels(table.LowColor()) << "\nF\t" << Channels(last < 0 ? table.LowColor() : table.EntryColor(last)) << '\n';
  return out.str();
}

// ---- colour text of GDAL ----

class GdalReader {
 public:
  bool Line(std::string_view line) {
    if (IsEmpty(line) || line.front() == '#') return true;
    std::string_view rest = line;
    const bool low = TakeWord(rest) == "nv";
    double value = 0.0;
    if (!low) {
      rest = line;
      if (!TakeNumber(rest, value)) return false;
    }
    COLORREF color = 0;
    if (!TakeChannels(rest, color)) return false;
    if (low) m_low = color;
    else m_entries.emplace_back(value, color);
    return true;
  }

  // The file may stand in any order.
  void Fill(ColorTable& table) {
    std::stable_sort(m_entries.begin(), m_entries.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    for (const auto& [value, color] : m_entries) table.AddEntry(value, color, false, "");
    table.SetLowColor(m_low);
  }

  bool Empty() const { return m_entries.empty(); }

 private:
  static bool TakeChannels(std::string_view rest, COLORREF& color) {
    double red = 0.0, green = 0.0, blue = 0.0;
    if (!TakeNumber(rest, red) || !TakeNumber(rest, green) || !TakeNumber(rest, blue)) return false;
    for (const double channel : {red, green, blue}) {
      if (channel < 0 || channel > 255) return false;
    }
    color = MakeColour(static_cast<int>(red), static_cast<int>(green), static_cast<int>(blue));
    return true;
  }

  std::vector<std::pair<double, COLORREF>> m_entries;
  COLORREF m_low = LOWCOLOR_DEFAULT;
};

std::string GdalText(const ColorTable& table) {
  std::ostringstream out;
  out << "nv " << Channels(table.LowColor()) << '\n';
  for (int i = 0; i < table.NumEntries(); ++i) out << Number(table.EntryValue(i)) << ' ' << Channels(table.EntryColor(i)) << '\n';
  return out.str();
}

// ---- any of them ----

template <class Reader>
bool OpenText(const std::string& path, Reader reader, ColorTable& table, std::string& reason) {
  std::ifstream stream(path);
  if (!std::filesystem::is_regular_file(path) || !stream) {
    reason = "cannot open \"" + path + "\"";
    return false;
  }
  PassMark(stream);
  long long number = 0;
  for (std::string line; std::getline(stream, line);) {
    ++number;
    if (reader.Line(line)) continue;
    reason = path + ":" + std::to_string(number) + ": not a colour: \"" + ToTerminal(line, DetectEncoding(line)) + "\"";
    return false;
  }
  if (reader.Empty()) {
    reason = "\"" + path + "\" has no colours";
    return false;
  }
  reader.Fill(table);
  return true;
}

bool OpenSuiteTable(const std::string& path, ColorTable& table, std::string& reason) {
  SettingsFile file;
  if (!file.Open(path, reason)) return false;
  if (!file.store.HasSection("Colors")) {
    reason = "\"" + path + "\" has no colour table: there is no section [Colors]";
    return false;
  }
  if (table.FileOpen(file.store)) return true;
  const std::string key = std::to_string(table.NumEntries());
  reason = path + ": the value \"" + key + "\" has no colour of three numbers in [Colors]";
  return false;
}

bool SaveText(const std::string& path, const std::string& text) {
  OutputFile file(path);
  file.Write(text);
  return file.Finish();
}

bool SaveSuiteTable(const std::string& path, const ColorTable& table) {
  FileObject store;
  return table.FileSave(store) && store.FileSaveReplacing(ToSuitePath(path));
}

}  // namespace

bool OpenColourFile(const std::string& path, int steps, ColorTable& table, std::string& reason) {
  switch (FormOf(path)) {
    case Form::Cpt: return OpenText(path, CptReader(steps), table, reason);
    case Form::Gdal: return OpenText(path, GdalReader(), table, reason);
    case Form::Suite: return OpenSuiteTable(path, table, reason);
  }
  return false;
}

bool SaveColourFile(const std::string& path, const ColorTable& table, std::string& reason) {
  const Form form = FormOf(path);
  const bool saved = form == Form::Cpt    ? SaveText(path, CptText(table))
                     : form == Form::Gdal ? SaveText(path, GdalText(table))
                                          : SaveSuiteTable(path, table);
  if (!saved) reason = "cannot write \"" + path + "\"";
  return saved;
}

}  // namespace zel
