#include "zelbase/errors/GlobalErrorList.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <limits>
#include <map>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include "tests/errors/ProbeError.h"
#include "tests/support/ChildProcess.h"
#include "zelbase/errors/ErrorString.h"
#include "zelbase/errors/FileError.h"
#include "zelbase/errors/GenericError.h"

namespace {

// Does what it is told at each error, and stands in the global list for its own life.
class Listener : public ErrorReporterBase {
 public:
  using Action = std::function<void(const Error&)>;
  explicit Listener(Action action) : m_action(std::move(action)) { GlobalErrorList::Get().AddReporter(this); }
  ~Listener() { GlobalErrorList::Get().RemoveReporter(this); }
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;

  void Report(const Error& error) override {
    ++m_calls;
    m_action(error);
  }
  int Calls() const { return m_calls; }

 private:
  Action m_action;
  int m_calls = 0;
};

void Ignore(const Error&) {}

class GlobalList : public testing::Test {
 protected:
  void SetUp() override { m_list.Clear(); }
  void TearDown() override { m_list.Clear(); }

  std::vector<std::string> Contexts() {
    const std::string former = m_list.CurrentContext();
    std::vector<std::string> names;
    for (bool more = m_list.FirstContext(); more; more = m_list.NextContext()) names.push_back(m_list.CurrentContext());
    m_list.SetContext(former);
    return names;
  }

