// Collects what a program puts on the clipboard or lets be dragged away. Neighbours: COleDataObject.h for the other side;
// PlatformClipboard.h, the clipboard itself.
#pragma once

#include <memory>

#include "zelbase/platform/CObject.h"
#include "zelbase/platform/FORMATETC.h"
#include "zelbase/platform/HGLOBAL.h"
#include "zelbase/platform/PlatformClipboard.h"
#include "zelbase/platform/ZelBaseApi.h"

// Blocks of bytes by format, one block a format. One thread at a time. Not copyable.
class ZELBASE_API COleDataSource : public CObject {
 public:
  COleDataSource();
  ~COleDataSource() override;
  COleDataSource(const COleDataSource&) = delete;
  COleDataSource& operator=(const COleDataSource&) = delete;

  // Offers the block under that number, in place of an earlier one. Of `details` number and medium are replaced; null stands for
  // the usual ones. The number 0 and a null block are ignored.
  void CacheGlobalData(unsigned short format, HGLOBAL block, const FORMATETC* details = nullptr);

  // Takes all offers back. What was handed out before stays as it was.
  void Empty();

  // Puts what is offered now on the clipboard; it stays there when this object goes. False when the clipboard does not take it.
  bool SetClipboard() const;

  // What is offered now; never null.
  std::shared_ptr<const ClipboardContent> Content() const;

 private:
  class Offers;
  std::shared_ptr<const Offers> m_offers;
};
