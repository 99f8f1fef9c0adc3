#include "zelbase/sonar/TideFormats.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>
#include <vector>

namespace {

using Texts = std::vector<std::string>;

// Before main, as a host's static initialiser would.
const std::string g_early = TideDateFormats[4] + TideTimeFormats[1] + TideSeparators[1];

TEST(TideFormats, DatesTimesAndSeparatorsAreNumberedInThisOrder) {
  EXPECT_EQ(Texts(std::begin(TideDateFormats), std::end(TideDateFormats)), (Texts{"DMY", "DYM", "MDY", "MYD", "YMD", "YDM"}));
  EXPECT_EQ(Texts(std::begin(TideTimeFormats), std::end(TideTimeFormats)), (Texts{"HM", "HMS"}));
  EXPECT_EQ(Texts(std::begin(TideSeparators), std::end(TideSeparators)), (Texts{" ", "/", ":", "\\", ",", "-"}));
}

TEST(TideFormats, MayBeReadByAStaticInitialiser) { EXPECT_EQ(g_early, "YMDHMS/"); }

}  // namespace
