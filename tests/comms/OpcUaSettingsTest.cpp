#include "zelbase/comms/OpcUaSettings.h"

#include <gtest/gtest.h>

#include <functional>
#include <type_traits>
#include <vector>

namespace {

void ExpectDefaults(const OpcUaSettings& settings) {
  EXPECT_EQ(settings.GetHostName(), "localhost");
  EXPECT_EQ(settings.GetPortName(), "4841");
  EXPECT_EQ(settings.GetCertificate(), "");
  EXPECT_EQ(settings.GetSecurityPolicy(), 0);
  EXPECT_EQ(settings.GetMessageSecurityMode(), 1);
}

// Each changes one field from its default.
const std::vector<std::function<void(OpcUaSettings&)>> kChanges = {
    [](OpcUaSettings& s) { s.SetHostName("plc"); }, [](OpcUaSettings& s) { s.SetPortName("04841"); },
    [](OpcUaSettings& s) { s.SetGetCertificate("own.der"); }, [](OpcUaSettings& s) { s.SetSecurityPolicy(3); },
    [](OpcUaSettings& s) { s.SetMessageSecurityMode(0); }};

OpcUaSettings AllChanged() {
  OpcUaSettings settings;
  for (const auto& change : kChanges) change(settings);
  return settings;
}

TEST(OpcUaSettings, BeginsWithTheDefaults) { ExpectDefaults(OpcUaSettings()); }

TEST(OpcUaSettings, HasAVirtualDestructor) { EXPECT_TRUE(std::has_virtual_destructor_v<OpcUaSettings>); }

TEST(OpcUaSettings, HoldsWhatIsSet) {
  const OpcUaSettings settings = AllChanged();
  EXPECT_EQ(settings.GetHostName(), "plc");
  EXPECT_EQ(settings.GetPortName(), "04841");
  EXPECT_EQ(settings.GetSecurityPolicy(), 3);
  EXPECT_EQ(settings.GetMessageSecurityMode(), 0);
}

TEST(OpcUaSettings, SetGetCertificateSetsTheCertificate) {
  OpcUaSettings settings;
  settings.SetGetCertificate("own.der");
  EXPECT_EQ(settings.GetCertificate(), "own.der");
}

TEST(OpcUaSettings, ResetToDefaultsPutsEveryDefaultBack) {
  OpcUaSettings settings = AllChanged();
  settings.ResetToDefaults();
  ExpectDefaults(settings);
}

TEST(OpcUaSettings, EveryFieldIsComparedAndCopied) {
  for (const auto& change : kChanges) {
    OpcUaSettings settings;
    change(settings);
    EXPECT_FALSE(settings == OpcUaSettings());
    const OpcUaSettings copied(settings);
    OpcUaSettings assigned;
    assigned = settings;
    EXPECT_TRUE(copied == settings);
    EXPECT_TRUE(assigned == settings);
  }
}

}  // namespace
