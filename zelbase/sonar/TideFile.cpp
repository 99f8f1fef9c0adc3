#include "zelbase/sonar/TideFile.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string_view>
#include <vector>

#include "zelbase/config/detail/ReplacingFile.h"
#include "zelbase/files/HugeFileStream.h"
#include "zelbase/platform/PlatformFiles.h"

namespace {

using zelbase::detail::ReplacingFile;
using zelbase::detail::TideRecord;
using zelbase::detail::TideSeries;

constexpr long long kRecordBytes = 16;
constexpr long long kBlockRecords = 4096;

double ReadDouble(const unsigned char* bytes) {
  unsigned long long bits = 0;
  for (int i = 0; i < 8; ++i) bits |= static_cast<unsigned long long>(bytes[i]) << (8 * i);
  return std::bit_cast<double>(bits);
}

void WriteDouble(unsigned char* bytes, double value) {
  const auto bits = std::bit_cast<unsigned long long>(value);
  for (int i = 0; i < 8; ++i) bytes[i] = static_cast<unsigned char>(bits >> (8 * i));
}

// A name with a zero byte in it would be taken for the file named by its front.
bool Open(HugeFileStream& stream, const std::string& name, bool create) {
  return name.find('\0') == std::string::npos && stream.Open(name.c_str(), create, true);
}

// A stream whose connection is lost seeks with success and stays where it is.
bool SeekSurely(HugeFileStream& stream, long long offset) { return stream.Seek(offset, 0) && stream.Position() == offset; }

// Hands the bytes of all records, block by block, to `write(bytes, size)`, until that is false.
template <class Write>
bool WriteRecords(const TideSeries& values, Write write) {
  std::vector<unsigned char> block;
  block.reserve(static_cast<std::size_t>(kBlockRecords * kRecordBytes));
  for (TideSeries::Position position = values.First(); !position.IsEnd(); position = values.Next(position)) {
    const TideRecord& record = values.At(position);
    block.resize(block.size() + kRecordBytes);
    WriteDouble(block.data() + block.size() - kRecordBytes, record.time);
    WriteDouble(block.data() + block.size() - kRecordBytes / 2, record.value);
    if (block.size() < block.capacity()) continue;
    if (!write(block.data(), block.size())) return false;
    block.clear();
  }
  return block.empty() || write(block.data(), block.size());
}

bool WriteInPlace(const TideSeries& values, const std::string& name) {
  HugeFileStream stream;
  return Open(stream, name, true) &&
         WriteRecords(values,
                      [&](const unsigned char* bytes, std::size_t size) { return stream.Write(bytes, static_cast<unsigned int>(size)); }) &&
         stream.Sync();
}

// Putting another file in its place would pull it away from under somebody who writes to it, or who keeps others out.
bool IsInUse(const std::string& name) {
  HugeFileStream stream;
  return PlatformService<PlatformFiles>::Current().IsRegularFile(name) && !Open(stream, name, false);
}

// A folder that does not take a file beside the old one leaves only the way of writing over it.
bool WriteAnew(const TideSeries& values, const std::string& name) {
  if (IsInUse(name)) return false;
  ReplacingFile file;
  if (!file.Begin(name)) return WriteInPlace(values, name);
  return WriteRecords(values,
                      [&](const unsigned char* bytes, std::size_t size) {
                        return file.WriteAll({reinterpret_cast<const char*>(bytes), size});
                      }) &&
         file.Commit();
}

}  // namespace

TideFile::TideFile(const TideFile& other)
    : m_values(other.m_values),
      m_dirty(other.m_dirty),
      m_openCount(other.m_openCount),
      m_fileName(other.m_fileName),
      m_partlyReadFile(other.m_partlyReadFile) {}

TideFile& TideFile::operator=(const TideFile& other) {
  if (this == &other) return *this;
  m_values = other.m_values;
  m_dirty = other.m_dirty;
  m_openCount = other.m_openCount;
  m_current = Position{};
  m_fileName = other.m_fileName;
  m_partlyReadFile = other.m_partlyReadFile;
  return *this;
}

bool TideFile::FileOpen(const std::string& name, bool create) {
  m_fileName = name;  // Kept: in any case, also when what follows fails
  if (m_openCount > 0) {
    // Kept: a further user neither reads nor makes a file
    if (m_openCount < std::numeric_limits<int>::max()) ++m_openCount;  // Unreached: more than two billion users
    return true;
  }
  HugeFileStream stream;
  if (!Open(stream, name, create) || !Load(stream)) return false;
  m_dirty = false;
  m_openCount = 1;
  return true;
}

