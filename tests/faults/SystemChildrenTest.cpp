// What this system does in processes of its own and with what it alone may set, on calls that fail or only pretend: the start of a
// program, the clock, the number that a serial driver gives. Neighbour: SystemServicesTest.cpp, the services in this process.
#include <gtest/gtest.h>
#include <linux/serial.h>
#include <sys/stat.h>
#include <time.h>

#include <cerrno>
#include <chrono>
#include <optional>
#include <string>

#include "tests/faults/SystemCallFaults.h"
#include "tests/support/InChild.h"
#include "tests/support/PseudoTerminal.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/ThisProcess.h"
#include "zelbase/platform/PlatformClock.h"
#include "zelbase/platform/PlatformHelp.h"
#include "zelbase/platform/posix/PosixSerialPorts.h"

namespace {

using Repeat = SystemCallFaults::Repeat;

// Runs `operation` in a child that shows help by a viewer that does nothing; the viewer is looked for once in a process.
template <class Operation>
void WithViewer(Operation operation) {
  const TemporaryFolder folder;
  folder.Write("help.chm", "help");
  const std::string viewer = folder.Write("viewer", "#!/bin/sh\nexit 0\n");
  ASSERT_EQ(::chmod(viewer.c_str(), 0700), 0);
  const EnvironmentVariable variable("ZELBASE_HELP_VIEWER", viewer.c_str());
  ExpectInChild([&] { operation([&] { return PlatformHelp::System().Show(folder.InterfacePath() + "\\help.chm", std::nullopt); }); });
}

TEST(SystemChildren, AViewerIsLeftToTheSystem) {
  WithViewer([](auto show) {
    EXPECT_TRUE(show());
    EXPECT_FALSE(HasChildren());
  });
}

TEST(SystemChildren, AHelperThatCanMakeNoProcessSaysSo) {
  WithViewer([](auto show) {
    const int descriptors = CountOpenDescriptors();
    SystemCallFaults calls;
    calls.RefuseForkOfChild(EAGAIN);
    EXPECT_FALSE(show());
    EXPECT_FALSE(HasChildren());
    EXPECT_EQ(CountOpenDescriptors(), descriptors);
  });
}

// 2026-05-04 12:30:15.250 UTC.
constexpr SYSTEMTIME kMoment{2026, 5, 1, 4, 12, 30, 15, 250};

TEST(SystemClockSetting, SetsTheMomentThatItIsGiven) {
  SystemCallFaults calls;
  struct timespec set {};
  calls.PretendAt(SystemCall::Clock, 1, [&](void* time) { set = *static_cast<struct timespec*>(time); });
  EXPECT_TRUE(PlatformClock::System().SetSystemClock(kMoment));
  const std::chrono::sys_days day = std::chrono::year{2026} / 5 / 4;
  EXPECT_EQ(set.tv_sec, day.time_since_epoch().count() * 86400LL + 12 * 3600 + 30 * 60 + 15);
  EXPECT_EQ(set.tv_nsec, 250000000);
}

TEST(SystemClockSetting, WhatTheSystemRefusesIsNotSet) {
  SystemCallFaults calls;
  calls.FailAt(SystemCall::Clock, 1, EPERM, Repeat::Once);
  EXPECT_FALSE(PlatformClock::System().SetSystemClock(kMoment));
  EXPECT_EQ(calls.FaultsGiven(), 1u);
}

TEST(SystemSerialNumbers, ANodeOfTheDriverWithHardwareIsAPort) {
  const TemporaryFolder folder;
  const PseudoTerminal terminal;
  folder.MakeLink("ttyS0", terminal.Path());
  zelbase::detail::PosixSerialPorts ports{folder.Path().c_str()};
  SystemCallFaults calls;
  calls.PretendAt(SystemCall::Device, 2, [](void* port) { static_cast<struct serial_struct*>(port)->type = PORT_16550A; });
  EXPECT_EQ(ports.Try("ttyS0"), SerialPortResult::Ok);
  EXPECT_EQ(calls.FaultsGiven(), 1u);
}

}  // namespace
