// A tool: a feature of an application with a name and a switch, and perhaps an editor. The base of the tools in the suite's
// modules. Neighbour: CToolList.h, which makes them by name.
#pragma once

#include <string>

#include "zelbase/platform/ZelBaseApi.h"

// What the four operations without a body do is between the tools and the applications: nothing here calls them.
//
// A new tool is not enabled, has no editor and no name; a derived class sets the protected fields. Copies copy the three
// fields. Destroyed through this base. One thread at a time.
class ZELBASE_API ZelTool {
 public:
  ZelTool() = default;
  ZelTool(const ZelTool&) = default;
  ZelTool& operator=(const ZelTool&) = default;
  virtual ~ZelTool();

  // The user turns to the tool, and away from it.
  virtual void Activate() = 0;
  virtual void Deactivate() = 0;

  virtual void ShowEditor() = 0;
  virtual void CloseEditor() = 0;

  // Switches the tool on or off. The base stores it, and a derived class that overrides this calls it.
  virtual void Enable(bool enable);

  std::string GetName() const { return m_name; }
  bool IsEnabled() const { return m_enabled; }
  bool HasEditor() const { return m_hasEditor; }

 protected:
  bool m_enabled = false;
  bool m_hasEditor = false;
  std::string m_name;
};
