#include "zelbase/platform/FaultInjectionFiles.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <utility>

#include "zelbase/platform/LockGuard.h"
#include "zelbase/platform/ThreadSafety.h"
#include "zelbase/platform/detail/Mutex.h"

namespace {

constexpr std::size_t kKinds = static_cast<std::size_t>(FileOperation::List) + 1;

struct FaultOrder {
  unsigned long long n = 0;  // operations still to come, the failing one included; 0 is no order
  std::optional<FileOperation> kind;
  FileResult result = FileResult::IoFailed;
  FaultInjectionFiles::Repeat repeat = FaultInjectionFiles::Repeat::Once;
};

// Everything that can be ordered.
struct Faults {
  FaultOrder order;
  std::size_t bytesBeforeFailure = 0;
  std::optional<unsigned long long> room;
  std::size_t readLimit = 0;
  bool dropped = false;
  bool opensFail = false;
};

struct Counts {
  std::array<unsigned long long, kKinds> byKind{};
  unsigned long long faults = 0;
};

bool IsOnOpenFile(FileOperation kind) {
  switch (kind) {
    case FileOperation::Open:
    case FileOperation::Replace:
    case FileOperation::Remove:
    case FileOperation::GetStatus:
    case FileOperation::List: return false;
    default: return true;
  }
}

}  // namespace

// What the object and its files share.
class FaultInjectionFiles::State {
 public:
  // How an operation is to end: with `result`, after at most `bytes` bytes.
  struct Verdict {
    FileResult result = FileResult::Ok;
    std::size_t bytes = std::numeric_limits<std::size_t>::max();
  };

  // Counts one operation without an open file and decides about it.
  Verdict Begin(FileOperation kind) {
    const LockGuard guard(m_mutex);
    return Count(kind, Decide(kind, 0));
  }

  // The same for a file that was opened after `breaks` calls of BreakOpenFiles. `size` is what a read or write asks for.
  Verdict Begin(FileOperation kind, std::size_t size, unsigned long long breaks) {
    const LockGuard guard(m_mutex);
    return Count(kind, breaks < m_breaks ? Verdict{m_broken, 0} : Decide(kind, size));
  }

  void BreakOpenFiles(FileResult result) {
    const LockGuard guard(m_mutex);
    ++m_breaks;
    m_broken = result;
  }

  unsigned long long Breaks() const {
    const LockGuard guard(m_mutex);
    return m_breaks;
  }

  void Order(const FaultOrder& order) {
    Change([&](Faults& faults) { faults.order = order; });
  }

  template <class Changer>
  void Change(Changer change) {
    const LockGuard guard(m_mutex);
    change(m_faults);
  }

  void Reset() {
    const LockGuard guard(m_mutex);
    m_faults = Faults();
    m_counts = Counts();
  }

  bool OpensFail() const {
    const LockGuard guard(m_mutex);
    return m_faults.dropped && m_faults.opensFail;
  }

  Counts ReadCounts() const {
    const LockGuard guard(m_mutex);
    return m_counts;
  }

  void ChangeOpenFiles(int by) {
    const LockGuard guard(m_mutex);
    m_openFiles += by;
  }

  int OpenFiles() const {
    const LockGuard guard(m_mutex);
    return m_openFiles;
  }

 private:
  Verdict Count(FileOperation kind, Verdict verdict) ZELBASE_REQUIRES(m_mutex) {
    ++m_counts.byKind[static_cast<std::size_t>(kind)];
    if (verdict.result != FileResult::Ok) ++m_counts.faults;
    return verdict;
  }

  // A dropped connection first, then the ordered fault, then the limits.
  Verdict Decide(FileOperation kind, std::size_t size) ZELBASE_REQUIRES(m_mutex) {
    const bool ordered = IsOrdered(kind);
    if (m_faults.dropped && (m_faults.opensFail || IsOnOpenFile(kind))) return {FileResult::NetworkNameDeleted, 0};
    if (ordered) return {m_faults.order.result, m_faults.bytesBeforeFailure};
    if (kind == FileOperation::Write) return DecideByRoom(size);
    if (kind == FileOperation::Read && m_faults.readLimit != 0) return {FileResult::Ok, m_faults.readLimit};
    return {};
  }

