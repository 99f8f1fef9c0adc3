// Any bytes as a contour file and as the compact form of a contour: read, written and read again, and edited with operations
// that the bytes choose, beside a plain list that must agree. The files lie in memory.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "fuzz/MemoryFiles.h"
#include "fuzz/Require.h"
#include "fuzz/Target.h"
#include "zelbase/geometry/VesselContour.h"
#include "zelbase/platform/PlatformFiles.h"

namespace {

std::vector<VesselPoint> PointsOf(const VesselContour& contour) {
  std::vector<VesselPoint> points(static_cast<std::size_t>(contour.GetSize()));
  for (int i = 1; i <= contour.GetSize(); ++i) {
    Require(contour.GetPoint(i, points[static_cast<std::size_t>(i) - 1]), "a point in range");
  }
  return points;
}

bool SameBits(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

bool Same(const std::vector<VesselPoint>& a, const std::vector<VesselPoint>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const VesselPoint& p, const VesselPoint& q) {
    return SameBits(p.x, q.x) && SameBits(p.y, q.y) && p.moveTo == q.moveTo && p.mark == q.mark;
  });
}

bool SamePen(const VesselContour& a, const VesselContour& b) {
  long widthA = 0, widthB = 0, colorA = 0, colorB = 0;
  a.GetPenWidth(widthA);
  b.GetPenWidth(widthB);
  a.GetPenColor(colorA);
  b.GetPenColor(colorB);
  return widthA == widthB && colorA == colorB;
}

bool IsFinite(const std::vector<VesselPoint>& points) {
  return std::all_of(points.begin(), points.end(),
                     [](const VesselPoint& point) { return std::isfinite(point.x) && std::isfinite(point.y); });
}

// What was saved reads as what is saved from it: the texts lose nothing but decimals, and those only once.
void SaveAndReadAgain(VesselContour& contour) {
  const int side = contour.GetViewSide();
  Require(contour.Save("first"), "the first save");
  VesselContour first;
  Require(first.Create("first", side), "the first reading");
  Require(SamePen(first, contour), "the pen");
  Require(first.GetSize() == contour.GetSize(), "the size");
  if (!IsFinite(PointsOf(contour))) return;
  Require(first.Save("second"), "the second save");
  VesselContour second;
  Require(second.Create("second", side), "the second reading");
  Require(Same(PointsOf(second), PointsOf(first)), "the points");
  Require(SamePen(second, first), "the pen again");
}

void CheckCompactForm(const VesselContour& contour) {
  std::string text;
  Require(contour.SaveToString(text), "saving to a string");
  Require(text.size() == 8 + 18 * static_cast<std::size_t>(contour.GetSize()), "the length of the string");
  VesselContour again;
  Require(again.LoadFromString(text) == (contour.GetSize() != 0), "loading from a string");
  Require(Same(PointsOf(again), PointsOf(contour)), "the points of a string");
  if (contour.GetSize() != 0) Require(SamePen(again, contour), "the pen of a string");
}

void LoadCompactForm(const std::string& bytes) {
  VesselContour contour;
  Require(contour.LoadFromString(bytes) == (bytes.size() > 8), "any string");
  const std::size_t points = bytes.size() > 8 ? (bytes.size() - 8) / 18 : 0;
  Require(static_cast<std::size_t>(contour.GetSize()) == points, "the number of points");
  CheckCompactForm(contour);
  SaveAndReadAgain(contour);
}

void Edit(VesselContour& contour, const std::string& bytes) {
  std::vector<VesselPoint> model = PointsOf(contour);
  for (std::size_t at = 0; at + 1 < bytes.size() && at < 200; at += 2) {
    const auto operation = static_cast<unsigned char>(bytes[at]);
    const int choice = static_cast<signed char>(bytes[at + 1]);
    const int index = choice == 100 ? INT32_MAX : choice == -100 ? INT32_MIN : choice;
    const bool inside = index >= 1 && static_cast<std::size_t>(index) <= model.size();
    const auto place = model.begin() + (inside ? index - 1 : 0);
    const VesselPoint point(Point(choice, choice / 8.0, 0), operation % 2 == 0, operation % 3 == 0);
    switch (operation % 7) {
      case 0:
        Require(contour.AddPoint(point), "adding");
        model.push_back(point);
        break;
      case 1:
        Require(contour.SetPoint(index, point) == inside, "setting");
        if (inside) *place = point;
        break;
      case 2:
        Require(contour.InsertPoint(index, point) == inside, "inserting");
        if (inside) model.insert(place, point);
        break;
      case 3:
        Require(contour.DeletePoint(index) == inside, "deleting");
        if (inside) model.erase(place);
        break;
      case 4:
        if (choice % 16 != 0) break;
        contour.DeleteAllPoints();
        model.clear();
        break;
      case 5:
        contour.SetViewSide(choice);
        model = PointsOf(contour);
        break;
      default: {
        Page page;
        Point center;
        Require(contour.GetExtents(page), "extents");
        Require(contour.GetCenterPoint(center) == page.IsValid(), "the centre");
        break;
      }
    }
    Require(Same(PointsOf(contour), model), "the edited list");
  }
}

}  // namespace

void RunInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  MemoryFiles memory;
  const PlatformOverride<PlatformFiles> guard(memory);
  memory.files["input"] = bytes;
  LoadCompactForm(bytes);
  // As it lies, and seen from one other side, which the length chooses.
  for (const int side : {0, 1 + static_cast<int>(size % 6)}) {
    VesselContour contour;
    Require(contour.Create("input", side), "any file opens");
    CheckCompactForm(contour);
    SaveAndReadAgain(contour);
    if (side == 0) Edit(contour, bytes);
  }
}
