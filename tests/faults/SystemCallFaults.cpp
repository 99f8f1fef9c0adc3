#include "tests/faults/SystemCallFaults.h"

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <optional>
#include <utility>

#include "tests/support/BranchCounts.h"

namespace {

enum class Way { Fail, Interrupt, Shorten, Die, Call, Pretend };

struct Fault {
  Way way = Way::Fail;
  std::optional<SystemCall> kind;
  unsigned long long n = 0;  // calls still to come, the failing one included
  bool forEver = false;
  int error = 0;
  std::size_t bytes = 0;
  std::function<void()> function;
  std::function<void(void*)> answer;
  bool reached = false;
  bool wasInterrupted = false;
};

struct Watch {
  std::vector<Fault> orders;
  int nextWriteError = 0;
  bool hidesKinds = false;
  int forkErrorOfChild = 0;
  unsigned long long count = 0;
  unsigned long long faults = 0;
  std::vector<DiskChange> changes;
  std::vector<SystemCallFaults::WriteCall> writes;
};

thread_local Watch* t_watch = nullptr;
int g_forkError = 0;  // of a child that can make no process

// The watch's own memory and calls are nobody's business.
class Aside {
 public:
  Aside() : m_watch(t_watch) { t_watch = nullptr; }
  ~Aside() { t_watch = m_watch; }
  Watch* operator->() const { return m_watch; }

