// What a HugeFileStream does when its share goes away, under a clock that moves only when told.

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/TemporaryFolder.h"
#include "tests/support/ThisProcess.h"
#include "zelbase/files/HugeFileStream.h"
#include "zelbase/platform/FaultInjectionFiles.h"
#include "zelbase/platform/SimulatedClock.h"

namespace {

constexpr long long kNoPosition = 4294967295LL;

class Reconnect : public testing::Test {
 protected:
  Reconnect() { m_clock.SetTick(1000000); }

  bool ReadOne() {
    char byte = 0;
    return m_stream.Read(&byte, 1);
  }

  // Openings since the last call.
  unsigned long long NewOpenings() {
    const unsigned long long all = m_files.Count(FileOperation::Open);
    const unsigned long long openings = all - m_openings;
    m_openings = all;
    return openings;
  }

  TemporaryFolder m_folder;
  std::string m_path = m_folder.Write("a", "0123456789");
  SimulatedClock m_clock;
  FaultInjectionFiles m_files;
  PlatformOverride<PlatformClock> m_clockGuard{m_clock};
  PlatformOverride<PlatformFiles> m_filesGuard{m_files};
  HugeFileStream m_stream{m_path.c_str(), false, true};
  unsigned long long m_openings = 1;
};

TEST_F(Reconnect, FailedReadOpensAgainButIsFalse) {
  EXPECT_TRUE(m_stream.Seek(5, 0));
  m_files.BreakOpenFiles();
  EXPECT_FALSE(ReadOne());
  EXPECT_EQ(NewOpenings(), 1u);
  EXPECT_EQ(m_stream.Position(), 0);  // lost with the old opening
  EXPECT_TRUE(ReadOne());
  EXPECT_EQ(m_files.OpenFiles(), 1);
  EXPECT_TRUE(m_stream.IsOpen());
  EXPECT_EQ(m_stream.FileName(), m_path);
}

TEST_F(Reconnect, TwoFailedReadsIn10SecondsLeadToOneOpeningOnly) {
  m_files.DropConnection();
  EXPECT_FALSE(ReadOne());
  m_clock.Advance(10000.0);
  EXPECT_FALSE(ReadOne());
  EXPECT_EQ(NewOpenings(), 1u);
}

TEST_F(Reconnect, TriesAgainAfterMoreThan15SecondsOnly) {
  m_files.DropConnection();
  EXPECT_FALSE(ReadOne());
  EXPECT_EQ(NewOpenings(), 1u);
  m_clock.Advance(15000.0);
  EXPECT_FALSE(ReadOne());
  EXPECT_EQ(NewOpenings(), 0u);
  m_clock.Advance(1.0);
  EXPECT_FALSE(ReadOne());
  EXPECT_EQ(NewOpenings(), 1u);
}

TEST_F(Reconnect, NoTryInTheFirst15SecondsOfTheClock) {
  m_clock.SetTick(15000);
  m_files.BreakOpenFiles();
  EXPECT_FALSE(ReadOne());
  EXPECT_EQ(NewOpenings(), 0u);
  m_clock.Advance(1.0);
  EXPECT_FALSE(ReadOne());
  EXPECT_EQ(NewOpenings(), 1u);
}

TEST_F(Reconnect, TheTickMayWrap) {
  m_clock.SetTick(4294967295u - 4999u);
  m_files.DropConnection();
  EXPECT_FALSE(ReadOne());
  EXPECT_EQ(NewOpenings(), 1u);
  m_clock.Advance(15000.0);  // the tick stands at 10000
  EXPECT_FALSE(ReadOne());
  EXPECT_EQ(NewOpenings(), 0u);
  m_clock.Advance(1.0);
  EXPECT_FALSE(ReadOne());
  EXPECT_EQ(NewOpenings(), 1u);
}

TEST_F(Reconnect, OpeningAnotherFileDoesNotEndTheWindow) {
  m_files.DropConnection();
  EXPECT_FALSE(ReadOne());
  m_files.RestoreConnection();
  EXPECT_TRUE(m_stream.Open(m_path.c_str(), false, false));
  m_files.BreakOpenFiles();
  NewOpenings();
  EXPECT_FALSE(ReadOne());
  EXPECT_EQ(NewOpenings(), 0u);
}

TEST_F(Reconnect, SeekOfAClosedStreamUsesTheWindowUpAndOpensNothing) {
  m_stream.Close();
  EXPECT_TRUE(m_stream.Seek(3, 0));
  EXPECT_EQ(m_stream.Position(), kNoPosition);
  EXPECT_EQ(NewOpenings(), 0u);
  EXPECT_TRUE(m_stream.Open(m_path.c_str(), false, false));
  m_files.BreakOpenFiles();
  NewOpenings();
  EXPECT_FALSE(ReadOne());
  EXPECT_EQ(NewOpenings(), 0u);
}

TEST_F(Reconnect, WhichErrorsCountAsALostConnection) {
  struct Row {
    FileResult error;
    bool forReading;
    bool forSeeking;
  };
  for (const Row& row : {Row{FileResult::NetworkNameDeleted, true, true}, Row{FileResult::UnexpectedNetwork, true, true},
                         Row{FileResult::InvalidHandle, false, true}, Row{FileResult::AccessDenied, false, false},
                         Row{FileResult::SharingViolation, false, false}, Row{FileResult::NotReady, false, false},
                         Row{FileResult::InvalidParameter, false, false}, Row{FileResult::IoFailed, false, false}}) {
    const auto openingsOf = [&](const std::function<void()>& operation) {
      m_clock.Advance(20000.0);
      EXPECT_TRUE(m_stream.Open(m_path.c_str(), false, true));
      m_files.BreakOpenFiles(row.error);
      NewOpenings();
      operation();
      return NewOpenings();
    };
    EXPECT_EQ(openingsOf([&] { EXPECT_FALSE(ReadOne()); }), row.forReading ? 1u : 0u);
    EXPECT_EQ(openingsOf([&] { EXPECT_EQ(m_stream.Seek(7, 0), row.forSeeking); }), row.forSeeking ? 1u : 0u);
    EXPECT_EQ(openingsOf([&] { EXPECT_EQ(m_stream.Position(), row.forSeeking ? 0 : -1); }), row.forSeeking ? 1u : 0u);
  }
}

TEST_F(Reconnect, SeekOpensAgainAndSeeksOnceMore) {
  m_files.BreakOpenFiles();
  EXPECT_TRUE(m_stream.Seek(7, 0));
  EXPECT_EQ(m_stream.Position(), 7);
  EXPECT_EQ(NewOpenings(), 1u);
}

TEST_F(Reconnect, SecondFailureOfSeekIsAFailure) {
  for (const FileResult second : {FileResult::NetworkNameDeleted, FileResult::IoFailed}) {
    m_clock.Advance(20000.0);
    m_files.BreakOpenFiles();
    m_files.FailAt(FileOperation::Seek, 1, second);
    EXPECT_FALSE(m_stream.Seek(7, 0));
    m_clock.Advance(20000.0);
    m_files.BreakOpenFiles();
    m_files.FailAt(FileOperation::Seek, 1, second);
    EXPECT_EQ(m_stream.Position(), -1);
  }
}

TEST_F(Reconnect, SeekIsTrueInTheWindowThoughNothingHasMoved) {
  m_files.DropConnection();
  EXPECT_FALSE(ReadOne());
  for (const long long offset : {7LL, -7LL, 5000000000LL}) {
    for (const int origin : {0, 1, 2}) EXPECT_TRUE(m_stream.Seek(offset, origin));
  }
  EXPECT_FALSE(m_stream.Seek(0, 3));
  EXPECT_EQ(m_stream.Position(), kNoPosition);
  m_files.RestoreConnection();
  EXPECT_EQ(m_stream.Position(), 0);
}

TEST_F(Reconnect, SeekIsTrueWhenOpeningAgainFails) {
  m_files.DropConnection();
  EXPECT_TRUE(m_stream.Seek(7, 0));
  EXPECT_EQ(NewOpenings(), 1u);
  m_clock.Advance(20000.0);
  EXPECT_EQ(m_stream.Position(), kNoPosition);
  EXPECT_EQ(NewOpenings(), 1u);
}

TEST_F(Reconnect, NothingElseOpensAgain) {
  m_files.BreakOpenFiles();
  long long size = 77;
  unsigned int crc = 0;
  double times[3] = {1.0, 2.0, 3.0};
  EXPECT_FALSE(m_stream.Write("x", 1));
  EXPECT_FALSE(m_stream.GetSize(size));
  EXPECT_EQ(size, 77);
  EXPECT_FALSE(m_stream.GetFileTimes(times[0], times[1], times[2]));
  EXPECT_EQ(times[0] + times[1] + times[2], 0.0);
  EXPECT_FALSE(m_stream.Sync());
  EXPECT_TRUE(m_stream.GetFileCrc32(crc));
  EXPECT_EQ(crc, 0xFFFFFFFFu);
  EXPECT_EQ(NewOpenings(), 0u);
}

TEST_F(Reconnect, KeepsModeAndSharingAndNeverEmptiesTheFile) {
  for (const bool readWrite : {false, true}) {
    m_clock.Advance(20000.0);
    EXPECT_TRUE(m_stream.Open(m_path.c_str(), true, true));
    EXPECT_TRUE(m_stream.Write("abc", 3));
    EXPECT_TRUE(m_stream.MakeReadWrite(readWrite));
    m_files.BreakOpenFiles();
    EXPECT_FALSE(ReadOne());
    EXPECT_EQ(m_stream.IsReadWrite(), readWrite);
    EXPECT_TRUE(ReadOne());
    EXPECT_EQ(m_stream.Write("x", 1), readWrite);
    EXPECT_EQ(HugeFileStream(m_path.c_str(), false, true).IsOpen(), !readWrite);
    EXPECT_EQ(m_folder.Read("a"), readWrite ? "axc" : "abc");
  }
}

TEST_F(Reconnect, StreamThatCannotOpenAgainKeepsItsOldFile) {
  m_files.DropConnection();
  const int descriptors = CountOpenDescriptors();
  for (int attempt = 0; attempt < 5; ++attempt) {
    m_clock.Advance(20000.0);
    EXPECT_FALSE(ReadOne());
  }
  EXPECT_EQ(CountOpenDescriptors(), descriptors);
  EXPECT_EQ(m_files.OpenFiles(), 1);
  m_files.RestoreConnection();
  EXPECT_TRUE(ReadOne());
}

// ---- Outages of each length at each operation, against the rule told once more ----

// The stream as its rule has it, without a file: whether its opening is alive, where it stands, when it last tried.
class Told {
 public:
  explicit Told(unsigned int tick) : m_tick(tick) {}

