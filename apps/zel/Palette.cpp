#include "Palette.h"

#include <unistd.h>

#include <cstdlib>
#include <string_view>
#include <vector>

namespace zel {
namespace {

const char* Sequence(Tone tone) {
  switch (tone) {
    case Tone::Added: return "\033[32m";
    case Tone::Changed: return "\033[33m";
    case Tone::Removed: return "\033[31m";
    case Tone::Head: return "\033[1m";
  }
  return "";
}

bool IsSet(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr && *value != '\0';
}

bool IsDumb() {
  const char* const terminal = std::getenv("TERM");
  return terminal != nullptr && std::string_view(terminal) == "dumb";
}

}  // namespace

void Palette::AddOption(CLI::App& app) {
  app.add_option("--color", m_mode, "auto, always or never")
      ->check(CLI::IsMember(std::vector<std::string>{"auto", "always", "never"}))
      ->capture_default_str();
}

std::string Palette::Paint(Tone tone, const std::string& text) const { return Colours() ? Sequence(tone) + text + "\033[0m" : text; }

std::string Palette::Swatch(int red, int green, int blue) const {
  if (!Colours()) return "";
  return "\033[48;2;" + std::to_string(red) + ";" + std::to_string(green) + ";" + std::to_string(blue) + "m    \033[0m ";
}

bool Palette::Colours() const {
  if (m_mode != "auto") return m_mode == "always";
  return isatty(STDOUT_FILENO) == 1 && !IsSet("NO_COLOR") && !IsDumb();
}

}  // namespace zel
