#include "zelbase/platform/RecordingSurface.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

namespace {

// A handle is its number, and points at nothing.
HGDIOBJ HandleOf(long long number) { return reinterpret_cast<HGDIOBJ>(static_cast<std::uintptr_t>(number)); }

long long NumberIn(HGDIOBJ handle) { return static_cast<long long>(reinterpret_cast<std::uintptr_t>(handle)); }

bool TakesText(const std::string& name) { return name == "TextOut" || name == "GetTextExtentPoint32A" || name == "CreateFontIndirect"; }

bool Paints(const RecordingSurface::Call& call) {
  static constexpr const char* kNames[] = {"MoveTo", "LineTo", "SetPixel", "Rectangle", "Ellipse", "TextOut", "FillSolidRect"};
  return std::find(std::begin(kNames), std::end(kNames), call.name) != std::end(kNames);
}

}  // namespace

std::string RecordingSurface::Call::ToString() const {
  std::string line = name;
  for (const long long number : numbers) line += ' ' + std::to_string(number);
  if (TakesText(name)) line += " '" + text + '\'';
  return line;
}

RecordingSurface::RecordingSurface() {
  m_pen = Make(OBJ_PEN, true);
  Select(m_pen);
  Select(Make(OBJ_BRUSH, true));
  Select(Make(OBJ_FONT, true));
  m_hollow = Make(OBJ_BRUSH, true);
}

void RecordingSurface::SetPen(const std::optional<LOGPEN>& pen) {
  m_selected[OBJ_PEN] = pen ? m_pen : nullptr;
  if (pen) m_things[m_pen].pen = *pen;
}

std::vector<std::string> RecordingSurface::Lines() const {
  std::vector<std::string> lines;
  for (const Call& call : calls) lines.push_back(call.ToString());
  return lines;
}

std::vector<std::string> RecordingSurface::Painted() const {
  std::vector<std::string> lines;
  for (const Call& call : calls) {
    if (Paints(call)) lines.push_back(call.ToString());
  }
  return lines;
}

std::size_t RecordingSurface::NumNotDeleted() const {
  const auto made = std::count_if(m_things.begin(), m_things.end(), [](const auto& entry) { return !entry.second.isStock; });
  return static_cast<std::size_t>(made);
}

void RecordingSurface::Note(const char* name, std::vector<long long> numbers, const std::string& text) const {
  calls.push_back({name, std::move(numbers), text});
}

long long RecordingSurface::NumberOf(HGDIOBJ object) const {
  if (object == nullptr) return 0;
  return m_things.contains(object) ? NumberIn(object) : -1;
}

HGDIOBJ RecordingSurface::Make(unsigned kind, bool isStock) {
  const HGDIOBJ handle = HandleOf(++m_lastNumber);
  m_things[handle] = {kind, isStock, LOGPEN()};
  return handle;
}

HGDIOBJ RecordingSurface::Select(HGDIOBJ object) {
  const auto found = m_things.find(object);
  return found == m_things.end() ? nullptr : std::exchange(m_selected[found->second.kind], object);
}

bool RecordingSurface::IsSelected(HGDIOBJ object) const {
  return std::any_of(m_selected.begin(), m_selected.end(), [object](const auto& entry) { return entry.second == object; });
}

CPoint RecordingSurface::MoveTo(int x, int y) {
  Note("MoveTo", {x, y});
  return std::exchange(m_position, CPoint(x, y));
}

bool RecordingSurface::LineTo(int x, int y) {
  Note("LineTo", {x, y});
  m_position = CPoint(x, y);
  return answer;
}

COLORREF RecordingSurface::SetPixel(int x, int y, COLORREF color) {
  Note("SetPixel", {x, y, color});
  return answer ? color : std::numeric_limits<COLORREF>::max();
}

bool RecordingSurface::Rectangle(int x1, int y1, int x2, int y2) {
  Note("Rectangle", {x1, y1, x2, y2});
  return answer;
}

bool RecordingSurface::Ellipse(int x1, int y1, int x2, int y2) {
  Note("Ellipse", {x1, y1, x2, y2});
  return answer;
}

int RecordingSurface::GetDeviceCaps(int index) const {
  Note("GetDeviceCaps", {index});
  return index == LOGPIXELSY ? dotsPerInch : 0;
}

HGDIOBJ RecordingSurface::GetCurrentObject(unsigned kind) const {
  Note("GetCurrentObject", {kind});
  const auto found = m_selected.find(kind);
  return found == m_selected.end() ? nullptr : found->second;
}

bool RecordingSurface::GetObject(HGDIOBJ object, LOGPEN& pen) const {
  Note("GetObject", {NumberOf(object)});
  const auto found = m_things.find(object);
  if (found == m_things.end() || found->second.kind != OBJ_PEN) return false;
  pen = found->second.pen;
  return true;
}

int RecordingSurface::GetROP2() const {
  Note("GetROP2", {});
  return rop2;
}

HGDIOBJ RecordingSurface::SelectObject(HGDIOBJ object) {
  Note("SelectObject", {NumberOf(object)});
  return Select(object);
}

HGDIOBJ RecordingSurface::SelectStockObject(int index) {
  Note("SelectStockObject", {index});
  return index == HOLLOW_BRUSH ? Select(m_hollow) : nullptr;
}

HGDIOBJ RecordingSurface::CreateSolidBrush(COLORREF color) {
  Note("CreateSolidBrush", {color});
  return answer ? Make(OBJ_BRUSH, false) : nullptr;
}

HGDIOBJ RecordingSurface::CreateFontIndirect(const LOGFONT& font) {
  Note("CreateFontIndirect", {font.lfHeight, font.lfWidth, font.lfEscapement, font.lfOrientation, font.lfWeight}, font.lfFaceName);
  return answer ? Make(OBJ_FONT, false) : nullptr;
}

bool RecordingSurface::DeleteObject(HGDIOBJ object) {
  Note("DeleteObject", {NumberOf(object)});
  const auto found = m_things.find(object);
  if (found == m_things.end() || found->second.isStock || IsSelected(object)) return false;
  m_things.erase(found);
  return true;
}

CSize RecordingSurface::GetTextExtentPoint32A(const std::string& text) const {
  Note("GetTextExtentPoint32A", {}, text);
  constexpr std::size_t kMost = std::numeric_limits<int>::max();
  const long long numBytes = static_cast<long long>(std::min(text.size(), kMost));
  return CSize(zelbase::detail::NearestInt(numBytes * letter.cx), letter.cy);
}

unsigned RecordingSurface::SetTextAlign(unsigned align) {
  Note("SetTextAlign", {align});
  return std::exchange(m_align, align);
}

int RecordingSurface::SetBkMode(int mode) {
  Note("SetBkMode", {mode});
  return std::exchange(m_bkMode, mode);
}

bool RecordingSurface::TextOut(int x, int y, const std::string& text) {
  Note("TextOut", {x, y}, text);
  return answer;
}

void RecordingSurface::FillSolidRect(const CRect& rect, COLORREF color) {
  Note("FillSolidRect", {rect.left, rect.top, rect.right, rect.bottom, color});
  m_bkColor = color;
}

COLORREF RecordingSurface::GetBkColor() const {
  Note("GetBkColor", {});
  return m_bkColor;
}

COLORREF RecordingSurface::SetBkColor(COLORREF color) {
  Note("SetBkColor", {color});
  return std::exchange(m_bkColor, color);
}
