// Files that fail on request, for tests of ours and of users: the n-th operation fails, a disk fills up, a connection drops.
// Stands in front of any PlatformFiles and passes everything else on to it. Neighbour: PlatformFiles.h, the interface.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "zelbase/platform/PlatformFiles.h"
#include "zelbase/platform/ZelBaseApi.h"

// The operations that are counted and may fail. FollowLinks and IsRegularFile, which have no result number, are passed on
// uncounted.
enum class FileOperation : unsigned int {
  Open,
  Read,
  Write,
  Seek,
  Flush,
  GetSize,
  SetEnd,
  GetTimes,
  CopyMode,
  Replace,
  Remove,
  GetStatus,
  List
};

// Put in force with a PlatformOverride; a loop over n visits every way in which one operation can fail:
//
//   FaultInjectionFiles files;
//   PlatformOverride<PlatformFiles> guard(files);
//   for (unsigned long long n = 1;; ++n) {
//     files.Reset();
//     files.FailAt(n);
//     ... save, expect the stated failure or success ...
//     EXPECT_EQ(files.OpenFiles(), 0);
//     if (files.FaultsGiven() == 0) break;  // the run was clean: n went beyond its last operation
//   }
//
// Every fault ends the operation before the layer behind it is asked, so that nothing has happened: no file is cut, moved
// or removed. Only a failing read or write first moves as many bytes as BytesBeforeFailure says.
//
// The layer behind outlives this object and its files. Files may outlive this object. Any thread may call; counting is in
// the order of the calls.
class ZELBASE_API FaultInjectionFiles : public PlatformFiles {
 public:
  enum class Repeat { Once, ForEver };

  explicit FaultInjectionFiles(PlatformFiles& files = PlatformFiles::System());
  ~FaultInjectionFiles() override;
  FaultInjectionFiles(const FaultInjectionFiles&) = delete;
  FaultInjectionFiles& operator=(const FaultInjectionFiles&) = delete;

  // ---- What goes wrong ----

  // The `n`-th operation from now on, counted from 1, gives `result`; with ForEver every later one, too. With a kind, only
  // operations of that kind count. One such order is in force at a time; n = 0 withdraws it.
  void FailAt(unsigned long long n, FileResult result = FileResult::IoFailed, Repeat repeat = Repeat::Once);
  void FailAt(FileOperation kind, unsigned long long n, FileResult result = FileResult::IoFailed, Repeat repeat = Repeat::Once);

  // A read or write that FailAt fails moves this many bytes (at most what was asked for) before it fails. 0 at first.
  void BytesBeforeFailure(std::size_t bytes);

  // The device takes this many bytes more, in all files together; a write beyond that puts out what fits and is DiskFull.
  void FillUpAfter(unsigned long long bytes);

  // One read gives at most this many bytes, as a slow connection may; 0 is no limit.
  void LimitReads(std::size_t bytes);

  // Every operation on open files is NetworkNameDeleted until RestoreConnection; those on paths are, too, unless
  // `opensFail` is false. A file that was open goes on where it was when the connection is back.
  void DropConnection(bool opensFail = true);
  void RestoreConnection();

  // Files that are open now fail every operation with `result` for ever, as those of a share that went away and came back;
  // files opened later do not.
  void BreakOpenFiles(FileResult result = FileResult::NetworkNameDeleted);

  // As new: no fault is ordered and all counts are 0. Files that are open still count as open, and
  // broken ones stay broken.
  void Reset();

  // ---- What has happened ----

  // Operations since the beginning or the last Reset, the failed ones included.
  unsigned long long Count() const;
  unsigned long long Count(FileOperation kind) const;

  // Operations that failed by order, whatever the kind of fault. What the layer behind failed by itself is not counted.
  unsigned long long FaultsGiven() const;

  // Files opened through this object and not yet closed.
  int OpenFiles() const;

  // ---- PlatformFiles ----

  std::unique_ptr<PlatformFile> Open(const FileOpenRequest& request, FileResult& result) override;
  FileResult Replace(const std::string& from, const std::string& to) override;
  FileResult Remove(const std::string& path) override;
  std::string FollowLinks(const std::string& path) override;
  bool IsRegularFile(const std::string& path) override;
  FileResult GetStatus(const std::string& path, FileStatus& status) override;
  FileResult List(const std::string& folder, std::vector<FolderEntry>& entries) override;

 private:
  class State;
  class File;

  PlatformFiles& m_files;
  std::shared_ptr<State> m_state;
};