// In large blocks; when one fails, record by record as far as it goes. Never further than the file was long at first.
bool TideFile::Load(HugeFileStream& stream) {
  long long size = 0;
  if (!stream.GetSize(size)) return false;
  const long long records = size / kRecordBytes;
  long long atOnce = std::min(records, kBlockRecords);
  std::vector<unsigned char> block(static_cast<std::size_t>(atOnce * kRecordBytes));
  m_partlyReadFile.clear();
  for (long long at = 0; at < records;) {
    atOnce = std::min(atOnce, records - at);
    if (!stream.Read(block.data(), static_cast<unsigned int>(atOnce * kRecordBytes))) {
      if (atOnce == 1 || !SeekSurely(stream, at * kRecordBytes)) {
        m_partlyReadFile = m_fileName;
        break;  // Kept: the front is a series like any other
      }
      atOnce = 1;
      continue;
    }
    for (long long i = 0; i < atOnce; ++i) {
      const unsigned char* const record = block.data() + i * kRecordBytes;
      const double time = ReadDouble(record);
      if (!std::isnan(time)) m_values.Set(time, ReadDouble(record + kRecordBytes / 2), m_current);
    }
    at += atOnce;
  }
  return true;
}

int TideFile::FileClose(bool save) {
  if (m_openCount < 1) return 0;
  if (save) FileSave();
  if (--m_openCount > 0) return m_openCount;
  // Kept: what could not be saved is lost, and m_dirty stays as it is
  m_values.Clear();
  m_current = Position{};
  m_partlyReadFile.clear();
  return 0;
}

bool TideFile::FileSave() const {
  if (m_openCount < 1) return false;
  if (!m_dirty) return true;
  // What could not be read is still in the file, and would be lost.
  if (m_fileName == m_partlyReadFile || !WriteAnew(m_values, m_fileName)) return false;
  m_dirty = false;
  return true;
}

bool TideFile::AddTideValue(double time, double value) {
  if (std::isnan(time)) return false;
  m_values.Set(time, value, m_current);
  m_dirty = true;  // Kept: also when the value is the same as before
  return true;
}

bool TideFile::DeleteTideValue(double time) {
  const bool isCurrent = !m_current.IsEnd() && m_values.At(m_current).time == time;
  const Position position = isCurrent ? m_current : m_values.Find(time);
  if (position.IsEnd()) return false;  // Kept: the position has not moved
  m_values.Erase(position, m_current);
  m_dirty = true;
  return true;
}

bool TideFile::UpdateTideValue(double time, double value) {
  if (m_current.IsEnd() || m_values.At(m_current).time != time) {
    m_current = std::isnan(time) ? Position{} : m_values.LowerBound(time);  // Kept: moved, also when it fails
    if (m_current.IsEnd() || m_values.At(m_current).time != time) return false;
  }
  m_values.SetValue(m_current, value);
  m_dirty = true;  // Kept: also when the value is the same as before
  return true;
}

bool TideFile::GetTideValue(double time, double& value) {
  m_current = m_values.Find(time);
  if (m_current.IsEnd()) return false;
  value = m_values.At(m_current).value;
  return true;
}

bool TideFile::GetTimeSpan(double& first, double& last) const {
  if (m_openCount < 1) return false;
  if (m_values.IsEmpty()) return true;
  first = m_values.At(m_values.First()).time;
  last = m_values.At(m_values.Last()).time;
  return true;
}

int TideFile::GetNumValues() const {
  constexpr std::size_t kMost = std::numeric_limits<int>::max();
  return static_cast<int>(std::min(m_values.Size(), kMost));
}

bool TideFile::Deliver(double& time, double& value) const {
  if (m_current.IsEnd()) return false;
  const TideRecord& record = m_values.At(m_current);
  time = record.time;
  value = record.value;
  return true;
}

bool TideFile::FindNothing() {
  m_current = Position{};
  return false;
}

bool TideFile::GetValueBefore(double& time, double& value) {
  if (std::isnan(time)) return FindNothing();
  m_current = m_values.LowerBound(time);
  if (m_current == m_values.First()) return false;  // Kept: the position stays on the first entry
  m_current = m_values.Previous(m_current);
  return Deliver(time, value);
}

bool TideFile::GetValueOnOrBefore(double& time, double& value) {
  if (std::isnan(time)) return FindNothing();
  m_current = m_values.LowerBound(time);
  // Kept: the first entry is delivered also when it lies behind the time
  if (m_current.IsEnd() || m_values.At(m_current).time != time) m_current = m_values.Previous(m_current);
  return Deliver(time, value);
}

bool TideFile::GetValueAfter(double& time, double& value) {
  if (std::isnan(time)) return FindNothing();
  m_current = m_values.UpperBound(time);
  return Deliver(time, value);
}

bool TideFile::GetValueOnOrAfter(double& time, double& value) {
  if (std::isnan(time)) return FindNothing();
  m_current = m_values.LowerBound(time);
  return Deliver(time, value);
}

bool TideFile::GetFirstTideValue(double& time, double& value) {
  m_current = m_values.First();
  return Deliver(time, value);
}

bool TideFile::GetLastTideValue(double& time, double& value) {
  m_current = m_values.Last();
  return Deliver(time, value);
}

bool TideFile::GetNextTideValue(double& time, double& value) {
  m_current = m_values.Next(m_current);
  return Deliver(time, value);
}

bool TideFile::GetPreviousTideValue(double& time, double& value) {
  m_current = m_values.Previous(m_current);  // Kept: the first entry stays and is delivered again
  return Deliver(time, value);
}

bool TideFile::GetCurrentTideValue(double& time, double& value) const { return Deliver(time, value); }
