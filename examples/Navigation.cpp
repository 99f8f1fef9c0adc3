// Navigation: noisy fixes go into the filter, a smoother track comes out.
#include <cmath>
#include <cstdio>

#include "zelbase/numerics/KalmanFilter.h"

int main() {
  KalmanFilter filter;
  int status = 0;
  filter.Initialize(0.0, 0.0, 0.0, 2.0, 0.0, 25.0, 25.0, 0.0, 0.0, 0.0, 4, status);
  double fixes = 0.0, filtered = 0.0;  // sums of squares
  for (int second = 1; second <= 120; ++second) {
    const double trueX = 2.0 * second;  // 2 m/s to the east
    const double noise = 3.0 * std::sin(second * second * 12.9898);
    double x = trueX + noise, y = noise, vx = 0.0, vy = 0.0, varX = 9.0, varY = 9.0, covXY = 0.0;
    filter.UpdatePosition(second, x, y, vx, vy, varX, varY, covXY, status);
    if (second < 60) continue;  // until it has settled
    fixes += noise * noise;
    filtered += (x - trueX) * (x - trueX);
  }
  std::printf("status %d; the filtered track is %s\n", status, filtered < 0.5 * fixes ? "smoother" : "no better");
  return 0;
}

// Prints:
//   status 0; the filtered track is smoother
