#include "zelbase/geometry/VesselContour.h"

#include <bit>
#include <cstdint>
#include <string_view>
#include <utility>

#include "zelbase/frame/detail/NumberText.h"
#include "zelbase/platform/CFile.h"
#include "zelbase/platform/CFileException.h"

namespace {

constexpr char kDrawSection[] = "DRAW";
constexpr char kPenWidthKey[] = "PenWidth";
constexpr char kPenColorKey[] = "PenColor";

constexpr int kMoveToBit = 1;
constexpr int kMarkBit = 2;
constexpr int kNoCode = -1;
constexpr int kDecimals = 6;

constexpr std::size_t kPenBytes = 8;
constexpr std::size_t kPointBytes = 18;

const char* SectionOfSide(int viewSide) {
  switch (viewSide) {
    case 1: return "BOTTOM POINTS";
    case 2: return "LEFT POINTS";
    case 3: return "RIGHT POINTS";
    case 4: return "FRONT POINTS";
    case 5: return "BACK POINTS";
    default: return "POINTS";
  }
}

std::string KeyOfPoint(std::size_t number) {
  std::string key = "Point(";
  zelbase::detail::AppendUnsigned(key, number);
  return key += ')';
}

// "%f, %f, %d"
std::string TextOfPoint(const VesselPoint& point) {
  std::string text;
  zelbase::detail::AppendFixed(text, point.x, kDecimals);
  text += ", ";
  zelbase::detail::AppendFixed(text, point.y, kDecimals);
  text += ", ";
  zelbase::detail::AppendInt(text, (point.moveTo ? kMoveToBit : 0) + (point.mark ? kMarkBit : 0));
  return text;
}

// Takes the number off the front of `text`, and a comma that follows it at once. False when the scan ends here.
bool TakeCoordinate(std::string_view& text, double& value) {
  const std::size_t taken = zelbase::detail::ScanDouble(text, value);
  text.remove_prefix(taken);
  // Kept: no blank may stand before a comma; one behind it is taken by the next number.
  if (taken == 0 || !text.starts_with(',')) return false;
  text.remove_prefix(1);
  return true;
}

// A whole number, the nearest int when it lies beyond.
int ScanCode(std::string_view text) {
  int code = kNoCode;
  const std::size_t taken = zelbase::detail::ScanInt(text, code);
  double wide = kNoCode;
  zelbase::detail::ScanDouble(text.substr(0, taken), wide);
  return zelbase::detail::ToPixel(wide);
}

// "%lf,%lf,%d"
VesselPoint PointOfText(std::string_view text) {
  VesselPoint point;
  int code = kNoCode;
  // Kept: what was scanned before the text went wrong counts.
  if (TakeCoordinate(text, point.x) && TakeCoordinate(text, point.y)) code = ScanCode(text);
  // Kept: by equality, not by bits, so that 5 and 7 set nothing.
  point.moveTo = code == kMoveToBit || code == (kMoveToBit | kMarkBit);
  point.mark = code == kMarkBit || code == (kMoveToBit | kMarkBit);
  return point;
}

template <class Bits>
bool Pack(Bits bits, char*& at, std::size_t& left) {
  // Unreached: SaveToString has made room for all.
  if (left < sizeof bits) return false;
  for (std::size_t i = 0; i < sizeof bits; ++i) *at++ = static_cast<char>((bits >> (8 * i)) & 0xFF);
  left -= sizeof bits;
  return true;
}

template <class Bits>
bool UnPack(Bits& bits, const char*& at, std::size_t& left) {
  // Unreached: LoadFromString asks for whole records only.
  if (left < sizeof bits) return false;
  bits = 0;
  for (std::size_t i = 0; i < sizeof bits; ++i) {
    bits = static_cast<Bits>(bits | static_cast<Bits>(static_cast<Bits>(static_cast<unsigned char>(*at++)) << (8 * i)));
  }
  left -= sizeof bits;
  return true;
}

}  // namespace

VesselContour::VesselContour() = default;

VesselContour::~VesselContour() = default;

VesselContour::VesselContour(const VesselContour& other) = default;

