// How a block of data is offered on a clipboard. Neighbours: COleDataSource.h, which offers; COleDataObject.h, which lists offers;
// ClipboardFormats.h, the numbers.
#pragma once

#include "zelbase/platform/ZelBaseApi.h"

// A plain record. This library fills in the number and hands on the rest; data is found by its number alone.
struct ZELBASE_API FORMATETC {
  unsigned short cfFormat = 0;  // the format's number
  void* ptd = nullptr;          // target device, not owned
  unsigned int dwAspect = 1;    // 1: the content itself
  int lindex = -1;              // -1: all of it
  unsigned int tymed = 1;       // 1: a block of memory
};
