// Clock, folders, modules, processes, help, serial nodes and threads on calls of the system that fail or are interrupted.
// Neighbour: SystemFilesTest.cpp, the same for files.
#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <filesystem>
#include <iterator>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "tests/faults/AllocationFaults.h"
#include "tests/faults/SystemCallFaults.h"
#include "tests/support/InChild.h"
#include "tests/support/PseudoTerminal.h"
#include "tests/support/SourceFolder.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/ThisProcess.h"
#include "zelbase/platform/PlatformClock.h"
#include "zelbase/platform/PlatformEvent.h"
#include "zelbase/platform/PlatformFolders.h"
#include "zelbase/platform/PlatformHelp.h"
#include "zelbase/platform/PlatformModules.h"
#include "zelbase/platform/PlatformProcesses.h"
#include "zelbase/platform/PlatformThreads.h"
#include "zelbase/platform/posix/LibraryFile.h"
#include "zelbase/platform/posix/PosixSerialPorts.h"

namespace {

using Repeat = SystemCallFaults::Repeat;

// Runs `operation` with the calls of that kind failing, all of them or the n-th alone.
template <class Operation>
auto Failing(SystemCall kind, int error, Operation operation, unsigned long long n = 0) {
  SystemCallFaults calls;
  calls.FailAt(kind, n == 0 ? 1 : n, error, n == 0 ? Repeat::ForEver : Repeat::Once);
  return operation();
}

// ---- Clock ---------------------------------------------------------------------------------------------------------------

TEST(SystemClock, WithoutALocalTimeThereIsNoDaylightSaving) {
  PlatformClock& clock = PlatformClock::System();
  EXPECT_FALSE(Failing(SystemCall::Clock, EOVERFLOW, [&] { return clock.WallClock().daylight; }));
  CalendarTime calendar;
  calendar.year = -5;
  EXPECT_FALSE(Failing(SystemCall::Clock, EOVERFLOW, [&] { return clock.LocalTime(0, calendar); }));
  EXPECT_EQ(calendar.year, -5);
}

TEST(SystemClock, AnInterruptedSleepGoesOnToItsEnd) {
  PlatformClock& clock = PlatformClock::System();
  SystemCallFaults calls;
  calls.FailAt(SystemCall::Clock, 1, EINTR, Repeat::Once);
  const long long begin = clock.Counter();
  clock.Sleep(20);
  EXPECT_GE(clock.Counter() - begin, clock.Frequency() / 50);
  EXPECT_EQ(calls.FaultsGiven(), 1u);
}

TEST(SystemClock, OnlyTheSuperuserSetsIt) {
  ExpectInChild([] {
    ASSERT_TRUE(BecomeOrdinaryUser());
    SYSTEMTIME time;
    time.wYear = 2026;
    time.wMonth = 5;
    time.wDay = 4;
    EXPECT_FALSE(PlatformClock::System().SetSystemClock(time));
  });
}

// ---- Waiting -------------------------------------------------------------------------------------------------------------

TEST(SystemThreads, AWaitWithALimitEndsWithTheThread) {
  const int waiter = ThisThread();
  const auto thread = PlatformThreads::System().CreateSuspended([&] { AwaitWaiting(waiter); }, 0, 0);
  ASSERT_NE(thread, nullptr);
  thread->Resume();
  EXPECT_TRUE(thread->Wait(600000));
}

TEST(SystemThreads, AnEventWakesAWaitWithALimit) {
  PlatformEvent event(PlatformEvent::Mode::AutoReset);
  const int waiter = ThisThread();
  std::thread setter([&] {
    AwaitWaiting(waiter);
    event.Set();
  });
  EXPECT_TRUE(event.WaitFor(600000));
  EXPECT_FALSE(event.TryWait());
  setter.join();
}

TEST(SystemThreads, AThreadThatTheSystemRefusesIsNone) {
  PlatformThreads& threads = PlatformThreads::System();
  const int descriptors = CountOpenDescriptors();
  for (const unsigned long long n : {1ULL, 2ULL, 3ULL}) {
    EXPECT_EQ(Failing(
                  SystemCall::Thread, EAGAIN, [&] { return threads.CreateSuspended([] {}, 0, 1 << 20); }, n),
              nullptr)
        << n;
  }
  EXPECT_EQ(CountOpenDescriptors(), descriptors);
}

std::ptrdiff_t CountThreads() {
  return std::distance(std::filesystem::directory_iterator("/proc/self/task"), std::filesystem::directory_iterator());
}

// A thread without its object would wait for its start for ever.
TEST(SystemThreads, WithoutMemoryNoThreadIsLeft) {
  const std::ptrdiff_t threads = CountThreads();
  const long long held = AllocationFaults::Held();
  unsigned long long n = 1;
  for (;; ++n) {
    std::unique_ptr<PlatformThread> thread;
    {
      AllocationFaults memory;
      memory.FailAt(n);
      try {
        thread = PlatformThreads::System().CreateSuspended([] {}, 0, 0);
      } catch (const std::bad_alloc&) {
      }
    }
    if (thread != nullptr) {
      thread->Resume();
      EXPECT_TRUE(thread->Wait(600000));
      break;
    }
    EXPECT_EQ(CountThreads(), threads) << n;
    EXPECT_EQ(AllocationFaults::Held(), held) << n;
  }
  EXPECT_GE(n, 3u);
}

// ---- Folders and modules -------------------------------------------------------------------------------------------------

TEST(SystemFolders, WithoutAnAnswerThereIsNone) {
  PlatformFolders& folders = PlatformFolders::System();
  std::string folder = "as before";
  const EnvironmentVariable none("ZELBASE_COMMON_DATA", nullptr);
  EXPECT_FALSE(Failing(SystemCall::Status, ENOENT, [&] { return folders.CommonData(folder); }));
  EXPECT_FALSE(Failing(SystemCall::Folder, ENOENT, [&] { return folders.Current(folder); }));
  EXPECT_EQ(folder, "as before");
  unsigned long long bytes = 7;
  EXPECT_FALSE(Failing(SystemCall::Status, EIO, [&] { return folders.FreeSpace("/", bytes); }));
  EXPECT_EQ(bytes, 7u);
}

TEST(SystemModules, ALibraryThatCannotBeReadIsNoWholeOne) {
  const std::string name = BinaryFolder() + "/tests/modules/LanguageModule.so";
  ASSERT_TRUE(zelbase::detail::IsWholeLibrary(name));
  const auto isWhole = [&] { return zelbase::detail::IsWholeLibrary(name); };
  EXPECT_FALSE(Failing(SystemCall::Open, EACCES, isWhole));
  EXPECT_FALSE(Failing(SystemCall::Status, EIO, isWhole));
  EXPECT_FALSE(Failing(SystemCall::Read, EIO, isWhole));
  SystemCallFaults calls;
  calls.ShortenAt(SystemCall::Read, 1, Repeat::Once, 0, 0);  // cut short since it was measured
  EXPECT_FALSE(isWhole());
  calls.InterruptAt(1, Repeat::ForEver);
  EXPECT_TRUE(isWhole());
  calls.ShortenAt(SystemCall::Read, 1, Repeat::ForEver);
  EXPECT_TRUE(isWhole());
}

// The loader keeps a relative name as it was given.
TEST(SystemModules, AModuleOfTheCurrentFolderHasAWholePath) {
  ExpectInChild([] {
    PlatformModules& modules = PlatformModules::System();
    const std::string folder = BinaryFolder() + "/tests/modules";
    ASSERT_EQ(::chdir(folder.c_str()), 0);
    const ModuleHandle module = modules.Load("././LanguageModule.so");
    ASSERT_NE(module, nullptr);
    std::string expected = folder;
    for (char& letter : expected) letter = letter == '/' ? '\\' : letter;
    expected[0] = '/';
    EXPECT_EQ(modules.HandlePath(module), expected + "\\LanguageModule.so");
    modules.Unload(module);
  });
}

TEST(SystemModules, AProgramThatWasRemovedWhileItRunsKeepsItsName) {
  ExpectInChild([] {
    const std::string path = PlatformModules::System().ProgramPath();
    EXPECT_FALSE(path.ends_with(" (deleted)"));
    EXPECT_TRUE(path.ends_with("faults_tests.exe") || path.ends_with("faults_tests")) << path;
  });
}

// ---- Processes -----------------------------------------------------------------------------------------------------------

TEST(SystemProcesses, WithoutAListThereAreNone) {
  PlatformProcesses& processes = PlatformProcesses::System();
  EXPECT_TRUE(Failing(SystemCall::Folder, EMFILE, [&] { return processes.ExecutableNames(); }).empty());
  EXPECT_FALSE(processes.ExecutableNames().empty());
}

// Where the link to a program may not be read, the short name stands in; without that the process is left out.
TEST(SystemProcesses, TheShortNameStandsIn) {
  PlatformProcesses& processes = PlatformProcesses::System();
  EXPECT_FALSE(Failing(SystemCall::ReadLink, EACCES, [&] { return processes.ExecutableNames(); }).empty());
  // The record of each process, "12 (name) S ...", cannot be read, is empty, or ends in its midst.
  const auto withRecords = [&](auto order) {
    SystemCallFaults calls;
    calls.FailAt(SystemCall::ReadLink, 1, EACCES, Repeat::ForEver);
    order(calls);
    return processes.ExecutableNames();
  };
  EXPECT_TRUE(withRecords([](SystemCallFaults& calls) { calls.FailAt(SystemCall::Open, 1, EMFILE, Repeat::ForEver); }).empty());
  EXPECT_TRUE(withRecords([](SystemCallFaults& calls) { calls.FailAt(SystemCall::Read, 1, EIO, Repeat::ForEver); }).empty());
  for (const std::size_t bytes : {0U, 1U}) {
    EXPECT_TRUE(withRecords([&](SystemCallFaults& calls) { calls.ShortenAt(SystemCall::Read, 1, Repeat::ForEver, 0, bytes); }).empty())
        << bytes;
  }
  EXPECT_FALSE(withRecords([](SystemCallFaults& calls) { calls.InterruptAt(1, Repeat::ForEver); }).empty());
}

// The own name, with the record cut at every length.
TEST(SystemProcesses, ARecordThatIsCutShortGivesNoName) {
  PlatformProcesses& processes = PlatformProcesses::System();
  std::size_t before = 0;
  for (std::size_t bytes = 1; bytes < 40; ++bytes) {
    SystemCallFaults calls;
    calls.FailAt(SystemCall::ReadLink, 1, EACCES, Repeat::ForEver);
    calls.ShortenAt(SystemCall::Read, 1, Repeat::ForEver, 0, bytes);
    const std::size_t count = processes.ExecutableNames().size();
    if (bytes < 5) {
      EXPECT_EQ(count, 0u) << bytes;  // the shortest: "1 (a) S"
    }
    before = count;
  }
  EXPECT_GT(before, 0u);
}

TEST(SystemProcesses, OneThatHasEndedHasNoName) {
  PlatformProcesses& processes = PlatformProcesses::System();
  const pid_t child = ::fork();
  if (child == 0) ::_exit(0);
  ASSERT_GT(child, 0);
  siginfo_t ended{};
  ASSERT_EQ(::waitid(P_PID, static_cast<id_t>(child), &ended, WEXITED | WNOWAIT), 0);
  const std::string record = "/proc/" + std::to_string(child);
  EXPECT_TRUE(std::filesystem::exists(record));
  const std::size_t withIt = processes.ExecutableNames().size();
  ASSERT_EQ(::waitpid(child, nullptr, 0), child);
  EXPECT_GT(withIt, 0u);
}

// ---- Help ----------------------------------------------------------------------------------------------------------------

// Each in a child: the viewer is looked for once in a process.
class SystemHelp : public testing::Test {
 protected:
  SystemHelp() {
    m_folder.Write("help.chm", "help");
    m_viewer = m_folder.Write("viewer", "#!/bin/sh\nexit 0\n");
    ::chmod(m_viewer.c_str(), 0700);
  }

