#include "survey/ChartLayout.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <vector>

#include "survey/ChartSteps.h"

namespace zel {
namespace {

constexpr double kMargin = 1.06;         // the map's window to what must be seen in it
constexpr double kMostShrinking = 1.5;   // that what belongs to the survey may cost
constexpr double kSinglePlace = 1000.0;  // the scale around one place alone
constexpr double kLargestScale = 1e12;   // beyond it the world is no place for metres
constexpr double kResolution = 1e-9;     // of a coordinate: less is lost in its last digits

// Grows pages in the frame of the map, whose y runs in its upward direction.
class TurnedFrame {
 public:
  explicit TurnedFrame(double rotation) {
    m_system.SetSkew(-rotation);
    m_system.SetRotationMode(ROTATIONMODE_SKEW);
  }

  Point Turned(const Point& world) const {
    Point turned(world.x, world.y, 0.0);
    m_system.RotateWtoP(turned.x, turned.y);
    return turned;
  }

  Point TurnedBack(const Point& frame) const {
    Point world(frame.x, frame.y, 0.0);
    m_system.RotatePtoW(world.x, world.y);
    return world;
  }

  Page PageOf(std::span<const Point> points) const {
    Page page;
    for (const Point& point : points) page |= Turned(point);
    return page;
  }

 private:
  CoordinateSystem m_system;
};

std::vector<Point> DesignPoints(const Survey& survey) {
  std::vector<Point> points;
  if (!survey.design.IsGiven()) return points;
  for (int i = 0; i < survey.design.line->NumDataPoints(); ++i) points.push_back(survey.design.line->DataPoint(i).Absolute());
  return points;
}

Page PageOfPolygons(const TurnedFrame& frame, const std::vector<SurveyPolygon>& polygons) {
  Page page;
  for (const SurveyPolygon& polygon : polygons) page |= frame.PageOf(polygon);
  return page;
}

Page PageOfTrack(const TurnedFrame& frame, const SurveyTrack& track) {
  Page page;
  for (const TrackPlace& place : track.places) page |= frame.Turned(Point(place.x, place.y, 0.0));
  return page;
}

Page PageOfVessel(const TurnedFrame& frame, const SurveyVessel& vessel) {
  Page page;
  if (vessel.known) page |= frame.Turned(Point(vessel.x, vessel.y, 0.0));
  return page;
}

// The least denominator at which a page fits into the map.
double ScaleFor(const Page& page) {
  const double wide = page.Width() * kMargin / sheet::kMap.Width(), high = page.Height() * kMargin / sheet::kMap.Height();
  return std::max(wide, high) * 1000.0;
}

// The first page that is there, and those after it that do not make the map much smaller; one place alone does not count.
Page Subject(std::span<const Page> pages) {
  Page subject;
  double most = 0.0;
  for (const Page& page : pages) {
    if (!page.IsValid()) continue;
    Page both = subject;
    both |= page;
    if (most > 0.0 && ScaleFor(both) > most) continue;
    if (most == 0.0) most = ScaleFor(both) * kMostShrinking;
    subject = both;
  }
  return subject;
}

double Magnitude(const Page& page) {
  return std::max({std::abs(page.left), std::abs(page.right), std::abs(page.bottom), std::abs(page.top)});
}

}  // namespace

CoordinateSystem MapView::System(int parts) const {
  CoordinateSystem system;
  if (rotation != 0.0) {
    system.SetSkew(-rotation);
    system.SetRotationMode(ROTATIONMODE_SKEW);
  }
  system.SetPixelWindow(CRect(sheet::kMapLeft * parts, sheet::kMapTop * parts, sheet::kMapRight * parts, sheet::kMapBottom * parts));
  Point half(sheet::kMap.Width() / 2.0 * MetresPerMillimetre(), sheet::kMap.Height() / 2.0 * MetresPerMillimetre(), 0.0);
  system.RotatePtoW(half.x, half.y);
  system.SetWorldWindow(Page(centre - half, centre + half));
  return system;
}

MapView ViewOf(const Survey& survey) {
  MapView view;
  view.rotation = std::isfinite(survey.mapRotation) ? std::fmod(survey.mapRotation, 360.0) : 0.0;
  const TurnedFrame frame(view.rotation);
  const Page pages[] = {frame.PageOf(survey.soundings),   PageOfPolygons(frame, survey.workArea), frame.PageOf(DesignPoints(survey)),
                        PageOfTrack(frame, survey.track), PageOfVessel(frame, survey.vessel),     PageOfPolygons(frame, survey.land)};
  const Page subject = Subject(std::span(pages).first(std::ranges::any_of(std::span(pages).first(5), &Page::IsValid) ? 5 : 6));
  view.isEmpty = !subject.IsValid();
  if (view.isEmpty) return view;
  view.centre = frame.TurnedBack(subject.GetCenter());
  const double least = std::max(ScaleFor(subject), Magnitude(subject) * kResolution);
  view.scale = subject.Width() == 0.0 && subject.Height() == 0.0 ? NiceScale(std::max(least, kSinglePlace)) : NiceScale(least);
  view.isDrawable = least <= kLargestScale && view.System(1).IsScaleValid();  // not for NaN
  return view;
}

}  // namespace zel
