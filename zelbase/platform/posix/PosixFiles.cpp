#include "zelbase/platform/posix/PosixFiles.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <iterator>
#include <utility>

#include "zelbase/platform/PlatformFiles.h"
#include "zelbase/platform/posix/Interruptions.h"
#include "zelbase/platform/posix/PosixPaths.h"

namespace zelbase::detail {

FileResult FileResultFromErrno(int error) noexcept {
  switch (error) {
    case 0: return FileResult::Ok;
    case ENOENT: return FileResult::NotFound;
    case ENOTDIR: return FileResult::PathNotFound;
    case EMFILE:
    case ENFILE: return FileResult::TooManyOpenFiles;
    case EACCES:
    case EPERM:
    case EISDIR:
    case ENXIO:
    case ENODEV:
    case ESPIPE: return FileResult::AccessDenied;
    case EBADF: return FileResult::InvalidHandle;
    case ENOMEM: return FileResult::NotEnoughMemory;
    case EROFS: return FileResult::WriteProtected;
    case ENOMEDIUM: return FileResult::NotReady;
    case EAGAIN:   // somebody's lease, lock or
    case EBUSY:    // mount point, or
    case ETXTBSY:  // running program
      return FileResult::SharingViolation;
    case ENETDOWN:
    case ENETRESET:
    case ENETUNREACH:
    case EHOSTUNREACH:
    case ETIMEDOUT:
    case EPROTO: return FileResult::UnexpectedNetwork;
    case ESTALE:
    case ENOTCONN:
    case ECONNRESET:
    case ECONNABORTED:
    case EHOSTDOWN:
    case ESHUTDOWN: return FileResult::NetworkNameDeleted;
    case EEXIST: return FileResult::FileExists;
    case EINVAL:
    case EFAULT:
    case EOVERFLOW: return FileResult::InvalidParameter;
    case ENOSPC:
    case EDQUOT:
    case EFBIG: return FileResult::DiskFull;
    case ENAMETOOLONG:
    case EILSEQ:
    case ELOOP: return FileResult::InvalidName;
    default: return FileResult::IoFailed;
  }
}

}  // namespace zelbase::detail

namespace {

using zelbase::detail::FileResultFromErrno;
using zelbase::detail::LinkText;
using zelbase::detail::ToInterfacePath;
using zelbase::detail::ToSystemPath;
using zelbase::detail::WithoutInterruption;

FileResult LastError() noexcept { return FileResultFromErrno(errno); }

// Owns one descriptor; -1 is none.
class Descriptor {
 public:
  explicit Descriptor(int number = -1) noexcept : m_number(number) {}
  Descriptor(Descriptor&& other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(m_number, other.m_number);
    return *this;
  }
  // The descriptor is gone even when close is interrupted: no second call.
  ~Descriptor() {
    if (m_number >= 0) ::close(m_number);
  }

  bool IsOpen() const noexcept { return m_number >= 0; }
  int Number() const noexcept { return m_number; }

