// An action: something that a user starts from a button, a menu entry or a macro. The base of the actions in the suite's
// applications. Neighbours: ZelCompositeAction.h runs several; ZelActionList.h makes them by name from settings.
#pragma once

#include <string>

#include "zelbase/platform/ZelBaseApi.h"

class FileObject;

// A small record with a name, which keeps a part of itself in a section of a settings file, and operations that a
// derived class fills in. The base itself does nothing when it is run.
//
//   class MarkEvent : public ZelAction {
//    public:
//     bool Execute() override { return m_log.Mark(GetDescription()); }
//     bool CanSelect() override { return true; }
//   };
//
//   section of its file       field            at first
//   (the section's own name)  name             empty
//   Group                     action group     "BaseAction"
//   SurveyTypes               survey types     empty
//   Custom                    custom           false: not made by the user
//   Description, ToolTip      the same         empty
//
// Id (0), macro, button group, bitmaps and the button flag (false) are not kept in the file; they belong to the applications, as
// does the meaning of the survey types.
//
// What surprises:
//   (1) Load takes the name from the section name, Save the section name from the name.
//   (2) Load and Save are true whatever was found or written.
//   (3) A derived class that overrides SetName() hides SetName(name); "using ZelAction::SetName;" brings it back.
//
// Copies copy all fields. Destroyed through this base. One thread at a time.
class ZELBASE_API ZelAction {
 public:
  ZelAction() = default;
  ZelAction(const ZelAction&) = default;
  ZelAction& operator=(const ZelAction&) = default;
  virtual ~ZelAction();

  // The kind of action in words for a user, in the language of the process: numbered text 12044, "Base action".
  virtual std::string GroupName();

  // Takes the section name for the name, then reads the fields above from the section of that name; one that is not there, or does
  // not parse, stays. "Custom" is true for any number but 0. True, whether there is such a section or not.
  //
  // A file that throws from GetItem (FileObject::ThrowExceptions) throws out of here; what was read so far stays read.
  virtual bool Load(FileObject& file);

  // Takes the name for the section name, then writes the fields above into the section of that name, which is made when it is
  // missing. True, whether that worked or not. An empty name is a section with an empty name.
  virtual bool Save(FileObject& file);

  // Lets the user set the action up; false when he gave up. True here.
  virtual bool Configure();

  // Whether the action could be run now. True here.
  virtual bool Validate();

  // Runs the action; false when it failed. False here.
  virtual bool Execute();

  // For a derived class to find a name by itself. Nothing here.
  virtual void SetName();

  // Whether the action may be chosen by itself, for a button, say; and whether Configure has anything to ask. False here.
  virtual bool CanSelect();
  virtual bool CanConfigure();

  unsigned int GetID() const { return m_id; }
  void SetID(unsigned int id) { m_id = id; }
  bool GetCustom() const { return m_custom; }
  void SetCustom(bool custom) { m_custom = custom; }
  std::string GetName() const { return m_name; }
  void SetName(const std::string& name) { m_name = name; }
  std::string GetActionGroup() const { return m_actionGroup; }
  void SetActionGroup(const std::string& group) { m_actionGroup = group; }
  std::string GetDescription() const { return m_description; }
  void SetDescription(const std::string& description) { m_description = description; }
  std::string GetToolTip() const { return m_toolTip; }
  void SetToolTip(const std::string& toolTip) { m_toolTip = toolTip; }
  std::string GetMacro() const { return m_macro; }
  void SetMacro(const std::string& macro) { m_macro = macro; }
  std::string GetButtonGroup() const { return m_buttonGroup; }
  void SetButtonGroup(const std::string& group) { m_buttonGroup = group; }
  std::string GetSmallBmp() const { return m_smallBmp; }
  void SetSmallBmp(const std::string& bitmap) { m_smallBmp = bitmap; }
  std::string GetLargeBmp() const { return m_largeBmp; }
  void SetLargeBmp(const std::string& bitmap) { m_largeBmp = bitmap; }
  std::string GetSurveyTypes() const { return m_surveyTypes; }
  void SetSurveyTypes(const std::string& types) { m_surveyTypes = types; }

  // The section that stands for the action in its file.
  std::string GetSectionName() const { return m_sectionName; }
  void SetSectionName(const std::string& section) { m_sectionName = section; }

  bool IsButton() const { return m_button; }
  void SetButton(bool button) { m_button = button; }

 private:
  unsigned int m_id = 0;
  bool m_custom = false;
  std::string m_name;
  std::string m_actionGroup = "BaseAction";
  std::string m_description;
  std::string m_toolTip;
  std::string m_macro;
  std::string m_buttonGroup;
  std::string m_smallBmp;
  std::string m_largeBmp;
  std::string m_surveyTypes;
  std::string m_sectionName;
  bool m_button = false;
};