VesselContour& VesselContour::operator=(const VesselContour& other) {
  // The file's text would lose all its sections by being assigned to itself.
  if (this == &other) return *this;
  m_loaded = other.m_loaded;
  m_penWidth = other.m_penWidth;
  m_penColor = other.m_penColor;
  m_points = other.m_points;
  m_viewSide = other.m_viewSide;
  m_file = other.m_file;
  return *this;
}

bool VesselContour::Create(const std::string& fileName, int viewSide) {
  m_viewSide = viewSide;
  if (!OpenFile(fileName)) {
    SetDefaultContour();
    return false;
  }
  m_points.clear();
  if (m_file.HasSection(kDrawSection)) {
    // Kept: an item that is missing or no number leaves its field as it was.
    m_file.GetItem(kDrawSection, kPenWidthKey, m_penWidth);
    m_file.GetItem(kDrawSection, kPenColorKey, m_penColor);
  } else {
    m_penWidth = 1;
    m_penColor = 0;
  }
  return LoadShapeSection();
}

// Leaves the store empty when the file does not open, or when a read fails midway.
bool VesselContour::OpenFile(const std::string& fileName) {
  try {
    return m_file.FileOpen(fileName, CFile::modeRead | CFile::shareDenyWrite);
  } catch (const CFileException&) {
    m_file.FileClose();
    return false;
  }
}

void VesselContour::SetDefaultContour() {
  m_points.reserve(m_points.size() + 6);  // so that the hull is added whole or not at all
  m_penColor = 0;
  m_penWidth = 0;  // Kept: 0, and not the 1 of a file that says nothing of the pen
  // Kept: behind the points that are held, so that a second failure makes twelve of six.
  m_points.emplace_back(Point(-5, -7, 0), true, false);
  m_points.emplace_back(Point(-5, 7, 0), false, false);
  m_points.emplace_back(Point(0, 10, 0), false, false);
  m_points.emplace_back(Point(5, 7, 0), false, false);
  m_points.emplace_back(Point(5, -7, 0), false, false);
  m_points.emplace_back(Point(-5, -7, 0), false, false);
}

bool VesselContour::LoadShapeSection() {
  DeleteAllPoints();
  const std::string section = SectionOfSide(m_viewSide);
  if (!m_file.HasSection(section)) return true;
  std::string_view text;
  // Kept: an empty value is an item, too, of a malformed point; the first missing number ends the list.
  while (m_file.Peek(section, KeyOfPoint(m_points.size() + 1), text)) m_points.push_back(PointOfText(text));
  m_loaded = true;
  return true;
}

bool VesselContour::SaveShapeSection() {
  const std::string section = SectionOfSide(m_viewSide);
  // Kept: without points the section is gone.
  m_file.DeleteSection(section);
  bool stored = true;
  for (std::size_t i = 0; i < m_points.size(); ++i) {
    stored = m_file.SetItem(section, KeyOfPoint(i + 1), TextOfPoint(m_points[i])) && stored;
  }
  return stored;
}

bool VesselContour::Save(const std::string& fileName) {
  // Kept: no falling back on the name of the file that was opened.
  if (fileName.empty()) return false;
  m_file.DeleteSection(kDrawSection);
  m_file.SetItem(kDrawSection, kPenWidthKey, m_penWidth);
  m_file.SetItem(kDrawSection, kPenColorKey, m_penColor);
  SaveShapeSection();
  return m_file.FileSave(fileName, CFile::modeCreate | CFile::modeWrite | CFile::shareExclusive);
}

bool VesselContour::SetViewSide(int viewSide) {
  // Kept: numbers are compared, not sections; 0 and 7 differ, and the points go through their texts.
  if (viewSide == m_viewSide) return true;
  SaveShapeSection();
  m_viewSide = viewSide;
  return LoadShapeSection();
}

bool VesselContour::GetPenColor(long& color) const {
  color = m_penColor;
  return true;
}

bool VesselContour::GetPenWidth(long& width) const {
  width = m_penWidth;
  return true;
}

int VesselContour::GetViewSide() const { return m_viewSide; }

int VesselContour::GetSize() const { return static_cast<int>(m_points.size()); }

bool VesselContour::HasPoint(int index) const { return index >= 1 && index <= GetSize(); }

