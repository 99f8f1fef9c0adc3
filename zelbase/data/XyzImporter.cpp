#include "zelbase/data/XyzImporter.h"

XyzImporter::XyzImporter(XYZDataSource* source, bool ownsSource) : m_source(source), m_owned(ownsSource ? source : nullptr) {}

XyzImporter::~XyzImporter() = default;

bool XyzImporter::Process() {
  ResetProgress();
  if (m_source == nullptr) return false;
  TimePoint point;
  if (!m_source->GetFirstPoint(point)) return true;  // Kept: nothing to do is a success, also of a stopped job
  do {
    // Kept: asked before each point only, so that a stop during the last one comes too late
    if (IsStopped()) return false;
    // Kept: a question for count or extents within AddPoint rewinds an ordinary source, and the import ends where that leaves it
    if (!AddPoint(point)) return false;
    // Kept: behind the point, so that a refused one leaves the progress
    SetProgress(m_source->GetPosition());
  } while (m_source->GetNextPoint(point));
  return true;
}

bool XyzImporter::AddPoint(const TimePoint&) { return true; }

XYZDataSource* XyzImporter::GetDataSource() { return m_source; }

int XyzImporter::GetNumberOfPoints() const { return m_source == nullptr ? -1 : m_source->GetNumberOfPoints(); }

bool XyzImporter::GetExtents(Point& minimum, Point& maximum) const { return m_source != nullptr && m_source->GetExtents(minimum, maximum); }