  bool Show() { return PlatformHelp::System().Show(m_folder.InterfacePath() + "\\help.chm", std::nullopt); }

  TemporaryFolder m_folder;
  std::string m_viewer;
};

TEST_F(SystemHelp, WhatTheSystemRefusesIsNotShown) {
  const EnvironmentVariable variable("ZELBASE_HELP_VIEWER", m_viewer.c_str());
  ExpectInChild([&] {
    EXPECT_TRUE(Show());
    const int descriptors = CountOpenDescriptors();
    EXPECT_FALSE(Failing(
        SystemCall::Process, EMFILE, [&] { return Show(); }, 1));  // no pipe
    EXPECT_FALSE(Failing(
        SystemCall::Process, EAGAIN, [&] { return Show(); }, 2));  // no process
    EXPECT_EQ(CountOpenDescriptors(), descriptors);
    EXPECT_FALSE(HasChildren());
  });
}

TEST_F(SystemHelp, InterruptionsAreWaitedOut) {
  const EnvironmentVariable variable("ZELBASE_HELP_VIEWER", m_viewer.c_str());
  ExpectInChild([&] {
    SystemCallFaults calls;
    calls.FailAt(SystemCall::Read, 1, EINTR, Repeat::Once);
    calls.FailAt(SystemCall::Process, 3, EINTR, Repeat::Once);  // behind the pipe and the process: the wait for its end
    EXPECT_TRUE(Show());
    EXPECT_EQ(calls.FaultsGiven(), 2u);
    EXPECT_FALSE(HasChildren());
  });
}

TEST_F(SystemHelp, AWaitThatFailsIsNotRepeated) {
  const EnvironmentVariable variable("ZELBASE_HELP_VIEWER", m_viewer.c_str());
  ExpectInChild([&] {
    SystemCallFaults calls;
    calls.FailAt(SystemCall::Read, 1, EIO, Repeat::Once);
    calls.FailAt(SystemCall::Process, 3, ECHILD, Repeat::Once);
    EXPECT_FALSE(Show());
  });
}

// ---- Serial nodes --------------------------------------------------------------------------------------------------------

class SystemSerialPorts : public testing::Test {
 protected:
  SystemSerialPorts() { m_folder.MakeLink("ttyS0", m_terminal.Path()); }

