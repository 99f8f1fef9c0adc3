// What a program finds on the clipboard, or what is dropped on one of its windows. Neighbours: COleDataSource.h for the other side;
// PlatformClipboard.h, the clipboard itself.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "zelbase/platform/CFile.h"
#include "zelbase/platform/FORMATETC.h"
#include "zelbase/platform/HGLOBAL.h"
#include "zelbase/platform/PlatformClipboard.h"
#include "zelbase/platform/ZelBaseApi.h"

class COleDataSource;

// Attached to a content, or to none at first; without one there is no data. Copies are attached to the same. One thread at a time.
class ZELBASE_API COleDataObject {
 public:
  COleDataObject();

  // What the source offers now; later changes of it are not seen.
  void Attach(const COleDataSource& source);
  void Attach(std::shared_ptr<const ClipboardContent> content);

  // What is on the clipboard now. False when it is empty, and then the object is attached to nothing.
  bool AttachClipboard();

  void Release();

  // Walks over what is offered: GetNextFormat gives one after the other, and false, `details` untouched, behind the last and for a
  // null pointer. A walk that was not begun has nothing.
  void BeginEnumFormats();
  bool GetNextFormat(FORMATETC* details);

  bool IsDataAvailable(unsigned short format) const;

  // The block of that format, or a file over a copy of its bytes; null when there is none.
  HGLOBAL GetGlobalData(unsigned short format) const;
  std::unique_ptr<CFile> GetFileData(unsigned short format) const;

 private:
  std::shared_ptr<const ClipboardContent> m_content;
  std::vector<FORMATETC> m_formats;
  std::size_t m_next = 0;
};
