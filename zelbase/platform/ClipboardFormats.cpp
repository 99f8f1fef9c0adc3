#include "zelbase/platform/ClipboardFormats.h"

#include "zelbase/platform/PlatformClipboard.h"

unsigned int RegisterClipboardFormatA(const char* name) {
  if (name == nullptr) return 0;
  return PlatformService<PlatformClipboard>::Current().RegisterFormat(name);
}
