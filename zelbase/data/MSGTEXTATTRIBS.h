// How a view shows the text of a message; this library stores and copies it, and the views give it its meaning. Neighbours:
// CMsgViewEx.h holds one; DATATEXTATTRIBS.h, the same of a data item.
#pragma once

#include <string>

#include "zelbase/platform/ZelBaseApi.h"

// A plain record; a new one has an empty text and zeros.
struct ZELBASE_API MSGTEXTATTRIBS {
  std::string attribText;
  unsigned char attribFlag1 = 0;
  unsigned char attribFlag2 = 0;
  unsigned int attrib3 = 0;
};
