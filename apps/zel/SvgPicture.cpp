#include "SvgPicture.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <limits>
#include <sstream>

#include "SettingsFile.h"

namespace zel {
namespace {

constexpr double kWidth = 1000.0;
constexpr double kMargin = 70.0;
constexpr double kHead = 50.0;
constexpr double kLegendRow = 24.0;
constexpr int kGridLines = 6;

std::string Number(double value) {
  char buffer[40];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, 2).ptr;
  std::string text(buffer, end);
  while (text.back() == '0') text.pop_back();
  if (text.back() == '.') text.pop_back();
  return text == "-0" ? "0" : text;
}

std::string Escaped(const std::string& text) {
  std::string result;
  for (const char c : text) {
    if (c == '&') result += "&amp;";
    else if (c == '<') result += "&lt;";
    else if (c == '>') result += "&gt;";
    else if (c == '"') result += "&quot;";
    else result += c;
  }
  return result;
}

bool IsFinite(const Place& place) { return std::isfinite(place.x) && std::isfinite(place.y); }

// The step of 1, 2 or 5 times a power of ten that gives about kGridLines over `range`.
double GridStep(double range) {
  const double rough = range / kGridLines;
  const double power = std::pow(10.0, std::floor(std::log10(rough)));
  for (const double factor : {1.0, 2.0, 5.0}) {
    if (factor * power >= rough) return factor * power;
  }
  return 10.0 * power;
}

std::string Attributes(const Ink& ink) {
  std::string text = "fill=\"" + ink.fill + "\" stroke=\"" + ink.stroke + "\" stroke-width=\"" + Number(ink.width) + "\"";
  if (!ink.dashes.empty()) text += " stroke-dasharray=\"" + ink.dashes + "\"";
  return text;
}

}  // namespace

struct SvgPicture::Box {
  double left = 0.0, bottom = 0.0, right = 0.0, top = 0.0;

  double Range() const { return std::max(right - left, top - bottom); }
};

// From world to picture, the same scale in x and y.
class SvgPicture::Frame {
 public:
  explicit Frame(const Box& box) {
    const double rim = 0.05 * std::max(box.Range(), 1e-9);
    m_left = box.left - rim;
    m_bottom = box.bottom - rim;
    m_right = box.right + rim;
    m_top = box.top + rim;
    m_scale = (kWidth - 2 * kMargin) / (m_right - m_left);
    const double tallest = 1400.0;
    if ((m_top - m_bottom) * m_scale > tallest) m_scale = tallest / (m_top - m_bottom);
  }

  double X(double x) const { return kMargin + (x - m_left) * m_scale; }
  double Y(double y) const { return kHead + (m_top - y) * m_scale; }
  double Height() const { return (m_top - m_bottom) * m_scale; }

  std::string Path(const Places& places, bool closed) const {
    std::string path;
    for (const Place& place : places) {
      if (IsFinite(place)) path += (path.empty() ? "M" : "L") + Number(X(place.x)) + "," + Number(Y(place.y)) + " ";
    }
    return path.empty() || !closed ? path : path + "Z ";
  }

  void Grid(std::ostream& out) const {
    out << "<rect x=\"" << Number(X(m_left)) << "\" y=\"" << Number(Y(m_top)) << "\" width=\"" << Number((m_right - m_left) * m_scale)
        << "\" height=\"" << Number(Height()) << "\" fill=\"#fbfcfd\" stroke=\"#8797a5\"/>\n";
    const double width = m_right - m_left, height = m_top - m_bottom;
    double step = GridStep(std::max(width, height / 3));
    for (double n = std::ceil(m_left / step); n * step <= m_right; ++n) {
      Stroke(out, X(n * step), Y(m_bottom), X(n * step), Y(m_top));
      out << "<text x=\"" << Number(X(n * step)) << "\" y=\"" << Number(Y(m_bottom) + 18) << "\" text-anchor=\"middle\">"
          << Number(n * step) << "</text>\n";
    }
    step = GridStep(std::max(height, width / 3));
    for (double n = std::ceil(m_bottom / step); n * step <= m_top; ++n) {
      Stroke(out, X(m_left), Y(n * step), X(m_right), Y(n * step));
      out << "<text x=\"" << Number(X(m_left) - 6) << "\" y=\"" << Number(Y(n * step) + 4) << "\" text-anchor=\"end\">" << Number(n * step)
          << "</text>\n";
    }
  }

 private:
  static void Stroke(std::ostream& out, double x1, double y1, double x2, double y2) {
    out << "<path d=\"M" << Number(x1) << ',' << Number(y1) << " L" << Number(x2) << ',' << Number(y2)
        << "\" stroke=\"#dfe6ec\" stroke-width=\"1\"/>\n";
  }

  double m_left = 0.0, m_bottom = 0.0, m_right = 1.0, m_top = 1.0, m_scale = 1.0;
};

