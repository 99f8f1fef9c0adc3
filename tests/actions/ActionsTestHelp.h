// What the tests of this folder share: actions that answer as told and write down what they were asked, creators that make and count,
// and where a virtual operation stands.
#pragma once

#include <cstddef>
#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "zelbase/actions/ZelAction.h"
#include "zelbase/actions/ZelActionICreator.h"
#include "zelbase/config/FileObject.h"

// Where the compiler looks a virtual operation up, the destructor's slot counted as the one it is in the interface. In this ABI a
// pointer to a virtual member begins with 1 plus its place in the table, in bytes, and a destructor has two places.
template <class Operation>
std::size_t Slot(Operation operation) {
  std::size_t words[2] = {};
  static_assert(sizeof operation == sizeof words);
  std::memcpy(words, &operation, sizeof words);
  return (words[0] - 1) / sizeof(void*) - 1;
}

// The fields of an action, one after another, for comparing.
inline std::string FieldsOf(const ZelAction& action) {
  std::string fields = std::to_string(action.GetID()) + (action.GetCustom() ? " custom" : "") + (action.IsButton() ? " button" : "");
  for (const std::string& text :
       {action.GetName(), action.GetActionGroup(), action.GetDescription(), action.GetToolTip(), action.GetMacro(), action.GetButtonGroup(),
        action.GetSmallBmp(), action.GetLargeBmp(), action.GetSurveyTypes(), action.GetSectionName()}) {
    fields += "|" + text;
  }
  return fields;
}

// Answers as told, and writes "name.Operation " into `calls`.
class ScriptedAction : public ZelAction {
 public:
  explicit ScriptedAction(const std::string& scriptName = "a", std::string* calls = nullptr) : m_scriptName(scriptName), m_calls(calls) {}
  ~ScriptedAction() override {
    Note("gone");
    if (onEnd) onEnd();
  }

  bool Configure() override { return Answer("Configure", configures); }
  bool Validate() override { return Answer("Validate", validates); }
  bool Execute() override {
    const std::function<void()> act = onExecute;  // it may change what holds this action
    if (act) act();
    return Answer("Execute", executes);
  }
  bool CanSelect() override { return Answer("CanSelect", selects); }
  bool CanConfigure() override { return Answer("CanConfigure", true); }

  bool configures = true;
  bool validates = true;
  bool executes = true;
  bool selects = false;
  std::function<void()> onExecute;
  std::function<void()> onEnd;

 private:
  void Note(const char* what) {
    if (m_calls != nullptr) *m_calls += m_scriptName + "." + what + " ";
  }
  bool Answer(const char* operation, bool answer) {
    Note(operation);
    return answer;
  }

  std::string m_scriptName;
  std::string* m_calls;
};

// A settings text in memory, as `sections` has it.
using Sections = std::map<std::string, std::map<std::string, std::string>>;

inline void Fill(FileObject& file, const Sections& sections) {
  for (const auto& [section, items] : sections) {
    file.CreateSection(section, false);
    for (const auto& [key, value] : items) file.SetItem(section, key, value, true);
  }
}

inline Sections ContentOf(const FileObject& file) {
  Sections sections;
  FobjSection walk, items;
  std::string section, key, value;
  for (bool more = file.GetFirstSectionEntry(walk, section); more; more = file.GetNextSectionEntry(walk, section)) {
    sections[section];
    for (bool item = file.GetFirstMapEntry(items, section, key, value); item; item = file.GetNextMapEntry(items, key, value)) {
      sections[section][key] = value;
    }
  }
  return sections;
}

// A settings text that counts its own end.
class CountedFile : public FileObject {
 public:
  explicit CountedFile(int* destroyed = nullptr, const Sections& sections = {}) : m_destroyed(destroyed) { Fill(*this, sections); }
  ~CountedFile() override {
    if (m_destroyed != nullptr) ++*m_destroyed;
    if (onEnd) onEnd();
  }

  std::function<void()> onEnd;

 private:
  int* m_destroyed;
};

// Makes what it is told to, and counts its own end.
class MakingCreator : public ZelActionICreator {
 public:
  using Make = std::function<ZelAction*()>;

  explicit MakingCreator(
      Make make = [] { return new ZelAction; }, int* destroyed = nullptr)
      : m_make(std::move(make)), m_destroyed(destroyed) {}
  ~MakingCreator() override {
    if (m_destroyed != nullptr) ++*m_destroyed;
    if (onEnd) onEnd();
  }
  ZelAction* Create() override { return m_make(); }

  std::function<void()> onEnd;

 private:
  Make m_make;
  int* m_destroyed;
};
