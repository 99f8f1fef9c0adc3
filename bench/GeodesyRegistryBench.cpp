// Making a coordinate system by its type's name, with 10, 100 and 1000 types registered, against a registry
// written down in the plainest way (a std::map from name to creator, the name taken by value) and against a
// std::unordered_map of factories. The names are as long and as alike as those of real catalogues. Ours is to
// be no slower than the plain one, within a tenth: it copies no name, and holds the creator while it works,
// which may take itself out. The hash map is for information: it cannot list its types in order.

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "bench/Compare.h"
#include "zelbase/geodesy/SpareGeoCoordSys.h"
#include "zelbase/geodesy/ZelGeoCoordSysList.h"

namespace {

class System : public SpareGeoCoordSys {
 public:
  bool GetLinearUnit(double& factor) override {
    factor = 1.0;
    return true;
  }
};

class Creator : public ZelCoordSysICreator {
 public:
  ZelGeoCoordSysBase* Create() override { return new System; }
};

class PlainRegistry {
 public:
  void Register(std::string type, std::unique_ptr<ZelCoordSysICreator> creator) { m_creators.emplace(std::move(type), std::move(creator)); }
  ZelGeoCoordSysBase* Create(std::string type) {
    const auto found = m_creators.find(type);
    return found == m_creators.end() ? nullptr : found->second->Create();
  }

 private:
  std::map<std::string, std::unique_ptr<ZelCoordSysICreator>> m_creators;
};

std::vector<std::string> Names(int count) {
  std::vector<std::string> names;
  for (int i = 0; i < count; ++i) names.push_back("Projected system, zone " + std::to_string(i * 7919 % count));
  return names;
}

void Run(Comparison& table, int count) {
  const std::vector<std::string> names = Names(count);
  ZelGeoCoordSysList list;
  std::unordered_map<std::string, std::function<std::unique_ptr<ZelGeoCoordSysBase>()>> hashed;
  PlainRegistry plain;
  for (const std::string& name : names) {
    list.RegisterGeoCoordSys(name, new Creator);
    hashed[name] = [] { return std::make_unique<System>(); };
    plain.Register(name, std::make_unique<Creator>());
  }
  const auto ours = [&] {
    for (const std::string& name : names) Keep(std::unique_ptr<ZelGeoCoordSysBase>(list.Create(name)));
  };
  const auto byMap = [&] {
    for (const std::string& name : names) Keep(std::unique_ptr<ZelGeoCoordSysBase>(plain.Create(name)));
  };
  const auto byHash = [&] {
    for (const std::string& name : names) Keep(hashed.find(name)->second());
  };
  const std::string types = std::to_string(count) + " types";
  table.Row(types + ", plain registry", count, "", 0.9, ours, byMap);
  table.Row(types + ", std::unordered_map", count, "", Comparison::kNoBar, ours, byHash);
}

}  // namespace

int main() {
  Comparison table("a coordinate system made by name");
  for (const int count : {10, 100, 1000}) Run(table, count);
  return table.Finish();
}