  void At(unsigned int tick, bool shareIsThere) {
    m_tick = tick;
    m_shareIsThere = shareIsThere;
    m_alive = m_alive && shareIsThere;  // an opening does not survive an outage
  }

  bool Read() {
    if (m_alive) return ++m_position <= kSize;
    TryOpening();
    return false;
  }
  bool Seek(long long position) {
    if (m_alive || TryOpening()) m_position = position;
    return true;
  }
  long long Position() { return m_alive || TryOpening() ? m_position : kNoPosition; }
  bool OnOpenFile() const { return m_alive; }
  bool SetSize() {
    Seek(kSize);
    return m_alive;
  }

 private:
  static constexpr long long kSize = 10;

  bool TryOpening() {
    if (m_tick - m_last <= 15000) return false;
    m_last = m_tick;
    if (!m_shareIsThere) return false;
    m_alive = true;
    m_position = 0;
    return true;
  }

  unsigned int m_tick;
  unsigned int m_last = 0;
  bool m_shareIsThere = true;
  bool m_alive = true;
  long long m_position = 0;
};

struct Operation {
  const char* name;
  std::function<long long(HugeFileStream&)> ours;
  std::function<long long(Told&)> told;
};

const std::vector<Operation>& Operations() {
  static const std::vector<Operation> operations = {
      {"Read",
       [](HugeFileStream& s) {
         char byte = 0;
         s.Seek(3, 0);
         return s.Read(&byte, 1) ? 1 : 0;
       },
       [](Told& t) {
         t.Seek(3);
         return t.Read() ? 1 : 0;
       }},
      {"Read alone",
       [](HugeFileStream& s) {
         char byte = 0;
         return s.Read(&byte, 1) ? 1 : 0;
       },
       [](Told& t) { return t.Read() ? 1 : 0; }},
      {"Seek", [](HugeFileStream& s) { return s.Seek(4, 0) ? 1 : 0; }, [](Told& t) { return t.Seek(4) ? 1 : 0; }},
      {"Position", [](HugeFileStream& s) { return s.Position(); }, [](Told& t) { return t.Position(); }},
      {"Write",
       [](HugeFileStream& s) {
         s.Seek(4, 0);
         return s.Write("4", 1) ? 1 : 0;
       },
       [](Told& t) {
         t.Seek(4);
         return t.OnOpenFile() ? 1 : 0;
       }},
      {"Write alone", [](HugeFileStream& s) { return s.Write("", 0) ? 1 : 0; }, [](Told& t) { return t.OnOpenFile() ? 1 : 0; }},
      {"SetSize", [](HugeFileStream& s) { return s.SetSize(10) ? 1 : 0; }, [](Told& t) { return t.SetSize() ? 1 : 0; }},
      {"GetSize",
       [](HugeFileStream& s) {
         long long size = 0;
         return s.GetSize(size) ? 1 : 0;
       },
       [](Told& t) { return t.OnOpenFile() ? 1 : 0; }},
      {"Sync", [](HugeFileStream& s) { return s.Sync() ? 1 : 0; }, [](Told& t) { return t.OnOpenFile() ? 1 : 0; }},
      {"GetFileTimes",
       [](HugeFileStream& s) {
         double a = 0.0;
         double b = 0.0;
         double c = 0.0;
         return s.GetFileTimes(a, b, c) ? 1 : 0;
       },
       [](Told& t) { return t.OnOpenFile() ? 1 : 0; }},
  };
  return operations;
}

// One operation each second for 70 seconds; the share goes away after 5.
void ExpectAsTold(const Operation& operation, std::optional<int> outageSeconds) {
  constexpr int kGone = 5;
  constexpr unsigned int kStart = 1000000;
  const TemporaryFolder folder;
  SimulatedClock clock;
  clock.SetTick(kStart);
  FaultInjectionFiles files;
  const PlatformOverride<PlatformClock> clockGuard(clock);
  const PlatformOverride<PlatformFiles> filesGuard(files);
  HugeFileStream stream(folder.Write("a", "0123456789").c_str(), false, true);
  Told told(kStart);
  for (int second = 0; second < 70; ++second) {
    if (second == kGone) {
      files.DropConnection();
      files.BreakOpenFiles(second % 2 == 0 ? FileResult::NetworkNameDeleted : FileResult::UnexpectedNetwork);
    }
    if (outageSeconds.has_value() && second == kGone + *outageSeconds) files.RestoreConnection();
    const bool there = second < kGone || (outageSeconds.has_value() && second >= kGone + *outageSeconds);
    told.At(clock.TickMilliseconds(), there);
    EXPECT_EQ(operation.ours(stream), operation.told(told)) << operation.name << " at second " << second;
    EXPECT_EQ(files.OpenFiles(), 1);
    clock.Advance(1000.0);
  }
  EXPECT_EQ(folder.Read("a"), "0123456789");
}

TEST(ReconnectOutage, Of10SecondsAtEachOperation) {
  for (const Operation& operation : Operations()) ExpectAsTold(operation, 10);
}

TEST(ReconnectOutage, Of20SecondsAtEachOperation) {
  for (const Operation& operation : Operations()) ExpectAsTold(operation, 20);
}

TEST(ReconnectOutage, ForEverAtEachOperation) {
  for (const Operation& operation : Operations()) ExpectAsTold(operation, std::nullopt);
}

}  // namespace
