// The registry of message builders: drivers register a creator for a name, settings ask for a builder of that name. Neighbours:
// MessageBuilderICreator.h for what is registered, CMessageBuilder.h for what comes out.
#pragma once

#include <string>

#include "zelbase/data/CMessageBuilder.h"
#include "zelbase/data/MessageBuilderICreator.h"
#include "zelbase/frame/detail/CreatorMap.h"
#include "zelbase/platform/ZelBaseApi.h"

// Owns its creators: they are destroyed with the list. Copies share: they name the same creators, and the last list that
// holds a creator destroys it. Names are compared case-sensitively.
//
//   CMessageBuilderList::GetMessageBuilderList().RegisterMessageBuilder("Course", new CourseCreator);          // at start-up
//   std::unique_ptr<CMessageBuilder> builder(CMessageBuilderList::GetMessageBuilderList().Create("Course"));   // later
//
// Nothing is locked but the first GetMessageBuilderList: registration belongs to the start, when one thread runs. After it any
// number of threads may create, as far as the creators allow it.
class ZELBASE_API CMessageBuilderList {
 public:
  CMessageBuilderList() = default;
  CMessageBuilderList(const CMessageBuilderList&) = default;
  CMessageBuilderList& operator=(const CMessageBuilderList&) = default;

  virtual ~CMessageBuilderList();

  // The one list, made at first use. At process exit its creators are destroyed, which needs their code still loaded. Other
  // destructors at exit may still ask for the list.
  static CMessageBuilderList& GetMessageBuilderList();

  // Stores the creator under `name` and owns it from now on, also when memory runs out (std::bad_alloc): it is destroyed then,
  // unless it serves another name already. The first one of a name wins: a later one is refused without a word, is not
  // destroyed and stays the caller's. A null creator is ignored. One creator may serve several names.
  void RegisterMessageBuilder(const std::string& name, MessageBuilderICreator* creator);

  // Takes the name out and destroys its creator, unless another name or list still has it. False for an unknown name.
  bool UnRegisterMessageBuilder(const std::string& name);

  // A new builder, which the caller owns. Null when the name is not registered, or when its creator gives none. A creator that
  // takes its own name out meanwhile is destroyed when it has finished.
  CMessageBuilder* Create(const std::string& name);

 private:
  zelbase::detail::CreatorMap<std::string, MessageBuilderICreator> m_creators;
};
