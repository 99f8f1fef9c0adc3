// A geodesy plug-in that guards nothing, for the tests of the loader: each call of its export registers two creators under
// one type in each registry. The first of each is taken; the refused ones stay the plug-in's, which destroys them at exit. A
// creator that goes writes a letter: a taken one "t", a refused one "r".
#include <cstdio>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "zelbase/geodesy/GeoidModelList.h"
#include "zelbase/geodesy/ZelGeoCoordSysList.h"
#include "zelbase/geodesy/ZelGeoDatabaseBaseList.h"
#include "zelbase/geodesy/ZelGeoStaticDatabaseList.h"

namespace {

// Makes nothing, and says its letter when it goes.
template <class Creator, class Product>
class Telling : public Creator {
 public:
  explicit Telling(char letter) : m_letter(letter) {}
  ~Telling() override { std::fputc(m_letter, stdout); }
  Product* Create() override { return nullptr; }

 private:
  char m_letter;
};

// Registers two, of which the registry takes the first one if `isFirst`, otherwise none; keeps the refused.
template <class Creator, class Product, class Register>
void RegisterTwo(bool isFirst, Register registerOne) {
  static std::vector<std::unique_ptr<Creator>> refused;
  for (const bool taken : {isFirst, false}) {
    auto creator = std::make_unique<Telling<Creator, Product>>(taken ? 't' : 'r');
    registerOne(creator.get());
    if (taken) {
      static_cast<void>(creator.release());
    } else {
      refused.push_back(std::move(creator));
    }
  }
}

}  // namespace

extern "C" __attribute__((visibility("default"))) void RegisterCoordSys() {
  static bool isFirst = true;
  RegisterTwo<ZelCoordSysICreator, ZelGeoCoordSysBase>(
      isFirst, [](auto* creator) { ZelGeoCoordSysList::GetCoordSysList().RegisterGeoCoordSys("twice", creator); });
  RegisterTwo<GeoDatabaseICreator, ZelGeoDatabaseBase>(
      isFirst, [](auto* creator) { ZelGeoDatabaseBaseList::GetGeoDatabaseList().RegisterGeoDatabase("twice", creator); });
  RegisterTwo<GeoStaticICreator, ZelGeoStaticDataBase>(
      isFirst, [](auto* creator) { ZelGeoStaticDatabaseList::GetGeoStaticDataList().RegisterGeoStaicDatabase("twice", creator); });
  RegisterTwo<GeoidModelICreator, GeoidModel>(
      isFirst, [](auto* creator) { GeoidModelList::GetGeoidModelList().RegisterGeoidModel("twice", 2, creator); });
  isFirst = false;
}
