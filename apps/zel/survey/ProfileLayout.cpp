#include "survey/ProfileLayout.h"

#include <algorithm>
#include <cmath>

#include "survey/ChartSteps.h"

namespace zel {
namespace {

using namespace section_sheet;

constexpr double kAlongMargin = 1.04, kUpwardMargin = 1.25;  // of the frame to what must be seen in it
constexpr double kLargestScale = 1e12;
constexpr double kLeastLength = 1.0, kLeastHeight = 0.5;  // metres that are shown at least
constexpr double kResolution = 1e-9;                      // of a value: less is lost in its last digits

Page ExtentsOf(const Survey& survey) {
  Page page;
  for (LineData* const line : {survey.design.line.get(), survey.design.overDepth.get()}) {
    if (line == nullptr) continue;
    for (int i = 0; i < line->NumDataPoints(); ++i) page |= line->DataPoint(i).Relative();
  }
  for (const SectionRow& row : survey.section.rows) {
    if (!row.measured) continue;
    page |= Point(row.chainage, row.bottom, 0.0);
    page |= Point(row.chainage, row.shoalest, 0.0);
  }
  return page;
}

double Magnitude(double a, double b) { return std::max(std::abs(a), std::abs(b)); }

}  // namespace

CoordinateSystem ProfileView::System(int parts) const {
  CoordinateSystem system;
  system.SetPixelWindow(CRect(kFrameLeft * parts, kFrameTop * parts, kFrameRight * parts, kFrameBottom * parts));
  system.SetWorldWindow(window);
  return system;
}

ProfileView ProfileViewOf(const Survey& survey) {
  ProfileView view;
  const Page extents = ExtentsOf(survey);
  view.isEmpty = !extents.IsValid();
  if (view.isEmpty) return view;
  const double length = std::max({extents.Width(), kLeastLength, Magnitude(extents.left, extents.right) * kResolution});
  const double height = std::max({extents.Height(), kLeastHeight, Magnitude(extents.bottom, extents.top) * kResolution});
  view.alongScale = NiceScale(length * kAlongMargin / kFrame.Width() * 1000.0);
  view.upwardScale = NiceScale(height * kUpwardMargin / kFrame.Height() * 1000.0);
  view.isDrawable = length * 1000.0 <= kLargestScale && height * 1000.0 <= kLargestScale;  // not for NaN
  const Point centre = extents.GetCenter();
  const double halfLength = kFrame.Width() * view.alongScale / 2000.0, halfHeight = kFrame.Height() * view.upwardScale / 2000.0;
  view.window = Page(centre.x - halfLength, centre.y - halfHeight, centre.x + halfLength, centre.y + halfHeight);
  return view;
}

}  // namespace zel
