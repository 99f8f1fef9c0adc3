// How this system's device nodes are known for serial ports. Internal to platform/posix/; the ports themselves are behind
// PlatformSerialPorts::System().
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "zelbase/platform/PlatformSerialPorts.h"
#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {

// "ttyS0", "ttyUSB12", "ttymxc1", "rfcomm0": a driver's name and a number. No consoles ("tty1"), no ends of pseudo terminals.
ZELBASE_API bool IsSerialPortName(std::string_view name);

// By driver, then by number: "ttyS2" before "ttyS10" before "ttyUSB0".
ZELBASE_API bool ComesBefore(const std::string& a, const std::string& b);

// 0 is Ok; a number that does not mean a port is NotFound.
ZELBASE_API SerialPortResult SerialPortResultFromErrno(int error) noexcept;

// The ports whose nodes lie in a folder, in this system's form.
class ZELBASE_API PosixSerialPorts final : public PlatformSerialPorts {
 public:
  // `folder` is not copied.
  constexpr explicit PosixSerialPorts(const char* folder) : m_folder(folder) {}

  std::vector<std::string> Names() override;
  SerialPortResult Try(const std::string& name) override;

 private:
  const char* m_folder;
};

}  // namespace zelbase::detail