 private:
  int m_number;
};

Descriptor OpenDescriptor(const std::string& path, int flags, mode_t mode = 0666) {
  return Descriptor(WithoutInterruption([&] { return ::open(path.c_str(), flags | O_CLOEXEC | O_NOCTTY, mode); }));
}

// A name with a zero byte would be cut short by the system calls and mean another file.
bool HasZeroByte(const std::string& path) { return path.find('\0') != std::string::npos; }

std::string FolderOf(const std::string& path) {
  const std::size_t slash = path.find_last_of('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

bool IsFolder(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

// What an operation on `path` that failed with `error` says; a missing file and a missing folder have one error number
// here and two in the interface.
FileResult PathFailure(const std::string& path, int error) {
  if (error != ENOENT) return FileResultFromErrno(error);
  if (path.empty() || !IsFolder(FolderOf(path))) return FileResult::PathNotFound;
  return FileResult::NotFound;
}

// ---- Sharing -------------------------------------------------------------------------------------------------------
//
// The system has no sharing modes, so each open file lays shared locks of its open file description on single bytes far
// beyond any data: what it does itself (reads, writes) and what it does not grant to others (denies reading, denies
// writing). Such locks are seen by other processes and by other opens of the same process alike, and go with the last
// descriptor. First a look, so that who is refused anyway lays nothing that a third could stumble over; then the own bytes,
// and only then the question whether somebody holds a contrary one: so of two that come at the same moment at least one sees
// the other. One that sees a conflict takes its bytes back and tries again a few times, because the other may be just about
// to step back as well. A program that locks the whole file in a way of its own counts as one that denies everything.

// The bytes lie apart, so that the system does not merge neighbouring locks into one.
enum class Claim : int { Reads = 0, Writes = 2, DeniesReading = 4, DeniesWriting = 6 };

constexpr off_t kFirstClaimByte = off_t{1} << 62;
constexpr int kClaimAttempts = 5;

struct ClaimRule {
  Claim mine;
  Claim contrary;
};

constexpr std::array<ClaimRule, 4> kClaimRules = {{{Claim::Reads, Claim::DeniesReading},
                                                   {Claim::Writes, Claim::DeniesWriting},
                                                   {Claim::DeniesReading, Claim::Reads},
                                                   {Claim::DeniesWriting, Claim::Writes}}};

struct flock LockOn(Claim claim, short type) {
  struct flock lock {};
  lock.l_type = type;
  lock.l_whence = SEEK_SET;
  lock.l_start = kFirstClaimByte + static_cast<off_t>(claim);
  lock.l_len = 1;
  return lock;
}

// For each of kClaimRules, whether it is wanted.
using Wanted = std::array<bool, 4>;

Wanted WantedFor(FileRights access, FileRights sharing) {
  return {Includes(access, FileRights::Read), Includes(access, FileRights::Write), !Includes(sharing, FileRights::Read),
          !Includes(sharing, FileRights::Write)};
}

class SharingClaims {
 public:
  SharingClaims(int descriptor, const Wanted& wanted) : m_descriptor(descriptor), m_wanted(wanted) {}

  // False when somebody else's claims exclude these; then none is left on the file.
  bool Take() {
    for (int attempt = 0; attempt < kClaimAttempts; ++attempt) {
      if (attempt > 0) StepBack(attempt);
      if (SeesContrary()) continue;
      if (Lay() && !SeesContrary()) return true;
      ReleaseAll();
    }
    return false;
  }

  // As Take, for a descriptor that comes in the place of `former`, which holds `held` on the same file. Nobody is hidden
  // from his own claims but their holder; so the former one claims what is new and looks around, and these are laid while it
  // stands guard. It ends with what it held.
  bool TakeInPlaceOf(int former, const Wanted& held) {
    Wanted added = m_wanted;
    for (std::size_t i = 0; i < added.size(); ++i) added[i] = m_wanted[i] && !held[i];
    SharingClaims guard(former, added);
    if (!guard.Take()) return false;
    const bool laid = Lay();
    if (!laid) ReleaseAll();
    guard.ReleaseAll();
    return laid;
  }

  // Whether somebody holds a claim contrary to these; lays none.
  bool SeesContrary() const {
    for (std::size_t i = 0; i < kClaimRules.size(); ++i) {
      if (m_wanted[i] && IsHeldByOthers(kClaimRules[i].contrary)) return true;
    }
    return false;
  }

  void Release(Claim claim) {
    struct flock lock = LockOn(claim, F_UNLCK);
    WithoutInterruption([&] { return ::fcntl(m_descriptor, F_OFD_SETLK, &lock); });
  }

 private:
  // False when another program holds the bytes exclusively. A file system without locks, or a descriptor that may only
  // write, lays nothing and goes on.
  bool Lay() {
    for (std::size_t i = 0; i < kClaimRules.size(); ++i) {
      if (!m_wanted[i]) continue;
      struct flock lock = LockOn(kClaimRules[i].mine, F_RDLCK);
      const int result = WithoutInterruption([&] { return ::fcntl(m_descriptor, F_OFD_SETLK, &lock); });
      if (result == -1 && (errno == EAGAIN || errno == EACCES)) return false;
    }
    return true;
  }

  bool IsHeldByOthers(Claim claim) const {
    struct flock lock = LockOn(claim, F_WRLCK);
    const int result = WithoutInterruption([&] { return ::fcntl(m_descriptor, F_OFD_GETLK, &lock); });
    return result == 0 && lock.l_type != F_UNLCK;
  }

  void ReleaseAll() {
    for (std::size_t i = 0; i < kClaimRules.size(); ++i) {
      if (m_wanted[i]) Release(kClaimRules[i].mine);
    }
  }

  // Waits between 0 and 2^attempt quarters of a millisecond, differing from rival to rival.
  static void StepBack(int attempt) {
    struct timespec now {};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    const long spread = 250000L << attempt;
    const struct timespec pause { 0, (now.tv_nsec / 64 * 7919L + ::getpid() * 104729L) % spread };
    ::nanosleep(&pause, nullptr);
  }

  int m_descriptor;
  Wanted m_wanted;
};

// ---- One open file ---------------------------------------------------------------------------------------------------

// Some file systems keep any number of seconds; beyond some 28,000 years either way the nearest end is taken.
double Milliseconds(long long seconds, long long nanoseconds) {
  constexpr long long kFurthest = 900000000000;
  const long long near = std::clamp(seconds, -kFurthest, kFurthest);
  // NOLINTNEXTLINE(bugprone-integer-division): in whole units of 100 nanoseconds
  return static_cast<double>(near * 10000000 + nanoseconds / 100) / 10000.0;
}

// The system's own moment of birth; without one, the earliest of the other times.
double CreationTime(int descriptor, const struct stat& status) {
#ifdef STATX_BTIME
  struct statx extended {};
  if (::statx(descriptor, "", AT_EMPTY_PATH, STATX_BTIME, &extended) == 0 && (extended.stx_mask & STATX_BTIME) != 0) {
    return Milliseconds(extended.stx_btime.tv_sec, extended.stx_btime.tv_nsec);
  }
#endif
  return std::min({Milliseconds(status.st_atim.tv_sec, status.st_atim.tv_nsec), Milliseconds(status.st_mtim.tv_sec, status.st_mtim.tv_nsec),
                   Milliseconds(status.st_ctim.tv_sec, status.st_ctim.tv_nsec)});
}

// Some file systems cannot force anything out and say EINVAL; there is nothing to wait for then.
FileResult ForceOut(int descriptor) {
  if (WithoutInterruption([&] { return ::fsync(descriptor); }) == 0 || errno == EINVAL) return FileResult::Ok;
  return LastError();
}

class PosixFile final : public PlatformFile {
 public:
  PosixFile(FileRights access, FileRights sharing) : m_access(access), m_sharing(sharing) {}

  void Take(Descriptor descriptor) { m_descriptor = std::move(descriptor); }
  int Number() const { return m_descriptor.Number(); }
  Wanted Claims() const { return WantedFor(m_access, m_sharing); }

  FileResult Read(void* buffer, std::size_t size, std::size_t& done) override {
    done = 0;
    if (!Includes(m_access, FileRights::Read)) return FileResult::AccessDenied;
    while (done < size) {
      char* const place = static_cast<char*>(buffer) + done;
      const std::size_t wanted = std::min(size - done, kLargestTransfer);
      const ssize_t got = WithoutInterruption([&] { return ::read(m_descriptor.Number(), place, wanted); });
      if (got < 0) return LastError();
      if (got == 0) return FileResult::Ok;
      done += static_cast<std::size_t>(got);
    }
    return FileResult::Ok;
  }

  FileResult Write(const void* buffer, std::size_t size, std::size_t& done) override {
    done = 0;
    if (!Includes(m_access, FileRights::Write)) return FileResult::AccessDenied;
    while (done < size) {
      const char* const place = static_cast<const char*>(buffer) + done;
      const std::size_t wanted = std::min(size - done, kLargestTransfer);
      const ssize_t put = WithoutInterruption([&] { return ::write(m_descriptor.Number(), place, wanted); });
      if (put < 0) return LastError();
      if (put == 0) return FileResult::IoFailed;
      done += static_cast<std::size_t>(put);
    }
    return FileResult::Ok;
  }

  FileResult Seek(long long offset, int origin, long long& position) override {
    if (origin < 0 || origin > 2) return FileResult::InvalidParameter;
    constexpr std::array<int, 3> kOrigins = {SEEK_SET, SEEK_CUR, SEEK_END};
    const off_t reached = ::lseek(m_descriptor.Number(), offset, kOrigins[static_cast<std::size_t>(origin)]);
    if (reached < 0) return LastError();
    position = reached;
    return FileResult::Ok;
  }

  FileResult Flush() override { return ForceOut(m_descriptor.Number()); }

  FileResult GetSize(long long& size) override {
    struct stat status {};
    if (::fstat(m_descriptor.Number(), &status) != 0) return LastError();
    size = status.st_size;
    return FileResult::Ok;
  }

  FileResult SetEnd() override {
    if (!Includes(m_access, FileRights::Write)) return FileResult::AccessDenied;
    const off_t end = ::lseek(m_descriptor.Number(), 0, SEEK_CUR);
    if (end < 0) return LastError();
    if (WithoutInterruption([&] { return ::ftruncate(m_descriptor.Number(), end); }) != 0) return LastError();
    return FileResult::Ok;
  }

  FileResult GetTimes(FileTimes& times) override {
    struct stat status {};
    if (::fstat(m_descriptor.Number(), &status) != 0) return LastError();
    times.created = CreationTime(m_descriptor.Number(), status);
    times.accessed = Milliseconds(status.st_atim.tv_sec, status.st_atim.tv_nsec);
    times.written = Milliseconds(status.st_mtim.tv_sec, status.st_mtim.tv_nsec);
    return FileResult::Ok;
  }

  // Owner before mode, since a change of owner clears the set-id bits; those are given only together with the owner.
  FileResult CopyModeFrom(const std::string& path) override {
    const std::string model = ToSystemPath(path);
    if (HasZeroByte(model)) return FileResult::InvalidName;
    struct stat status {};
    if (::stat(model.c_str(), &status) != 0) return PathFailure(model, errno);
    mode_t mode = status.st_mode & 07777;
    if (!TakeOwner(status.st_uid, status.st_gid)) mode &= 01777;
    return ::fchmod(m_descriptor.Number(), mode) == 0 ? FileResult::Ok : LastError();
  }

 private:
  static constexpr std::size_t kLargestTransfer = std::size_t{1} << 30;

  bool TakeOwner(uid_t owner, gid_t group) {
    struct stat own {};
    if (::fstat(m_descriptor.Number(), &own) == 0 && own.st_uid == owner && own.st_gid == group) return true;
    if (::fchown(m_descriptor.Number(), owner, group) == 0) return true;
    // Only the superuser gives files away, but the group may be one of ours.
    const bool groupTaken = ::fchown(m_descriptor.Number(), static_cast<uid_t>(-1), group) == 0;
    return groupTaken && own.st_uid == owner;
  }

  Descriptor m_descriptor;
  FileRights m_access;
  FileRights m_sharing;
};

// ---- The file system -------------------------------------------------------------------------------------------------

bool Cuts(const FileOpenRequest& request) { return request.disposition == FileDisposition::CreateAlways; }

int CreationFlags(FileDisposition disposition) {
  switch (disposition) {
    case FileDisposition::OpenOrCreate:
    case FileDisposition::CreateAlways: return O_CREAT;  // never O_TRUNC: sharing is checked before the file is cut
    case FileDisposition::CreateNew: return O_CREAT | O_EXCL;
    default: return 0;
  }
}

// Shared locks need a descriptor that may read and cutting needs one that may write, so a file to be written or cut is
// opened for both; only where reading is forbidden is writing alone left.
Descriptor OpenForRequest(const std::string& path, const FileOpenRequest& request) {
  const int flags = CreationFlags(request.disposition) | O_NONBLOCK;
  const bool writes = Includes(request.access, FileRights::Write) || Cuts(request);
  const mode_t mode = request.ownerOnly ? 0600 : 0666;
  if (!writes) return OpenDescriptor(path, flags | O_RDONLY, mode);
  Descriptor descriptor = OpenDescriptor(path, flags | O_RDWR, mode);
  if (!descriptor.IsOpen() && errno == EACCES && !Includes(request.access, FileRights::Read)) {
    descriptor = OpenDescriptor(path, flags | O_WRONLY, mode);
  }
  return descriptor;
}

bool IsSomethingElseThanAFile(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode);
}

bool IsRegular(int descriptor) {
  struct stat status {};
  return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

void MakeBlocking(int descriptor) {
  const int flags = ::fcntl(descriptor, F_GETFL);
  if (flags >= 0) ::fcntl(descriptor, F_SETFL, flags & ~O_NONBLOCK);
}

bool IsOneFile(int descriptor, int other) {
  struct stat one {};
  struct stat two {};
  if (::fstat(descriptor, &one) != 0 || ::fstat(other, &two) != 0) return false;
  return one.st_dev == two.st_dev && one.st_ino == two.st_ino;
}

bool TakeClaims(SharingClaims& claims, int descriptor, const FileOpenRequest& request) {
  const auto* const former = dynamic_cast<const PosixFile*>(request.inPlaceOf);
  if (former == nullptr || !IsOneFile(descriptor, former->Number())) return claims.Take();
  return claims.TakeInPlaceOf(former->Number(), former->Claims());
}

// Checks sharing, then cuts the file if the request says so. Cutting counts as writing for the check, whatever the access.
FileResult TakeOver(int descriptor, const FileOpenRequest& request) {
  const FileRights access = Cuts(request) ? request.access | FileRights::Write : request.access;
  SharingClaims claims(descriptor, WantedFor(access, request.sharing));
  if (!TakeClaims(claims, descriptor, request)) return FileResult::SharingViolation;
  if (!Cuts(request)) return FileResult::Ok;
  if (WithoutInterruption([&] { return ::ftruncate(descriptor, 0); }) != 0) return LastError();
  if (!Includes(request.access, FileRights::Write)) claims.Release(Claim::Writes);
  return FileResult::Ok;
}

// Whether some other open of `path` denies writing, which replacing it would be.
bool IsGuarded(const std::string& path) {
  const Descriptor descriptor = OpenDescriptor(path, O_RDONLY | O_NONBLOCK);
  if (!descriptor.IsOpen()) return false;
  return SharingClaims(descriptor.Number(), WantedFor(FileRights::Write, FileRights::ReadWrite)).SeesContrary();
}

// Ok, too, for a folder that may not be read: its entries cannot be forced out then.
FileResult ForceFolderOut(const std::string& folder) {
  const Descriptor descriptor = OpenDescriptor(folder, O_RDONLY | O_DIRECTORY);
  if (!descriptor.IsOpen()) return errno == EACCES ? FileResult::Ok : LastError();
  return ForceOut(descriptor.Number());
}

// A regular file or a link; anything else is not the library's to move or remove.
FileResult CheckMovable(const std::string& path) {
  if (HasZeroByte(path)) return FileResult::InvalidName;
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0) return PathFailure(path, errno);
  return S_ISREG(status.st_mode) || S_ISLNK(status.st_mode) ? FileResult::Ok : FileResult::AccessDenied;
}

// ---- What is on the disk -----------------------------------------------------------------------------------------------

// Nobody's right counts for the superuser, who could write anyway, and one's own for everybody else.
bool IsWritable(const std::string& path, const struct stat& status) {
  constexpr mode_t kAnybodysRight = S_IWUSR | S_IWGRP | S_IWOTH;
  return (status.st_mode & kAnybodysRight) != 0 && ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}

// Some file systems do not tell the kind of an entry together with its name.
bool IsFolderEntry(int folder, const struct dirent& entry) {
  if (entry.d_type != DT_UNKNOWN) return entry.d_type == DT_DIR;
  struct stat status {};
  return ::fstatat(folder, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(status.st_mode);
}

bool IsReachableName(const std::string& name) { return name != "." && name != ".." && name.find('\\') == std::string::npos; }

struct FolderCloser {
  void operator()(DIR* folder) const { ::closedir(folder); }
};
using Folder = std::unique_ptr<DIR, FolderCloser>;

// Null on failure, errno set. The stream takes the descriptor over, so that no started program inherits it.
Folder OpenFolder(const std::string& path) {
  const int number = WithoutInterruption([&] { return ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK); });
  if (number < 0) return nullptr;
  Folder folder(::fdopendir(number));
  if (folder == nullptr) ::close(number);
  return folder;
}

FileResult ReadFolder(DIR* folder, std::vector<FolderEntry>& entries) {
  for (;;) {
    errno = 0;
    const struct dirent* const entry = ::readdir(folder);
    if (entry == nullptr) return LastError();
    std::string name = entry->d_name;
    if (IsReachableName(name)) entries.push_back({std::move(name), IsFolderEntry(::dirfd(folder), *entry)});
  }
}

class PosixFiles final : public PlatformFiles {
 public:
  std::unique_ptr<PlatformFile> Open(const FileOpenRequest& request, FileResult& result) override {
    // Made first: a file that is new must not be left behind without the memory to hold it.
    auto file = std::make_unique<PosixFile>(request.access, request.sharing);
    Descriptor descriptor;
    result = OpenChecked(request, descriptor);
    if (result != FileResult::Ok) {
      // What this opening has made, and nobody else can have taken for his, goes again.
      if (descriptor.IsOpen() && request.disposition == FileDisposition::CreateNew) ::unlink(ToSystemPath(request.path).c_str());
      return nullptr;
    }
    file->Take(std::move(descriptor));
    return file;
  }

  FileResult Replace(const std::string& from, const std::string& to) override {
    const std::string source = ToSystemPath(from);
    const std::string target = ToSystemPath(to);
    const FileResult sourceResult = CheckMovable(source);
    if (sourceResult != FileResult::Ok) return sourceResult;
    const FileResult targetResult = CheckMovable(target);
    if (targetResult != FileResult::Ok && targetResult != FileResult::NotFound) return targetResult;
    if (IsGuarded(target)) return FileResult::SharingViolation;
    if (std::rename(source.c_str(), target.c_str()) != 0) return PathFailure(target, errno);
    const FileResult forced = ForceFolderOut(FolderOf(target));
    if (forced != FileResult::Ok || FolderOf(source) == FolderOf(target)) return forced;
    return ForceFolderOut(FolderOf(source));
  }

  FileResult Remove(const std::string& path) override {
    const std::string name = ToSystemPath(path);
    const FileResult result = CheckMovable(name);
    if (result != FileResult::Ok) return result;
    return ::unlink(name.c_str()) == 0 ? FileResult::Ok : PathFailure(name, errno);
  }

  std::string FollowLinks(const std::string& path) override {
    constexpr int kLongestChain = 40;
    std::string name = ToSystemPath(path);
    if (HasZeroByte(name)) return path;
    for (int link = 0; link <= kLongestChain; ++link) {
      const std::string target = LinkText(name);
      if (target.empty()) return link == 0 ? path : ToInterfacePath(name);
      if (target.find('\\') != std::string::npos) return path;
      name = target.front() == '/' ? target : FolderOf(name) + "/" + target;
    }
    return path;
  }

  bool IsRegularFile(const std::string& path) override {
    const std::string name = ToSystemPath(path);
    struct stat status {};
    return !HasZeroByte(name) && ::stat(name.c_str(), &status) == 0 && S_ISREG(status.st_mode);
  }

  FileResult GetStatus(const std::string& path, FileStatus& status) override {
    const std::string name = ToSystemPath(path);
    if (HasZeroByte(name)) return FileResult::InvalidName;
    struct stat record {};
    if (::stat(name.c_str(), &record) != 0) return PathFailure(name, errno);
    status.isFolder = S_ISDIR(record.st_mode);
    status.isWritable = IsWritable(name, record);
    status.size = static_cast<unsigned long long>(record.st_size);
    status.record = std::make_shared<const struct stat>(record);
    return FileResult::Ok;
  }

  FileResult List(const std::string& folder, std::vector<FolderEntry>& entries) override {
    const std::string name = folder.empty() ? "." : ToSystemPath(folder);
    if (HasZeroByte(name)) return FileResult::InvalidName;
    const Folder opened = OpenFolder(name);
    if (opened == nullptr) return PathFailure(name, errno);
    std::vector<FolderEntry> found;
    const FileResult result = ReadFolder(opened.get(), found);
    if (result != FileResult::Ok) return result;
    std::sort(found.begin(), found.end(), [](const FolderEntry& a, const FolderEntry& b) { return a.name < b.name; });
    std::move(found.begin(), found.end(), std::back_inserter(entries));
    return FileResult::Ok;
  }

 private:
  // Devices are refused before they are opened, since opening alone may reset one; what changes kind in between is
  // caught behind the opening.
  static FileResult OpenChecked(const FileOpenRequest& request, Descriptor& descriptor) {
    const std::string path = ToSystemPath(request.path);
    if (HasZeroByte(path)) return FileResult::InvalidName;
    if (request.disposition != FileDisposition::CreateNew && IsSomethingElseThanAFile(path)) {
      return FileResult::AccessDenied;
    }
    descriptor = OpenForRequest(path, request);
    if (!descriptor.IsOpen()) return PathFailure(path, errno);
    if (!IsRegular(descriptor.Number())) return FileResult::AccessDenied;
    MakeBlocking(descriptor.Number());
    if (request.randomAccess) ::posix_fadvise(descriptor.Number(), 0, 0, POSIX_FADV_RANDOM);
    return TakeOver(descriptor.Number(), request);
  }
};

}  // namespace

const struct stat& FileStatus::NoRecord() {
  static const struct stat record {};
  return record;
}

PlatformFiles& PlatformFiles::System() {
  static PlatformFiles& files = *new PosixFiles;
  return files;
}
