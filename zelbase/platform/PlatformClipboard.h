// The clipboard of the desktop, and the numbers of its formats. Neighbours: MemoryClipboard.h, the one inside the process;
// COleDataSource.h and COleDataObject.h, through which programs use either.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "zelbase/platform/FORMATETC.h"
#include "zelbase/platform/HGLOBAL.h"
#include "zelbase/platform/PlatformService.h"
#include "zelbase/platform/ZelBaseApi.h"

// What lies on a clipboard, or is dragged from one window to another: blocks of bytes by format. A desktop's adapter may fetch
// a block when it is asked for.
class ZELBASE_API ClipboardContent {
 public:
  virtual ~ClipboardContent() = default;

  // What is offered, in the order of the offers.
  virtual std::vector<FORMATETC> Formats() const = 0;

  // The block of that format; null when it is not offered.
  virtual HGLOBAL Block(unsigned short format) const = 0;
};

// The default of this system is one MemoryClipboard for the process: a host on a desktop puts its own in force. Any thread.
class ZELBASE_API PlatformClipboard {
 public:
  virtual ~PlatformClipboard() = default;

  // The number of the format of that name, from 0xC000 to 0xFFFF: one name, one number, without regard to case. 0 for an empty
  // name, and when there are no more numbers.
  virtual unsigned int RegisterFormat(const std::string& name) = 0;

  // Puts the content on the clipboard in place of what is there; null empties it. False when the clipboard does not take it.
  virtual bool Put(std::shared_ptr<const ClipboardContent> content) = 0;

  // What is there, or null.
  virtual std::shared_ptr<const ClipboardContent> Get() = 0;

  // This system's clipboard; never destroyed.
  static PlatformClipboard& System();
};
