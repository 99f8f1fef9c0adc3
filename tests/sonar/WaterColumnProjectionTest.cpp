#include "zelbase/sonar/WaterColumnProjection.h"

#include <gtest/gtest.h>

#include <cstddef>

namespace {

TEST(WaterColumnProjection, IsZeroAtFirst) {
  const WaterColumnProjection entry;
  for (const unsigned int word : {entry.word0, entry.word1, entry.word2, entry.word3, entry.word4, entry.word5, entry.word6}) {
    EXPECT_EQ(word, 0u);
  }
  EXPECT_EQ(entry.double0, 0.0);
}

TEST(WaterColumnProjection, HasSevenWordsAndADouble) {
  EXPECT_EQ(sizeof(WaterColumnProjection), 40u);
  EXPECT_EQ(offsetof(WaterColumnProjection, word0), 0u);
  EXPECT_EQ(offsetof(WaterColumnProjection, word6), 24u);
  EXPECT_EQ(offsetof(WaterColumnProjection, double0), 32u);
}

TEST(WaterColumnProjection, AssignmentCopiesEveryField) {
  WaterColumnProjection source;
  source.word0 = 7;
  source.word6 = 0x80000000u;
  source.double0 = 1e300;
  WaterColumnProjection target;
  target = source;
  EXPECT_EQ(target.word0, 7u);
  EXPECT_EQ(target.word6, 0x80000000u);
  EXPECT_EQ(target.double0, 1e300);
}

}  // namespace
