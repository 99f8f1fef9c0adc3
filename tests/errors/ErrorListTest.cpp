#include "zelbase/errors/ErrorList.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <random>
#include <thread>
#include <vector>

#include "tests/errors/ProbeError.h"
#include "zelbase/errors/FileError.h"
#include "zelbase/errors/GenericError.h"

namespace {

constexpr long long kEarliest = std::numeric_limits<long long>::min();
constexpr long long kLatest = std::numeric_limits<long long>::max();

std::vector<unsigned int> SignaturesOf(const ErrorList& list) {
  std::vector<unsigned int> signatures;
  for (int i = 0; i < list.NumErrors(); ++i) signatures.push_back(list[i].Signature());
  return signatures;
}

using Signatures = std::vector<unsigned int>;

TEST(ErrorList, StartsEmpty) {
  const ErrorList list;
  EXPECT_EQ(list.NumErrors(), 0);
  EXPECT_EQ(list[0].ID(), 0u);
  EXPECT_EQ(list.GetErrorWithID(1), nullptr);
}

TEST(ErrorList, StoresACopyWithTheSameIdAndTime) {
  ErrorList list;
  const ProbeError error(1, 5000);
  list << error;
  ASSERT_EQ(list.NumErrors(), 1);
  EXPECT_NE(&list[0], &error);
  EXPECT_EQ(list[0].ID(), error.ID());
  EXPECT_EQ(list[0].ErrorTime(), 5000);
}

TEST(ErrorList, OwnsAndDestroysItsErrors) {
  const int before = ProbeError::Alive();
  {
    ErrorList list;
    list << ProbeError(1, 1) << ProbeError(2, 2);
    EXPECT_EQ(ProbeError::Alive(), before + 2);
  }
  EXPECT_EQ(ProbeError::Alive(), before);
}

TEST(ErrorList, StandsByTimeOldestFirst) {
  ErrorList list;
  list << ProbeError(1, 30) << ProbeError(2, 10) << ProbeError(3, 20) << ProbeError(4, 40) << ProbeError(5, 5);
  EXPECT_EQ(SignaturesOf(list), (Signatures{5, 2, 3, 1, 4}));
}

TEST(ErrorList, AmongEqualTimesTheNewestStandsLast) {
  ErrorList list;
  list << ProbeError(1, 10) << ProbeError(2, 20) << ProbeError(3, 10) << ProbeError(4, 10);
  EXPECT_EQ(SignaturesOf(list), (Signatures{1, 3, 4, 2}));
}

TEST(ErrorList, TimesAreComparedWithoutOverflow) {
  ErrorList list;
  list << ProbeError(1, 0) << ProbeError(2, kLatest) << ProbeError(3, kEarliest) << ProbeError(4, -1);
  EXPECT_EQ(SignaturesOf(list), (Signatures{3, 4, 1, 2}));
  list.ClearFromTime(kLatest);
  EXPECT_EQ(SignaturesOf(list), (Signatures{3, 4, 1}));
  list.ClearFromTime(kEarliest);
  EXPECT_EQ(list.NumErrors(), 0);
}

TEST(ErrorList, RepeatTakesThePlaceOfTheOlder) {
  ErrorList list;
  const ProbeError first(1, 10);
  const ProbeError second(1, 30);
  list << first << ProbeError(2, 20) << second;
  EXPECT_EQ(SignaturesOf(list), (Signatures{2, 1}));
  EXPECT_EQ(list[1].ID(), second.ID());
  EXPECT_EQ(list[1].ErrorTime(), 30);
  EXPECT_EQ(list.GetErrorWithID(first.ID()), nullptr);
}

TEST(ErrorList, RepeatMayMoveBackInTime) {
  ErrorList list;
  list << ProbeError(1, 10) << ProbeError(2, 20) << ProbeError(2, 5);
  EXPECT_EQ(SignaturesOf(list), (Signatures{2, 1}));
}

TEST(ErrorList, RepeatIsToldBySignatureAcrossClasses) {
  ErrorList list;
  list << FileError("a", FileError::Open) << GenericError("a", std::string("\0\0\0\0", 4), "");
  ASSERT_EQ(list.NumErrors(), 1);
  EXPECT_NE(dynamic_cast<const GenericError*>(&list[0]), nullptr);
}

TEST(ErrorList, HoldsAtMost250AndTheOldestGoes) {
  ErrorList list;
  for (unsigned int i = 0; i < 251; ++i) list << ProbeError(i, 1000 + static_cast<long long>(i));
  EXPECT_EQ(list.NumErrors(), 250);
  EXPECT_EQ(list[0].Signature(), 1u);
  EXPECT_EQ(list[249].Signature(), 250u);
}

TEST(ErrorList, FullListDropsANewErrorThatIsTheOldest) {
  ErrorList list;
  for (unsigned int i = 0; i < 250; ++i) list << ProbeError(i, 1000);
  const Signatures before = SignaturesOf(list);
  list << ProbeError(9999, 999);
  EXPECT_EQ(SignaturesOf(list), before);
  // At an equal time it is the newest of them, and the first one goes.
  list << ProbeError(9999, 1000);
  EXPECT_EQ(list.NumErrors(), 250);
  EXPECT_EQ(list[0].Signature(), 1u);
  EXPECT_EQ(list[249].Signature(), 9999u);
}

TEST(ErrorList, RepeatInAFullListRemovesNothingElse) {
  ErrorList list;
  for (unsigned int i = 0; i < 250; ++i) list << ProbeError(i, 1000 + static_cast<long long>(i));
  list << ProbeError(100, 5000);
  EXPECT_EQ(list.NumErrors(), 250);
  EXPECT_EQ(list[0].Signature(), 0u);
  EXPECT_EQ(list[249].Signature(), 100u);
}

TEST(ErrorList, ErrorOfTheListItselfMayBeInserted) {
  const int before = ProbeError::Alive();
  ErrorList list;
  list << ProbeError(1, 10) << ProbeError(2, 10);
  const unsigned int id = list[0].ID();
  list << list[0];
  EXPECT_EQ(SignaturesOf(list), (Signatures{2, 1}));
  EXPECT_EQ(list[1].ID(), id);
  EXPECT_EQ(ProbeError::Alive(), before + 2);
}

TEST(ErrorList, CauseOfAStoredErrorMayBeInserted) {
  ErrorList list;
  ProbeError error(1, 10);
  error.AddCause(ProbeError(1, 20));  // equal to its parent, which goes
  list << error;
  list << list[0].GetCause(0);
  ASSERT_EQ(list.NumErrors(), 1);
  EXPECT_EQ(list[0].ErrorTime(), 20);
  EXPECT_EQ(list[0].NumCauses(), 0);
}

TEST(ErrorList, ClearFromTimeRemovesFromTheTimeOn) {
  ErrorList list;
  list << ProbeError(1, 99) << ProbeError(2, 100) << ProbeError(3, 100) << ProbeError(4, 101);
  const long long time = 100;
  list.ClearFromTime(time);
  EXPECT_EQ(SignaturesOf(list), (Signatures{1}));
  list.ClearFromTime(100);
  EXPECT_EQ(list.NumErrors(), 1);
  list.ClearFromTime(99);
  EXPECT_EQ(list.NumErrors(), 0);
  list.ClearFromTime(0);
  EXPECT_EQ(list.NumErrors(), 0);
}

TEST(ErrorList, ClearDestroysEverything) {
  const int before = ProbeError::Alive();
  ErrorList list;
  list << ProbeError(1, 1) << ProbeError(2, 2);
  list.Clear();
  EXPECT_EQ(list.NumErrors(), 0);
  EXPECT_EQ(ProbeError::Alive(), before);
  list << ProbeError(1, 1);
  EXPECT_EQ(list.NumErrors(), 1);
}

TEST(ErrorList, IndexOutOfRangeIsTheEmptyError) {
  ErrorList list;
  list << ProbeError(1, 1);
  for (const int index : {-1, 1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
    EXPECT_EQ(list[index].ID(), 0u);
    EXPECT_EQ(list[index].Format(), "");
  }
}

TEST(ErrorList, GetErrorWithIdFindsTheFirst) {
  ErrorList list;
  ProbeError first(1, 10);
  ProbeError second(2, 20);
  first.SetID(7);
  second.SetID(7);
  list << second << first;
  EXPECT_EQ(list.GetErrorWithID(7), &list[0]);
  EXPECT_EQ(list.GetErrorWithID(7)->Signature(), 1u);
  EXPECT_EQ(list.GetErrorWithID(8), nullptr);
  EXPECT_EQ(list.GetErrorWithID(0), nullptr);
}

TEST(ErrorList, CopySharesTheErrors) {
  const int before = ProbeError::Alive();
  {
    auto source = std::make_unique<ErrorList>();
    *source << ProbeError(1, 1) << ProbeError(2, 2);
    ErrorList copy(*source);
    ErrorList assigned;
    assigned << ProbeError(3, 3);
    assigned = *source;
    EXPECT_EQ(&copy[0], &(*source)[0]);
    EXPECT_EQ(&assigned[1], &(*source)[1]);
    EXPECT_EQ(ProbeError::Alive(), before + 2);  // the third one is freed
    source->Clear();
    source.reset();
    EXPECT_EQ(SignaturesOf(copy), (Signatures{1, 2}));
    copy << ProbeError(1, 5);
    EXPECT_EQ(SignaturesOf(copy), (Signatures{2, 1}));
    EXPECT_EQ(SignaturesOf(assigned), (Signatures{1, 2}));
    const ErrorList& same = copy;
    copy = same;
    EXPECT_EQ(copy.NumErrors(), 2);
  }
  EXPECT_EQ(ProbeError::Alive(), before);
}

// A class that forgot to copy itself: its copies are plain ProbeErrors with another signature.
class Sliced : public ProbeError {
 public:
  using ProbeError::ProbeError;
  unsigned int Signature() const override { return ProbeError::Signature() + 1000; }
};

TEST(ErrorList, ComparesWithTheSignatureOfWhatIsStored) {
  ErrorList list;
  list << Sliced(1, 10) << Sliced(1, 10);
  EXPECT_EQ(SignaturesOf(list), (Signatures{1, 1}));
  list << ProbeError(1, 20);
  EXPECT_EQ(list.NumErrors(), 2);  // one is removed at most, the first
  EXPECT_EQ(list[1].ErrorTime(), 20);
}

class Unwilling : public ProbeError {
 public:
  using ProbeError::ProbeError;
  Error* Copy() const override { return nullptr; }
};

TEST(ErrorList, ErrorThatCopiesToNothingChangesNothing) {
  ErrorList list;
  list << ProbeError(1, 1) << Unwilling(1, 2) << Unwilling(2, 2);
  EXPECT_EQ(SignaturesOf(list), (Signatures{1}));
}

// A second transcription: a plain sequence, kept by stable sorting.
class Model {
 public:
  struct Row {
    unsigned int signature;
    long long time;
    unsigned int id;
  };

  void Insert(const Row& row) {
    const auto equal = std::find_if(m_rows.begin(), m_rows.end(), [&](const Row& other) { return other.signature == row.signature; });
    if (equal != m_rows.end()) m_rows.erase(equal);
    m_rows.push_back(row);
    std::stable_sort(m_rows.begin(), m_rows.end(), [](const Row& a, const Row& b) { return a.time < b.time; });
    if (m_rows.size() > 250) m_rows.erase(m_rows.begin());
  }
  void ClearFromTime(long long time) {
    std::erase_if(m_rows, [time](const Row& row) { return row.time >= time; });
  }
  void Clear() { m_rows.clear(); }
  const std::vector<Row>& Rows() const { return m_rows; }

 private:
  std::vector<Row> m_rows;
};

class ErrorListModel : public testing::TestWithParam<unsigned int> {};

TEST_P(ErrorListModel, RandomOperationsEqualThePlainSequence) {
  std::mt19937 random(GetParam());
  const auto below = [&random](unsigned int limit) { return static_cast<unsigned int>(random() % limit); };
  const unsigned int signatures = 200 + below(300);
  const unsigned int times = 1 + below(400);
  ErrorList list;
  Model model;
  std::size_t largest = 0;
  for (int step = 0; step < 3000; ++step) {
    const unsigned int kind = below(1000);
    if (kind == 0) {
      list.Clear();
      model.Clear();
    } else if (kind < 4) {
      const long long time = below(times) + times / 2;
      list.ClearFromTime(time);
      model.ClearFromTime(time);
    } else {
      const ProbeError error(below(signatures), below(times));
      list << error;
      model.Insert({error.Signature(), error.ErrorTime(), error.ID()});
    }
    ASSERT_EQ(list.NumErrors(), static_cast<int>(model.Rows().size())) << "step " << step;
    largest = std::max(largest, model.Rows().size());
    for (int i = 0; i < list.NumErrors(); ++i) {
      ASSERT_EQ(list[i].ID(), model.Rows()[static_cast<std::size_t>(i)].id) << "step " << step << " index " << i;
    }
  }
  EXPECT_GT(largest, 150u);
}

INSTANTIATE_TEST_SUITE_P(ErrorList, ErrorListModel, testing::Range(1u, 9u));

class ErrorListThreads : public testing::TestWithParam<int> {};

TEST_P(ErrorListThreads, ManyThreadsInsertAndRead) {
  ErrorList list;
  std::vector<std::thread> threads;
  for (int t = 0; t < GetParam(); ++t) {
    threads.emplace_back([&list, t] {
      for (int i = 0; i < 100; ++i) {
        list << ProbeError(static_cast<unsigned int>(t * 10 + i % 10), i);
        list.NumErrors();
        list.GetErrorWithID(1);
        if (i % 50 == 49) list.ClearFromTime(1000);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(list.NumErrors(), GetParam() * 10);
  for (int i = 1; i < list.NumErrors(); ++i) EXPECT_LE(list[i - 1].ErrorTime(), list[i].ErrorTime());
}

INSTANTIATE_TEST_SUITE_P(ErrorList, ErrorListThreads, testing::Values(2, 4, 10));

}  // namespace
