// The rules of the position filter a second time, step by step as they are told, with matrices of any size and every one of
// them kept: for the tests of the filter, which leaves out what nobody can see.
#pragma once

#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "zelbase/numerics/LopStruct.h"

class SecondKmMatrix {
 public:
  SecondKmMatrix(int rows, int columns) : m_rows(rows), m_columns(columns), m_values(static_cast<std::size_t>(rows * columns), 0.0) {}

  static SecondKmMatrix Identity(int size) {
    SecondKmMatrix result(size, size);
    for (int i = 0; i < size; ++i) result.At(i, i) = 1.0;
    return result;
  }

  double& At(int i, int j) { return m_values[static_cast<std::size_t>(i * m_columns + j)]; }
  double At(int i, int j) const { return m_values[static_cast<std::size_t>(i * m_columns + j)]; }
  int Rows() const { return m_rows; }

  SecondKmMatrix Transposed() const {
    SecondKmMatrix result(m_columns, m_rows);
    for (int i = 0; i < m_rows; ++i) {
      for (int j = 0; j < m_columns; ++j) result.At(j, i) = At(i, j);
    }
    return result;
  }

  SecondKmMatrix Plus(const SecondKmMatrix& other, double sign = 1.0) const {
    SecondKmMatrix result(m_rows, m_columns);
    for (int i = 0; i < m_rows; ++i) {
      for (int j = 0; j < m_columns; ++j) {
        result.At(i, j) = sign > 0 ? At(i, j) + other.At(i, j) : At(i, j) - other.At(i, j);
      }
    }
    return result;
  }

  SecondKmMatrix Minus(const SecondKmMatrix& other) const { return Plus(other, -1.0); }

  SecondKmMatrix Times(const SecondKmMatrix& other) const {
    SecondKmMatrix result(m_rows, other.m_columns);
    for (int i = 0; i < m_rows; ++i) {
      for (int j = 0; j < other.m_columns; ++j) {
        double sum = 0.0;
        for (int k = 0; k < m_columns; ++k) sum += At(i, k) * other.At(k, j);
        result.At(i, j) = sum;
      }
    }
    return result;
  }

  // Says each message in `printed`.
  SecondKmMatrix Inverted(std::string& printed) const {
    SecondKmMatrix lu = *this;
    const std::vector<int> index = lu.Decompose(printed);
    SecondKmMatrix result(m_rows, m_rows);
    for (int j = 0; j < m_rows; ++j) {
      std::vector<double> b(static_cast<std::size_t>(m_rows), 0.0);
      b[static_cast<std::size_t>(j)] = 1.0;
      lu.Substitute(index, b);
      for (int i = 0; i < m_rows; ++i) result.At(i, j) = b[static_cast<std::size_t>(i)];
    }
    return result;
  }

 private:
  std::vector<int> Decompose(std::string& printed) {
    const int n = m_rows;
    std::vector<int> index(static_cast<std::size_t>(n));
    std::vector<double> scale(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) {
      double big = 0.0;
      for (int j = 0; j < n; ++j) {
        if (std::fabs(At(i, j)) > big) big = std::fabs(At(i, j));
      }
      if (big == 0.0) printed += "Singular KmMatrix in routine LUDCMP\n";
      scale[static_cast<std::size_t>(i)] = 1.0 / big;
    }
    for (int j = 0; j < n; ++j) {
      for (int i = 0; i < j; ++i) {
        for (int k = 0; k < i; ++k) At(i, j) -= At(i, k) * At(k, j);
      }
      double big = 0.0;
      int pivot = j;
      for (int i = j; i < n; ++i) {
        for (int k = 0; k < j; ++k) At(i, j) -= At(i, k) * At(k, j);
        const double size = scale[static_cast<std::size_t>(i)] * std::fabs(At(i, j));
        if (size >= big) {
          big = size;
          pivot = i;
        }
      }
      if (pivot != j) {
        for (int k = 0; k < n; ++k) std::swap(At(pivot, k), At(j, k));
        scale[static_cast<std::size_t>(pivot)] = scale[static_cast<std::size_t>(j)];
      }
      index[static_cast<std::size_t>(j)] = pivot;
      if (At(j, j) == 0.0) At(j, j) = 1e-20;
      if (j != n - 1) {
        const double factor = 1.0 / At(j, j);
        for (int i = j + 1; i < n; ++i) At(i, j) *= factor;
      }
    }
    return index;
  }

