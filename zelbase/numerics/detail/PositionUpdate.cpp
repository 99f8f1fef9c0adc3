#include "zelbase/numerics/detail/PositionUpdate.h"

namespace zelbase::detail {

namespace {

constexpr int kLastSecond = 4;

// Standard deviation of the acceleration, metres a second squared.
// Kept: rows are whole seconds of the time step, columns the dynamics, and not the other way round.
constexpr double kAcceleration[kLastSecond + 1][kDynamicsCount] = {{2.5, 1.25, 0.75, 0.35, 0.1},
                                                                   {1.5, 0.75, 0.35, 0.15, 0.06},
                                                                   {1.0, 0.5, 0.25, 0.1, 0.04},
                                                                   {0.75, 0.4, 0.2, 0.07, 0.03},
                                                                   {0.5, 0.25, 0.12, 0.05, 0.02}};

// Row of the table. Compared first: what is not a number, or beyond an int, takes the last row as well.
int WholeSeconds(double dt) { return dt < kLastSecond ? static_cast<int>(dt) : kLastSecond; }

double AccelerationVariance(double dt, int dynamics) {
  const double deviation = kAcceleration[WholeSeconds(dt)][dynamics];
  return deviation * deviation;
}

KmMatrix<4, 4> Phi(double dt) {
  KmMatrix<4, 4> phi = KmIdentity<4>();
  phi[0][2] = dt;
  phi[1][3] = dt;
  return phi;
}

KmMatrix<4, 2> G(double dt) {
  KmMatrix<4, 2> g;
  g[0][0] = dt * dt * 0.5;
  g[1][1] = dt * dt * 0.5;
  g[2][0] = dt;
  g[3][1] = dt;
  return g;
}

KmMatrix<2, 2> Q(double dt, int dynamics) {
  KmMatrix<2, 2> q;
  q[0][0] = AccelerationVariance(dt, dynamics);
  q[1][1] = AccelerationVariance(dt, dynamics);
  return q;
}

KmMatrix<2, 4> H() {
  KmMatrix<2, 4> h;
  h[0][0] = 1.0;
  h[1][1] = 1.0;
  return h;
}

KmMatrix<2, 2> R(const PositionFix& fix) { return {{{fix.varX, fix.covXY}, {fix.covXY, fix.varY}}}; }

// --- In short -------------------------------------------------------------------------------------------------------
//
// By rows of four that stay in registers. What begins with kZero is a sum from 0.0 whose first term may be -0.

struct Row {
  double x;
  double y;
  double vx;
  double vy;
};

constexpr Row kZero = {0.0, 0.0, 0.0, 0.0};

Row operator+(const Row& a, const Row& b) { return {a.x + b.x, a.y + b.y, a.vx + b.vx, a.vy + b.vy}; }

Row operator*(double factor, const Row& row) { return {factor * row.x, factor * row.y, factor * row.vx, factor * row.vy}; }

Row Load(const StateCovariance& p, int row) { return {p[row][0], p[row][1], p[row][2], p[row][3]}; }

void Store(const Row& values, StateCovariance& p, int row) {
  p[row][0] = values.x;
  p[row][1] = values.y;
  p[row][2] = values.vx;
  p[row][3] = values.vy;
}

Row Load(const StateVector& x) { return {x[0][0], x[1][0], x[2][0], x[3][0]}; }

void Store(const Row& values, StateVector& x) { x = {{{values.x}, {values.y}, {values.vx}, {values.vy}}}; }

// A covariance.
struct Rows {
  Row x;
  Row y;
  Row vx;
  Row vy;
};

// A row times Phi'. Its elements are sums from 0.0.
Row TimesPhi(const Row& row, double dt) { return {row.x + row.vx * dt, row.y + row.vy * dt, row.vx, row.vy}; }

Rows PredictedRows(const StateCovariance& p, double dt, int dynamics) {
  const Row x = kZero + Load(p, 0) + dt * Load(p, 2);
  const Row y = kZero + Load(p, 1) + dt * Load(p, 3);
  const Row vx = kZero + Load(p, 2);
  const Row vy = kZero + Load(p, 3);
  const double q = AccelerationVariance(dt, dynamics);
  const double half = dt * dt * 0.5;
  return {TimesPhi(x, dt) + Row{half * q * half, 0.0, half * q * dt, 0.0}, TimesPhi(y, dt) + Row{0.0, half * q * half, 0.0, half * q * dt},
          TimesPhi(vx, dt) + Row{dt * q * half, 0.0, dt * q * dt, 0.0}, TimesPhi(vy, dt) + Row{0.0, dt * q * half, 0.0, dt * q * dt}};
}

// A row of K: what one element of the state takes of the two differences between fix and prediction.
struct Gain {
  Gain(const Row& predicted, const KmMatrix<2, 2>& sInverse)
      : first(0.0 + predicted.x * sInverse[0][0] + predicted.y * sInverse[1][0]),
        second(0.0 + predicted.x * sInverse[0][1] + predicted.y * sInverse[1][1]) {}

