// The stand-in for the computer's serial ports: it answers with what it was given. Neighbour: PlatformSerialPorts.h, the
// interface it fills.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "zelbase/platform/PlatformSerialPorts.h"
#include "zelbase/platform/ZelBaseApi.h"

// The member is set before it is put in force, or while nobody asks.
//
//   FixedSerialPorts ports;
//   ports.ports = {{"COM1", SerialPortResult::Ok}, {"COM7", SerialPortResult::InUse}};
//   PlatformOverride<PlatformSerialPorts> guard(ports);
class ZELBASE_API FixedSerialPorts : public PlatformSerialPorts {
 public:
  std::vector<std::string> Names() override {
    std::vector<std::string> names;
    for (const auto& [name, result] : ports) names.push_back(name);
    return names;
  }

  // The first of that name decides; NotFound without one.
  SerialPortResult Try(const std::string& name) override {
    for (const auto& [known, result] : ports) {
      if (known == name) return result;
    }
    return SerialPortResult::NotFound;
  }

  std::vector<std::pair<std::string, SerialPortResult>> ports;
};
