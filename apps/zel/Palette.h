// Colours for a listing on a terminal; plain text everywhere else.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace zel {

// What a piece of a listing means, which decides its colour.
enum class Tone { Added, Changed, Removed, Head };

// "auto" colours on a terminal, unless the environment says NO_COLOR or the terminal is "dumb"; "always" and "never" do
// as they say.
class Palette {
 public:
  // Adds the option --color to `app`.
  void AddOption(CLI::App& app);

  std::string Paint(Tone tone, const std::string& text) const;

  // A piece of the colour itself with a blank behind it; empty where there are no colours.
  std::string Swatch(int red, int green, int blue) const;

 private:
  bool Colours() const;

  std::string m_mode = "auto";
};

}  // namespace zel
