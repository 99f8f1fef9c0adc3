#include "zelbase/comms/CNetSettings.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <type_traits>
#include <vector>

namespace {

void ExpectDefaults(const CNetSettings& settings) {
  EXPECT_EQ(settings.GetPortNo(), 1u);
  EXPECT_EQ(settings.GetLocalPort(), 800u);
  EXPECT_EQ(settings.GetHostAdress(), "");
  EXPECT_EQ(settings.GetHostPort(), 100u);
  EXPECT_EQ(settings.GetName(), "");
  EXPECT_FALSE(settings.GetAutoHostPort());
  EXPECT_EQ(settings.GetProtocol(), 0);
  EXPECT_EQ(settings.GetMulticastAdress(), "");
  EXPECT_FALSE(settings.GetUseMulticast());
}

// Each changes one field from its default.
const std::vector<std::function<void(CNetSettings&)>> kChanges = {[](CNetSettings& s) { s.SetPortNo(2); },
                                                                  [](CNetSettings& s) { s.SetLocalPort(4294967295u); },
                                                                  [](CNetSettings& s) { s.SetHostAdress("10.0.0.1"); },
                                                                  [](CNetSettings& s) { s.SetHostPort(0); },
                                                                  [](CNetSettings& s) { s.SetName("Sonar"); },
                                                                  [](CNetSettings& s) { s.SetAutoHostPort(true); },
                                                                  [](CNetSettings& s) { s.SetProtocol(-1); },
                                                                  [](CNetSettings& s) { s.SetMulticastAdress("239.0.0.1"); },
                                                                  [](CNetSettings& s) { s.SetUseMulticast(true); }};

CNetSettings AllChanged() {
  CNetSettings settings;
  for (const auto& change : kChanges) change(settings);
  return settings;
}

TEST(CNetSettings, BeginsWithTheDefaults) { ExpectDefaults(CNetSettings()); }

TEST(CNetSettings, HasAVirtualDestructor) { EXPECT_TRUE(std::has_virtual_destructor_v<CNetSettings>); }

TEST(CNetSettings, HoldsWhatIsSet) {
  const CNetSettings settings = AllChanged();
  EXPECT_EQ(settings.GetPortNo(), 2u);
  EXPECT_EQ(settings.GetLocalPort(), 4294967295u);
  EXPECT_EQ(settings.GetHostAdress(), "10.0.0.1");
  EXPECT_EQ(settings.GetHostPort(), 0u);
  EXPECT_EQ(settings.GetName(), "Sonar");
  EXPECT_TRUE(settings.GetAutoHostPort());
  EXPECT_EQ(settings.GetProtocol(), -1);
  EXPECT_EQ(settings.GetMulticastAdress(), "239.0.0.1");
  EXPECT_TRUE(settings.GetUseMulticast());
}

TEST(CNetSettings, ResetToDefaultsPutsEveryDefaultBack) {
  CNetSettings settings = AllChanged();
  settings.ResetToDefaults();
  ExpectDefaults(settings);
  EXPECT_TRUE(settings == CNetSettings());
}

TEST(CNetSettings, EveryFieldIsComparedAndCopied) {
  for (const auto& change : kChanges) {
    CNetSettings settings;
    change(settings);
    EXPECT_FALSE(settings == CNetSettings());
    EXPECT_TRUE(settings != CNetSettings());
    const CNetSettings copied(settings);
    CNetSettings assigned;
    assigned = settings;
    EXPECT_TRUE(copied == settings);
    EXPECT_TRUE(assigned == settings);
  }
}

TEST(CNetSettings, TextsAreComparedByCase) {
  CNetSettings a;
  CNetSettings b;
  a.SetName("sonar");
  b.SetName("Sonar");
  EXPECT_FALSE(a == b);
}

}  // namespace
