// What the tests of tools share: a tool that can be made, and a creator that counts its own end.
#pragma once

#include <functional>
#include <string>

#include "zelbase/actions/ToolICreator.h"
#include "zelbase/actions/ZelTool.h"

class ProbeTool : public ZelTool {
 public:
  explicit ProbeTool(const std::string& name = "", int* destroyed = nullptr) : m_destroyed(destroyed) { m_name = name; }
  ~ProbeTool() override {
    if (m_destroyed != nullptr) ++*m_destroyed;
  }
  void Activate() override { calls += "Activate "; }
  void Deactivate() override { calls += "Deactivate "; }
  void ShowEditor() override { calls += "ShowEditor "; }
  void CloseEditor() override { calls += "CloseEditor "; }

  using ZelTool::m_enabled;
  using ZelTool::m_hasEditor;
  using ZelTool::m_name;
  std::string calls;

 private:
  int* m_destroyed;
};

// Makes tools of a name, none for an empty one.
class ToolCreator : public ToolICreator {
 public:
  explicit ToolCreator(const std::string& name = "a", int* destroyed = nullptr) : m_name(name), m_destroyed(destroyed) {}
  ~ToolCreator() override {
    if (m_destroyed != nullptr) ++*m_destroyed;
    if (onEnd) onEnd();
  }
  ZelTool* Create() override { return m_name.empty() ? nullptr : new ProbeTool(m_name); }

  std::function<void()> onEnd;

 private:
  std::string m_name;
  int* m_destroyed;
};
