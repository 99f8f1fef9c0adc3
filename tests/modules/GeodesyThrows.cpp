// A geodesy plug-in whose export registers one creator and then fails, for the tests of the loader.
#include <stdexcept>

#include "zelbase/geodesy/ZelGeoCoordSysList.h"

namespace {

class NoCreator : public ZelCoordSysICreator {
 public:
  ZelGeoCoordSysBase* Create() override { return nullptr; }
};

class OwnFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

int g_calls = 0;

}  // namespace

extern "C" __attribute__((visibility("default"))) void RegisterCoordSys() {
  if (++g_calls == 1) ZelGeoCoordSysList::GetCoordSysList().RegisterGeoCoordSys("before the failure", new NoCreator);
  if (g_calls == 2) throw g_calls;  // anything may be thrown
  if (g_calls < 4) throw OwnFailure("the data files are missing");
}
