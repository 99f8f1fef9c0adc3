// The position filter against the same formulas in Eigen (a matrix library), with sizes at run time and with
// fixed sizes: an update by a fix with its prediction, and lines of position reduced to a fix.

#include <Eigen/Dense>

#include <cmath>
#include <cstddef>
#include <cstdio>

#include "bench/Compare.h"
#include "zelbase/numerics/KalmanFilter.h"

namespace {

constexpr double kVariance = 4.0;
constexpr double kDeviation = 0.35;  // of the acceleration, for steps of one second and the third dynamics

// A vessel on a slow circle, a fix a second.
struct Track {
  double time = 0;
  double x = 0;
  double y = 0;

  void Advance() {
    time += 1.0;
    x += 3.0 + 0.001 * (time - 1000.0 * std::floor(time / 1000.0));
    y -= 2.0;
  }
};

// The filter of constant velocity as one writes it in Eigen, its matrices made once. `N` is 4 and `M` is 2,
// or both are Eigen::Dynamic.
template <int N, int M>
class EigenFilter {
 public:
  using State = Eigen::Matrix<double, N, 1>;
  using Fix = Eigen::Matrix<double, M, 1>;
  using NN = Eigen::Matrix<double, N, N>;
  using NM = Eigen::Matrix<double, N, M>;
  using MN = Eigen::Matrix<double, M, N>;
  using MM = Eigen::Matrix<double, M, M>;

  void Update(double time, const Fix& z, const MM& r) {
    Prepare(time - m_time);
    m_nn.noalias() = m_phi * m_p;
    m_predicted.noalias() = m_nn * m_phi.transpose();
    m_nm.noalias() = m_g * m_q;
    m_predicted.noalias() += m_nm * m_g.transpose();
    m_predictedX.noalias() = m_phi * m_x;
    m_nm.noalias() = m_predicted * m_h.transpose();
    m_s.noalias() = m_h * m_nm;
    m_s += r;
    m_k.noalias() = m_nm * m_s.inverse();
    m_difference = z;
    m_difference.noalias() -= m_h * m_predictedX;
    m_x = m_predictedX;
    m_x.noalias() += m_k * m_difference;
    m_nn.setIdentity();
    m_nn.noalias() -= m_k * m_h;
    m_p.noalias() = m_nn * m_predicted;
    m_time = time;
  }

  double X() const { return m_x(0); }
  double VarX() const { return m_p(0, 0); }

 private:
  void Prepare(double dt) {
    m_phi(0, 2) = dt;
    m_phi(1, 3) = dt;
    m_h.setZero();
    m_h(0, 0) = 1.0;
    m_h(1, 1) = 1.0;
    m_g(0, 0) = dt * dt * 0.5;
    m_g(1, 1) = dt * dt * 0.5;
    m_g(2, 0) = dt;
    m_g(3, 1) = dt;
    m_q(0, 0) = m_q(1, 1) = kDeviation * kDeviation;
  }

  double m_time = 0;
  State m_x = State::Zero(4);
  State m_predictedX = State::Zero(4);
  Fix m_difference = Fix::Zero(2);
  NN m_phi = NN::Identity(4, 4);
  NN m_p = NN::Zero(4, 4);
  NN m_predicted = NN::Zero(4, 4);
  NN m_nn = NN::Zero(4, 4);
  NM m_g = NM::Zero(4, 2);
  NM m_nm = NM::Zero(4, 2);
  NM m_k = NM::Zero(4, 2);
  MN m_h = MN::Zero(2, 4);
  MM m_q = MM::Zero(2, 2);
  MM m_s = MM::Zero(2, 2);
};

using FixedFilter = EigenFilter<4, 2>;
using DynamicFilter = EigenFilter<Eigen::Dynamic, Eigen::Dynamic>;

template <class Filter>
void UpdateEigen(Filter& filter, Track& track) {
  track.Advance();
  typename Filter::Fix z = Filter::Fix::Zero(2);
  z(0) = track.x;
  z(1) = track.y;
  typename Filter::MM r = Filter::MM::Identity(2, 2) * kVariance;
  filter.Update(track.time, z, r);
  Keep(filter);
}

struct Position {
  double x = 0, y = 0, vx = 0, vy = 0, varX = 0, varY = 0, covXY = 0;
  int status = 0;
};

Position UpdateOurs(KalmanFilter& filter, Track& track) {
  track.Advance();
  Position p;
  p.x = track.x;
  p.y = track.y;
  p.varX = p.varY = kVariance;
  filter.UpdatePosition(track.time, p.x, p.y, p.vx, p.vy, p.varX, p.varY, p.covXY, p.status);
  Keep(p);
  return p;
}

KalmanFilter MakeOurs() {
  KalmanFilter filter;
  int status = 0;
  filter.Initialize(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 3, status);
  return filter;
}

// Ranges to some stations, eight at most, the estimate some 90 m off.
struct Reduction {
  explicit Reduction(int stations) {
    for (int i = 0; i < stations; ++i) {
      lops[i].flags = 3;
      lops[i].x = 1000.0 * std::cos(1.1 * i);
      lops[i].y = 1000.0 * std::sin(1.1 * i);
      lops[i].observed = std::hypot(lops[i].x - 50, lops[i].y - 70);
      lops[i].variance = kVariance;
    }
  }