  void Substitute(const std::vector<int>& index, std::vector<double>& b) const {
    const auto at = [&b](int i) -> double& { return b[static_cast<std::size_t>(i)]; };
    int first = -1;
    for (int i = 0; i < m_rows; ++i) {
      const int from = index[static_cast<std::size_t>(i)];
      double sum = at(from);
      at(from) = at(i);
      if (first >= 0) {
        for (int j = first; j < i; ++j) sum -= At(i, j) * at(j);
      } else if (sum != 0.0) {
        first = i;
      }
      at(i) = sum;
    }
    for (int i = m_rows - 1; i >= 0; --i) {
      double sum = at(i);
      for (int j = i + 1; j < m_rows; ++j) sum -= At(i, j) * at(j);
      at(i) = sum / At(i, i);
    }
  }

  int m_rows;
  int m_columns;
  std::vector<double> m_values;
};

class SecondKalmanFilter {
 public:
  // What a call takes and gives, in the order of its arguments.
  struct Values {
    double x = 0, y = 0, vx = 0, vy = 0, varX = 0, varY = 0, covXY = 0;
    int status = -1;
  };

  struct Fix {
    double x = 0, y = 0, varX = 0, varY = 0, covXY = 0, sigma = 0;
    int count = 0;
    int status = -1;
  };

  void Initialize(double time, const Values& v, double heading, double scale, int dynamics) {
    m_time = time;
    SetColumn(m_x, v.x, v.y, v.vx, v.vy);
    m_p.At(0, 0) = v.varX;
    m_p.At(0, 1) = v.covXY;
    m_p.At(1, 0) = v.covXY;
    m_p.At(1, 1) = v.varY;
    SetDynamics(dynamics);
    SetCalibration(heading, scale);
    calibrationState = 0;
    m_integratedX = m_integratedY = m_startX = m_startY = 0;
  }

  void SetDynamics(int dynamics) { m_dynamics = dynamics < 1 ? 0 : dynamics > 5 ? 4 : dynamics - 1; }

  void SetCalibration(double heading, double scale) {
    headingOffset = heading;
    scaleError = scale;
  }

  void GetStateVector(double& time, Values& v) const {
    time = m_time;
    GiveState(m_predicted, v);
    GiveUpdatedCovariance(v);
  }

  void Predict(double time, Values& v) {
    const double dt = time - m_time;
    if (dt < 0) {
      v.status = 4;
      return;
    }
    DoPrediction(dt);
    GiveState(m_predicted, v);
    GiveUpdatedCovariance(v);
    v.status = 0;
  }

  void Update(double time, Values& v) {
    const double dt = time - m_time;
    if (dt < 0) {
      v.status = 4;
      return;
    }
    m_lastFixTime = time;
    m_lastFixX = v.x;
    m_lastFixY = v.y;
    SecondKmMatrix z(2, 1);
    z.At(0, 0) = v.x;
    z.At(1, 0) = v.y;
    SecondKmMatrix r(2, 2);
    r.At(0, 0) = v.varX;
    r.At(0, 1) = r.At(1, 0) = v.covXY;
    r.At(1, 1) = v.varY;
    DoPrediction(dt);
    const SecondKmMatrix s = m_h.Times(m_predictedP).Times(m_h.Transposed()).Plus(r);
    const SecondKmMatrix k = m_predictedP.Times(m_h.Transposed()).Times(s.Inverted(printed));
    m_updated = m_predicted.Plus(k.Times(z.Minus(m_h.Times(m_predicted))));
    m_updatedP = SecondKmMatrix::Identity(4).Minus(k.Times(m_h)).Times(m_predictedP);
    GiveState(m_updated, v);
    GiveUpdatedCovariance(v);
    m_x = m_updated;
    m_p = m_updatedP;
    m_time = time;
    v.status = 0;
  }

  void UpdateVelocity(double time, Values& v) {
    const double dt = time - m_time;
    if (dt < 0) {
      v.status = 4;
      return;
    }
    const double sigma2 = (v.vx * v.vx + v.vy * v.vy) * 0.0025000000000000005;
    m_x.At(2, 0) = v.vx;
    m_x.At(3, 0) = v.vy;
    m_phi.At(0, 2) = m_phi.At(1, 3) = dt;
    m_predicted = m_phi.Times(m_x);
    m_predictedP = m_p;
    m_predictedP.At(0, 0) += sigma2 * dt * dt;
    m_predictedP.At(1, 1) += sigma2 * dt * dt;
    v.x = m_predicted.At(0, 0);
    v.y = m_predicted.At(1, 0);
    v.varX = m_predictedP.At(0, 0);
    v.covXY = m_predictedP.At(1, 0);
    v.varY = m_predictedP.At(1, 1);
    m_x = m_predicted;
    m_p = m_predictedP;
    m_time = time;
    Calibrate(time, v.vx, v.vy);
    v.status = 0;
  }

