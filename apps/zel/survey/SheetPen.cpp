#include "survey/SheetPen.h"

#include <cmath>
#include <numbers>

namespace zel {
namespace {

const char* FamilyOf(Face face) { return face == Face::Serif || face == Face::SerifBold ? "DejaVu Serif" : "DejaVu Sans Condensed"; }

cairo_font_weight_t WeightOf(Face face) {
  return face == Face::Bold || face == Face::SerifBold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL;
}

bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

void DropLastCharacter(std::string& text) {
  while (!text.empty() && IsContinuation(text.back())) text.pop_back();
  if (!text.empty()) text.pop_back();
}

// At most so many bytes of the text, none of its characters cut: half a one would end all drawing on a context.
std::string FrontOf(const std::string& text, std::size_t most) {
  while (most < text.size() && most > 0 && IsContinuation(text[most])) --most;
  return text.substr(0, most);
}

}  // namespace

Ink Ink::Of(COLORREF color) {
  return {static_cast<double>(color & 0xFFu) / 255.0, static_cast<double>(color >> 8 & 0xFFu) / 255.0,
          static_cast<double>(color >> 16 & 0xFFu) / 255.0};
}

SheetPen::SheetPen(cairo_t* pen, double unitsPerMillimetre) : m_pen(pen) {
  cairo_save(pen);
  cairo_scale(pen, unitsPerMillimetre, unitsPerMillimetre);
  cairo_set_antialias(pen, CAIRO_ANTIALIAS_DEFAULT);
  cairo_font_options_t* const options = cairo_font_options_create();
  cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
  cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
  cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
  cairo_set_font_options(pen, options);
  cairo_font_options_destroy(options);
}

SheetPen::~SheetPen() { cairo_restore(m_pen); }

void SheetPen::Stroke(double width, const Ink& ink) const {
  cairo_set_source_rgba(m_pen, ink.red, ink.green, ink.blue, ink.cover);
  cairo_set_line_width(m_pen, width);
  cairo_stroke(m_pen);
}

void SheetPen::FillPath(const Ink& ink) const {
  cairo_set_source_rgba(m_pen, ink.red, ink.green, ink.blue, ink.cover);
  cairo_fill(m_pen);
}

void SheetPen::Rule(double x1, double y1, double x2, double y2, double width, const Ink& ink) const {
  cairo_move_to(m_pen, x1, y1);
  cairo_line_to(m_pen, x2, y2);
  Stroke(width, ink);
}

void SheetPen::Box(double x, double y, double width, double height, double lineWidth, const Ink& ink) const {
  cairo_rectangle(m_pen, x, y, width, height);
  Stroke(lineWidth, ink);
}

void SheetPen::Fill(double x, double y, double width, double height, const Ink& ink) const {
  cairo_rectangle(m_pen, x, y, width, height);
  FillPath(ink);
}

void SheetPen::Choose(const TextStyle& style) const {
  cairo_select_font_face(m_pen, FamilyOf(style.face), CAIRO_FONT_SLANT_NORMAL, WeightOf(style.face));
  cairo_set_font_size(m_pen, style.size);
}

double SheetPen::Width(const std::string& text, const TextStyle& style) const {
  Choose(style);
  cairo_text_extents_t extents;
  cairo_text_extents(m_pen, text.c_str(), &extents);
  return extents.x_advance;
}

void SheetPen::Text(double x, double y, const std::string& text, const TextStyle& style) const {
  if (text.empty()) return;
  const double shift = style.align > 0.0 ? style.align * Width(text, style) : 0.0;
  Choose(style);
  cairo_save(m_pen);
  cairo_translate(m_pen, x, y);
  if (style.angle != 0.0) cairo_rotate(m_pen, style.angle * std::numbers::pi / 180.0);
  cairo_set_source_rgba(m_pen, style.ink.red, style.ink.green, style.ink.blue, style.ink.cover);
  cairo_move_to(m_pen, -shift, 0.0);
  cairo_show_text(m_pen, text.c_str());
  cairo_new_path(m_pen);
  cairo_restore(m_pen);
}

void SheetPen::HaloText(double x, double y, const std::string& text, const TextStyle& style, double rim) const {
  const double shift = style.align > 0.0 ? style.align * Width(text, style) : 0.0;
  Choose(style);
  cairo_save(m_pen);
  cairo_translate(m_pen, x, y);
  if (style.angle != 0.0) cairo_rotate(m_pen, style.angle * std::numbers::pi / 180.0);
  cairo_move_to(m_pen, -shift, 0.0);
  cairo_text_path(m_pen, text.c_str());
  cairo_set_line_join(m_pen, CAIRO_LINE_JOIN_ROUND);
  Stroke(2.0 * rim, inks::kPaper.Covering(0.85));
  cairo_restore(m_pen);
  Text(x, y, text, style);
}

std::string SheetPen::Fit(const std::string& text, const TextStyle& style, double width) const {
  if (Width(text, style) <= width) return text;
  std::string front = FrontOf(text, 400);
  while (!front.empty() && Width(front + "\u2026", style) > width) DropLastCharacter(front);
  return front + "\u2026";
}

std::vector<std::string> SheetPen::Wrap(const std::string& text, const TextStyle& style, double width, std::size_t lines) const {
  std::vector<std::string> wrapped;
  std::string line;
  std::string rest = FrontOf(text, 2000);
  while (!rest.empty()) {
    const std::size_t blank = rest.find(' ');
    const std::string word = rest.substr(0, blank);
    rest.erase(0, blank == std::string::npos ? blank : blank + 1);
    const std::string longer = line.empty() ? word : line + ' ' + word;
    if (line.empty() || wrapped.size() + 1 >= lines || Width(longer, style) <= width) {
      line = longer;
    } else {
      wrapped.push_back(line);
      line = word;
    }
  }
  if (!line.empty()) wrapped.push_back(line);
  for (std::string& each : wrapped) each = Fit(each, style, width);
  return wrapped;
}

}  // namespace zel
