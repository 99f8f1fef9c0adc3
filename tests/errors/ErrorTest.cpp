#include "zelbase/errors/Error.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <set>
#include <stdexcept>
#include <thread>
#include <type_traits>
#include <vector>

#include "tests/errors/ProbeError.h"
#include "zelbase/errors/FileError.h"
#include "zelbase/errors/GenericError.h"
#include "zelbase/errors/GlobalErrorList.h"
#include "zelbase/platform/SimulatedClock.h"

namespace {

constexpr int kDeep = 1000000;

// A chain of `depth` errors, each the only cause of the next.
std::unique_ptr<ProbeError> MakeChain(int depth) {
  auto chain = std::make_unique<ProbeError>(0u);
  for (int i = 1; i < depth; ++i) {
    auto outer = std::make_unique<ProbeError>(static_cast<unsigned int>(i));
    outer->AddCause(chain.release());
    chain = std::move(outer);
  }
  return chain;
}

int DepthOf(const Error& error) {
  int depth = 1;
  for (const Error* at = &error; at->NumCauses() > 0; at = &at->GetCause(0)) ++depth;
  return depth;
}

// Restores the counter, so that other tests see ids as usual.
class CounterGuard {
 public:
  CounterGuard() : m_former(Error::g_ErrorID.load()) {}
  ~CounterGuard() { Error::g_ErrorID = m_former; }
  CounterGuard(const CounterGuard&) = delete;
  CounterGuard& operator=(const CounterGuard&) = delete;

