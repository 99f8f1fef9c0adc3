// The system's file calls, failing on request: below all code of the library, where a write is short, a call is interrupted or
// the process dies between two calls. Neighbours: AllocationFaults.h, the same for memory;
// zelbase/platform/FaultInjectionFiles.h, the stand-in on the level of the library's own file service.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

// Calls of one kind count together: Read is read and pread; Status is stat, fstat, lstat, fstatat, statx and statvfs; Lock and
// Flags are fcntl on the locks of a file and on its flags; Folder is opendir, fdopendir, readdir and getcwd; Access is access and
// faccessat; Clock is localtime_r, clock_nanosleep and clock_settime; Process is fork, pipe2 and waitpid; Thread is pthread_attr_init,
// pthread_attr_setstacksize and pthread_create; Device is isatty and ioctl.
enum class SystemCall : unsigned int {
  Open,
  Read,
  Write,
  Seek,
  Sync,
  Status,
  Truncate,
  Lock,
  Flags,
  Mode,
  Owner,
  Rename,
  Remove,
  Folder,
  Access,
  ReadLink,
  Clock,
  Process,
  Thread,
  Device
};

// A call that changed something on the disk, or forced it there.
struct DiskChange {
  enum class Kind { Create, Write, Truncate, Sync, SyncFolder, Rename, Remove };
  Kind kind;
  unsigned long long file = 0;  // number of the file's record; of Create, Write, Truncate and Sync
  std::string path;             // of Create, Remove and SyncFolder; of Rename the old name
  std::string target;           // of Rename
  long long offset = 0;         // of Write; of Truncate the new size
  std::string bytes;            // of Write
};

// While one of these is in scope, the calling thread's calls are counted and fail as ordered. Only one at a time in a thread.
// The test program of this folder has these calls of its own, which go on to the system's.
//
//   SystemCallFaults calls;
//   calls.FailAt(3, ENOSPC);
//   EXPECT_FALSE(settings.FileSaveReplacing(name));
class SystemCallFaults {
 public:
  enum class Repeat { Once, ForEver };

  SystemCallFaults();
  ~SystemCallFaults();
  SystemCallFaults(const SystemCallFaults&) = delete;
  SystemCallFaults& operator=(const SystemCallFaults&) = delete;

  // The `n`-th call from now on, counted from 1, fails with that errno and without effect; with ForEver every later one, too.
  // With a kind, only calls of that kind count. Several orders may be in force; the first that is due decides.
  void FailAt(unsigned long long n, int error, Repeat repeat);
  void FailAt(SystemCall kind, unsigned long long n, int error, Repeat repeat);

  // The `n`-th of the calls that a signal may interrupt (Open, Read, Write, Sync, Truncate and Lock) fails with EINTR; with
  // ForEver that one and every second call after it, so that a call that is tried again goes through.
  void InterruptAt(unsigned long long n, Repeat repeat);

  // The `n`-th Read or Write moves `bytes` bytes at most; with ForEver every later one, too. A write is then followed by one that
  // fails with `error`, unless that is 0.
  void ShortenAt(SystemCall kind, unsigned long long n, Repeat repeat, int error = 0, std::size_t bytes = 1);

  // Just before the `n`-th call of that kind goes on, `function` runs: what somebody else does at that moment.
  void CallAt(SystemCall kind, unsigned long long n, std::function<void()> function);

  // The `n`-th call of that kind, which is ioctl or clock_settime, is not made and says that it was: a device that agrees to
  // everything. `answer` gets what the call was given a pointer to.
  void PretendAt(SystemCall kind, unsigned long long n, std::function<void(void*)> answer = {});

  // The next process that this thread makes can make none itself.
  void RefuseForkOfChild(int error);

  // Entries of folders come without their kind, as some file systems give them.
  void HideKinds();

  // The `n`-th call ends the process by SIGKILL before it does anything; a Write first puts out `bytes` of its bytes.
  void DieAt(unsigned long long n, std::size_t bytes = 0);

  unsigned long long Count() const;
  unsigned long long FaultsGiven() const;

  // What the calls have changed since the beginning, in order. Failed ones have not.
  const std::vector<DiskChange>& Changes() const;

  // Bytes asked for by each Write since the beginning, at its place among all calls (from 1).
  struct WriteCall {
    unsigned long long place;
    std::size_t size;
  };
  const std::vector<WriteCall>& Writes() const;
};
