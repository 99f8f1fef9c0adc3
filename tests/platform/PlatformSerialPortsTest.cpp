#include "zelbase/platform/PlatformSerialPorts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

TEST(SystemSerialPorts, AreTheServiceInForceByDefault) {
  EXPECT_EQ(&PlatformService<PlatformSerialPorts>::Current(), &PlatformSerialPorts::System());
}

TEST(SystemSerialPorts, NameEachPortOnceAndInTheSameOrderEachTime) {
  const std::vector<std::string> names = PlatformSerialPorts::System().Names();
  std::vector<std::string> sorted = names;
  std::sort(sorted.begin(), sorted.end());
  EXPECT_EQ(std::adjacent_find(sorted.begin(), sorted.end()), sorted.end());
  EXPECT_EQ(PlatformSerialPorts::System().Names(), names);
}

TEST(SystemSerialPorts, APortThatIsNotThereIsNotFound) {
  EXPECT_EQ(PlatformSerialPorts::System().Try("ttyNOSUCH77"), SerialPortResult::NotFound);
  EXPECT_EQ(PlatformSerialPorts::System().Try(""), SerialPortResult::NotFound);
  EXPECT_EQ(PlatformSerialPorts::System().Try("null"), SerialPortResult::NotFound);
}

}  // namespace
