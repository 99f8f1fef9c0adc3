// One open, read, copy or save of the library, run again and again while one thing after the other fails under it. Neighbours:
// SystemCallFaults.h, AllocationFaults.h and zelbase/platform/FaultInjectionFiles.h, which make it fail.
#pragma once

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <functional>
#include <memory>
#include <new>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/faults/AllocationFaults.h"
#include "tests/faults/SystemCallFaults.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/ThisProcess.h"
#include "zelbase/errors/GlobalErrorList.h"
#include "zelbase/platform/CFileException.h"
#include "zelbase/platform/FaultInjectionFiles.h"

// How a run ended.
enum class RunEnd { True, False, FileException, NoMemory };

// What is run. `Subject` is the object that is opened, read or saved.
//
// After each run with a fault, the object is asked to do the same again without one, and must then give what a new object gives;
// nothing that it took may be left when it is gone.
template <class Subject>
struct FaultCase {
  // Puts the folder into the state that the run starts from. It is emptied before.
  std::function<void()> prepare = [] {};
  std::function<std::unique_ptr<Subject>()> make = [] { return std::make_unique<Subject>(); };
  // The operation; true is success.
  std::function<bool(Subject&)> run;
  // All that can be seen of the object and of the files that matter.
  std::function<std::string(Subject&)> picture;
  // Whether a CFileException may come out of it.
  bool mayThrow = false;
  // What must hold of a run that was no success; `before` is the picture before it.
  std::function<void(Subject&, RunEnd, const std::string& before)> afterFailure = [](Subject&, RunEnd, const std::string&) {};
  // Files that the object may hold open after a failure, besides those that it held before.
  int mayHold = 0;
  // Whether a run that failed without memory leaves the picture as it was.
  bool strong = false;
  // False for an operation that goes on without what failed, and says true: its picture need not be that of a clean run then.
  bool trueIsWhole = true;
};

template <class Subject>
class FaultRuns {
 public:
  FaultRuns(const TemporaryFolder& folder, FaultCase<Subject> what) : m_folder(folder), m_case(std::move(what)) {}

  // Every kind of fault, once and for ever, at every place.
  void All() {
    FindCleanEnd();
    if (testing::Test::HasFatalFailure()) return;
    EXPECT_GT(SystemCalls(), 0u);
    FileService();
    Memory();
  }

  // For what touches no file.
  void MemoryOnly() {
    FindCleanEnd();
    if (!testing::Test::HasFatalFailure()) Memory();
  }

  // Does not count what is held at the end of a run: it stays in an object of the process.
  void KeepsMemory() { m_keepsMemory = true; }

  // The number of runs that had a fault.
  unsigned long long Faults() const { return m_faults; }

 private:
  using Repeat = SystemCallFaults::Repeat;

  struct Outcome {
    RunEnd end = RunEnd::True;
    unsigned long long faults = 0;
  };

  void EmptyFolder() const {
    for (const auto& entry : std::filesystem::directory_iterator(m_folder.Path())) {
      std::filesystem::remove_all(entry.path());
    }
  }

