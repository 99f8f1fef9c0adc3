#include "zelbase/concurrency/ReadWriteLocker.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <random>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/support/Effort.h"
#include "zelbase/concurrency/Locker.h"
#include "zelbase/platform/PlatformEvent.h"

// Who is inside and who waits, read from the lock's word.
struct ReadWriteLockerPeer {
  static unsigned int Readers(const ReadWriteLocker& locker) { return locker.m_state / ReadWriteLocker::kReader; }
  static bool WriterHasCome(const ReadWriteLocker& locker) { return (locker.m_state & ReadWriteLocker::kWriter) != 0; }
  static bool SomebodyWaitsForTheWriter(const ReadWriteLocker& locker) { return (locker.m_state & ReadWriteLocker::kWaiting) != 0; }
  static bool IsFree(const ReadWriteLocker& locker) { return locker.m_state == 0; }
};

namespace {

using Peer = ReadWriteLockerPeer;

constinit ReadWriteLocker g_static;

template <class Condition>
void SpinUntil(Condition condition) {
  while (!condition()) std::this_thread::yield();
}

// A thread that takes the lock, says so, and gives it back when told.
class Holder {
 public:
  enum class Kind { Reader, Writer };

  Holder(ReadWriteLocker& locker, Kind kind)
      : m_thread([this, &locker, kind] {
          EXPECT_TRUE(kind == Kind::Reader ? locker.LockRead() : locker.LockWrite());
          m_inside.Set();
          m_leave.Wait();
          if (kind == Kind::Reader) {
            locker.UnlockRead();
          } else {
            locker.UnlockWrite();
          }
        }) {}
  ~Holder() { Leave(); }

  bool IsInside() { return m_inside.TryWait(); }
  void AwaitInside() { m_inside.Wait(); }
  void Leave() {
    m_leave.Set();
    if (m_thread.joinable()) m_thread.join();
  }

