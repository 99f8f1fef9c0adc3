#include "adapters/xyz/XyzTextSource.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "adapters/xyz/detail/XyzTextCursor.h"
#include "zelbase/platform/PlatformFiles.h"

using zelbase::detail::XyzTextCursor;

XyzTextSource::XyzTextSource(const XyzTextOptions& options) : m_options(options) {}

XyzTextSource::XyzTextSource(const std::string& fileName, const XyzTextOptions& options) : m_options(options) { Open(fileName); }

XyzTextSource::~XyzTextSource() = default;

bool XyzTextSource::Open(const std::string& fileName) {
  Close();
  if (fileName.empty() || fileName.find('\0') != std::string::npos) {
    m_result = FileResult::InvalidName;
    return false;
  }
  FileOpenRequest request;
  request.path = fileName;
  std::unique_ptr<PlatformFile> file = PlatformService<PlatformFiles>::Current().Open(request, m_result);
  if (file == nullptr) return false;
  m_result = file->GetSize(m_size);
  if (m_result != FileResult::Ok) return false;
  m_cursor = std::make_unique<XyzTextCursor>(*file, m_size, m_options);
  m_file = std::move(file);  // both or none, also without memory
  return true;
}

void XyzTextSource::Close() {
  Clear();
  m_cursor.reset();
  m_file.reset();
  m_whole.reset();
  m_result = FileResult::Ok;
}

const XyzTextSummary& XyzTextSource::SoFar() const {
  static const XyzTextSummary nothing;
  return m_cursor == nullptr ? nothing : m_cursor->Summary();
}

const XyzTextSummary* XyzTextSource::Whole() {
  if (!m_whole && IsOpen()) {
    XyzTextCursor cursor(*m_file, m_size, m_options);
    TimePoint point;
    while (cursor.Next(point)) {
    }
    m_result = cursor.Result();
    if (m_result == FileResult::Ok) m_whole = cursor.Summary();
  }
  return m_whole ? &*m_whole : nullptr;
}

bool XyzTextSource::GetFirstPoint(TimePoint& point) {
  if (!IsOpen()) return false;
  m_cursor->Rewind();
  return GetNextPoint(point);
}

bool XyzTextSource::GetNextPoint(TimePoint& point) {
  if (!IsOpen()) return false;
  if (m_cursor->Next(point)) return true;
  m_result = m_cursor->Result();
  if (m_result == FileResult::Ok && !m_whole) m_whole = m_cursor->Summary();
  return false;
}

int XyzTextSource::GetNumberOfPoints() {
  const XyzTextSummary* const whole = Whole();
  if (whole == nullptr || whole->points == 0) return -1;
  constexpr long long kMost = std::numeric_limits<int>::max();
  return static_cast<int>(std::min(whole->points, kMost));
}

bool XyzTextSource::GetExtents(Point& minimum, Point& maximum) {
  const XyzTextSummary* const whole = Whole();
  if (whole == nullptr || whole->points == 0) return false;
  minimum = whole->minimum;
  maximum = whole->maximum;
  return true;
}

double XyzTextSource::GetPosition() { return IsOpen() ? m_cursor->Part() : 1.0; }
