#include "zelbase/platform/FixedSerialPorts.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

TEST(FixedSerialPorts, HasNoPortsAtFirst) {
  FixedSerialPorts ports;
  EXPECT_TRUE(ports.Names().empty());
  EXPECT_EQ(ports.Try("COM1"), SerialPortResult::NotFound);
}

TEST(FixedSerialPorts, AnswersWhatItWasGiven) {
  FixedSerialPorts ports;
  ports.ports = {{"COM3", SerialPortResult::InUse}, {"COM1", SerialPortResult::Ok}, {"COM3", SerialPortResult::Ok}};
  const PlatformOverride<PlatformSerialPorts> guard(ports);
  PlatformSerialPorts& current = PlatformService<PlatformSerialPorts>::Current();
  EXPECT_EQ(current.Names(), std::vector<std::string>({"COM3", "COM1", "COM3"}));
  EXPECT_EQ(current.Try("COM3"), SerialPortResult::InUse);
  EXPECT_EQ(current.Try("COM1"), SerialPortResult::Ok);
  EXPECT_EQ(current.Try("COM2"), SerialPortResult::NotFound);
}

}  // namespace