  std::set<std::string> Names() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(m_folder.Path())) names.insert(entry.path().filename());
    return names;
  }

  void Prepare() {
    EmptyFolder();
    m_case.prepare();
    GlobalErrorList::Get().Clear();
  }

  // Two objects, so that what the process keeps for good is there before anything is counted.
  void FindCleanEnd() {
    for (int round = 0; round < 2; ++round) {
      Prepare();
      const auto subject = m_case.make();
      ASSERT_TRUE(m_case.run(*subject)) << "without any fault";
      m_clean = m_case.picture(*subject);
      m_cleanNames = Names();
    }
  }

  // Runs with what was ordered of `faults` in force.
  template <class Faults>
  Outcome RunUnder(Faults& faults, Subject& subject) {
    Outcome outcome;
    try {
      outcome.end = m_case.run(subject) ? RunEnd::True : RunEnd::False;
    } catch (const CFileException&) {
      outcome.end = RunEnd::FileException;
    } catch (const std::bad_alloc&) {
      outcome.end = RunEnd::NoMemory;
    }
    outcome.faults = faults.FaultsGiven();
    return outcome;
  }

  // What was left in the folder besides what belongs there.
  std::string Remains() const {
    std::string remains;
    for (const std::string& name : Names()) {
      if (m_cleanNames.count(name) == 0) remains += " " + name;
    }
    return remains;
  }

  // One run of a new object. `run(subject)` gives the outcome. False when it met no fault.
  template <class Run>
  bool One(Run run, bool mustSucceed, bool memory, bool mayLeaveFiles) {
    Prepare();
    const int descriptors = CountOpenDescriptors();
    const long long held = AllocationFaults::Held();
    Outcome outcome;
    {
      const auto subject = m_case.make();
      const std::string before = m_case.picture(*subject);
      const int descriptorsBefore = CountOpenDescriptors();
      outcome = run(*subject);
      if (outcome.end == RunEnd::True) {
        if (m_case.trueIsWhole || outcome.faults == 0) {
          EXPECT_EQ(m_case.picture(*subject), m_clean);
        }
      } else {
        EXPECT_GT(outcome.faults, 0u);
        EXPECT_FALSE(mustSucceed);
        EXPECT_TRUE(outcome.end != RunEnd::NoMemory || memory);
        EXPECT_TRUE(outcome.end != RunEnd::FileException || m_case.mayThrow);
        EXPECT_LE(CountOpenDescriptors(), descriptorsBefore + m_case.mayHold);
        if (outcome.end == RunEnd::NoMemory && m_case.strong) {
          EXPECT_EQ(m_case.picture(*subject), before);
        }
        m_case.afterFailure(*subject, outcome.end, before);
      }
      if (!mayLeaveFiles) {
        EXPECT_EQ(Remains(), "");
      }
      GlobalErrorList::Get().Clear();
      EXPECT_TRUE(m_case.run(*subject)) << "again, without a fault";
      EXPECT_EQ(m_case.picture(*subject), m_clean) << "again, without a fault";
      GlobalErrorList::Get().Clear();
    }
    EXPECT_EQ(CountOpenDescriptors(), descriptors);
    if (!m_keepsMemory) {
      EXPECT_EQ(AllocationFaults::Held(), held);
    }
    if (outcome.faults > 0) ++m_faults;
    return outcome.faults > 0;
  }

  // n = 1, 2, ... until a run is clean. `order(faults, n)` orders the fault.
  template <class Faults, class Order>
  unsigned long long EachN(const std::string& name, Order order, bool mustSucceed, bool memory, bool mayLeaveFiles) {
    for (unsigned long long n = 1;; ++n) {
      const testing::ScopedTrace trace(__FILE__, __LINE__, name + " at " + std::to_string(n));
      const bool met = One(
          [&](Subject& subject) {
            Faults faults;
            order(faults, n);
            return RunUnder(faults, subject);
          },
          mustSucceed, memory, mayLeaveFiles);
      if (!met || testing::Test::HasFailure()) return n - 1;
    }
  }

  unsigned long long SystemCalls() {
    struct Failure {
      const char* name;
      int error;
    };
    unsigned long long places = 0;
    for (const Repeat repeat : {Repeat::Once, Repeat::ForEver}) {
      const bool forEver = repeat == Repeat::ForEver;
      const std::string suffix = forEver ? ", for ever" : ", once";
      for (const Failure& failure :
           {Failure{"disk full", ENOSPC}, Failure{"I/O error", EIO}, Failure{"no permission", EACCES}, Failure{"stale handle", ESTALE}}) {
        places += EachN<SystemCallFaults>(
            failure.name + suffix, [&](SystemCallFaults& faults, unsigned long long n) { faults.FailAt(n, failure.error, repeat); }, false,
            false, forEver);
      }
      EachN<SystemCallFaults>(
          "interrupted" + suffix, [&](SystemCallFaults& faults, unsigned long long n) { faults.InterruptAt(n, repeat); }, true, false,
          false);
      EachN<SystemCallFaults>(
          "short read" + suffix, [&](SystemCallFaults& faults, unsigned long long n) { faults.ShortenAt(SystemCall::Read, n, repeat); },
          true, false, false);
      EachN<SystemCallFaults>(
          "short write" + suffix, [&](SystemCallFaults& faults, unsigned long long n) { faults.ShortenAt(SystemCall::Write, n, repeat); },
          true, false, false);
      EachN<SystemCallFaults>(
          "short write, then a full disk" + suffix,
          [&](SystemCallFaults& faults, unsigned long long n) { faults.ShortenAt(SystemCall::Write, n, repeat, ENOSPC); }, false, false,
          forEver);
    }
    return places;
  }

  // The same through the library's own file service, with the results that it may give.
  void FileService() {
    struct Failure {
      const char* name;
      FileResult result;
    };
    for (const auto repeat : {FaultInjectionFiles::Repeat::Once, FaultInjectionFiles::Repeat::ForEver}) {
      for (const Failure& failure :
           {Failure{"DiskFull", FileResult::DiskFull}, Failure{"IoFailed", FileResult::IoFailed},
            Failure{"AccessDenied", FileResult::AccessDenied}, Failure{"NetworkNameDeleted", FileResult::NetworkNameDeleted},
            Failure{"WriteProtected", FileResult::WriteProtected}}) {
        for (const std::size_t bytes : {0U, 1U}) {
          EachN<ServiceFaults>(
              failure.name + std::string(" behind ") + std::to_string(bytes) + " bytes",
              [&](ServiceFaults& faults, unsigned long long n) {
                faults.files.FailAt(n, failure.result, repeat);
                faults.files.BytesBeforeFailure(bytes);
              },
              false, false, repeat == FaultInjectionFiles::Repeat::ForEver);
        }
      }
    }
  }

  struct ServiceFaults {
    FaultInjectionFiles files;
    PlatformOverride<PlatformFiles> guard{files};
    // The open files live on, and what is done to them from now on is no part of the run.
    ~ServiceFaults() { files.FailAt(0); }
    unsigned long long FaultsGiven() const { return files.FaultsGiven(); }
  };

  void Memory() {
    for (const bool forEver : {false, true}) {
      EachN<AllocationFaults>(
          forEver ? "no memory, for ever" : "no memory, once",
          [&](AllocationFaults& faults, unsigned long long n) { faults.FailAt(n, forEver); }, false, true, forEver);
    }
  }

  const TemporaryFolder& m_folder;
  FaultCase<Subject> m_case;
  std::string m_clean;
  std::set<std::string> m_cleanNames;
  bool m_keepsMemory = false;
  unsigned long long m_faults = 0;
};

// What the fixtures of this folder share: a folder, and the ways to run a case in it. `least` faults must have been met.
class FaultFixture : public testing::Test {
 protected:
  // With everything failing that can.
  template <class Subject>
  void Run(FaultCase<Subject> what, unsigned long long least) {
    FaultRuns<Subject> runs(m_folder, std::move(what));
    runs.All();
    EXPECT_GE(runs.Faults(), least);
  }

  // For what touches no file.
  template <class Subject>
  void RunMemory(FaultCase<Subject> what, unsigned long long least) {
    FaultRuns<Subject> runs(m_folder, std::move(what));
    runs.MemoryOnly();
    EXPECT_GE(runs.Faults(), least);
  }

  TemporaryFolder m_folder;
};
