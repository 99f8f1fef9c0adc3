#include "zelbase/platform/posix/PosixModules.h"

#include <dlfcn.h>
#include <link.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

#include "zelbase/platform/PlatformModules.h"
#include "zelbase/platform/detail/IntendedWraps.h"
#include "zelbase/platform/posix/LibraryFile.h"
#include "zelbase/platform/posix/PosixPaths.h"

namespace zelbase::detail {

std::string ProgramFileName(std::string_view name) {
  std::string result(name);
  const std::size_t dot = result.rfind('.');
  if (!result.empty() && (dot == std::string::npos || dot == 0)) result += ".exe";
  return result;
}

std::string LibraryFileName(std::string_view name) {
  constexpr std::string_view kFront = "lib";
  constexpr std::string_view kExtension = ".so";
  if (!name.starts_with(kFront)) return std::string(name);
  const std::string_view rest = name.substr(kFront.size());
  std::size_t end = rest.find(kExtension);
  // ".so" ends the name or a version follows: "libx.source.so.1" is "x.source".
  while (end != std::string_view::npos && end + kExtension.size() != rest.size() && rest[end + kExtension.size()] != '.') {
    end = rest.find(kExtension, end + 1);
  }
  if (end == std::string_view::npos || end == 0) return std::string(name);
  return std::string(rest.substr(0, end)) + "R.dll";
}

}  // namespace zelbase::detail

namespace {

using zelbase::detail::IsWholeLibrary;
using zelbase::detail::LibraryFileName;
using zelbase::detail::LinkText;
using zelbase::detail::ProgramFileName;
using zelbase::detail::ToInterfacePath;
using zelbase::detail::ToSystemPath;

// Puts what `rename` makes of the file name behind the folder, in the interface's form.
template <class Rename>
ZELBASE_WRAPS std::string HandOut(const std::string& path, Rename rename) {
  const std::size_t name = path.find_last_of('/') + 1;
  return ToInterfacePath(path.substr(0, name) + rename(std::string_view(path).substr(name)));
}

// A relative path from the current folder on; "." when that has gone.
std::string ToAbsolute(std::string_view path) {
  if (path.starts_with('/')) return std::string(path);
  while (path.starts_with("./")) path.remove_prefix(2);
  const std::unique_ptr<char, void (*)(void*)> current(::getcwd(nullptr, 0), std::free);
  std::string folder = current != nullptr ? current.get() : ".";
  if (folder.back() != '/') folder += '/';
  return folder.append(path);
}

// Of a path in this system's form.
bool IsRegularFile(const std::string& path) {
  struct stat status {};
  return path.find('\0') == std::string::npos && ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

// Whether the loader would read something else into the path: it puts folders of its own for these words, wherever they stand.
bool HasLoaderWord(const std::string& path) {
  for (const char* const word : {"$ORIGIN", "$LIB", "$PLATFORM", "${ORIGIN}", "${LIB}", "${PLATFORM}"}) {
    if (path.find(word) != std::string::npos) return true;
  }
  return false;
}

// A program that was replaced while it runs has this behind its name.
void DropDeletionMark(std::string& path) {
  constexpr std::string_view kMark = " (deleted)";
  if (path.ends_with(kMark) && ::access(path.c_str(), F_OK) != 0) path.resize(path.size() - kMark.size());
}

std::string ReadProgramPath() {
  std::string path = LinkText("/proc/self/exe");
  DropDeletionMark(path);
  return path;
}

// The loader's own entry for the module that holds `address`; null for none.
const link_map* EntryAt(const void* address) {
  Dl_info info{};
  link_map* entry = nullptr;
  if (::dladdr1(address, &info, reinterpret_cast<void**>(&entry), RTLD_DL_LINKMAP) == 0) return nullptr;
  return entry;
}

// An address in each module that is loaded now. The loader is not asked anything from within its walk, which holds one
// of its locks.
std::vector<const void*> ModuleAddresses() {
  std::vector<const void*> addresses;
  const auto collect = [](dl_phdr_info* module, std::size_t, void* result) {
    // Unreached: the end of the walk, since every module has something to load.
    for (int i = 0; i < module->dlpi_phnum; ++i) {
      if (module->dlpi_phdr[i].p_type != PT_LOAD) continue;
      const std::uintptr_t address = module->dlpi_addr + module->dlpi_phdr[i].p_vaddr;
      static_cast<std::vector<const void*>*>(result)->push_back(reinterpret_cast<const void*>(address));
      break;
    }
    return 0;
  };
  ::dl_iterate_phdr(collect, &addresses);
  return addresses;
}

class PosixModules final : public PlatformModules {
 public:
  std::string ProgramPath() override { return HandOut(ReadProgramPath(), ProgramFileName); }

  // The loader has no name for the program itself.
  std::string ModulePath(const void* address) override {
    const link_map* const entry = EntryAt(address);
    if (entry == nullptr) return {};
    // Unreached: null, which the loader leaves in none of its entries.
    const std::string_view path = entry->l_name != nullptr ? entry->l_name : "";
    return path.empty() ? ProgramPath() : HandOut(ToAbsolute(path), LibraryFileName);
  }

  // A handle is the address of the loader's entry. It is looked for among those in use, since it may be stale or no handle
  // at all.
  std::string HandlePath(ModuleHandle module) override {
    if (module == nullptr) return ProgramPath();
    for (const void* const address : ModuleAddresses()) {
      if (EntryAt(address) == module) return ModulePath(address);
    }
    return ModulePath(module);
  }

  std::string LibraryEnding() override { return ".so"; }

  // Only regular files are loaded: a FIFO would be waited for. Only whole libraries: one cut short would end the process. The
  // loader searches for names without a folder in places of its own and keeps a relative name when the current folder
  // changes; so it gets an absolute one. The current folder's own name may hold a "\".
  ModuleHandle Load(const std::string& path) override {
    const std::string name = ToAbsolute(ToSystemPath(path));
    if (HasLoaderWord(name) || !IsRegularFile(name) || !IsWholeLibrary(name)) return nullptr;
    return ::dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL);
  }

  void* FindExport(ModuleHandle module, const std::string& name) override {
    if (module == nullptr || name.find('\0') != std::string::npos) return nullptr;
    return ::dlsym(module, name.c_str());
  }

  void Unload(ModuleHandle module) override {
    if (module != nullptr) ::dlclose(module);
  }
};

}  // namespace

PlatformModules& PlatformModules::System() {
  static PlatformModules& modules = *new PosixModules;
  return modules;
}
