#include "zelbase/config/detail/QuietOpen.h"

#include "zelbase/platform/CFile.h"
#include "zelbase/platform/CFileException.h"

namespace zelbase::detail {

bool OpenQuietly(FileObject& settings, const std::string& fileName) {
  settings.FileClose();
  CFile file;
  if (!file.Open(fileName, CFile::modeRead | CFile::shareDenyWrite)) return false;
  try {
    return settings.FileOpen(file, fileName);
  } catch (const CFileException&) {
    settings.FileClose();
    return false;
  }
}

}  // namespace zelbase::detail
