#include "adapters/cairo/detail/SurfaceObjects.h"

#include <algorithm>
#include <atomic>
#include <utility>

#include "zelbase/platform/CDC.h"

namespace zelbase::detail {
namespace {

std::uintptr_t NextNumber() {
  static std::atomic<std::uintptr_t> last{0};
  return ++last;
}

HGDIOBJ ToHandle(std::uintptr_t number) { return reinterpret_cast<HGDIOBJ>(number); }

LOGPEN MakePen(unsigned style, COLORREF color) {
  LOGPEN pen;
  pen.lopnStyle = style;
  pen.lopnColor = color;
  return pen;
}

}  // namespace

SurfaceObjects::SurfaceObjects() {
  AddStock(WHITE_BRUSH, SurfaceBrush{false, 0xFFFFFF});
  AddStock(BLACK_BRUSH, SurfaceBrush{false, 0});
  AddStock(HOLLOW_BRUSH, SurfaceBrush{true, 0});
  AddStock(WHITE_PEN, MakePen(PS_SOLID, 0xFFFFFF));
  AddStock(BLACK_PEN, MakePen(PS_SOLID, 0));
  AddStock(NULL_PEN, MakePen(PS_NULL, 0));
  AddStock(SYSTEM_FONT, LOGFONT());
  Select(Stock(BLACK_PEN));
  Select(Stock(WHITE_BRUSH));
  Select(Stock(SYSTEM_FONT));
}

void SurfaceObjects::AddStock(int index, const Thing& thing) {
  m_entries.push_back({NextNumber(), thing});
  m_stock.push_back(index);
}

HGDIOBJ SurfaceObjects::Add(const Thing& thing) {
  if (m_entries.size() >= kMost + m_stock.size()) return nullptr;
  m_entries.push_back({NextNumber(), thing});
  return ToHandle(m_entries.back().number);
}

bool SurfaceObjects::Remove(HGDIOBJ handle) {
  const Entry* const entry = Find(handle);
  if (entry == nullptr || handle == m_selected[entry->thing.index()]) return false;
  const std::ptrdiff_t place = entry - m_entries.data();
  if (place < static_cast<std::ptrdiff_t>(m_stock.size())) return false;
  m_entries.erase(m_entries.begin() + place);
  return true;
}

HGDIOBJ SurfaceObjects::Select(HGDIOBJ handle) {
  const Entry* const entry = Find(handle);
  if (entry == nullptr) return nullptr;
  if (const auto* pen = std::get_if<LOGPEN>(&entry->thing)) m_pen = *pen;
  if (const auto* brush = std::get_if<SurfaceBrush>(&entry->thing)) m_brush = *brush;
  if (const auto* font = std::get_if<LOGFONT>(&entry->thing)) m_font = *font;
  return std::exchange(m_selected[entry->thing.index()], handle);
}

HGDIOBJ SurfaceObjects::Stock(int index) const {
  const auto found = std::find(m_stock.begin(), m_stock.end(), index);
  return found == m_stock.end() ? nullptr : ToHandle(m_entries[static_cast<std::size_t>(found - m_stock.begin())].number);
}

HGDIOBJ SurfaceObjects::Current(unsigned kind) const {
  if (kind == OBJ_PEN) return m_selected[0];
  if (kind == OBJ_BRUSH) return m_selected[1];
  return kind == OBJ_FONT ? m_selected[2] : nullptr;
}

const LOGPEN* SurfaceObjects::FindPen(HGDIOBJ handle) const {
  const Entry* const entry = Find(handle);
  return entry == nullptr ? nullptr : std::get_if<LOGPEN>(&entry->thing);
}

const SurfaceObjects::Entry* SurfaceObjects::Find(HGDIOBJ handle) const {
  const auto number = reinterpret_cast<std::uintptr_t>(handle);
  const auto found = std::lower_bound(m_entries.begin(), m_entries.end(), number,
                                      [](const Entry& entry, std::uintptr_t wanted) { return entry.number < wanted; });
  return found == m_entries.end() || found->number != number ? nullptr : &*found;
}

}  // namespace zelbase::detail
