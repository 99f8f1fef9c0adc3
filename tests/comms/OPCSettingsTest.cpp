#include "zelbase/comms/OPCSettings.h"

#include <gtest/gtest.h>

#include <functional>
#include <type_traits>
#include <vector>

namespace {

void ExpectDefaults(const OPCSettings& settings) {
  EXPECT_EQ(settings.GetHostName(), "localhost");
  EXPECT_EQ(settings.GetServerName(), "");
  EXPECT_FALSE(settings.GetForce1());
  EXPECT_FALSE(settings.GetFSGateway());
}

// Each changes one field from its default.
const std::vector<std::function<void(OPCSettings&)>> kChanges = {
    [](OPCSettings& s) { s.SetHostName("Localhost"); }, [](OPCSettings& s) { s.SetServerName("Dredge.Server"); },
    [](OPCSettings& s) { s.SetForce1(true); }, [](OPCSettings& s) { s.SetFSGateway(true); }};

OPCSettings AllChanged() {
  OPCSettings settings;
  for (const auto& change : kChanges) change(settings);
  return settings;
}

TEST(OPCSettings, BeginsWithTheDefaults) { ExpectDefaults(OPCSettings()); }

TEST(OPCSettings, HasAVirtualDestructor) { EXPECT_TRUE(std::has_virtual_destructor_v<OPCSettings>); }

TEST(OPCSettings, HoldsWhatIsSet) {
  const OPCSettings settings = AllChanged();
  EXPECT_EQ(settings.GetHostName(), "Localhost");
  EXPECT_EQ(settings.GetServerName(), "Dredge.Server");
  EXPECT_TRUE(settings.GetForce1());
  EXPECT_TRUE(settings.GetFSGateway());
}

TEST(OPCSettings, ResetToDefaultsPutsEveryDefaultBack) {
  OPCSettings settings = AllChanged();
  settings.ResetToDefaults();
  ExpectDefaults(settings);
}

TEST(OPCSettings, EveryFieldIsComparedAndCopied) {
  for (const auto& change : kChanges) {
    OPCSettings settings;
    change(settings);
    EXPECT_FALSE(settings == OPCSettings());
    const OPCSettings copied(settings);
    OPCSettings assigned;
    assigned = settings;
    EXPECT_TRUE(copied == settings);
    EXPECT_TRUE(assigned == settings);
  }
}

}  // namespace
