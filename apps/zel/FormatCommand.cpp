#include "FormatCommand.h"

#include <cmath>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "PositionText.h"
#include "SettingsFile.h"
#include "zelbase/frame/GeographicText.h"
#include "zelbase/frame/NumberFormat.h"
#include "zelbase/frame/TimeSpanText.h"

namespace zel {
namespace {

// The codes of FormatGeogs.
constexpr int kLatitude = 10;
constexpr int kLongitude = 11;

struct Style {
  const char* name;
  unsigned int code;
  int extraDecimals;  // a degree more than a minute, a minute more than a second
};
constexpr Style kStyles[] = {{"degrees", 1, 4}, {"minutes", 3, 2}, {"seconds", 7, 0}};

struct Arguments {
  std::vector<std::string> values;
  std::string axis = "auto";
  std::optional<int> decimals;
  std::optional<int> width;
  std::string format;
  bool inFront = false;
  bool plain = false;
  bool noSeconds = false;
};

// ---- coordinates ----

int Axis(const Arguments& arguments, const std::string& argument, double value) {
  if (arguments.axis == "latitude") return kLatitude;
  if (arguments.axis == "longitude") return kLongitude;
  return std::abs(value) > 90 || argument.find_first_of("eEwW") != std::string::npos ? kLongitude : kLatitude;
}

void PrintColumns(const std::string& name, const std::string& text, const std::string& remark) {
  std::cout << "  " << ToColumn(name, 10) << ToColumn(text, remark.empty() ? 0 : 20) << remark << '\n';
}

bool PrintCoordinate(const Arguments& arguments, const std::string& argument) {
  double value = 0.0;
  if (!ReadDegrees(argument, value)) {
    Fail("\"" + argument + "\" is not a coordinate; letters go behind: 52 30 45.5 N");
    return false;
  }
  const int axis = Axis(arguments, argument, value);
  std::cout << argument << '\n';
  for (const Style& style : kStyles) {
    std::string text;
    const int decimals = arguments.decimals.value_or(2) + (arguments.decimals ? 0 : style.extraDecimals);
    if (!FormatGeogs(value, style.code, decimals, axis, text, !arguments.inFront, !arguments.plain)) {
      Fail("\"" + argument + "\" is too large for a coordinate");
      return false;
    }
    double back = 0.0;
    PrintColumns(style.name, text, StringToGeo(text, back) ? "reads back as " + FormatDouble(back, 9) : "");
  }
  std::string text;
  FormatWinFrogGeogs(value, axis, text);
  PrintColumns("WinFrog", text, "");
  return true;
}

int Coordinates(const Arguments& arguments) {
  int exitCode = kDone;
  for (const auto& value : arguments.values) exitCode = PrintCoordinate(arguments, value) ? exitCode : kFoundWrong;
  return exitCode;
}

// ---- spans and numbers ----

int Spans(const Arguments& arguments) {
  for (const auto& argument : arguments.values) {
    double milliseconds = 0.0;
    if (!ToNumber(argument, milliseconds)) return Fail("\"" + argument + "\" is not a number of milliseconds");
    std::cout << TimeSpanToString(milliseconds, !arguments.noSeconds) << '\n';
  }
  return kDone;
}

std::string NumberText(const Arguments& arguments, double value) {
  if (!arguments.format.empty()) return FormatDouble(value, arguments.format);
  if (arguments.width) return FormatDouble(value, *arguments.width, arguments.decimals.value_or(6));
  return arguments.decimals ? FormatDouble(value, *arguments.decimals) : FormatDouble(value);
}

int Numbers(const Arguments& arguments) {
  for (const auto& argument : arguments.values) {
    double value = 0.0;
    if (!ToNumber(argument, value)) return Fail("\"" + argument + "\" is not a number");
    const std::string text = NumberText(arguments, value);
    if (text.empty()) return Fail("\"" + arguments.format + "\" is not a format for one number, such as %8.2f");
    std::cout << text << '\n';
  }
  return kDone;
}

}  // namespace

void AddFormatCommand(CLI::App& program, int& exitCode) {
  CLI::App* const format = program.add_subcommand("format", "Show coordinates, time spans and numbers as the suite writes them");
  format->require_subcommand(1);
  const auto arguments = std::make_shared<Arguments>();

  CLI::App* app = format->add_subcommand("coordinate", "A latitude or longitude in all styles, and read back");
  app->add_option("VALUE", arguments->values, "Decimal degrees, or degrees, minutes and seconds with the letter behind")->required();
  app->add_option("--axis", arguments->axis, "latitude, longitude, or auto: by letter and size")
      ->check(CLI::IsMember(std::vector<std::string>{"auto", "latitude", "longitude"}))
      ->capture_default_str();
  app->add_option("--decimals", arguments->decimals, "Decimals of the last part, 0 to 15")->check(CLI::Range(0, 15));
  app->add_flag("--front", arguments->inFront, "The letter in front");
  app->add_flag("--plain", arguments->plain, "Blanks instead of the symbols for degree, minute and second");
  app->footer("Examples:\n  zel format coordinate 52.5125 \"4°15'30\\\"W\"\n  zel format coordinate -4.25 --axis longitude --front\n");
  app->callback([arguments, &exitCode] { exitCode = Coordinates(*arguments); });

  app = format->add_subcommand("span", "A time span, in milliseconds");
  app->add_option("MILLISECONDS", arguments->values, "The span")->required();
  app->add_flag("--no-seconds", arguments->noSeconds, "Hours and minutes only");
  app->footer("Example:\n  zel format span 90061000     prints 1 days 01:01:01\n");
  app->callback([arguments, &exitCode] { exitCode = Spans(*arguments); });

  app = format->add_subcommand("number", "A number with width and decimals, or by a format");
  app->add_option("VALUE", arguments->values, "The number")->required();
  app->add_option("--width", arguments->width, "Least number of characters; negative for left-aligned");
  app->add_option("--decimals", arguments->decimals, "Digits behind the point");
  app->add_option("--format", arguments->format, "A format with one conversion, such as %8.2f or %e");
  app->footer("Example:\n  zel format number 12.3456 --width 10 --decimals 2\n");
  app->callback([arguments, &exitCode] { exitCode = Numbers(*arguments); });
}

}  // namespace zel
