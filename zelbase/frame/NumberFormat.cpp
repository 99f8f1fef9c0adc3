#include "zelbase/frame/NumberFormat.h"

#include <algorithm>
#include <cstdlib>

#include "zelbase/frame/detail/NumberText.h"
#include "zelbase/frame/detail/PrintfText.h"

using zelbase::detail::AppendInt;
using zelbase::detail::PrintfForm;

namespace {

constexpr int kMostDecimals = 350;
constexpr int kMostWidth = 4096;

void SetWidth(PrintfForm& form, int width) {
  form.left = width < 0;
  form.width = std::abs(std::clamp(width, -kMostWidth, kMostWidth));
}

void SetDecimals(PrintfForm& form, int decimals) { form.precision = std::clamp(decimals, 0, kMostDecimals); }

template <class Number>
std::string Printed(const PrintfForm& form, Number value) {
  std::string text;
  zelbase::detail::AppendPrintf(text, form, value);
  return text;
}

}  // namespace

std::string GetFormatStringDouble() { return "%f"; }

std::string GetFormatStringDouble(int decimals) {
  std::string format = "%.";
  AppendInt(format, decimals);
  return format += 'f';
}

std::string GetFormatStringDouble(int width, int decimals) {
  std::string format = "%";
  AppendInt(format, width);
  format += '.';
  AppendInt(format, decimals);
  return format += 'f';
}

std::string GetFormatStringInt() { return "%d"; }

std::string GetFormatStringInt(int width) {
  std::string format = "%";
  AppendInt(format, width);
  return format += 'd';
}

std::string FormatDouble(double value) { return Printed({.kind = 'f'}, value); }

std::string FormatDouble(double value, int decimals) {
  PrintfForm form{.kind = 'f'};
  SetDecimals(form, decimals);
  return Printed(form, value);
}

std::string FormatDouble(double value, int width, int decimals) {
  PrintfForm form{.kind = 'f'};
  SetWidth(form, width);
  SetDecimals(form, decimals);
  return Printed(form, value);
}

std::string FormatDouble(double value, const std::string& format) { return zelbase::detail::PrintfText(format, value); }

std::string FormatInt(int value) { return Printed({.kind = 'd'}, value); }

std::string FormatInt(int value, int width) {
  PrintfForm form{.kind = 'd'};
  SetWidth(form, width);
  return Printed(form, value);
}

std::string FormatInt(int value, const std::string& format) { return zelbase::detail::PrintfText(format, value); }