  void Reduce(std::vector<LopStruct>& lops, Fix& fix) {
    double x = fix.x;
    double y = fix.y;
    for (int iteration = 0;; ++iteration) {
      SecondKmMatrix a(8, 2), w(8, 8), l(8, 1);
      int count = 0;
      for (int i = 0; i < 8; ++i) {
        LopStruct& lop = lops[static_cast<std::size_t>(i)];
        lop.residual = lop.azimuth = 0;
        if ((lop.flags & 1) == 0 || (lop.flags & 2) == 0) continue;
        const double dx = x - lop.x;
        const double dy = y - lop.y;
        const double d = std::sqrt(dx * dx + dy * dy);
        double az = Bearing(dx, dy);
        lop.azimuth = az;
        const bool apart = d > 2.220446049250313e-16;
        if (lop.type == 0) {
          a.At(i, 0) = apart ? dx / d : 0;
          a.At(i, 1) = apart ? dy / d : 1;
          w.At(i, i) = 1 / lop.variance;
          l.At(i, 0) = lop.correction + lop.observed - d;
        } else if (lop.type == 1) {
          a.At(i, 0) = apart ? dy / d : 1;
          a.At(i, 1) = apart ? -dx / d : 0;
          w.At(i, i) = apart ? 1 / (d * d * lop.variance) : 1 / lop.variance;
          if (!apart) az = 0;
          l.At(i, 0) = (lop.correction + lop.observed - az) * d * 0.017453292519943295;
        }
        ++count;
      }
      fix.status = 1;
      if (count < 2) return;
      fix.status = 3;
      for (int i = 0; i < 8; ++i) {
        if (std::fabs(l.At(i, 0)) > 10000.0) return;
      }
      const SecondKmMatrix nInverse = a.Transposed().Times(w).Times(a).Inverted(printed);
      const SecondKmMatrix delta = nInverse.Times(a.Transposed()).Times(w).Times(l);
      fix.status = 2;
      if (iteration + 1 > 5) return;
      x += delta.At(0, 0);
      y += delta.At(1, 0);
      if (std::fabs(delta.At(0, 0)) > 0.1 || std::fabs(delta.At(1, 0)) > 0.1) continue;
      const SecondKmMatrix v = a.Times(delta).Minus(l);
      for (int i = 0; i < 8; ++i) lops[static_cast<std::size_t>(i)].residual = v.At(i, 0);
      fix = {x, y, nInverse.At(0, 0), nInverse.At(1, 1), nInverse.At(1, 0), v.Transposed().Times(w).Times(v).At(0, 0), count, 0};
      return;
    }
  }

  double headingOffset = 0;
  double scaleError = 0;
  int calibrationState = 0;
  int closed = 0;       // runs that were compared
  std::string printed;  // what went to standard output

 private:
  static void SetColumn(SecondKmMatrix& column, double a, double b, double c, double d) {
    const double values[] = {a, b, c, d};
    for (int i = 0; i < 4; ++i) column.At(i, 0) = values[i];
  }

  static void GiveState(const SecondKmMatrix& column, Values& v) {
    v.x = column.At(0, 0);
    v.y = column.At(1, 0);
    v.vx = column.At(2, 0);
    v.vy = column.At(3, 0);
  }

  void GiveUpdatedCovariance(Values& v) const {
    v.varX = m_updatedP.At(0, 0);
    v.varY = m_updatedP.At(1, 1);
    v.covXY = m_updatedP.At(1, 0);
  }

