#include "zelbase/numerics/detail/PositionUpdate.h"

#include <gtest/gtest.h>

#include "tests/geometry/EdgeValues.h"

using namespace zelbase::detail;

namespace {

bool Same(const FilterState& a, const FilterState& b) {
  bool same = true;
  for (int i = 0; i < 4; ++i) {
    same = same && ::Same(a.x[i][0], b.x[i][0]) && ::Same(a.predicted[i][0], b.predicted[i][0]);
    for (int j = 0; j < 4; ++j) same = same && ::Same(a.p[i][j], b.p[i][j]);
  }
  return same;
}

bool IsFinite(const FilterState& state) {
  bool finite = true;
  for (int i = 0; i < 4; ++i) {
    finite = finite && std::isfinite(state.x[i][0]);
    for (int j = 0; j < 4; ++j) finite = finite && std::isfinite(state.p[i][j]);
  }
  return finite;
}

class Cases {
 public:
  explicit Cases(unsigned int seed) : m_values(seed) {}

  // Ordinary numbers, among them one of another kind in some of the cases.
  void Next() {
    m_wildAt = m_values.Index(60);
    m_at = 0;
    for (int i = 0; i < 4; ++i) {
      state.x[i][0] = Number();
      state.predicted[i][0] = 777;
      for (int j = 0; j < 4; ++j) state.p[i][j] = Number();
    }
    fix = {Number(), Number(), Number(), Number(), Number()};
    dt = std::fabs(Number());
    if (m_values.Index(50) == 0) dt = -0.0;
    dynamics = m_values.Index(kDynamicsCount);
  }

  FilterState state;
  PositionFix fix = {};
  double dt = 0;
  int dynamics = 0;

 private:
  double Number() {
    if (m_at++ == m_wildAt) return m_values.Wild();
    switch (m_values.Index(4)) {
      case 0: return m_values.Grid();
      case 1: return m_values.Flag() ? 0.0 : -0.0;
      default: return m_values.Between(-30, 30);
    }
  }

  EdgeValues m_values;
  int m_wildAt = 0;
  int m_at = 0;
};

}  // namespace

TEST(PositionUpdateLong, TheShortWayIsTheFullOneBitForBitOrSaysNo) {
  Cases cases(8210);
  Tally tally({"short", "short, row of zeros", "not finite"});
  for (int round = 0; round < kRandomRounds; ++round) {
    cases.Next();
    FilterState full = cases.state;
    const int fullRows = UpdateInFull(full, cases.dt, cases.dynamics, cases.fix);
    FilterState quick = cases.state;
    int quickRows = -5;
    if (UpdateInShort(quick, cases.dt, cases.dynamics, cases.fix, quickRows)) {
      tally.Count(quickRows == 0 ? "short" : "short, row of zeros");
      ASSERT_TRUE(Same(quick, full)) << round;
      ASSERT_EQ(quickRows, fullRows);
      ASSERT_TRUE(IsFinite(full));
    } else {
      tally.Count("not finite");
      ASSERT_TRUE(Same(quick, cases.state)) << round;
      ASSERT_EQ(quickRows, -5);
    }
    FilterState either = cases.state;
    ASSERT_EQ(UpdateByFix(either, cases.dt, cases.dynamics, cases.fix), fullRows);
    ASSERT_TRUE(Same(either, full)) << round;
  }
}

TEST(PositionUpdate, TheShortWayServesOrdinaryNumbers) {
  FilterState state;
  state.p = KmIdentity<4>();
  int zeroRows = -1;
  EXPECT_TRUE(UpdateInShort(state, 1.0, 2, {5, 6, 4, 4, 1}, zeroRows));
  EXPECT_EQ(zeroRows, 0);
}
