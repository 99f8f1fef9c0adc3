#include "GeometryCommand.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "PageText.h"
#include "PointFile.h"
#include "SettingsFile.h"
#include "SvgPicture.h"
#include "zelbase/geometry/OffsetLineData.h"
#include "zelbase/geometry/PolyClipper.h"
#include "zelbase/geometry/VesselContour.h"

namespace zel {
namespace {

struct Arguments {
  std::string page;
  std::string file;
  std::string picture;
  double offset = 0.0;
  double level = 0.0;
  bool useLevel = false;
};

// ---- what the commands share ----

// To a thousandth, where a rounded -0.0 is 0.
double Rounded(double value) { return std::abs(value) < 0.0005 ? 0.0 : value; }

void PrintRow(const Point& point) { std::printf("%14.3f %14.3f %10.3f\n", Rounded(point.x), Rounded(point.y), Rounded(point.z)); }

Places ToPlaces(const std::vector<Point>& points) {
  Places places;
  for (const Point& point : points) places.push_back({point.x, point.y});
  return places;
}

// ---- clip ----

using Ring = std::vector<Point>;

std::vector<Ring> RingsOf(const PolyClipper& clipper) {
  std::vector<Ring> rings;
  for (int i = 0; i < clipper.GetOutputSize(); ++i) {
    if (clipper.GetOutputFlag(i) || rings.empty()) rings.emplace_back();
    rings.back().push_back(clipper.GetOutputPoint(i));
  }
  return rings;
}

double AreaOf(const Ring& ring) {
  double sum = 0.0;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const Point& a = ring[i];
    const Point& b = ring[(i + 1) % ring.size()];
    sum += (a.x - ring[0].x) * (b.y - ring[0].y) - (b.x - ring[0].x) * (a.y - ring[0].y);
  }
  return std::abs(sum) / 2;
}

void PrintRings(const std::vector<Ring>& rings) {
  for (std::size_t i = 0; i < rings.size(); ++i) {
    std::printf("Ring %zu of %zu: %zu points, area %.3f\n", i + 1, rings.size(), rings[i].size(), AreaOf(rings[i]));
    for (const Point& point : rings[i]) PrintRow(point);
  }
}

int Clip(const Arguments& arguments) {
  Page page;
  if (!ReadPage(arguments.page, page)) return kBadUsage;
  PointFile file;
  std::string reason;
  if (!file.Open(arguments.file, reason)) return Fail(reason);

  SvgPicture picture("Polygons clipped to a page");
  std::vector<Ring> rings;
  double before = 0.0, after = 0.0;
  for (const Ring& polygon : file.runs) {
    PolyClipper clipper;
    clipper.SetPage(page);
    clipper.FillPolygon(polygon);
    before += AreaOf(polygon);
    after += clipper.Area();
    for (Ring& ring : RingsOf(clipper)) rings.push_back(std::move(ring));
    picture.Area({ToPlaces(polygon)}, {"#9aa7b2", 1.2, "#eef1f4", {}});
  }
  PrintRings(rings);
  std::printf("%s of area %.3f; inside the page %s of area %.3f\n", Counted(file.runs.size(), "polygon", "polygons").c_str(), before,
              Counted(rings.size(), "ring", "rings").c_str(), after);
  for (const Ring& ring : rings) picture.Area({ToPlaces(ring)}, {"#1f5f99", 2, "#9cc4e4", {}});
  picture.Area({{{page.left, page.bottom}, {page.right, page.bottom}, {page.right, page.top}, {page.left, page.top}}},
               {"#b4472e", 1.5, "none", "7 4"});
  picture.Legend("polygons as given", {"#9aa7b2", 1.2, "none", {}});
  picture.Legend("rings inside the page", {"#1f5f99", 2, "none", {}});
  picture.Legend("the page", {"#b4472e", 1.5, "none", "7 4"});
  return FinishPicture(picture, arguments.picture, arguments.file, "-clip");
}

// ---- offset ----

// A profile from a file of points: each run is a section, and the distance runs along the plan from the first point of all.
class FileProfile : public LineData {
 public:
  explicit FileProfile(const PointFile& file) : LineData("File") {
    double distance = 0.0;
    const Point* previous = nullptr;
    for (const auto& run : file.runs) {
      for (const Point& point : run) {
        if (previous != nullptr) distance += previous->Dist2D(point);
        m_points.emplace_back(point, distance, &point == &run.front());
        previous = &point;
      }
    }
  }
};

// The sections of a line in the plane of the profile: distance across, height up.
std::vector<Places> SectionsOf(LineData& line) {
  std::vector<Places> sections;
  for (int i = 0; i < static_cast<int>(line.NumDataPoints()); ++i) {
    const ProfilePoint point = line.DataPoint(i);
    if (point.sectionStart || sections.empty()) sections.emplace_back();
    sections.back().push_back({point.distance, point.z});
  }
  return sections;
}

void PrintProfile(const char* title, LineData& line) {
  std::printf("%s\n%8s %12s %14s %14s %10s\n", title, "", "distance", "x", "y", "z");
  for (int i = 0; i < static_cast<int>(line.NumDataPoints()); ++i) {
    const ProfilePoint point = line.DataPoint(i);
    std::printf("%8s %12.3f ", point.sectionStart ? "section" : "", Rounded(point.distance));
    PrintRow(point.Absolute());
  }
}

int Offset(const Arguments& arguments) {
  PointFile file;
  std::string reason;
  if (!file.Open(arguments.file, reason)) return Fail(reason);
  FileProfile profile(file);
  OffsetLineData offset(&profile, false);
  offset.SetOffset(arguments.offset);
  offset.SetMaxZ(arguments.level, arguments.useLevel);
  offset.ApplyOffset();
  PrintProfile("Profile", profile);
  std::printf("\n");
  PrintProfile("Offset line", offset);

  SvgPicture picture("Profile and its offset line");
  const Ink given{"#7a5b33", 2, "none", {}}, moved{"#1f5f99", 2, "none", {}};
  for (const Places& section : SectionsOf(profile)) picture.Line(section, given);
  for (const Places& section : SectionsOf(offset)) {
    picture.Line(section, moved);
    for (const Place& place : section) picture.Dot(place, 2.5, "#1f5f99");
  }
  picture.Legend("profile (distance, height)", given);
  picture.Legend("offset line, its points marked", moved);
  return FinishPicture(picture, arguments.picture, arguments.file, "-offset");
}

// ---- contour ----

struct Side {
  const char* name;
  const char* section;
};
constexpr std::array<Side, 6> kSides = {{{"top", "POINTS"},
                                         {"bottom", "BOTTOM POINTS"},
                                         {"left", "LEFT POINTS"},
                                         {"right", "RIGHT POINTS"},
                                         {"front", "FRONT POINTS"},
                                         {"back", "BACK POINTS"}}};

// The strokes of the present side.
std::vector<Places> StrokesOf(const VesselContour& contour) {
  std::vector<Places> strokes;
  for (int i = 1; i <= contour.GetSize(); ++i) {
    VesselPoint point;
    contour.GetPoint(i, point);
    if (point.moveTo || strokes.empty()) strokes.emplace_back();
    strokes.back().push_back({point.x, point.y});
  }
  return strokes;
}

// Tells what a person would want to mend in one side of the file. True when there is nothing.
class SideCheck {
 public:
  SideCheck(const SettingsFile& file, const Side& side) : m_file(file), m_side(side) {}

