// What KalmanFilter does without its state: lines of position to a fix, a covariance to an ellipse.

#include <cmath>

#include "zelbase/frame/NumericHelpers.h"
#include "zelbase/geometry/MathConstants.h"
#include "zelbase/numerics/KalmanFilter.h"
#include "zelbase/numerics/detail/KmMatrix.h"
#include "zelbase/numerics/detail/PlaneBearing.h"

using zelbase::detail::Inverse;
using zelbase::detail::KmMatrix;
using zelbase::detail::PlaneBearing;
using zelbase::detail::PrintSingular;
using zelbase::detail::Transpose;

namespace {

constexpr int kLops = KalmanFilter::kLopCount;
constexpr int kRange = 0;
constexpr int kBearing = 1;
constexpr unsigned int kUsedFlags = 3;
constexpr int kFewestLops = 2;
constexpr int kMostCorrections = 5;
constexpr double kConverged = 0.1;           // metres
constexpr double kMostMisclosure = 10000.0;  // metres

using Weights = KmMatrix<kLops, 1>;

// A row times the matrix W that has the weights on its diagonal: each element is a sum of one product and of zeros.
void RowTimesDiagonal(const double* row, const Weights& w, double* result) {
  double zero = 0.0;
  for (int k = 0; k < kLops; ++k) zero += row[k] * 0.0;
  if (zero == 0.0) {
    for (int j = 0; j < kLops; ++j) result[j] = 0.0 + row[j] * w[j][0];
    return;
  }
  // What is not finite makes a not-a-number of a product by 0.
  for (int j = 0; j < kLops; ++j) {
    double sum = 0.0;
    for (int k = 0; k < kLops; ++k) sum += row[k] * (k == j ? w[j][0] : 0.0);
    result[j] = sum;
  }
}

template <int Rows>
KmMatrix<Rows, kLops> TimesDiagonal(const KmMatrix<Rows, kLops>& a, const Weights& w) {
  KmMatrix<Rows, kLops> result;
  for (int i = 0; i < Rows; ++i) RowTimesDiagonal(a[i], w, result[i]);
  return result;
}

// An iterated least squares for the two unknowns x and y.
class LopReduction {
 public:
  LopReduction(LopStruct* lops, double x, double y) : m_lops(lops), m_x(x), m_y(y) {}

  // The status. The getters below are for a success.
  int Run();

  double X() const { return m_x; }
  double Y() const { return m_y; }
  int Count() const { return m_count; }
  const KmMatrix<2, 2>& Covariance() const { return m_nInverse; }

  // Writes the residuals of the last pass and gives the weighted sum of their squares.
  double TakeResiduals() const;

 private:
  void FillPass();
  void FillEntry(int i);
  void FillRange(int i, double dx, double dy, double d);
  void FillBearing(int i, double dx, double dy, double d, double azimuth);
  void FillRow(int i, double x, double y, double weight, double misclosure);
  bool IsMisclosureTooLarge() const;
  void Solve();

