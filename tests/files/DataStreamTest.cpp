#include "zelbase/files/DataStream.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include "tests/support/TemporaryFolder.h"
#include "zelbase/files/FileStream.h"
#include "zelbase/files/HugeFileStream.h"

namespace {

// Forwards to whatever stream it is given, in the order of the operations.
class RecordingStream : public DataStream {
 public:
  bool Sync() override { return Note("Sync"); }
  bool Read(void*, unsigned int) override { return Note("Read"); }
  bool Write(const void*, unsigned int) override { return Note("Write"); }
  bool Seek(long long, int) override { return Note("Seek"); }
  long long Position() override { return Note("Position") ? 1 : 0; }
  bool SetSize(long long) override { return Note("SetSize"); }

  std::vector<std::string> calls;

 private:
  bool Note(const char* call) {
    calls.emplace_back(call);
    return true;
  }
};

TEST(DataStream, IsAbstractAndDestroyedThroughTheInterface) {
  EXPECT_TRUE(std::is_abstract_v<DataStream>);
  EXPECT_TRUE(std::has_virtual_destructor_v<DataStream>);
}

TEST(DataStream, EveryOperationIsTheDerivedClasss) {
  RecordingStream recording;
  DataStream& stream = recording;
  stream.Sync();
  stream.Read(nullptr, 0);
  stream.Write(nullptr, 0);
  stream.Seek(0, 0);
  stream.Position();
  stream.SetSize(0);
  EXPECT_EQ(recording.calls, (std::vector<std::string>{"Sync", "Read", "Write", "Seek", "Position", "SetSize"}));
}

TEST(DataStream, OperationsTakeNoLock) {
  RecordingStream stream;
  ASSERT_TRUE(stream.Lock());
  std::thread other([&] { EXPECT_TRUE(stream.Sync()); });  // would wait for ever otherwise
  other.join();
  stream.Unlock();
}

TEST(DataStream, LockMayBeTakenAgainByItsHolder) {
  RecordingStream stream;
  EXPECT_TRUE(stream.Lock());
  EXPECT_TRUE(stream.Lock());
  stream.Unlock();
  stream.Unlock();
  std::thread other([&] {
    EXPECT_TRUE(stream.Lock());
    stream.Unlock();
  });
  other.join();
}

TEST(DataStream, CopyOfALockedStreamIsFree) {
  RecordingStream stream;
  stream.Lock();
  RecordingStream copy(stream);
  std::thread other([&] {
    EXPECT_TRUE(copy.Lock());
    copy.Unlock();
  });
  other.join();
  stream.Unlock();
}

// Each record holds its own number four times over; a seek and a read of two threads that mixed would show.
TEST(DataStream, BracketedSeekAndReadOfSeveralThreadsDoNotMix) {
  const TemporaryFolder folder;
  constexpr unsigned int kRecords = 64;
  const std::string path = folder.File("a");
  HugeFileStream huge(path.c_str(), true, true);
  for (unsigned int i = 0; i < kRecords; ++i) {
    const unsigned int record[4] = {i, i, i, i};
    ASSERT_TRUE(huge.Write(record, sizeof(record)));
  }
  DataStream& stream = huge;
  std::vector<std::thread> threads;
  for (unsigned int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([&stream, thread] {
      for (unsigned int round = 0; round < 500; ++round) {
        const unsigned int wanted = (round * 7 + thread * 13) % kRecords;
        unsigned int record[4] = {};
        stream.Lock();
        const bool whole = stream.Seek(static_cast<long long>(wanted * sizeof(record)), 0) && stream.Read(record, sizeof(record));
        stream.Unlock();
        EXPECT_TRUE(whole);
        for (const unsigned int number : record) EXPECT_EQ(number, wanted);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}

}  // namespace