  bool Run(const VesselContour& contour, const std::vector<Places>& strokes) {
    if (contour.GetSize() == 0) return Tell("no points");
    const int items = m_file.store.GetNumItems(m_side.section);
    if (items > contour.GetSize()) {
      Tell(Counted(static_cast<std::size_t>(items - contour.GetSize()), "item", "items") +
           " not read; the numbers have a gap behind Point(" + std::to_string(contour.GetSize()) + ")");
    }
    for (int i = 1; i <= contour.GetSize(); ++i) CheckRow(i);
    VesselPoint first;
    contour.GetPoint(1, first);
    if (!first.moveTo) Tell("Point(1) does not begin a stroke (code 1)");
    for (const Places& stroke : strokes) {
      if (stroke.size() == 1) Tell("a stroke of one point draws nothing");
    }
    return m_good;
  }

 private:
  bool Tell(const std::string& finding) {
    std::printf("        %s: %s\n", m_side.section, finding.c_str());
    m_good = false;
    return false;
  }

  // A row that is not "x, y, code" in full is read as far as it goes, which is seldom what was meant.
  void CheckRow(int index) {
    const std::string key = "Point(" + std::to_string(index) + ")";
    std::string value;
    m_file.store.GetItem(m_side.section, key, value);
    double x = 0.0, y = 0.0;
    int code = 0, length = -1;
    const bool whole = std::sscanf(value.c_str(), "%lf,%lf,%d%n", &x, &y, &code, &length) == 3 && length == static_cast<int>(value.size());
    if (!whole) Tell(key + " = \"" + m_file.Shown(value) + "\" is not \"x, y, code\"");
  }

