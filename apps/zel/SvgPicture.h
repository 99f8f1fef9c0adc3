// A map-like picture as SVG: world coordinates with y upwards, fitted into a frame with a grid of round numbers.
#pragma once

#include <string>
#include <vector>

namespace zel {

struct Place {
  double x = 0.0;
  double y = 0.0;
};
using Places = std::vector<Place>;

// How a shape looks: the colours are SVG's, "none" for nothing.
struct Ink {
  std::string stroke = "black";
  double width = 1.5;  // in picture units, 1000 across
  std::string fill = "none";
  std::string dashes;  // as "6 4"; empty for a solid line
};

// Shapes are added in the order of drawing; the extent is that of everything added. Places that are not finite are left out.
class SvgPicture {
 public:
  explicit SvgPicture(std::string title) : m_title(std::move(title)) {}

  void Line(const Places& places, const Ink& ink);

  // Rings of one area, filled by the even-odd rule.
  void Area(const std::vector<Places>& rings, const Ink& ink);

  // A dot of `radius` picture units.
  void Dot(const Place& place, double radius, const std::string& colour);

  // Text beside a place.
  void Label(const Place& place, const std::string& text);

  // An entry of the legend, in the order of adding: for lines and areas, and for dots.
  void Legend(const std::string& text, const Ink& ink);
  void LegendDot(const std::string& text, double radius, const std::string& colour);

  // The greater side of the box around everything added; 0 when there is nothing.
  double Extent() const;

  // False when the file cannot be written.
  bool Save(const std::string& path) const;

  // The whole SVG text.
  std::string Text() const;

 private:
  enum class Kind { Line, Area, Dot, Label };
  struct Shape {
    Kind kind;
    std::vector<Places> rings;
    Ink ink;
    std::string text;
  };
  class Frame;

  struct Box;
  Box Bounds() const;

  std::string m_title;
  std::vector<Shape> m_shapes;
  std::vector<Shape> m_legend;  // each with its text
};

// Ends a command: writes the picture and tells where. An empty `path` puts it into the current folder, named after the file
// `source` with `ending`. The command's exit code.
int FinishPicture(const SvgPicture& picture, std::string path, const std::string& source, const std::string& ending);

}  // namespace zel