void SvgPicture::Line(const Places& places, const Ink& ink) { m_shapes.push_back({Kind::Line, {places}, ink, {}}); }

void SvgPicture::Area(const std::vector<Places>& rings, const Ink& ink) { m_shapes.push_back({Kind::Area, rings, ink, {}}); }

void SvgPicture::Dot(const Place& place, double radius, const std::string& colour) {
  m_shapes.push_back({Kind::Dot, {{place}}, {colour, radius, colour, {}}, {}});
}

void SvgPicture::Label(const Place& place, const std::string& text) { m_shapes.push_back({Kind::Label, {{place}}, Ink(), text}); }

void SvgPicture::Legend(const std::string& text, const Ink& ink) { m_legend.push_back({Kind::Line, {}, ink, text}); }

void SvgPicture::LegendDot(const std::string& text, double radius, const std::string& colour) {
  m_legend.push_back({Kind::Dot, {}, {colour, radius, colour, {}}, text});
}

SvgPicture::Box SvgPicture::Bounds() const {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  double left = kInfinity, bottom = kInfinity, right = -kInfinity, top = -kInfinity;
  for (const Shape& shape : m_shapes) {
    for (const Places& ring : shape.rings) {
      for (const Place& place : ring) {
        if (!IsFinite(place)) continue;
        left = std::min(left, place.x);
        right = std::max(right, place.x);
        bottom = std::min(bottom, place.y);
        top = std::max(top, place.y);
      }
    }
  }
  return left <= right ? Box{left, bottom, right, top} : Box();
}

double SvgPicture::Extent() const { return Bounds().Range(); }

std::string SvgPicture::Text() const {
  const Frame frame(Bounds());
  const double height = kHead + frame.Height() + 40 + kLegendRow * static_cast<double>(m_legend.size());
  std::ostringstream out;
  out << "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " << Number(kWidth) << ' ' << Number(height)
      << "\" font-family=\"DejaVu Sans, Arial, sans-serif\" font-size=\"13\" fill=\"#33414d\">\n"
      << "<rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n"
      << "<text x=\"" << Number(kMargin) << "\" y=\"32\" font-size=\"20\" font-weight=\"bold\">" << Escaped(m_title) << "</text>\n";
  frame.Grid(out);
  for (const Shape& shape : m_shapes) {
    const Place at = shape.rings.empty() || shape.rings.front().empty() ? Place{} : shape.rings.front().front();
    if (shape.kind == Kind::Dot && IsFinite(at)) {
      out << "<circle cx=\"" << Number(frame.X(at.x)) << "\" cy=\"" << Number(frame.Y(at.y)) << "\" r=\"" << Number(shape.ink.width)
          << "\" fill=\"" << shape.ink.fill << "\"/>\n";
    } else if (shape.kind == Kind::Label && IsFinite(at)) {
      out << "<text x=\"" << Number(frame.X(at.x) + 6) << "\" y=\"" << Number(frame.Y(at.y) - 6) << "\">" << Escaped(shape.text)
          << "</text>\n";
    } else if (shape.kind == Kind::Line || shape.kind == Kind::Area) {
      std::string path;
      for (const Places& ring : shape.rings) path += frame.Path(ring, shape.kind == Kind::Area);
      out << "<path d=\"" << path << "\" fill-rule=\"evenodd\" stroke-linejoin=\"round\" " << Attributes(shape.ink) << "/>\n";
    }
  }
  double y = kHead + frame.Height() + 48;
  for (const Shape& entry : m_legend) {
    if (entry.kind == Kind::Dot) {
      out << "<circle cx=\"" << Number(kMargin + 18) << "\" cy=\"" << Number(y - 4) << "\" r=\"" << Number(entry.ink.width) << "\" fill=\""
          << entry.ink.fill << "\"/>\n";
    } else {
      out << "<path d=\"M" << Number(kMargin) << ',' << Number(y - 4) << " h36\" " << Attributes(entry.ink) << "/>\n";
    }
    out << "<text x=\"" << Number(kMargin + 48) << "\" y=\"" << Number(y) << "\">" << Escaped(entry.text) << "</text>\n";
    y += kLegendRow;
  }
  out << "</svg>\n";
  return out.str();
}

bool SvgPicture::Save(const std::string& path) const {
  std::ofstream stream(path, std::ios::binary);
  stream << Text();
  stream.close();
  return !stream.fail();
}

int FinishPicture(const SvgPicture& picture, std::string path, const std::string& source, const std::string& ending) {
  std::fflush(stdout);
  if (path.empty()) path = std::filesystem::path(source).stem().string() + ending + ".svg";
  if (!picture.Save(path)) return Fail("cannot write \"" + path + "\"");
  std::cout << "\nPicture: " << path << '\n';
  return kDone;
}

}  // namespace zel
