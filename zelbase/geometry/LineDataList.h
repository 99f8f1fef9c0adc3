// The registry of the kinds of profile lines: modules register a creator for a type number, views ask for a line of that type.
// Neighbours: LineDataICreator.h for what is registered, LineData.h for what comes out.
#pragma once

#include <string>

#include "zelbase/frame/detail/CreatorMap.h"
#include "zelbase/geometry/LineData.h"
#include "zelbase/geometry/LineDataICreator.h"
#include "zelbase/platform/ZelBaseApi.h"

// Owns its creators: they are destroyed with the list. Copies share: they name the same creators, and the last list that
// holds a creator destroys it.
//
//   LineDataList::GetLineDataList().RegisterLineData(7, new DesignLineCreator);          // at start-up
//   std::unique_ptr<LineData> line(LineDataList::GetLineDataList().Create(7, "axis"));   // later
//
// Nothing is locked but the first GetLineDataList: registration belongs to the start, when one thread runs. After it any
// number of threads may create, as far as the creators allow it.
class ZELBASE_API LineDataList {
 public:
  LineDataList() = default;
  LineDataList(const LineDataList&) = default;
  LineDataList& operator=(const LineDataList&) = default;

  virtual ~LineDataList();

  // The one list, made at first use. At process exit its creators are destroyed, which needs their code still loaded. Other
  // destructors at exit may still ask for the list.
  static LineDataList& GetLineDataList();

  // Stores the creator for `type` and owns it from now on, also when memory runs out (std::bad_alloc): it is destroyed then,
  // unless it serves another type already. The first one of a type wins: a later one is refused without a word, is not
  // destroyed and stays the caller's. A null creator is ignored. One creator may serve several types.
  void RegisterLineData(unsigned int type, LineDataICreator* creator);

  // A new line, which the caller owns. Null when the type is not registered, or when its creator gives none.
  LineData* Create(unsigned int type, const std::string& name);

 private:
  zelbase::detail::CreatorMap<unsigned int, LineDataICreator> m_creators;
};