  LopStruct* m_lops;
  double m_x;
  double m_y;
  int m_count = 0;
  KmMatrix<kLops, 2> m_a;  // a row for each equation
  Weights m_w;             // the diagonal of W
  KmMatrix<kLops, 1> m_l;  // misclosures
  KmMatrix<2, 2> m_nInverse;
  KmMatrix<2, 1> m_delta;
};

int LopReduction::Run() {
  for (int iteration = 0;; ++iteration) {
    FillPass();
    if (m_count < kFewestLops) return KalmanFilter::kTooFewLops;
    if (IsMisclosureTooLarge()) return KalmanFilter::kMisclosureTooLarge;
    Solve();
    // Kept: before the size of the correction is looked at; the sixth solution ends the reduction even when it is small.
    if (iteration + 1 > kMostCorrections) return KalmanFilter::kNoConvergence;
    m_x += m_delta[0][0];
    m_y += m_delta[1][0];
    // A correction that is not a number is not above the limit.
    if (!(std::fabs(m_delta[0][0]) > kConverged || std::fabs(m_delta[1][0]) > kConverged)) return KalmanFilter::kSuccess;
  }
}

void LopReduction::FillPass() {
  m_a = {};
  m_w = {};
  m_l = {};
  m_count = 0;
  for (int i = 0; i < kLops; ++i) {
    m_lops[i].residual = 0.0;
    m_lops[i].azimuth = 0.0;
    if ((m_lops[i].flags & kUsedFlags) != kUsedFlags) continue;
    FillEntry(i);
    // Kept: an entry of another type counts as well, without an equation.
    ++m_count;
  }
}

void LopReduction::FillEntry(int i) {
  LopStruct& lop = m_lops[i];
  const double dx = m_x - lop.x;
  const double dy = m_y - lop.y;
  const double d = std::sqrt(dx * dx + dy * dy);
  lop.azimuth = PlaneBearing(dx, dy);
  if (lop.type == kRange) FillRange(i, dx, dy, d);
  if (lop.type == kBearing) FillBearing(i, dx, dy, d, lop.azimuth);
}

void LopReduction::FillRange(int i, double dx, double dy, double d) {
  const LopStruct& lop = m_lops[i];
  const double misclosure = lop.correction + lop.observed - d;
  const double weight = 1.0 / lop.variance;
  if (d > Epsilon(1.0)) {
    FillRow(i, dx / d, dy / d, weight, misclosure);
  } else {
    // Kept: an estimate on the station itself is moved north.
    FillRow(i, 0.0, 1.0, weight, misclosure);
  }
}

void LopReduction::FillBearing(int i, double dx, double dy, double d, double azimuth) {
  const LopStruct& lop = m_lops[i];
  const double observed = lop.correction + lop.observed;
  // Kept: bearings are subtracted as they stand, without regard to the turn of the circle.
  if (d > Epsilon(1.0)) {
    FillRow(i, dy / d, -dx / d, 1.0 / (d * d * lop.variance), (observed - azimuth) * d * MATH::DTR);
  } else {
    FillRow(i, 1.0, 0.0, 1.0 / lop.variance, (observed - 0.0) * d * MATH::DTR);
  }
}

void LopReduction::FillRow(int i, double x, double y, double weight, double misclosure) {
  m_a[i][0] = x;
  m_a[i][1] = y;
  m_w[i][0] = weight;
  m_l[i][0] = misclosure;
}

bool LopReduction::IsMisclosureTooLarge() const {
  for (int i = 0; i < kLops; ++i) {
    if (std::fabs(m_l[i][0]) > kMostMisclosure) return true;
  }
  return false;
}

// N = A' W A; delta = N^-1 A' W L.
void LopReduction::Solve() {
  const auto aTransposed = Transpose(m_a);
  int zeroRows = 0;
  m_nInverse = Inverse(TimesDiagonal(aTransposed, m_w) * m_a, zeroRows);
  PrintSingular(zeroRows);
  m_delta = TimesDiagonal(m_nInverse * aTransposed, m_w) * m_l;
}

double LopReduction::TakeResiduals() const {
  // Kept: computed minus observed, with the equations of the last pass as they were before its correction.
  const auto v = m_a * m_delta - m_l;
  for (int i = 0; i < kLops; ++i) m_lops[i].residual = v[i][0];
  const auto sigma = TimesDiagonal(Transpose(v), m_w) * v;
  return sigma[0][0];
}

// Half an axis of the ellipse, in the direction theta.
double HalfAxis(double varX, double varY, double covXY, double theta) {
  const double c = std::cos(theta);
  const double s = std::sin(theta);
  return std::sqrt(varY * (c * c) + varX * (s * s) + 2 * covXY * s * c);
}

}  // namespace

void KalmanFilter::ReduceLops(double /*time*/, LopStruct* lops, double& x, double& y, double& varX, double& varY, double& covXY,
                              double& sigma, int& count, int& status) const {
  if (lops == nullptr) {
    status = kTooFewLops;
    return;
  }
  LopReduction reduction(lops, x, y);
  status = reduction.Run();
  if (status != kSuccess) return;
  sigma = reduction.TakeResiduals();
  x = reduction.X();
  y = reduction.Y();
  varX = reduction.Covariance()[0][0];
  varY = reduction.Covariance()[1][1];
  covXY = reduction.Covariance()[1][0];
  count = reduction.Count();
}

void KalmanFilter::ComputeEllipse(double varX, double varY, double covXY, double& semiMajor, double& semiMinor, double& orientation) {
  const bool differs = std::fabs(varX - varY) >= 0.001;
  const double theta = differs ? std::atan(2 * covXY / (varY - varX)) / 2 : MATH::M_PI_4;
  const double a = HalfAxis(varX, varY, covXY, theta);
  const double b = HalfAxis(varX, varY, covXY, theta + MATH::M_PI_2);
  const bool isMajor = a >= b;
  semiMajor = isMajor ? a : b;
  semiMinor = isMajor ? b : a;
  double degrees = (isMajor ? theta : theta + MATH::M_PI_2) * MATH::RTD;
  if (degrees < 0.0) degrees += 360.0;
  if (degrees > 180.0) degrees -= 180.0;
  orientation = degrees;
}