 private:
  int m_former;
};

TEST(Error, InterfaceIsPureAndDestroyedThroughTheBase) {
  static_assert(std::is_abstract_v<Error>);
  static_assert(std::has_virtual_destructor_v<Error>);
  static_assert(std::is_same_v<decltype(Error::g_ErrorID), std::atomic<int>>);
  static_assert(std::is_same_v<Error::SEVERITY, SEVERITY>);
  static_assert(std::is_same_v<Error::ACCEPT_STATUS, ACCEPT_STATUS>);
  static_assert(std::is_same_v<Error::ACTIVE_STATUS, ACTIVE_STATUS>);
  const int before = ProbeError::Alive();
  { const std::unique_ptr<Error> error = std::make_unique<ProbeError>(1u); }
  EXPECT_EQ(ProbeError::Alive(), before);
}

TEST(Error, StartsWithTheStatedMarks) {
  const ProbeError error(1);
  EXPECT_EQ(static_cast<int>(error.Severity()), 1);
  EXPECT_EQ(static_cast<int>(error.AcceptStatus()), 0);
  EXPECT_EQ(static_cast<int>(error.ActiveStatus()), 0);
  EXPECT_FALSE(error.IsSounding());
  EXPECT_TRUE(error.IsShowAlertWnd());
  EXPECT_EQ(error.NumCauses(), 0);
}

TEST(Error, KeepsWhatIsSetAlsoValuesWithoutAName) {
  ProbeError error(1);
  error.SetID(0xFFFFFFFFu);
  error.SetErrorTime(std::numeric_limits<long long>::min());
  error.SetSeverity(static_cast<SEVERITY>(-77));
  error.SetAcceptStatus(static_cast<ACCEPT_STATUS>(2147483647));
  error.SetActiveStatus(static_cast<ACTIVE_STATUS>(5));
  error.SetSounding(true);
  error.SetShowAlertWnd(false);
  EXPECT_EQ(error.ID(), 0xFFFFFFFFu);
  EXPECT_EQ(error.ErrorTime(), std::numeric_limits<long long>::min());
  EXPECT_EQ(static_cast<int>(error.Severity()), -77);
  EXPECT_EQ(static_cast<int>(error.AcceptStatus()), 2147483647);
  EXPECT_EQ(static_cast<int>(error.ActiveStatus()), 5);
  EXPECT_TRUE(error.IsSounding());
  EXPECT_FALSE(error.IsShowAlertWnd());
}

TEST(Error, TimeIsTheWallClocksWholeSeconds) {
  SimulatedClock clock(1234567890999.0);
  const PlatformOverride<PlatformClock> guard(clock);
  EXPECT_EQ(ProbeError(1).ErrorTime(), 1234567890);
  clock.Advance(1.0);
  EXPECT_EQ(ProbeError(1).ErrorTime(), 1234567891);
}

TEST(Error, IdsCountUpByOne) {
  const CounterGuard guard;
  Error::g_ErrorID = 41;
  EXPECT_EQ(ProbeError(1).ID(), 42u);
  EXPECT_EQ(ProbeError(1).ID(), 43u);
  EXPECT_EQ(Error::g_ErrorID.load(), 43);
}

TEST(Error, IdsPassOverZeroWhenTheCounterComesRound) {
  const CounterGuard guard;
  Error::g_ErrorID = std::numeric_limits<int>::max();
  EXPECT_EQ(ProbeError(1).ID(), 0x80000000u);
  Error::g_ErrorID = -2;
  EXPECT_EQ(ProbeError(1).ID(), 0xFFFFFFFFu);
  EXPECT_EQ(ProbeError(1).ID(), 1u);
}

class ErrorThreads : public testing::TestWithParam<int> {};

TEST_P(ErrorThreads, EachErrorGetsAnIdOfItsOwn) {
  constexpr int kErrors = 500;
  std::vector<std::vector<unsigned int>> ids(static_cast<std::size_t>(GetParam()));
  std::vector<std::thread> threads;
  for (auto& own : ids) {
    threads.emplace_back([&own] {
      for (int i = 0; i < kErrors; ++i) own.push_back(ProbeError(1).ID());
    });
  }
  for (std::thread& thread : threads) thread.join();
  std::set<unsigned int> all;
  for (const auto& own : ids) all.insert(own.begin(), own.end());
  EXPECT_EQ(all.size(), static_cast<std::size_t>(GetParam() * kErrors));
}

TEST_P(ErrorThreads, CopyAndDestroyTheirOwnChainsAtOnce) {
  std::vector<std::thread> threads;
  std::vector<int> depths(static_cast<std::size_t>(GetParam()));
  for (int& depth : depths) {
    threads.emplace_back([&depth] {
      const auto chain = MakeChain(300);
      for (int i = 0; i < 5; ++i) {
        const std::unique_ptr<Error> copy(chain->Copy());
        depth += DepthOf(*copy);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (const int depth : depths) EXPECT_EQ(depth, 1500);
}

INSTANTIATE_TEST_SUITE_P(Error, ErrorThreads, testing::Values(2, 4, 10));

TEST(Error, CopyIsTheSameErrorWithCopiesOfItsCauses) {
  const int before = ProbeError::Alive();
  {
    ProbeError error(1, 1000);
    error.SetID(77);
    error.SetSeverity(static_cast<SEVERITY>(3));
    error.SetAcceptStatus(static_cast<ACCEPT_STATUS>(4));
    error.SetActiveStatus(static_cast<ACTIVE_STATUS>(5));
    error.SetSounding(true);
    error.SetShowAlertWnd(false);
    error.AddCause(ProbeError(2, 900));
    error.AddCause(ProbeError(3, 800));

    const ProbeError copy(error);
    EXPECT_EQ(copy.ID(), 77u);
    EXPECT_EQ(copy.ErrorTime(), 1000);
    EXPECT_EQ(static_cast<int>(copy.Severity()), 3);
    EXPECT_EQ(static_cast<int>(copy.AcceptStatus()), 4);
    EXPECT_EQ(static_cast<int>(copy.ActiveStatus()), 5);
    EXPECT_TRUE(copy.IsSounding());
    EXPECT_FALSE(copy.IsShowAlertWnd());
    ASSERT_EQ(copy.NumCauses(), 2);
    for (int i = 0; i < 2; ++i) {
      EXPECT_NE(&copy.GetCause(i), &error.GetCause(i));
      EXPECT_EQ(copy.GetCause(i).ID(), error.GetCause(i).ID());
      EXPECT_EQ(copy.GetCause(i).ErrorTime(), error.GetCause(i).ErrorTime());
      EXPECT_EQ(copy.GetCause(i).Signature(), error.GetCause(i).Signature());
    }
    EXPECT_EQ(ProbeError::Alive(), before + 6);
  }
  EXPECT_EQ(ProbeError::Alive(), before);
}

TEST(Error, CopyIsDeepAtEveryLevel) {
  ProbeError root(1);
  auto* const middle = new ProbeError(2);
  auto* const leaf = new ProbeError(3);
  middle->AddCause(leaf);
  root.AddCause(middle);
  root.AddCause(ProbeError(4));

  const ProbeError copy(root);
  leaf->SetSignature(33);
  leaf->SetSounding(true);
  middle->ClearCauses();
  ASSERT_EQ(copy.NumCauses(), 2);
  ASSERT_EQ(copy.GetCause(0).NumCauses(), 1);
  EXPECT_EQ(copy.GetCause(0).GetCause(0).Signature(), 3u);
  EXPECT_FALSE(copy.GetCause(0).GetCause(0).IsSounding());
  EXPECT_EQ(copy.GetCause(1).Signature(), 4u);
}

TEST(Error, CopyTakesNoIdFromTheCounter) {
  const CounterGuard guard;
  ProbeError error(1);
  error.AddCause(ProbeError(2));
  const int counter = Error::g_ErrorID;
  const ProbeError copy(error);
  EXPECT_EQ(Error::g_ErrorID.load(), counter);
}

TEST(ErrorLong, DepthOfCausesDoesNotDecideTheStack) {
  const int before = ProbeError::Alive();
  {
    const auto chain = MakeChain(kDeep);
    const std::unique_ptr<Error> copy(chain->Copy());
    EXPECT_EQ(DepthOf(*copy), kDeep);
    EXPECT_EQ(ProbeError::Alive(), before + 2 * kDeep);
  }
  EXPECT_EQ(ProbeError::Alive(), before);
}

TEST(Error, ClearCausesOfADeepChain) {
  const int before = ProbeError::Alive();
  const auto chain = MakeChain(kDeep / 10);
  chain->ClearCauses();
  EXPECT_EQ(chain->NumCauses(), 0);
  EXPECT_EQ(ProbeError::Alive(), before + 1);
}

TEST(Error, AddCauseAppendsInOrderAndOwns) {
  const int before = ProbeError::Alive();
  {
    ProbeError error(1);
    auto* const first = new ProbeError(2);
    auto* const second = new ProbeError(3);
    error.AddCause(first);
    error.AddCause(second);
    ASSERT_EQ(error.NumCauses(), 2);
    EXPECT_EQ(&error.GetCause(0), first);
    EXPECT_EQ(&error.GetCause(1), second);
  }
  EXPECT_EQ(ProbeError::Alive(), before);
}

TEST(Error, AddCauseOfAnEqualSignatureDestroysTheNewOne) {
  ProbeError error(1);
  auto* const present = new ProbeError(2, 500);
  error.AddCause(present);
  error.AddCause(ProbeError(3));
  const int before = ProbeError::Alive();
  error.AddCause(new ProbeError(2, 900));
  EXPECT_EQ(error.NumCauses(), 2);
  EXPECT_EQ(ProbeError::Alive(), before);
  EXPECT_EQ(&error.GetCause(0), present);
  error.AddCause(new ProbeError(3));
  EXPECT_EQ(error.NumCauses(), 2);
  EXPECT_EQ(ProbeError::Alive(), before);
}

TEST(Error, AddCauseDoesNotCompareWithTheErrorItself) {
  ProbeError error(1);
  error.AddCause(new ProbeError(1));
  EXPECT_EQ(error.NumCauses(), 1);
}

TEST(Error, AddCauseComparesWithWhatTheCausesSayNow) {
  ProbeError error(1);
  auto* const cause = new ProbeError(2);
  error.AddCause(cause);
  cause->SetSignature(9);
  error.AddCause(ProbeError(2));
  error.AddCause(ProbeError(9));
  EXPECT_EQ(error.NumCauses(), 2);
}

TEST(Error, RepeatsAreToldBySignatureAcrossClasses) {
  GenericError error("outer");
  error.AddCause(GenericError("ab", "", ""));
  error.AddCause(GenericError("a", "b", ""));
  EXPECT_EQ(error.NumCauses(), 1);
  const GenericError sameBytes("file", std::string("\1\0\0\0", 4), "");
  error.AddCause(sameBytes);
  error.AddCause(FileError("file", FileError::Read));
  EXPECT_EQ(error.NumCauses(), 2);
}

TEST(Error, AddCauseIgnoresNullItselfAndWhatIsOwnedAlready) {
  const int before = ProbeError::Alive();
  {
    ProbeError error(1);
    auto* const cause = new ProbeError(2);
    error.AddCause(nullptr);
    error.AddCause(&error);
    error.AddCause(cause);
    cause->SetSignature(3);  // would not match itself any more
    error.AddCause(cause);
    ProbeError other(4);
    other.AddCause(cause);
    EXPECT_EQ(error.NumCauses(), 1);
    EXPECT_EQ(other.NumCauses(), 0);
    EXPECT_EQ(&error.GetCause(0), cause);
    EXPECT_EQ(ProbeError::Alive(), before + 3);
  }
  EXPECT_EQ(ProbeError::Alive(), before);
}

TEST(Error, AddCauseIgnoresAnErrorThatHasThisOneAmongItsCauses) {
  const int before = ProbeError::Alive();
  {
    const auto root = std::make_unique<ProbeError>(1u);
    auto* const middle = new ProbeError(2);
    auto* const leaf = new ProbeError(3);
    middle->AddCause(leaf);
    root->AddCause(middle);
    leaf->AddCause(root.get());
    EXPECT_EQ(leaf->NumCauses(), 0);
    leaf->AddCause(*root);  // a copy is another object
    EXPECT_EQ(leaf->NumCauses(), 1);
    EXPECT_EQ(DepthOf(*root), 6);
  }
  EXPECT_EQ(ProbeError::Alive(), before);
}

TEST(Error, AddCauseByReferenceAddsACopy) {
  ProbeError error(1);
  const ProbeError cause(2, 700);
  error.AddCause(cause);
  ASSERT_EQ(error.NumCauses(), 1);
  EXPECT_NE(&error.GetCause(0), &cause);
  EXPECT_EQ(error.GetCause(0).ID(), cause.ID());
  EXPECT_EQ(error.GetCause(0).ErrorTime(), 700);
}

TEST(Error, AddCauseOfItselfByReferenceAddsACopyWithItsCauses) {
  ProbeError error(1);
  error.AddCause(ProbeError(2));
  error.AddCause(error);
  ASSERT_EQ(error.NumCauses(), 2);
  EXPECT_EQ(error.GetCause(1).Signature(), 1u);
  EXPECT_EQ(error.GetCause(1).NumCauses(), 1);
  error.AddCause(error.GetCause(0));
  EXPECT_EQ(error.NumCauses(), 2);
}

TEST(Error, ClearCausesDestroysThem) {
  const int before = ProbeError::Alive();
  ProbeError error(1);
  error.AddCause(ProbeError(2));
  error.AddCause(ProbeError(3));
  error.ClearCauses();
  EXPECT_EQ(error.NumCauses(), 0);
  EXPECT_EQ(ProbeError::Alive(), before + 1);
  error.ClearCauses();
  error.AddCause(ProbeError(2));
  EXPECT_EQ(error.NumCauses(), 1);
}

TEST(Error, GetCauseOutOfRangeIsOneConstantEmptyError) {
  ProbeError error(1);
  error.AddCause(ProbeError(2));
  const Error& empty = error.GetCause(1);
  EXPECT_EQ(&error.GetCause(-1), &empty);
  EXPECT_EQ(&error.GetCause(std::numeric_limits<int>::min()), &empty);
  EXPECT_EQ(&ProbeError(3).GetCause(0), &empty);
  EXPECT_EQ(empty.Format(), "");
  EXPECT_EQ(empty.Details(), "");
  EXPECT_EQ(empty.Type(), "General Error");
  EXPECT_EQ(empty.Signature(), 0xFFFFFFFFu);
  EXPECT_EQ(empty.NumCauses(), 0);
  EXPECT_EQ(empty.ID(), 0u);
  EXPECT_EQ(empty.ErrorTime(), 0);
}

TEST(Error, AssignmentSharesTheCausesUnlikeTheCopyConstructor) {
  const int before = ProbeError::Alive();
  {
    ProbeError target(1, 10);
    {
      ProbeError source(2, 20);
      source.SetID(99);
      source.SetSeverity(static_cast<SEVERITY>(7));
      source.SetAcceptStatus(static_cast<ACCEPT_STATUS>(8));
      source.SetActiveStatus(static_cast<ACTIVE_STATUS>(9));
      source.SetSounding(true);
      source.SetShowAlertWnd(false);
      source.AddCause(ProbeError(3));
      target = source;
      EXPECT_EQ(&target.GetCause(0), &source.GetCause(0));
      EXPECT_EQ(ProbeError::Alive(), before + 3);
    }
    EXPECT_EQ(target.ID(), 99u);
    EXPECT_EQ(target.ErrorTime(), 20);
    EXPECT_EQ(static_cast<int>(target.Severity()), 7);
    EXPECT_EQ(static_cast<int>(target.AcceptStatus()), 8);
    EXPECT_EQ(static_cast<int>(target.ActiveStatus()), 9);
    EXPECT_TRUE(target.IsSounding());
    EXPECT_FALSE(target.IsShowAlertWnd());
    EXPECT_EQ(target.Signature(), 2u);
    ASSERT_EQ(target.NumCauses(), 1);
    EXPECT_EQ(target.GetCause(0).Signature(), 3u);  // outlives the source
  }
  EXPECT_EQ(ProbeError::Alive(), before);
}

TEST(Error, AssignmentReleasesTheFormerCauses) {
  const int before = ProbeError::Alive();
  ProbeError target(1);
  target.AddCause(ProbeError(2));
  target.AddCause(ProbeError(3));
  const ProbeError source(4);
  target = source;
  EXPECT_EQ(target.NumCauses(), 0);
  EXPECT_EQ(ProbeError::Alive(), before + 2);
}

TEST(Error, AfterAssignmentChangesOfOneAreNotSeenByTheOther) {
  ProbeError source(1);
  source.AddCause(ProbeError(2));
  ProbeError target(3);
  target = source;
  target.AddCause(ProbeError(4));
  source.AddCause(ProbeError(5));
  source.AddCause(ProbeError(6));
  EXPECT_EQ(target.NumCauses(), 2);
  EXPECT_EQ(source.NumCauses(), 3);
  source.ClearCauses();
  ASSERT_EQ(target.NumCauses(), 2);
  EXPECT_EQ(target.GetCause(0).Signature(), 2u);
}

TEST(Error, SelfAssignmentChangesNothing) {
  ProbeError error(1);
  error.AddCause(ProbeError(2));
  const ProbeError& same = error;
  error = same;
  EXPECT_EQ(error.NumCauses(), 1);
  EXPECT_EQ(error.GetCause(0).Signature(), 2u);
}

TEST(Error, AssignmentFromAnOwnCauseTakesItBeforeItGoes) {
  GenericError error("outer", "outer details", "outer type");
  auto* const inner = new GenericError("inner", "inner details", "inner type");
  inner->AddCause(GenericError("innermost"));
  error.AddCause(inner);
  error = *inner;
  EXPECT_EQ(error.Format(), "inner");
  EXPECT_EQ(error.Details(), "inner details");
  EXPECT_EQ(error.Type(), "inner type");
  ASSERT_EQ(error.NumCauses(), 1);
  EXPECT_EQ(error.GetCause(0).Format(), "innermost");
}

TEST(Error, AssignmentLeavesOutWhatWouldMakeAnErrorItsOwnCause) {
  const int before = ProbeError::Alive();
  {
    ProbeError root(1);
    auto* const middle = new ProbeError(2);
    auto* const leaf = new ProbeError(3);
    middle->AddCause(leaf);
    root.AddCause(middle);
    root.AddCause(ProbeError(4));
    *leaf = root;
    ASSERT_EQ(leaf->NumCauses(), 1);
    EXPECT_EQ(leaf->GetCause(0).Signature(), 4u);
    EXPECT_EQ(leaf->Signature(), 1u);
  }
  EXPECT_EQ(ProbeError::Alive(), before);
}

// --- Classes of others ------------------------------------------------------------------------------------------------

// Makes its copy by way of a temporary, and one more that stays.
class Roundabout : public ProbeError {
 public:
  using ProbeError::ProbeError;
  Error* Copy() const override {
    const Roundabout temporary(*this);
    if (kept == nullptr && keepNext) kept = std::make_unique<Roundabout>(temporary);
    return new Roundabout(temporary);
  }
  static inline bool keepNext = false;
  static inline std::unique_ptr<Roundabout> kept;
};

TEST(Error, CopiesMadeInsideCopyAreCompleteToo) {
  const int before = ProbeError::Alive();
  {
    ProbeError root(1);
    auto* const middle = new Roundabout(2);
    middle->AddCause(new ProbeError(3));
    root.AddCause(middle);
    Roundabout::keepNext = true;
    const ProbeError copy(root);
    Roundabout::keepNext = false;
    ASSERT_EQ(DepthOf(copy), 3);
    ASSERT_NE(Roundabout::kept, nullptr);
    ASSERT_EQ(Roundabout::kept->NumCauses(), 1);
    EXPECT_NE(&Roundabout::kept->GetCause(0), &middle->GetCause(0));
    EXPECT_NE(&Roundabout::kept->GetCause(0), &copy.GetCause(0).GetCause(0));
    EXPECT_NE(&copy.GetCause(0).GetCause(0), &middle->GetCause(0));
    Roundabout::kept.reset();
  }
  EXPECT_EQ(ProbeError::Alive(), before);
}

// Ends what it is told to while it is copied: a copy of its first cause, which is some error's cause for a moment; an error without
// causes; and one that was copied whole before.
class Wasteful : public ProbeError {
 public:
  using ProbeError::ProbeError;
  Error* Copy() const override {
    auto* const copy = new Wasteful(*this);
    ProbeError holder(100);
    if (wastesCause) {
      holder.AddCause(GetCause(0));
      holder.ClearCauses();
    }
    if (wastesPlain) static_cast<void>(ProbeError(101));
    former.reset();
    return copy;
  }
  bool wastesCause = false;
  bool wastesPlain = false;
  static inline std::unique_ptr<ProbeError> former;
};

// The causes of the errors before and behind the wasteful one must not stay those of the original.
TEST(Error, CopiesThatEndInsideCopyLeaveTheOthersComplete) {
  for (int way = 0; way < 3; ++way) {
    const int before = ProbeError::Alive();
    {
      ProbeError root(1);
      auto* const wasteful = new Wasteful(3);
      wasteful->wastesCause = way == 0;
      wasteful->wastesPlain = way == 1;
      if (way == 2) Wasteful::former = std::make_unique<ProbeError>(*MakeChain(3));
      for (Error* const cause : {static_cast<Error*>(new ProbeError(2)), static_cast<Error*>(wasteful)}) {
        cause->AddCause(MakeChain(3).release());
        root.AddCause(cause);
      }
      const ProbeError copy(root);
      ASSERT_EQ(copy.NumCauses(), 2);
      for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(DepthOf(copy.GetCause(i)), 4) << way;
        EXPECT_NE(&copy.GetCause(i).GetCause(0), &root.GetCause(i).GetCause(0)) << way << ' ' << i;
        EXPECT_NE(&copy.GetCause(i).GetCause(0).GetCause(0), &root.GetCause(i).GetCause(0).GetCause(0)) << way << ' ' << i;
      }
    }
    EXPECT_EQ(ProbeError::Alive(), before) << way;
  }
}

// Copies to nothing, or not at all.
class Unwilling : public ProbeError {
 public:
  Unwilling(unsigned int signature, bool throws) : ProbeError(signature), m_throws(throws) {}
  Error* Copy() const override {
    if (m_throws) throw std::runtime_error("no copy");
    return nullptr;
  }

 private:
  bool m_throws;
};

TEST(Error, CauseThatCopiesToNothingIsLeftOut) {
  ProbeError error(1);
  error.AddCause(new Unwilling(2, false));
  error.AddCause(new ProbeError(3));
  const ProbeError copy(error);
  ASSERT_EQ(copy.NumCauses(), 1);
  EXPECT_EQ(copy.GetCause(0).Signature(), 3u);
  error.AddCause(Unwilling(4, false));
  EXPECT_EQ(error.NumCauses(), 2);
}

TEST(Error, CopyThatThrowsLeavesNothingBehind) {
  const int before = ProbeError::Alive();
  {
    ProbeError error(1);
    for (unsigned int i = 0; i < 3; ++i) {
      auto* const middle = new ProbeError(10 + i);
      middle->AddCause(new ProbeError(20));
      if (i == 1) middle->AddCause(new Unwilling(30, true));
      error.AddCause(middle);
    }
    const int whole = ProbeError::Alive();
    EXPECT_THROW(ProbeError{error}, std::runtime_error);
    EXPECT_EQ(ProbeError::Alive(), whole);

    // The next copy on this thread is a complete one.
    const auto chain = MakeChain(4);
    const ProbeError copy(*chain);
    EXPECT_EQ(DepthOf(copy), 4);
    EXPECT_NE(&copy.GetCause(0), &chain->GetCause(0));
  }
  EXPECT_EQ(ProbeError::Alive(), before);
}

// Keeps a copy of itself, and then throws.
class Keeping : public ProbeError {
 public:
  using ProbeError::ProbeError;
  Error* Copy() const override {
    kept = std::make_unique<ProbeError>(*this);
    throw std::runtime_error("no copy");
  }
  static inline std::unique_ptr<ProbeError> kept;
};

TEST(Error, CopyKeptFromACopyingThatThrewIsLeftAloneByTheNext) {
  {
    ProbeError error(1);
    auto* const keeping = new Keeping(2);
    keeping->AddCause(new ProbeError(3));
    error.AddCause(keeping);
    EXPECT_THROW(ProbeError{error}, std::runtime_error);
  }
  ASSERT_NE(Keeping::kept, nullptr);
  ASSERT_EQ(Keeping::kept->NumCauses(), 1);
  const Error* const cause = &Keeping::kept->GetCause(0);
  EXPECT_EQ(cause->Signature(), 3u);
  const ProbeError copy(*MakeChain(2));
  EXPECT_EQ(&Keeping::kept->GetCause(0), cause);
  Keeping::kept.reset();
}

TEST(Error, CopyOfADeepChainTakesNoStack) {
  const auto chain = MakeChain(100000);
  const ProbeError copy(*chain);
  EXPECT_EQ(DepthOf(copy), 100000);
}

TEST(Error, CauseWhoseSignatureThrowsIsFreed) {
  class Mute : public ProbeError {
   public:
    using ProbeError::ProbeError;
    unsigned int Signature() const override { throw std::runtime_error("no signature"); }
  };
  const int before = ProbeError::Alive();
  ProbeError error(1);
  EXPECT_THROW(error.AddCause(new Mute(2)), std::runtime_error);
  EXPECT_EQ(error.NumCauses(), 0);
  EXPECT_EQ(ProbeError::Alive(), before + 1);
}

TEST(Error, ReportGoesToTheGlobalListUnderItsContext) {
  GlobalErrorList& list = GlobalErrorList::Get();
  list.Clear();
  ProbeError(1).Report("Sonar");
  EXPECT_EQ(list.CurrentContext(), "Sonar");
  EXPECT_EQ(list.NumErrors(false), 1);
  ProbeError(2).Report();
  EXPECT_EQ(list.CurrentContext(), "General");
  EXPECT_EQ(list[0].Signature(), 2u);
  list.Clear();
}

}  // namespace