  double Of(double dx, double dy) const { return 0.0 + first * dx + second * dy; }

  double first;
  double second;
};

// A row of (I - K H) times predicted P, without the last two columns of I: `i1`, `i2` are its elements in the first two.
Row UpdatedRow(double i1, double i2, const Gain& gain, const Rows& predicted) {
  return kZero + (i1 - gain.first) * predicted.x + (i2 - gain.second) * predicted.y;
}

// At times false for finite numbers near the largest, which the sums go beyond.
bool IsFinite(const Row& x, const Rows& p) {
  const Row sum = x + (p.x + p.y) + (p.vx + p.vy);
  return (sum.x + sum.y + (sum.vx + sum.vy)) * 0.0 == 0.0;
}

}  // namespace

bool UpdateInShort(FilterState& state, double dt, int dynamics, const PositionFix& fix, int& zeroRows) {
  const Rows p = PredictedRows(state.p, dt, dynamics);
  const KmMatrix<2, 2> s = {{{p.x.x + fix.varX, p.x.y + fix.covXY}, {p.y.x + fix.covXY, p.y.y + fix.varY}}};
  int zeroRowsOfS = 0;
  const auto sInverse = Inverse(s, zeroRowsOfS);
  const Gain x(p.x, sInverse);
  const Gain y(p.y, sInverse);
  const Gain vx(p.vx, sInverse);
  const Gain vy(p.vy, sInverse);

  const Row before = Load(state.x);
  const Row predicted = {0.0 + before.x + dt * before.vx, 0.0 + before.y + dt * before.vy, 0.0 + before.vx, 0.0 + before.vy};
  const double dx = fix.x - predicted.x;
  const double dy = fix.y - predicted.y;
  const Row updated = predicted + Row{x.Of(dx, dy), y.Of(dx, dy), vx.Of(dx, dy), vy.Of(dx, dy)};
  const Rows updatedP = {UpdatedRow(1.0, 0.0, x, p), UpdatedRow(0.0, 1.0, y, p), UpdatedRow(0.0, 0.0, vx, p) + p.vx,
                         UpdatedRow(0.0, 0.0, vy, p) + p.vy};
  if (!IsFinite(updated, updatedP)) return false;

  Store(predicted, state.predicted);
  Store(updated, state.x);
  Store(updatedP.x, state.p, 0);
  Store(updatedP.y, state.p, 1);
  Store(updatedP.vx, state.p, 2);
  Store(updatedP.vy, state.p, 3);
  zeroRows = zeroRowsOfS;
  return true;
}

StateVector PredictedState(const StateVector& x, double dt) { return Phi(dt) * x; }

int UpdateInFull(FilterState& state, double dt, int dynamics, const PositionFix& fix) {
  const auto phi = Phi(dt);
  const auto g = G(dt);
  const auto q = Q(dt, dynamics);
  const auto h = H();
  const KmMatrix<2, 1> z = {{{fix.x}, {fix.y}}};
  int zeroRows = 0;
  state.predicted = PredictedState(state.x, dt);
  const StateCovariance predicted = phi * state.p * Transpose(phi) + g * q * Transpose(g);
  const auto sInverse = Inverse(h * predicted * Transpose(h) + R(fix), zeroRows);
  const auto k = predicted * Transpose(h) * sInverse;
  state.x = state.predicted + k * (z - h * state.predicted);
  state.p = (KmIdentity<4>() - k * h) * predicted;
  return zeroRows;
}

int UpdateByFix(FilterState& state, double dt, int dynamics, const PositionFix& fix) {
  int zeroRows = 0;
  if (UpdateInShort(state, dt, dynamics, fix, zeroRows)) return zeroRows;
  return UpdateInFull(state, dt, dynamics, fix);
}

}  // namespace zelbase::detail