 private:
  PlatformEvent m_inside;
  PlatformEvent m_leave;
  std::thread m_thread;
};

constexpr auto kReader = Holder::Kind::Reader;
constexpr auto kWriter = Holder::Kind::Writer;

TEST(ReadWriteLocker, LocksAndUnlocksAlone) {
  ReadWriteLocker locker;
  EXPECT_TRUE(locker.LockWrite());
  locker.UnlockWrite();
  EXPECT_TRUE(locker.LockRead());
  EXPECT_TRUE(locker.LockRead());
  locker.UnlockRead();
  locker.UnlockRead();
  EXPECT_TRUE(locker.LockWrite());
  locker.ChangeWriteToRead();
  locker.UnlockRead();
  EXPECT_TRUE(Peer::IsFree(locker));
}

TEST(ReadWriteLocker, LockOnAConstantObjectReadsAndOnAnotherWrites) {
  ReadWriteLocker locker;
  EXPECT_TRUE(std::as_const(locker).Lock());
  EXPECT_EQ(Peer::Readers(locker), 1u);
  EXPECT_FALSE(Peer::WriterHasCome(locker));
  std::as_const(locker).Unlock();
  EXPECT_TRUE(locker.Lock());
  EXPECT_EQ(Peer::Readers(locker), 0u);
  EXPECT_TRUE(Peer::WriterHasCome(locker));
  locker.Unlock();
  EXPECT_TRUE(Peer::IsFree(locker));
}

TEST(ReadWriteLocker, IsAConstantInitialisedStaticThatNeedsNoDestruction) {
  static_assert(std::is_trivially_destructible_v<ReadWriteLocker>);
  g_static.LockWrite();
  g_static.UnlockWrite();
  EXPECT_TRUE(Peer::IsFree(g_static));
}

TEST(ReadWriteLocker, ReadersMayUnlockOnAnotherThread) {
  ReadWriteLocker locker;
  locker.LockRead();
  std::thread([&] { locker.LockRead(); }).join();
  std::thread([&] { locker.UnlockRead(); }).join();
  EXPECT_EQ(Peer::Readers(locker), 1u);
  std::thread([&] { locker.UnlockRead(); }).join();
  Holder writer(locker, kWriter);
  writer.AwaitInside();
}

TEST(ReadWriteLocker, AWriterWaitsForBothReaders) {
  ReadWriteLocker locker;
  Holder first(locker, kReader), second(locker, kReader);
  first.AwaitInside();
  second.AwaitInside();
  Holder writer(locker, kWriter);
  SpinUntil([&] { return Peer::WriterHasCome(locker); });
  first.Leave();
  EXPECT_EQ(Peer::Readers(locker), 1u);
  EXPECT_FALSE(writer.IsInside());
  second.Leave();
  writer.AwaitInside();
}

TEST(ReadWriteLocker, AReaderThatComesWhileAWriterWaitsIsHeldBackUntilTheWriterIsDone) {
  ReadWriteLocker locker;
  Holder first(locker, kReader), second(locker, kReader);
  first.AwaitInside();
  second.AwaitInside();
  Holder writer(locker, kWriter);
  SpinUntil([&] { return Peer::WriterHasCome(locker); });
  Holder third(locker, kReader);
  SpinUntil([&] { return Peer::SomebodyWaitsForTheWriter(locker); });
  EXPECT_EQ(Peer::Readers(locker), 2u);
  first.Leave();
  second.Leave();
  writer.AwaitInside();
  EXPECT_FALSE(third.IsInside());
  writer.Leave();
  third.AwaitInside();
}

TEST(ReadWriteLocker, ASecondWriterWaitsForTheFirst) {
  ReadWriteLocker locker;
  Holder first(locker, kWriter);
  first.AwaitInside();
  Holder second(locker, kWriter);
  SpinUntil([&] { return Peer::SomebodyWaitsForTheWriter(locker); });
  EXPECT_FALSE(second.IsInside());
  first.Leave();
  second.AwaitInside();
}

TEST(ReadWriteLocker, AfterChangeWriteToReadAReaderEntersAtOnceAndTheLastOfBothFreesTheLock) {
  ReadWriteLocker locker;
  locker.LockWrite();
  locker.ChangeWriteToRead();
  Holder reader(locker, kReader);
  reader.AwaitInside();
  EXPECT_EQ(Peer::Readers(locker), 2u);
  locker.UnlockRead();
  EXPECT_EQ(Peer::Readers(locker), 1u);
  Holder writer(locker, kWriter);
  SpinUntil([&] { return Peer::WriterHasCome(locker); });
  EXPECT_FALSE(writer.IsInside());
  reader.Leave();
  writer.AwaitInside();
}

TEST(ReadWriteLocker, ChangeWriteToReadLetsNoWaitingWriterThrough) {
  for (int round = 0; round < 200; ++round) {
    ReadWriteLocker locker;
    locker.LockWrite();
    Holder writer(locker, kWriter);
    SpinUntil([&] { return Peer::SomebodyWaitsForTheWriter(locker); });
    locker.ChangeWriteToRead();
    SpinUntil([&] { return Peer::WriterHasCome(locker); });  // the other one claims the lock, and waits for this reader
    EXPECT_EQ(Peer::Readers(locker), 1u);
    EXPECT_FALSE(writer.IsInside());
    locker.UnlockRead();
    writer.AwaitInside();
  }
}

TEST(ReadWriteLocker, UnlocksOfAFreeLockAreIgnored) {
  ReadWriteLocker locker;
  for (int i = 0; i < 3; ++i) {
    locker.UnlockRead();
    locker.UnlockWrite();
    locker.ChangeWriteToRead();
  }
  EXPECT_TRUE(Peer::IsFree(locker));
  locker.LockWrite();
  Holder other(locker, kWriter);
  SpinUntil([&] { return Peer::SomebodyWaitsForTheWriter(locker); });
  EXPECT_FALSE(other.IsInside());
  locker.UnlockWrite();
  other.AwaitInside();
}

TEST(ReadWriteLocker, UnlocksOfTheOtherKindAreIgnored) {
  ReadWriteLocker locker;
  locker.LockRead();
  locker.UnlockWrite();
  locker.ChangeWriteToRead();
  EXPECT_EQ(Peer::Readers(locker), 1u);
  EXPECT_FALSE(Peer::WriterHasCome(locker));
  locker.UnlockRead();

  locker.LockWrite();
  locker.UnlockRead();
  EXPECT_TRUE(Peer::WriterHasCome(locker));
  locker.UnlockWrite();
  EXPECT_TRUE(Peer::IsFree(locker));
}

TEST(ReadWriteLocker, UnlockWriteWhileAWriterStillWaitsIsIgnored) {
  ReadWriteLocker locker;
  locker.LockRead();
  Holder writer(locker, kWriter);
  SpinUntil([&] { return Peer::WriterHasCome(locker); });
  locker.UnlockWrite();
  locker.ChangeWriteToRead();
  EXPECT_TRUE(Peer::WriterHasCome(locker));
  EXPECT_EQ(Peer::Readers(locker), 1u);
  locker.UnlockRead();
  writer.AwaitInside();
}

TEST(ReadWriteLocker, UnlocksOfTheOtherKindAreIgnoredWhileOthersWait) {
  ReadWriteLocker locker;
  locker.LockWrite();
  Holder reader(locker, kReader);
  SpinUntil([&] { return Peer::SomebodyWaitsForTheWriter(locker); });
  locker.UnlockRead();
  EXPECT_FALSE(reader.IsInside());
  locker.UnlockWrite();
  reader.AwaitInside();
}

class ReadWriteLockerThreads : public testing::TestWithParam<int> {};

TEST_P(ReadWriteLockerThreads, AllReadersAreInsideTogether) {
  ReadWriteLocker locker;
  std::vector<std::unique_ptr<Holder>> readers;
  for (int i = 0; i < GetParam(); ++i) readers.push_back(std::make_unique<Holder>(locker, kReader));
  for (const auto& reader : readers) reader->AwaitInside();
  EXPECT_EQ(Peer::Readers(locker), readers.size());
  Holder writer(locker, kWriter);
  for (const auto& reader : readers) reader->Leave();
  writer.AwaitInside();
}

TEST_P(ReadWriteLockerThreads, EveryoneWhoWaitsForAWriterGetsIn) {
  for (int round = 0; round < 50; ++round) {
    ReadWriteLocker locker;
    locker.LockWrite();
    std::vector<std::thread> threads;
    for (int i = 0; i < GetParam(); ++i) {
      threads.emplace_back([&, i] {
        if (i % 2 == 0) {
          locker.LockRead();
          locker.UnlockRead();
        } else {
          locker.LockWrite();
          locker.UnlockWrite();
        }
      });
    }
    locker.UnlockWrite();
    for (std::thread& thread : threads) thread.join();
    EXPECT_TRUE(Peer::IsFree(locker));
  }
}

// Writers leave two equal numbers behind; nobody ever sees them differ, and a writer that goes on as a reader still sees
// its own. Unlocks too many are strewn in where they cannot hit anybody else's lock.
TEST_P(ReadWriteLockerThreads, NobodySeesHalfAWrite) {
  constexpr int kRounds = 2000;
  ReadWriteLocker locker;
  long long first = 0, second = 0;
  std::atomic<long long> writes{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < GetParam(); ++i) {
    threads.emplace_back([&, i] {
      std::mt19937 random(static_cast<unsigned int>(i));
      for (int round = 0; round < kRounds; ++round) {
        switch (random() % 4) {
          case 0: {
            locker.LockWrite();
            const long long mine = ++first;
            ++second;
            ++writes;
            locker.UnlockRead();
            locker.ChangeWriteToRead();
            locker.UnlockWrite();
            EXPECT_EQ(first, mine);
            EXPECT_EQ(second, mine);
            locker.UnlockRead();
            break;
          }
          case 1:
            locker.LockWrite();
            ++first;
            ++second;
            ++writes;
            locker.UnlockWrite();
            break;
          default:
            locker.LockRead();
            EXPECT_EQ(first, second);
            locker.UnlockRead();
        }
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(first, writes);
  EXPECT_EQ(second, writes);
  EXPECT_TRUE(Peer::IsFree(locker));
}

// Each thread writes its number and goes on as a reader; the others, who wait to write, must not come between.
TEST_P(ReadWriteLockerThreads, MayBeDestroyedByTheWriterThatFollowsTheLastReader) {
  for (int round = 0; round < 300; ++round) {
    auto locker = std::make_unique<ReadWriteLocker>();
    std::vector<std::thread> readers;
    for (int i = 0; i < GetParam(); ++i) {
      locker->LockRead();
      readers.emplace_back([raw = locker.get()] { raw->UnlockRead(); });
    }
    locker->LockWrite();
    locker.reset();
    for (std::thread& reader : readers) reader.join();
  }
}

INSTANTIATE_TEST_SUITE_P(Counts, ReadWriteLockerThreads, testing::Values(2, 4, 10));

// Twenty million operations in all, a third with each number of threads; two million under a sanitizer. Who is inside is noted
// in fields that the lock guards, and in one count of the readers.
class ReadWriteLockerLong : public testing::TestWithParam<int> {
 protected:
  static constexpr long long kOperations = Effort(20000000, 2000000) / 3 + 1;

  // The invariants, looked at from inside. Each gives how often they did not hold.
  int LookAsReader() const { return (m_writing != 0) + (m_first != m_second) + (m_depth != 0); }

  int Write(int self) {
    int wrong = (m_writing != 0) + (m_readers.load(std::memory_order_relaxed) != 0);
    m_writing = 1;
    ++m_first;
    m_last = self;
    wrong += LockAgain();
    ++m_second;
    m_writing = 0;
    return wrong + (m_last != self);
  }

  // Three times deep: the writers are alone, so that the depth is this thread's.
  int LockAgain() {
    int wrong = 0;
    for (int depth = 0; depth < 3; ++depth) {
      m_again.Lock();
      wrong += m_depth++ != depth;
    }
    for (int depth = 3; depth > 0; --depth) {
      wrong += m_depth-- != depth;
      m_again.Unlock();
    }
    return wrong;
  }

  long long Work(int self, long long operations) {
    std::mt19937 random(static_cast<unsigned int>(self) + 42);
    long long wrong = 0;
    while (operations > 0) {
      const unsigned int what = random() % 8;
      if (what < 5) {
        m_locker.LockRead();
        m_readers.fetch_add(1, std::memory_order_relaxed);
        wrong += LookAsReader();
        m_readers.fetch_sub(1, std::memory_order_relaxed);
        m_locker.UnlockRead();
        operations -= 2;
        continue;
      }
      m_locker.LockWrite();
      wrong += Write(self);
      if (what < 7) {
        m_locker.UnlockWrite();
        operations -= 2;
        continue;
      }
      const long long mine = m_first;
      m_locker.ChangeWriteToRead();
      m_readers.fetch_add(1, std::memory_order_relaxed);
      wrong += LookAsReader() + (m_first != mine) + (m_last != self);
      m_readers.fetch_sub(1, std::memory_order_relaxed);
      m_locker.UnlockRead();
      operations -= 3;
    }
    return wrong;
  }

  ReadWriteLocker m_locker;
  Locker m_again;
  std::atomic<int> m_readers{0};
  int m_writing = 0;
  int m_depth = 0;
  int m_last = -1;
  long long m_first = 0;
  long long m_second = 0;
};

TEST_P(ReadWriteLockerLong, MillionsOfOperationsKeepReadersAndWritersApart) {
  const long long share = kOperations / GetParam() + 1;
  std::atomic<long long> wrong{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < GetParam(); ++i) threads.emplace_back([&, i] { wrong += Work(i, share); });
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
  EXPECT_EQ(m_first, m_second);
  EXPECT_GT(m_first, kOperations / 10) << "of eight rounds three write, and a round is two or three operations";
  EXPECT_EQ(m_readers, 0);
  EXPECT_TRUE(Peer::IsFree(m_locker));
}

TEST_P(ReadWriteLockerLong, NoWaitingWriterComesBetweenAWriteAndTheReadThatItTurnsInto) {
  constexpr int kRounds = 1000;
  ReadWriteLocker locker;
  int last = -1;
  std::vector<std::thread> threads;
  for (int i = 0; i < GetParam(); ++i) {
    threads.emplace_back([&, i] {
      for (int round = 0; round < kRounds; ++round) {
        locker.LockWrite();
        last = i;
        locker.ChangeWriteToRead();
        for (int looks = 0; looks < 3; ++looks) {
          EXPECT_EQ(last, i);
          std::this_thread::yield();
        }
        locker.UnlockRead();
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_TRUE(Peer::IsFree(locker));
}

INSTANTIATE_TEST_SUITE_P(Counts, ReadWriteLockerLong, testing::Values(2, 4, 10));

}  // namespace
