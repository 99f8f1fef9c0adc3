// Tide: a series by time, looked up and walked through.
#include <cstdio>

#include "zelbase/sonar/TideFile.h"

int main() {
  TideFile tide;
  for (int i = 0; i < 4; ++i) tide.AddTideValue(600000.0 * i, 1.0 + 0.25 * i);  // each ten minutes

  double time = 900000.0, height = 0.0;
  if (tide.GetValueOnOrBefore(time, height)) std::printf("before minute 15: minute %.0f, %.2f m\n", time / 60000.0, height);
  time = 900000.0;
  if (tide.GetValueOnOrAfter(time, height)) std::printf("behind it: minute %.0f, %.2f m\n", time / 60000.0, height);
  double sum = 0.0;
  for (bool more = tide.GetFirstTideValue(time, height); more; more = tide.GetNextTideValue(time, height)) sum += height;
  std::printf("mean of %d: %.3f m\n", tide.GetNumValues(), sum / tide.GetNumValues());
  return 0;
}

// Prints:
//   before minute 15: minute 10, 1.25 m
//   behind it: minute 20, 1.50 m
//   mean of 4: 1.375 m