  bool IsOrdered(FileOperation kind) ZELBASE_REQUIRES(m_mutex) {
    FaultOrder& order = m_faults.order;
    if (order.n == 0 || (order.kind.has_value() && *order.kind != kind)) return false;
    if (order.n > 1) {
      --order.n;
      return false;
    }
    if (order.repeat == Repeat::Once) order.n = 0;
    return true;
  }

  Verdict DecideByRoom(std::size_t size) ZELBASE_REQUIRES(m_mutex) {
    if (!m_faults.room.has_value()) return {};
    const unsigned long long fitting = std::min<unsigned long long>(*m_faults.room, size);
    *m_faults.room -= fitting;
    if (fitting == size) return {};
    return {FileResult::DiskFull, static_cast<std::size_t>(fitting)};
  }

  mutable zelbase::detail::Mutex m_mutex;
  Faults m_faults ZELBASE_GUARDED_BY(m_mutex);
  Counts m_counts ZELBASE_GUARDED_BY(m_mutex);
  unsigned long long m_breaks ZELBASE_GUARDED_BY(m_mutex) = 0;
  FileResult m_broken ZELBASE_GUARDED_BY(m_mutex) = FileResult::Ok;
  int m_openFiles ZELBASE_GUARDED_BY(m_mutex) = 0;
};

class FaultInjectionFiles::File final : public PlatformFile {
 public:
  File(std::unique_ptr<PlatformFile> file, std::shared_ptr<State> state)
      : m_file(std::move(file)), m_state(std::move(state)), m_breaks(m_state->Breaks()) {
    m_state->ChangeOpenFiles(1);
  }
  ~File() override {
    m_file.reset();
    m_state->ChangeOpenFiles(-1);
  }

  PlatformFile* Behind() const { return m_file.get(); }

  FileResult Read(void* buffer, std::size_t size, std::size_t& done) override {
    return Transfer(FileOperation::Read, size, done, [&](std::size_t part) { return m_file->Read(buffer, part, done); });
  }
  FileResult Write(const void* buffer, std::size_t size, std::size_t& done) override {
    return Transfer(FileOperation::Write, size, done, [&](std::size_t part) { return m_file->Write(buffer, part, done); });
  }
  FileResult Seek(long long offset, int origin, long long& position) override {
    return Pass(FileOperation::Seek, [&] { return m_file->Seek(offset, origin, position); });
  }
  FileResult Flush() override {
    return Pass(FileOperation::Flush, [&] { return m_file->Flush(); });
  }
  FileResult GetSize(long long& size) override {
    return Pass(FileOperation::GetSize, [&] { return m_file->GetSize(size); });
  }
  FileResult SetEnd() override {
    return Pass(FileOperation::SetEnd, [&] { return m_file->SetEnd(); });
  }
  FileResult GetTimes(FileTimes& times) override {
    return Pass(FileOperation::GetTimes, [&] { return m_file->GetTimes(times); });
  }
  FileResult CopyModeFrom(const std::string& path) override {
    return Pass(FileOperation::CopyMode, [&] { return m_file->CopyModeFrom(path); });
  }

 private:
  template <class Operation>
  FileResult Pass(FileOperation kind, Operation operation) {
    const State::Verdict verdict = m_state->Begin(kind, 0, m_breaks);
    return verdict.result == FileResult::Ok ? operation() : verdict.result;
  }

  // A failure of the layer behind goes before the ordered one.
  template <class Operation>
  FileResult Transfer(FileOperation kind, std::size_t size, std::size_t& done, Operation operation) {
    done = 0;
    const State::Verdict verdict = m_state->Begin(kind, size, m_breaks);
    const std::size_t part = std::min(size, verdict.bytes);
    if (part == 0 && verdict.result != FileResult::Ok) return verdict.result;
    const FileResult result = operation(part);
    return result == FileResult::Ok ? verdict.result : result;
  }

  std::unique_ptr<PlatformFile> m_file;
  std::shared_ptr<State> m_state;
  unsigned long long m_breaks;
};

