// zel displays.

#include "tests/apps/ZelFixture.h"

TEST_F(Zel, DisplaysShowsTheViewsOfAFile) {
  const ProgramResult result = Run({"displays", Sample("displays/Displays.ini")});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_TRUE(Holds(result.output, "PlanView: Height = 960, Left = 0")) << result.output;
  EXPECT_TRUE(Holds(result.output, "HelmsmanView3D: Left = 1280, Title = , Width = 640")) << "an empty value is there";
}

TEST_F(Zel, DisplaysNamesASectionThatIsNoView) {
  const ProgramResult result = Run({"displays", Sample("displays/Unknown.ini"), Sample("displays/Displays.ini")});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_TRUE(Holds(result.errors, "no view type has the name \"SonarVeiw\"")) << result.errors;
  EXPECT_TRUE(Holds(result.output, "PlanView: Left = 0\n")) << "what is known is shown all the same";
  EXPECT_TRUE(Holds(Run({"displays", m_folder.File("none.ini")}).errors, "cannot open"));
}
