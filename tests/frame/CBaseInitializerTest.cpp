#include "zelbase/frame/CBaseInitializer.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

class Plain : public CBaseInitializer {
 public:
  explicit Plain(bool& destroyed) : m_destroyed(destroyed) {}
  ~Plain() override { m_destroyed = true; }
  std::string GetName() const override { return "plain"; }

 private:
  bool& m_destroyed;
};

TEST(CBaseInitializer, PhasesDoNothingAndViewsAreRefused) {
  bool destroyed = false;
  const std::unique_ptr<CBaseInitializer> initializer = std::make_unique<Plain>(destroyed);
  CWinApp application;
  initializer->InitializeTemplates(&application);
  initializer->InitializeTemplates(nullptr);
  initializer->RegisterDevices();
  initializer->RegisterComps();
  initializer->RegisterLoggers();
  initializer->RegisterLayers();
  initializer->RegisterTools();
  EXPECT_FALSE(initializer->RegisterViews());
  initializer->RegisterActionGroups();
  initializer->RegisterActions();
  initializer->RegisterGeoidModel();
  EXPECT_EQ(initializer->GetName(), "plain");
  EXPECT_FALSE(destroyed);
}

TEST(CBaseInitializer, IsDestroyedThroughTheBase) {
  bool destroyed = false;
  std::unique_ptr<CBaseInitializer> initializer = std::make_unique<Plain>(destroyed);
  initializer.reset();
  EXPECT_TRUE(destroyed);
}

}  // namespace
