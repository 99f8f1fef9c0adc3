// The formulas of the position filter: the prediction over a time step and the update by a fix. Neighbours: KalmanFilter.h,
// which keeps the state between the calls; KmMatrix.h, whose order of operations is that of the formulas.
//
// With dt the time step, x the state (x, y, vx, vy) and P its covariance:
//
//   Phi   the identity, with dt at (0,2) and (1,3): the position moves by the velocity
//   G     dt * dt * 0.5 at (0,0) and (1,1), dt at (2,0) and (3,1): what an acceleration does within the step
//   Q     the variance of the acceleration at (0,0) and (1,1), by the whole seconds of dt and the dynamics
//   H     1 at (0,0) and (1,1): a fix measures the position
//   z, R  the fix and its covariance
//
//   predicted x = Phi x                       predicted P = Phi P Phi' + G Q G'
//   K = predicted P H' S^-1                   with S = H predicted P H' + R
//   updated x = predicted x + K (z - H predicted x)
//   updated P = (I - K H) predicted P
//
// All depend on nothing but their arguments; none fails or allocates. dt is not negative, or not a number; dynamics is 0 to
// kDynamicsCount - 1.
#pragma once

#include "zelbase/numerics/detail/KmMatrix.h"
#include "zelbase/platform/ZelBaseApi.h"

namespace zelbase::detail {

// The columns of the table of accelerations: 0 for the liveliest vessel, 4 for the steadiest.
inline constexpr int kDynamicsCount = 5;

using StateVector = KmMatrix<4, 1>;
using StateCovariance = KmMatrix<4, 4>;

struct FilterState {
  StateVector predicted;  // before the fix
  StateVector x;
  StateCovariance p;
};

struct PositionFix {
  double x;
  double y;
  double varX;
  double varY;
  double covXY;
};

// Phi x.
StateVector PredictedState(const StateVector& x, double dt);

// The update by a fix: UpdateInFull, in the time of UpdateInShort where that gives the same. Gives the rows of S that were
// all zero, for PrintSingular.
ZELBASE_API int UpdateByFix(FilterState& state, double dt, int dynamics, const PositionFix& fix);

// The formulas as they stand, product by product.
ZELBASE_API int UpdateInFull(FilterState& state, double dt, int dynamics, const PositionFix& fix);

// The formulas without those terms that have a factor 0 of Phi, G, Q, H or I, and with no product by a 1 of them. Gives
// false and changes nothing where something in the updated x or P is not finite, or near the largest numbers; otherwise the
// result is that of UpdateInFull bit for bit. Why that is so:
//
// - A sum from 0.0 is never -0, so that a term of either 0 does not change it. What is left out is such a term, as long as
//   its other factor is finite.
// - All these other factors are finite when the updated x and P are. What is not finite stays so through sums and products,
//   and every element of P, of predicted P and of K is a term or a factor of a term in an element of updated P, every
//   element of x and of predicted x a term in one of updated x, and dt a factor in both.
ZELBASE_API bool UpdateInShort(FilterState& state, double dt, int dynamics, const PositionFix& fix, int& zeroRows);

}  // namespace zelbase::detail
