// The program that shows help documents to a person. Neighbours: RecordingHelp.h, the stand-in;
// zelbase/units/HelpProvider.h, which knows the document and the topic.
#pragma once

#include <optional>
#include <string>

#include "zelbase/platform/PlatformService.h"
#include "zelbase/platform/ZelBaseApi.h"

class ZELBASE_API PlatformHelp {
 public:
  virtual ~PlatformHelp() = default;

  // Shows the document `file` ("\" or "/" as separator) at `topic`, or at its first page. Returns when the viewer has been
  // started and does not wait for its end. False when there is no viewer, no such file, or the viewer does not start.
  virtual bool Show(const std::string& file, const std::optional<std::string>& topic) = 0;

  // A sound that tells a person of a request that failed.
  virtual void Beep() = 0;

  // This system's help; never destroyed. The viewer is the program that the environment variable ZELBASE_HELP_VIEWER names
  // by its absolute path, started with the file and, if there is one, the topic as its arguments. It is looked for at the
  // first Show of the process and not again, whatever came of it. Without the variable there is none. The sound is the bell
  // of the terminal that standard error goes to; elsewhere there is none.
  static PlatformHelp& System();
};