  GlobalErrorList& m_list = GlobalErrorList::Get();
};

using Names = std::vector<std::string>;

TEST_F(GlobalList, IsOneObject) {
  EXPECT_EQ(&GlobalErrorList::Get(), &m_list);
  static_assert(!std::is_copy_constructible_v<GlobalErrorList>);
}

TEST_F(GlobalList, StartsWithGeneralOnly) {
  EXPECT_EQ(m_list.DefaultContext(), "General");
  EXPECT_EQ(m_list.CurrentContext(), "General");
  EXPECT_EQ(Contexts(), Names{"General"});
  EXPECT_EQ(m_list.NumErrors(true), 0);
}

TEST_F(GlobalList, InsertMovesTheCurrentContext) {
  m_list.Insert(ProbeError(1), "Sonar");
  EXPECT_EQ(m_list.CurrentContext(), "Sonar");
  EXPECT_EQ(m_list.NumErrors(false), 1);
  m_list.Insert(ProbeError(2), "");
  EXPECT_EQ(m_list.CurrentContext(), "General");
  EXPECT_EQ(m_list.NumErrors(false), 1);
  EXPECT_EQ(m_list.NumErrors(true), 2);
  m_list.SetContext("Sonar");
  m_list.Insert(ProbeError(3));
  EXPECT_EQ(m_list.CurrentContext(), "General");
}

TEST_F(GlobalList, InsertChains) {
  EXPECT_EQ(&m_list.Insert(ProbeError(1), "a").Insert(ProbeError(2), "b"), &m_list);
  EXPECT_EQ(m_list.NumErrors(true), 2);
}

TEST_F(GlobalList, SameErrorTwiceUnderOneContextIsOneEntryOfTheSecond) {
  const FileError first("f", FileError::Open);
  const FileError second("f", FileError::Open);
  m_list.Insert(first, "Files").Insert(second, "Files");
  ASSERT_EQ(m_list.NumErrors(false), 1);
  EXPECT_EQ(m_list[0].ID(), second.ID());
}

TEST_F(GlobalList, SameErrorUnderTwoContextsIsOneEntryInEach) {
  const FileError error("f", FileError::Open);
  m_list.Insert(error, "a").Insert(error, "b");
  EXPECT_EQ(m_list.NumErrors(true), 2);
  EXPECT_EQ(m_list.NumErrors(false), 1);
}

TEST_F(GlobalList, ContextNamesAreComparedExactly) {
  m_list.SetContext("sonar");
  m_list.SetContext("Sonar");
  m_list.SetContext("Sonar ");
  m_list.SetContext(std::string("Sonar\0", 6));
  m_list.SetContext("general");
  EXPECT_EQ(Contexts(), (Names{"General", "Sonar", std::string("Sonar\0", 6), "Sonar ", "general", "sonar"}));
}

TEST_F(GlobalList, SetContextMakesUnknownOnesAndTakesEmptyAsGeneral) {
  m_list.Insert(ProbeError(1), "a");
  m_list.SetContext("new");
  EXPECT_EQ(m_list.CurrentContext(), "new");
  EXPECT_EQ(m_list.NumErrors(false), 0);
  m_list.SetContext("a");
  EXPECT_EQ(m_list.NumErrors(false), 1);
  m_list.SetContext("");
  EXPECT_EQ(m_list.CurrentContext(), "General");
}

TEST_F(GlobalList, ClearLeavesGeneralAloneAndEmpty) {
  const int before = ProbeError::Alive();
  m_list.Insert(ProbeError(1), "a").Insert(ProbeError(2), "b").Insert(ProbeError(3));
  m_list.SetContext("b");
  m_list.Clear();
  EXPECT_EQ(Contexts(), Names{"General"});
  EXPECT_EQ(m_list.CurrentContext(), "General");
  EXPECT_EQ(m_list.NumErrors(true), 0);
  EXPECT_EQ(ProbeError::Alive(), before);
}

TEST_F(GlobalList, ClearOfAContextMakesItCurrent) {
  m_list.Insert(ProbeError(1), "a").Insert(ProbeError(2), "b");
  m_list.Clear("a");
  EXPECT_EQ(m_list.CurrentContext(), "a");
  EXPECT_EQ(m_list.NumErrors(false), 0);
  EXPECT_EQ(m_list.NumErrors(true), 1);
  m_list.Clear("new");
  EXPECT_EQ(m_list.CurrentContext(), "new");
  m_list.Insert(ProbeError(3));
  m_list.Clear("");
  EXPECT_EQ(m_list.CurrentContext(), "General");
  EXPECT_EQ(Contexts(), (Names{"General", "a", "b", "new"}));
  EXPECT_EQ(m_list.NumErrors(true), 1);
}

TEST_F(GlobalList, ClearFromTimeWorksOnEveryContext) {
  m_list.Insert(ProbeError(1, 99), "a").Insert(ProbeError(2, 100), "a").Insert(ProbeError(3, 101), "b");
  m_list.Insert(ProbeError(4, 99), "b");
  const long long time = 100;
  m_list.ClearFromTime(time);
  EXPECT_EQ(m_list.NumErrors(true), 2);
  EXPECT_EQ(m_list.CurrentContext(), "b");
  EXPECT_EQ(m_list[0].Signature(), 4u);
  m_list.SetContext("a");
  EXPECT_EQ(m_list[0].Signature(), 1u);
}

TEST_F(GlobalList, IndexAndGetAreOfTheCurrentContext) {
  m_list.Insert(ProbeError(1, 10), "a").Insert(ProbeError(2, 20), "a").Insert(ProbeError(3, 30), "b");
  EXPECT_EQ(m_list[0].Signature(), 3u);
  m_list.SetContext("a");
  EXPECT_EQ(m_list[0].Signature(), 1u);
  EXPECT_EQ(m_list[1].Signature(), 2u);
  EXPECT_EQ(m_list.Get(1), &m_list[1]);
}

TEST_F(GlobalList, IndexOutOfRangeIsTheEmptyErrorAndNull) {
  m_list.Insert(ProbeError(1));
  for (const int index : {-1, 1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
    EXPECT_EQ(m_list.Get(index), nullptr);
    EXPECT_EQ(m_list[index].ID(), 0u);
  }
}

TEST_F(GlobalList, WalkGoesInTheOrderOfNames) {
  for (const char* name : {"b", "a", "Zulu", "\xC4"}) m_list.SetContext(name);
  EXPECT_EQ(Contexts(), (Names{"General", "Zulu", "a", "b", "\xC4"}));
}

TEST_F(GlobalList, AfterAWalkThereIsNoCurrentContext) {
  m_list.Insert(ProbeError(1, 10), "a");
  const unsigned int id = m_list[0].ID();
  EXPECT_TRUE(m_list.FirstContext());
  EXPECT_TRUE(m_list.NextContext());
  EXPECT_FALSE(m_list.NextContext());
  EXPECT_FALSE(m_list.NextContext());
  EXPECT_EQ(m_list.CurrentContext(), "");
  EXPECT_EQ(m_list.NumErrors(false), 0);
  EXPECT_EQ(m_list.NumErrors(true), 1);
  EXPECT_EQ(m_list.Get(0), nullptr);
  EXPECT_EQ(m_list[0].ID(), 0u);
  ASSERT_NE(m_list.GetErrorWithID(id), nullptr);
  m_list.Unlock();
  m_list.ClearFromTime(10);
  EXPECT_EQ(m_list.NumErrors(true), 0);
  EXPECT_EQ(m_list.CurrentContext(), "");
  m_list.Insert(ProbeError(2), "b");
  EXPECT_EQ(m_list.CurrentContext(), "b");
  while (m_list.NextContext()) {
  }
  m_list.SetContext("a");
  EXPECT_EQ(m_list.CurrentContext(), "a");
}

TEST_F(GlobalList, GetErrorWithIdOfAnUnknownIdLeavesTheLockFree) {
  EXPECT_EQ(m_list.GetErrorWithID(0), nullptr);
  std::thread other([this] { m_list.Insert(ProbeError(1), "other"); });
  other.join();  // would never end if the lock were held
  EXPECT_EQ(m_list.NumErrors(true), 1);
  m_list.Unlock();  // by a thread that does not hold it: ignored
  std::thread third([this] {
    m_list.Unlock();
    m_list.Insert(ProbeError(2), "other");
  });
  third.join();
  EXPECT_EQ(m_list.NumErrors(true), 2);
}

TEST_F(GlobalList, GetErrorWithIdOfAKnownIdLeavesTheLockHeld) {
  const ProbeError error(1);
  m_list.Insert(error, "a");
  ASSERT_NE(m_list.GetErrorWithID(error.ID()), nullptr);
  std::atomic<bool> started{false};
  std::atomic<bool> inserted{false};
  std::thread other([&] {
    started = true;
    m_list.Insert(ProbeError(2), "b");
    inserted = true;
  });
  while (!started) std::this_thread::yield();
  for (int i = 0; i < 1000; ++i) {
    std::this_thread::yield();
    ASSERT_FALSE(inserted);
  }
  EXPECT_EQ(m_list.NumErrors(true), 1);
  m_list.Unlock();
  other.join();
  EXPECT_TRUE(inserted);
  EXPECT_EQ(m_list.NumErrors(true), 2);
}

TEST_F(GlobalList, GetErrorWithIdLooksInAllContextsInTheOrderOfNames) {
  ProbeError first(1);
  ProbeError second(2);
  first.SetID(7);
  second.SetID(7);
  m_list.Insert(second, "b").Insert(first, "a").Insert(ProbeError(3), "c");
  const Error* const found = m_list.GetErrorWithID(7);
  ASSERT_NE(found, nullptr);
  EXPECT_EQ(found->Signature(), 1u);
  EXPECT_EQ(m_list.CurrentContext(), "c");
  m_list.Unlock();
}

TEST_F(GlobalList, LockIsReentrant) {
  m_list.Lock();
  m_list.Lock();
  m_list.Insert(ProbeError(1));
  m_list.Unlock();
  m_list.Unlock();
  std::thread other([this] { m_list.Insert(ProbeError(2)); });
  other.join();
  EXPECT_EQ(m_list.NumErrors(true), 2);
}

TEST_F(GlobalList, LockKeepsOthersOutUntilUnlock) {
  m_list.Lock();
  std::atomic<bool> started{false};
  std::atomic<bool> inserted{false};
  std::thread other([&] {
    started = true;
    m_list.Insert(ProbeError(1), "a");
    inserted = true;
  });
  while (!started) std::this_thread::yield();
  for (int i = 0; i < 1000; ++i) {
    std::this_thread::yield();
    EXPECT_FALSE(inserted);
  }
  m_list.Unlock();
  other.join();
  EXPECT_EQ(m_list.NumErrors(true), 1);
}

TEST_F(GlobalList, SetLogFileNameDoesNothing) {
  m_list.SetLogFileName("C:\\log.txt");
  m_list.SetLogFileName("");
  EXPECT_EQ(m_list.NumErrors(true), 0);
}

TEST_F(GlobalList, ReportErrorIsAlwaysFalse) {
  EXPECT_FALSE(ReportError(ProbeError(1), "a"));
  EXPECT_EQ(m_list.CurrentContext(), "a");
  EXPECT_FALSE(ReportError(GenericError("b")));
  EXPECT_EQ(m_list.CurrentContext(), "General");
  EXPECT_EQ(m_list.NumErrors(true), 2);
}

// --- Reporters --------------------------------------------------------------------------------------------------------

TEST_F(GlobalList, ReportersGetTheCallersObjectAfterItWasStored) {
  const ProbeError error(1);
  const Error* seen = nullptr;
  int stored = -1;
  std::string context;
  const Listener listener([&](const Error& given) {
    seen = &given;
    stored = m_list.NumErrors(false);
    context = m_list.CurrentContext();
  });
  m_list.Insert(error, "Sonar");
  EXPECT_EQ(seen, &error);
  EXPECT_EQ(stored, 1);
  EXPECT_EQ(context, "Sonar");
}

TEST_F(GlobalList, ReportersHearOfRepeatsAndOfErrorsThatGoAtOnce) {
  const Listener listener(Ignore);
  m_list.Insert(ProbeError(1, 10)).Insert(ProbeError(1, 10));
  EXPECT_EQ(listener.Calls(), 2);
  for (unsigned int i = 2; i <= 250; ++i) m_list.Insert(ProbeError(i, 10));
  m_list.Insert(ProbeError(9999, 1));
  EXPECT_EQ(listener.Calls(), 252);
  EXPECT_EQ(m_list.NumErrors(true), 250);
  EXPECT_EQ(m_list[0].Signature(), 1u);
}

TEST_F(GlobalList, ReportersAreCalledInTheOrderOfRegistration) {
  std::string order;
  const Listener first([&](const Error&) { order += 'a'; });
  const Listener second([&](const Error&) { order += 'b'; });
  const Listener third([&](const Error&) { order += 'c'; });
  m_list.Insert(ProbeError(1));
  EXPECT_EQ(order, "abc");
}

TEST_F(GlobalList, ReporterAddedTwiceIsCalledTwiceAndRemovedAtOnce) {
  Listener listener(Ignore);
  m_list.AddReporter(&listener);
  m_list.Insert(ProbeError(1));
  EXPECT_EQ(listener.Calls(), 2);
  m_list.RemoveReporter(&listener);
  m_list.Insert(ProbeError(2));
  EXPECT_EQ(listener.Calls(), 2);
}

TEST_F(GlobalList, NullReportersAreNotAdded) {
  m_list.AddReporter(nullptr);
  m_list.RemoveReporter(nullptr);
  m_list.Insert(ProbeError(1));
  EXPECT_EQ(m_list.NumErrors(true), 1);
}

TEST_F(GlobalList, ReporterThatRemovesItselfDoesNotHideTheNext) {
  Listener* self = nullptr;
  Listener leaving([&](const Error&) { m_list.RemoveReporter(self); });
  self = &leaving;
  const Listener next(Ignore);
  m_list.Insert(ProbeError(1)).Insert(ProbeError(2));
  EXPECT_EQ(leaving.Calls(), 1);
  EXPECT_EQ(next.Calls(), 2);
}

TEST_F(GlobalList, ReporterRemovedMeanwhileIsPassedOver) {
  Listener* victim = nullptr;
  const Listener remover([&](const Error&) { m_list.RemoveReporter(victim); });
  Listener removed(Ignore);
  victim = &removed;
  m_list.Insert(ProbeError(1));
  EXPECT_EQ(removed.Calls(), 0);
}

TEST_F(GlobalList, ReporterAddedTwiceThatRemovesItselfIsCalledOnce) {
  Listener* self = nullptr;
  Listener leaving([&](const Error&) { m_list.RemoveReporter(self); });
  self = &leaving;
  m_list.AddReporter(&leaving);
  m_list.Insert(ProbeError(1));
  EXPECT_EQ(leaving.Calls(), 1);
}

TEST_F(GlobalList, ReporterAddedMeanwhileHearsFromTheNextError) {
  Listener late(Ignore);
  m_list.RemoveReporter(&late);
  const Listener adder([&](const Error& error) {
    if (error.Signature() == 1) m_list.AddReporter(&late);
  });
  m_list.Insert(ProbeError(1));
  EXPECT_EQ(late.Calls(), 0);
  m_list.Insert(ProbeError(2));
  EXPECT_EQ(late.Calls(), 1);
}

TEST_F(GlobalList, ReporterRemovedAndAddedAgainHearsFromTheNextError) {
  Listener* other = nullptr;
  const Listener mover([&](const Error&) {
    m_list.RemoveReporter(other);
    m_list.AddReporter(other);
  });
  Listener moved(Ignore);
  other = &moved;
  m_list.Insert(ProbeError(1));
  EXPECT_EQ(moved.Calls(), 0);
}

TEST_F(GlobalList, ReporterMayReportInItsTurn) {
  const Listener listener([](const Error& error) {
    if (error.Signature() == 1) ReportError(ProbeError(2), "second");
  });
  m_list.Insert(ProbeError(1), "first");
  EXPECT_EQ(listener.Calls(), 2);
  EXPECT_EQ(m_list.NumErrors(true), 2);
  EXPECT_EQ(m_list.CurrentContext(), "second");  // the last to be inserted
}

TEST_F(GlobalList, BeyondSixteenCallsErrorsAreStoredAndNotTold) {
  const Listener listener([](const Error& error) { ReportError(ProbeError(error.Signature() + 1)); });
  m_list.Insert(ProbeError(1));
  EXPECT_EQ(listener.Calls(), 16);
  EXPECT_EQ(m_list.NumErrors(true), 17);
  m_list.Insert(ProbeError(101));
  EXPECT_EQ(listener.Calls(), 32);
  EXPECT_EQ(m_list.NumErrors(true), 34);
}

TEST_F(GlobalList, ExceptionOfAReporterPassesOutAndLeavesTheListWell) {
  const int before = ProbeError::Alive();
  {
    const Listener listener([](const Error& error) {
      if (error.Signature() == 1) throw std::runtime_error("reporter");
    });
    for (int i = 0; i < 40; ++i) EXPECT_THROW(m_list.Insert(ProbeError(1)), std::runtime_error);
    EXPECT_EQ(m_list.NumErrors(true), 1);
    EXPECT_EQ(ProbeError::Alive(), before + 1);
    std::thread other([this] { m_list.Insert(ProbeError(2)); });
    other.join();
    EXPECT_EQ(listener.Calls(), 41);
  }
}

// --- Errors that the list itself holds ---------------------------------------------------------------------------------

TEST_F(GlobalList, StoredErrorMayBeInsertedAgain) {
  const int before = ProbeError::Alive();
  m_list.Insert(ProbeError(1, 10), "a").Insert(ProbeError(2, 10), "a");
  const unsigned int id = m_list[0].ID();
  std::string format;
  const Listener listener([&](const Error& error) { format = error.Format(); });
  m_list.Insert(m_list[0], "a");
  EXPECT_EQ(format, "probe 1");
  EXPECT_EQ(m_list[1].ID(), id);
  m_list.Insert(m_list[0], "b");
  EXPECT_EQ(format, "probe 2");
  EXPECT_EQ(m_list.NumErrors(true), 3);
  EXPECT_EQ(ProbeError::Alive(), before + 3);
}

TEST_F(GlobalList, WhatLeavesTheListLivesUntilTheReportersHaveBeenCalled) {
  const int before = ProbeError::Alive();
  ProbeError error(1, 10);
  error.AddCause(ProbeError(5));
  m_list.Insert(error, "a");
  std::string formats;
  const Listener clearing([&](const Error&) { m_list.Clear(); });
  const Listener reading([&](const Error& given) { formats += given.Format() + ";"; });
  m_list.Insert(m_list[0], "a");
  m_list.Insert(error, "a");
  EXPECT_EQ(m_list.NumErrors(true), 0);
  EXPECT_EQ(formats, "probe 1;probe 1;");
  EXPECT_EQ(ProbeError::Alive(), before + 2);
}

TEST_F(GlobalList, ClearedErrorsLiveUntilTheReportersHaveBeenCalled) {
  const int before = ProbeError::Alive();
  m_list.Insert(ProbeError(1, 10), "a").Insert(ProbeError(2, 10), "b");
  int alive = 0;
  const Listener clearing([&](const Error&) { m_list.Clear(); });
  const Listener counting([&](const Error&) { alive = ProbeError::Alive() - before; });
  m_list.Insert(ProbeError(3, 10), "b");
  EXPECT_EQ(alive, 4);  // the caller's, and the three that were stored
  EXPECT_EQ(ProbeError::Alive(), before);
}

TEST_F(GlobalList, OldestOfAFullListLivesUntilTheReportersHaveBeenCalled) {
  const int before = ProbeError::Alive();
  for (unsigned int i = 0; i < 250; ++i) m_list.Insert(ProbeError(i, i), "a");
  int alive = 0;
  const Listener counting([&](const Error&) { alive = ProbeError::Alive() - before; });
  m_list.Insert(ProbeError(250, 250), "a");
  EXPECT_EQ(alive, 252);  // the caller's, the 250 in the list, and the one that has left it
  EXPECT_EQ(ProbeError::Alive(), before + 250);
}

TEST_F(GlobalList, CauseOfAStoredErrorMayBeInserted) {
  ProbeError error(1, 10);
  error.AddCause(ProbeError(1, 20));
  m_list.Insert(error);
  std::string format;
  const Listener clearing([&](const Error&) { m_list.Clear("General"); });
  const Listener late([&](const Error&) { m_list.ClearFromTime(0); });
  const Listener reading([&](const Error& given) { format = given.Format(); });
  m_list.Insert(m_list[0].GetCause(0));
  EXPECT_EQ(format, "probe 1");
}

// Reports when it is destroyed, as an object that owns a file may.
class Testament : public ProbeError {
 public:
  explicit Testament(unsigned int signature) : ProbeError(signature) {}
  Testament(const Testament& other) : ProbeError(other), m_copied(true) {}
  ~Testament() override {
    if (m_copied) ReportError(ProbeError(Signature() + 1), "testaments");
  }
  Error* Copy() const override { return new Testament(*this); }

 private:
  bool m_copied = false;
};

TEST_F(GlobalList, ErrorThatReportsAtItsEndFindsTheListWell) {
  m_list.Insert(Testament(1), "a");
  m_list.Clear();
  EXPECT_EQ(m_list.CurrentContext(), "testaments");
  EXPECT_EQ(m_list.NumErrors(true), 1);
  m_list.Insert(Testament(10), "a").Insert(Testament(10), "a");
  m_list.SetContext("testaments");
  EXPECT_EQ(m_list.NumErrors(false), 2);
}

// --- A second transcription -------------------------------------------------------------------------------------------

// Contexts by name, each a plain sequence; the current one by name, "" for none.
class Model {
 public:
  struct Row {
    unsigned int signature;
    long long time;
    unsigned int id;
  };
  using Rows = std::vector<Row>;

  Model() { Clear(); }

  void SetContext(const std::string& name) {
    m_current = name.empty() ? "General" : name;
    m_contexts[m_current];
  }
  void Insert(const Row& row, const std::string& name) {
    SetContext(name);
    Rows& rows = m_contexts[m_current];
    const auto equal = std::find_if(rows.begin(), rows.end(), [&](const Row& r) { return r.signature == row.signature; });
    if (equal != rows.end()) rows.erase(equal);
    auto place = rows.end();
    while (place != rows.begin() && (place - 1)->time > row.time) --place;
    rows.insert(place, row);
    if (rows.size() > 250) rows.erase(rows.begin());
  }
  void Clear() {
    m_contexts.clear();
    SetContext("");
  }
  void ClearContext(const std::string& name) {
    SetContext(name);
    m_contexts[m_current].clear();
  }
  void ClearFromTime(long long time) {
    for (auto& context : m_contexts) std::erase_if(context.second, [time](const Row& row) { return row.time >= time; });
  }
  bool First() {
    m_current = m_contexts.begin()->first;
    return true;
  }
  bool Next() {
    if (m_current.empty()) return false;
    const auto next = m_contexts.upper_bound(m_current);
    m_current = next == m_contexts.end() ? std::string() : next->first;
    return !m_current.empty();
  }
  const std::string& Current() const { return m_current; }
  Rows CurrentRows() const { return m_current.empty() ? Rows() : m_contexts.at(m_current); }
  std::size_t Total() const {
    std::size_t total = 0;
    for (const auto& context : m_contexts) total += context.second.size();
    return total;
  }
  unsigned int SignatureOf(unsigned int id) const {
    for (const auto& context : m_contexts) {
      for (const Row& row : context.second) {
        if (row.id == id) return row.signature;
      }
    }
    return 0;
  }

 private:
  std::map<std::string, Rows> m_contexts;
  std::string m_current;
};

class GlobalListModel : public GlobalList, public testing::WithParamInterface<unsigned int> {};

TEST_P(GlobalListModel, RandomOperationsEqualPlainSequences) {
  std::mt19937 random(GetParam());
  const auto below = [&random](unsigned int limit) { return static_cast<unsigned int>(random() % limit); };
  const std::vector<std::string> names = {"", "General", "a", "b", "Sonar"};
  const unsigned int signatures = 1 + below(600);
  Model model;
  unsigned int lastId = 0;
  for (int step = 0; step < 4000; ++step) {
    const std::string& name = names[below(static_cast<unsigned int>(names.size()))];
    const unsigned int kind = below(2000);
    if (kind == 0) {
      m_list.Clear();
      model.Clear();
    } else if (kind < 6) {
      m_list.Clear(name);
      model.ClearContext(name);
    } else if (kind < 12) {
      const long long time = 50 + below(50);
      m_list.ClearFromTime(time);
      model.ClearFromTime(time);
    } else if (kind < 100) {
      m_list.SetContext(name);
      model.SetContext(name);
    } else if (kind < 200) {
      ASSERT_EQ(m_list.FirstContext(), model.First());
    } else if (kind < 500) {
      ASSERT_EQ(m_list.NextContext(), model.Next());
    } else {
      const ProbeError error(1 + below(signatures), below(100));
      m_list.Insert(error, name);
      model.Insert({error.Signature(), error.ErrorTime(), error.ID()}, name);
      lastId = error.ID() - below(300);
    }
    ASSERT_EQ(m_list.CurrentContext(), model.Current()) << "step " << step;
    ASSERT_EQ(m_list.NumErrors(true), static_cast<int>(model.Total())) << "step " << step;
    const Model::Rows rows = model.CurrentRows();
    ASSERT_EQ(m_list.NumErrors(false), static_cast<int>(rows.size())) << "step " << step;
    for (std::size_t i = 0; i < rows.size(); ++i) {
      ASSERT_EQ(m_list[static_cast<int>(i)].ID(), rows[i].id) << "step " << step << " index " << i;
    }
    const Error* const found = m_list.GetErrorWithID(lastId);
    ASSERT_EQ(found != nullptr ? found->Signature() : 0, model.SignatureOf(lastId)) << "step " << step;
    if (found != nullptr) m_list.Unlock();
  }
}

INSTANTIATE_TEST_SUITE_P(GlobalErrorList, GlobalListModel, testing::Range(1u, 7u));

// --- Threads ----------------------------------------------------------------------------------------------------------

class GlobalListThreads : public GlobalList, public testing::WithParamInterface<int> {};

TEST_P(GlobalListThreads, AllReportsArriveAndAreTold) {
  constexpr int kErrors = 60;
  int told = 0;  // guarded by the list's lock
  {
    const Listener listener([&told](const Error&) { ++told; });
    std::vector<std::thread> threads;
    for (int t = 0; t < GetParam(); ++t) {
      threads.emplace_back([t] {
        for (int i = 0; i < kErrors; ++i) {
          ProbeError(static_cast<unsigned int>(i), i).Report("thread " + std::to_string(t));
        }
      });
    }
    for (std::thread& thread : threads) thread.join();
  }
  EXPECT_EQ(told, GetParam() * kErrors);
  EXPECT_EQ(m_list.NumErrors(true), GetParam() * kErrors);
}

TEST_P(GlobalListThreads, ReadersWalkUnderTheLockWhileOthersReport) {
  std::atomic<bool> done{false};
  std::thread reader([&] {
    while (!done) {
      m_list.Lock();
      const std::string former = m_list.CurrentContext();
      for (bool more = m_list.FirstContext(); more; more = m_list.NextContext()) {
        for (int i = 0; i < m_list.NumErrors(false); ++i) EXPECT_NE(m_list[i].Format(), "");
      }
      m_list.SetContext(former);
      m_list.Unlock();
      const Error* const found = m_list.GetErrorWithID(static_cast<unsigned int>(Error::g_ErrorID.load()));
      if (found != nullptr) {
        EXPECT_EQ(found->Type(), "Probe");
        m_list.Unlock();
      }
    }
  });
  std::vector<std::thread> threads;
  for (int t = 0; t < GetParam(); ++t) {
    threads.emplace_back([this, t] {
      for (int i = 0; i < 100; ++i) {
        Listener listener(Ignore);
        m_list.Insert(ProbeError(static_cast<unsigned int>(i % 7), i), "c" + std::to_string((t + i) % 3));
        if (i % 40 == 39) m_list.Clear();
        if (i % 30 == 29) m_list.ClearFromTime(i / 2);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  done = true;
  reader.join();
  EXPECT_LE(m_list.NumErrors(true), 21);
}

INSTANTIATE_TEST_SUITE_P(GlobalErrorList, GlobalListThreads, testing::Values(2, 4, 10));

// --- The end of the process -------------------------------------------------------------------------------------------

// Made before main, so its destructor runs after the list's own end in every process of these tests.
class LateReporter : public ErrorReporterBase {
 public:
  ~LateReporter() {
    GlobalErrorList& list = GlobalErrorList::Get();
    const FileError error("late.ini", FileError::Open);
    const bool result = ReportError(error, "late");
    error.Report();
    list.AddReporter(this);
    list.SetContext("late");
    list.Clear("late");
    list.Clear();
    list.ClearFromTime(0);
    const bool nothing = list.NumErrors(true) == 0 && list.NumErrors(false) == 0 && list.CurrentContext().empty() &&
                         list.Get(0) == nullptr && list[0].ID() == 0 && list.GetErrorWithID(error.ID()) == nullptr &&
                         !list.FirstContext() && !list.NextContext();
    list.RemoveReporter(this);
    if (m_speaks) std::printf("%d %d %d %s\n", result, nothing, m_calls, error.Format().c_str());
  }
  void Report(const Error&) override { ++m_calls; }
  void Speak() { m_speaks = true; }

 private:
  bool m_speaks = false;
  int m_calls = 0;
};
LateReporter g_late;

TEST(GlobalErrorListAtExit, LateReportsAreDroppedInSilence) {
  ChildProcess child(
      [] {
        g_late.Speak();
        ReportError(FileError("a", FileError::Open), "early");
        return 0;
      },
      ChildProcess::Ending::Full);
  EXPECT_EQ(child.Wait(), 0) << child.ErrorText();
  EXPECT_EQ(child.OutputText(), "0 1 0 Error opening \"late.ini\".\n");
}

// In a process of its own, in which nobody has used the list before.
TEST(GlobalErrorListFirstUse, StartsWithGeneralAsItsCurrentContext) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const auto use = [] {
    GlobalErrorList& list = GlobalErrorList::Get();
    std::fprintf(stderr, "first: %s %d\n", list.CurrentContext().c_str(), list.NumErrors(true));
    std::exit(0);
  };
  EXPECT_EXIT(use(), testing::ExitedWithCode(0), "first: General 0");
}

TEST(GlobalErrorListAtExit, ListFirstUsedAtTheEndIsWell) {
  // Nothing is reported in the child itself: the late reporter may be the first user of the list.
  ChildProcess child(
      [] {
        g_late.Speak();
        return 0;
      },
      ChildProcess::Ending::Full);
  EXPECT_EQ(child.Wait(), 0) << child.ErrorText();
  EXPECT_NE(child.OutputText(), "");
}

// Made after the list: it still finds the list in order.
class EarlyGoer {
 public:
  EarlyGoer() { GlobalErrorList::Get(); }
  ~EarlyGoer() {
    GlobalErrorList& list = GlobalErrorList::Get();
    list.Clear();
    ReportError(ProbeError(1), "going");
    std::printf("%d %s\n", list.NumErrors(true), list.CurrentContext().c_str());
  }
};

TEST(GlobalErrorListAtExit, StaticMadeAfterTheListStillReports) {
  ChildProcess child(
      [] {
        static const EarlyGoer goer;
        return 0;
      },
      ChildProcess::Ending::Full);
  EXPECT_EQ(child.Wait(), 0) << child.ErrorText();
  EXPECT_EQ(child.OutputText(), "1 going\n");
}

// Counts on the destructors of the stored errors.
class Counted : public ProbeError {
 public:
  explicit Counted(unsigned int signature) : ProbeError(signature) {}
  Counted(const Counted& other) : ProbeError(other), m_copy(true) {}
  ~Counted() override {
    if (m_copy) std::printf("gone ");
  }
  Error* Copy() const override { return new Counted(*this); }

 private:
  bool m_copy = false;
};

TEST(GlobalErrorListAtExit, StoredErrorsAreDestroyed) {
  ChildProcess child(
      [] {
        GlobalErrorList::Get().Clear();
        GlobalErrorList::Get().Insert(Counted(1), "a").Insert(Counted(2), "a").Insert(Counted(3), "b");
        return 0;
      },
      ChildProcess::Ending::Full);
  EXPECT_EQ(child.Wait(), 0) << child.ErrorText();
  EXPECT_EQ(child.OutputText(), "gone gone gone ");
}

TEST(GlobalErrorListAtExit, ErrorThatReportsAtItsEndDoesNoHarm) {
  ChildProcess child(
      [] {
        GlobalErrorList::Get().Insert(Testament(1), "a");
        return 0;
      },
      ChildProcess::Ending::Full);
  EXPECT_EQ(child.Wait(), 0) << child.ErrorText();
}

TEST(GlobalErrorListAtExit, ReporterThatEndsTheProcessDoesNoHarm) {
  ChildProcess child(
      [] {
        GlobalErrorList::Get().Insert(ProbeError(1), "a");
        static Listener* const ending = new Listener([](const Error&) { std::exit(7); });
        GlobalErrorList::Get().Insert(GlobalErrorList::Get()[0], "a");
        return ending->Calls();
      },
      ChildProcess::Ending::Full);
  EXPECT_EQ(child.Wait(), 7) << child.ErrorText();
}

}  // namespace
