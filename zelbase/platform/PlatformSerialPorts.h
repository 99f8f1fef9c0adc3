// The serial ports of the computer: what they are called, and whether one is there. Neighbours: FixedSerialPorts.h, the
// stand-in; zelbase/comms/CSerialSettings.h, which lists the ports that are there.
#pragma once

#include <string>
#include <vector>

#include "zelbase/platform/PlatformService.h"
#include "zelbase/platform/ZelBaseApi.h"

// What trying a port gives. The numbers are the suite's own on every system; others exist, and mean that there is no port.
enum class SerialPortResult : unsigned int {
  Ok = 0,
  NotFound = 2,
  AccessDenied = 5,     // there, but not for this user
  NotFunctioning = 31,  // there, but the device does not answer
  InUse = 32,           // there, but somebody else has it
};

// May be called from any thread.
class ZELBASE_API PlatformSerialPorts {
 public:
  virtual ~PlatformSerialPorts() = default;

  // The names under which a port may be found, in an order that is the same each time.
  virtual std::vector<std::string> Names() = 0;

  // Opens the port of that name for reading and writing, alone where the system knows that, and closes it at once. Never
  // waits for a carrier.
  virtual SerialPortResult Try(const std::string& name) = 0;

  // This system's ports; never destroyed.
  static PlatformSerialPorts& System();
};
