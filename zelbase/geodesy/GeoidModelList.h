// The registry of geoid models: modules register a creator under a name and a type number, and ask for a model by either.
// Neighbours: GeoidModelICreator.h for what is registered, GeoidModel.h for what comes out, GeoidmodelTypeKeys of
// frame/KeyTables.h for the keys of the types.
#pragma once

#include <string>
#include <vector>

#include "zelbase/frame/detail/CreatorMap.h"
#include "zelbase/geodesy/GeoidModel.h"
#include "zelbase/geodesy/GeoidModelICreator.h"
#include "zelbase/platform/ZelBaseApi.h"

// Two maps, by name and by type, independent of each other. The one by type owns: its creators are destroyed with the list,
// each once however many types and names it has. A creator that has only a name is never destroyed by the list and must
// outlive it. Copies share: they name the same creators, and the last list that owns a creator destroys it. Names are
// compared case-sensitively.
//
//   GeoidModelList::GetGeoidModelList().RegisterGeoidModel("EGM2008", 18, new Egm2008Creator);       // at start-up
//   std::unique_ptr<GeoidModel> model(GeoidModelList::GetGeoidModelList().Create("EGM2008"));   // later
//
// Nothing is locked but the first GetGeoidModelList: registration belongs to the start, when one thread runs. After it any
// number of threads may create, as far as the creators allow it.
class ZELBASE_API GeoidModelList {
 public:
  GeoidModelList() = default;
  GeoidModelList(const GeoidModelList&) = default;
  GeoidModelList& operator=(const GeoidModelList&) = default;

  virtual ~GeoidModelList();

  // The one list, made at first use. At process exit its creators are destroyed, which needs their code still loaded. Other
  // destructors at exit may still ask for the list.
  static GeoidModelList& GetGeoidModelList();

  // Stores the creator under `name` and under `type`. In each map the first one wins, without a word, and a known key in one
  // does not stop the other, so that the two may come to disagree. A creator refused by type stays the caller's, even when
  // its name was new. A null creator is ignored. When memory runs out (std::bad_alloc), a creator that was new by type is destroyed,
  // or stands by its type without the name.
  void RegisterGeoidModel(std::string name, unsigned short type, GeoidModelICreator* creator);

  // A new model, which the caller owns. Null when the type or the name is not registered, or when its creator gives none.
  // What the creator throws passes.
  GeoidModel* Create(const unsigned short& type);
  GeoidModel* Create(const std::string& name);

  // Empties `names` and fills it with the registered names in ascending order (by bytes).
  void GetGeoidModelNames(std::vector<std::string>& names);

 private:
  void RemoveAll();

  zelbase::detail::CreatorMap<std::string, GeoidModelICreator> m_names;
  zelbase::detail::CreatorMap<unsigned short, GeoidModelICreator> m_types;
};