 private:
  Watch* const m_watch;
};

bool MayBeInterrupted(SystemCall kind) {
  switch (kind) {
    case SystemCall::Open:
    case SystemCall::Read:
    case SystemCall::Write:
    case SystemCall::Sync:
    case SystemCall::Truncate:
    case SystemCall::Lock: return true;
    default: return false;
  }
}

bool Concerns(const Fault& fault, SystemCall kind) {
  if (fault.way == Way::Interrupt) return MayBeInterrupted(kind);
  return !fault.kind.has_value() || *fault.kind == kind;
}

// Whether it is this call's turn.
bool IsDue(Fault& fault, SystemCall kind) {
  if (!Concerns(fault, kind)) return false;
  if (fault.reached) {
    if (!fault.forEver) return false;
    if (fault.way == Way::Interrupt) return fault.wasInterrupted = !fault.wasInterrupted;
    return true;
  }
  if (--fault.n > 0) return false;
  fault.reached = true;
  fault.wasInterrupted = true;
  return true;
}

// The order that decides about this call; null for none. All of them count it.
Fault* DueAmong(std::vector<Fault>& orders, SystemCall kind) {
  Fault* due = nullptr;
  for (Fault& fault : orders) {
    if (IsDue(fault, kind) && due == nullptr) due = &fault;
  }
  return due;
}

struct Verdict {
  int error = 0;  // 0: the call goes on
  std::optional<std::size_t> bytes;
  bool dies = false;
  bool pretends = false;
  std::function<void(void*)> answer;
};

Verdict Begin(SystemCall kind) {
  Verdict verdict;
  if (t_watch == nullptr) return verdict;
  Watch& watch = *t_watch;
  ++watch.count;
  if (kind == SystemCall::Write && watch.nextWriteError != 0) {
    verdict.error = watch.nextWriteError;
    watch.nextWriteError = 0;
    ++watch.faults;
    return verdict;
  }
  Fault* const fault = DueAmong(watch.orders, kind);
  if (fault == nullptr) return verdict;
  ++watch.faults;
  switch (fault->way) {
    case Way::Shorten:
      verdict.bytes = fault->bytes;
      if (kind == SystemCall::Write) watch.nextWriteError = fault->error;
      break;
    case Way::Pretend:
      verdict.pretends = true;
      verdict.answer = fault->answer;
      break;
    case Way::Call: {
      const Aside aside;
      fault->function();
      break;
    }
    case Way::Die:
      verdict.dies = true;
      verdict.bytes = fault->bytes;
      break;
    default: verdict.error = fault->way == Way::Interrupt ? EINTR : fault->error;
  }
  return verdict;
}

[[noreturn]] void Die() {
  ::kill(::getpid(), SIGKILL);
  for (;;) ::pause();
}

// True when the call is not to be made; errno is set then.
bool IsRefused(SystemCall kind) {
  // At once: the thread sanitizer calls in threads that it does not know yet, where no code that it watches may run.
  if (t_watch == nullptr) return false;
  const Verdict verdict = Begin(kind);
  if (verdict.dies) Die();
  if (verdict.error != 0) errno = verdict.error;
  return verdict.error != 0;
}

// The call of that name behind this one.
#define NEXT(name)                                                                           \
  ([] {                                                                                      \
    static const auto next = reinterpret_cast<decltype(&::name)>(::dlsym(RTLD_NEXT, #name)); \
    return next;                                                                             \
  }())

unsigned long long FileNumber(int descriptor) {
  struct stat status {};
  return ::fstat(descriptor, &status) == 0 ? status.st_ino : 0;
}

bool IsFolder(int descriptor) {
  struct stat status {};
  return ::fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode);
}

std::string PathOf(int descriptor) {
  char path[4096];
  const std::string name = "/proc/self/fd/" + std::to_string(descriptor);
  const ssize_t size = ::readlink(name.c_str(), path, sizeof(path));
  return std::string(path, size > 0 ? static_cast<std::size_t>(size) : 0);
}

void Note(const DiskChange& change) {
  const int error = errno;
  const Aside watch;
  watch->changes.push_back(change);
  errno = error;
}

void NoteWrite(int descriptor, const void* bytes, std::size_t size, off_t offset) {
  const int error = errno;
  {
    const Aside watch;
    watch->changes.push_back(
        {DiskChange::Kind::Write, FileNumber(descriptor), {}, {}, offset, std::string(static_cast<const char*>(bytes), size)});
  }
  errno = error;
}

void NoteDescriptor(DiskChange::Kind kind, int descriptor, off_t size) {
  const int error = errno;
  {
    const Aside watch;
    DiskChange change{kind, FileNumber(descriptor), {}, {}, size, {}};
    if (IsFolder(descriptor)) change.kind = DiskChange::Kind::SyncFolder;
    change.path = PathOf(descriptor);
    watch->changes.push_back(change);
  }
  errno = error;
}

bool Exists(const char* path) {
  const Aside watch;
  const int error = errno;
  struct stat status {};
  const bool exists = ::lstat(path, &status) == 0;
  errno = error;
  return exists;
}

}  // namespace

SystemCallFaults::SystemCallFaults() { t_watch = new Watch; }

SystemCallFaults::~SystemCallFaults() {
  delete t_watch;
  t_watch = nullptr;
}

namespace {

Fault& Order(Way way, std::optional<SystemCall> kind, unsigned long long n, bool forEver, int error = 0) {
  Fault fault;
  fault.way = way;
  fault.kind = kind;
  fault.n = n;
  fault.forEver = forEver;
  fault.error = error;
  t_watch->orders.push_back(std::move(fault));
  return t_watch->orders.back();
}

}  // namespace

void SystemCallFaults::FailAt(unsigned long long n, int error, Repeat repeat) {
  Order(Way::Fail, std::nullopt, n, repeat == Repeat::ForEver, error);
}

void SystemCallFaults::FailAt(SystemCall kind, unsigned long long n, int error, Repeat repeat) {
  Order(Way::Fail, kind, n, repeat == Repeat::ForEver, error);
}

void SystemCallFaults::InterruptAt(unsigned long long n, Repeat repeat) {
  Order(Way::Interrupt, std::nullopt, n, repeat == Repeat::ForEver);
}

void SystemCallFaults::ShortenAt(SystemCall kind, unsigned long long n, Repeat repeat, int error, std::size_t bytes) {
  Order(Way::Shorten, kind, n, repeat == Repeat::ForEver, error).bytes = bytes;
}

void SystemCallFaults::CallAt(SystemCall kind, unsigned long long n, std::function<void()> function) {
  Order(Way::Call, kind, n, false).function = std::move(function);
}

void SystemCallFaults::PretendAt(SystemCall kind, unsigned long long n, std::function<void(void*)> answer) {
  Order(Way::Pretend, kind, n, false).answer = std::move(answer);
}

void SystemCallFaults::RefuseForkOfChild(int error) { t_watch->forkErrorOfChild = error; }

void SystemCallFaults::HideKinds() { t_watch->hidesKinds = true; }

void SystemCallFaults::DieAt(unsigned long long n, std::size_t bytes) { Order(Way::Die, std::nullopt, n, false).bytes = bytes; }

unsigned long long SystemCallFaults::Count() const { return t_watch->count; }

unsigned long long SystemCallFaults::FaultsGiven() const { return t_watch->faults; }

const std::vector<DiskChange>& SystemCallFaults::Changes() const { return t_watch->changes; }

const std::vector<SystemCallFaults::WriteCall>& SystemCallFaults::Writes() const { return t_watch->writes; }

namespace {

// Whether the call is to be made; otherwise `result` is what it says, errno set, and `argument` has the answer.
bool IsMade(SystemCall kind, void* argument, int& result) {
  const Verdict verdict = Begin(kind);
  if (verdict.error != 0) errno = verdict.error;
  result = verdict.error != 0 ? -1 : 0;
  if (verdict.pretends && verdict.answer) verdict.answer(argument);
  return verdict.error == 0 && !verdict.pretends;
}

// False when the call fails, errno set; `size` is what it may ask for.
bool MayRead(size_t& size) {
  const Verdict verdict = Begin(SystemCall::Read);
  if (verdict.dies) Die();
  if (verdict.error != 0) errno = verdict.error;
  if (verdict.bytes.has_value() && size > *verdict.bytes) size = *verdict.bytes;
  return verdict.error == 0;
}

}  // namespace

// ---- The calls, under the system's own names ----------------------------------------------------------------------------

extern "C" {

int open(const char* path, int flags, ...) {
  mode_t mode = 0;
  if ((flags & O_CREAT) != 0) {
    va_list list;
    va_start(list, flags);
    mode = va_arg(list, mode_t);
    va_end(list);
  }
  if (t_watch == nullptr) return NEXT(open)(path, flags, mode);
  if (IsRefused(SystemCall::Open)) return -1;
  const bool makes = (flags & O_CREAT) != 0 && !Exists(path);
  const int descriptor = NEXT(open)(path, flags, mode);
  if (makes && descriptor >= 0) NoteDescriptor(DiskChange::Kind::Create, descriptor, 0);
  return descriptor;
}

ssize_t read(int descriptor, void* buffer, size_t size) { return MayRead(size) ? NEXT(read)(descriptor, buffer, size) : -1; }

ssize_t pread(int descriptor, void* buffer, size_t size, off_t offset) {
  return MayRead(size) ? NEXT(pread)(descriptor, buffer, size, offset) : -1;
}

ssize_t write(int descriptor, const void* buffer, size_t size) {
  if (t_watch == nullptr) return NEXT(write)(descriptor, buffer, size);
  const Verdict verdict = Begin(SystemCall::Write);
  {
    const Aside watch;
    watch->writes.push_back({watch->count, size});
  }
  if (verdict.error != 0) {
    errno = verdict.error;
    return -1;
  }
  if (verdict.bytes.has_value() && size > *verdict.bytes) size = *verdict.bytes;
  if (verdict.dies) {
    if (size > 0) static_cast<void>(!NEXT(write)(descriptor, buffer, size));
    Die();
  }
  const off_t offset = NEXT(lseek)(descriptor, 0, SEEK_CUR);
  const ssize_t done = NEXT(write)(descriptor, buffer, size);
  if (done > 0) NoteWrite(descriptor, buffer, static_cast<size_t>(done), offset);
  return done;
}

off_t lseek(int descriptor, off_t offset, int origin) noexcept {
  return IsRefused(SystemCall::Seek) ? -1 : NEXT(lseek)(descriptor, offset, origin);
}

// No machine goes down in the tests, and a device takes its time: it is only written down.
int fsync(int descriptor) {
  if (IsRefused(SystemCall::Sync)) return -1;
  if (t_watch != nullptr) NoteDescriptor(DiskChange::Kind::Sync, descriptor, 0);
  return NEXT(fcntl)(descriptor, F_GETFD) < 0 ? -1 : 0;
}

// Nobody else is about in these tests whom a pause could let pass.
int nanosleep(const struct timespec* wanted, struct timespec* left) { return t_watch != nullptr ? 0 : NEXT(nanosleep)(wanted, left); }

int stat(const char* path, struct stat* status) noexcept { return IsRefused(SystemCall::Status) ? -1 : NEXT(stat)(path, status); }

int lstat(const char* path, struct stat* status) noexcept { return IsRefused(SystemCall::Status) ? -1 : NEXT(lstat)(path, status); }

int fstat(int descriptor, struct stat* status) noexcept { return IsRefused(SystemCall::Status) ? -1 : NEXT(fstat)(descriptor, status); }

int fstatat(int folder, const char* path, struct stat* status, int flags) noexcept {
  return IsRefused(SystemCall::Status) ? -1 : NEXT(fstatat)(folder, path, status, flags);
}

int statx(int folder, const char* path, int flags, unsigned int mask, struct statx* status) noexcept {
  return IsRefused(SystemCall::Status) ? -1 : NEXT(statx)(folder, path, flags, mask, status);
}

int ftruncate(int descriptor, off_t size) noexcept {
  if (IsRefused(SystemCall::Truncate)) return -1;
  const int result = NEXT(ftruncate)(descriptor, size);
  if (result == 0 && t_watch != nullptr) NoteDescriptor(DiskChange::Kind::Truncate, descriptor, size);
  return result;
}

int fcntl(int descriptor, int command, ...) {
  va_list list;
  va_start(list, command);
  void* const argument = va_arg(list, void*);
  va_end(list);
  const bool locks = command == F_OFD_SETLK || command == F_OFD_GETLK || command == F_SETLK || command == F_GETLK;
  if (locks && IsRefused(SystemCall::Lock)) return -1;
  if ((command == F_GETFL || command == F_SETFL) && IsRefused(SystemCall::Flags)) return -1;
  return NEXT(fcntl)(descriptor, command, argument);
}

int fchmod(int descriptor, mode_t mode) noexcept { return IsRefused(SystemCall::Mode) ? -1 : NEXT(fchmod)(descriptor, mode); }

int fchown(int descriptor, uid_t owner, gid_t group) noexcept {
  return IsRefused(SystemCall::Owner) ? -1 : NEXT(fchown)(descriptor, owner, group);
}

int rename(const char* from, const char* to) noexcept {
  if (IsRefused(SystemCall::Rename)) return -1;
  const int result = NEXT(rename)(from, to);
  if (result == 0 && t_watch != nullptr) Note({DiskChange::Kind::Rename, 0, from, to, 0, {}});
  return result;
}

int unlink(const char* path) noexcept {
  if (IsRefused(SystemCall::Remove)) return -1;
  const int result = NEXT(unlink)(path);
  if (result == 0 && t_watch != nullptr) Note({DiskChange::Kind::Remove, 0, path, {}, 0, {}});
  return result;
}

DIR* fdopendir(int descriptor) { return IsRefused(SystemCall::Folder) ? nullptr : NEXT(fdopendir)(descriptor); }

DIR* opendir(const char* path) { return IsRefused(SystemCall::Folder) ? nullptr : NEXT(opendir)(path); }

struct dirent* readdir(DIR* folder) {
  if (IsRefused(SystemCall::Folder)) return nullptr;
  struct dirent* const entry = NEXT(readdir)(folder);
  if (entry != nullptr && t_watch != nullptr && t_watch->hidesKinds) entry->d_type = DT_UNKNOWN;
  return entry;
}

char* getcwd(char* buffer, size_t size) noexcept { return IsRefused(SystemCall::Folder) ? nullptr : NEXT(getcwd)(buffer, size); }

int statvfs(const char* path, struct statvfs* status) noexcept { return IsRefused(SystemCall::Status) ? -1 : NEXT(statvfs)(path, status); }

int access(const char* path, int mode) noexcept { return IsRefused(SystemCall::Access) ? -1 : NEXT(access)(path, mode); }

struct tm* localtime_r(const time_t* time, struct tm* fields) noexcept {
  return IsRefused(SystemCall::Clock) ? nullptr : NEXT(localtime_r)(time, fields);
}

int clock_nanosleep(clockid_t clock, int flags, const struct timespec* wanted, struct timespec* left) {
  return IsRefused(SystemCall::Clock) ? errno : NEXT(clock_nanosleep)(clock, flags, wanted, left);
}

int clock_settime(clockid_t clock, const struct timespec* time) noexcept {
  int result = 0;
  return IsMade(SystemCall::Clock, const_cast<struct timespec*>(time), result) ? NEXT(clock_settime)(clock, time) : result;
}

// A child's calls are its own: the orders are for the thread that gave them.
pid_t fork() noexcept {
  if (IsRefused(SystemCall::Process)) return -1;
  if (g_forkError != 0) {
    errno = g_forkError;
    return -1;
  }
  const pid_t child = NEXT(fork)();
  if (child == 0) {
    if (t_watch != nullptr) g_forkError = t_watch->forkErrorOfChild;
    t_watch = nullptr;
  }
  return child;
}

int execv(const char* program, char* const* arguments) noexcept {
  WriteBranchCounts();
  return NEXT(execv)(program, arguments);
}

void _exit(int code) {
  WriteBranchCounts();
  NEXT(_exit)(code);
  for (;;) ::pause();
}

int pipe2(int* ends, int flags) noexcept { return IsRefused(SystemCall::Process) ? -1 : NEXT(pipe2)(ends, flags); }

pid_t waitpid(pid_t child, int* status, int options) { return IsRefused(SystemCall::Process) ? -1 : NEXT(waitpid)(child, status, options); }

int pthread_attr_init(pthread_attr_t* attributes) noexcept {
  return IsRefused(SystemCall::Thread) ? errno : NEXT(pthread_attr_init)(attributes);
}

int pthread_attr_setstacksize(pthread_attr_t* attributes, size_t size) noexcept {
  return IsRefused(SystemCall::Thread) ? errno : NEXT(pthread_attr_setstacksize)(attributes, size);
}

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*function)(void*), void* argument) noexcept {
  return IsRefused(SystemCall::Thread) ? errno : NEXT(pthread_create)(thread, attributes, function, argument);
}

int isatty(int descriptor) noexcept { return IsRefused(SystemCall::Device) ? 0 : NEXT(isatty)(descriptor); }

int ioctl(int descriptor, unsigned long request, ...) noexcept {
  va_list list;
  va_start(list, request);
  void* const argument = va_arg(list, void*);
  va_end(list);
  int result = 0;
  return IsMade(SystemCall::Device, argument, result) ? NEXT(ioctl)(descriptor, request, argument) : result;
}

int faccessat(int folder, const char* path, int mode, int flags) noexcept {
  return IsRefused(SystemCall::Access) ? -1 : NEXT(faccessat)(folder, path, mode, flags);
}

ssize_t readlink(const char* path, char* buffer, size_t size) noexcept {
  return IsRefused(SystemCall::ReadLink) ? -1 : NEXT(readlink)(path, buffer, size);
}

}  // extern "C"
