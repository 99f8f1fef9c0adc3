#include "survey/ChartDepths.h"

#include <cmath>

#include "zelbase/frame/NumberFormat.h"

namespace zel {
namespace {

using namespace depths;

constexpr TextStyle kWhole{kSize, inks::kText, Face::Plain};
constexpr TextStyle kDecimals{kSize * kSmall, inks::kText, Face::Plain};
constexpr double kCapHeight = 0.73;  // of the font's size
constexpr double kGap = 0.12;        // between whole units and decimals

double WholeWidth(const SheetPen& pen, const DepthNumber& text) { return pen.Width(text.whole, kWhole); }

double DecimalsWidth(const SheetPen& pen, const DepthNumber& text) {
  return text.decimals.empty() ? 0.0 : kGap + pen.Width(text.decimals, kDecimals);
}

Page BoxOf(const SheetPen& pen, const DepthNumber& text, double x, double y) {
  const double width = WholeWidth(pen, text) + DecimalsWidth(pen, text), height = kSize * (kCapHeight + kDrop);
  return Page(x - width / 2.0, y - height / 2.0, x + width / 2.0, y + height / 2.0);
}

Page Wider(const Page& box, double byX, double byY) { return Page(box.left - byX, box.bottom - byY, box.right + byX, box.top + byY); }

bool IsWithin(const Page& box, const Page& area) {
  return box.left >= area.left && box.right <= area.right && box.bottom >= area.bottom && box.top <= area.top;
}

void DrawLabel(const SheetPen& pen, const DepthLabel& label) {
  constexpr double kRim = 0.3;
  const double base = label.box.bottom + kSize * kCapHeight, width = WholeWidth(pen, label.text);
  pen.HaloText(label.box.left, base, label.text.whole, kWhole, kRim);
  pen.HaloText(label.box.left + width + kGap, base + kDrop * kSize, label.text.decimals, kDecimals, kRim);
  if (label.text.dries) pen.Rule(label.box.left, base + 0.4, label.box.left + width, base + 0.4, 0.2, inks::kText);
}

}  // namespace

DepthNumber::DepthNumber(const Survey& survey, double z) {
  const double depth = survey.ShownDepth(z);
  const std::string text = FormatDouble(std::abs(depth), survey.depthDecimals);
  const std::size_t point = text.find('.');
  whole = text.substr(0, point);
  if (point != std::string::npos) decimals = text.substr(point + 1);
  dries = depth < 0.0 && text.find_first_of("123456789") != std::string::npos;
}

std::vector<DepthLabel> PlaceDepths(const SheetPen& pen, const Survey& survey, const std::vector<LabelCandidate>& byShoalest,
                                    const Page& area, BoxIndex& taken) {
  std::vector<DepthLabel> labels;
  for (const LabelCandidate& candidate : byShoalest) {
    const DepthNumber text(survey, candidate.z);
    const Page box = BoxOf(pen, text, candidate.x, candidate.y);
    if (!IsWithin(Wider(box, 0.5, 0.5), area) || !taken.IsFree(Wider(box, kApartX / 2.0, kApartY / 2.0))) continue;
    taken.Add(Wider(box, kApartX / 2.0, kApartY / 2.0));
    labels.push_back({candidate, text, box});
  }
  return labels;
}

void DrawDepths(const SheetPen& pen, const std::vector<DepthLabel>& labels) {
  for (const DepthLabel& label : labels) DrawLabel(pen, label);
}

}  // namespace zel
