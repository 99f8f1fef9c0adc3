#include "zelbase/platform/posix/PosixSerialPorts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <vector>

#include "tests/support/PseudoTerminal.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/ThisProcess.h"

namespace {

using zelbase::detail::ComesBefore;
using zelbase::detail::IsSerialPortName;
using zelbase::detail::PosixSerialPorts;
using zelbase::detail::SerialPortResultFromErrno;

TEST(PosixSerialPorts, NamesOfSerialPorts) {
  for (const char* name : {"ttyS0", "ttyS31", "ttyUSB0", "ttyACM12", "ttyAMA0", "ttyXRUSB3", "ttymxc1", "rfcomm0", "ttyTHS007"}) {
    EXPECT_TRUE(IsSerialPortName(name)) << name;
  }
}

TEST(PosixSerialPorts, NamesOfOtherNodes) {
  for (const char* name : {"",       "0",    "tty",  "tty0",    "tty63",  "ttyS",   "ttyUSB", "ttyp0", "ttya7",  "ttyprintk", "ttymxc",
                           "rfcomm", "ptmx", "null", "console", "ttyS0x", "xttyS0", "ttyS-0", "TTYS0", "ttyS/0", "..",        "tty0S1"}) {
    EXPECT_FALSE(IsSerialPortName(name)) << name;
  }
}

TEST(PosixSerialPorts, OrderIsByDriverAndThenByNumber) {
  const std::vector<std::string> ordered = {"rfcomm0", "ttyACM0", "ttyS0",   "ttyS1",   "ttyS02",  "ttyS2",
                                            "ttyS10",  "ttyS11",  "ttyS100", "ttyUSB0", "ttyUSB9", "ttyUSB10"};
  for (std::size_t i = 0; i < ordered.size(); ++i) {
    for (std::size_t j = 0; j < ordered.size(); ++j) {
      EXPECT_EQ(ComesBefore(ordered[i], ordered[j]), i < j) << ordered[i] << " " << ordered[j];
    }
  }
}

TEST(PosixSerialPorts, ThreeErrorsMeanThatThePortIsThere) {
  EXPECT_EQ(SerialPortResultFromErrno(0), SerialPortResult::Ok);
  EXPECT_EQ(SerialPortResultFromErrno(EACCES), SerialPortResult::AccessDenied);
  EXPECT_EQ(SerialPortResultFromErrno(EPERM), SerialPortResult::AccessDenied);
  EXPECT_EQ(SerialPortResultFromErrno(EIO), SerialPortResult::NotFunctioning);
  EXPECT_EQ(SerialPortResultFromErrno(EBUSY), SerialPortResult::InUse);
  for (const int error : {ENOENT, ENXIO, ENODEV, ENOTTY, EMFILE, ENOMEM, 99999, -1}) {
    EXPECT_EQ(SerialPortResultFromErrno(error), SerialPortResult::NotFound) << error;
  }
}

TEST(PosixSerialPorts, ListsTheNodesOfAFolderInOrder) {
  const TemporaryFolder folder;
  for (const char* name : {"ttyUSB10", "ttyUSB9", "ttyS1", "tty1", "notes.txt"}) folder.Write(name, "");
  PosixSerialPorts ports(folder.Path().c_str());
  EXPECT_EQ(ports.Names(), std::vector<std::string>({"ttyS1", "ttyUSB9", "ttyUSB10"}));
}

TEST(PosixSerialPorts, AFolderThatIsMissingHasNoPorts) {
  PosixSerialPorts ports("/no/such/folder");
  EXPECT_TRUE(ports.Names().empty());
  EXPECT_EQ(ports.Try("ttyS0"), SerialPortResult::NotFound);
}

TEST(PosixSerialPorts, ATerminalIsThere) {
  const TemporaryFolder folder;
  const PseudoTerminal terminal;
  folder.MakeLink("ttyUSB0", terminal.Path());
  folder.MakeLink("ttyS0", terminal.Path());
  PosixSerialPorts ports(folder.Path().c_str());
  EXPECT_EQ(ports.Try("ttyUSB0"), SerialPortResult::Ok);
  EXPECT_EQ(ports.Try("ttyS0"), SerialPortResult::Ok);
}

TEST(PosixSerialPorts, WhatIsNoTerminalIsAbsentAndNotWaitedFor) {
  const TemporaryFolder folder;
  folder.Write("ttyUSB0", "text");
  folder.MakeFifo("ttyUSB1");
  folder.MakeFolder("ttyUSB2");
  folder.MakeLink("ttyUSB3", "/dev/null");
  folder.MakeLink("ttyUSB4", folder.File("nowhere"));
  PosixSerialPorts ports(folder.Path().c_str());
  ASSERT_EQ(ports.Names().size(), 5u);
  for (const std::string& name : ports.Names()) EXPECT_EQ(ports.Try(name), SerialPortResult::NotFound) << name;
}

TEST(PosixSerialPorts, NamesThatLeaveTheFolderAreAbsent) {
  PosixSerialPorts ports("/dev");
  for (const char* name : {"", "..", "../dev/null", "null", "tty"}) {
    EXPECT_EQ(ports.Try(name), SerialPortResult::NotFound) << name;
  }
  EXPECT_EQ(ports.Try(std::string("ttyS0\0", 6)), SerialPortResult::NotFound);
}

TEST(PosixSerialPorts, TryingLeavesNoDescriptorOpen) {
  const TemporaryFolder folder;
  const PseudoTerminal terminal;
  folder.MakeLink("ttyUSB0", terminal.Path());
  folder.MakeLink("ttyUSB1", "/dev/null");
  PosixSerialPorts ports(folder.Path().c_str());
  const int before = CountOpenDescriptors();
  for (const std::string& name : ports.Names()) ports.Try(name);
  EXPECT_EQ(CountOpenDescriptors(), before);
}

}  // namespace
