#include "zelbase/geometry/LineDataList.h"

#include <utility>

LineDataList::~LineDataList() {
  RemoveAll();
}

LineDataList& LineDataList::GetLineDataList() {
  // The list itself stays, so that destructors that run later find it; only what it holds goes at exit.
  static LineDataList* const list = new LineDataList;
  struct Emptier {
    ~Emptier() { list->RemoveAll(); }
  };
  static const Emptier emptier;
  return *list;
}

void LineDataList::RegisterLineData(unsigned int type, LineDataICreator* creator) {
  if (creator == nullptr) return;
  // Kept: no replacement, and a refused creator stays its caller's.
  if (m_creators.contains(type)) return;
  std::shared_ptr<LineDataICreator> held = Held(creator);
  if (held == nullptr) held.reset(creator);
  m_creators.emplace(type, std::move(held));
}

LineData* LineDataList::Create(unsigned int type, const std::string& name) {
  const auto found = m_creators.find(type);
  return found == m_creators.end() ? nullptr : found->second->Create(name);
}

// The ownership of a creator that already serves a type; null when it serves none.
std::shared_ptr<LineDataICreator> LineDataList::Held(LineDataICreator* creator) const {
  for (const auto& [type, held] : m_creators) {
    if (held.get() == creator) return held;
  }
  return nullptr;
}

void LineDataList::RemoveAll() {
  // Out of the list before it is destroyed: its destructor may call back.
  while (!m_creators.empty()) m_creators.extract(m_creators.begin());
}
