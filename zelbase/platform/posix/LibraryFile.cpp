#include "zelbase/platform/posix/LibraryFile.h"

#include <fcntl.h>
#include <link.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "zelbase/platform/posix/Interruptions.h"

namespace {

using zelbase::detail::WithoutInterruption;

class OpenLibrary {
 public:
  explicit OpenLibrary(const std::string& path)
      : m_descriptor(WithoutInterruption([&] { return ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK); })) {
    struct stat status {};
    if (m_descriptor >= 0 && ::fstat(m_descriptor, &status) == 0) m_size = static_cast<std::uint64_t>(status.st_size);
  }
  ~OpenLibrary() {
    if (m_descriptor >= 0) ::close(m_descriptor);
  }
  OpenLibrary(const OpenLibrary&) = delete;
  OpenLibrary& operator=(const OpenLibrary&) = delete;

  bool Has(std::uint64_t offset, std::uint64_t size) const { return offset <= m_size && size <= m_size - offset; }

  template <class Record>
  bool Read(std::uint64_t offset, Record& record) const {
    if (!Has(offset, sizeof record)) return false;
    char* const bytes = reinterpret_cast<char*>(&record);
    std::size_t done = 0;
    while (done < sizeof record) {
      const ssize_t count =
          WithoutInterruption([&] { return ::pread(m_descriptor, bytes + done, sizeof record - done, static_cast<off_t>(offset + done)); });
      if (count <= 0) return false;
      done += static_cast<std::size_t>(count);
    }
    return true;
  }

 private:
  int m_descriptor;
  std::uint64_t m_size = 0;
};

constexpr unsigned char kOwnClass = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;

bool IsOwnKind(const ElfW(Ehdr) & header) {
  return std::memcmp(header.e_ident, ELFMAG, SELFMAG) == 0 && header.e_ident[EI_CLASS] == kOwnClass &&
         header.e_phentsize == sizeof(ElfW(Phdr));
}

}  // namespace

namespace zelbase::detail {

bool IsWholeLibrary(const std::string& path) {
  const OpenLibrary file(path);
  ElfW(Ehdr) header{};
  if (!file.Read(0, header) || !IsOwnKind(header)) return false;
  for (std::uint64_t i = 0; i < header.e_phnum; ++i) {
    ElfW(Phdr) segment{};
    if (!file.Has(header.e_phoff, 0) || !file.Read(header.e_phoff + i * sizeof segment, segment)) return false;
    if (segment.p_type == PT_LOAD && !file.Has(segment.p_offset, segment.p_filesz)) return false;
  }
  return true;
}

}  // namespace zelbase::detail