  void DoPrediction(double dt) {
    static const double kTable[5][5] = {{2.5, 1.25, 0.75, 0.35, 0.1},
                                        {1.5, 0.75, 0.35, 0.15, 0.06},
                                        {1.0, 0.5, 0.25, 0.1, 0.04},
                                        {0.75, 0.4, 0.2, 0.07, 0.03},
                                        {0.5, 0.25, 0.12, 0.05, 0.02}};
    m_phi.At(0, 2) = m_phi.At(1, 3) = dt;
    m_h = SecondKmMatrix(2, 4);
    m_h.At(0, 0) = m_h.At(1, 1) = 1;
    m_g.At(0, 0) = m_g.At(1, 1) = dt * dt * 0.5;
    m_g.At(2, 0) = m_g.At(3, 1) = dt;
    int row = 4;
    for (int second = 3; second >= 0; --second) {
      if (dt < second + 1) row = second;
    }
    const double q = kTable[row][m_dynamics];
    m_q.At(0, 0) = m_q.At(1, 1) = q * q;
    m_predictedP = m_phi.Times(m_p).Times(m_phi.Transposed()).Plus(m_g.Times(m_q).Times(m_g.Transposed()));
    m_predicted = m_phi.Times(m_x);
  }

  static double Bearing(double dx, double dy) {
    const double degrees = std::atan2(dx, dy) * 57.29577951308232;
    return degrees < 0 ? degrees + 360 : degrees;
  }

  static double Between(double value, double most) { return value < -most ? -most : value > most ? most : value; }

  void Reset() {
    m_integratedX = m_integratedY = 0;
    calibrationState = 0;
  }

  void Integrate(double dtv, double vx, double vy) {
    m_integratedX += 0.5 * (m_lastVx + vx) * dtv;
    m_integratedY += dtv * ((m_lastVy + vy) * 0.5);
  }

  void Calibrate(double t, double vx, double vy) {
    if (calibrationState == 0) {
      if (!(t - m_lastFixTime <= 5.0)) return;
      m_integratedX = m_integratedY = 0;
      m_startTime = m_lastFixTime;
      m_startX = m_lastFixX;
      m_startY = m_lastFixY;
      m_lastVelocityTime = m_startTime;
      m_lastVx = vx;
      m_lastVy = vy;
      calibrationState = 1;
    } else if (calibrationState == 1) {
      const double from = m_lastVelocityTime > m_startTime ? m_lastVelocityTime : m_startTime;
      const double dtv = t - from;
      if (dtv > 5.0 || t - m_lastFixTime > 5.0) return Reset();
      Integrate(dtv, vx, vy);
      m_lastVelocityTime = t;
      m_lastVx = vx;
      m_lastVy = vy;
      if (m_lastVelocityTime - m_startTime > 60.0) calibrationState = 2;
    } else {
      CloseRun(vx, vy);
      Reset();
    }
  }

  void CloseRun(double vx, double vy) {
    double dtv = m_lastFixTime - m_lastVelocityTime;
    if (dtv < 0) dtv = 0;
    Integrate(dtv, vx, vy);
    const double integrated = std::sqrt(m_integratedX * m_integratedX + m_integratedY * m_integratedY);
    double integratedBearing = Bearing(m_integratedX, m_integratedY);
    const double dx = m_lastFixX - m_startX;
    const double dy = m_lastFixY - m_startY;
    const double madeGood = std::sqrt(dx * dx + dy * dy);
    double madeGoodBearing = Bearing(dx, dy);
    if (madeGood / 60.0 < 0.1) return;
    ++closed;
    if (madeGoodBearing - integratedBearing > 180) integratedBearing += 360;
    if (madeGoodBearing - integratedBearing < -180) madeGoodBearing += 360;
    const double dh = Between(madeGoodBearing - integratedBearing, 10);
    const double ds = Between((madeGood / integrated - 1.0) * 1000.0, 200);
    headingOffset = 0.9 * headingOffset + 0.1 * (dh + headingOffset);
    scaleError = 0.9 * scaleError + 0.1 * (ds + scaleError);
    headingOffset = Between(headingOffset, 10);
    scaleError = Between(scaleError, 200);
  }

  int m_dynamics = 0;
  double m_time = 0;
  SecondKmMatrix m_x{4, 1}, m_predicted{4, 1}, m_updated{4, 1};
  SecondKmMatrix m_p{4, 4}, m_predictedP{4, 4}, m_updatedP{4, 4};
  SecondKmMatrix m_phi = SecondKmMatrix::Identity(4);
  SecondKmMatrix m_g{4, 2}, m_q{2, 2}, m_h{2, 4};
  double m_lastFixTime = 0, m_lastFixX = 0, m_lastFixY = 0;
  double m_startTime = 0, m_startX = 0, m_startY = 0;
  double m_lastVelocityTime = 0, m_lastVx = 0, m_lastVy = 0;
  double m_integratedX = 0, m_integratedY = 0;
};
