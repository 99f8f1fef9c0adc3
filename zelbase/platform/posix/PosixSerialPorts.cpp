#include "zelbase/platform/posix/PosixSerialPorts.h"

#include <dirent.h>
#include <fcntl.h>
#include <linux/serial.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <memory>

#include "zelbase/platform/detail/IntendedWraps.h"
#include "zelbase/platform/posix/Interruptions.h"

namespace {

constexpr const char* kDevices = "/dev";
constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
constexpr std::string_view kTerminal = "tty";
// Drivers whose names the rule for terminals does not cover.
constexpr std::array<std::string_view, 2> kOtherDrivers = {"rfcomm", "ttymxc"};
// The driver that has nodes for ports that the computer may not have.
constexpr std::string_view kUartDriver = "ttyS";

struct FolderCloser {
  void operator()(DIR* folder) const { closedir(folder); }
};

ZELBASE_WRAPS std::string_view DriverOf(std::string_view name) { return name.substr(0, name.find_last_not_of(kDigits) + 1); }

// The digits behind the driver, without zeros before them.
std::string_view NumberOf(std::string_view name) {
  const std::string_view digits = name.substr(DriverOf(name).size());
  return digits.substr(std::min(digits.find_first_not_of('0'), digits.size()));
}

// "ttyUSB" and the like: a capital behind "tty", then letters.
bool IsTerminalDriver(std::string_view driver) {
  if (!driver.starts_with(kTerminal)) return false;
  const std::string_view kind = driver.substr(kTerminal.size());
  return !kind.empty() && kind.front() >= 'A' && kind.front() <= 'Z' && kind.find_first_not_of(kLetters) == std::string_view::npos;
}

bool IsCharacterDevice(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISCHR(status.st_mode);
}

// A node of the UART driver without a UART behind it opens, and then says that it knows no hardware. Other drivers leave that
// number at unknown for ports that are there.
bool LacksHardware(int descriptor, std::string_view name) {
  struct serial_struct port {};
  return DriverOf(name) == kUartDriver && ::ioctl(descriptor, TIOCGSERIAL, &port) == 0 && port.type == PORT_UNKNOWN;
}

}  // namespace

namespace zelbase::detail {

bool IsSerialPortName(std::string_view name) {
  const std::string_view driver = DriverOf(name);
  if (driver.size() == name.size()) return false;
  return IsTerminalDriver(driver) || std::find(kOtherDrivers.begin(), kOtherDrivers.end(), driver) != kOtherDrivers.end();
}

bool ComesBefore(const std::string& a, const std::string& b) {
  if (DriverOf(a) != DriverOf(b)) return DriverOf(a) < DriverOf(b);
  if (NumberOf(a).size() != NumberOf(b).size()) return NumberOf(a).size() < NumberOf(b).size();
  return NumberOf(a) != NumberOf(b) ? NumberOf(a) < NumberOf(b) : a < b;
}

SerialPortResult SerialPortResultFromErrno(int error) noexcept {
  switch (error) {
    case 0: return SerialPortResult::Ok;
    case EACCES:
    case EPERM: return SerialPortResult::AccessDenied;
    case EIO: return SerialPortResult::NotFunctioning;
    case EBUSY: return SerialPortResult::InUse;
    default: return SerialPortResult::NotFound;
  }
}

std::vector<std::string> PosixSerialPorts::Names() {
  std::vector<std::string> names;
  const std::unique_ptr<DIR, FolderCloser> folder(::opendir(m_folder));
  if (folder == nullptr) return names;
  while (const dirent* const entry = ::readdir(folder.get())) {
    if (IsSerialPortName(entry->d_name)) names.emplace_back(entry->d_name);
  }
  std::sort(names.begin(), names.end(), ComesBefore);
  return names;
}

// A node that is no terminal is not opened at all, or closed again as soon as that shows. Without O_NONBLOCK the opening of
// a line without a carrier would wait for one.
SerialPortResult PosixSerialPorts::Try(const std::string& name) {
  if (!IsSerialPortName(name)) return SerialPortResult::NotFound;
  const std::string path = std::string(m_folder) + "/" + name;
  if (!IsCharacterDevice(path)) return SerialPortResult::NotFound;
  const int descriptor = WithoutInterruption([&] { return ::open(path.c_str(), O_RDWR | O_NONBLOCK | O_NOCTTY | O_CLOEXEC); });
  if (descriptor < 0) return SerialPortResultFromErrno(errno);
  const bool present = ::isatty(descriptor) != 0 && !LacksHardware(descriptor, name);
  ::close(descriptor);
  return present ? SerialPortResult::Ok : SerialPortResult::NotFound;
}

}  // namespace zelbase::detail

namespace {

// Ready before any code runs and never destroyed.
union PortsStorage {
  constexpr PortsStorage() : ports(kDevices) {}
  constexpr ~PortsStorage() {}
  zelbase::detail::PosixSerialPorts ports;
};
constinit PortsStorage g_storage;

}  // namespace

PlatformSerialPorts& PlatformSerialPorts::System() { return g_storage.ports; }
