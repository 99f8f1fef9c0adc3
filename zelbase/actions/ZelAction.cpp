#include "zelbase/actions/ZelAction.h"

#include "zelbase/config/FileObject.h"
#include "zelbase/errors/NumberedTexts.h"

namespace {

constexpr int kGroupNameText = 12044;

constexpr char kGroup[] = "Group";
constexpr char kSurveyTypes[] = "SurveyTypes";
constexpr char kCustom[] = "Custom";
constexpr char kDescription[] = "Description";
constexpr char kToolTip[] = "ToolTip";

}  // namespace

ZelAction::~ZelAction() = default;

std::string ZelAction::GroupName() { return NumberedText(kGroupNameText); }

bool ZelAction::Load(FileObject& file) {
  // Kept: the section gives the name, whatever the name was.
  m_name = m_sectionName;
  file.GetItem(m_sectionName, kGroup, m_actionGroup);
  file.GetItem(m_sectionName, kSurveyTypes, m_surveyTypes);
  file.GetItem(m_sectionName, kCustom, m_custom);
  file.GetItem(m_sectionName, kDescription, m_description);
  file.GetItem(m_sectionName, kToolTip, m_toolTip);
  // Kept: true, whatever was found.
  return true;
}

bool ZelAction::Save(FileObject& file) {
  // Kept: the name gives the section, whatever section name was set.
  m_sectionName = m_name;
  file.SetItem(m_sectionName, kGroup, m_actionGroup, true);
  file.SetItem(m_sectionName, kSurveyTypes, m_surveyTypes, true);
  file.SetItem(m_sectionName, kCustom, m_custom, true);
  file.SetItem(m_sectionName, kDescription, m_description, true);
  file.SetItem(m_sectionName, kToolTip, m_toolTip, true);
  // Kept: true, whatever was written.
  return true;
}

bool ZelAction::Configure() { return true; }

bool ZelAction::Validate() { return true; }

bool ZelAction::Execute() { return false; }

void ZelAction::SetName() {}

bool ZelAction::CanSelect() { return false; }

bool ZelAction::CanConfigure() { return false; }
