// The four registries of geodesy/ under one set of names, and creators that note what happens to them. Neighbour:
// RegistryTests.h, what holds for three of them alike.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "zelbase/geodesy/GeoidModelList.h"
#include "zelbase/geodesy/SpareGeoCoordSys.h"
#include "zelbase/geodesy/SpareGeoDatabase.h"
#include "zelbase/geodesy/SpareGeoStaticData.h"
#include "zelbase/geodesy/ZelGeoCoordSysList.h"
#include "zelbase/geodesy/ZelGeoDatabaseBaseList.h"
#include "zelbase/geodesy/ZelGeoStaticDatabaseList.h"

// What a test's objects have besides: a name to know them by, and a count of those that have gone.
class NamedObject {
 public:
  NamedObject(std::string objectName, int* destroyed) : name(std::move(objectName)), m_destroyed(destroyed) {}
  NamedObject(const NamedObject&) = delete;
  NamedObject& operator=(const NamedObject&) = delete;
  virtual ~NamedObject() {
    if (m_destroyed != nullptr) ++*m_destroyed;
  }

  const std::string name;

 private:
  int* m_destroyed;
};

struct CoordSysRegistry {
  using List = ZelGeoCoordSysList;
  using Creator = ZelCoordSysICreator;
  using Product = ZelGeoCoordSysBase;
  class Object : public SpareGeoCoordSys, public NamedObject {
   public:
    using NamedObject::NamedObject;
    bool GetLinearUnit(double&) override { return false; }
  };
  static List& One() { return List::GetCoordSysList(); }
  static void Register(List& list, const std::string& type, Creator* creator) { list.RegisterGeoCoordSys(type, creator); }
  static bool UnRegister(List& list, const std::string& type) { return list.UnRegisterGeoCoordSys(type); }
  static int Types(List& list, std::vector<std::string>& types) { return list.GetCoordSysTypes(types); }
};

struct DatabaseRegistry {
  using List = ZelGeoDatabaseBaseList;
  using Creator = GeoDatabaseICreator;
  using Product = ZelGeoDatabaseBase;
  class Object : public SpareGeoDatabase, public NamedObject {
   public:
    using NamedObject::NamedObject;
    bool IsReady() override { return true; }
  };
  static List& One() { return List::GetGeoDatabaseList(); }
  static void Register(List& list, const std::string& type, Creator* creator) { list.RegisterGeoDatabase(type, creator); }
  static bool UnRegister(List& list, const std::string& type) { return list.UnRegisterGeoDatabase(type); }
  static int Types(List& list, std::vector<std::string>& types) { return list.GetGeoDatabaseTypes(types); }
};

struct StaticDataRegistry {
  using List = ZelGeoStaticDatabaseList;
  using Creator = GeoStaticICreator;
  using Product = ZelGeoStaticDataBase;
  class Object : public SpareGeoStaticData, public NamedObject {
   public:
    using NamedObject::NamedObject;
  };
  static List& One() { return List::GetGeoStaticDataList(); }
  static void Register(List& list, const std::string& type, Creator* creator) { list.RegisterGeoStaicDatabase(type, creator); }
  static bool UnRegister(List& list, const std::string& type) { return list.UnRegisterGeoStaicDatabase(type); }
  static int Types(List& list, std::vector<std::string>& types) { return list.GetGeoStaticTypes(types); }
};

// By name; each name has a type number of its own, its first byte.
struct GeoidRegistry {
  using List = GeoidModelList;
  using Creator = GeoidModelICreator;
  using Product = GeoidModel;
  class Object : public GeoidModel, public NamedObject {
   public:
    using NamedObject::NamedObject;
    bool IsReady() override { return true; }
  };
  static List& One() { return List::GetGeoidModelList(); }
  static void Register(List& list, const std::string& name, Creator* creator) {
    list.RegisterGeoidModel(name, static_cast<unsigned char>(name[0]), creator);
  }
};

// Makes objects of a name, none for an empty one, and counts its own end.
template <class Registry>
class NotingCreator : public Registry::Creator {
 public:
  explicit NotingCreator(std::string name = "made", int* destroyed = nullptr) : m_name(std::move(name)), m_destroyed(destroyed) {}
  NotingCreator(const NotingCreator&) = delete;
  NotingCreator& operator=(const NotingCreator&) = delete;
  ~NotingCreator() override {
    if (m_destroyed != nullptr) ++*m_destroyed;
    if (onEnd) onEnd();
  }
  typename Registry::Product* Create() override {
    if (onCreate) onCreate();
    return m_name.empty() ? nullptr : new typename Registry::Object(m_name, objectsDestroyed);
  }

  std::function<void()> onCreate;
  std::function<void()> onEnd;
  int* objectsDestroyed = nullptr;

 private:
  std::string m_name;
  int* m_destroyed;
};

// The name of an object that a creator above has made, which goes; "none" for null.
template <class Product>
std::string NameOf(Product* made) {
  const std::unique_ptr<Product> object(made);
  const auto* const named = dynamic_cast<const NamedObject*>(object.get());
  return named == nullptr ? "none" : named->name;
}
