#include "zelbase/sonar/TwttIncident.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

TEST(TwttIncident, IsZeroAtFirst) {
  const TwttIncident incident;
  EXPECT_EQ(incident.twtt, 0.0);
  EXPECT_EQ(incident.incident, 0.0);
}

TEST(TwttIncident, HoldsTheTimeAndThenTheAngle) {
  const TwttIncident incident(0.125, -45.5);
  double values[2];
  std::memcpy(values, &incident, sizeof values);
  EXPECT_EQ(values[0], 0.125);
  EXPECT_EQ(values[1], -45.5);
  EXPECT_EQ(&incident.twtt, reinterpret_cast<const double*>(&incident));
}

TEST(TwttIncident, AssignmentCopies) {
  TwttIncident target(1, 2);
  const TwttIncident source(3, 4);
  target = source;
  EXPECT_EQ(target.twtt, 3.0);
  EXPECT_EQ(target.incident, 4.0);
}

}  // namespace