  Position Ours(const KalmanFilter& filter) {
    Position p;
    double sigma = 0;
    int count = 0;
    filter.ReduceLops(0, lops, p.x, p.y, p.varX, p.varY, p.covXY, sigma, count, p.status);
    return p;
  }

  // The same least squares with the weights as a diagonal.
  Position Eigens() {
    Position p;
    Eigen::Vector2d delta;
    Eigen::Matrix2d n;
    do {
      Eigen::Matrix<double, 8, 2> a = Eigen::Matrix<double, 8, 2>::Zero();
      Eigen::Matrix<double, 8, 1> w = Eigen::Matrix<double, 8, 1>::Zero();
      Eigen::Matrix<double, 8, 1> l = Eigen::Matrix<double, 8, 1>::Zero();
      for (int i = 0; i < 8; ++i) {
        if (lops[i].flags != 3) continue;
        const double dx = p.x - lops[i].x;
        const double dy = p.y - lops[i].y;
        const double d = std::sqrt(dx * dx + dy * dy);
        lops[i].azimuth = std::atan2(dx, dy) * 57.29577951308232;
        a(i, 0) = dx / d;
        a(i, 1) = dy / d;
        w(i) = 1.0 / lops[i].variance;
        l(i) = lops[i].observed - d;
      }
      n = (a.transpose() * w.asDiagonal() * a).inverse();
      delta = n * (a.transpose() * w.asDiagonal() * l);
      p.x += delta(0);
      p.y += delta(1);
    } while (delta.cwiseAbs().maxCoeff() > 0.1);
    p.varX = n(0, 0);
    return p;
  }

  LopStruct lops[KalmanFilter::kLopCount] = {};
};

// Both see the same track and must say the same of it.
bool Agree() {
  KalmanFilter ours = MakeOurs();
  FixedFilter fixed;
  DynamicFilter dynamic;
  Track tracks[3];
  Position p;
  for (int i = 0; i < 1000; ++i) {
    p = UpdateOurs(ours, tracks[0]);
    UpdateEigen(fixed, tracks[1]);
    UpdateEigen(dynamic, tracks[2]);
  }
  const double apart = std::fabs(p.x - fixed.X()) + std::fabs(p.varX - fixed.VarX()) + std::fabs(p.x - dynamic.X());
  Reduction reduction(5);
  const double fixesApart = std::fabs(reduction.Ours(ours).x - reduction.Eigens().x);
  std::printf("after 1000 fixes at %.3f the filters are %.2g apart; the reduced fixes are %.2g apart\n", p.x, apart, fixesApart);
  return apart < 1e-6 && fixesApart < 1e-6;
}

}  // namespace

int main() {
  Comparison table("position filter (peer: Eigen)");
  const bool agree = Agree();
  KalmanFilter ours = MakeOurs();
  FixedFilter fixed;
  DynamicFilter dynamic;
  Track tracks[4];
  const auto update = [&] { UpdateOurs(ours, tracks[0]); };
  table.Row("update with prediction, dynamic sizes", 1, "", 1.0, update, [&] { UpdateEigen(dynamic, tracks[1]); });
  table.Row("update with prediction, fixed sizes", 1, "", 1.0, update, [&] { UpdateEigen(fixed, tracks[2]); });
  for (const int stations : {3, 5, 8}) {
    Reduction reduction(stations);
    table.Row(
        std::to_string(stations) + " ranges reduced to a fix, fixed sizes", 1, "", Comparison::kNoBar, [&] { Keep(reduction.Ours(ours)); },
        [&] { Keep(reduction.Eigens()); });
  }
  return agree ? table.Finish() : 1;
}
