// A list of files on its way over the clipboard or onto a window. Neighbours: CWDClipboardData.h, which moves it;
// zelbase/platform/DroppedFiles.h, which reads its block; CCF_DataInfo.h and CCF_DispInfo.h, the other payloads.
#pragma once

#include <string>
#include <vector>

#include "zelbase/platform/CObject.h"
#include "zelbase/platform/CPoint.h"
#include "zelbase/platform/CRuntimeClass.h"
#include "zelbase/platform/ZelBaseApi.h"

class CArchive;

// Holds file names, the point of the drop in pixels and whether that point lies outside the window's client area; at first no
// names, (0, 0) and 0. Can be made by its name, "CCF_HDROP". One thread at a time.
class ZELBASE_API CCF_HDROP : public CObject {
 public:
  static CObject* CreateObject();
  static CRuntimeClass* GetThisClass();
  CRuntimeClass* GetRuntimeClass() const override;

  // Puts a name behind the last; null does nothing. An empty name ends the list for whoever reads the block.
  void AddFileName(const char* fileName);

  void AddDropPoint(CPoint point, int nonClientFlag);

  int GetCount() const { return static_cast<int>(m_fileNames.size()); }

  // Empty for an index that is none.
  std::string GetFileName(int index) const;

  // Writes 20 bytes (the numbers 20, x, y, flag and 0, of 4 bytes each, little-endian), each name with a zero byte, and one zero byte
  // more, also without names. Reading does nothing: CWDClipboardData adds the names.
  void Serialize(CArchive& archive) override;

 private:
  std::vector<std::string> m_fileNames;
  CPoint m_dropPoint;
  int m_nonClientFlag = 0;
};