bool VesselContour::GetPoint(int index, VesselPoint& point) const {
  if (!HasPoint(index)) return false;
  point = m_points[static_cast<std::size_t>(index) - 1];
  return true;
}

bool VesselContour::SetPoint(int index, const VesselPoint& point) {
  if (!HasPoint(index)) return false;
  m_points[static_cast<std::size_t>(index) - 1] = point;
  return true;
}

bool VesselContour::DeletePoint(int index) {
  if (!HasPoint(index)) return false;
  m_points.erase(m_points.begin() + (index - 1));
  return true;
}

bool VesselContour::InsertPoint(int index, const VesselPoint& point) {
  // Kept: one behind the last is refused; AddPoint is the way there.
  if (!HasPoint(index)) return false;
  m_points.insert(m_points.begin() + (index - 1), point);
  return true;
}

bool VesselContour::AddPoint(const VesselPoint& point) {
  m_points.push_back(point);
  return true;
}

bool VesselContour::DeleteAllPoints() {
  m_points.clear();
  m_loaded = false;
  return true;
}

bool VesselContour::GetBoundingPage(Page& page) const {
  page.Invalidate();
  for (const VesselPoint& point : m_points) page |= point;
  return page.IsValid();
}

bool VesselContour::GetExtents(Page& page) const {
  GetBoundingPage(page);
  return true;  // Kept: also when there is nothing, and the page is invalid
}

bool VesselContour::GetCenterPoint(Point& center) const {
  Page page;
  if (!GetBoundingPage(page)) return false;
  center = page.GetCenter();
  return true;
}

bool VesselContour::SaveToString(std::string& text) const {
  text.assign(kPenBytes + kPointBytes * m_points.size(), '\0');
  if (m_points.empty()) return true;  // Kept: nothing of the pen without points
  char* at = text.data();
  std::size_t left = text.size();
  bool packed = PackLong(m_penColor, at, left) && PackLong(m_penWidth, at, left);
  for (const VesselPoint& point : m_points) {
    packed = packed && PackDouble(point.x, at, left) && PackDouble(point.y, at, left) && PackBool(point.moveTo, at, left) &&
             PackBool(point.mark, at, left);
  }
  return packed;
}

bool VesselContour::LoadFromString(std::string text) {
  DeleteAllPoints();
  // Kept: 8 bytes, which SaveToString makes of no points, are refused, and the pen stays.
  if (text.size() <= kPenBytes) return false;
  const char* at = text.data();
  std::size_t left = text.size();
  m_points.reserve((left - kPenBytes) / kPointBytes);
  UnPackLong(m_penColor, at, left);
  UnPackLong(m_penWidth, at, left);
  while (left >= kPointBytes) {
    VesselPoint point;
    UnPackDouble(point.x, at, left);
    UnPackDouble(point.y, at, left);
    UnPackBool(point.moveTo, at, left);
    UnPackBool(point.mark, at, left);
    m_points.push_back(point);
  }
  m_loaded = true;
  return m_loaded;
}

bool VesselContour::PackDouble(double value, char*& at, std::size_t& left) { return Pack(std::bit_cast<std::uint64_t>(value), at, left); }

bool VesselContour::PackLong(int value, char*& at, std::size_t& left) { return Pack(static_cast<std::uint32_t>(value), at, left); }

bool VesselContour::PackBool(bool value, char*& at, std::size_t& left) { return Pack(static_cast<std::uint8_t>(value ? 1 : 0), at, left); }

bool VesselContour::UnPackDouble(double& value, const char*& at, std::size_t& left) {
  std::uint64_t bits = 0;
  // Unreached: as in UnPack.
  if (!UnPack(bits, at, left)) return false;
  value = std::bit_cast<double>(bits);
  return true;
}

bool VesselContour::UnPackLong(int& value, const char*& at, std::size_t& left) {
  std::uint32_t bits = 0;
  // Unreached: as in UnPack.
  if (!UnPack(bits, at, left)) return false;
  value = static_cast<int>(bits);
  return true;
}

bool VesselContour::UnPackBool(bool& value, const char*& at, std::size_t& left) {
  std::uint8_t bits = 0;
  // Unreached: as in UnPack.
  if (!UnPack(bits, at, left)) return false;
  value = bits != 0;  // Kept: any byte but 0 is true
  return true;
}
