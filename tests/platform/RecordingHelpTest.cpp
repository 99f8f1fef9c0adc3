#include "zelbase/platform/RecordingHelp.h"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

namespace {

TEST(RecordingHelp, KeepsWhatItWasAskedForAndAnswersWhatItWasTold) {
  RecordingHelp help;
  {
    const PlatformOverride<PlatformHelp> guard(help);
    PlatformHelp& current = PlatformService<PlatformHelp>::Current();
    EXPECT_TRUE(current.Show("C:\\a.chm", std::nullopt));
    help.answer = false;
    EXPECT_FALSE(current.Show("C:\\b.chm", "topic"));
    EXPECT_FALSE(current.Show("C:\\b.chm", ""));
    current.Beep();
  }
  EXPECT_NE(&PlatformService<PlatformHelp>::Current(), &help);
  EXPECT_EQ(help.requests, (std::vector<RecordingHelp::Request>{{"C:\\a.chm", std::nullopt}, {"C:\\b.chm", "topic"}, {"C:\\b.chm", ""}}));
  EXPECT_EQ(help.beeps, 1);
}

}  // namespace