  const SettingsFile& m_file;
  const Side& m_side;
  bool m_good = true;
};

int Contour(const Arguments& arguments) {
  SettingsFile file;
  std::string reason;
  if (!file.Open(arguments.file, reason)) return Fail(reason);
  SvgPicture picture("Vessel contour");
  bool good = true, anything = false;
  double shift = 0.0;
  for (std::size_t i = 0; i < kSides.size(); ++i) {
    VesselContour contour;
    Page page;
    contour.Create(ToSuitePath(arguments.file), static_cast<int>(i));
    const auto strokes = StrokesOf(contour);
    const bool drawn = contour.GetBoundingPage(page);
    std::printf("%-7s %3d points, %s, %.2f by %.2f\n", kSides[i].name, contour.GetSize(),
                Counted(strokes.size(), "stroke", "strokes").c_str(), drawn ? page.Width() : 0.0, drawn ? page.Height() : 0.0);
    good = SideCheck(file, kSides[i]).Run(contour, strokes) && good;
    if (!drawn) continue;
    anything = true;
    for (Places stroke : strokes) {
      for (Place& place : stroke) place.x += shift - page.left;
      picture.Line(stroke, {"#1f5f99", 2, "none", {}});
    }
    picture.Label({shift, page.top}, kSides[i].name);
    shift += page.Width() * 1.15 + 4;
  }
  std::fflush(stdout);
  if (!anything) return Fail("\"" + arguments.file + "\" has no points on any side");
  const int exitCode = FinishPicture(picture, arguments.picture, arguments.file, "-contour");
  return good ? exitCode : kFoundWrong;
}

}  // namespace

void AddGeometryCommand(CLI::App& program, int& exitCode) {
  CLI::App* const geometry = program.add_subcommand("geometry", "Clip polygons, offset a profile, check a vessel's outline");
  geometry->require_subcommand(1);
  const auto arguments = std::make_shared<Arguments>();
  const auto addPicture = [&arguments](CLI::App& app) {
    app.add_option("-o,--output", arguments->picture, "SVG picture to write; by default in the current folder");
  };

  CLI::App* app = geometry->add_subcommand("clip", "Polygons of a text file clipped to a page");
  app->add_option("PAGE", arguments->page, "left,bottom,right,top")->required();
  app->add_option("FILE", arguments->file, "A point \"x y z\" a line; an empty line ends a polygon")->required();
  addPicture(*app);
  app->footer("Example:\n  zel geometry clip 0,0,400,300 samples/geometry/harbour.txt\n");
  app->callback([arguments, &exitCode] { exitCode = Clip(*arguments); });

  app = geometry->add_subcommand("offset", "A profile and the line at a distance from it, in the plane of the profile");
  app->add_option("FILE", arguments->file, "A point \"x y z\" a line; an empty line begins a new section")->required();
  app->add_option("--offset", arguments->offset, "Distance, positive to the left of travel: upwards on a level line")->required();
  CLI::Option* const level = app->add_option("--level", arguments->level, "Raise what lies below this level");
  addPicture(*app);
  app->footer("Example:\n  zel geometry offset samples/geometry/dredge-profile.txt --offset -1.5\n");
  app->callback([arguments, level, &exitCode] {
    arguments->useLevel = level->count() > 0;
    exitCode = Offset(*arguments);
  });

  app = geometry->add_subcommand("contour", "A vessel's outline, side by side");
  app->add_option("FILE", arguments->file, "Contour file")->required();
  addPicture(*app);
  app->footer(
      "Example:\n  zel geometry contour samples/geometry/vessel-contour.con\n\n"
      "Exit code: 0, or 1 when a side has no points, a row does not read, or the numbers have a gap.\n");
  app->callback([arguments, &exitCode] { exitCode = Contour(*arguments); });
}

}  // namespace zel