FaultInjectionFiles::FaultInjectionFiles(PlatformFiles& files) : m_files(files), m_state(std::make_shared<State>()) {}

FaultInjectionFiles::~FaultInjectionFiles() = default;

void FaultInjectionFiles::FailAt(unsigned long long n, FileResult result, Repeat repeat) {
  m_state->Order({n, std::nullopt, result, repeat});
}

void FaultInjectionFiles::FailAt(FileOperation kind, unsigned long long n, FileResult result, Repeat repeat) {
  m_state->Order({n, kind, result, repeat});
}

void FaultInjectionFiles::BytesBeforeFailure(std::size_t bytes) {
  m_state->Change([&](Faults& faults) { faults.bytesBeforeFailure = bytes; });
}

void FaultInjectionFiles::FillUpAfter(unsigned long long bytes) {
  m_state->Change([&](Faults& faults) { faults.room = bytes; });
}

void FaultInjectionFiles::LimitReads(std::size_t bytes) {
  m_state->Change([&](Faults& faults) { faults.readLimit = bytes; });
}

void FaultInjectionFiles::DropConnection(bool opensFail) {
  m_state->Change([&](Faults& faults) {
    faults.dropped = true;
    faults.opensFail = opensFail;
  });
}

void FaultInjectionFiles::RestoreConnection() {
  m_state->Change([](Faults& faults) { faults.dropped = false; });
}

void FaultInjectionFiles::BreakOpenFiles(FileResult result) { m_state->BreakOpenFiles(result); }

void FaultInjectionFiles::Reset() { m_state->Reset(); }

unsigned long long FaultInjectionFiles::Count() const {
  unsigned long long sum = 0;
  for (const unsigned long long count : m_state->ReadCounts().byKind) sum += count;
  return sum;
}

unsigned long long FaultInjectionFiles::Count(FileOperation kind) const {
  const std::size_t index = static_cast<std::size_t>(kind);
  return index < kKinds ? m_state->ReadCounts().byKind[index] : 0;
}

unsigned long long FaultInjectionFiles::FaultsGiven() const { return m_state->ReadCounts().faults; }

int FaultInjectionFiles::OpenFiles() const { return m_state->OpenFiles(); }

std::unique_ptr<PlatformFile> FaultInjectionFiles::Open(const FileOpenRequest& request, FileResult& result) {
  result = m_state->Begin(FileOperation::Open).result;
  if (result != FileResult::Ok) return nullptr;
  FileOpenRequest passedOn = request;
  if (const File* const former = dynamic_cast<File*>(request.inPlaceOf)) passedOn.inPlaceOf = former->Behind();
  std::unique_ptr<PlatformFile> file = m_files.Open(passedOn, result);
  if (file == nullptr) return nullptr;
  return std::make_unique<File>(std::move(file), m_state);
}

FileResult FaultInjectionFiles::Replace(const std::string& from, const std::string& to) {
  const FileResult result = m_state->Begin(FileOperation::Replace).result;
  return result == FileResult::Ok ? m_files.Replace(from, to) : result;
}

FileResult FaultInjectionFiles::Remove(const std::string& path) {
  const FileResult result = m_state->Begin(FileOperation::Remove).result;
  return result == FileResult::Ok ? m_files.Remove(path) : result;
}

std::string FaultInjectionFiles::FollowLinks(const std::string& path) { return m_state->OpensFail() ? path : m_files.FollowLinks(path); }

bool FaultInjectionFiles::IsRegularFile(const std::string& path) { return !m_state->OpensFail() && m_files.IsRegularFile(path); }

FileResult FaultInjectionFiles::GetStatus(const std::string& path, FileStatus& status) {
  const FileResult result = m_state->Begin(FileOperation::GetStatus).result;
  return result == FileResult::Ok ? m_files.GetStatus(path, status) : result;
}

FileResult FaultInjectionFiles::List(const std::string& folder, std::vector<FolderEntry>& entries) {
  const FileResult result = m_state->Begin(FileOperation::List).result;
  return result == FileResult::Ok ? m_files.List(folder, entries) : result;
}
