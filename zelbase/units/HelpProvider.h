// Shows the suite's help, at the topic that belongs to a window. Neighbours: zelbase/platform/PlatformHelp.h, the program
// that shows it; zelbase/platform/CWnd.h, the window.
#pragma once

#include <string>

#include "zelbase/config/FileObject.h"
#include "zelbase/platform/CWnd.h"
#include "zelbase/platform/ThreadSafety.h"
#include "zelbase/platform/ZelBaseApi.h"
#include "zelbase/platform/detail/Mutex.h"

// The help document is "html help\ZELCORE.chm" in the folder of the program, until SetHelpFilename chooses another. Which
// topic belongs to which window stands beside the program in "zelcorehelp.ini", so that it can change without a new build:
//
//   [ZELCOREHelp]
//   CDepthView = depth.htm
//
// The table is read at the first GetInstance and not again; when it is missing, which nobody is told, every key opens the
// first page.
//
// Threads: all operations may be called from any thread. The object stays until the process has ended.
class ZELBASE_API HelpProvider {
 public:
  // The one provider, made at first use.
  static HelpProvider& GetInstance();

  virtual ~HelpProvider() = default;
  HelpProvider(const HelpProvider&) = delete;
  HelpProvider& operator=(const HelpProvider&) = delete;

  // From now on the document is `name` in "html help\" in the folder of the program. Opens nothing.
  void SetHelpFilename(const std::string& name);

  // Shows the document at the topic that the table has for `key`, white space around either not counting. At its first page
  // when the key is empty or not in the table, or has an empty topic. When it cannot be shown: one beep, and false.
  bool ShowHelpfile(const std::string& key);

  // The same for the class of `window`: the part of RuntimeClassName from its first blank on, or all of it when there is no
  // blank. Null is the first page.
  bool ShowHelpfile(CWnd* window);

 private:
  HelpProvider();

  static std::string GetAppPath();
  static std::string Trim(const std::string& text);
  bool ShowHelpfileImp(const std::string& topic);

  zelbase::detail::Mutex m_mutex;
  std::string m_helpFile ZELBASE_GUARDED_BY(m_mutex);
  FileObject m_topics;
};
