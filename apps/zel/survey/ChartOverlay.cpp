#include "survey/ChartOverlay.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <utility>

#include "survey/ChartDesign.h"
#include "survey/ChartSymbols.h"
#include "zelbase/geometry/Rotation.h"

namespace zel {
namespace {

constexpr double kLeastStroke = 0.15;                        // millimetres; a track's places nearer than that to the last one add nothing
constexpr double kEllipseDistance = 14.0;                    // millimetres from ellipse to ellipse
constexpr double kLeastEllipse = 0.35, kMostEllipse = 60.0;  // half axes that are drawn
constexpr double kLeastVessel = 6.0;                         // millimetres; a smaller vessel is drawn as long as that

Point PlaceOf(const TrackPlace& place) { return Point(place.x, place.y, 0.0); }

void DrawTrackLine(const MapPen& pen, const std::vector<TrackPlace>& places) {
  Point last, lastOnSheet;
  for (std::size_t i = 0; i < places.size(); ++i) {
    const Point place = PlaceOf(places[i]), onSheet = pen.OnSheet(place);
    const bool begins = i == 0 || places[i].afterGap;
    const bool ends = i + 1 == places.size() || places[i + 1].afterGap;
    if (!begins && !ends && onSheet.Dist2D(lastOnSheet) < kLeastStroke) continue;
    if (!begins) pen.Draw(Line(last, place));
    last = place;
    lastOnSheet = onSheet;
  }
}

void DrawEllipse(const MapPen& pen, const TrackPlace& place, double sigmas) {
  constexpr int kParts = 48;
  std::vector<Point> path;
  for (int i = 0; i <= kParts; ++i) {
    const double angle = 2.0 * std::numbers::pi * i / kParts;
    Point point;
    Rotation2D(place.x, place.y, sigmas * place.semiMinor * std::sin(angle), sigmas * place.semiMajor * std::cos(angle), place.orientation,
               point.x, point.y);
    path.push_back(point);
  }
  pen.Draw(path);
}

// Of fixes, as far apart as they can be told from each other.
void DrawEllipses(const MapPen& pen, const SurveyTrack& track, const MapView& view) {
  const double sigmas = kEllipseSigmas * EllipseEnlargement(track, view);
  const TrackPlace* last = nullptr;
  for (const TrackPlace& place : track.places) {
    const double size = sigmas * place.semiMajor / view.MetresPerMillimetre();
    if (!place.isFix || place.refused || size < kLeastEllipse || size > kMostEllipse) continue;
    const double distance = std::max(kEllipseDistance, 1.5 * size) * view.MetresPerMillimetre();
    if (last != nullptr && PlaceOf(*last).Dist2D(PlaceOf(place)) < distance) continue;
    DrawEllipse(pen, place, sigmas);
    last = &place;
  }
}

void DrawRefused(MapPen& pen, const std::vector<TrackPlace>& places) {
  constexpr double kSize = 1.0;
  pen.Use(inks::kDesign, lines::kRefused);
  for (const TrackPlace& place : places) {
    if (place.refused) pen.Cross(PlaceOf(place), kSize);
  }
}

// The strokes of the vessel's outline, of a plain hull when she has none.
std::vector<std::vector<Point>> OutlineOf(const SurveyVessel& vessel) {
  if (!vessel.hasContour)
    return {{Point(-5, -12, 0), Point(-5, 6, 0), Point(0, 12, 0), Point(5, 6, 0), Point(5, -12, 0), Point(-5, -12, 0)}};
  std::vector<std::vector<Point>> strokes;
  for (int i = 1; i <= vessel.contour.GetSize(); ++i) {
    VesselPoint point;
    vessel.contour.GetPoint(i, point);
    if (!std::isfinite(point.x) || !std::isfinite(point.y)) continue;
    if (point.moveTo || strokes.empty()) strokes.emplace_back();
    strokes.back().push_back(Point(point.x, point.y, 0.0));
  }
  return strokes;
}

Page ExtentsOf(const std::vector<std::vector<Point>>& strokes) {
  Page page;
  for (const std::vector<Point>& stroke : strokes) {
    for (const Point& point : stroke) page |= point;
  }
  return page;
}

// From the vessel's own frame into the world, in size at least kLeastVessel on the sheet.
void PlaceOutline(std::vector<std::vector<Point>>& strokes, const SurveyVessel& vessel, const MapView& view) {
  const Page extents = ExtentsOf(strokes);
  const double length = std::max(extents.Width(), extents.Height()) / view.MetresPerMillimetre();
  const double factor = length > 0.0 && length < kLeastVessel ? kLeastVessel / length : 1.0;
  for (std::vector<Point>& stroke : strokes) {
    for (Point& point : stroke) Rotation2D(vessel.x, vessel.y, factor * point.x, factor * point.y, vessel.heading, point.x, point.y);
  }
}

void TakeOutline(const MapPen& pen, const std::vector<std::vector<Point>>& strokes, BoxIndex& taken) {
  Page box;
  for (const std::vector<Point>& stroke : strokes) {
    for (const Point& point : stroke) box |= pen.OnSheet(point);
  }
  box &= sheet::kMap;
  if (box.IsValid()) taken.Add(box);
}

void DrawVessel(MapPen& pen, const SurveyVessel& vessel, const MapView& view, BoxIndex& taken) {
  std::vector<std::vector<Point>> strokes = OutlineOf(vessel);
  if (!vessel.known || strokes.empty()) return;
  PlaceOutline(strokes, vessel, view);
  const bool isClosed = strokes.front().size() > 3 && strokes.front().front() == strokes.front().back();
  if (isClosed) pen.Fill({strokes.front()}, inks::kVessel.Covering(0.9));
  pen.Use(inks::kText, lines::kVessel);
  for (const std::vector<Point>& stroke : strokes) pen.Draw(stroke);
  TakeOutline(pen, strokes, taken);
}

}  // namespace

void DrawGround(const MapPen& pen, const Survey& survey) { pen.Fill(survey.land, inks::kLand); }

void DrawOverlay(MapPen& pen, const Survey& survey, const MapView& view, const ChartGrid& grid, BoxIndex& taken) {
  pen.Use(inks::kGridLine, lines::kGrid);
  for (const std::vector<Point>& line : grid.Lines()) pen.Draw(line);
  pen.Use(inks::kCoast, lines::kCoast);
  pen.DrawRings(survey.land);
  pen.Use(inks::kWorkArea, lines::kWorkArea);
  pen.DrawRings(survey.workArea);
  for (const auto& [ink, rim] : {std::pair{inks::kPaper, lines::kRim}, {inks::kTrack, 0.0}}) {
    pen.Use(ink, lines::kEllipse, rim);
    DrawEllipses(pen, survey.track, view);
    pen.Use(ink, lines::kTrack, rim);
    DrawTrackLine(pen, survey.track.places);
  }
  DrawDesign(pen, survey, view, taken);
  DrawRefused(pen, survey.track.places);
  DrawVessel(pen, survey.vessel, view, taken);
}

}  // namespace zel
