// How a display shows the text of a data item; this library stores and copies it, and the displays give it its meaning.
// Neighbours: CDataInfoEx.h holds one; MSGTEXTATTRIBS.h, the same of a message.
#pragma once

#include <string>

#include "zelbase/platform/ZelBaseApi.h"

// A plain record; a new one has zeros and an empty text.
struct ZELBASE_API DATATEXTATTRIBS {
  unsigned int attrib1 = 0;
  unsigned int attrib2 = 0;
  std::string attribText;
  unsigned char attribFlag1 = 0;
  unsigned char attribFlag2 = 0;
  unsigned int attrib3 = 0;
};