  TemporaryFolder m_folder;
  PseudoTerminal m_terminal;
  zelbase::detail::PosixSerialPorts m_ports{m_folder.Path().c_str()};
};

TEST_F(SystemSerialPorts, AnInterruptedOpeningIsTriedAgain) {
  SystemCallFaults calls;
  calls.InterruptAt(1, Repeat::Once);
  EXPECT_EQ(m_ports.Try("ttyS0"), SerialPortResult::Ok);
  EXPECT_EQ(calls.FaultsGiven(), 1u);
}

TEST_F(SystemSerialPorts, WhatDoesNotOpenSaysWhy) {
  const auto attempt = [&] { return m_ports.Try("ttyS0"); };
  EXPECT_EQ(Failing(SystemCall::Open, EACCES, attempt), SerialPortResult::AccessDenied);
  EXPECT_EQ(Failing(SystemCall::Open, EBUSY, attempt), SerialPortResult::InUse);
  EXPECT_EQ(Failing(SystemCall::Open, EIO, attempt), SerialPortResult::NotFunctioning);
  EXPECT_EQ(Failing(SystemCall::Open, ENXIO, attempt), SerialPortResult::NotFound);
}

// The driver's answer is all zero then, which is the number of a port that it does not know.
TEST_F(SystemSerialPorts, ANodeOfTheDriverWithoutHardwareIsNoPort) {
  const int descriptors = CountOpenDescriptors();
  SystemCallFaults calls;
  calls.PretendAt(SystemCall::Device, 2);  // behind the question whether it is a terminal
  EXPECT_EQ(m_ports.Try("ttyS0"), SerialPortResult::NotFound);
  EXPECT_EQ(calls.FaultsGiven(), 1u);
  EXPECT_EQ(CountOpenDescriptors(), descriptors);
}

TEST_F(SystemSerialPorts, WithoutAFolderThereAreNone) {
  EXPECT_TRUE(Failing(SystemCall::Folder, EMFILE, [&] { return m_ports.Names(); }).empty());
  EXPECT_EQ(m_ports.Names(), std::vector<std::string>{"ttyS0"});
}

}  // namespace
