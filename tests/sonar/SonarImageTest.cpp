#include "zelbase/sonar/SonarImage.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <limits>

namespace {

TEST(SonarImage, IsZeroAtFirst) {
  const SonarImage image;
  for (const unsigned int word :
       {image.word0, image.word1, image.word2, image.word3, image.word4, image.word5, image.word6, image.word7, image.word8}) {
    EXPECT_EQ(word, 0u);
  }
  EXPECT_EQ(image.double0, 0.0);
  EXPECT_EQ(image.double1, 0.0);
}

TEST(SonarImage, HasAWordADoubleEightWordsAndADouble) {
  EXPECT_EQ(sizeof(SonarImage), 14u * 4u);
  EXPECT_EQ(offsetof(SonarImage, word0), 0u);
  EXPECT_EQ(offsetof(SonarImage, double0), 8u);
  EXPECT_EQ(offsetof(SonarImage, word1), 16u);
  EXPECT_EQ(offsetof(SonarImage, word8), 44u);
  EXPECT_EQ(offsetof(SonarImage, double1), 48u);
}

TEST(SonarImage, AssignmentCopiesEveryField) {
  SonarImage source;
  source.word0 = 0xFFFFFFFFu;
  source.double0 = std::numeric_limits<double>::quiet_NaN();
  source.word1 = 1;
  source.word8 = 8;
  source.double1 = -2.5;
  SonarImage target;
  target = source;
  EXPECT_EQ(target.word0, 0xFFFFFFFFu);
  EXPECT_TRUE(std::isnan(target.double0));
  EXPECT_EQ(target.word1, 1u);
  EXPECT_EQ(target.word8, 8u);
  EXPECT_EQ(target.double1, -2.5);
}

}  // namespace
