// The registry of tools: modules register a creator for a name, applications ask for a tool of that name. Neighbours:
// ToolICreator.h for what is registered, ZelTool.h for what comes out.
#pragma once

#include <string>
#include <vector>

#include "zelbase/actions/ToolICreator.h"
#include "zelbase/actions/ZelTool.h"
#include "zelbase/frame/detail/CreatorMap.h"
#include "zelbase/platform/ZelBaseApi.h"

// Owns its creators: they are destroyed with the list. Copies share: they name the same creators, and the last list that
// holds a creator destroys it. Names are compared case-sensitively.
//
//   CToolList::GetToolList().RegisterTool("Ruler", new RulerCreator);               // at start-up
//   std::unique_ptr<ZelTool> tool(CToolList::GetToolList().Create("Ruler"));        // later
//
// Nothing is locked but the first GetToolList: registration belongs to the start (CBaseInitializer::RegisterTools), when one
// thread runs. After it any number of threads may create, as far as the creators allow it.
class ZELBASE_API CToolList {
 public:
  CToolList() = default;
  CToolList(const CToolList&) = default;
  CToolList& operator=(const CToolList&) = default;

  virtual ~CToolList();

  // The one list, made at first use. At process exit its creators are destroyed, which needs their code still loaded. Other
  // destructors at exit may still ask for the list.
  static CToolList& GetToolList();

  // Stores the creator under `name` and owns it from now on, also when memory runs out (std::bad_alloc): it is destroyed then,
  // unless it serves another name already. The first one of a name wins: a later one is refused without a word, is not
  // destroyed and stays the caller's. A null creator is ignored. One creator may serve several names.
  void RegisterTool(const std::string& name, ToolICreator* creator);

  // A new tool, which the caller owns. Null when the name is not registered, or when its creator gives none. One look-up, and no
  // copy of the name.
  ZelTool* Create(const std::string& name);

  // Puts the registered names, in ascending order of their bytes, in place of what `names` holds.
  void GetToolNames(std::vector<std::string>& names) const;

 private:
  zelbase::detail::CreatorMap<std::string, ToolICreator> m_creators;
};
