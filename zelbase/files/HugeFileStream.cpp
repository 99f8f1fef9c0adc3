#include "zelbase/files/HugeFileStream.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "zelbase/config/CRCChecksum.h"
#include "zelbase/platform/PlatformClock.h"
#include "zelbase/platform/PlatformFiles.h"
#include "zelbase/platform/detail/IntendedWraps.h"

namespace {

constexpr unsigned int kReopenMilliseconds = 15000;

// What the system's call leaves as the position when it fails: the low half all ones.
constexpr long long kNoPosition = 0xFFFFFFFFLL;

constexpr std::size_t kCrcBlock = 4096;

bool IsLostConnection(FileResult result) { return result == FileResult::NetworkNameDeleted || result == FileResult::UnexpectedNetwork; }

// Null on failure. `former` is the caller's own opening of the file, null for none.
std::unique_ptr<PlatformFile> OpenFile(const std::string& name, FileDisposition disposition, bool readWrite, PlatformFile* former) {
  if (name.empty()) return nullptr;
  FileOpenRequest request;
  request.path = name;
  request.access = readWrite ? FileRights::ReadWrite : FileRights::Read;
  request.sharing = readWrite ? FileRights::Read : FileRights::ReadWrite;
  request.disposition = disposition;
  request.randomAccess = true;
  request.inPlaceOf = former;
  FileResult result = FileResult::IoFailed;
  return PlatformService<PlatformFiles>::Current().Open(request, result);
}

// Kept: a byte counts as a signed character made an int, four bytes of the checksum, lowest first; stored values were made so.
std::uint32_t FourBytesOf(unsigned char byte) {
  const auto number = static_cast<std::uint32_t>(static_cast<int>(static_cast<signed char>(byte)));
  // Unreached: false, on a machine with the least byte first.
  if constexpr (std::endian::native == std::endian::little) return number;
  return number << 24 | (number & 0xFF00u) << 8 | (number >> 8 & 0xFF00u) | number >> 24;
}

using CrcBlock = std::array<unsigned char, kCrcBlock>;

// Widens the block first, so that the checksum's way for large blocks does the work.
void AddAsInts(CRCChecksum& sum, const CrcBlock& block, std::size_t size) {
  std::array<std::uint32_t, kCrcBlock> widened;
  for (std::size_t i = 0; i < kCrcBlock; ++i) widened[i] = FourBytesOf(block[i]);
  sum.Add(widened.data(), size * sizeof(std::uint32_t));
}

}  // namespace

HugeFileStream::HugeFileStream() = default;

HugeFileStream::HugeFileStream(const char* name, bool create, bool readWrite) { HugeFileStream::Open(name, create, readWrite); }

HugeFileStream::HugeFileStream(const HugeFileStream&) = default;

HugeFileStream& HugeFileStream::operator=(const HugeFileStream&) = default;

HugeFileStream::~HugeFileStream() = default;

bool HugeFileStream::Open(const char* name, bool create, bool readWrite) {
  std::string wanted = name != nullptr ? name : "";  // may be our own FileName()
  Close();
  m_handle = OpenFile(wanted, create ? FileDisposition::CreateAlways : FileDisposition::OpenExisting, readWrite, nullptr);
  if (m_handle == nullptr) return false;
  m_fileName = std::move(wanted);
  m_readWrite = readWrite;
  return true;
}

void HugeFileStream::Close() {
  m_handle.reset();
  m_fileName.clear();
  m_readWrite = false;
}

bool HugeFileStream::OpenAnew(bool readWrite) {
  std::unique_ptr<PlatformFile> handle = OpenFile(m_fileName, FileDisposition::OpenExisting, readWrite, m_handle.get());
  if (handle == nullptr) return false;
  // Kept: the new opening stands at 0, whatever the position was; the caller seeks again.
  m_handle = std::move(handle);
  return true;
}

bool HugeFileStream::ReOpen() { return OpenAnew(m_readWrite); }

bool HugeFileStream::MakeReadWrite(bool readWrite) {
  if (!OpenAnew(readWrite)) return false;
  m_readWrite = readWrite;
  return true;
}

// The tick wraps, and so does the difference.
ZELBASE_WRAPS bool HugeFileStream::ReOpenWhenDue() {
  const unsigned int now = PlatformService<PlatformClock>::Current().TickMilliseconds();
  if (now - m_lastReopen <= kReopenMilliseconds) return false;
  m_lastReopen = now;
  return ReOpen();
}

HugeFileStream::Sought HugeFileStream::SeekOrReOpen(long long offset, int origin, long long& position) {
  const auto seek = [&] { return m_handle != nullptr ? m_handle->Seek(offset, origin, position) : FileResult::InvalidHandle; };
  const FileResult result = seek();
  if (result == FileResult::Ok) return Sought::Moved;
  if (!IsLostConnection(result) && result != FileResult::InvalidHandle) return Sought::Failed;
  if (!ReOpenWhenDue()) return Sought::ConnectionLost;
  return seek() == FileResult::Ok ? Sought::Moved : Sought::Failed;
}

bool HugeFileStream::Seek(long long offset, int origin) {
  if (origin < 0 || origin > 2) return false;
  long long position = 0;
  // Kept: true in an outage, although nothing has moved; a replay runs on and notices it by Read.
  return SeekOrReOpen(offset, origin, position) != Sought::Failed;
}

long long HugeFileStream::Position() {
  long long position = 0;
  switch (SeekOrReOpen(0, 1, position)) {
    case Sought::Moved: return position;
    case Sought::ConnectionLost: return kNoPosition;  // Kept: not -1
    default: return -1;
  }
}

bool HugeFileStream::Read(void* buffer, unsigned int size) {
  if (m_handle == nullptr || (buffer == nullptr && size != 0)) return false;
  std::size_t done = 0;
  const FileResult result = m_handle->Read(buffer, size, done);
  // Kept: no second reading here, even when the file is open again.
  if (IsLostConnection(result)) ReOpenWhenDue();
  // Kept: at the end false, though the front was read and the position has moved.
  return result == FileResult::Ok && done == size;
}

bool HugeFileStream::Write(const void* buffer, unsigned int size) {
  if (m_handle == nullptr || (buffer == nullptr && size != 0)) return false;
  std::size_t done = 0;
  return m_handle->Write(buffer, size, done) == FileResult::Ok && done == size;
}

bool HugeFileStream::Sync() { return !m_readWrite || m_handle->Flush() == FileResult::Ok; }

bool HugeFileStream::GetSize(long long& size) { return m_handle != nullptr && m_handle->GetSize(size) == FileResult::Ok; }

bool HugeFileStream::SetSize(long long size) { return Seek(size, 0) && m_handle != nullptr && m_handle->SetEnd() == FileResult::Ok; }

bool HugeFileStream::GetFileTimes(double& created, double& accessed, double& written) {
  FileTimes times;
  const bool known = m_handle != nullptr && m_handle->GetTimes(times) == FileResult::Ok;
  if (!known) times = FileTimes();
  created = times.created;
  accessed = times.accessed;
  written = times.written;
  return known;
}

bool HugeFileStream::GetFileCrc32(unsigned int& crc) {
  if (m_handle == nullptr) return false;
  CRCChecksum sum;
  CrcBlock block{};
  for (;;) {
    // Not by Read, whose last block would be lost.
    std::size_t done = 0;
    if (m_handle->Read(block.data(), block.size(), done) != FileResult::Ok || done == 0) break;
    AddAsInts(sum, block, done);
  }
  crc = sum.Value();  // Kept: no inversion at the end, and a failed read is taken for the end
  return true;
}
